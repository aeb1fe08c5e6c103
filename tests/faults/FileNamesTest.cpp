// Libraries whose names are awkward for a path, a statement, a menu or a title: made by New, opened by the dialog and
// by the command line.

#include <QDir>
#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/faults/Workplace.h"
#include "tests/support/Extent.h"
#include "tests/support/Libraries.h"

using namespace Qt::StringLiterals;

namespace {

class FileNames : public Workplace {
protected:
    FileNames() : Workplace(awkwardLibrary()) {
        user.close();
        QFile::remove(source);
        EXPECT_TRUE(QFile::rename(user.path(), source));
    }
    ~FileNames() override { cmdFile.clear(); }

    QStringList makeNew(const QString& name) { return enter(256, "txtFileName", name); }
    QStringList openByDialog(const QString& path) { return enter(257, "fileNameEdit", path); }

    /// Starts with `commandLine`; gives what was said. The library that is opened must be the one that it names.
    QStringList startWith(const QString& commandLine, bool opens = true) {
        cmdFile = commandLine;
        return messagesOf([&] {
            frmMain started;
            started.MDIForm_Load();
            ASSERT_EQ(started.editors().size(), opens ? 1 : 0);
            if (opens) {
                EXPECT_EQ(started.editors().constFirst()->DBFilePath(), commandLine);
                EXPECT_GT(started.editors().constFirst()->ormConn()->State(), 0);
            }
        });
    }

    /// Works in the active window, whose library must be the one at `path`, and closes it.
    void workIn(const QString& path) {
        ASSERT_TRUE(user.editor());
        EXPECT_EQ(user.editor()->DBFilePath(), path);
        EXPECT_EQ(user.editor()->windowTitle(), path.section(QDir::separator(), -1));
        const QStringList before = rowsInFile(path, "SELECT Name FROM tblSYB");
        EXPECT_EQ(messagesOf([this] { user.run(1, 100); }), QStringList());
        EXPECT_EQ(rowsInFile(path, "SELECT Name FROM tblSYB"), before + QStringList{u"新"_s});
        EXPECT_EQ(messagesOf([this] { main.commandBars()->execute(260); }), QStringList());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    const QString source = dataPath + u"source"_s;
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
    int opened = 0;
    const auto tryName = [&](const QString& name, bool allowed) {
        SCOPED_TRACE(qPrintable(name));
        // The default ration library is looked up by the file's name, which must not hold an apostrophe.
        const QStringList atOpening(name.contains(u'\'') ? 1 : 0, u"frmEditor.GetDefDekID 1"_s);
        const QString path = dataPath + name + u".bdb"_s;
        QFile::remove(path);
        const QStringList said = makeNew(name);
        // The boxes are of one line, and the dialog takes quotes for its own.
        const bool oneLine = !name.contains(u'\n');
        if (allowed) {
            EXPECT_EQ(said, atOpening);
            workIn(path);
        } else {
            EXPECT_EQ(said.size(), oneLine ? 1 : 0);
            EXPECT_TRUE(QFile::copy(source, path));
        }
        if (oneLine && !name.contains(u'"')) {
            EXPECT_EQ(openByDialog(path), atOpening);
            workIn(path);
            ++opened;
        }
        EXPECT_EQ(startWith(path), atOpening);
        opened += allowed ? 2 : 1;
        EXPECT_TRUE(QFile::remove(path));
    };
    for (const QString& name : byNew)
        tryName(name, true);
    for (const QString& name : byOthers)
        tryName(name, false);
    counted(u"oddly named libraries opened"_s, opened);
}

TEST_F(FileNames, DecideByTheirExtensionInAnyCaseAndStandAtAnyDepth) {
    for (const char* name : {"A.BDB", "b.Bdb"}) {
        const QString path = dataPath + QLatin1String(name);
        ASSERT_TRUE(QFile::copy(source, path));
        EXPECT_EQ(startWith(path), QStringList());
        for (const QString& other :
             {u' ' + path, path + u' ', path + u'x', u'"' + path + u'"', path.chopped(4), dataPath})
            EXPECT_EQ(startWith(other, false), QStringList());
        EXPECT_TRUE(QFile::remove(path));
    }
    // Longer than 260 characters is a path like any other; what the database cannot reach is said.
    const auto deep = [this](int length) {
        QString folder = dataPath;
        while (folder.size() < length)
            folder = joinPath(folder, u"very long folder name in a deep place"_s);
        EXPECT_TRUE(QDir().mkpath(folder));
        const QString path = joinPath(folder, u"deep.bdb"_s);
        EXPECT_TRUE(QFile::copy(source, path));
        return path;
    };
    const QString reached = deep(300);
    EXPECT_EQ(startWith(reached), QStringList());
    EXPECT_EQ(openByDialog(reached), QStringList());
    workIn(reached);
    const QString unreached = deep(600);
    EXPECT_EQ(startWith(unreached, false),
              (QStringList{u"ModDBOperator.GetOrmConn 14"_s, u"提示: 打开"_s + unreached + u"文件失败！"_s,
                           u"frmEditor.CreateTvwSYB 91"_s}));
}
