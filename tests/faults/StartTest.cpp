// The real program, started where little is as it should be: it opens the library that it was given.

#include <QDir>
#include <QProcess>
#include <QTest>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Libraries.h"
#include "tests/support/Extent.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;

namespace {

/// Whether the process has the file open, as a window that shows a library has.
bool holds(qint64 process, const QString& path) {
    const QFileInfoList open = QDir(u"/proc/%1/fd"_s.arg(process)).entryInfoList(QDir::Files | QDir::System);
    return std::any_of(open.begin(), open.end(), [&](const QFileInfo& file) { return file.symLinkTarget() == path; });
}

/// Starts the program by way of a shell command that ends in `exec "$@"`.
bool opensItsLibrary(const QString& path, const char* command) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"TESSEL_HOME"_s, testProgramFolder());
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    environment.insert(u"XDG_CONFIG_HOME"_s, joinPath(testProgramFolder(), u"config"_s));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(u"sh"_s, {u"-c"_s, QString::fromLatin1(command), u"sh"_s, QStringLiteral(TESSEL_PROGRAM), path});
    const bool opened = QTest::qWaitFor(
        [&] { return program.state() == QProcess::NotRunning || holds(program.processId(), path); }, 20'000);
    const bool runs = program.state() == QProcess::Running;
    EXPECT_TRUE(runs) << program.readAllStandardError().constData();
    program.kill();
    program.waitForFinished();
    return opened && runs;
}

}  // namespace

TEST(Start, OpensItsLibraryWhereverAndHoweverItIsStarted) {
    const QString path = dataPath + u"清单 🏗️ 'x' %1 & #2;.bdb"_s;
    const QString source = awkwardLibrary();
    QFile::remove(path);
    ASSERT_TRUE(QFile::copy(source, path));
    const char* const commands[] = {
        "exec \"$@\"",
        "mkdir -p \"$TESSEL_HOME/gone\" && cd \"$TESSEL_HOME/gone\" && rmdir \"$TESSEL_HOME/gone\" && exec \"$@\"",
        "unset LANG LC_ALL LC_CTYPE LANGUAGE HOME USER XDG_CONFIG_HOME; exec \"$@\"",
        "LC_ALL=C exec \"$@\"",
        "LC_ALL=xx_YY.nonsense LANGUAGE=zz exec \"$@\"",
        "LC_ALL=zh_CN.GB18030 exec \"$@\"",
        "LC_ALL=tr_TR.UTF-8 LC_NUMERIC=de_DE exec \"$@\"",
        "HOME=/nonexistent XDG_CONFIG_HOME=/dev/null TMPDIR=/nonexistent exec \"$@\"",
        "exec \"$@\" </dev/null >/dev/full 2>&1",
        "exec \"$@\" <&- >&- 2>&-",
    };
    int started = 0;
    for (std::size_t i = 0; i < std::size(commands); i += static_cast<std::size_t>(extent(8, 1)), ++started)
        EXPECT_TRUE(opensItsLibrary(path, commands[i])) << commands[i];
    // The mark of a running copy, cut short when a crash ended it.
    const QDir config(joinPath(testProgramFolder(), u"config"_s));
    const QStringList marks = config.entryList({u"tessel-*.lock"_s}, QDir::Files);
    ASSERT_EQ(marks.size(), 1);
    for (const QByteArray& left : {QByteArray(), QByteArray("\0\0\0\0", 4), QByteArray("12")}) {
        overwrite(config.filePath(marks.constFirst()), left);
        EXPECT_TRUE(opensItsLibrary(path, commands[0])) << left.toHex().constData();
        ++started;
    }
    QFile::remove(path);
    reportFigures(u"odd starts of the program: %1"_s.arg(started));
}
