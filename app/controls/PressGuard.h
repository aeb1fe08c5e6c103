#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

class QWindow;

/// Commits what is being typed before the mouse can act anywhere else, and takes what an input method is still
/// composing as typed before the focus goes.
///
/// While it watches an editor, a mouse press in any window of the program runs `commit` first, before the focus moves.
/// The press is dropped when the editor stays open, and also when the button is up by then: a message box came in
/// between, and what the user pressed for may be gone. Presses in the editor itself, in menus and drop-down lists, on
/// scroll bars and in a modal window above the editor's own change nothing and pass.
class PressGuard : public QObject {
    Q_OBJECT

public:
    /// `commit` ends the edit; it returns false when the editor stays open.
    explicit PressGuard(std::function<bool()> commit);

    /// Takes what an input method is composing as typed.
    static void finishComposing();

    /// Watches `editor`, an open one; null for none. One that waits for what is chosen in another window lets presses
    /// there pass.
    void watch(QWidget* editor, bool waitsForChooser = false);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool mayPass(const QWindow* window, const QPoint& position) const;

    std::function<bool()> m_commit;
    QPointer<QWidget> m_editor;
    bool m_waitsForChooser = false;

    quint64 m_droppedAt = 0;
};
