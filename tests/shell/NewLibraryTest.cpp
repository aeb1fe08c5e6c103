#include <gtest/gtest.h>

#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "app/base/Definitions.h"
#include "app/shell/frmMain.h"
#include "editor/frmEditor.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/TemporaryLibrary.h"
#include "tests/support/Typing.h"

namespace {

class NewLibrary : public ::testing::Test {
protected:
    NewLibrary() {
        installSamples();
        window.MDIForm_Load();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    /// Types `name` into the open name dialog in place of what is there and presses Enter.
    static void enter(QWidget* dialog, const QString& name) {
        auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("txtFileName"));
        EXPECT_TRUE(QTest::qWaitFor([box] { return box->hasFocus(); }));
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Delete);
        typeText(box, name);
        QTest::keyClick(box, Qt::Key_Return);
    }

    void runNew() { window.commandBars()->execute(256); }

    frmMain window;
};

const QString forbidden = QStringLiteral("输入错误: 文件不能包含下列任何字符之一：\\/:*?\"<>|");

}  // namespace

TEST_F(NewLibrary, RefusesBadNamesAndMakesTheLibraryOfAGoodOne) {
    QFile::remove(dataPath + QStringLiteral("新库.v2.bdb"));
    ModalAnswers answers;
    answers
        .then([](QWidget* dialog) {
            EXPECT_EQ(dialog->windowTitle(), QStringLiteral("新建文件"));
            enter(dialog, QStringLiteral("   "));
            enter(dialog, QStringLiteral("a:b"));
            enter(dialog, QStringLiteral("x|"));
            enter(dialog, QStringLiteral(" 新库.v2 "));
        })
        .press(QMessageBox::Ok)
        .press(QMessageBox::Ok)
        .press(QMessageBox::Ok);
    runNew();
    EXPECT_EQ(answers.seen(), QStringList({QStringLiteral("新建文件"), QStringLiteral("输入错误: 输入文件名不能为空！"),
                                           forbidden, forbidden}));
    ASSERT_TRUE(window.activeEditor());
    EXPECT_EQ(window.activeEditor()->DBFilePath(), dataPath + QStringLiteral("新库.v2.bdb"));
    EXPECT_EQ(window.activeEditor()->windowTitle(), QStringLiteral("新库.v2.bdb"));
    EXPECT_EQ(rowsInFile(window.activeEditor()->DBFilePath(), "SELECT count(*) FROM sqlite_master"),
              QStringList{QStringLiteral("10")});
}

TEST_F(NewLibrary, AsksBeforeItReplacesALibrary) {
    const QString path = copyOfSampleLibrary(QStringLiteral("old.bdb"));
    QFile(path).setPermissions(QFileDevice::ReadOwner);
    const QString question = QStringLiteral("提示: 存在相同的文件名，是否覆盖原来的文件？");
    {
        ModalAnswers answers;
        answers
            .then([](QWidget* dialog) {
                enter(dialog, QStringLiteral("old"));
                EXPECT_TRUE(dialog->isVisible());
                QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("btnCanel")), Qt::LeftButton);
            })
            .press(QMessageBox::No);
        runNew();
        EXPECT_EQ(answers.seen().last(), question);
        EXPECT_FALSE(window.activeEditor());
        EXPECT_NE(rowsInFile(path, "SELECT count(*) FROM tblBill"), QStringList{QStringLiteral("0")});
    }
    ModalAnswers answers;
    answers.then([](QWidget* dialog) { enter(dialog, QStringLiteral("old")); }).press(QMessageBox::Yes);
    runNew();
    ASSERT_TRUE(window.activeEditor());
    EXPECT_EQ(rowsInFile(path, "SELECT count(*) FROM tblBill"), QStringList{QStringLiteral("0")});
}

TEST_F(NewLibrary, NeverTouchesALibraryThatIsOpen) {
    const QString path = copyOfSampleLibrary(QStringLiteral("open.bdb"));
    window.LoadBillDB(path);
    const QStringList before = rowsInFile(path, "SELECT * FROM tblBill");
    ModalAnswers answers;
    answers.then([](QWidget* dialog) { enter(dialog, QStringLiteral("open")); })
        .press(QMessageBox::Yes)
        .press(QMessageBox::Ok);
    runNew();
    EXPECT_EQ(answers.seen().last(), QStringLiteral("提示: 创建文件失败！"));
    EXPECT_EQ(rowsInFile(path, "SELECT * FROM tblBill"), before);
    EXPECT_EQ(window.editors().size(), 1);
}

TEST_F(NewLibrary, EscCancels) {
    ModalAnswers answers;
    answers.then([](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    runNew();
    EXPECT_FALSE(window.activeEditor());
}
