#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMessageBox>

#include "editor/contents/ContentPane.h"
#include "tests/contents/ContentWindow.h"
#include "tests/support/ModalAnswers.h"

namespace {

const QString cont = QStringLiteral("cont");
const QString building = QStringLiteral("GD2018ZHDE01");

QStringList lines(std::initializer_list<const char*> texts) {
    QStringList list;
    for (const char* text : texts)
        list << QString::fromUtf8(text);
    return list;
}

/// Rows: 0 挖土, 1 -人工, 2 --A1-1, 3 --A1-2, 4 --A1-3, 5 -机械, 6 -晾晒, 7 运土, 8 -装车, 9 --A1-3, 10 回填; a content
/// of another profession stands between 运土 and 回填.
class ContentCommands : public ::testing::Test {
protected:
    ContentCommands() {
        window.library.run(
            "INSERT INTO tblCont(ID,code,num,cont,prof,billID,IsDel) VALUES(1,'010101001',1,'挖土','01',7,0),"
            "(2,'010101001',2,'运土','0102',7,0),(4,'010101001',3,'抹灰','02',7,0),"
            "(3,'010101001',4,'回填','01',7,0)");
        window.library.run(
            "INSERT INTO tblContDe(ID,contID,subNum,subCont,deh,name,unit,dekID) VALUES"
            "(1,1,1,'人工','A1-1','人工挖土方','100m3','GD2018ZHDE01'),"
            "(2,1,1,'人工','A1-2','机械挖土方','1000m3','GD2018ZHDE01'),"
            "(3,1,1,'人工','A1-3','装车','t','GD2018ZHDE01'),"
            "(4,1,2,'机械',NULL,NULL,NULL,NULL),(5,1,3,'晾晒','','','',''),"
            "(6,2,1,'装车','A1-3','装车','t','GD2018ZHDE01')");
        pane.LoadBillContent(7);
    }

    void expectWindowIsFile() const { EXPECT_EQ(window.shown(), window.fresh()); }
    QStringList contents() const {
        return window.library.rowsInFile("SELECT num,cont,prof,code,IsDel FROM tblCont ORDER BY num");
    }
    QStringList detail(int id) const {
        return window.library.rowsInFile(
            sql("SELECT subNum,subCont,deh,name,unit,dekID FROM tblContDe WHERE ID='", id, "'"));
    }
    void deleteRation(int row) {
        grid.setRow(row);
        pane.munDelBillContDe_Click();
    }

    ContentWindow window;
    ContentPane& pane = window.pane;
    KeyedGrid& grid = window.grid();
    ModalAnswers answers;
};

}  // namespace

TEST_F(ContentCommands, AContentGoesBehindTheCurrentOne) {
    window.select(QStringLiteral("[A1-3] 装车"));
    grid.setCollapsed(7, true);
    pane.munAddBillCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(grid.row(), 7);
    EXPECT_EQ(grid.text(grid.row(), cont), QStringLiteral("新建工作内容"));
    EXPECT_EQ(grid.columnKey(), cont) << "ready to be typed into";
    EXPECT_TRUE(grid.hasFocus());
    grid.setRow(9);
    pane.munAddBillCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(contents(),
              lines({"1|挖土|01|010101001|0", "2|新建工作内容|01|010101001|0", "3|运土|0102|010101001|0",
                     "4|新建工作内容(1)|01|010101001|0", "5|抹灰|02|010101001|0", "6|回填|01|010101001|0"}));

    window.library.run("DELETE FROM tblCont");
    pane.LoadBillContent(7);
    pane.munAddBillCont_Click();
    EXPECT_EQ(window.outline(), lines({"新建工作内容"}));
    expectWindowIsFile();
    EXPECT_EQ(grid.text(0, QStringLiteral("contNum")), QStringLiteral("1"));
    window.bill = {};
    pane.munAddBillCont_Click();
    EXPECT_EQ(grid.rowCount(), 1) << "no bill to add it to";
}

TEST_F(ContentCommands, ASecondLevelContentGoesLastOrBehindTheCurrentOne) {
    window.select(QStringLiteral("挖土"));
    pane.munAddBillSubCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(grid.row(), 7);
    EXPECT_EQ(grid.text(7, QStringLiteral("subNum")), QStringLiteral("4"));
    window.select(QStringLiteral("人工"));
    grid.setCollapsed(1, true);
    pane.munAddBillSubCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(grid.row(), 5);
    EXPECT_EQ(window.outline().mid(5, 5),
              lines({"-新建二级工作内容(1)", "-机械", "-晾晒", "-新建二级工作内容", "运土"}));
    window.select(QStringLiteral("回填"));
    pane.munAddBillSubCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(grid.text(grid.row(), QStringLiteral("subNum")), QStringLiteral("1"));
    const QStringList before = window.shown();
    grid.setRow(2);
    pane.munAddBillSubCont_Click();
    EXPECT_EQ(window.shown(), before) << "nothing happens on a ration";
}

TEST_F(ContentCommands, OnlyOneBlankRationRowExists) {
    const QStringList before = window.shown();
    window.select(QStringLiteral("人工"));
    pane.munAddBillContDe_Click();
    EXPECT_EQ(grid.row(), 5);
    EXPECT_EQ(window.shown()[5], QStringLiteral("2|||GD2018ZHDE01|1|||1|2")) << "library by the bill's leading code";
    window.select(QStringLiteral("装车"));
    pane.munAddBillContDe_Click();
    EXPECT_EQ(window.outline().filter(QStringLiteral("--")).size(), 5);
    EXPECT_EQ(grid.text(grid.row(), QStringLiteral("contID")), QStringLiteral("2"));
    pane.DekID.clear();
    grid.setRow(3);
    pane.munAddBillContDe_Click();
    EXPECT_EQ(grid.row(), 5);
    EXPECT_EQ(window.shown()[5], QStringLiteral("2||||1|||1|2"));
    EXPECT_EQ(window.fresh(), before) << "nothing is written";
    window.select(QStringLiteral("回填"));
    pane.munAddBillContDe_Click();
    EXPECT_EQ(window.shown().last(), QStringLiteral("2||||3|||0|2"));
    pane.LoadBillContent(7);
    EXPECT_EQ(window.shown(), before);
}

TEST_F(ContentCommands, DeletingAsksAndTakesEverythingBelow) {
    const QStringList before = window.shown();
    const QStringList questions =
        lines({"清单库编辑器: 确认删工作内容指引 挖土 ？", "清单库编辑器: 确认删工作内容指引 人工 ？",
               "清单库编辑器: 确认删除定额 [A1-1] 人工挖土方 ？"});
    answers.press(QMessageBox::No).press(QMessageBox::No).press(QMessageBox::No);
    grid.setRow(0);
    pane.mnuDelBillCont_Click();
    grid.setRow(1);
    pane.munDelBillSubCont_Click();
    deleteRation(2);
    EXPECT_EQ(answers.takeSeen(), questions);
    EXPECT_EQ(window.shown(), before);

    answers.press(QMessageBox::Yes).press(QMessageBox::Yes).press(QMessageBox::Yes);
    grid.setRow(1);
    pane.munDelBillSubCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(grid.row(), 1);
    EXPECT_EQ(window.outline().first(4), lines({"挖土", "-机械", "-晾晒", "运土"}));
    grid.setRow(0);
    pane.mnuDelBillCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(contents().first(2), lines({"1|运土|0102|010101001|0", "2|抹灰|02|010101001|0"}));
    EXPECT_EQ(window.library.rowsInFile("SELECT ID FROM tblContDe"), lines({"6"}));
    window.select(QStringLiteral("回填"));
    pane.mnuDelBillCont_Click();
    expectWindowIsFile();
    EXPECT_EQ(grid.row(), 2) << "the last row follows";
}

TEST_F(ContentCommands, ARationRowIsRemovedOrClearedByItsNeighbours) {
    for (int i = 0; i < 6; ++i)
        answers.press(QMessageBox::Yes);
    deleteRation(3);  // between two rations
    EXPECT_TRUE(detail(2).isEmpty());
    expectWindowIsFile();
    deleteRation(2);  // first, a ration below
    EXPECT_EQ(detail(1), lines({"1|人工||||"}));
    expectWindowIsFile();
    deleteRation(2);  // first and only one, a second-level content below
    EXPECT_TRUE(detail(3).isEmpty());
    expectWindowIsFile();

    window.select(QStringLiteral("[A1-3] 装车"));
    deleteRation(grid.row());  // first and only one, a content below
    EXPECT_EQ(detail(6), lines({"1|装车||||"}));
    expectWindowIsFile();

    window.library.run("UPDATE tblContDe SET deh='A1-3',name='装车' WHERE ID=6");
    window.library.run("DELETE FROM tblCont WHERE num>2");
    pane.LoadBillContent(7);
    deleteRation(grid.rowCount() - 1);  // first and only one, nothing below
    EXPECT_EQ(detail(6), lines({"1|装车||||"}));
    expectWindowIsFile();

    // Its only row goes, so nothing of the second-level content is left in the file; the window keeps it until then.
    window.library.run("UPDATE tblContDe SET deh='A1-1',name='x' WHERE ID=1");
    pane.LoadBillContent(7);
    deleteRation(2);
    EXPECT_TRUE(detail(1).isEmpty());
    EXPECT_EQ(window.outline().first(3), lines({"挖土", "-人工", "-机械"}));
    EXPECT_EQ(window.fresh().size(), window.shown().size() - 1);

    // No row to put a ration on: accepted, nothing written.
    window.select(QStringLiteral("人工"));
    pane.munAddBillContDe_Click();
    window.type(grid.row(), QStringLiteral("a1-1"));
    EXPECT_EQ(grid.text(2, cont), QStringLiteral("a1-1"));
    EXPECT_EQ(grid.text(2, QStringLiteral("contDeID")), QString());
    EXPECT_EQ(window.library.rowsInFile("SELECT count(*) FROM tblContDe WHERE deh<>''"), lines({"0"}));
}

TEST_F(ContentCommands, ARationIsSetOntoTheRowItBelongsTo) {
    // Saved: its own row.
    window.type(2, QStringLiteral("a1-3"));
    EXPECT_EQ(detail(1), lines({"1|人工|A1-3|装车|t|GD2018ZHDE01"}));
    // New under the second-level content: the row that stood for it alone.
    window.select(QStringLiteral("机械"));
    pane.munAddBillContDe_Click();
    window.type(grid.row(), QStringLiteral("a1-2"));
    EXPECT_EQ(detail(4), lines({"2|机械|A1-2|机械挖土方|1000m3|GD2018ZHDE01"}));
    expectWindowIsFile();
    // New behind another ration: a row of its own.
    pane.munAddBillContDe_Click();
    EXPECT_EQ(window.outline()[7], QStringLiteral("--"));
    window.type(7, QStringLiteral("A1-1"));
    EXPECT_EQ(detail(7), lines({"2|机械|A1-1|人工挖土方|100m3|GD2018ZHDE01"}));
    EXPECT_EQ(grid.text(7, QStringLiteral("contDeID")), QStringLiteral("7"));
    expectWindowIsFile();
    // Written again onto the same row.
    window.type(7, QStringLiteral("A1-3"));
    EXPECT_EQ(detail(7), lines({"2|机械|A1-3|装车|t|GD2018ZHDE01"}));
    expectWindowIsFile();
    // Under a content: the text of the nearest second-level content above, number 0.
    window.select(QStringLiteral("回填"));
    pane.munAddBillContDe_Click();
    window.type(grid.row(), QStringLiteral("A1-1"));
    EXPECT_EQ(detail(8), lines({"0|装车|A1-1|人工挖土方|100m3|GD2018ZHDE01"}));
}

TEST_F(ContentCommands, ARationThatCannotBeWrittenIsAcceptedAllTheSame) {
    const QStringList before = window.fresh();
    answers.closeAnything();
    window.type(2, QStringLiteral("bad"));
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(window.shown()[2], QStringLiteral("2|bad|100m3|GD2018ZHDE01|1|1||1|2")) << "the typed code stays";
    EXPECT_TRUE(pane.EditBillContDe(QStringLiteral("BAD"), building));
    for (const int row : {3, 5}) {  // behind a ration, under a second-level content
        grid.setRow(row);
        pane.munAddBillContDe_Click();
        window.type(grid.row(), QStringLiteral("bad"));
        EXPECT_EQ(grid.text(grid.row(), cont), QStringLiteral("bad"));
    }
    EXPECT_EQ(answers.seen().filter(QStringLiteral("ModDBOperator.ExecuteDDL")).size(), 4);
    EXPECT_EQ(window.fresh(), before);
}

TEST_F(ContentCommands, TheBrowserInsertsAndReplaces) {
    const QStringList before = window.shown();
    pane.WinCommand(0, QStringLiteral("a1-1"), building);
    pane.WinCommand(1, QStringLiteral("a1-1"), building);
    grid.setRow(1);
    pane.WinCommand(1, QStringLiteral("a1-1"), building);
    pane.WinCommand(2, QStringLiteral("a1-1"), building);
    EXPECT_EQ(window.shown(), before) << "neither fits the row";

    pane.WinCommand(0, QStringLiteral("A1-1"), building);
    EXPECT_EQ(grid.row(), 5);
    expectWindowIsFile();
    EXPECT_EQ(detail(7), lines({"1|人工|A1-1|人工挖土方|100m3|GD2018ZHDE01"}));
    pane.WinCommand(1, QStringLiteral("c1-1"), QStringLiteral("GD2018ZHDE03"));
    EXPECT_EQ(detail(7), lines({"1|人工|c1-1|管道|10m|GD2018ZHDE03"})) << "as the browser gave it";
    EXPECT_EQ(grid.text(5, cont), QStringLiteral("[c1-1] 管道"));

    // What is being typed counts first; a blank row takes the inserted ration.
    window.select(QStringLiteral("机械"));
    pane.munAddBillContDe_Click();
    ASSERT_TRUE(window.openEditor(grid.row()));
    pane.WinCommand(0, QStringLiteral("A1-2"), building);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(detail(4), lines({"2|机械|A1-2|机械挖土方|1000m3|GD2018ZHDE01"}));

    answers.press(QMessageBox::Ok);
    window.select(QStringLiteral("晾晒"));
    pane.WinCommand(0, QStringLiteral("no such"), building);
    EXPECT_EQ(answers.seen(), lines({"提示: 定额 [no such] 不存在, 请重新输入!"}));
    EXPECT_EQ(window.outline()[grid.row()], QStringLiteral("--")) << "the blank row stays";
}

TEST_F(ContentCommands, ThoseThatFailLeaveTheGrid) {
    answers.closeAnything();
    const QStringList before = window.shown();
    window.library.run("CREATE TRIGGER t1 BEFORE INSERT ON tblCont BEGIN SELECT RAISE(ABORT,'refused'); END");
    window.library.run("CREATE TRIGGER t2 BEFORE INSERT ON tblContDe BEGIN SELECT RAISE(ABORT,'refused'); END");
    window.library.run("CREATE TRIGGER t3 BEFORE DELETE ON tblCont BEGIN SELECT RAISE(ABORT,'refused'); END");
    window.library.run("CREATE TRIGGER t4 BEFORE DELETE ON tblContDe BEGIN SELECT RAISE(ABORT,'refused'); END");
    grid.setRow(10);
    pane.munAddBillCont_Click();
    pane.munAddBillSubCont_Click();
    answers.takeSeen();
    const auto refused = [this](auto&& command) {
        answers.press(QMessageBox::Yes);
        grid.setRow(3);
        command();
        EXPECT_EQ(answers.takeSeen().size(), 2) << "the question and the error";
    };
    refused([this] { pane.mnuDelBillCont_Click(); });
    refused([this] { pane.munDelBillSubCont_Click(); });
    refused([this] { pane.munDelBillContDe_Click(); });
    EXPECT_EQ(window.shown(), before);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.fresh(), before);
    // The next edit is in the file when its event is over, whatever was left open.
    window.type(0, QStringLiteral("typed later"));
    QCoreApplication::processEvents();
    expectWindowIsFile();
}
