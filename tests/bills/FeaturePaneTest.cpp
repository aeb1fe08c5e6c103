#include "editor/bills/FeaturePane.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QTest>

#include "tests/bills/BillWindow.h"
#include "tests/support/ModalAnswers.h"

namespace {

const QString defval = QStringLiteral("defval");

/// A window that lists two bills; the first has the features 11 (values 1 and 2) and 12 (values 3 and 4).
class Features : public testing::Test {
protected:
    Features() {
        window.library.addBillWithDetails(1, QStringLiteral("010101001"));
        window.library.addBill(2, "010101002");
        window.library.run("UPDATE tblSpecEnum SET EigenValue='值'||ID");
        window.bills->LoadBill(window.chapter);
    }

    KeyedGrid* features() const { return window.features->grdSpec(); }
    KeyedGrid* values() const { return window.features->grdSpecEnum(); }

    QString stored(const SqlText& column, int id) const {
        return window.library.rowsInFile(sql("SELECT ", column, " FROM tblBillSpec WHERE ID=", id)).value(0);
    }
    QStringList valuesInFile() const {
        return window.library.rowsInFile("SELECT ID,IsUse,EigenValue FROM tblSpecEnum WHERE SpecID=11 ORDER BY ID");
    }

    BillWindow window;
};

}  // namespace

TEST_F(Features, FollowTheCurrentBill) {
    EXPECT_EQ(features()->rowCount(), 2);
    EXPECT_EQ(values()->rowCount(), 2);
    EXPECT_EQ(window.features->shownBill(), 1);
    window.click(features(), 1, "Name");
    EXPECT_EQ(values()->text(0, QStringLiteral("ID")), QStringLiteral("3"));
    window.click(window.list(), 1, "Name");
    EXPECT_FALSE(features()->hasRows());
    EXPECT_FALSE(values()->hasRows());
    window.expectWindowIsFile();
}

TEST_F(Features, CellsAreWrittenTrimmedAndKeptWhenTheyCannotBe) {
    window.edit(features(), 1, "Name", QStringLiteral(" 强度 "));
    window.edit(features(), 1, "unit", QStringLiteral("MPa"));
    window.edit(features(), 1, "defval", QStringLiteral("C30"));
    EXPECT_EQ(stored("Name||'|'||Unit||'|'||DefVal", 12), QStringLiteral("强度|MPa|C30"));
    ModalAnswers answers;
    answers.closeAnything();
    window.edit(features(), 1, "Name", QStringLiteral("a'"));
    EXPECT_EQ(features()->text(1, QStringLiteral("Name")), QStringLiteral("强度"));
    window.expectWindowIsFile();
}

TEST_F(Features, TheTypeIsChosenFromAList) {
    features()->setFocus();
    features()->setCell(0, QStringLiteral("type"));
    QTest::keyClick(features(), Qt::Key_F2);
    auto* choice = features()->findChild<QComboBox*>(QStringLiteral("cellEditor"));
    ASSERT_TRUE(choice);
    QStringList offered;
    for (int i = 0; i < choice->count(); ++i)
        offered << choice->itemText(i);
    EXPECT_EQ(offered, (QStringList{QStringLiteral(" "), QStringLiteral("数值"), QStringLiteral("枚举"),
                                    QStringLiteral("计算")}));
    QTest::keyClick(choice->view(), Qt::Key_Down);
    QTest::keyClick(choice->view(), Qt::Key_Return);
    EXPECT_FALSE(features()->isEditing());
    EXPECT_EQ(stored("Type", 11), QStringLiteral("3"));
    window.expectWindowIsFile();
}

TEST_F(Features, AtMostOneValueIsInUseAndIsTheDefault) {
    window.click(values(), 1, "isUse");
    EXPECT_EQ(valuesInFile(), (QStringList{QStringLiteral("1|2|值1"), QStringLiteral("2|1|值2")}));
    EXPECT_EQ(stored("DefVal", 11), QStringLiteral("值2"));
    window.click(values(), 0, "isUse");
    EXPECT_EQ(valuesInFile(), (QStringList{QStringLiteral("1|1|值1"), QStringLiteral("2|2|值2")}));
    EXPECT_EQ(features()->text(0, defval), QStringLiteral("值1"));
    // The default follows the text of the value in use, as it was typed.
    window.edit(values(), 0, "eigenValue", QStringLiteral(" C30 "));
    EXPECT_EQ(stored("DefVal", 11), QStringLiteral(" C30 "));
    window.edit(values(), 1, "eigenValue", QStringLiteral("C35"));
    EXPECT_EQ(stored("DefVal", 11), QStringLiteral(" C30 "));
    window.expectWindowIsFile();

    values()->setFocus();
    values()->setCell(0, QStringLiteral("isUse"));
    QTest::keyClick(values(), Qt::Key_Space);
    EXPECT_EQ(valuesInFile().first(), QStringLiteral("1|2| C30 "));
    EXPECT_EQ(stored("DefVal", 11), QString());
    window.expectWindowIsFile();
}

TEST_F(Features, WhatCannotBeWrittenDoesNotStay) {
    window.click(values(), 0, "isUse");
    const QStringList before = valuesInFile();
    ModalAnswers answers;
    answers.closeAnything();
    window.edit(values(), 1, "eigenValue", QStringLiteral("a'"));
    EXPECT_EQ(errorPlaces(answers), QStringList{QStringLiteral("frmEditor.grdSpecEnum_AfterEdit")});
    QCoreApplication::processEvents();
    EXPECT_EQ(valuesInFile(), before);
    {
        window.library.dontWait();
        Connection other;
        other.Open(window.library.path(), QString(), Connection::readWriteCreate);
        other.Execute("BEGIN EXCLUSIVE");
        answers.takeSeen();
        window.click(values(), 1, "isUse");
        window.features->mnuDeleteFeature_Click();
        window.features->mnuDeleteFeatureVal_Click();
        window.features->mnuAddFeatureVal_Click();
        window.features->mnuAddFeature_Click();
        EXPECT_EQ(errorPlaces(answers),
                  (QStringList{QStringLiteral("frmEditor.grdSpecEnum_AfterEdit"),
                               QStringLiteral("frmEditor.mnuDeleteFeature_Click"),
                               QStringLiteral("frmEditor.mnuDeleteFeatureVal_Click"),
                               QStringLiteral("ModDBOperator.ExecuteDDL"), QStringLiteral("frmEditor.GetCopyName")}));
    }
    QCoreApplication::processEvents();
    window.expectWindowIsFile();
    window.click(values(), 1, "isUse");
    EXPECT_EQ(stored("DefVal", 11), QStringLiteral("值2"));
    window.expectWindowIsFile();
}

TEST_F(Features, AreAddedAndDeletedWithTheirValues) {
    window.list()->setRow(1);
    window.features->mnuAddFeature_Click();
    window.features->mnuAddFeatureVal_Click();
    window.features->mnuAddFeatureVal_Click();
    window.features->mnuAddFeature_Click();
    window.list()->setRow(0);
    window.features->mnuAddFeature_Click();
    EXPECT_EQ(features()->row(), 2);
    EXPECT_EQ(features()->text(2, QStringLiteral("Name")), QStringLiteral("新建项目特征(2)"));
    EXPECT_EQ(features()->text(2, QStringLiteral("type")), QStringLiteral("0"));
    window.expectWindowIsFile();

    window.list()->setRow(1);
    EXPECT_EQ(values()->rowCount(), 2);
    window.edit(values(), 0, "eigenValue", QStringLiteral("甲"));
    window.click(values(), 0, "isUse");
    window.features->mnuDeleteFeatureVal_Click();
    EXPECT_EQ(values()->row(), 0);
    EXPECT_EQ(features()->text(0, defval), QStringLiteral("甲"));
    window.expectWindowIsFile();
    window.features->mnuDeleteFeature_Click();
    EXPECT_EQ(features()->row(), 0);
    window.expectWindowIsFile();
    window.features->mnuDeleteFeature_Click();
    EXPECT_FALSE(features()->hasRows());
    EXPECT_FALSE(values()->hasRows());
    window.features->mnuDeleteFeature_Click();
    window.features->mnuAddFeatureVal_Click();
    window.features->mnuDeleteFeatureVal_Click();
    window.expectWindowIsFile();
}

TEST_F(Features, OfABillThatIsGoneTakeNoCommands) {
    window.library.run("DELETE FROM tblBill WHERE ID=1");
    window.features->setLocked(true);
    const QStringList before = window.library.contents();
    window.features->mnuAddFeature_Click();
    window.features->mnuDeleteFeature_Click();
    window.features->mnuAddFeatureVal_Click();
    window.features->mnuDeleteFeatureVal_Click();
    window.click(values(), 0, "isUse");
    features()->setFocus();
    features()->setCell(0, QStringLiteral("Name"));
    QTest::keyClick(features(), Qt::Key_F2);
    EXPECT_FALSE(features()->isEditing());
    EXPECT_EQ(window.library.contents(), before);
    // The next bill is unlocked, and so is no bill at all; there, there is nothing to add to.
    window.bills->LoadBill(QStringLiteral("999999"));
    EXPECT_FALSE(window.features->isLocked());
    window.features->mnuAddFeature_Click();
    EXPECT_EQ(window.library.contents(), before);
}
