// The real program, started where little is as it should be: it opens the library that it was given.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/gui/Libraries.h"
#include "tests/support/Extent.h"
#include "tests/support/TestMain.h"

namespace {

/// Whether the process has the file open, as a window that shows a library has.
bool holds(qint64 process, const QString& path) {
    const QDir open(QStringLiteral("/proc/%1/fd").arg(process));
    for (const QFileInfo& entry : open.entryInfoList(QDir::Files | QDir::System)) {
        if (entry.symLinkTarget() == path)
            return true;
    }
    return false;
}

/// Starts the program by way of a shell command that ends in `exec "$@"`.
bool opensItsLibrary(const QString& path, const QString& command) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TESSEL_HOME"), testProgramFolder());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), joinPath(testProgramFolder(), QStringLiteral("config")));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral("sh"),
                  {QStringLiteral("-c"), command, QStringLiteral("sh"), QStringLiteral(TESSEL_PROGRAM), path});
    const bool opened = QTest::qWaitFor(
        [&] { return program.state() == QProcess::NotRunning || holds(program.processId(), path); }, 20'000);
    const bool runs = program.state() == QProcess::Running;
    EXPECT_TRUE(runs) << program.readAllStandardError().constData();
    program.kill();
    program.waitForFinished();
    return opened && runs;
}

}  // namespace

TEST(Start, IsNotHinderedByAMarkOfARunningCopyThatACrashCutShort) {
    const QString path = awkwardLibrary();
    const QString start = QStringLiteral("exec \"$@\"");
    EXPECT_TRUE(opensItsLibrary(path, start));
    const QDir config(joinPath(testProgramFolder(), QStringLiteral("config")));
    const QStringList marks = config.entryList({QStringLiteral("tessel-*.lock")}, QDir::Files);
    ASSERT_EQ(marks.size(), 1);
    for (const QByteArray& left : {QByteArray(), QByteArray("\0\0\0\0", 4), QByteArray("12")}) {
        QFile mark(config.filePath(marks.constFirst()));
        ASSERT_TRUE(mark.open(QIODevice::WriteOnly | QIODevice::Truncate));
        mark.write(left);
        mark.close();
        EXPECT_TRUE(opensItsLibrary(path, start)) << left.toHex().constData();
    }
}

TEST(Start, OpensItsLibraryWhereverAndHoweverItIsStarted) {
    const QString source = awkwardLibrary();
    const QString path = dataPath + QStringLiteral("清单 🏗️ 'x' %1 & #2;.bdb");
    QFile::remove(path);
    ASSERT_TRUE(QFile::copy(source, path));
    const char* const commands[] = {
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
    const int step = extent(4, 1);
    int started = 0;
    for (std::size_t i = 0; i < std::size(commands); i += static_cast<std::size_t>(step), ++started)
        EXPECT_TRUE(opensItsLibrary(path, QString::fromLatin1(commands[i]))) << commands[i];
    QFile::remove(path);
    reportFigures(QStringLiteral("odd starts of the program: %1").arg(started));
}
