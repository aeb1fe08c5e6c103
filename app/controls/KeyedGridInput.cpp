// What the mouse and the keyboard do in a KeyedGrid outside an editor.

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include "app/controls/GridDelegate.h"
#include "app/controls/GridModel.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/SelectOneRowRClick.h"

KeyedGrid::Part KeyedGrid::partAt(const QPoint& position, const QModelIndex& index) const {
    if (!index.isValid())
        return Part::None;
    const QRect cell = visualRect(index);
    if (m_delegate->arrowRect(cell, index).contains(position))
        return Part::Arrow;
    if (m_delegate->buttonRect(cell, index).contains(position))
        return Part::Button;
    constexpr int reach = 4;
    if (m_delegate->checkRect(cell, index).adjusted(-reach, -reach, reach, reach).contains(position))
        return m_model->column(index.column()).look == GridColumn::Look::CheckBox ? Part::Check : Part::None;
    return Part::None;
}

void KeyedGrid::mousePressEvent(QMouseEvent* event) {
    m_menuWanted = false;
    m_pressedPart = Part::None;
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
    m_pressed = index;
    m_pressedPart = partAt(position, index);
    if (m_pressedPart == Part::Arrow) {
        setCollapsed(index.row(), !isCollapsed(index.row()));
        return;
    }
    // The marker column has no cells of its own.
    if (key(index.column()).isEmpty())
        setRow(index.row());
    else
        QTableView::mousePressEvent(event);
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
    const Part part = std::exchange(m_pressedPart, Part::None);
    QTableView::mouseReleaseEvent(event);
    const QPoint position = event->position().toPoint();
    const QModelIndex index = indexAt(position);
    if (part == Part::None || index != m_pressed || partAt(position, index) != part)
        return;
    if (part == Part::Check)
        toggleCheck(index);
    else if (part == Part::Button)
        clickCellButton();
}

void KeyedGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    const bool onCell = event->button() == Qt::LeftButton && index.isValid() && !isEditing() &&
                        partAt(event->position().toPoint(), index) == Part::None;
    if (!onCell) {
        // The second of two quick clicks on an arrow, a check box or a button counts like the first.
        mousePressEvent(event);
        return;
    }
    const QPersistentModelIndex cell = index;
    if (!key(index.column()).isEmpty())
        QTableView::mouseDoubleClickEvent(event);
    if (cell.isValid())
        Q_EMIT rowDoubleClicked(cell.row());
}

void KeyedGrid::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    const QPoint position = m_row < 0 ? QPoint(0, 0) : visualRect(currentIndex()).bottomLeft();
    if (commitEdit())
        Q_EMIT contextMenuWanted(viewport()->mapToGlobal(position));
}

void KeyedGrid::keyPressEvent(QKeyEvent* event) {
    // What the editor leaves over goes on to the window.
    if (isEditing()) {
        event->ignore();
        return;
    }
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int pressed = event->key();
    const bool onCheck = m_row >= 0 && m_column >= 0 && m_model->column(m_column).look == GridColumn::Look::CheckBox;
    const bool opens = (pressed == Qt::Key_F4 && !modifiers) ||
                       (pressed == Qt::Key_Down && modifiers == Qt::AltModifier) ||
                       ((pressed == Qt::Key_Return || pressed == Qt::Key_Enter) && modifiers == Qt::ControlModifier);
    if (opens && m_row >= 0 && m_model->list(m_column).ellipsis) {
        clickCellButton();
    } else if (opens && m_row >= 0 && m_model->list(m_column).isDropDown()) {
        edit(currentIndex(), EditKeyPressed, event);
    } else if (pressed == Qt::Key_Space && !modifiers && onCheck) {
        toggleCheck(currentIndex());
    } else if (!modifiers && toggleByKey(pressed)) {
        return;
    } else if (pressed == Qt::Key_Delete || pressed == Qt::Key_Backspace || pressed == Qt::Key_Escape) {
        event->ignore();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void KeyedGrid::keyboardSearch(const QString&) {
    // Typing edits; where it cannot, it must not jump to another row.
}

QModelIndex KeyedGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex next = QTableView::moveCursor(action, modifiers);
    if (next.isValid() && key(next.column()).isEmpty())
        return m_model->index(next.row(), firstColumn());
    return next;
}

void KeyedGrid::focusInEvent(QFocusEvent* event) {
    // The base class would make the first row current.
    if (currentIndex().isValid())
        QTableView::focusInEvent(event);
    else
        QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void KeyedGrid::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    viewport()->update();
    // An input method still composes here while its editor is open already.
    if (isEditing() && QApplication::focusWidget() != m_editor)
        editorLeft(m_editor, event->reason());
}
