#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "app/base/Definitions.h"
#include "editor/frmEditor.h"
#include "storage/LibraryConnection.h"
#include "tests/shell/ShellFixture.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

class NewLibrary : public ShellFixture {
protected:
    /// Types each name into the name dialog in place of what is there and presses Enter; then presses its button
    /// `last`, or else Esc.
    static std::function<void(QWidget*)> enter(const QStringList& names, const QString& last = {}) {
        return [=](QWidget* dialog) {
            EXPECT_EQ(dialog->windowTitle(), u"新建文件"_s);
            auto* box = dialog->findChild<QLineEdit*>(u"txtFileName"_s);
            for (const QString& name : names) {
                EXPECT_TRUE(QTest::qWaitFor([box] { return box->hasFocus(); }));
                box->selectAll();
                typeText(box, name);
                QTest::keyClick(box, Qt::Key_Return);
            }
            if (!last.isEmpty())
                QTest::mouseClick(dialog->findChild<QPushButton*>(last), Qt::LeftButton);
            else if (dialog->isVisible())
                QTest::keyClick(dialog, Qt::Key_Escape);
        };
    }
};

const QString question = u"提示: 存在相同的文件名，是否覆盖原来的文件？"_s;

}  // namespace

TEST_F(NewLibrary, RefusesBadNamesAndMakesTheLibraryOfAGoodOne) {
    QFile::remove(dataPath + u"新库.v2.bdb"_s);
    ModalAnswers answers;
    answers.then(enter({u"   "_s, u"a:b"_s, u"x|"_s, u" 新库.v2 "_s}));
    for (int i = 0; i < 3; ++i)
        answers.press(QMessageBox::Ok);
    run(256);
    const QString forbidden = u"输入错误: 文件不能包含下列任何字符之一：\\/:*?\"<>|"_s;
    EXPECT_EQ(answers.seen(), QStringList({u"新建文件"_s, u"输入错误: 输入文件名不能为空！"_s, forbidden, forbidden}));
    ASSERT_TRUE(window.activeEditor());
    EXPECT_EQ(window.activeEditor()->DBFilePath(), dataPath + u"新库.v2.bdb"_s);
    EXPECT_EQ(window.activeEditor()->windowTitle(), u"新库.v2.bdb"_s);
    EXPECT_EQ(rowsInFile(window.activeEditor()->DBFilePath(), "SELECT count(*) FROM sqlite_master"),
              QStringList{u"10"_s});
}

TEST_F(NewLibrary, AsksBeforeItReplacesALibraryAndNeverTouchesAnOpenOne) {
    const QString path = copyOfSampleLibrary(u"old.bdb"_s);
    QFile(path).setPermissions(QFileDevice::ReadOwner);
    const auto bills = [&] { return rowsInFile(path, "SELECT ID FROM tblBill").size(); };
    ModalAnswers answers;
    answers.then(enter({})).then(enter({u"old"_s}, u"btnCanel"_s)).press(QMessageBox::No);
    run(256);
    run(256);
    EXPECT_EQ(answers.takeSeen(), QStringList({u"新建文件"_s, u"新建文件"_s, question}));
    EXPECT_FALSE(window.activeEditor());
    EXPECT_GT(bills(), 0);

    answers.then(enter({u"old"_s})).press(QMessageBox::Yes);
    run(256);
    ASSERT_TRUE(window.activeEditor());
    EXPECT_EQ(bills(), 0);

    GetOrmConn(path)->Execute("INSERT INTO tblBill(Code) VALUES('010101001')");
    answers.takeSeen();
    answers.then(enter({u"old"_s})).press(QMessageBox::Yes).press(QMessageBox::Ok);
    run(256);
    EXPECT_EQ(answers.seen(), QStringList({u"新建文件"_s, question, u"提示: 创建文件失败！"_s}));
    EXPECT_EQ(bills(), 1);
    EXPECT_EQ(window.editors().size(), 1);

    // Where letter case counts this is another file.
    if (!QFile::exists(dataPath + u"OLD.bdb"_s)) {
        answers.then(enter({u"OLD"_s}));
        run(256);
        EXPECT_EQ(window.activeEditor()->windowTitle(), u"OLD.bdb（%1）"_s.arg(dataPath.chopped(1)));
        EXPECT_EQ(bills(), 1);
    }
}
