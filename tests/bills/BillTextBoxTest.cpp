#include "editor/bills/BillTextBox.h"

#include <gtest/gtest.h>

#include <QMenu>
#include <QTest>

#include "tests/bills/BillWindow.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

/// The two boxes of a window that lists three bills, and what is written to the file.
class BillTextBoxes : public testing::Test {
protected:
    BillTextBoxes() {
        for (qint64 id = 1; id <= 3; ++id)
            window.library.addBill(id, u"01010100%1"_s.arg(id));
        window.library.run("UPDATE tblBill SET Rule='甲' || x'0d0a' || '乙' WHERE ID=1");
        window.library.run("UPDATE tblBill SET Rule='甲' || x'0a' || '乙' WHERE ID=2");
        window.library.run("CREATE TEMP TABLE written(bill, rule, cont)");
        window.library.run(
            "CREATE TEMP TRIGGER watch AFTER UPDATE OF Rule,Cont ON main.tblBill BEGIN "
            "INSERT INTO written VALUES(new.ID, replace(replace(new.Rule,char(13),'<'),char(10),'>'), new.Cont); END");
        window.bills->LoadBill(window.chapter);
        window.list()->setFocus();
    }

    QPlainTextEdit* rule() const { return window.bills->txtRule(); }
    QPlainTextEdit* content() const { return window.bills->txtContent(); }

    /// What has been written since the last call.
    QStringList written() const {
        QStringList rows;
        Recordset row = window.library.connection()->OpenRecordset("SELECT * FROM temp.written");
        for (; !row.EndOfFile(); row.MoveNext())
            rows << row.joined(u"|"_s);
        window.library.run("DELETE FROM temp.written");
        return rows;
    }

    static void typeAtEnd(QPlainTextEdit* box, const char* text) {
        box->setFocus();
        box->moveCursor(QTextCursor::End);
        for (const char* c = text; *c; ++c)
            *c == '\n' ? QTest::keyClick(box, Qt::Key_Return) : QTest::keyClick(box, *c);
    }

    BillWindow window;
};

}  // namespace

TEST_F(BillTextBoxes, AreWrittenOnceEachTimeTheyAreLeft) {
    rule()->setFocus();
    QTest::keyClick(rule(), Qt::Key_Tab);
    EXPECT_TRUE(content()->hasFocus());
    // Left unchanged: the stored line ends, though the toolkit shows others.
    EXPECT_EQ(written(), QStringList{u"1|甲<>乙|NULL"_s});
    EXPECT_EQ(window.library.rowsInFile("SELECT LastUpdate<>'old' FROM tblBill WHERE ID=1"), QStringList{u"1"_s});

    typeAtEnd(rule(), "\nX");
    EXPECT_EQ(written(), QStringList{u"1|甲<>乙|"_s});
    window.click(window.list(), 1, "Name");
    EXPECT_EQ(written(), QStringList{u"1|甲<>乙<>X|"_s});
    EXPECT_EQ(window.list()->text(0, u"RULE"_s), u"甲\r\n乙\r\nX"_s);

    // Another convention stays, too; an empty text begins with the platform's one.
    typeAtEnd(rule(), "\nY");
    typeAtEnd(content(), "P\nQ");
    window.list()->setFocus();
    EXPECT_EQ(written(), (QStringList{u"2|甲>乙>Y|NULL"_s, u"2|甲>乙>Y|P\r\nQ"_s}));
    EXPECT_EQ(window.list()->text(1, u"Cont"_s), u"P\r\nQ"_s);
}

TEST_F(BillTextBoxes, NeverWriteTheTextOfOneBillToAnother) {
    typeAtEnd(rule(), "Z");
    window.list()->setRow(1);
    EXPECT_EQ(written(), QStringList{u"1|甲<>乙Z|NULL"_s});
    typeAtEnd(rule(), "W");
    window.bills->mnuAddBill_Click();
    EXPECT_EQ(written(), QStringList{u"2|甲>乙W|NULL"_s});
    EXPECT_TRUE(rule()->toPlainText().isEmpty());
    typeAtEnd(rule(), "V");
    window.bills->LoadBill(u"999999"_s);
    EXPECT_EQ(written(), QStringList{u"4|V|NULL"_s});
    // No bill is current: nothing can be typed, nothing is written.
    typeAtEnd(rule(), "U");
    window.list()->setFocus();
    EXPECT_TRUE(rule()->toPlainText().isEmpty());
    EXPECT_TRUE(written().isEmpty());
}

TEST_F(BillTextBoxes, LentToAnotherWindowOrAMenuAreWrittenOnlyWhenChanged) {
    QWidget other;
    const auto lend = [&] {
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        window.activate();
        QMenu menu;
        menu.addAction(u"x"_s);
        menu.popup(window.mapToGlobal(QPoint(5, 5)));
        menu.close();
    };
    rule()->setFocus();
    lend();
    EXPECT_TRUE(written().isEmpty());
    typeAtEnd(rule(), "Z");
    lend();
    EXPECT_EQ(written(), QStringList{u"1|甲<>乙Z|NULL"_s});

    typeAtEnd(rule(), "Y");
    EXPECT_TRUE(window.bills->commitPending());
    EXPECT_EQ(written(), QStringList{u"1|甲<>乙ZY|NULL"_s});
    EXPECT_TRUE(window.bills->commitPending());
    EXPECT_TRUE(written().isEmpty());
}

TEST_F(BillTextBoxes, ThatCannotBeWrittenShowTheStoredTextAgain) {
    ModalAnswers answers;
    answers.closeAnything();
    typeAtEnd(rule(), "it's");
    window.list()->setFocus();
    EXPECT_EQ(errorPlaces(answers), QStringList{u"ModDBOperator.ExecuteDDL"_s});
    EXPECT_EQ(rule()->toPlainText(), u"甲\n乙"_s);
    EXPECT_TRUE(written().isEmpty());
    window.activate();
    typeAtEnd(rule(), "W");
    window.list()->setFocus();
    EXPECT_EQ(written(), QStringList{u"1|甲<>乙W|NULL"_s});
}

TEST(BillTextBox, KeepsWhatTheToolkitWouldReplace) {
    BillTextBox box;
    const QString stored = u"a\u00a0b\u2028c\r\nd"_s;
    box.showText(1, stored);
    EXPECT_EQ(box.text(), stored);
    box.insertPlainText(u"x"_s);
    EXPECT_EQ(box.text(), QLatin1Char('x') + stored);
    box.undo();
    EXPECT_FALSE(box.isChanged());
}
