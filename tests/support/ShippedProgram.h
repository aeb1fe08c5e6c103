#pragma once

#include "tests/support/Libraries.h"

/// The program as it is shipped, in a process that ends with this object. No wait has a limit of its own: a program
/// that hangs is ended with its test by CTest.
class ShippedProgram {
public:
    /// Adds to the environment of the tests; `shell` is how a shell starts it.
    using Variables = QList<std::pair<QString, QString>>;
    explicit ShippedProgram(const QStringList& arguments, const Variables& variables = {},
                            const char* shell = "exec \"$@\"") {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // The message bus that the toolkit uses keeps a buffer to the end.
        const Variables always{{u"XDG_CONFIG_HOME"_s, joinPath(programFolder(), u"config"_s)},
                               {u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s}};
        for (const auto& [name, value] : always + variables)
            environment.insert(name, value);
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(u"sh"_s, QStringList{u"-c"_s, QString::fromUtf8(shell), u"sh"_s,
                                             joinPath(builtProgramFolder(), u"tessel"_s)} +
                                     arguments);
        EXPECT_TRUE(m_process.waitForStarted(-1)) << qPrintable(m_process.errorString());
    }
    ~ShippedProgram() { kill(); }

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// Waits until `there`; false when the program has ended before.
    bool waitUntil(const std::function<bool()>& there) {
        while (isRunning() && !there())
            m_process.waitForFinished(5);
        return isRunning();
    }
    /// Waits until it has opened the file, as a window that shows a library has.
    bool waitUntilItHolds(const QString& path) {
        const QDir open(u"/proc/%1/fd"_s.arg(m_process.processId()));
        return waitUntil([&] {
            return std::ranges::any_of(open.entryInfoList(QDir::Files | QDir::System),
                                       [&](const QFileInfo& file) { return file.symLinkTarget() == path; });
        });
    }
    /// Waits until it has ended by itself; whether that was without an error.
    bool waitForEnd() {
        m_process.waitForFinished(-1);
        return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    }
    /// Ends it at once.
    void kill() {
        m_process.kill();
        m_process.waitForFinished(-1);
    }
    /// What it wrote to the console and how it ended.
    QString lastWords() {
        return QString::fromUtf8(m_process.readAll() + "exit " + QByteArray::number(m_process.exitCode()));
    }

private:
    QProcess m_process;
};
