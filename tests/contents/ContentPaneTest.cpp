#include "editor/contents/ContentPane.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QMessageBox>
#include <QTest>

#include "tests/contents/ContentWindow.h"
#include "tests/support/ModalAnswers.h"

namespace {

const QString cont = QStringLiteral("cont");
const QString dekName = QStringLiteral("dekName");

QStringList lines(std::initializer_list<const char*> texts) {
    QStringList list;
    for (const char* text : texts)
        list << QString::fromUtf8(text);
    return list;
}

/// Rows: 0 挖土, 1 -人工, 2 --A1-1, 3 --A1-2, 4 -机械, 5 运土, 6 -装车, 7 --A1-3, 8 回填.
class ContentPaneTest : public ::testing::Test {
protected:
    ContentPaneTest() {
        window.library.run(
            "INSERT INTO tblCont(ID,code,num,cont,prof,billID,IsDel) VALUES(1,'010101001',1,'挖土','01',7,0),"
            "(2,'010101001',2,'运土','0102',7,0),(3,'010101001',3,'回填','01',7,0),"
            "(4,'010101001',4,'抹灰','02',7,0),(5,'010101002',1,'other bill','01',8,0)");
        window.library.run(
            "INSERT INTO tblContDe(ID,contID,subNum,subCont,deh,name,unit,dekID) VALUES"
            "(1,1,1,'人工','a1-1','人工挖土方','100m3','GD2018ZHDE01'),"
            "(2,1,1,'人工','A1-2','机械挖土方','1000m3','GD2018ZHDE01'),"
            "(3,1,2,'机械',NULL,NULL,NULL,NULL),(4,2,1,'装车','A1-3','装车','t','GD2018ZHDE01')");
        pane.LoadBillContent(7);
    }

    QStringList details(const QString& id) const {
        return window.library.rowsInFile(
            sql("SELECT subNum,subCont,deh,name,unit,dekID FROM tblContDe WHERE ID='", id, "'"));
    }

    ContentWindow window;
    ContentPane& pane = window.pane;
    KeyedGrid& grid = window.grid();
    ModalAnswers answers;
};

}  // namespace

TEST_F(ContentPaneTest, ShowsTheOutlineOfTheChosenProfession) {
    EXPECT_EQ(window.shown(),
              lines({"0|挖土|||1||1||0", "1|人工|||1|||1|1", "2|[A1-1] 人工挖土方|100m3|GD2018ZHDE01|1|1||1|2",
                     "2|[A1-2] 机械挖土方|1000m3|GD2018ZHDE01|1|2||1|2", "1|机械|||1|||2|1", "0|运土|||2||2||0",
                     "1|装车|||2|||1|1", "2|[A1-3] 装车|t|GD2018ZHDE01|2|4||1|2", "0|回填|||3||3||0"}));
    EXPECT_EQ(grid.row(), 0);
    EXPECT_EQ(grid.model()->index(2, grid.column(dekName)).data().toString(), QStringLiteral("建筑定额"));

    QComboBox* professions = pane.cboProfession();
    QStringList names;
    for (int i = 0; i < professions->count(); ++i)
        names << professions->itemText(i) + professions->itemData(i).toString();
    EXPECT_EQ(names, lines({"建筑1", "装饰2", "安装3", "市政4", "园林5", "送电6", "变电7", "发电8", "配网9"}));
    professions->setFocus();
    QTest::keyClick(professions, Qt::Key_Down);
    EXPECT_EQ(window.outline(), lines({"运土", "-装车", "--[A1-3] 装车", "抹灰"}));
    QTest::keyClick(professions, Qt::Key_Down);
    EXPECT_FALSE(grid.hasRows());
    EXPECT_EQ(grid.row(), -1);
    window.bill = {};
    QTest::keyClick(professions, Qt::Key_Up);
    EXPECT_FALSE(grid.hasRows()) << "no bill is current";
    EXPECT_EQ(pane.shownBill(), 7);
}

TEST_F(ContentPaneTest, EditsWhatMayBeEditedUpToItsLength) {
    const QString longText(200, QLatin1Char('x'));
    const std::vector<std::pair<int, int>> limits{{0, 50}, {1, 50}, {2, 150}};
    for (const auto& [row, limit] : limits) {
        QLineEdit* editor = window.openEditor(row);
        ASSERT_TRUE(editor);
        editor->selectAll();
        typeText(longText);
        EXPECT_EQ(editor->text().size(), limit);
        window.key(Qt::Key_Escape);
        EXPECT_FALSE(window.openEditor(row, QStringLiteral("Unit")));
        if (row < 2) {
            grid.setCell(row, dekName);
            QTest::keyClick(&grid, Qt::Key_F2);
            EXPECT_FALSE(grid.isEditing());
        }
    }
    EXPECT_EQ(window.shown(), window.fresh());
}

TEST_F(ContentPaneTest, WritesTextsAtOnce) {
    window.type(0, QStringLiteral("  挖一般土方 "));
    window.type(1, QStringLiteral("人力"), Qt::Key_Tab);
    EXPECT_EQ(grid.row(), 2) << "Tab goes on to the next cell that can be edited";
    EXPECT_TRUE(grid.isEditing());
    window.key(Qt::Key_Escape);
    EXPECT_EQ(window.library.rowsInFile("SELECT cont FROM tblCont WHERE ID=1"), lines({"挖一般土方"}));
    EXPECT_EQ(window.library.rowsInFile("SELECT ID FROM tblContDe WHERE subCont='人力'"), lines({"1", "2"}));
    EXPECT_EQ(window.shown(), window.fresh());

    window.openEditor(8)->setText(QStringLiteral("typed, then left for another control"));
    window.other.setFocus();
    EXPECT_EQ(window.shown(), window.fresh());
    EXPECT_EQ(grid.text(8, cont), QStringLiteral("typed, then left for another control"));

    window.library.run("UPDATE tblCont SET cont='Text',LastUpdate='never' WHERE ID=3");
    pane.LoadBillContent(7);
    window.type(8, QStringLiteral(" tEXT "));
    EXPECT_EQ(grid.text(8, cont), QStringLiteral(" tEXT ")) << "accepted";
    EXPECT_EQ(window.library.rowsInFile("SELECT cont,LastUpdate FROM tblCont WHERE ID=3"), lines({"Text|never"}))
        << "but not written";
}

TEST_F(ContentPaneTest, TextsThatCannotBeWrittenLeaveTheCell) {
    answers.closeAnything();
    for (const int row : {0, 1}) {
        const QStringList before = window.shown();
        window.type(row, QStringLiteral("it's"));
        EXPECT_FALSE(grid.isEditing());
        EXPECT_EQ(window.shown(), before);
        EXPECT_EQ(window.fresh(), before);
    }
    EXPECT_EQ(answers.seen().size(), 2);
    pane.setConnection(nullptr);
    window.type(0, QStringLiteral("no library"));
    EXPECT_EQ(grid.text(0, cont), QStringLiteral("挖土"));
}

TEST_F(ContentPaneTest, TypedCodesAreUpperCasedAndLookedUpInTheRowsLibrary) {
    window.type(2, QStringLiteral(" a1-3 "));
    EXPECT_EQ(details(QStringLiteral("1")), lines({"1|人工|A1-3|装车|t|GD2018ZHDE01"}));
    EXPECT_EQ(grid.text(2, cont), QStringLiteral("[A1-3] 装车"));
    EXPECT_EQ(window.shown(), window.fresh());

    window.chooseLibrary(3, QStringLiteral("GD2018ZHDE03"));
    EXPECT_EQ(grid.text(3, dekName), QStringLiteral("GD2018ZHDE03"));
    EXPECT_EQ(details(QStringLiteral("2")), lines({"1|人工|A1-2|机械挖土方|1000m3|GD2018ZHDE01"})) << "not written yet";
    window.type(3, QStringLiteral("c1-1"));
    EXPECT_EQ(details(QStringLiteral("2")), lines({"1|人工|C1-1|管道|10m|GD2018ZHDE03"}));
    EXPECT_EQ(window.shown(), window.fresh());

    // Opened and closed without a change: the shown text is no code to look up.
    window.openEditor(3);
    window.key(Qt::Key_Return);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(window.shown(), window.fresh());
}

TEST_F(ContentPaneTest, ARejectedCodeKeepsTheEditorOpenAndIsAskedOnce) {
    const QStringList before = window.shown();
    answers
        .then([](QWidget* box) {
            EXPECT_EQ(static_cast<QMessageBox*>(box)->icon(), QMessageBox::Warning);
            QTest::keyClick(box, Qt::Key_Return);
        })
        .press(QMessageBox::Ok);
    window.type(2, QStringLiteral("zz"));
    EXPECT_EQ(answers.takeSeen(), lines({"提示: 定额 [ZZ] 不存在, 请重新输入!"}));
    ASSERT_TRUE(grid.isEditing());
    window.activate();
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->selectedText(), QStringLiteral("zz"));

    // Neither a click elsewhere nor a command gets past it.
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualRect(grid.model()->index(5, grid.column(cont))).center());
    EXPECT_EQ(answers.takeSeen().size(), 1);
    EXPECT_EQ(grid.row(), 2);
    window.activate();
    window.key(Qt::Key_Escape);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(window.shown(), before);
    EXPECT_EQ(window.fresh(), before);
}

TEST_F(ContentPaneTest, AMissingLibraryIsNamed) {
    answers
        .then([](QWidget* box) {
            EXPECT_EQ(static_cast<QMessageBox*>(box)->icon(), QMessageBox::Critical);
            QTest::keyClick(box, Qt::Key_Return);
        })
        .press(QMessageBox::Ok);
    window.chooseLibrary(2, QStringLiteral("GONE"));
    window.type(2, QStringLiteral("A1-1"));
    EXPECT_TRUE(grid.isEditing());
    window.activate();
    window.key(Qt::Key_Escape);
    EXPECT_EQ(answers.takeSeen(),
              QStringList{QStringLiteral("提示: 定额库") + window.missingLibrary() + QStringLiteral("文件不存在!")});
    EXPECT_FALSE(pane.EditBillContDe(QStringLiteral("A1-1"), QStringLiteral("not listed")));
    EXPECT_EQ(answers.takeSeen(), lines({"提示: 定额库文件不存在!"}));
}

TEST_F(ContentPaneTest, RationRowsHaveAnEllipsisButton) {
    QStringList asked;
    pane.ellipsisClicked = [&](const QString& dekId) { asked << dekId; };
    grid.setCell(7, cont);
    QTest::keyClick(&grid, Qt::Key_F4);
    EXPECT_EQ(asked, lines({"GD2018ZHDE01"}));
    QLineEdit* editor = window.openEditor(7);
    ASSERT_TRUE(editor);
    auto* button = editor->findChild<QWidget*>(QStringLiteral("cellButton"));
    ASSERT_TRUE(button);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(asked.size(), 2);
    for (const int row : {5, 6}) {
        grid.setCell(row, cont);
        EXPECT_EQ(grid.comboList(cont), QString());
        QTest::keyClick(&grid, Qt::Key_F4);
    }
    EXPECT_EQ(asked.size(), 2);
    grid.cancelEdit();
}

TEST_F(ContentPaneTest, ALockedPaneTakesNothing) {
    const QStringList before = window.shown();
    window.openEditor(1)->setText(QStringLiteral("half typed"));
    pane.setLocked(true);
    EXPECT_FALSE(grid.isEditing());
    for (const int row : {0, 1, 2}) {
        EXPECT_FALSE(window.openEditor(row));
        pane.munAddBillCont_Click();
        pane.munAddBillSubCont_Click();
        pane.munAddBillContDe_Click();
        pane.mnuDelBillCont_Click();
        pane.munDelBillSubCont_Click();
        pane.munDelBillContDe_Click();
        pane.WinCommand(0, QStringLiteral("A1-3"), QStringLiteral("GD2018ZHDE01"));
        pane.WinCommand(1, QStringLiteral("A1-3"), QStringLiteral("GD2018ZHDE01"));
    }
    EXPECT_EQ(window.shown(), before);
    EXPECT_EQ(window.fresh(), before);
    pane.LoadBillContent(8);
    EXPECT_FALSE(pane.isLocked());
    EXPECT_EQ(window.outline(), lines({"other bill"}));
}
