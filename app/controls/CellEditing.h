#pragma once

#include <QPersistentModelIndex>
#include <QPointer>

#include "app/controls/GridDelegate.h"
#include "app/controls/KeyedGrid.h"

class PressGuard;
class QKeyEvent;

/// In-place editing of a KeyedGrid: which cell is edited, and how its edit ends.
///
/// One editor is open at a time. Its edit ends by commit(), which asks the grid's validateEdit, or by cancel(). Enter,
/// Tab, Up and Down, a mouse press outside the editor and the loss of the focus commit; Esc cancels. A refused edit
/// leaves the editor open with the focus and with its text selected.
class CellEditing : public GridDelegate {
    Q_OBJECT

public:
    explicit CellEditing(KeyedGrid* grid);
    ~CellEditing() override;

    bool isOpen() const { return m_editor && m_cell.isValid(); }
    /// The edited cell, while an editor is open.
    QModelIndex cell() const { return m_cell; }
    /// Asks the grid's startEdit.
    bool mayEdit(const QModelIndex& index) const;
    /// False when the edit was refused.
    bool commit();
    void cancel();
    /// Whether the last edit that was committed is in its cell.
    bool isTaken() const { return m_isTaken; }
    void revoke() { m_isTaken = false; }
    /// Changes a check-box cell when startEdit and validateEdit agree.
    void toggleCheck(const QModelIndex& index);
    /// The focus went away from the editor, or from the grid that composes for it. False when the edit was refused.
    bool focusLeft(Qt::FocusReason reason);
    /// Shows the list of an open drop-down cell.
    void showList();
    /// What is typed in an open text editor; null when there is none.
    QString typedText() const;
    void setTypedText(const QString& typed);
    /// Puts what an input method committed into the open text editor, instead of its text.
    void replaceText(QInputMethodEvent* committed);
    /// The next row after or before `from` that is not hidden, or -1.
    int shownRow(int from, bool forward) const;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

Q_SIGNALS:
    /// The button of the edited cell was clicked, or its key pressed.
    void buttonClicked();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool keyPressed(QKeyEvent* event);
    EditVerdict decide(const QModelIndex& index, QString& text);
    void accept(const QPersistentModelIndex& cell, const QString& text);
    void editNextCell(bool forward);
    void goToRow(bool forward);

    PressGuard* const m_guard;
    // The toolkit's functions that open and close editors are const.
    mutable QPointer<QWidget> m_editor;
    mutable QPersistentModelIndex m_cell;
    bool m_deciding = false;
    bool m_isTaken = false;
};
