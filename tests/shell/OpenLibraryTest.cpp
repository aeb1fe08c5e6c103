#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTemporaryDir>

#include "app/base/Definitions.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/frmEditor.h"
#include "storage/LibraryConnection.h"
#include "tests/shell/ShellFixture.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

class OpenLibrary : public ShellFixture {
protected:
    /// Runs Open and types `name` into the file dialog.
    void open(const QString& name) {
        ModalAnswers answers;
        answers.then([&](QWidget* dialog) {
            auto* box = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
            ASSERT_TRUE(box);
            box->setText(name);
            QTest::keyClick(box, Qt::Key_Return);
        });
        run(257);
    }
    /// The path of the library in front, and how many are open.
    QString shown() { return window.activeEditor()->DBFilePath() + QString::number(window.editors().size()); }
};

}  // namespace

TEST_F(OpenLibrary, ShowsItOnceAndBringsItToTheFrontAfterwards) {
    const QString first = copyOfSampleLibrary(u"first.bdb"_s);
    const QString second = copyOfSampleLibrary(u"second.bdb"_s);
    open(first);
    open(second);
    EXPECT_EQ(shown(), second + u'2');
    EXPECT_GT(window.activeEditor()->chapterPane()->tvSYB()->nodeCount(), 10);
    window.findChild<QMdiArea*>()->subWindowList().constFirst()->showMinimized();
    open(u"  first "_s);
    EXPECT_EQ(shown(), first + u'2');
    EXPECT_FALSE(window.activeEditor()->parentWidget()->isMinimized());
    open(dataPath + u"no such.bdb"_s);
    EXPECT_EQ(shown(), first + u'2');
    open(second);
    // A file of its own where letter case counts; the comparison does not look at the file system.
    QFile::copy(first, dataPath + u"FIRST.BDB"_s);
    open(dataPath + u"FIRST.BDB"_s);
    EXPECT_EQ(shown(), first + u'2');
    QFile::remove(dataPath + u"FIRST.BDB"_s);

    const QTemporaryDir folder;
    const QString namesake = folder.filePath(u"First.bdb"_s);
    ASSERT_TRUE(QFile::copy(first, namesake));
    window.LoadBillDB(namesake);
    const auto captions = [this] {
        QStringList all;
        for (const frmEditor* editor : window.editors())
            all << editor->windowTitle();
        return all;
    };
    EXPECT_EQ(captions(),
              QStringList({u"first.bdb（%1）"_s.arg(QDir::toNativeSeparators(QFileInfo(first).path())), u"second.bdb"_s,
                           u"First.bdb（%1）"_s.arg(QDir::toNativeSeparators(folder.path()))}));
    run(260);
    EXPECT_EQ(captions(), QStringList({u"first.bdb"_s, u"second.bdb"_s}));
}

TEST_F(OpenLibrary, WhoseCompanionCannotBeDetachedKeepsItsConnection) {
    const QString path = copyOfSampleLibrary(u"first.bdb"_s);
    window.LoadBillDB(path);
    // A companion that came later is not attached.
    const Connection* connection = window.activeEditor()->ormConn();
    QFile companion(companionPath(path));
    ASSERT_TRUE(companion.open(QIODevice::WriteOnly));
    companion.close();
    ModalAnswers answers;
    answers.closeAnything();
    run(260);
    EXPECT_TRUE(window.editors().isEmpty());
    EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.Form_Unload"_s});
    EXPECT_EQ(connection->State(), 1);
    companion.remove();
}
