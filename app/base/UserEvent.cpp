#include "app/base/UserEvent.h"

#include <QCoreApplication>
#include <QEvent>

UserEvent& UserEvent::instance() {
    static UserEvent event;
    return event;
}

UserEvent::Scope::Scope() { ++instance().m_depth; }

UserEvent::Scope::~Scope() {
    if (--instance().m_depth == 0)
        instance().announce();
}

void UserEvent::announce() {
    if (m_announced || !QCoreApplication::instance())
        return;
    m_announced = true;
    QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
}

bool UserEvent::event(QEvent* e) {
    if (e->type() != QEvent::User)
        return QObject::event(e);
    // A message box inside a procedure runs an event loop of its own; the user's event goes on when it is closed.
    m_announced = false;
    if (m_depth == 0) {
        // Procedures that are called from over() are part of this event: the scope keeps them from announcing another.
        const Scope ending;
        Q_EMIT over();
        m_announced = true;
    }
    m_announced = false;
    return true;
}
