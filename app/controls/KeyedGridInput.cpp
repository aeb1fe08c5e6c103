// What the mouse and the keyboard do in a KeyedGrid outside an editor.

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include "app/controls/CellEditing.h"
#include "app/controls/GridModel.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/SelectOneRowRClick.h"

using Part = GridDelegate::Part;

bool KeyedGrid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    if (trigger == NoEditTriggers || (trigger != AllEditTriggers && !(trigger & editTriggers())))
        return false;
    if (isEditing())
        return false;
    const QPersistentModelIndex wanted = beforeEdit && beforeEdit() ? currentIndex() : index;
    if (isEditing() || !(m_model->flags(wanted) & Qt::ItemIsEditable) || !m_editing->mayEdit(wanted) ||
        !wanted.isValid() || !QTableView::edit(wanted, trigger, event))
        return false;
    m_editing->showList();
    return true;
}

void KeyedGrid::inputMethodEvent(QInputMethodEvent* event) {
    const bool wasEditing = isEditing();
    QTableView::inputMethodEvent(event);
    // The view opens an editor for a text that came without composing, but keeps the text to itself.
    if (!wasEditing && !event->commitString().isEmpty())
        m_editing->replaceText(event);
}

void KeyedGrid::clickCellButton() {
    // What is chosen takes the place of what was being typed.
    cancelEdit();
    if (row() >= 0 && m_model->list(m_column).ellipsis)
        Q_EMIT cellButtonClicked(row(), columnKey());
}

void KeyedGrid::wantMenu(const QPoint& globalPosition) {
    if (commitEdit())
        Q_EMIT contextMenuWanted(globalPosition);
}

void KeyedGrid::mousePressEvent(QMouseEvent* event) {
    m_menuWanted = false;
    m_pressed = QPersistentModelIndex();
    m_viewPressed = false;
    if (!commitEdit())
        return;
    const QPoint position = event->position().toPoint();
    if (event->button() == Qt::RightButton) {
        m_menuWanted = true;
        SelectOneRowRClick(this, event->button(), position);
        return;
    }
    const QModelIndex index = indexAt(position);
    if (event->button() != Qt::LeftButton || !index.isValid())
        return;
    const bool isMarking = event->modifiers().testFlag(Qt::ShiftModifier);
    const Part part = isMarking ? Part::None : m_editing->partAt(position, index);
    if (part == Part::Arrow) {
        setCollapsed(index.row(), !isCollapsed(index.row()));
        return;
    }
    if (part != Part::None)
        m_pressed = index;
    m_viewPressed = true;
    // The marker column has no cells of its own: the press goes to the row's cell in the current column.
    const bool marker = key(index.column()).isEmpty();
    const QPointF cell = visualRect(m_model->index(index.row(), m_column)).center();
    QMouseEvent press(event->type(), marker ? cell : event->position(), event->globalPosition(), event->button(),
                      event->buttons(), event->modifiers());
    QTableView::mousePressEvent(&press);
}

void KeyedGrid::mouseMoveEvent(QMouseEvent* event) {
    // Dragging would make every row on the way current.
    if (event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

void KeyedGrid::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) {
        if (std::exchange(m_menuWanted, false))
            Q_EMIT contextMenuWanted(event->globalPosition().toPoint());
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    const QPersistentModelIndex pressed = std::exchange(m_pressed, QPersistentModelIndex());
    // The view would select on the release of a press that it never had.
    if (std::exchange(m_viewPressed, false))
        QTableView::mouseReleaseEvent(event);
    const QPoint position = event->position().toPoint();
    if (!pressed.isValid() || pressed != indexAt(position))
        return;
    const Part part = m_editing->partAt(position, pressed);
    if (part == Part::Check)
        m_editing->toggleCheck(pressed);
    else if (part == Part::Button)
        clickCellButton();
    else if (part == Part::List)
        edit(pressed, AllEditTriggers, nullptr);
}

void KeyedGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool marker = index.isValid() && key(index.column()).isEmpty();
    const bool isSecond = marker ? index.row() == row() : index == currentIndex();
    // The second of two quick clicks on an arrow, a check box or a button counts like the first, and so does one that
    // marks rows, or whose first click did nothing because an edit was refused.
    if (event->button() != Qt::LeftButton || event->modifiers().testFlag(Qt::ShiftModifier) || !index.isValid() ||
        !isSecond || isEditing() || m_editing->partAt(event->position().toPoint(), index) != Part::None) {
        mousePressEvent(event);
        return;
    }
    const QPersistentModelIndex cell = index;
    if (!marker)
        QTableView::mouseDoubleClickEvent(event);
    if (cell.isValid())
        Q_EMIT rowDoubleClicked(cell.row());
}

void KeyedGrid::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    const QPoint position = row() < 0 ? QPoint(0, 0) : visualRect(currentIndex()).bottomLeft();
    wantMenu(viewport()->mapToGlobal(position));
}

void KeyedGrid::keyPressEvent(QKeyEvent* event) {
    // What the editor leaves over goes on to the window.
    if (isEditing()) {
        event->ignore();
        return;
    }
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int pressed = event->key();
    const bool onCell = row() >= 0;
    const bool onCheck = onCell && m_model->column(m_column).look == GridColumn::Look::CheckBox;
    const bool opens =
        onCell && ((pressed == Qt::Key_F4 && !modifiers) || (pressed == Qt::Key_Down && modifiers == Qt::AltModifier) ||
                   ((pressed == Qt::Key_Return || pressed == Qt::Key_Enter) && modifiers == Qt::ControlModifier));
    if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::Paste)) {
        paste();
    } else if (opens && m_model->list(m_column).ellipsis) {
        clickCellButton();
    } else if (opens && m_model->list(m_column).isDropDown()) {
        edit(currentIndex(), EditKeyPressed, event);
    } else if (pressed == Qt::Key_Space && !modifiers && onCheck) {
        m_editing->toggleCheck(currentIndex());
    } else if (!modifiers && toggleByKey(pressed)) {
        return;
    } else if (pressed == Qt::Key_Delete || pressed == Qt::Key_Backspace || pressed == Qt::Key_Escape) {
        event->ignore();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void KeyedGrid::keyboardSearch(const QString& search) {
    // Typing edits; where it cannot, it must not jump to another row.
    if (!search.trimmed().isEmpty())
        Q_EMIT textTyped(search);
}

QModelIndex KeyedGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex next = QTableView::moveCursor(action, modifiers);
    if (next.isValid() && key(next.column()).isEmpty())
        return m_model->index(next.row(), firstColumn());
    return next;
}

void KeyedGrid::focusInEvent(QFocusEvent* event) {
    // The item view between would make the first row current: it is left out.
    if (currentIndex().isValid())
        QTableView::focusInEvent(event);
    else
        QAbstractScrollArea::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call)
    viewport()->update();
}

void KeyedGrid::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    viewport()->update();
    // While an input method composes the grid keeps the focus, although its editor is open.
    if (isEditing())
        m_editing->focusLeft(event->reason());
}
