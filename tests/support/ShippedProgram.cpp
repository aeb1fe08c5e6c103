#include "tests/support/ShippedProgram.h"

#include <gtest/gtest.h>

#include <QDir>
#include <algorithm>

#include "app/base/Paths.h"
#include "tests/support/Libraries.h"

using namespace Qt::StringLiterals;

namespace {

QProcessEnvironment with(const ShippedProgram::Variables& variables) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : variables)
        environment.insert(name, value);
    return environment;
}

}  // namespace

ShippedProgram::ShippedProgram(const QStringList& arguments, const Variables& variables, const char* shell) {
    // The message bus that the toolkit uses keeps a buffer to the end.
    m_process.setProcessEnvironment(with(Variables{{u"XDG_CONFIG_HOME"_s, joinPath(programFolder(), u"config"_s)},
                                                   {u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s}} +
                                         variables));
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(
        u"sh"_s, QStringList{u"-c"_s, QString::fromUtf8(shell), u"sh"_s, joinPath(builtProgramFolder(), u"tessel"_s)} +
                     arguments);
    EXPECT_TRUE(m_process.waitForStarted(-1)) << qPrintable(m_process.errorString());
}

bool ShippedProgram::waitUntil(const std::function<bool()>& there) {
    while (isRunning() && !there())
        m_process.waitForFinished(5);
    return isRunning();
}

bool ShippedProgram::waitUntilItHolds(const QString& path) {
    const QDir open(u"/proc/%1/fd"_s.arg(m_process.processId()));
    return waitUntil([&] {
        return std::ranges::any_of(open.entryInfoList(QDir::Files | QDir::System),
                                   [&](const QFileInfo& file) { return file.symLinkTarget() == path; });
    });
}

bool ShippedProgram::waitForEnd() {
    m_process.waitForFinished(-1);
    return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}

void ShippedProgram::kill() {
    m_process.kill();
    m_process.waitForFinished(-1);
}

QString ShippedProgram::lastWords() {
    return QString::fromUtf8(m_process.readAll() + "exit " + QByteArray::number(m_process.exitCode()));
}

VirtualDisplay::VirtualDisplay() {
    // The server chooses a free number and writes it when it is ready; the manager says so by a command.
    const auto lastLine = [](QProcess& process, const QByteArray& end) {
        QByteArray said;
        while (!said.endsWith(end) && process.waitForReadyRead(-1))
            said += process.readAllStandardOutput();
        EXPECT_TRUE(said.endsWith(end)) << qPrintable(process.errorString());
        return QString::fromLatin1(said.trimmed().split('\n').constLast());
    };
    m_server.start(u"Xvfb"_s,
                   {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1600x1000x24"_s, u"-nolisten"_s, u"tcp"_s});
    m_name = u':' + lastLine(m_server, "\n");
    m_windowManager.setProcessEnvironment(with(variables()));
    m_windowManager.start(u"openbox"_s, {u"--startup"_s, u"echo ready"_s});
    lastLine(m_windowManager, "ready\n");
}

VirtualDisplay::~VirtualDisplay() {
    for (QProcess* process : {&m_windowManager, &m_server}) {
        process->terminate();
        process->waitForFinished(-1);
    }
}

ShippedProgram::Variables VirtualDisplay::variables() const {
    return {{u"DISPLAY"_s, m_name}, {u"QT_QPA_PLATFORM"_s, u"xcb"_s}};
}
