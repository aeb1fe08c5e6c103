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
    // A message box inside a procedure runs a loop of its own: the event is not over yet then.
    m_announced = false;
    if (m_depth == 0) {
        // What is done now belongs to the event that ends; it must not announce another one.
        const Scope ending;
        Q_EMIT over();
        m_announced = true;
    }
    m_announced = false;
    return true;
}
