#pragma once

#include <QObject>

/// Tells when the event that the user caused has been dealt with.
///
/// Every guarded procedure is a part of such an event. When the outermost one has returned, over() is emitted as soon
/// as the event loop is reached again, before any further input: leftovers of a failed command are committed then and
/// the state of commands is shown anew. Code that calls procedures outside an event loop sees the state in between.
class UserEvent : public QObject {
    Q_OBJECT

public:
    static UserEvent& instance();

    /// Whether a guarded procedure is running, be it that it asks the user something.
    static bool isGoingOn() { return instance().m_depth > 0; }

    /// Marks one guarded procedure as running for as long as it lives.
    class Scope {
    public:
        Scope();
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
    };

Q_SIGNALS:
    void over();

private:
    bool event(QEvent* e) override;
    void announce();

    int m_depth = 0;
    bool m_announced = false;
};
