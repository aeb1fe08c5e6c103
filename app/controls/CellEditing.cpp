#include "app/controls/CellEditing.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include "app/base/Text.h"
#include "app/controls/CheckState.h"
#include "app/controls/GridEditors.h"
#include "app/controls/GridModel.h"
#include "app/controls/PressGuard.h"

using namespace Qt::StringLiterals;

CellEditing::CellEditing(KeyedGrid* grid) : GridDelegate(grid), m_guard(new PressGuard([this] { return commit(); })) {
    m_guard->setParent(this);
}

CellEditing::~CellEditing() = default;

bool CellEditing::mayEdit(const QModelIndex& index) const {
    // A longer text than the editor takes would come back shortened.
    return index.isValid() && model().text(index.row(), index.column()).size() <= CellEdit::longestText &&
           !m_grid->key(index.column()).isEmpty() && !m_deciding && m_grid->startEdit &&
           m_grid->startEdit(index.row(), m_grid->key(index.column()));
}

QWidget* CellEditing::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
    const ComboList& list = model().list(index.column());
    const QString text = index.data(Qt::EditRole).toString();
    if (list.isDropDown()) {
        auto* choice = new CellChoice(parent, list, text);
        connect(choice, &CellChoice::chosen, m_grid, &KeyedGrid::commitEdit);
        connect(choice, &CellChoice::dismissed, m_grid, [this, choice] {
            if (m_editor == choice)
                m_grid->cancelEdit();
        });
        m_editor = choice;
    } else {
        const int limit = m_grid->editLimit ? m_grid->editLimit(index.row(), m_grid->key(index.column())) : 0;
        auto* edit = new CellEdit(parent, text, limit, list.ellipsis);
        edit->setAlignment(model().column(index.column()).cells);
        edit->setFont(m_grid->font());
        connect(edit, &CellEdit::buttonClicked, this, &CellEditing::buttonClicked);
        m_editor = edit;
    }
    m_cell = index;
    m_guard->watch(m_editor, list.ellipsis);
    return m_editor;
}

void CellEditing::showList() {
    if (auto* choice = qobject_cast<CellChoice*>(m_editor.data()))
        choice->showPopup();
}

QString CellEditing::typedText() const {
    const auto* edit = qobject_cast<const QLineEdit*>(m_editor.data());
    return isOpen() && edit && edit->isModified() ? edit->text() : QString();
}

void CellEditing::setTypedText(const QString& typed) {
    auto* edit = qobject_cast<QLineEdit*>(m_editor.data());
    if (!edit)
        return;
    // As typing does: it can be undone, and counts as a change.
    edit->selectAll();
    edit->insert(typed);
}

void CellEditing::replaceText(QInputMethodEvent* committed) {
    auto* edit = qobject_cast<QLineEdit*>(m_editor.data());
    if (!edit)
        return;
    edit->selectAll();
    QApplication::sendEvent(edit, committed);
}

void CellEditing::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* edit = qobject_cast<QLineEdit*>(editor);
    // A cell that changes while it is edited does not take the typed text away.
    if (edit && !edit->isModified())
        edit->setText(index.data(Qt::EditRole).toString());
}

void CellEditing::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const {
    QRect rect = option.rect;
    if (index.column() == model().outlineColumn())
        rect.setLeft(textRect(option.rect, index).left() - 4);
    editor->setGeometry(qobject_cast<QComboBox*>(editor) ? rect : rect.adjusted(1, 1, -1, -1));
}

void CellEditing::destroyEditor(QWidget* editor, const QModelIndex& index) const {
    if (editor == m_editor) {
        m_editor.clear();
        m_guard->watch(nullptr);
    }
    // It lives on, hidden, until the event loop is reached.
    editor->setObjectName(QString());
    GridDelegate::destroyEditor(editor, index);
}

void CellEditing::cancel() {
    if (m_editor)
        Q_EMIT closeEditor(m_editor, RevertModelCache);
    m_grid->viewport()->update();
}

EditVerdict CellEditing::decide(const QModelIndex& index, QString& text) {
    const QScopedValueRollback deciding(m_deciding, true);
    return m_grid->validateEdit ? m_grid->validateEdit(index.row(), m_grid->key(index.column()), text)
                                : EditVerdict::Accept;
}

void CellEditing::accept(const QPersistentModelIndex& cell, const QString& text) {
    const QString key = m_grid->key(cell.column());
    m_grid->setText(cell.row(), key, text);
    m_isTaken = true;
    if (cell.isValid())
        Q_EMIT m_grid->afterEdit(cell.row(), key);
}

bool CellEditing::commit() {
    // A message box of the decision takes the focus: that must not ask again.
    if (!isOpen() || m_deciding)
        return !isOpen();
    m_isTaken = false;
    // What an input method is still composing counts as typed.
    if (m_editor->hasFocus() || m_grid->hasFocus())
        PressGuard::finishComposing();
    if (!qobject_cast<CellChoice*>(m_editor.data()) && m_grid->beforeEdit && m_grid->beforeEdit() && !isOpen())
        return true;
    const auto* choice = qobject_cast<CellChoice*>(m_editor.data());
    if (choice && !choice->isChosen()) {
        cancel();
        return true;
    }
    QString text =
        choice ? choice->currentData().toString() : wholeCharacters(static_cast<QLineEdit*>(m_editor.data())->text());
    const QPersistentModelIndex cell = m_cell;
    const bool keepsFocus = m_grid->hasFocus() || m_editor->hasFocus() || choice;
    const EditVerdict verdict = decide(cell, text);
    if (verdict == EditVerdict::KeepOpen && isOpen()) {
        m_editor->setFocus();
        if (auto* edit = qobject_cast<QLineEdit*>(m_editor.data()))
            edit->selectAll();
        return false;
    }
    if (m_cell == cell)
        cancel();
    // A message box of the decision has taken the focus away, and would give it back to no one.
    if (keepsFocus)
        m_grid->setFocus();
    if (verdict == EditVerdict::Accept && cell.isValid())
        accept(cell, text);
    return true;
}

void CellEditing::toggleCheck(const QModelIndex& index) {
    // The row meant may be another one by now.
    if ((m_grid->beforeEdit && m_grid->beforeEdit()) || !mayEdit(index))
        return;
    const QPersistentModelIndex cell = index;
    QString text = CheckState::of(model().text(index.row(), index.column()) != CheckState::checked);
    if (decide(index, text) == EditVerdict::Accept && cell.isValid())
        accept(cell, text);
}

bool CellEditing::focusLeft(Qt::FocusReason reason) {
    // A press on the grid's scroll bar gives the grid the focus: any other press has committed already.
    if (reason == Qt::MouseFocusReason && m_grid->hasFocus()) {
        m_editor->setFocus();
        return false;
    }
    // What is typed may be about to be chosen in the window that the button has opened.
    const QWidget* active = QApplication::activeWindow();
    if (model().list(m_cell.column()).ellipsis && active && active != m_grid->window())
        return true;
    // A menu only borrows the focus; a drop-down cell closes with its list.
    return m_deciding || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason || m_editor->hasFocus() ||
           qobject_cast<CellChoice*>(m_editor.data()) || commit();
}

bool CellEditing::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_editor)
        return false;
    switch (event->type()) {
        case QEvent::KeyPress:
            return keyPressed(static_cast<QKeyEvent*>(event));
        case QEvent::ShortcutOverride: {
            const int key = static_cast<QKeyEvent*>(event)->key();
            // Esc ends the edit, not the window around it.
            if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter)
                event->accept();
            return false;
        }
        case QEvent::FocusOut:
            // When the edit is refused the focus comes back: the editor shall not hear that it ever lost it.
            return !focusLeft(static_cast<QFocusEvent*>(event)->reason());
        default:
            return false;
    }
}

bool CellEditing::keyPressed(QKeyEvent* event) {
    const bool isText = qobject_cast<QLineEdit*>(m_editor.data());
    const bool hasButton = isText && model().list(m_cell.column()).ellipsis;
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    switch (event->key()) {
        case Qt::Key_Escape:
            cancel();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (hasButton && modifiers.testFlag(Qt::ControlModifier))
                Q_EMIT buttonClicked();
            else
                commit();
            return true;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            if (commit())
                editNextCell(event->key() == Qt::Key_Tab);
            return true;
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (isText && !modifiers)
                goToRow(event->key() == Qt::Key_Down);
            return isText;
        case Qt::Key_F4:
            if (hasButton)
                Q_EMIT buttonClicked();
            return isText;
        default:
            return false;
    }
}

int CellEditing::shownRow(int from, bool forward) const {
    const int step = forward ? 1 : -1;
    int row = from + step;
    while (model().contains(row) && m_grid->isRowHidden(row))
        row += step;
    return model().contains(row) ? row : -1;
}

void CellEditing::goToRow(bool forward) {
    if (shownRow(m_cell.row(), forward) < 0 || !commit())
        return;
    // The commit may have moved the rows.
    if (const int row = shownRow(m_grid->row(), forward); m_grid->row() >= 0 && row >= 0)
        m_grid->setRow(row);
}

/// Opens the next cell, in reading order, that may be edited.
void CellEditing::editNextCell(bool forward) {
    const int columns = model().columns();
    int row = m_grid->row();
    int column = m_grid->currentIndex().column();
    for (int left = columns * 2; left > 0 && row >= 0; --left) {
        column += forward ? 1 : -1;
        if (column < 0 || column >= columns) {
            column = forward ? 0 : columns - 1;
            row = shownRow(row, forward);
        }
        const QModelIndex next = model().index(row, column);
        if (!next.isValid() || m_grid->isColumnHidden(column) || !mayEdit(next))
            continue;
        const QPersistentModelIndex cell = next;
        m_grid->setCell(row, m_grid->key(column));
        if (cell == m_grid->currentIndex() && cell.flags().testFlag(Qt::ItemIsEditable))
            m_grid->edit(cell);
        return;
    }
}
