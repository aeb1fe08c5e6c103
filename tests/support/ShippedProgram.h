#pragma once

#include <QProcess>
#include <functional>

/// The program as it is shipped, in a process that ends with this object. No wait has a limit of its own: a program
/// that hangs is ended with its test by CTest.
class ShippedProgram {
public:
    /// Adds to the environment of the tests; `shell` is how a shell starts it.
    using Variables = QList<std::pair<QString, QString>>;
    explicit ShippedProgram(const QStringList& arguments, const Variables& variables = {},
                            const char* shell = "exec \"$@\"");
    ~ShippedProgram() { kill(); }

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// Waits until `there`; false when the program has ended before.
    bool waitUntil(const std::function<bool()>& there);
    /// Waits until it has opened the file, as a window that shows a library has.
    bool waitUntilItHolds(const QString& path);
    /// Waits until it has ended by itself; whether that was without an error.
    bool waitForEnd();
    /// Ends it at once.
    void kill();
    /// What it wrote to the console and how it ended.
    QString lastWords();

private:
    QProcess m_process;
};
