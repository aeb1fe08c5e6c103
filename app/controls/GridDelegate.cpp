#include "app/controls/GridDelegate.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "app/controls/GridEditors.h"
#include "app/controls/GridModel.h"
#include "app/controls/Marks.h"
#include "app/controls/Style.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 5;
constexpr int indent = 18;

const GridModel* modelOf(const QModelIndex& index) { return static_cast<const GridModel*>(index.model()); }

QString shownText(const QModelIndex& index) { return Theme::oneLine(index.data().toString()); }

/// Filled strips: a drawn rectangle loses sides at fractional scales.
void drawFrame(QPainter* painter, const QRect& rect, const QColor& colour) {
    painter->fillRect(QRect(rect.left(), rect.top(), rect.width(), 1), colour);
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), colour);
    painter->fillRect(QRect(rect.left(), rect.top(), 1, rect.height()), colour);
    painter->fillRect(QRect(rect.right(), rect.top(), 1, rect.height()), colour);
}

}  // namespace

GridDelegate::GridDelegate(KeyedGrid* grid) : QStyledItemDelegate(grid), m_grid(grid) {}

QRect GridDelegate::arrowRect(const QRect& cell, const QModelIndex& index) const {
    if (index.column() != m_grid->outlineColumn() || !modelOf(index)->isParent(index.row()))
        return {};
    return {cell.left() + 2 + modelOf(index)->row(index.row()).level * indent, cell.top(), indent, cell.height()};
}

QRect GridDelegate::buttonRect(const QRect& cell, const QModelIndex& index) const {
    if (!modelOf(index)->list(index.column()).ellipsis || index != m_grid->currentIndex())
        return {};
    const int edge = cell.height() - 4;
    return {cell.right() - edge - 1, cell.top() + 2, edge + 2, edge};
}

QRect GridDelegate::checkRect(const QRect& cell, const QModelIndex& index) const {
    if (modelOf(index)->column(index.column()).look != GridColumn::Look::CheckBox)
        return {};
    QRect box(0, 0, Theme::checkSize, Theme::checkSize);
    box.moveCenter(cell.center());
    return box;
}

QRect GridDelegate::textRect(const QRect& cell, const QModelIndex& index) const {
    QRect rect = cell.adjusted(margin, 0, -margin, 0);
    if (index.column() == m_grid->outlineColumn())
        rect.setLeft(cell.left() + 4 + (modelOf(index)->row(index.row()).level + 1) * indent);
    const QRect button = buttonRect(cell, index);
    if (!button.isEmpty())
        rect.setRight(button.left() - 2);
    return rect;
}

QFont GridDelegate::fontOf(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QFont font = option.font;
    font.setBold(m_grid->outlineColumn() >= 0 && modelOf(index)->row(index.row()).level == 0);
    return font;
}

QSize GridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QRect wide(0, 0, 10'000, option.fontMetrics.height());
    const int aroundText = wide.width() - textRect(wide, index).width();
    const int text = QFontMetrics(fontOf(option, index)).horizontalAdvance(shownText(index));
    return {text + aroundText + 1, wide.height()};
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const GridModel* model = modelOf(index);
    const int level = m_grid->outlineColumn() < 0 ? -1 : model->row(index.row()).level;
    const bool selected = option.state & QStyle::State_Selected;
    const bool focused = m_grid->isActive();
    painter->save();
    if (model->column(index.column()).key.isEmpty()) {
        painter->fillRect(option.rect, Theme::header);
        if (index.row() == m_grid->row())
            Theme::drawRowMarker(painter, option.rect);
        painter->restore();
        return;
    }
    const QColor back = selected ? (focused ? Theme::selection : Theme::selectionWithoutFocus)
                                 : (level == 0 ? Theme::topNode : option.palette.color(QPalette::Base));
    painter->fillRect(option.rect, back);

    const QRect arrow = arrowRect(option.rect, index);
    if (!arrow.isEmpty())
        Theme::drawArrow(painter, arrow, !model->row(index.row()).collapsed);
    const QRect check = checkRect(option.rect, index);
    if (!check.isEmpty())
        Theme::drawCheck(painter, check, model->text(index.row(), index.column()) == u"1"_s);
    const QRect button = buttonRect(option.rect, index);
    if (!button.isEmpty())
        Theme::drawButton(painter, button);

    const QRect room = textRect(option.rect, index);
    if (level >= 2 && index.column() == m_grid->outlineColumn() && arrow.isEmpty()) {
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(Theme::accent);
        painter->drawEllipse(QPointF(room.left() - 8, option.rect.center().y() + 0.5), 2.2, 2.2);
    }
    const QFont font = fontOf(option, index);
    painter->setFont(font);
    painter->setPen(level >= 2 ? Theme::mutedText : option.palette.color(QPalette::Text));
    const auto alignment = Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt());
    painter->drawText(room,
                      static_cast<int>((alignment & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter | Qt::TextSingleLine),
                      QFontMetrics(font).elidedText(shownText(index), Qt::ElideRight, room.width()));
    if (index == m_grid->currentIndex())
        drawFrame(painter, option.rect, focused ? Theme::accent : Theme::disabledText);
    painter->restore();
}

bool GridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // Only a text that does not fit needs to be told in full.
    const bool fits =
        QFontMetrics(fontOf(option, index)).horizontalAdvance(shownText(index)) <= textRect(option.rect, index).width();
    QToolTip::showText(event->globalPos(), fits ? QString() : Theme::plainToolTip(index.data().toString()), view);
    return true;
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
    const ComboList& list = modelOf(index)->list(index.column());
    if (list.isDropDown()) {
        auto* choice = new CellChoice(parent, list, index.data(Qt::EditRole).toString());
        choice->chosen = [this] { m_grid->commitEdit(); };
        choice->dismissed = [this] { m_grid->cancelEdit(); };
        m_grid->editorOpened(choice, index);
        return choice;
    }
    auto* edit = new CellEdit(parent, list.ellipsis);
    edit->setText(index.data(Qt::EditRole).toString());
    const int limit = m_grid->editLimit ? m_grid->editLimit(index.row(), m_grid->key(index.column())) : 0;
    if (limit > 0)
        edit->setLimit(limit);
    edit->setAlignment(modelOf(index)->column(index.column()).cells);
    edit->setFont(m_grid->font());
    edit->buttonClicked = [this] { m_grid->clickCellButton(); };
    m_grid->editorOpened(edit, index);
    return edit;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* edit = qobject_cast<QLineEdit*>(editor);
    // A cell that changes while it is edited does not take the typed text away.
    if (edit && !edit->isModified())
        edit->setText(index.data(Qt::EditRole).toString());
}

void GridDelegate::setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const {}

void GridDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
    QRect rect = option.rect;
    if (index.column() == m_grid->outlineColumn())
        rect.setLeft(textRect(option.rect, index).left() - 4);
    editor->setGeometry(qobject_cast<QComboBox*>(editor) ? rect : rect.adjusted(1, 1, -1, -1));
}

bool GridDelegate::eventFilter(QObject* watched, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(watched);
    return editor && m_grid->editorEvent(editor, event);
}
