#include "tests/support/ShippedProgram.h"

#include <gtest/gtest.h>

#include <QDir>
#include <algorithm>

#include "app/base/Paths.h"
#include "tests/support/Libraries.h"

ShippedProgram::ShippedProgram(const QStringList& arguments, const Variables& variables, const char* shell) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The message bus that the toolkit uses keeps a buffer to the end.
    const Variables always{{u"XDG_CONFIG_HOME"_s, joinPath(programFolder(), u"config"_s)},
                           {u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s}};
    for (const auto& [name, value] : always + variables)
        environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
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
