#include "editor/bills/BillPane.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>

#include "editor/bills/BillTextBox.h"
#include "editor/chapters/ChapterPane.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/Libraries.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

/// The bills of chapter 010101; the rule of the second one has the line ends of one platform, its content of another.
class BillPaneTest : public testing::Test {
protected:
    BillPaneTest() {
        user.click(user.tree()->node(u"K010101"_s));
        user.click(bills, 1, u"Name"_s);
        run("CREATE TEMP TABLE written(text)");
        run("CREATE TEMP TRIGGER watch AFTER UPDATE OF Rule,Cont ON main.tblBill BEGIN INSERT INTO written VALUES("
            "new.ID||replace(replace(' '||ifnull(new.Rule,'')||'|'||ifnull(new.Cont,''),char(13),'<'),char(10),'>')); "
            "END");
    }

    void run(const SqlText& statement) const { user.editor()->ormConn()->Execute(statement); }
    QStringList file(const SqlText& query) const { return rowsInFile(user.path(), query); }

    /// What has been written of the boxes since the last call: "id rule|content".
    QString written() const {
        QStringList rows;
        Recordset row = user.editor()->ormConn()->OpenRecordset("SELECT text FROM temp.written");
        for (; !row.EndOfFile(); row.MoveNext())
            rows << row.text("text");
        run("DELETE FROM temp.written");
        return rows.join(u", "_s);
    }

    void typeAtEnd(QPlainTextEdit* box, const QString& text) const {
        user.showPage(box);
        box->setFocus();
        box->moveCursor(QTextCursor::End);
        for (const QChar c : text)
            c == u'\n' ? QTest::keyClick(box, Qt::Key_Return) : typeText(box, c);
    }

    EditorDriver user{awkwardLibrary()};
    KeyedGrid* const bills = user.bills();
};

}  // namespace

TEST_F(BillPaneTest, CellsAreTrimmedAndKeptWithinTheirLimits) {
    user.edit(bills, 1, u"Name"_s, u"  \u3000挖 土 方 "_s);
    user.edit(bills, 1, u"CodePreFix"_s, u"一二三四五六七八九"_s);
    user.edit(bills, 1, u"Unit"_s, u"1234567890123"_s);
    user.edit(bills, 0, u"Name"_s, QString(60, u'n'));
    EXPECT_EQ(file("SELECT Name,CodePrefix,Unit FROM tblBill WHERE ID=2 UNION ALL SELECT Name,'','' FROM tblBill "
                   "WHERE ID=1"),
              (QStringList{u"\u3000挖 土 方|一二三四五六七八|123456789012"_s, QString(50, u'n') + u"||"_s}));
    for (const char* key : {"Code", "id", "Cont", "RULE", ""}) {
        QString text = u"x"_s;
        EXPECT_EQ(bills->validateEdit(1, QString::fromLatin1(key), text), EditVerdict::Restore) << key;
    }
    user.edit(user.features(), 0, u"defval"_s, u" C30 "_s);
    auto* types = qobject_cast<QComboBox*>(user.openEditor(user.features(), 0, u"type"_s));
    ASSERT_TRUE(types);
    QStringList offered;
    for (int i = 0; i < types->count(); ++i)
        offered << types->itemText(i) + types->itemData(i).toString();
    EXPECT_EQ(offered.join(u'|'), u" 0|数值1|枚举2|计算3"_s);
    user.features()->cancelEdit();
    EXPECT_EQ(file("SELECT DefVal FROM tblBillSpec WHERE BillID=1 LIMIT 1"), QStringList{u"C30"_s});
}

TEST_F(BillPaneTest, RefusesTheThousandthBill) {
    run("INSERT INTO tblBill(Code) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<998) "
        "SELECT printf('010104%03d',i) FROM n");
    user.click(user.tree()->node(u"K010104"_s));
    user.run(2, 200);
    ModalAnswers answers;
    answers.press(QMessageBox::Ok);
    user.run(2, 200);
    EXPECT_EQ(answers.seen(), QStringList{u"提示: 对不起！ 由于编码规则此章节只能添加999条清单！"_s});
    EXPECT_EQ(file("SELECT count(*) FROM tblBill WHERE Code LIKE '010104%'"), QStringList{u"999"_s});
}

TEST_F(BillPaneTest, TextBoxesAreWrittenOnceEachTimeTheyAreLeftWithTheLineEndsTheyHad) {
    typeAtEnd(user.rule(), {});
    QTest::keyClick(user.rule(), Qt::Key_Tab);
    EXPECT_EQ(written(), u"2 one<>two|one>two"_s) << "left unchanged";
    typeAtEnd(user.rule(), u"\nX"_s);
    bills->setFocus();
    typeAtEnd(user.content(), u"\nY"_s);
    user.click(bills, 0, u"Name"_s);
    EXPECT_EQ(written(), u"2 one<>two<>X|one>two, 2 one<>two<>X|one>two>Y"_s);
    EXPECT_EQ(bills->text(1, u"RULE"_s), u"one\r\ntwo\r\nX"_s);

    // Lent to another window or a menu they are written when changed only.
    QWidget other;
    for (const bool changed : {false, true}) {
        typeAtEnd(user.content(), changed ? u"a\nb"_s : QString());
        other.show();
        EditorDriver::activate(&other);
        user.activate();
        QMenu menu;
        menu.addAction(u"x"_s);
        menu.popup(QPoint(5, 5));
        menu.close();
        EXPECT_EQ(written(), changed ? u"1 |a<>b"_s : QString());
    }
}

TEST_F(BillPaneTest, TheTextOfOneBillIsNeverWrittenToAnother) {
    typeAtEnd(user.rule(), u"Z"_s);
    bills->setRow(0);
    EXPECT_EQ(written(), u"2 one<>twoZ|one>two"_s);
    typeAtEnd(user.rule(), u"W"_s);
    user.run(2, 200);
    EXPECT_EQ(written(), u"1 W|, 1 W|"_s) << "committed before the command, written when the box is left";
    EXPECT_EQ(user.rule()->toPlainText(), QString());
    typeAtEnd(user.rule(), u"V"_s);
    user.click(user.tree()->node(u"K03"_s));
    EXPECT_EQ(written(), u"15 V|"_s);
    typeAtEnd(user.rule(), u"U"_s);
    bills->setFocus();
    EXPECT_EQ(user.rule()->toPlainText() + written(), QString()) << "no bill, nothing to type into";
}

TEST(BillTextBox, KeepsWhatTheToolkitWouldReplace) {
    BillTextBox box;
    const QString stored = u"a\u00a0b\u2028c\r\nd"_s;
    box.showText(1, stored);
    EXPECT_EQ(box.text(), stored);
    box.insertPlainText(u"x"_s);
    EXPECT_EQ(box.text(), u'x' + stored);
    box.undo();
    EXPECT_FALSE(box.isChanged());
    QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(box.text(), u"\r\n"_s + stored);
    // What was refused does not come back.
    box.restore();
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.text(), stored);
}
