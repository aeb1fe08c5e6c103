#include "app/controls/PressGuard.h"

#include <QApplication>
#include <QInputMethod>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTimer>
#include <QWindow>

PressGuard::PressGuard(std::function<bool()> commit) : m_commit(std::move(commit)) {}

void PressGuard::finishComposing() {
    QGuiApplication::inputMethod()->commit();
    // Some input methods commit only now. For the others nothing is left to reset.
    QGuiApplication::inputMethod()->reset();
}

void PressGuard::watch(QWidget* editor, bool waitsForChooser) {
    m_editor = editor;
    m_waitsForChooser = waitsForChooser;
    if (editor)
        qApp->installEventFilter(this);
    else  // The double click that belongs to a dropped press is still to come.
        QTimer::singleShot(0, this, [this] {
            if (!m_editor)
                qApp->removeEventFilter(this);
        });
}

bool PressGuard::mayPass(const QWindow* window, const QPoint& position) const {
    const QWidget* modal = QApplication::activeModalWidget();
    if (!m_editor || QApplication::activePopupWidget() || (modal && !modal->isAncestorOf(m_editor)))
        return true;
    for (const QWidget* top : QApplication::topLevelWidgets()) {
        if (top->windowHandle() != window)
            continue;
        if (m_waitsForChooser && top != m_editor->window())
            return true;

        const QWidget* pressed = top->childAt(top->mapFromGlobal(position));
        return pressed == m_editor || m_editor->isAncestorOf(pressed) || qobject_cast<const QScrollBar*>(pressed);
    }
    return true;
}

bool PressGuard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusAboutToChange && watched->isWidgetType())
        finishComposing();
    const bool isDoubleClick = event->type() == QEvent::MouseButtonDblClick;
    // A press reaches the window before it reaches a widget.
    if ((event->type() != QEvent::MouseButtonPress && !isDoubleClick) || !watched->isWindowType())
        return false;
    const auto* press = static_cast<QMouseEvent*>(event);
    // The toolkit tells a double click as a press and a double click of the same time.
    if (isDoubleClick && press->timestamp() == m_droppedAt)
        return true;
    if (mayPass(static_cast<QWindow*>(watched), press->globalPosition().toPoint()))
        return false;
    // The commit may close windows, the editor's own as well.
    const QPointer<QObject> window = watched;
    const QPointer<PressGuard> self = this;
    const auto commit = m_commit;
    const bool goesOn = commit() && window && QGuiApplication::mouseButtons().testFlag(press->button());
    if (self && !goesOn)
        m_droppedAt = press->timestamp();
    return !goesOn;
}
