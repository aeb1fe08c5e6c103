#include "administration/RationFiles.h"
#include "app/base/Definitions.h"
#include "app/base/Guarded.h"
#include "editor/RationLibraries.h"
#include "editor/bills/BillData.h"
#include "editor/chapters/ChapterTree.h"
#include "editor/common/Codes.h"
#include "editor/common/CopyName.h"
#include "editor/contents/ContentOutline.h"
#include "editor/contents/RationLookup.h"
#include "ration_browser/BrowserPlacement.h"
#include "storage/Lookups.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

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

TEST(BrowserPlacement, OnlyAnUnreachableTitleBarIsBroughtBack) {
    const QList<QRect> screens{{0, 0, 1366, 728}, {1366, 0, 1920, 1040}};
    const QRect onSecond(2000, 100, 900, 600);
    for (const QRect& reachable : {QRect(-500, 600, 900, 600), onSecond, QRect(1000, 100, 1500, 600)})
        EXPECT_EQ(broughtBack(reachable, screens), reachable);
    for (const QRect& lost : {QRect(4000, 100, 900, 600), QRect(0, -200, 900, 600), QRect(-880, 0, 900, 600),
                              QRect(0, 750, 900, 600), QRect(-100'000, -100'000, 100'000, 100'000)})
        EXPECT_TRUE(screens.first().contains(broughtBack(lost, screens))) << lost.x() << ' ' << lost.y();
    EXPECT_EQ(broughtBack(onSecond, {screens.first()}).size(), onSecond.size());
    EXPECT_EQ(broughtBack(onSecond, {}), onSecond);
}

// Above, below or beside the row, whichever leaves the window largest, and never over it.
TEST(BrowserPlacement, StandsBesideTheRowThatItServes) {
    for (const auto& [row, placed] : {std::pair(QRect(500, 600, 900, 28), QRect(510, 88, 880, 476)),
                                      {QRect(500, 80, 900, 28), QRect(510, 174, 880, 596)},
                                      {QRect(100, 400, 500, 28), QRect(608, 114, 850, 600)},
                                      {QRect(800, 490, 600, 28), QRect(108, 170, 684, 600)},
                                      {QRect(100, 400, 1366, 28), QRect()}})
        EXPECT_EQ(besideRow(row, {880, 600}, {640, 360}, {100, 50, 1366, 728}), placed) << row.x() << ' ' << row.y();
}

// A dot a level, the code, "+" when open, "*" when selected. Orphans are left out; a code of another length or a
// duplicate ends the tree, and then nothing is opened or selected.
TEST(ChapterTree, HangsChaptersBelowTheirParents) {
    for (const auto& [codes, expected] : {std::pair(u"02 010101 01 0101"_s, u"01+* .0101 ..010101 02+"_s),
                                          {u"0301 01 0101 020101 0201"_s, u"01+* .0101"_s},
                                          {u"01 0101 1"_s, u""_s},
                                          {u"01 02 0101 100"_s, u"01 02"_s},
                                          {u"01 0101 010101 01010101"_s, u"01 .0101 ..010101"_s},
                                          {u"01 02 0101 0101 0102 010101"_s, u"01 .0101 02"_s}}) {
        const TemporaryLibrary library;
        library.run("INSERT INTO tblSYB(code,name) VALUES(NULL,'x'),('','x')");
        for (const QString& code : codes.split(u' '))
            library.run(sql("INSERT INTO tblSYB(code,name) VALUES('", code, "','n')"));
        KeyedTree tree;
        for (int time = 0; time < 2; ++time)
            EXPECT_EQ(succeeds([&] { buildChapterTree(library.connection(), &tree); }),
                      !codes.contains(u" 0101 0101 "_s));
        QStringList lines;
        for (const KeyedTree::Node* node : tree.nodes()) {
            QString line = node->text(0).remove(u" n"_s);
            for (const KeyedTree::Node* parent = node->parent(); parent; parent = parent->parent())
                line.prepend(u'.');
            lines << line + (node->isExpanded() ? u"+"_s : u""_s) + (tree.selectedNode() == node ? u"*"_s : u""_s);
        }
        EXPECT_EQ(lines.join(u' '), expected);
    }
}

// By passes and by look-ups. Errors are recorded, and the rest is shown.
TEST(ContentOutline, HangsRationsBelowTheContentsOfABillAndProfession) {
    const TemporaryLibrary library;
    library.run(
        "INSERT INTO tblCont(ID,Num,Cont,Prof,BillID) VALUES(1,2,'乙','0102',7),(2,1,'甲','01',7),(3,3,'丙','02',7),"
        "(4,1,'别','01',8),(5,4,NULL,'101',7)");
    library.run(
        "INSERT INTO tblContDe(ID,ContID,SubNum,SubCont,Deh,Name,Unit,DekID) VALUES(1,1,2,'后',NULL,'空','m','GD'),"
        "(2,1,1,'先','a1-2','挖','m3','GD'),(3,1,1,'先','A1-1','填','m','HN'),(4,1,1,'先','','空','m','GD'),"
        "(5,2,'o''clock','钟','X','','',''),(6,4,1,'别','Z','','','')");
    const auto outline = [&] {
        QStringList lines;
        for (const OutlineRow& row : LoadBillContent(library.connection(), 7, u"01"_s))
            lines << QString(row.level, u'-') +
                         QStringList{row.contID, row.contDeID, row.contNum, row.subNum, row.cont, row.unit, row.dekName}
                             .join(u'|');
        return lines.join(u' ');
    };
    ModalAnswers answers;
    answers.closeAnything();
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(outline(),
                  u"2||1||甲|| -2|||o'clock|钟|| 1||2||乙|| -1|||1|先|| --1|2||1|[A1-2] 挖|m3|GD "
                  "--1|3||1|[A1-1] 填|m|HN -1|||2|后|| 5||4||||"_s);
        EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.LoadContentDe"_s});
        while (library.connection()->lookups().fillSlice()) {
        }
    }
    library.run("DROP TABLE tblContDe");
    EXPECT_EQ(outline(), u"2||1||甲|| 1||2||乙|| 5||4||||"_s);
    EXPECT_TRUE(LoadBillContent(nullptr, 7, u"01"_s).empty());
    EXPECT_EQ(answers.takePlaces(), QStringList(3, u"frmEditor.LoadSubContent"_s) << u"frmEditor.LoadBillContent"_s);
}
