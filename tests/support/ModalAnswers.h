#pragma once

#include "tests/support/Toolkit.h"

/// Answers the modal windows that appear while it lives, as a user would, and remembers what they said.
///
/// Answers are used in the order in which they were given; a message box that nobody foresaw is closed with Esc and
/// fails the test at the end.
class ModalAnswers : public QObject {
    Q_OBJECT

public:
    ModalAnswers();
    ~ModalAnswers() override;

    /// Presses the standard button `button` (QMessageBox::StandardButton) of the next message box.
    ModalAnswers& press(int button);

    /// Does `act` with the next modal window, which it must bring to close.
    ModalAnswers& then(std::function<void(QWidget*)> act);

    /// From now on unforeseen modal windows are remembered and left to `act`, which must bring them to close.
    ModalAnswers& otherwise(std::function<void(QWidget*)> act);
    ModalAnswers& closeAnything() { return otherwise(&QWidget::close); }

    /// "title: text" of every message box seen; the window title of other dialogs.
    const QStringList& seen() const { return m_seen; }
    QStringList takeSeen() { return std::exchange(m_seen, {}); }
    /// The same, of a shown error record only its place ("frmEditor.LoadBill").
    QStringList takePlaces();
    /// The same, of a shown error record its place and its number ("frmEditor.LoadBill 5").
    QStringList takeRecords();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void answer(QWidget* window);

    std::vector<std::function<void(QWidget*)>> m_answers;
    std::size_t m_next = 0;
    std::function<void(QWidget*)> m_otherwise;
    QStringList m_seen;
};
