#include "editor/bills/BillPane.h"

#include <gtest/gtest.h>

#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>

#include "tests/bills/BillWindow.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

void addThreeBills(BillWindow& window) {
    for (qint64 id = 1; id <= 3; ++id)
        window.library.addBillWithDetails(id, u"01010100%1"_s.arg(id));
    window.library.run("UPDATE tblBill SET Rule='规则'||ID, Cont='内容'||ID, CodePrefix='桂', Unit='m3'");
    window.bills->LoadBill(window.chapter);
}

}  // namespace

TEST(BillPane, ShowsTheDetailsOfABillBeforeItsTexts) {
    BillWindow window;
    addThreeBills(window);
    EXPECT_EQ(window.events, QStringList{u"bill 1"_s});
    EXPECT_EQ(BillWindow::shown(window.list())[0], u"1|桂|010101001|清单1|m3|内容1|规则1"_s);

    QString ruleBefore;
    window.bills->billChanged = [&](qint64) { ruleBefore = window.bills->txtRule()->toPlainText(); };
    window.click(window.list(), 2, "Name");
    EXPECT_EQ(ruleBefore, u"规则1"_s);
    EXPECT_EQ(window.bills->txtRule()->toPlainText(), u"规则3"_s);
    EXPECT_EQ(window.bills->txtContent()->toPlainText(), u"内容3"_s);

    window.bills->ListBillData(nullptr);
    EXPECT_EQ(window.list()->rowCount(), 3);
    // The list alone is emptied, its details stay; a chapter without bills has no details either.
    window.bills->clearList();
    EXPECT_FALSE(window.list()->hasRows());
    EXPECT_TRUE(window.bills->txtRule()->toPlainText().isEmpty() && window.bills->txtRule()->isReadOnly());
    EXPECT_TRUE(window.features->grdSpec()->hasRows());
    window.bills->LoadBill(u"010102"_s);
    EXPECT_EQ(window.events.last(), u"emptied"_s);
}

TEST(BillPane, CellsAreWrittenTrimmedAndWithinTheirLimits) {
    BillWindow window;
    addThreeBills(window);
    window.edit(window.list(), 1, "name", u"  \u3000挖 土 方 "_s);
    window.edit(window.list(), 1, "codeprefix", u"一二三四五六七八九"_s);
    window.edit(window.list(), 1, "unit", u"1234567890123"_s);
    window.edit(window.list(), 2, "name", QString(60, u'n'));
    EXPECT_EQ(window.library.rowsInFile("SELECT Name,CodePrefix,Unit,LastUpdate<>'old' FROM tblBill WHERE ID>1"),
              (QStringList{u"\u3000挖 土 方|一二三四五六七八|123456789012|1"_s, QString(50, u'n') + u"|桂|m3|1"_s}));
    EXPECT_EQ(window.list()->text(1, u"Name"_s), u"\u3000挖 土 方"_s);
    for (const char* key : {"Code", "id", "Cont", "RULE", ""}) {
        QString text = u"x"_s;
        EXPECT_EQ(window.list()->validateEdit(1, QString::fromLatin1(key), text), EditVerdict::Restore) << key;
    }
    // What cannot be written does not stay.
    ModalAnswers answers;
    answers.closeAnything();
    window.edit(window.list(), 0, "name", u"x' --"_s);
    EXPECT_EQ(errorPlaces(answers), QStringList{u"ModDBOperator.ExecuteDDL"_s});
    EXPECT_EQ(window.list()->text(0, u"Name"_s), u"清单1"_s);
}

TEST(BillPane, RefusesTheThousandthBill) {
    BillWindow window;
    window.library.run(
        "INSERT INTO tblBill(Code) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<998) "
        "SELECT printf('010101%03d',i) FROM n");
    window.bills->LoadBill(window.chapter);
    window.bills->mnuAddBill_Click();
    ModalAnswers answers;
    answers.press(QMessageBox::Ok);
    window.bills->mnuAddBill_Click();
    EXPECT_EQ(answers.seen(), QStringList{u"提示: 对不起！ 由于编码规则此章节只能添加999条清单！"_s});
    EXPECT_EQ(window.library.rowsInFile("SELECT count(*),max(Code) FROM tblBill"), QStringList{u"999|010101999"_s});
}
