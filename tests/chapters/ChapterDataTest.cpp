#include "editor/chapters/ChapterData.h"

#include <gtest/gtest.h>

#include "tests/support/ModalAnswers.h"
#include "tests/support/Writing.h"

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
