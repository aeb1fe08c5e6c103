// The real program, started where little is as it should be: it opens the library that it was given.

#include "tests/support/Libraries.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/ShippedProgram.h"

TEST(Start, OpensItsLibraryWhereverAndHoweverItIsStarted) {
    const QString path = dataPath + u"清单 🏗️ 'x' %1 & #2;.bdb"_s;
    ASSERT_TRUE(QFile::rename(awkwardLibrary(), path));
    const auto expectThatItOpens = [&](const char* shell) {
        const ShippedProgram::Variables variables{{u"TESSEL_HOME"_s, programFolder()},
                                                  {u"QT_QPA_PLATFORM"_s, u"offscreen"_s}};
        ShippedProgram program({path}, variables, shell);
        EXPECT_TRUE(program.waitUntilItHolds(path)) << shell << ": " << qPrintable(program.lastWords());
    };
    for (const char* shell : {
             "mkdir -p \"$TESSEL_HOME/gone\" && cd \"$TESSEL_HOME/gone\" && rmdir \"$TESSEL_HOME/gone\" && exec \"$@\"",
             "unset LANG LC_ALL LC_CTYPE LANGUAGE HOME USER XDG_CONFIG_HOME; exec \"$@\"",
             "LC_ALL=C exec \"$@\"",
             "LC_ALL=xx_YY.nonsense LANGUAGE=zz exec \"$@\"",
             "LC_ALL=zh_CN.GB18030 exec \"$@\"",
             "LC_ALL=tr_TR.UTF-8 LC_NUMERIC=de_DE exec \"$@\"",
             "HOME=/nonexistent XDG_CONFIG_HOME=/dev/null TMPDIR=/nonexistent exec \"$@\"",
             "exec \"$@\" </dev/null >/dev/full 2>&1",
             "exec \"$@\" <&- >&- 2>&-",
         })
        expectThatItOpens(shell);
    // The mark of a running copy, cut short when a crash ended it.
    const QDir config(joinPath(programFolder(), u"config"_s));
    const QStringList marks = config.entryList({u"tessel-*.lock"_s}, QDir::Files);
    ASSERT_EQ(marks.size(), 1);
    for (const QByteArray& left : {QByteArray(), QByteArray("\0\0\0\0", 4), QByteArray("12")}) {
        overwrite(config.filePath(marks.constFirst()), left);
        expectThatItOpens("exec \"$@\"");
    }
}
