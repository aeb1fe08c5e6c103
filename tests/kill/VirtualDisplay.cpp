#include "tests/kill/VirtualDisplay.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

VirtualDisplay::VirtualDisplay() {
    constexpr int patience = 20'000;
    // The server chooses a free number and writes it when it is ready.
    m_server.start(u"Xvfb"_s,
                   {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1600x1000x24"_s, u"-nolisten"_s, u"tcp"_s});
    if (!m_server.waitForReadyRead(patience)) {
        ADD_FAILURE() << "no display: " << qPrintable(m_server.errorString());
        return;
    }
    m_name = u':' + QString::fromLatin1(m_server.readAllStandardOutput().trimmed());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, m_name);
    m_windowManager.setProcessEnvironment(environment);
    m_windowManager.start(u"openbox"_s, {u"--startup"_s, u"echo ready"_s});
    if (!m_windowManager.waitForReadyRead(patience))
        ADD_FAILURE() << "no window manager: " << qPrintable(m_windowManager.errorString());
}

VirtualDisplay::~VirtualDisplay() {
    for (QProcess* process : {&m_windowManager, &m_server}) {
        process->terminate();
        process->waitForFinished();
    }
}
