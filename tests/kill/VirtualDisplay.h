#pragma once

#include <QProcess>

/// A display of its own with a window manager, gone with this object.
class VirtualDisplay {
public:
    VirtualDisplay();
    ~VirtualDisplay();
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    /// As the variable DISPLAY holds it; empty when no display could be started.
    const QString& name() const { return m_name; }

private:
    QProcess m_server;
    QProcess m_windowManager;
    QString m_name;
};
