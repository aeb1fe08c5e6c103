#pragma once

#include <QPlainTextEdit>
#include <functional>

#include "app/controls/PressGuard.h"

/// A box for one text of one bill, written when it is left, and before the mouse acts anywhere else.
///
/// It takes text only while it shows a bill, and it knows which bill that is: what was typed for one bill cannot reach
/// another. The toolkit shows every line end alike; text() gives the stored ones back.
class BillTextBox : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit BillTextBox(QWidget* parent = nullptr);

    /// Shows `stored`, a text of the bill `billId`; 0 empties the box and locks it. Of a monstrous text only the
    /// beginning is shown, and it cannot be edited.
    void showText(qint64 billId, const QString& stored);
    qint64 billId() const { return m_billId; }

    /// What is to be written: the stored text as it is while the user has changed nothing, else what the box shows,
    /// with line ends as the stored text has them (CR LF when it has none).
    QString text() const;
    bool isChanged() const;
    /// The text is in the library now.
    void setStored(const QString& stored);
    /// Shows the stored text again.
    void restore() { showText(m_billId, QString(m_stored)); }

    /// Writes the text when the user has changed it.
    void commitChange();

    /// The window, not the user, moves the focus: leaving the box writes only what has been changed.
    void setLeftByProgram(bool on) { m_leftByProgram = on; }

    /// Called before the text is written. True when everything was read anew: what had been changed is written then.
    std::function<bool()> beforeWrite;
    /// Writes text() for billId(), then calls setStored() or restore().
    std::function<void()> validate;

protected:
    /// Leaving the box for another control writes the text. A menu or another window only borrows the focus: a change
    /// is written then, too, but nothing else.
    void focusOutEvent(QFocusEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void write();
    QString shownText() const;

    PressGuard m_guard;
    qint64 m_billId = 0;
    QString m_stored;
    QString m_shown;
    bool m_writing = false;
    bool m_writtenByPress = false;
    bool m_leftByProgram = false;
};
