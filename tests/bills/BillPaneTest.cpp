#include "editor/bills/BillPane.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>

#include "storage/LibraryConnection.h"
#include "tests/bills/BillWindow.h"
#include "tests/support/ModalAnswers.h"

namespace {

const QString name = QStringLiteral("Name");
const QString code = QStringLiteral("Code");
const QString unit = QStringLiteral("Unit");

void addThreeBills(const BillWindow& window) {
    for (qint64 id = 1; id <= 3; ++id)
        window.library.addBillWithDetails(id, QStringLiteral("01010100%1").arg(id));
    window.library.run("UPDATE tblBill SET Rule='规则'||ID, Cont='内容'||ID, CodePrefix='桂', Unit='m3'");
    window.bills->LoadBill(window.chapter);
}

}  // namespace

TEST(BillPane, ListsAChapterAndTheDetailsOfItsFirstBillInOrder) {
    BillWindow window;
    addThreeBills(window);
    EXPECT_EQ(window.list()->row(), 0);
    EXPECT_EQ(window.events, QStringList{QStringLiteral("bill 1")});
    window.expectWindowIsFile();

    // The details come before the boxes.
    QString ruleBefore;
    window.bills->billChanged = [&](qint64) { ruleBefore = window.bills->txtRule()->toPlainText(); };
    window.click(window.list(), 2, "Name");
    EXPECT_EQ(ruleBefore, QStringLiteral("规则1"));
    EXPECT_EQ(window.bills->txtRule()->toPlainText(), QStringLiteral("规则3"));
    EXPECT_EQ(window.bills->txtContent()->toPlainText(), QStringLiteral("内容3"));

    window.bills->ListBillData(nullptr);
    EXPECT_EQ(window.list()->rowCount(), 3);

    // The list alone is emptied, its details stay.
    window.bills->clearList();
    EXPECT_FALSE(window.list()->hasRows());
    EXPECT_TRUE(window.bills->txtRule()->toPlainText().isEmpty() && window.bills->txtRule()->isReadOnly());
    EXPECT_TRUE(window.features->grdSpec()->hasRows());

    // A chapter without bills has no details either.
    window.chapter = QStringLiteral("010102");
    window.bills->billChanged = [&](qint64 id) { window.features->LoadBillSpec(id); };
    window.bills->LoadBill(window.chapter);
    EXPECT_EQ(window.events.last(), QStringLiteral("emptied"));
    window.expectWindowIsFile();
}

TEST(BillPane, CellsAreWrittenTrimmedAndWithinTheirLimits) {
    BillWindow window;
    addThreeBills(window);
    window.edit(window.list(), 1, "name", QStringLiteral("  \u3000挖 土 方 "));
    window.edit(window.list(), 1, "codeprefix", QStringLiteral("一二三四五六七八九"));
    window.edit(window.list(), 1, "unit", QStringLiteral("1234567890123"));
    EXPECT_EQ(window.library.rowsInFile("SELECT Name,CodePrefix,Unit,LastUpdate<>'old' FROM tblBill WHERE ID=2"),
              QStringList{QStringLiteral("\u3000挖 土 方|一二三四五六七八|123456789012|1")});
    window.edit(window.list(), 1, "name", QString(60, QLatin1Char('n')));
    EXPECT_EQ(window.list()->text(1, name), QString(50, QLatin1Char('n')));
    window.expectWindowIsFile();

    // The code cannot be typed.
    window.list()->setCell(1, code);
    QTest::keyClick(window.list(), Qt::Key_F2);
    QTest::keyClicks(window.list(), QStringLiteral("9"));
    EXPECT_FALSE(window.list()->isEditing());
    for (const char* key : {"Code", "id", "Cont", "RULE", ""}) {
        QString text = QStringLiteral("x");
        EXPECT_EQ(window.list()->validateEdit(1, QString::fromLatin1(key), text), EditVerdict::Restore) << key;
    }

    // What cannot be written does not stay.
    ModalAnswers answers;
    answers.closeAnything();
    window.edit(window.list(), 0, "name", QStringLiteral("x' --"));
    EXPECT_EQ(errorPlaces(answers), QStringList{QStringLiteral("ModDBOperator.ExecuteDDL")});
    window.expectWindowIsFile();

    // An editor that is still open is an edit.
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    window.list()->setCell(0, unit);
    QTest::keyClicks(window.list(), QStringLiteral("t"));
    ASSERT_TRUE(window.list()->isEditing());
    EXPECT_TRUE(window.bills->commitPending());
    EXPECT_EQ(window.list()->text(0, unit), QStringLiteral("t"));
    window.expectWindowIsFile();
}

TEST(BillPane, AddsAfterTheCurrentRowAndMovesIt) {
    BillWindow window;
    window.bills->LoadBill(window.chapter);
    window.bills->mnuAddBill_Click();
    window.bills->mnuAddBill_Click();
    window.list()->setRow(0);
    window.bills->mnuAddBill_Click();
    EXPECT_EQ(window.list()->row(), 1);
    EXPECT_EQ(BillWindow::shown(window.list()),
              (QStringList{QStringLiteral("1||010101001||||"), QStringLiteral("3||010101002||||"),
                           QStringLiteral("2||010101003||||")}));
    window.expectWindowIsFile();

    ModifyBill(window.library.connection(), 1, name, QStringLiteral("甲"));
    ModifyBill(window.library.connection(), 3, QStringLiteral("Rule"), QStringLiteral("乙"));
    window.bills->LoadBill(window.chapter);
    window.bills->MoveBillRow(true);
    window.bills->MoveBillRow(false);
    EXPECT_EQ(window.list()->row(), 1);
    window.expectWindowIsFile();
    window.bills->MoveBillRow(false);
    window.bills->MoveBillRow(false);
    EXPECT_EQ(BillWindow::shown(window.list()),
              (QStringList{QStringLiteral("3||010101001||||乙"), QStringLiteral("2||010101002||||"),
                           QStringLiteral("1||010101003|甲|||")}));
    window.expectWindowIsFile();
}

TEST(BillPane, RefusesTheThousandthBill) {
    BillWindow window;
    window.library.run(
        "INSERT INTO tblBill(Code) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<998) "
        "SELECT printf('010101%03d',i) FROM n");
    window.bills->LoadBill(window.chapter);
    window.bills->mnuAddBill_Click();
    EXPECT_EQ(window.list()->rowCount(), 999);
    window.expectWindowIsFile();
    ModalAnswers answers;
    answers.press(QMessageBox::Ok);
    window.bills->mnuAddBill_Click();
    EXPECT_EQ(answers.seen(), QStringList{QStringLiteral("提示: 对不起！ 由于编码规则此章节只能添加999条清单！")});
    window.expectWindowIsFile();
}

TEST(BillPane, DeletesAfterAQuestion) {
    BillWindow window;
    addThreeBills(window);
    window.list()->setRow(1);
    ModalAnswers answers;
    answers.press(QMessageBox::No).press(QMessageBox::Yes).press(QMessageBox::Yes).press(QMessageBox::Yes);
    window.bills->mnuDeleteBill_Click();
    EXPECT_EQ(answers.seen(), QStringList{QStringLiteral("清单库编辑器: 确认删除清单 010101002 清单2 ？")});
    EXPECT_EQ(window.list()->rowCount(), 3);
    window.bills->mnuDeleteBill_Click();
    EXPECT_EQ(window.list()->row(), 1);
    EXPECT_EQ(window.list()->text(1, code), QStringLiteral("010101002"));
    EXPECT_EQ(window.list()->text(1, name), QStringLiteral("清单3"));
    window.expectWindowIsFile();
    window.bills->mnuDeleteBill_Click();
    EXPECT_EQ(window.list()->row(), 0);
    window.expectWindowIsFile();
    window.bills->mnuDeleteBill_Click();
    window.expectWindowIsFile();
    window.bills->mnuDeleteBill_Click();
}

TEST(BillPane, ListsWhatAQueryFindsInAllChapters) {
    BillWindow window;
    addThreeBills(window);
    window.library.addBill(9, "020101001");
    window.events.clear();
    window.search = QStringLiteral("101001");
    window.bills->mnuQueryBill_Click();
    EXPECT_EQ(window.list()->rowCount(), 2);
    EXPECT_EQ(window.list()->tag(), QStringLiteral("1"));
    EXPECT_EQ(window.events, (QStringList{QStringLiteral("bill 1"), QStringLiteral("deselected")}));
    // Deleting steps back what is listed below, whatever its chapter.
    ModalAnswers answers;
    answers.press(QMessageBox::Yes);
    window.bills->mnuDeleteBill_Click();
    EXPECT_EQ(window.list()->text(0, code), QStringLiteral("020101000"));
    EXPECT_EQ(window.library.rowsInFile("SELECT Code FROM tblBill ORDER BY ID"),
              (QStringList{QStringLiteral("010101002"), QStringLiteral("010101003"), QStringLiteral("020101000")}));
}

TEST(BillPane, ACommandThatFailsChangesNeitherFileNorList) {
    BillWindow window;
    addThreeBills(window);
    window.list()->setRow(1);
    window.library.dontWait();
    ModalAnswers answers;
    {
        Connection other;
        other.Open(window.library.path(), QString(), Connection::readWriteCreate);
        other.Execute("BEGIN EXCLUSIVE");
        answers.closeAnything();
        window.bills->mnuAddBill_Click();
        window.bills->MoveBillRow(true);
        window.search = QStringLiteral("1");
        window.bills->mnuQueryBill_Click();
        EXPECT_EQ(errorPlaces(answers),
                  (QStringList{QStringLiteral("frmEditor.mnuAddBill_Click"), QStringLiteral("frmEditor.MoveBillRow"),
                               QStringLiteral("frmEditor.mnuQueryBill_Click")}));
    }
    EXPECT_EQ(window.list()->tag(), QStringLiteral("0"));
    QCoreApplication::processEvents();
    window.expectWindowIsFile();
    window.bills->mnuAddBill_Click();
    window.expectWindowIsFile();
    EXPECT_EQ(window.list()->rowCount(), 4);
}
