#include <gtest/gtest.h>

#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/controls/KeyedTree.h"
#include "app/shell/frmMain.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/frmEditor.h"
#include "storage/LibraryConnection.h"
#include "storage/SystemDatabase.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"

namespace {

class OpenLibrary : public ::testing::Test {
protected:
    OpenLibrary() {
        installSamples();
        window.MDIForm_Load();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    /// Runs Open and types `name` into the file dialog.
    void open(const QString& name) {
        ModalAnswers answers;
        answers.then([&](QWidget* dialog) {
            EXPECT_EQ(dialog->windowTitle(), QStringLiteral("打开"));
            auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            ASSERT_TRUE(box);
            box->setText(name);
            QTest::keyClick(box, Qt::Key_Return);
        });
        window.commandBars()->execute(257);
    }

    frmMain window;
};

}  // namespace

TEST_F(OpenLibrary, ShowsItOnceAndBringsItToTheFrontAfterwards) {
    const QString first = copyOfSampleLibrary(QStringLiteral("first.bdb"));
    const QString second = copyOfSampleLibrary(QStringLiteral("second.bdb"));
    open(first);
    open(second);
    ASSERT_EQ(window.editors().size(), 2);
    EXPECT_EQ(window.activeEditor()->DBFilePath(), second);
    EXPECT_GT(window.activeEditor()->chapterPane()->tvSYB()->nodeCount(), 10);
    EXPECT_TRUE(window.activeEditor()->chapterPane()->tvSYB()->selectedNode());

    open(first);
    EXPECT_EQ(window.editors().size(), 2);
    EXPECT_EQ(window.activeEditor()->DBFilePath(), first);

    open(dataPath + QStringLiteral("no such.bdb"));
    EXPECT_EQ(window.editors().size(), 2);
}

TEST_F(OpenLibrary, TheSamePathInOtherLettersIsTheSameLibrary) {
    const QString path = copyOfSampleLibrary(QStringLiteral("first.bdb"));
    window.LoadBillDB(path);
    // A second file where letter case counts; the comparison does not look at the file system.
    const QString other = dataPath + QStringLiteral("FIRST.BDB");
    QFile::copy(path, other);
    open(other);
    EXPECT_EQ(window.editors().size(), 1);
    QFile::remove(other);
}

TEST_F(OpenLibrary, WhatCannotBeOpenedIsSaidAndLeavesAWorkingWindow) {
    const QString path = dataPath + QStringLiteral("damaged.bdb");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(8192, 'x'));
    file.close();
    {
        ModalAnswers answers;
        answers.closeAnything();
        window.LoadBillDB(path);
        ASSERT_EQ(answers.seen().size(), 3) << qPrintable(answers.seen().join(QLatin1Char('\n')));
        EXPECT_TRUE(answers.seen()[0].contains(QStringLiteral("错误位置: ModDBOperator.GetOrmConn\r\n错误号码: 26")));
        EXPECT_EQ(answers.seen()[1], QStringLiteral("提示: 打开") + path + QStringLiteral("文件失败！"));
        EXPECT_TRUE(answers.seen()[2].contains(QStringLiteral("错误位置: frmEditor.CreateTvwSYB")));
    }
    EXPECT_TRUE(window.editors().isEmpty());
    window.LoadBillDB(copyOfSampleLibrary());
    EXPECT_EQ(window.editors().size(), 1);
}

TEST_F(OpenLibrary, ClosingFreesTheFileAndItsCompanion) {
    const QString path = copyOfSampleLibrary(QStringLiteral("first.bdb"));
    {
        Connection companion;
        companion.Open(companionPath(path), QString::fromLatin1(systemKey), 6);
        companion.Execute("CREATE TABLE IF NOT EXISTS extra (a)");
    }
    window.LoadBillDB(path);
    ASSERT_TRUE(window.activeEditor()->ormConn());
    EXPECT_FALSE(window.activeEditor()->ormConn()->OpenRecordset("SELECT name FROM dbext.sqlite_master").EndOfFile());
    window.commandBars()->execute(260);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.editors().isEmpty());
    Connection other;
    other.Open(path, QString(), 6);
    other.Execute("BEGIN EXCLUSIVE");
    other.Close();
    QFile::remove(companionPath(path));
}

TEST_F(OpenLibrary, ADetachThatFailsIsRecordedAndLeavesTheFileOpen) {
    const QString path = copyOfSampleLibrary(QStringLiteral("first.bdb"));
    window.LoadBillDB(path);
    Connection* connection = window.activeEditor()->ormConn();
    QFile companion(companionPath(path));
    ASSERT_TRUE(companion.open(QIODevice::WriteOnly));
    companion.close();
    ModalAnswers answers;
    answers.closeAnything();
    window.commandBars()->execute(260);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.editors().isEmpty());
    ASSERT_EQ(answers.seen().size(), 1);
    EXPECT_TRUE(answers.seen()[0].contains(QStringLiteral("错误位置: frmEditor.Form_Unload")));
    EXPECT_EQ(connection->State(), 1);
    companion.remove();
}
