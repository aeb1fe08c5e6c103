#include "editor/contents/ContentData.h"

#include <gtest/gtest.h>

#include "tests/support/ModalAnswers.h"
#include "tests/support/Writing.h"

using namespace Qt::StringLiterals;

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
