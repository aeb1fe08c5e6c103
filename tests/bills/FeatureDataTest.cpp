#include "editor/bills/FeatureData.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "tests/bills/BillLibrary.h"
#include "tests/support/ModalAnswers.h"

namespace {

const SqlText features = "SELECT ID,BillID,Name,Type,Unit,DefVal,IsDel,LastUpdate<>'old' FROM tblBillSpec ORDER BY ID";
const SqlText values = "SELECT ID,SpecID,IsUse,EigenValue,LastUpdate<>'old' FROM tblSpecEnum ORDER BY ID";

}  // namespace

TEST(FeatureData, FeaturesAreAddedChangedAndDeletedWithTheirValues) {
    const BillLibrary library;
    library.addBillWithDetails(1, QStringLiteral("010101001"));
    library.addBillWithDetails(2, QStringLiteral("010101002"));
    EXPECT_EQ(addFeature(library.connection(), 1, QStringLiteral("强度")), std::optional<qint64>(23));
    EXPECT_EQ(library.rowsInFile(features).last(), QStringLiteral("23|1|强度|0|NULL|NULL|0|1"));
    EXPECT_TRUE(ModifyBillSpec(library.connection(), 23, QStringLiteral("type"), QStringLiteral("2")));
    EXPECT_TRUE(ModifyBillSpec(library.connection(), 23, QStringLiteral("unit"), QStringLiteral("MPa")));
    EXPECT_EQ(library.rowsInFile(features).last(), QStringLiteral("23|1|强度|2|MPa|NULL|0|1"));

    EXPECT_TRUE(deleteFeature(library.connection(), 12));
    EXPECT_EQ(library.rowsInFile("SELECT group_concat(ID) FROM tblBillSpec"),
              QStringList{QStringLiteral("11,21,22,23")});
    EXPECT_EQ(library.rowsInFile("SELECT group_concat(DISTINCT SpecID) FROM tblSpecEnum"),
              QStringList{QStringLiteral("11,21,22")});
    Recordset ofBill = featuresOfBill(library.connection(), 2);
    EXPECT_EQ(ofBill.text("ID"), QStringLiteral("21"));
}

TEST(FeatureData, AllValuesAreWrittenWithTheirCheckStates) {
    const BillLibrary library;
    library.addBillWithDetails(1, QStringLiteral("010101001"));
    const auto added = addFeatureVal(library.connection(), 12);
    ASSERT_EQ(added, std::optional<qint64>(5));
    EXPECT_EQ(library.rowsInFile(values).last(), QStringLiteral("5|12|NULL|NULL|1"));

    const auto use = [](const char* state) { return QString::fromLatin1(state); };
    EXPECT_TRUE(writeFeatureValues(
        library.connection(), 12,
        {{3, use("2"), QStringLiteral(" 甲 ")}, {4, use("1"), QStringLiteral("乙")}, {5, use("2"), {}}},
        QStringLiteral("乙")));
    const QStringList written = {QStringLiteral("1|11|2|1|0"), QStringLiteral("2|11|2|1|0"),
                                 QStringLiteral("3|12|2| 甲 |1"), QStringLiteral("4|12|1|乙|1"),
                                 QStringLiteral("5|12|2||1")};
    EXPECT_EQ(library.rowsInFile(values), written);
    EXPECT_EQ(library.rowsInFile(features).last(), QStringLiteral("12|1|特征2|2|NULL|乙|NULL|1"));

    // The checked value goes, the default value stays.
    EXPECT_TRUE(deleteFeatureVal(library.connection(), 4));
    EXPECT_EQ(library.rowsInFile("SELECT DefVal FROM tblBillSpec WHERE ID=12"), QStringList{QStringLiteral("乙")});
    EXPECT_EQ(library.rowsInFile(values).size(), 4);
}

TEST(FeatureData, WhatFailsIsRecordedAndLeavesTheFileAsItWas) {
    const BillLibrary library;
    library.addBillWithDetails(1, QStringLiteral("010101001"));
    library.dontWait();
    const QStringList before = library.contents();
    ModalAnswers answers;
    answers.closeAnything();

    EXPECT_EQ(addFeature(library.connection(), 1, QStringLiteral("a'b")), std::nullopt);
    EXPECT_FALSE(ModifyBillSpec(library.connection(), 11, QStringLiteral("Name"), QStringLiteral("a'b")));
    EXPECT_FALSE(writeFeatureValues(
        library.connection(), 11,
        {{1, QStringLiteral("1"), QStringLiteral("甲")}, {2, QStringLiteral("2"), QStringLiteral("a'b")}},
        QStringLiteral("甲")));
    QCoreApplication::processEvents();
    EXPECT_EQ(errorPlaces(answers),
              (QStringList{QStringLiteral("ModDBOperator.ExecuteDDL"), QStringLiteral("ModDBOperator.ExecuteDDL"),
                           QStringLiteral("frmEditor.grdSpecEnum_AfterEdit")}));
    EXPECT_EQ(library.contents(), before);

    {
        Connection other;
        other.Open(library.path(), QString(), Connection::readWriteCreate);
        other.Execute("BEGIN EXCLUSIVE");
        EXPECT_FALSE(deleteFeature(library.connection(), 11));
        EXPECT_FALSE(deleteFeatureVal(library.connection(), 1));
        EXPECT_EQ(addFeatureVal(library.connection(), 11), std::nullopt);
    }
    EXPECT_EQ(errorPlaces(answers), (QStringList{QStringLiteral("frmEditor.mnuDeleteFeature_Click"),
                                                 QStringLiteral("frmEditor.mnuDeleteFeatureVal_Click"),
                                                 QStringLiteral("ModDBOperator.ExecuteDDL")}));
    QCoreApplication::processEvents();
    EXPECT_EQ(library.contents(), before);
    EXPECT_TRUE(deleteFeature(library.connection(), 11));
    EXPECT_NE(library.contents(), before);
}
