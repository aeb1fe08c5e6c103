#include <gtest/gtest.h>

#include "editor/bills/BillData.h"
#include "editor/bills/FeatureData.h"
#include "editor/chapters/ChapterData.h"
#include "editor/contents/ContentData.h"
#include "tests/rooms/Writing.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

TEST(ChapterData, EachProcedureWritesItsRowsAloneAndFailsAsItIsMeantTo) {
    using enum Writing::Failing;
    const char* const swapped =
        "tblBill ~1 Code=010102001\ntblBill ~2 Code=010102002\ntblBill ~3 Code=010102003\ntblBill ~4 Code=010102004\n"
        "tblBill ~5 Code=010102005\ntblBill ~6 Code=010101001\n"
        "tblCont ~11 ~12 Code=010102001\ntblCont ~21 ~22 Code=010102002\ntblCont ~31 ~32 Code=010102003\n"
        "tblCont ~41 ~42 Code=010102004\ntblCont ~51 ~52 Code=010102005\ntblCont ~61 ~62 Code=010101001\n"
        "tblSYB ~3 Code=010102\ntblSYB ~4 Code=010101";
    const char* const chapterDeleted =
        "tblBill -6\ntblBillSpec -61 -62\ntblCont -61 -62\ntblContDe -611 -612 -613 -614 -621 -622 -623 -624\n"
        "tblParm -6\ntblSYB -4\ntblSpecEnum -611 -612 -621 -622";
    for (const Writing& writing : std::initializer_list<Writing>{
             {"frmEditor.", Own, [](Connection* c) { return ModifyBillSYB(c, u"01"_s, u"新名"_s); },
              "tblSYB ~1 Name=新名 LastUpdate=now", "UPDATE ON tblSYB"},
             {"frmEditor.ExchangeSYBNode", RolledBack,
              [](Connection* c) { return ExchangeSYBNode(c, u"010101"_s, u"010102"_s); }, swapped,
              "UPDATE ON tblCont WHEN new.Code='010101001'"},
             {"frmEditor.DeleteBillSYB", LeftOpen, [](Connection* c) { return DeleteBillSYB(c, u"010102"_s); },
              chapterDeleted, "DELETE ON tblSpecEnum",
              "tblCont -61 -62\ntblContDe -611 -612 -613 -614 -621 -622 -623 -624\ntblParm -6"},
             // Three characters more than the code, whatever its level, make a bill of the chapter.
             {"frmEditor.DeleteBillSYB", LeftOpen, [](Connection* c) { return DeleteBillSYB(c, u"01"_s); },
              "tblBill -7\ntblBillSpec -71 -72\ntblCont -71 -72\n"
              "tblContDe -711 -712 -713 -714 -721 -722 -723 -724\ntblParm -7\ntblSYB -1\n"
              "tblSpecEnum -711 -712 -721 -722",
              "DELETE ON tblParm"}})
        expectWriting(writing);
}

TEST(ChapterData, AChapterIsAddedOnceAndBrokenStatementsWriteNothing) {
    const DetailedLibrary library;
    Connection* const connection = library.connection();
    EXPECT_EQ(library.changes([&] { EXPECT_TRUE(AddBillSYB(connection, u"0A"_s, u"土 \"%_--"_s)); }),
              u"tblSYB +6 Code=0A Name=土 \"%_-- LastUpdate=now IsDel=0"_s);
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(library.changes([&] {
        EXPECT_FALSE(AddBillSYB(connection, u"01"_s, u"y"_s));
        EXPECT_FALSE(AddBillSYB(connection, u"0a"_s, u"y"_s));
        EXPECT_FALSE(AddBillSYB(nullptr, u"03"_s, u"y"_s));
        EXPECT_FALSE(AddBillSYB(connection, u"03"_s, u"x',0);--"_s));
        EXPECT_FALSE(DeleteBillSYB(connection, u"01' OR ''='"_s));
        EXPECT_TRUE(DeleteBillSYB(connection, u"09"_s));
    }),
              QString());
    EXPECT_EQ(answers.takePlaces(), (QStringList(3, u"提示: 目录编号已经存在!"_s)
                                     << u"frmEditor.AddBillSYB"_s << u"frmEditor.DeleteBillSYB"_s));
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

TEST(BillData, RenumberingLeavesSchemaAndSizeOfTheFileAsTheyWere) {
    const TemporaryLibrary library;
    library.run(
        "INSERT INTO tblBill(Code) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<900) "
        "SELECT printf('010101%03d',i) FROM n");
    library.run("INSERT INTO tblCont(Code,BillID) SELECT Code,ID FROM tblBill");
    std::vector<Bill> on, back;
    for (qint64 id = 2; id <= 900; ++id) {
        back.push_back({id, u"010101%1"_s.arg(id, 3, 10, QChar(u'0'))});
        on.push_back({id, u"010101%1"_s.arg(id + 1, 3, 10, QChar(u'0'))});
    }
    const auto file = [&] {
        return library.rowsInFile("SELECT * FROM pragma_schema_version,pragma_page_count,pragma_freelist_count");
    };
    const QStringList before = file();
    const std::optional<qint64> added = addBill(library.connection(), u"010101002"_s, on);
    EXPECT_EQ(added, 901);
    EXPECT_EQ(library.rowsInFile("SELECT count(*) FROM tblCont WHERE Code='010101901' AND BillID=900"),
              QStringList{u"1"_s});
    EXPECT_TRUE(deleteBill(library.connection(), 901, back));
    EXPECT_EQ(file(), before);
}

TEST(ContentData, EachProcedureWritesItsRowsAloneAndFailsAsItIsMeantTo) {
    using enum Writing::Failing;
    const Ration ration{u"B2"_s, u"新"_s, u"m"_s, u"GD"_s};
    for (const Writing& writing : std::initializer_list<Writing>{
             {"", Statement, [](Connection* c) { return ModifyCont(c, 11, u"新"_s); },
              "tblCont ~11 Cont=新 LastUpdate=now", "UPDATE ON tblCont"},
             {"", Statement, [](Connection* c) { return ModifySubCont(c, 11, 1, u"新"_s); },
              "tblContDe ~111 ~112 SubCont=新 LastUpdate=now", "UPDATE ON tblContDe"},
             {"frmEditor.munAddBillCont_Click", LeftOpen,
              [](Connection* c) {
                  return addContent(c, {1, u"010101001"_s, 2, u"新"_s, u"02"_s}) == 73;
              },
              "tblCont ~12 Num=3\n"
              "tblCont +73 Code=010101001 Num=2 Cont=新 Prof=02 BillID=1 Version=1 LastUpdate=now IsDel=0",
              "INSERT ON tblCont", "tblCont ~12 Num=3"},
             {"frmEditor.munAddBillSubCont_Click", LeftOpen,
              [](Connection* c) { return addSubContent(c, 11, 2, u"新"_s); },
              "tblContDe ~113 SubNum=3\ntblContDe ~114 SubNum=4\n"
              "tblContDe +725 ContID=11 SubNum=2 SubCont=新 Version=1 LastUpdate=now IsDel=0",
              "INSERT ON tblContDe", "tblContDe ~113 SubNum=3\ntblContDe ~114 SubNum=4"},
             {"frmEditor.mnuDelBillCont_Click", RolledBack, [](Connection* c) { return deleteContent(c, 11, 1, 1); },
              "tblCont -11\ntblContDe -111 -112 -113 -114\ntblCont ~12 Num=1", "DELETE ON tblCont"},
             {"frmEditor.munDelBillSubCont_Click", RolledBack, [](Connection* c) { return deleteSubContent(c, 11, 2); },
              "tblContDe -113\ntblContDe ~114 SubNum=2", "UPDATE ON tblContDe"},
             {"frmEditor.munDelBillContDe_Click", LeftOpen,
              [](Connection* c) { return deleteRation(c, 112, RationRow::Removed); }, "tblContDe -112",
              "DELETE ON tblContDe"},
             {"frmEditor.munDelBillContDe_Click", LeftOpen,
              [](Connection* c) { return deleteRation(c, 113, RationRow::Cleared); },
              "tblContDe ~113 Deh= Name= Unit= DekID= LastUpdate=now", "UPDATE ON tblContDe"},
             {"", Statement, [&](Connection* c) { return updateRation(c, 111, ration); },
              "tblContDe ~111 Deh=B2 Name=新 Unit=m DekID=GD LastUpdate=now", "UPDATE ON tblContDe"},
             {"", Statement, [&](Connection* c) { return insertRation(c, 12, 3, u"细"_s, ration) == 725; },
              "tblContDe +725 ContID=12 SubNum=3 SubCont=细 Deh=B2 Name=新 Unit=m DekID=GD Version=1 LastUpdate=now "
              "IsDel=0",
              "INSERT ON tblContDe"}})
        expectWriting(writing);

    const DetailedLibrary library;
    EXPECT_EQ(GetSubContID(library.connection(), 12, 1), 121);
    EXPECT_EQ(GetSubContID(library.connection(), 12, 4), 0);
}
