// Libraries whose names are awkward for a path, a statement, a menu or a title: made by New, opened by the dialog and
// by the command line.

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTest>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "storage/Connection.h"
#include "tests/environment/Workplace.h"
#include "tests/gui/Libraries.h"
#include "tests/support/Extent.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/TemporaryLibrary.h"
#include "tests/support/Typing.h"

namespace {

class FileNames : public Workplace {
protected:
    FileNames() : Workplace(sampleCopy()) {}
    ~FileNames() override { cmdFile.clear(); }

    frmMain& window() { return *user.window(); }

    QStringList makeNew(const QString& name) {
        return messagesOf([&](ModalAnswers& answers) {
            answers.then([&](QWidget* dialog) {
                auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("txtFileName"));
                EXPECT_TRUE(QTest::qWaitFor([box] { return box->hasFocus(); }));
                typeText(box, name);
                QTest::keyClick(box, Qt::Key_Return);
                if (dialog->isVisible())
                    QTest::keyClick(box, Qt::Key_Escape);
            });
            window().commandBars()->execute(256);
        });
    }

    QStringList openByDialog(const QString& path) {
        return messagesOf([&](ModalAnswers& answers) {
            answers.then([&](QWidget* dialog) {
                auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
                ASSERT_TRUE(box);
                box->setText(path);
                QTest::keyClick(box, Qt::Key_Return);
            });
            window().commandBars()->execute(257);
        });
    }

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
        const QString name = QStringLiteral("章%1").arg(++m_names);
        EXPECT_EQ(messagesOf([&](ModalAnswers& answers) {
                      giveName(answers, name);
                      user.run(1, 100);
                  }).size(),
                  1);
        EXPECT_EQ(rowsInFile(path, sql("SELECT Name FROM tblSYB WHERE Name='", name, "'")), QStringList{name});
        EXPECT_EQ(messagesOf([this] { window().commandBars()->execute(260); }), QStringList());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

private:
    int m_names = 0;
};

}  // namespace

TEST_F(FileNames, AreTakenAsTheyAre) {
    // The default ration library is looked up by the file's name, which must not hold an apostrophe.
    const QStringList refused{QStringLiteral("frmEditor.GetDefDekID 1")};
    struct Name {
        QString name;
        bool byNew = true;
    };
    const Name names[] = {
        {QStringLiteral("it's")},
        {QStringLiteral("';DROP TABLE tblBill;--")},
        {QStringLiteral("two  blanks")},
        {QStringLiteral("100%")},
        {QStringLiteral("%1 %s %n")},
        {QStringLiteral("a#b&c;d=e,f")},
        {QStringLiteral("&File")},
        {QStringLiteral("广东省建设工程量清单（2018）“标准”")},
        {QStringLiteral("emoji 🏗️👷🏽‍♀️")},
        {QString::fromUtf8("e\u0301\u202Eright to left")},
        {QStringLiteral("[a]{b}(c)!@^~`$+")},
        {QStringLiteral("<b>bold<br>"), false},
        {QStringLiteral("who?.what*"), false},
        {QStringLiteral("say \"yes\" | no"), false},
        {QStringLiteral("file:a.bdb?mode=ro"), false},
        {QStringLiteral("title [*]"), false},
        {QStringLiteral("a\nb\tc"), false},
        {QStringLiteral(".hidden")},
        {QStringLiteral("dots...")},
        {QStringLiteral("x.bdb")},
        {QStringLiteral(":memory:"), false},
        {QString(200, QLatin1Char('n'))},
        {QString(80, QChar(0x957F))},
    };
    window().commandBars()->execute(260);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    int opened = 0;
    for (std::size_t i = 0; i < std::size(names); i += static_cast<std::size_t>(extent(2, 1))) {
        const Name& each = names[i];
        SCOPED_TRACE(qPrintable(each.name));
        const bool apostrophe = each.name.contains(QLatin1Char('\''));
        const QStringList atOpening = apostrophe ? refused : QStringList();
        const QString path = dataPath + each.name + QStringLiteral(".bdb");
        QFile::remove(path);
        if (each.byNew) {
            EXPECT_EQ(makeNew(each.name).mid(1), atOpening);
            workIn(path);
        } else {
            EXPECT_EQ(makeNew(each.name).size(), each.name.contains(QLatin1Char('\n')) ? 1 : 2);
            EXPECT_TRUE(QFile::copy(sampleCopy(), path));
        }
        // The dialog takes quotes for its own, and its box is of one line.
        const bool writable = !each.name.contains(QLatin1Char('\n')) && !each.name.contains(QLatin1Char('"'));
        if (writable) {
            EXPECT_EQ(openByDialog(path).mid(1), atOpening);
            workIn(path);
        }
        EXPECT_EQ(startWith(path), atOpening);
        opened += 1 + (each.byNew ? 1 : 0) + (writable ? 1 : 0);
        EXPECT_TRUE(QFile::remove(path));
    }
    user.open();
    reportFigures(QStringLiteral("file names: %1, opened %2 times").arg(std::size(names)).arg(opened));
}

TEST_F(FileNames, DecideByTheirExtensionInAnyCaseAndStandAtAnyDepth) {
    const QString source = sampleCopy();
    for (const char* name : {"A.BDB", "b.Bdb"}) {
        const QString path = dataPath + QString::fromLatin1(name);
        ASSERT_TRUE(QFile::copy(source, path));
        EXPECT_EQ(startWith(path), QStringList());
        for (const QString& other : {QLatin1Char(' ') + path, path + QLatin1Char(' '), path + QLatin1Char('x'),
                                     QLatin1Char('"') + path + QLatin1Char('"'), path.chopped(4), dataPath})
            EXPECT_EQ(startWith(other, false), QStringList());
        EXPECT_TRUE(QFile::remove(path));
    }
    // Longer than 260 characters is a path like any other; what the database cannot reach is said.
    QString folder = dataPath;
    while (folder.size() < 300)
        folder = joinPath(folder, QStringLiteral("very long folder name in a deep place"));
    ASSERT_TRUE(QDir().mkpath(folder));
    QString deep = joinPath(folder, QStringLiteral("deep.bdb"));
    ASSERT_TRUE(QFile::copy(source, deep));
    EXPECT_EQ(startWith(deep), QStringList());
    EXPECT_EQ(openByDialog(deep).size(), 1);
    workIn(deep);
    while (folder.size() < 600)
        folder = joinPath(folder, QStringLiteral("very long folder name in a deep place"));
    ASSERT_TRUE(QDir().mkpath(folder));
    deep = joinPath(folder, QStringLiteral("deep.bdb"));
    ASSERT_TRUE(QFile::copy(source, deep));
    EXPECT_EQ(startWith(deep, false), (QStringList{QStringLiteral("ModDBOperator.GetOrmConn 14"),
                                                   QStringLiteral("提示: 打开") + deep + QStringLiteral("文件失败！"),
                                                   QStringLiteral("frmEditor.CreateTvwSYB 91")}));
}
