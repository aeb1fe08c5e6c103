#include "ration_browser/HeldKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>

HeldKeys::HeldKeys(QObject* parent, QObjectList widgets) : QObject(parent), m_widgets(std::move(widgets)) {
    // The key may have gone down in another window.
    qApp->installEventFilter(this);
}

bool HeldKeys::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::KeyRelease && type != QEvent::KeyPress && type != QEvent::ShortcutOverride)
        return false;
    const auto* pressed = static_cast<QKeyEvent*>(event);
    const int key = pressed->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Space)
        return false;
    if (type == QEvent::KeyRelease) {
        m_releasedKey = key;
        m_releasedAt = pressed->timestamp();
        return false;
    }
    // Nobody lets a key go and presses it again so soon. A made-up event has no time.
    constexpr quint64 moment = 2;
    const bool follows = key == m_releasedKey && m_releasedAt != 0 && pressed->timestamp() - m_releasedAt <= moment;
    if (!m_widgets.contains(watched) || !(follows || pressed->isAutoRepeat()))
        return false;
    event->accept();
    return true;
}
