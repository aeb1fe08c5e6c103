#include <QCoreApplication>
#include <QMessageBox>

#include "tests/contents/ContentFixture.h"

namespace {

const QString cont = QStringLiteral("cont");
const QString building = QStringLiteral("GD2018ZHDE01");

class ContentCommands : public ContentFixture {};

}  // namespace

TEST_F(ContentCommands, AContentGoesBehindTheCurrentOne) {
    select("运土");
    grid.setCollapsed(7, true);
    pane.munAddBillCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(grid.text(grid.row(), cont), QStringLiteral("新建工作内容"));
    EXPECT_EQ(grid.columnKey(), cont) << "ready to be typed into";
    EXPECT_TRUE(grid.hasFocus());
    grid.setRow(3);
    pane.munAddBillCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(contents(),
              lines({"1|挖土|01|010101001|7|0", "2|新建工作内容(1)|01|010101001|7|0", "3|运土|0102|010101001|7|0",
                     "4|新建工作内容|01|010101001|7|0", "5|抹灰|02|010101001|7|0", "6|回填|01|010101001|7|0",
                     "2|other bill|01|010101002|8|0"}));

    library.run("DELETE FROM tblCont");
    pane.LoadBillContent(7);
    pane.munAddBillCont_Click();
    EXPECT_EQ(contents(), lines({"1|新建工作内容|01|010101001|7|0"}));
    expectWindowIsFile();
    bill = {};
    pane.munAddBillCont_Click();
    EXPECT_EQ(grid.rowCount(), 1) << "no bill to add it to";
}

TEST_F(ContentCommands, ASecondLevelContentGoesLastOrBehindTheCurrentOne) {
    select("挖土");
    pane.munAddBillSubCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(grid.row(), 7);
    select("人工");
    grid.setCollapsed(1, true);
    pane.munAddBillSubCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(grid.row(), 5);
    EXPECT_EQ(outline().mid(5, 5), lines({"-新建二级工作内容(1)", "-机械", "-晾晒", "-新建二级工作内容", "运土"}));
    select("回填");
    pane.munAddBillSubCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(shown().last(), QStringLiteral("1|新建二级工作内容(2)|||3|||1|1"));
    const QStringList before = shown();
    grid.setRow(2);
    pane.munAddBillSubCont_Click();
    EXPECT_EQ(shown(), before) << "nothing happens on a ration";
}

TEST_F(ContentCommands, OnlyOneBlankRationRowExists) {
    const QStringList before = shown();
    const auto addTo = [this](const char* row, int at, const char* text) {
        select(row);
        pane.munAddBillContDe_Click();
        EXPECT_EQ(grid.row(), at);
        EXPECT_EQ(shown()[grid.row()], QString::fromLatin1(text));
        EXPECT_EQ(grid.rowCount(), 12);
    };
    addTo("人工", 5, "2|||GD2018ZHDE01|1|||1|2");  // library by the bill's leading code
    addTo("装车", 10, "2|||GD2018ZHDE01|2|||1|2");
    pane.DekID.clear();
    addTo("[A1-2] 机械挖土方", 5, "2||||1|||1|2");
    addTo("回填", 11, "2||||3|||0|2");
    EXPECT_EQ(fresh(), before) << "nothing is written";
    pane.LoadBillContent(7);
    EXPECT_EQ(shown(), before);
}

TEST_F(ContentCommands, DeletingAsksAndTakesEverythingBelow) {
    const QStringList before = shown();
    const auto deleteUnless = [this](int button) {
        answers.press(button).press(button).press(button);
        grid.setRow(2);
        pane.munDelBillContDe_Click();
        grid.setRow(1);
        pane.munDelBillSubCont_Click();
        expectWindowIsFile();
        grid.setRow(0);
        pane.mnuDelBillCont_Click();
        expectWindowIsFile();
        EXPECT_EQ(answers.takeSeen(),
                  lines({"清单库编辑器: 确认删除定额 [A1-1] 人工挖土方 ？", "清单库编辑器: 确认删工作内容指引 人工 ？",
                         "清单库编辑器: 确认删工作内容指引 挖土 ？"}));
    };
    deleteUnless(QMessageBox::No);
    EXPECT_EQ(shown(), before);
    deleteUnless(QMessageBox::Yes);
    EXPECT_EQ(contents(), lines({"1|运土|0102|010101001|7|0", "2|抹灰|02|010101001|7|0", "3|回填|01|010101001|7|0",
                                 "2|other bill|01|010101002|8|0"}));
    EXPECT_EQ(library.rowsInFile("SELECT ID FROM tblContDe"), lines({"6"}));
    confirmed(3, &ContentPane::mnuDelBillCont_Click);
    expectWindowIsFile();
    EXPECT_EQ(grid.row(), 2) << "the last row follows";
}

TEST_F(ContentCommands, ARationRowIsRemovedOrClearedByItsNeighbours) {
    struct Case {
        const char* place;
        int row;
        int id;
        const char* left;
    };
    for (const Case& c : {Case{"between two rations", 3, 2, ""}, Case{"first, a ration below", 2, 1, "1|人工||||"},
                          Case{"first and only one, a second-level content below", 2, 3, ""},
                          Case{"first and only one, a content below", 6, 6, "1|装车||||"}}) {
        SCOPED_TRACE(c.place);
        confirmed(c.row, &ContentPane::munDelBillContDe_Click);
        EXPECT_EQ(detail(c.id).join(QLatin1Char(',')), QString::fromUtf8(c.left));
        expectWindowIsFile();
    }
    library.run("UPDATE tblContDe SET deh='A1-3',name='装车' WHERE ID=6");
    library.run("DELETE FROM tblCont WHERE num>2");
    pane.LoadBillContent(7);
    confirmed(grid.rowCount() - 1, &ContentPane::munDelBillContDe_Click);
    EXPECT_EQ(detail(6), lines({"1|装车||||"})) << "first and only one, nothing below";
    expectWindowIsFile();

    // Its only row goes, so nothing of the second-level content is left in the file; the window keeps it until then.
    library.run("UPDATE tblContDe SET deh='A1-1',name='x' WHERE ID=1");
    pane.LoadBillContent(7);
    confirmed(2, &ContentPane::munDelBillContDe_Click);
    EXPECT_TRUE(detail(1).isEmpty());
    EXPECT_EQ(outline().first(3), lines({"挖土", "-人工", "-机械"}));
    EXPECT_EQ(fresh().size(), shown().size() - 1);
    // No row to put a ration on: accepted, nothing written.
    select("人工");
    pane.munAddBillContDe_Click();
    type(grid.row(), "a1-1");
    EXPECT_EQ(shown()[2], QStringLiteral("2|a1-1||GD2018ZHDE01|1|||1|2"));
    EXPECT_EQ(library.rowsInFile("SELECT count(*) FROM tblContDe WHERE deh<>''"), lines({"0"}));
}

TEST_F(ContentCommands, ARationIsSetOntoTheRowItBelongsTo) {
    type(2, "a1-3");
    EXPECT_EQ(detail(1), lines({"1|人工|A1-3|装车|t|GD2018ZHDE01"})) << "saved: its own row";
    select("机械");
    pane.munAddBillContDe_Click();
    type(grid.row(), "a1-2");
    EXPECT_EQ(detail(4), lines({"2|机械|A1-2|机械挖土方|1000m3|GD2018ZHDE01"})) << "the row that stood alone";
    expectWindowIsFile();
    pane.munAddBillContDe_Click();
    type(7, "A1-1");
    EXPECT_EQ(detail(7), lines({"2|机械|A1-1|人工挖土方|100m3|GD2018ZHDE01"})) << "behind another: a row of its own";
    expectWindowIsFile();
    type(7, "A1-3");
    EXPECT_EQ(detail(7), lines({"2|机械|A1-3|装车|t|GD2018ZHDE01"})) << "and again the same row";
    expectWindowIsFile();
    select("回填");
    pane.munAddBillContDe_Click();
    type(grid.row(), "A1-1");
    EXPECT_EQ(detail(8), lines({"0|装车|A1-1|人工挖土方|100m3|GD2018ZHDE01"})) << "text of the nearest one above";
}

TEST_F(ContentCommands, ARationThatCannotBeWrittenIsAcceptedAllTheSame) {
    const QStringList before = fresh();
    answers.closeAnything();
    type(2, "bad");
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(shown()[2], QStringLiteral("2|bad|100m3|GD2018ZHDE01|1|1||1|2")) << "the typed code stays";
    EXPECT_TRUE(pane.EditBillContDe(QStringLiteral("BAD"), building));
    for (const int row : {3, 5}) {  // behind a ration, under a second-level content
        grid.setRow(row);
        pane.munAddBillContDe_Click();
        type(grid.row(), "bad");
        EXPECT_EQ(grid.text(grid.row(), cont), QStringLiteral("bad"));
    }
    EXPECT_EQ(answers.seen().filter(QStringLiteral("ModDBOperator.ExecuteDDL")).size(), 4);
    EXPECT_EQ(fresh(), before);
}

TEST_F(ContentCommands, TheBrowserInsertsAndReplaces) {
    const QStringList before = shown();
    for (const auto& [row, mode] : {std::pair{0, 0}, {0, 1}, {1, 1}, {1, 2}, {2, 2}}) {
        grid.setRow(row);
        pane.WinCommand(static_cast<short>(mode), QStringLiteral("A1-1"), building);
    }
    EXPECT_EQ(shown(), before) << "none fits the row";

    grid.setRow(1);
    pane.WinCommand(0, QStringLiteral("A1-1"), building);
    EXPECT_EQ(grid.row(), 5);
    expectWindowIsFile();
    EXPECT_EQ(detail(7), lines({"1|人工|A1-1|人工挖土方|100m3|GD2018ZHDE01"}));
    pane.WinCommand(1, QStringLiteral("c1-1"), QStringLiteral("GD2018ZHDE03"));
    EXPECT_EQ(detail(7), lines({"1|人工|c1-1|管道|10m|GD2018ZHDE03"})) << "as the browser gave it";
    EXPECT_EQ(grid.text(5, cont), QStringLiteral("[c1-1] 管道"));

    // What is being typed counts first; a blank row takes the inserted ration.
    select("机械");
    pane.munAddBillContDe_Click();
    ASSERT_TRUE(openEditor(grid.row()));
    pane.WinCommand(0, QStringLiteral("A1-2"), building);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(detail(4), lines({"2|机械|A1-2|机械挖土方|1000m3|GD2018ZHDE01"}));

    answers.press(QMessageBox::Ok);
    select("晾晒");
    pane.WinCommand(0, QStringLiteral("no such"), building);
    EXPECT_EQ(answers.seen(), lines({"提示: 定额 [no such] 不存在, 请重新输入!"}));
    EXPECT_EQ(outline()[grid.row()], QStringLiteral("--")) << "the blank row stays";
}

TEST_F(ContentCommands, AddingThatFailsLeavesItsSavepointOpen) {
    refuse("INSERT ON tblCont");
    refuse("INSERT ON tblContDe");
    answers.closeAnything();
    const QStringList before = shown();
    grid.setRow(7);
    pane.munAddBillCont_Click();
    grid.setRow(1);
    pane.munAddBillSubCont_Click();
    ASSERT_EQ(answers.seen().size(), 2);
    EXPECT_TRUE(answers.seen().first().contains(QLatin1String("frmEditor.munAddBillCont_Click")));
    EXPECT_TRUE(answers.seen().last().contains(QLatin1String("frmEditor.munAddBillSubCont_Click")));
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(fresh(), before);
    // What was done until then, and whatever is done next, is in the file when the event is over.
    EXPECT_TRUE(library.connection()->Execute("UPDATE tblCont SET cont='typed later' WHERE ID=1"));
    EXPECT_EQ(fresh(), before);
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile("SELECT num,cont FROM tblCont WHERE billID=7 ORDER BY num"),
              lines({"1|typed later", "2|运土", "4|抹灰", "5|回填"}));
    EXPECT_EQ(library.rowsInFile("SELECT subNum FROM tblContDe WHERE contID=1 ORDER BY ID"),
              lines({"1", "1", "1", "3", "4"}));
}

TEST_F(ContentCommands, DeletingThatFailsRollsBackAndLeavesTheGrid) {
    refuse("DELETE ON tblCont");
    refuse("UPDATE OF subNum ON tblContDe");
    refuse("DELETE ON tblContDe WHEN old.ID=2");
    answers.closeAnything();
    const QStringList before = shown();
    for (const auto& [row, command] : {std::pair{7, &ContentPane::mnuDelBillCont_Click},
                                       {5, &ContentPane::munDelBillSubCont_Click},
                                       {3, &ContentPane::munDelBillContDe_Click}}) {
        confirmed(row, command);
        EXPECT_EQ(answers.takeSeen().size(), 2) << "the question and the error";
        EXPECT_EQ(shown(), before);
    }
    // The savepoints stay open, and what follows is in the file when the event is over all the same.
    type(0, "typed later");
    QCoreApplication::processEvents();
    expectWindowIsFile();
    EXPECT_EQ(shown().mid(1), before.mid(1));
}

TEST_F(ContentCommands, DeletingThatCannotBeReleasedIsAFailure) {
    library.connection()->OpenRecordset("PRAGMA busy_timeout=0");
    answers.closeAnything();
    const QStringList before = shown();
    const auto whileReadByAnother = [&](int row, void (ContentPane::*command)()) {
        Connection reader;
        reader.Open(library.path(), QString(), Connection::readWriteCreate);
        reader.Execute("BEGIN");
        const Recordset held = reader.OpenRecordset("SELECT * FROM tblCont");
        confirmed(row, command);
        EXPECT_EQ(answers.takeSeen().size(), 2);
        EXPECT_EQ(shown(), before);
    };
    whileReadByAnother(1, &ContentPane::munDelBillSubCont_Click);
    QCoreApplication::processEvents();
    EXPECT_EQ(fresh(), before) << "rolled back";
    whileReadByAnother(3, &ContentPane::munDelBillContDe_Click);
    QCoreApplication::processEvents();
    EXPECT_TRUE(detail(2).isEmpty()) << "left open, committed later";
}
