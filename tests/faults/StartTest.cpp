// The real program, started where little is as it should be: it opens the library that it was given.

#include <QDir>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/support/Libraries.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/ShippedProgram.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;

namespace {

bool opensItsLibrary(const QString& path, const char* shell) {
    ShippedProgram program({path}, {{u"TESSEL_HOME"_s, testProgramFolder()}, {u"QT_QPA_PLATFORM"_s, u"offscreen"_s}},
                           shell);
    const bool opened = program.waitUntilItHolds(path);
    EXPECT_TRUE(opened) << qPrintable(program.lastWords());
    return opened;
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
    for (const char* command : commands)
        EXPECT_TRUE(opensItsLibrary(path, command)) << command;
    // The mark of a running copy, cut short when a crash ended it.
    const QDir config(joinPath(testProgramFolder(), u"config"_s));
    const QStringList marks = config.entryList({u"tessel-*.lock"_s}, QDir::Files);
    ASSERT_EQ(marks.size(), 1);
    for (const QByteArray& left : {QByteArray(), QByteArray("\0\0\0\0", 4), QByteArray("12")}) {
        overwrite(config.filePath(marks.constFirst()), left);
        EXPECT_TRUE(opensItsLibrary(path, commands[0])) << left.toHex().constData();
    }
    QFile::remove(path);
}
