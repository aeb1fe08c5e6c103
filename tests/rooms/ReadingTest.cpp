#include <gtest/gtest.h>

#include "administration/RationFiles.h"
#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "editor/RationLibraries.h"
#include "editor/bills/BillData.h"
#include "editor/common/Codes.h"
#include "editor/common/CopyName.h"
#include "editor/contents/RationLookup.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

TEST(GetCodePreNext, StepsThePrefixAsOneNumber) {
    for (const auto& [code, forward, length, stepped] : {std::tuple("00", false, 2, "00"),
                                                         {"0200", false, 4, "0199"},
                                                         {"010305001", true, 6, "010306001"},
                                                         {"0a", true, 2, "01"},
                                                         {"010203", true, 8, ""},
                                                         {"010", true, 3, ""}})
        EXPECT_EQ(GetCodePreNext(QString::fromLatin1(code), forward, length), QString::fromLatin1(stepped)) << code;
}

// Near misses take nothing; a gap in the numbering is filled.
TEST(CopyName, IsTheFirstCandidateThatNoRowHas) {
    const TemporaryLibrary library;
    library.run(
        "INSERT INTO tblBillSpec(BillID,Name) VALUES(1,NULL),(1,x'61'),(1,'特征'),(2,'特征(1)'),(1,'特征(3)'),"
        "(1,'特征(02)'),(1,'特征 (2)'),(1,'A'),(1,'x%')");
    for (const auto& [base, name] :
         {std::pair(u"特征"_s, u"特征(2)"_s), {u"a"_s, u"a"_s}, {u"x%"_s, u"x%(1)"_s}, {u"  b "_s, u"b"_s}})
        EXPECT_EQ(GetCopyName(library.connection(), base, "tblBillSpec", "Name"), name);
}

TEST(BillLists, AreThoseOfAChapterOrOfPartOfACode) {
    const TemporaryLibrary library;
    for (const QString& code : {u"020101001"_s, u"010101002"_s, u"010101001"_s, u"0101010011"_s, u"01010'001"_s})
        library.run(sql("INSERT INTO tblBill(Code) VALUES('", Doubled{code}, "')"));
    const auto codes = [](Recordset rows) {
        QStringList found;
        for (; !rows.EndOfFile(); rows.MoveNext())
            found << rows.text("Code");
        return found.join(u' ');
    };
    EXPECT_EQ(codes(billsOfChapter(library.connection(), u"01010199"_s)), u"010101001 010101002"_s);
    EXPECT_EQ(codes(billsOfChapter(library.connection(), u"0101"_s)), QString());
    EXPECT_EQ(codes(billsWithCode(library.connection(), u"0'0"_s)), u"01010'001"_s);
    EXPECT_EQ(codes(billsWithCode(library.connection(), u"1_1001"_s)), u"010101001 0101010011 020101001"_s);
}

// Ids are compared exactly; of several the first one counts.
TEST(RationLookup, FindsLibrariesByTheirId) {
    const QString system = appPath + u"tessel.dat"_s;
    writeSystemDatabase(system, {});
    EXPECT_EQ(GetDekComboList(), QString());
    writeSystemDatabase(system, {{u"B1"_s, u"乙"_s, {}, {}, {}, u"a.bdb"_s},
                                 {u"A1"_s, u"丙"_s, u"湖南.db"_s, u"湖南省"_s, {}, u"a.bdb"_s},
                                 {u"A1"_s, u"丁"_s, u"second.db"_s, u"second"_s, {}, u"c.bdb"_s}});
    EXPECT_EQ(GetDekComboList(), u"#A1;丁|#A1;丙|#B1;乙"_s);
    EXPECT_EQ(GetDefDekID(u"a.bdb"_s) + GetDefDekID(u"A.bdb"_s), u"B1"_s);
    EXPECT_EQ(GetDekFilePath(u"A1"_s), joinPath(joinPath(dataPath, u"湖南省"_s), u"湖南.db"_s));
    EXPECT_EQ(GetDekFilePath(u"a1"_s), QString());
}
