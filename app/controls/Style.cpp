#include "app/controls/Style.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>

using namespace Qt::StringLiterals;

namespace {

class TesselStyle : public QProxyStyle {
public:
    TesselStyle() : QProxyStyle(QStyleFactory::create(u"Fusion"_s)) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        switch (metric) {
            // The icons are drawn for this size; any other would blur them.
            case PM_SmallIconSize:
            case PM_ToolBarIconSize:
                return Theme::iconSize;
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
    font.setFamilies({u"Microsoft YaHei UI"_s, u"Microsoft YaHei"_s, u"Noto Sans CJK SC"_s, u"Source Han Sans SC"_s,
                      u"WenQuanYi Micro Hei"_s, u"sans-serif"_s});
    font.setPointSizeF(9.5);
    return font;
}

}  // namespace

void applyApplicationStyle(QApplication& application) {
    application.setStyle(new TesselStyle);
    application.setPalette(palette());
    application.setFont(font());
}
