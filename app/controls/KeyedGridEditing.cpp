// In-place editing of a KeyedGrid: how an edit starts, who decides about it and how it ends.

#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QTimer>

#include "app/base/Text.h"
#include "app/controls/GridDelegate.h"
#include "app/controls/GridEditors.h"
#include "app/controls/GridModel.h"
#include "app/controls/KeyedGrid.h"

using namespace Qt::StringLiterals;

namespace {

/// Whether `widget` is `editor` or a part of it; the list of a combo box is a window of its own.
bool belongsTo(const QWidget* editor, const QObject* widget) {
    while (widget && widget != editor)
        widget = widget->parent();
    return widget;
}

}  // namespace

bool KeyedGrid::mayEdit(const QModelIndex& index) const {
    // A longer text than the editor takes would come back shortened.
    const bool fits = m_model->text(index.row(), index.column()).size() <= CellEdit::longestText;
    return index.isValid() && fits && !key(index.column()).isEmpty() && !m_deciding && startEdit &&
           startEdit(index.row(), key(index.column()));
}

bool KeyedGrid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    if (trigger == NoEditTriggers || (trigger != AllEditTriggers && !(trigger & editTriggers())))
        return false;
    const QPersistentModelIndex wanted = index;
    if (isEditing() || !(m_model->flags(index) & Qt::ItemIsEditable) || !mayEdit(index) || !wanted.isValid())
        return false;
    if (!QTableView::edit(wanted, trigger, event))
        return false;
    if (auto* choice = qobject_cast<CellChoice*>(m_editor.data()))
        choice->showPopup();
    return true;
}

void KeyedGrid::editorOpened(QWidget* editor, const QModelIndex& index) {
    m_editor = editor;
    m_edited = index;
}

bool KeyedGrid::isEditing() const { return m_editor && m_edited.isValid(); }

void KeyedGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    if (editor == m_editor) {
        m_editor.clear();
        // It lives on, hidden, until the event loop is reached.
        editor->setObjectName(QString());
    }
    QTableView::closeEditor(editor, hint);
    viewport()->update();
}

void KeyedGrid::cancelEdit() {
    if (m_editor)
        closeEditor(m_editor, QAbstractItemDelegate::RevertModelCache);
}

EditVerdict KeyedGrid::decide(const QModelIndex& index, QString& text) {
    const QScopedValueRollback deciding(m_deciding, true);
    return validateEdit ? validateEdit(index.row(), key(index.column()), text) : EditVerdict::Accept;
}

bool KeyedGrid::commitEdit() {
    if (!isEditing())
        return true;
    // A message box of the decision takes the focus: that must not ask again.
    if (m_deciding)
        return false;
    auto* choice = qobject_cast<CellChoice*>(m_editor.data());
    QString text = choice ? choice->value() : wholeCharacters(static_cast<QLineEdit*>(m_editor.data())->text());
    const QPersistentModelIndex cell = m_edited;
    const bool keepsFocus = belongsTo(m_editor, QApplication::focusWidget());
    const EditVerdict verdict = decide(cell, text);
    if (verdict == EditVerdict::KeepOpen && isEditing()) {
        takeFocusBack();
        return false;
    }
    if (verdict == EditVerdict::Accept && cell.isValid())
        m_model->setText(cell.row(), cell.column(), text);
    if (m_editor && m_edited == cell)
        closeEditor(m_editor, QAbstractItemDelegate::NoHint);
    // A message box of the decision has taken the focus away, and would give it back to no one.
    if (keepsFocus)
        setFocus();
    if (verdict == EditVerdict::Accept && cell.isValid())
        Q_EMIT afterEdit(cell.row(), key(cell.column()));
    return true;
}

void KeyedGrid::takeFocusBack() {
    m_editor->setFocus();
    if (auto* edit = qobject_cast<QLineEdit*>(m_editor.data()))
        edit->selectAll();
}

bool KeyedGrid::editorEvent(QWidget* editor, QEvent* event) {
    if (editor != m_editor)
        return false;
    switch (event->type()) {
        case QEvent::KeyPress:
            return editorKey(editor, static_cast<QKeyEvent*>(event));
        case QEvent::ShortcutOverride: {
            const int key = static_cast<QKeyEvent*>(event)->key();
            // Esc ends the edit, not the window around it.
            if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter)
                event->accept();
            return false;
        }
        case QEvent::FocusOut:
            // When the edit is refused the focus comes back: the editor shall not hear that it ever lost it.
            return !editorLeft(editor, static_cast<QFocusEvent*>(event)->reason());
        default:
            return false;
    }
}

bool KeyedGrid::editorKey(QWidget* editor, QKeyEvent* event) {
    const bool isText = qobject_cast<QLineEdit*>(editor);
    switch (event->key()) {
        case Qt::Key_Escape:
            cancelEdit();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (isText && event->modifiers().testFlag(Qt::ControlModifier) && m_model->list(m_edited.column()).ellipsis)
                clickCellButton();
            else
                commitEdit();
            return true;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            if (commitEdit())
                editNext(event->key() == Qt::Key_Tab);
            return true;
        case Qt::Key_F4:
            if (isText && m_model->list(m_edited.column()).ellipsis)
                clickCellButton();
            return isText;
        default:
            return false;
    }
}

/// The editor has lost the focus; false when it keeps it because its edit was refused.
bool KeyedGrid::editorLeft(QWidget* editor, Qt::FocusReason reason) {
    // A menu only borrows the focus.
    if (m_deciding || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason ||
        belongsTo(editor, QApplication::focusWidget()) || commitEdit())
        return true;
    if (reason == Qt::MouseFocusReason) {
        // The click that led here must not do anything while the editor stays open.
        qApp->installEventFilter(this);
        QTimer::singleShot(0, this, [this] { qApp->removeEventFilter(this); });
    }
    return false;
}

bool KeyedGrid::eventFilter(QObject* watched, QEvent* event) {
    const bool presses = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (presses && isEditing() && watched != m_editor && watched->isWidgetType()) {
        qApp->removeEventFilter(this);
        return true;
    }
    return QTableView::eventFilter(watched, event);
}

/// Opens the next cell, in reading order, that may be edited.
void KeyedGrid::editNext(bool forward) {
    const int columns = m_model->columns();
    int row = m_row;
    int column = m_column;
    for (int left = columns * 2; left > 0 && row >= 0; --left) {
        column += forward ? 1 : -1;
        if (column < 0 || column >= columns) {
            column = forward ? 0 : columns - 1;
            do
                row += forward ? 1 : -1;
            while (m_model->contains(row) && isRowHidden(row));
            if (!m_model->contains(row))
                return;
        }
        const QModelIndex next = m_model->index(row, column);
        if (isColumnHidden(column) || !mayEdit(next))
            continue;
        makeCurrent(row, column);
        if (m_row == row && m_column == column && (m_model->flags(next) & Qt::ItemIsEditable))
            edit(m_model->index(row, column), AllEditTriggers, nullptr);
        return;
    }
}

void KeyedGrid::toggleCheck(const QModelIndex& index) {
    if (!mayEdit(index))
        return;
    const QPersistentModelIndex cell = index;
    QString text = m_model->text(index.row(), index.column()) == u"1"_s ? u"2"_s : u"1"_s;
    if (decide(index, text) != EditVerdict::Accept || !cell.isValid())
        return;
    m_model->setText(cell.row(), cell.column(), text);
    Q_EMIT afterEdit(cell.row(), key(cell.column()));
}

void KeyedGrid::clickCellButton() {
    if (commitEdit() && m_row >= 0 && m_model->list(m_column).ellipsis)
        Q_EMIT cellButtonClicked(m_row, columnKey());
}
