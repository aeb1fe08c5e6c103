// Libraries whose names are awkward for a path, a statement, a menu or a title: made by New, opened by the dialog and
// by the command line.

#include "tests/faults/Workplace.h"

namespace {

class FileNames : public Workplace {
protected:
    FileNames() { user.close(); }
    ~FileNames() override { cmdFile.clear(); }

    QStringList makeNew(const QString& name) { return enter(256, "txtFileName", name); }
    QStringList openByDialog(const QString& library) { return enter(257, "fileNameEdit", library); }

    /// Starts with `commandLine`; gives what was said. The library that is opened must be the one that it names.
    QStringList startWith(const QString& commandLine, bool opens = true) {
        cmdFile = commandLine;
        return messagesOf([&] {
            frmMain started;
            started.MDIForm_Load();
            ASSERT_EQ(started.editors().size(), opens ? 1 : 0);
            EXPECT_TRUE(!opens || (started.editors().constFirst()->DBFilePath() == commandLine &&
                                   started.editors().constFirst()->ormConn()->State() > 0));
        });
    }

    /// Works in the active window, whose library must be the one at `library`, and closes it.
    void workIn(const QString& library) {
        ASSERT_TRUE(user.editor());
        EXPECT_EQ(user.editor()->DBFilePath(), library);
        EXPECT_EQ(user.editor()->windowTitle(), library.section(QDir::separator(), -1));
        const QStringList before = rowsInFile(library, "SELECT Name FROM tblSYB");
        EXPECT_EQ(messagesOf([this] { user.run(1, 100), user.close(); }), QStringList());
        EXPECT_EQ(rowsInFile(library, "SELECT Name FROM tblSYB"), before + QStringList{u"新"_s});
    }
};

}  // namespace

TEST_F(FileNames, AreTakenAsTheyAre) {
    // Those that New takes, and those that only others give.
    const QStringList byNew =
        u"it's¦two  blanks¦a#b&c;d=e,f¦';DROP TABLE tblBill;--¦100%¦%1 %s %n¦&File¦广东省建设工程量清单（2018）“标准”¦"
        u"emoji 🏗️👷🏽‍♀️¦e\u0301\u202Eright to left¦[a]{b}(c)!@^~`$+¦.hidden¦dots...¦x.bdb"_s
            .split(u'¦') +
        QStringList{QString(200, u'n'), QString(80, u'长')};
    const QStringList byOthers =
        u"<b>bold<br>¦who?.what*¦say \"yes\" | no¦file:a.bdb?mode=ro¦title [*]¦a\nb\tc¦:memory:"_s.split(u'¦');
    for (const QString& name : byNew + byOthers) {
        SCOPED_TRACE(qPrintable(name));
        // The default ration library is looked up by the file's name, which must not hold an apostrophe.
        const QStringList atOpening(name.contains(u'\'') ? 1 : 0, u"frmEditor.GetDefDekID 1"_s);
        const QString library = dataPath + name + u".bdb"_s;
        QFile::remove(library);
        // The boxes are of one line, and the dialog takes quotes for its own.
        const bool oneLine = !name.contains(u'\n');
        if (byNew.contains(name)) {
            EXPECT_EQ(makeNew(name), atOpening);
            workIn(library);
        } else {
            EXPECT_TRUE(!oneLine || makeNew(name).size() == 1);
            EXPECT_TRUE(QFile::copy(path, library));
        }
        if (oneLine && !name.contains(u'"')) {
            EXPECT_EQ(openByDialog(library), atOpening);
            workIn(library);
        }
        EXPECT_EQ(startWith(library), atOpening);
    }
    counted(u"oddly named libraries"_s, byNew.size() + byOthers.size());
}

TEST_F(FileNames, DecideByTheirExtensionInAnyCaseAndStandAtAnyDepth) {
    for (const char* name : {"A.BDB", "b.Bdb"}) {
        const QString library = dataPath + QLatin1String(name);
        ASSERT_TRUE(QFile::copy(path, library));
        EXPECT_EQ(startWith(library), QStringList());
        for (const QString& other :
             {u' ' + library, library + u' ', library + u'x', u'"' + library + u'"', library.chopped(4), dataPath})
            EXPECT_EQ(startWith(other, false), QStringList());
        EXPECT_TRUE(QFile::remove(library));
    }
    // Longer than 260 characters is a path like any other.
    QString folder = dataPath;
    while (folder.size() < 300)
        folder = joinPath(folder, u"very long folder name in a deep place"_s);
    const QString deep = joinPath(folder, u"deep.bdb"_s);
    ASSERT_TRUE(QDir().mkpath(folder) && QFile::copy(path, deep));
    EXPECT_EQ(startWith(deep), QStringList());
    EXPECT_EQ(openByDialog(deep), QStringList());
    workIn(deep);
}
