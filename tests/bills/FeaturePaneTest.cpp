#include "editor/bills/FeaturePane.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QTest>

#include "tests/bills/BillWindow.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

/// A window that lists a bill with the features 11 (values 1 and 2) and 12.
class Features : public testing::Test {
protected:
    Features() {
        window.library.addBillWithDetails(1, u"010101001"_s);
        window.library.run("UPDATE tblSpecEnum SET EigenValue='值'||ID");
        window.bills->LoadBill(window.chapter);
    }

    KeyedGrid* features() const { return window.features->grdSpec(); }
    KeyedGrid* values() const { return window.features->grdSpecEnum(); }

    /// The default of the first feature and the values, "*" at those in use; the grids show the same.
    QString inUse() const {
        const QString stored = window.library
                                   .rowsInFile(
                                       "SELECT DefVal FROM tblBillSpec WHERE ID=11 UNION ALL SELECT EigenValue||"
                                       "CASE IsUse WHEN 1 THEN '*' ELSE '' END FROM tblSpecEnum WHERE SpecID=11")
                                   .join(u'|');
        QStringList shown{features()->text(0, u"defval"_s)};
        for (int row = 0; row < values()->rowCount(); ++row)
            shown << values()->text(row, u"eigenValue"_s) + (values()->value(row, u"isUse"_s) == 1 ? u"*"_s : u""_s);
        EXPECT_EQ(shown.join(u'|'), stored);
        return stored;
    }

    BillWindow window;
};

}  // namespace

TEST_F(Features, CellsAreWrittenTrimmedAndTheTypeIsChosenFromAList) {
    window.edit(features(), 0, "Name", u" 强度 "_s);
    window.edit(features(), 0, "unit", u" MPa"_s);
    window.edit(features(), 0, "defval", u"C30 "_s);
    features()->setCell(0, u"type"_s);
    QTest::keyClick(features(), Qt::Key_F2);
    auto* choice = features()->findChild<QComboBox*>(u"cellEditor"_s);
    ASSERT_TRUE(choice);
    QStringList offered;
    for (int i = 0; i < choice->count(); ++i)
        offered << choice->itemText(i);
    EXPECT_EQ(offered.join(u'|'), u" |数值|枚举|计算"_s);
    QTest::keyClick(choice->view(), Qt::Key_Down);
    QTest::keyClick(choice->view(), Qt::Key_Return);
    EXPECT_EQ(window.library.rowsInFile("SELECT Name,Unit,DefVal,Type FROM tblBillSpec WHERE ID=11"),
              QStringList{u"强度|MPa|C30|3"_s});
    EXPECT_EQ(BillWindow::shown(features())[0], u"11|强度|3|MPa|C30"_s);
}

TEST_F(Features, AtMostOneValueIsInUseAndIsTheDefault) {
    window.click(values(), 1, "isUse");
    EXPECT_EQ(inUse(), u"值2|值1|值2*"_s);
    window.click(values(), 0, "isUse");
    EXPECT_EQ(inUse(), u"值1|值1*|值2"_s);
    // The default follows the text of the value in use, as it was typed.
    window.edit(values(), 0, "eigenValue", u" C30 "_s);
    window.edit(values(), 1, "eigenValue", u"C35"_s);
    EXPECT_EQ(inUse(), u" C30 | C30 *|C35"_s);
    values()->setCell(0, u"isUse"_s);
    QTest::keyClick(values(), Qt::Key_Space);
    EXPECT_EQ(inUse(), u"| C30 |C35"_s);
    // The default stays when the value that gave it is deleted.
    window.click(values(), 1, "isUse");
    window.features->mnuDeleteFeatureVal_Click();
    EXPECT_EQ(inUse(), u"C35| C30 "_s);
}

TEST_F(Features, WhatCannotBeWrittenDoesNotStay) {
    window.click(values(), 0, "isUse");
    window.library.dontWait();
    ModalAnswers answers;
    answers.closeAnything();
    window.edit(values(), 1, "eigenValue", u"a'"_s);
    QCoreApplication::processEvents();
    {
        Connection other;
        other.Open(window.library.path(), QString(), Connection::readWriteCreate);
        other.Execute("BEGIN EXCLUSIVE");
        window.click(values(), 1, "isUse");
        window.features->mnuDeleteFeature_Click();
        window.features->mnuDeleteFeatureVal_Click();
        window.features->mnuAddFeatureVal_Click();
        window.features->mnuAddFeature_Click();
    }
    EXPECT_EQ(errorPlaces(answers).join(u' '),
              u"frmEditor.grdSpecEnum_AfterEdit frmEditor.grdSpecEnum_AfterEdit frmEditor.mnuDeleteFeature_Click "
              "frmEditor.mnuDeleteFeatureVal_Click ModDBOperator.ExecuteDDL frmEditor.GetCopyName"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(inUse(), u"值1|值1*|值2"_s);
    EXPECT_EQ(features()->rowCount(), 2);
    window.features->mnuAddFeature_Click();
    window.features->mnuAddFeature_Click();
    EXPECT_EQ(window.library.rowsInFile("SELECT Name,Type FROM tblBillSpec WHERE ID>12"),
              (QStringList{u"新建项目特征|0"_s, u"新建项目特征(1)|0"_s}));
}
