#include "app/controls/Style.h"

#include <QApplication>
#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace {

constexpr int checkBoxEdge = 15;

QPen line(const QColor& colour, qreal width) { return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin}; }

/// The arrow of a node that can be opened or closed.
void drawBranch(QPainter* painter, const QStyleOption& option) {
    if (!option.state.testFlag(QStyle::State_Children))
        return;
    const QPointF centre = QRectF(option.rect).center();
    const bool open = option.state.testFlag(QStyle::State_Open);
    const QPolygonF down{QPointF(-4, -2), QPointF(0, 2), QPointF(4, -2)};
    const QPolygonF right{QPointF(-2, -4), QPointF(2, 0), QPointF(-2, 4)};
    painter->setPen(line(option.palette.color(QPalette::WindowText), 1.4));
    painter->drawPolyline((open ? down : right).translated(centre));
}

void drawCheckBox(QPainter* painter, const QStyleOption& option) {
    const QPointF corner = option.rect.topLeft();
    const bool on = option.state.testFlag(QStyle::State_On);
    painter->setPen(on ? Theme::accent : option.palette.color(QPalette::WindowText));
    painter->setBrush(on ? QBrush(Theme::accent) : option.palette.base());
    painter->drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2.5, 2.5);
    painter->setPen(line(option.palette.color(QPalette::Base), 1.8));
    if (on)
        painter->drawPolyline(
            QPolygonF{corner + QPointF(3.5, 7.5), corner + QPointF(6.5, 10.5), corner + QPointF(11.5, 4.5)});
}

/// The frame of the current cell. Filled strips: a drawn rectangle loses sides at fractional scales.
void drawCellFrame(QPainter* painter, const QStyleOption& option) {
    const QRect& cell = option.rect;
    const QBrush& colour = option.palette.highlight();
    painter->fillRect(QRect(cell.left(), cell.top(), cell.width(), 1), colour);
    painter->fillRect(QRect(cell.left(), cell.bottom(), cell.width(), 1), colour);
    painter->fillRect(QRect(cell.left(), cell.top(), 1, cell.height()), colour);
    painter->fillRect(QRect(cell.right(), cell.top(), 1, cell.height()), colour);
}

class TesselStyle : public QProxyStyle {
public:
    TesselStyle() : QProxyStyle(QStyleFactory::create(u"Fusion"_s)) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (element == PE_IndicatorBranch)
            drawBranch(painter, *option);
        else if (element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck)
            drawCheckBox(painter, *option);
        else if (element == PE_FrameFocusRect && option->state.testFlag(State_Item))
            drawCellFrame(painter, *option);
        else {
            painter->setRenderHint(QPainter::Antialiasing, false);
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
        painter->restore();
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        switch (metric) {
            // The icons are drawn for this size; any other would blur them.
            case PM_SmallIconSize:
            case PM_ToolBarIconSize:
                return Theme::iconSize;
            case PM_IndicatorWidth:
            case PM_IndicatorHeight:
                return checkBoxEdge;
            case PM_ToolBarItemSpacing:
                return 2;
            default:
                return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        if (hint == SH_Table_GridLineColor)
            return static_cast<int>(Theme::gridLine.rgb());
        // Lists drop down below their box, on white, as on the users' other desktops.
        if (hint == SH_ComboBox_Popup)
            return 0;
        // Buttons of message boxes look like those of the program's own dialogs.
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
};

QPalette palette() {
    QPalette palette(Theme::window);
    palette.setColor(QPalette::Window, Theme::window);
    palette.setColor(QPalette::WindowText, Theme::text);
    palette.setColor(QPalette::Base, Theme::paper);
    palette.setColor(QPalette::AlternateBase, Theme::paper);
    palette.setColor(QPalette::Text, Theme::text);
    palette.setColor(QPalette::Button, Theme::window);
    palette.setColor(QPalette::ButtonText, Theme::text);
    palette.setColor(QPalette::ToolTipBase, Theme::paper);
    palette.setColor(QPalette::ToolTipText, Theme::text);
    palette.setColor(QPalette::PlaceholderText, Theme::disabledText);
    palette.setColor(QPalette::Highlight, Theme::accent);
    palette.setColor(QPalette::HighlightedText, Theme::paper);
    palette.setColor(QPalette::Link, Theme::accent);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, Theme::disabledText);
    return palette;
}

QFont font() {
    QFont font;
    // Where none of these is installed, the system's own.
    font.setFamilies(QStringList{u"Microsoft YaHei UI"_s, u"Microsoft YaHei"_s, u"Noto Sans CJK SC"_s,
                                 u"Source Han Sans SC"_s, u"WenQuanYi Micro Hei"_s} +
                     font.families());
    font.setPointSizeF(9.5);
    return font;
}

}  // namespace

void applyApplicationStyle(QApplication& application) {
    application.setStyle(new TesselStyle);
    application.setPalette(palette());
    application.setFont(font());
}
