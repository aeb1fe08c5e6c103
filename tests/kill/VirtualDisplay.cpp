#include "tests/kill/VirtualDisplay.h"

#include <gtest/gtest.h>

VirtualDisplay::VirtualDisplay() {
    constexpr int patience = 20'000;
    // The server chooses a free number and writes it when it is ready.
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("1600x1000x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    if (!m_server.waitForReadyRead(patience)) {
        ADD_FAILURE() << "no display: " << qPrintable(m_server.errorString());
        return;
    }
    m_name = QLatin1Char(':') + QString::fromLatin1(m_server.readAllStandardOutput().trimmed());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_name);
    m_windowManager.setProcessEnvironment(environment);
    m_windowManager.start(QStringLiteral("openbox"), {QStringLiteral("--startup"), QStringLiteral("echo ready")});
    if (!m_windowManager.waitForReadyRead(patience))
        ADD_FAILURE() << "no window manager: " << qPrintable(m_windowManager.errorString());
}

VirtualDisplay::~VirtualDisplay() {
    for (QProcess* process : {&m_windowManager, &m_server}) {
        process->terminate();
        process->waitForFinished();
    }
}
