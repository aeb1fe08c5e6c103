#include "app/controls/GridDelegate.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "app/controls/GridModel.h"
#include "app/controls/Marks.h"
#include "app/controls/Style.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 5;
constexpr int indent = 18;

}  // namespace

GridDelegate::GridDelegate(KeyedGrid* grid) : QStyledItemDelegate(grid), m_grid(grid) {}

const GridModel& GridDelegate::model() const { return *static_cast<const GridModel*>(m_grid->model()); }

QRect GridDelegate::arrowRect(const QRect& cell, const QModelIndex& index) const {
    if (index.column() != model().outlineColumn() || !model().isParent(index.row()))
        return {};
    return {cell.left() + 2 + model().row(index.row()).level * indent, cell.top(), indent, cell.height()};
}

/// What stands at the end of the current cell: a button, the arrow of a list or nothing.
GridDelegate::Part GridDelegate::endPart(const QModelIndex& index) const {
    const ComboList& list = model().list(index.column());
    if (index != m_grid->currentIndex() || (!list.ellipsis && !(m_listOffered && list.isDropDown())))
        return Part::None;
    return list.ellipsis ? Part::Button : Part::List;
}

QRect GridDelegate::endRect(const QRect& cell, const QModelIndex& index) const {
    if (endPart(index) == Part::None)
        return {};
    const int edge = cell.height() - 4;
    return {cell.right() - edge - 1, cell.top() + 2, edge + 2, edge};
}

QRect GridDelegate::checkRect(const QRect& cell, const QModelIndex& index) const {
    if (model().column(index.column()).look != GridColumn::Look::CheckBox)
        return {};
    const QStyle* style = m_grid->style();
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth), style->pixelMetric(QStyle::PM_IndicatorHeight));
    return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, cell);
}

QRect GridDelegate::textRect(const QRect& cell, const QModelIndex& index) const {
    QRect rect = cell.adjusted(margin, 0, -margin, 0);
    if (index.column() == model().outlineColumn())
        rect.setLeft(cell.left() + 4 + (model().row(index.row()).level + 1) * indent);
    if (const QRect end = endRect(cell, index); !end.isEmpty())
        rect.setRight(end.left() - 2);
    return rect;
}

GridDelegate::Part GridDelegate::partAt(const QPoint& position, const QModelIndex& index) const {
    constexpr int reach = 4;
    const QRect cell = m_grid->visualRect(index);
    if (arrowRect(cell, index).contains(position))
        return Part::Arrow;
    // A list opens from anywhere in its cell.
    const Part end = endPart(index);
    if (end == Part::List || endRect(cell, index).contains(position))
        return end;
    const QRect check = checkRect(cell, index);
    return check.marginsAdded({reach, reach, reach, reach}).contains(position) && !check.isEmpty() ? Part::Check
                                                                                                   : Part::None;
}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const int level = model().outlineColumn() < 0 ? -1 : model().row(index.row()).level;
    const bool pending = model().isPending(index.row(), index.column());
    option->text = Theme::oneLine(index.data().toString());
    option->font.setBold(level == 0);
    option->font.setItalic(pending);
    option->fontMetrics = QFontMetrics(option->font);
    if (level == 0)
        option->backgroundBrush = Theme::topNode;
    // The selection is bright only while the keyboard acts on it.
    option->state.setFlag(QStyle::State_Active, m_grid->hasFocus() || m_grid->isEditing());
    option->showDecorationSelected = true;
    const bool isCurrent = index.row() == m_grid->row();
    option->palette.setColor(QPalette::Active, QPalette::Highlight, isCurrent ? Theme::selection : Theme::marked);
    option->palette.setColor(QPalette::Inactive, QPalette::Highlight,
                             isCurrent ? Theme::selectionWithoutFocus : Theme::markedWithoutFocus);
    if (level >= 2 || pending)
        option->palette.setColor(QPalette::Text, Theme::mutedText);
}

QSize GridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem shown = option;
    initStyleOption(&shown, index);
    const QRect wide(0, 0, 10'000, option.fontMetrics.height());
    const int aroundText = wide.width() - textRect(wide, index).width();
    return {shown.fontMetrics.horizontalAdvance(shown.text) + aroundText + 1, wide.height()};
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QStyle* style = m_grid->style();
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    painter->save();
    if (model().column(index.column()).key.isEmpty()) {
        painter->fillRect(cell.rect, Theme::header);
        cell.palette.setColor(QPalette::ButtonText, Theme::accent);
        if (index.row() == m_grid->row())
            style->drawPrimitive(QStyle::PE_IndicatorArrowRight, &cell, painter, m_grid);
        painter->restore();
        return;
    }
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, m_grid);
    paintParts(painter, cell, index);
    const QRect room = textRect(cell.rect, index);
    painter->setFont(cell.font);
    style->drawItemText(painter, room, static_cast<int>(cell.displayAlignment | Qt::TextSingleLine), cell.palette, true,
                        cell.fontMetrics.elidedText(cell.text, Qt::ElideRight, room.width()), QPalette::Text);
    if (index == m_grid->currentIndex()) {
        QStyleOptionFocusRect frame;
        frame.QStyleOption::operator=(cell);
        frame.state |= QStyle::State_Item | QStyle::State_KeyboardFocusChange;
        const bool active = cell.state.testFlag(QStyle::State_Active);
        frame.palette.setColor(QPalette::Highlight, active ? Theme::accent : Theme::disabledText);
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, painter, m_grid);
    }
    painter->restore();
}

void GridDelegate::paintParts(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QStyle* style = m_grid->style();
    const QRect arrow = arrowRect(option.rect, index);
    QStyleOptionViewItem part = option;
    part.rect = arrow;
    if (!arrow.isEmpty()) {
        part.state.setFlag(QStyle::State_Children);
        part.state.setFlag(QStyle::State_Open, !model().row(index.row()).collapsed);
        style->drawPrimitive(QStyle::PE_IndicatorBranch, &part, painter, m_grid);
    }
    if (part.rect = checkRect(option.rect, index); !part.rect.isEmpty()) {
        part.state.setFlag(option.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off);
        style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &part, painter, m_grid);
    }
    part.rect = endRect(option.rect, index);
    if (endPart(index) == Part::List)
        style->drawPrimitive(QStyle::PE_IndicatorArrowDown, &part, painter, m_grid);
    if (endPart(index) == Part::Button) {
        QStyleOptionToolButton button;
        button.QStyleOption::operator=(part);
        button.state = QStyle::State_Enabled | QStyle::State_Raised;
        button.subControls = QStyle::SC_ToolButton;
        button.text = u"…"_s;
        button.font = option.font;
        style->drawComplexControl(QStyle::CC_ToolButton, &button, painter, m_grid);
    }
    if (index.column() == model().outlineColumn() && arrow.isEmpty() && model().row(index.row()).level >= 2) {
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(Theme::accent);
        const QPointF centre(textRect(option.rect, index).left() - 8, option.rect.center().y() + 0.5);
        painter->drawEllipse(centre, 2.2, 2.2);
    }
}

bool GridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // Only a text that does not fit needs to be told in full.
    const bool fits = sizeHint(option, index).width() <= option.rect.width() + 1;
    QToolTip::showText(event->globalPos(), fits ? QString() : Theme::plainToolTip(index.data().toString()), view);
    return true;
}
