#include "tests/kill/Program.h"

#include <QFile>

#include "app/base/Paths.h"
#include "tests/support/SampleProgram.h"

using namespace Qt::StringLiterals;

Journal::Journal(const QByteArray& text) : contents(1) {
    // A line that was cut off is none.
    for (const QByteArray& line : text.left(text.lastIndexOf('\n') + 1).split('\n')) {
        const QByteArray word = line.split(' ').constFirst();
        const QByteArray rest = line.mid(word.size() + 1);
        if (word == "begin") {
            begun = rest.toInt();
            contents.emplace_back();
        } else if (word == "end") {
            ended = rest.toInt();
        } else if (word == "content") {
            contents.back() << QString::fromUtf8(rest);
        } else if (word == "changes") {
            changes = rest.toLongLong();
        } else if (word == "wrong") {
            wrong << QString::fromUtf8(rest);
        } else if (word == "done") {
            done = true;
        }
    }
}

Program::Program(const VirtualDisplay& display, Orders orders) : m_journal(joinPath(m_folder.path(), u"journal"_s)) {
    orders.journal = m_journal;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const auto set = [&](const char* name, const QString& value) { environment.insert(QLatin1String(name), value); };
    set("DISPLAY", display.name());
    set("QT_QPA_PLATFORM", u"xcb"_s);
    set("QT_PLUGIN_PATH", QStringLiteral(TESSEL_PLUGINS));
    set("QT_QPA_GENERIC_PLUGINS", u"user:"_s + orders.toText());
    set("XDG_CONFIG_HOME", joinPath(programFolder(), u"config"_s));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(joinPath(builtProgramFolder(), u"tessel"_s), {orders.library});
}

Program::~Program() { kill(); }

Journal Program::journal() const {
    QFile file(m_journal);
    return Journal(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
}

bool Program::waitForWork() {
    while (journal().begun == 0)
        if (waitForEnd(2))
            return journal().begun > 0;
    return true;
}

bool Program::waitForEnd(int milliseconds) {
    return m_process.state() == QProcess::NotRunning || m_process.waitForFinished(milliseconds);
}

QString Program::lastWords() {
    QFile file(m_journal);
    const QByteArray journal = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return QString::fromUtf8(m_process.readAll() + "exit " + QByteArray::number(m_process.exitCode()) + '\n' +
                             journal.right(600));
}

void Program::kill() {
    m_process.kill();
    m_process.waitForFinished();
}
