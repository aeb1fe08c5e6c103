#include "editor/bills/BillData.h"

#include <gtest/gtest.h>

#include "editor/bills/FeatureData.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/Writing.h"

using namespace Qt::StringLiterals;

namespace {

QString codes(Recordset rows) {
    QStringList found;
    for (; !rows.EndOfFile(); rows.MoveNext())
        found << rows.text("Code");
    return found.join(u' ');
}

}  // namespace

TEST(BillLists, AreThoseOfAChapterOrOfPartOfACode) {
    const TemporaryLibrary library;
    for (const QString& code : {u"010101002"_s, u"010101001"_s, u"0101010011"_s, u"020101001"_s, u"01010'001"_s})
        library.run(sql("INSERT INTO tblBill(Code) VALUES('", Doubled{code}, "')"));
    const auto chapter = [&](const QString& code) { return codes(billsOfChapter(library.connection(), code)); };
    const auto query = [&](const QString& text) { return codes(billsWithCode(library.connection(), text)); };
    EXPECT_EQ(chapter(u"01010199"_s), u"010101001 010101002"_s);
    EXPECT_EQ(chapter(u"0101"_s), QString());
    EXPECT_EQ(query(u"0'0"_s), u"01010'001"_s);
    EXPECT_EQ(query(u"' OR 1=1 --"_s), QString());
    EXPECT_EQ(query(u"1_1001"_s), u"010101001 0101010011 020101001"_s);
}

// What is only renumbered keeps its time stamp; parameters follow moves only.
TEST(BillData, EachProcedureWritesItsRowsAloneAndFailsAsItIsMeantTo) {
    using enum Writing::Failing;
    const std::vector<Bill> back{{2, u"010101001"_s}, {3, u"010101002"_s}, {4, u"010101003"_s}, {5, u"010101004"_s}};
    const std::vector<Bill> on{{2, u"010101003"_s}, {3, u"010101004"_s}, {4, u"010101005"_s}, {5, u"010101006"_s}};
    for (const Writing& writing : std::initializer_list<Writing>{
             {"", Statement, [](Connection* c) { return ModifyBill(c, 2, u"Rule"_s, u"新"_s); },
              "tblBill ~2 Rule=新 LastUpdate=now", "UPDATE ON tblBill"},
             {"frmEditor.mnuAddBill_Click", RolledBack,
              [&](Connection* c) { return addBill(c, u"010101002"_s, on) == 8; },
              "tblBill ~2 Code=010101003\ntblBill ~3 Code=010101004\ntblBill ~4 Code=010101005\n"
              "tblBill ~5 Code=010101006\ntblBill +8 Code=010101002 LastUpdate=now IsDel=0\n"
              "tblCont ~21 ~22 Code=010101003\ntblCont ~31 ~32 Code=010101004\ntblCont ~41 ~42 Code=010101005\n"
              "tblCont ~51 ~52 Code=010101006",
              "UPDATE ON tblBill WHEN old.ID=5"},
             {"frmEditor.mnuDeleteBill_Click", RolledBack, [&](Connection* c) { return deleteBill(c, 1, back); },
              "tblBill -1\ntblBillSpec -11 -12\ntblCont -11 -12\ntblContDe -111 -112 -113 -114 -121 -122 -123 -124\n"
              "tblParm -1\ntblSpecEnum -111 -112 -121 -122\ntblBill ~2 Code=010101001\ntblBill ~3 Code=010101002\n"
              "tblBill ~4 Code=010101003\ntblBill ~5 Code=010101004\n"
              "tblCont ~21 ~22 Code=010101001\ntblCont ~31 ~32 Code=010101002\ntblCont ~41 ~42 Code=010101003\n"
              "tblCont ~51 ~52 Code=010101004",
              "UPDATE ON tblBill WHEN old.ID=5"},
             {"frmEditor.MoveBillRow", RolledBack,
              [](Connection* c) {
                  return moveBill(c, {3, u"010101003"_s}, {2, u"010101002"_s}, u"010101006"_s);
              },
              "tblBill ~2 Code=010101003\ntblBill ~3 Code=010101002\ntblCont ~21 ~22 Code=010101003\n"
              "tblCont ~31 ~32 Code=010101002\ntblParm ~2 Code=010101003\ntblParm ~3 Code=010101002",
              "UPDATE ON tblBill WHEN new.Code='010101003'"},
             {"", Statement, [](Connection* c) { return ModifyBillSpec(c, 11, u"DefVal"_s, u"新"_s); },
              "tblBillSpec ~11 DefVal=新 LastUpdate=now", "UPDATE ON tblBillSpec"},
             {"", Statement, [](Connection* c) { return addFeature(c, 1, u"新"_s) == 73; },
              "tblBillSpec +73 BillID=1 Name=新 Type=0 Version=1 LastUpdate=now IsDel=0", "INSERT ON tblBillSpec"},
             {"frmEditor.mnuDeleteFeature_Click", RolledBack, [](Connection* c) { return deleteFeature(c, 12); },
              "tblBillSpec -12\ntblSpecEnum -121 -122", "DELETE ON tblBillSpec"},
             {"", Statement, [](Connection* c) { return addFeatureVal(c, 12) == 723; },
              "tblSpecEnum +723 SpecID=12 Version=1 LastUpdate=now IsDel=0", "INSERT ON tblSpecEnum"},
             {"frmEditor.mnuDeleteFeatureVal_Click", Own, [](Connection* c) { return deleteFeatureVal(c, 121); },
              "tblSpecEnum -121", "DELETE ON tblSpecEnum"},
             {"frmEditor.grdSpecEnum_AfterEdit", RolledBack,
              [](Connection* c) {
                  return writeFeatureValues(c, 11, {{111, u"1"_s, u"甲"_s}, {112, u"2"_s, u"乙"_s}}, u"甲"_s);
              },
              "tblBillSpec ~11 DefVal=甲 LastUpdate=now\ntblSpecEnum ~111 IsUse=1 EigenValue=甲 LastUpdate=now\n"
              "tblSpecEnum ~112 EigenValue=乙 LastUpdate=now",
              "UPDATE ON tblBillSpec"}})
        expectWriting(writing);
}

TEST(BillData, ABillThatIsGoneIsNotDeletedAgainWithWhatDependsOnIt) {
    const DetailedLibrary library;
    library.run("DELETE FROM tblBill WHERE ID=1");
    EXPECT_EQ(library.changes([&] {
        EXPECT_FALSE(deleteBill(library.connection(), 1, {{2, u"010101001"_s}}));
    }),
              QString());
}
