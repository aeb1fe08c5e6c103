#include "editor/contents/ContentPane.h"

#include <QApplication>
#include <QComboBox>
#include <QMessageBox>
#include <QTest>

#include "tests/contents/ContentFixture.h"
#include "tests/support/Typing.h"

namespace {

const QString cont = QStringLiteral("cont");
const QString dekName = QStringLiteral("dekName");

class ContentPaneTest : public ContentFixture {};

auto pressReturn(QMessageBox::Icon icon) {
    return [icon](QWidget* box) {
        EXPECT_EQ(static_cast<QMessageBox*>(box)->icon(), icon);
        QTest::keyClick(box, Qt::Key_Return);
    };
}

}  // namespace

TEST_F(ContentPaneTest, ShowsTheOutlineOfTheChosenProfession) {
    EXPECT_EQ(shown().first(6),
              lines({"0|挖土|||1||1||0", "1|人工|||1|||1|1", "2|[A1-1] 人工挖土方|100m3|GD2018ZHDE01|1|1||1|2",
                     "2|[A1-2] 机械挖土方|1000m3|GD2018ZHDE01|1|2||1|2", "2|[A1-3] 装车|t|GD2018ZHDE01|1|3||1|2",
                     "1|机械|||1|||2|1"}));
    EXPECT_EQ(grid.row(), 0);
    EXPECT_EQ(grid.model()->index(2, grid.column(dekName)).data().toString(), QStringLiteral("建筑定额"));

    QComboBox* professions = pane.cboProfession();
    QStringList names;
    for (int i = 0; i < professions->count(); ++i)
        names << professions->itemText(i) + professions->itemData(i).toString();
    EXPECT_EQ(names, lines({"建筑1", "装饰2", "安装3", "市政4", "园林5", "送电6", "变电7", "发电8", "配网9"}));
    professions->setFocus();
    QTest::keyClick(professions, Qt::Key_Down);
    EXPECT_EQ(outline(), lines({"运土", "-装车", "--[A1-3] 装车", "抹灰"}));
    QTest::keyClick(professions, Qt::Key_Down);
    EXPECT_EQ(grid.row(), -1);
    QTest::keyClick(professions, Qt::Key_Up);
    EXPECT_TRUE(grid.hasRows());
    bill = {};
    QTest::keyClick(professions, Qt::Key_Up);
    EXPECT_FALSE(grid.hasRows()) << "no bill is current";
}

TEST_F(ContentPaneTest, EditsWhatMayBeEditedUpToItsLength) {
    for (const auto& [row, limit] : {std::pair{0, 50}, {1, 50}, {2, 150}}) {
        QLineEdit* editor = openEditor(row);
        ASSERT_TRUE(editor);
        editor->selectAll();
        typeText(editor, QString(200, QLatin1Char('x')));
        EXPECT_EQ(editor->text().size(), limit);
        key(Qt::Key_Escape);
        openEditor(row, "Unit");
        EXPECT_FALSE(grid.isEditing());
        openEditor(row, "dekName");
        EXPECT_EQ(grid.isEditing(), row == 2);
    }
    grid.cancelEdit();
    expectWindowIsFile();
}

TEST_F(ContentPaneTest, WritesTextsAtOnce) {
    type(0, "  挖一般土方 ");
    type(1, "人力", Qt::Key_Tab);
    EXPECT_EQ(grid.row(), 2) << "Tab goes on to the next cell that can be edited";
    EXPECT_TRUE(grid.isEditing());
    key(Qt::Key_Escape);
    EXPECT_EQ(library.rowsInFile("SELECT cont FROM tblCont WHERE LastUpdate IS NOT NULL"), lines({"挖一般土方"}));
    EXPECT_EQ(library.rowsInFile("SELECT ID,subCont FROM tblContDe WHERE LastUpdate IS NOT NULL"),
              lines({"1|人力", "2|人力", "3|人力"}));
    expectWindowIsFile();

    openEditor(10)->setText(QStringLiteral("Left for another control"));
    other.setFocus();
    expectWindowIsFile();
    EXPECT_EQ(outline()[10], QStringLiteral("Left for another control"));
    const QStringList before = fresh();
    type(10, " lEFT for another control ");
    EXPECT_EQ(outline()[10], QStringLiteral(" lEFT for another control ")) << "accepted";
    EXPECT_EQ(fresh(), before) << "but not written";
}

TEST_F(ContentPaneTest, TextsThatCannotBeWrittenLeaveTheCell) {
    answers.closeAnything();
    const QStringList before = shown();
    for (const int row : {0, 1})
        type(row, "it's");
    EXPECT_EQ(answers.seen().size(), 2);
    pane.setConnection(nullptr);
    type(0, "no library");
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(fresh(), before);
}

TEST_F(ContentPaneTest, TypedCodesAreUpperCasedAndLookedUpInTheRowsLibrary) {
    type(2, " a1-3 ");
    EXPECT_EQ(detail(1), lines({"1|人工|A1-3|装车|t|GD2018ZHDE01"}));
    expectWindowIsFile();

    chooseLibrary(3, "GD2018ZHDE03");
    EXPECT_EQ(grid.text(3, dekName), QStringLiteral("GD2018ZHDE03"));
    EXPECT_EQ(detail(2), lines({"1|人工|A1-2|机械挖土方|1000m3|GD2018ZHDE01"})) << "not written yet";
    type(3, "c1-1");
    EXPECT_EQ(detail(2), lines({"1|人工|C1-1|管道|10m|GD2018ZHDE03"}));
    expectWindowIsFile();

    // Opened and closed without a change: the shown text is no code to look up.
    openEditor(3);
    key(Qt::Key_Return);
    EXPECT_FALSE(grid.isEditing());
    expectWindowIsFile();
}

TEST_F(ContentPaneTest, ARejectedCodeKeepsTheEditorOpenAndIsAskedOnce) {
    const QStringList before = shown();
    answers.then(pressReturn(QMessageBox::Warning)).press(QMessageBox::Ok);
    type(2, "zz");
    EXPECT_EQ(answers.takeSeen(), lines({"提示: 定额 [ZZ] 不存在, 请重新输入!"}));
    ASSERT_TRUE(grid.isEditing());
    activate();
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->selectedText(), QStringLiteral("zz"));

    // A click elsewhere does not get past it.
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualRect(grid.model()->index(5, grid.column(cont))).center());
    EXPECT_EQ(answers.takeSeen().size(), 1);
    EXPECT_EQ(grid.row(), 2);
    activate();
    key(Qt::Key_Escape);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(fresh(), before);
}

TEST_F(ContentPaneTest, AMissingLibraryIsNamed) {
    answers.then(pressReturn(QMessageBox::Critical)).press(QMessageBox::Ok);
    chooseLibrary(2, "GONE");
    type(2, "A1-1");
    EXPECT_TRUE(grid.isEditing());
    activate();
    key(Qt::Key_Escape);
    EXPECT_FALSE(pane.EditBillContDe(QStringLiteral("A1-1"), QStringLiteral("not listed")));
    EXPECT_EQ(answers.takeSeen(), QStringList({QStringLiteral("提示: 定额库") + RationLibraries::path("gone.db") +
                                                   QStringLiteral("文件不存在!"),
                                               QStringLiteral("提示: 定额库文件不存在!")}));
}

TEST_F(ContentPaneTest, RationRowsHaveAnEllipsisButton) {
    QStringList asked;
    pane.ellipsisClicked = [&](const QString& dekId) { asked << dekId; };
    for (const int row : {7, 8, 9}) {
        grid.setCell(row, cont);
        QTest::keyClick(&grid, Qt::Key_F4);
        EXPECT_EQ(asked.size(), row == 9 ? 1 : 0);
    }
    QLineEdit* editor = openEditor(9);
    ASSERT_TRUE(editor);
    auto* button = editor->findChild<QWidget*>(QStringLiteral("cellButton"));
    ASSERT_TRUE(button);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(asked, lines({"GD2018ZHDE01", "GD2018ZHDE01"}));
    grid.cancelEdit();
}

TEST_F(ContentPaneTest, ALockedPaneTakesNothing) {
    const QStringList before = shown();
    openEditor(1)->setText(QStringLiteral("half typed"));
    pane.setLocked(true);
    EXPECT_FALSE(grid.isEditing());
    for (const int row : {0, 1, 2}) {
        EXPECT_FALSE(openEditor(row));
        for (const auto command : {&ContentPane::munAddBillCont_Click, &ContentPane::munAddBillSubCont_Click,
                                   &ContentPane::munAddBillContDe_Click, &ContentPane::mnuDelBillCont_Click,
                                   &ContentPane::munDelBillSubCont_Click, &ContentPane::munDelBillContDe_Click})
            (pane.*command)();
        for (const short mode : {0, 1})
            pane.WinCommand(mode, QStringLiteral("A1-3"), QStringLiteral("GD2018ZHDE01"));
    }
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(fresh(), before);
    pane.LoadBillContent(8);
    EXPECT_EQ(outline(), lines({"other bill"}));
    EXPECT_TRUE(openEditor(0)) << "what is loaded anew is not locked";
    grid.cancelEdit();
}
