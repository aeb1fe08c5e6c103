#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "editor/RationLibraries.h"
#include "editor/bills/BillData.h"
#include "editor/chapters/ChapterTree.h"
#include "editor/common/Codes.h"
#include "editor/common/CopyName.h"
#include "editor/contents/RationLookup.h"
#include "ration_browser/BrowserPlacement.h"
#include "ration_browser/RationTree.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/RationLibraries.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

QString codes(Recordset rows) {
    QStringList found;
    for (; !rows.EndOfFile(); rows.MoveNext())
        found << rows.text("Code");
    return found.join(u' ');
}

}  // namespace

TEST(GetCodePreNext, StepsThePrefixAsOneNumber) {
    for (const auto& [code, forward, length, stepped] : {std::tuple("0105", true, 4, "0106"),
                                                         {"0105", false, 4, "0104"},
                                                         {"00", false, 2, "00"},
                                                         {"99", true, 2, "100"},
                                                         {"0200", false, 4, "0199"},
                                                         {"019999", true, 6, "020000"},
                                                         {"010305001", true, 6, "010306001"},
                                                         {"01", true, 4, "0002"},
                                                         {"0a", true, 2, "01"},
                                                         {"010203", true, 8, ""},
                                                         {"010", true, 3, ""},
                                                         {"", true, 0, ""},
                                                         {"01", true, -2, ""},
                                                         {"010305999", true, 9, "010306000"}})
        EXPECT_EQ(GetCodePreNext(QString::fromLatin1(code), forward, length), QString::fromLatin1(stepped)) << code;
}

// A gap in the numbering is filled before it is continued; near misses take nothing.
TEST(CopyName, IsTheFirstCandidateThatNoRowHas) {
    const TemporaryLibrary library;
    const auto copyName = [&](const QString& name) {
        return GetCopyName(library.connection(), name, "tblBillSpec", "Name");
    };
    library.run(
        "INSERT INTO tblBillSpec(BillID,Name) VALUES(1,NULL),(1,x'61'),(1,7),(1,'特征'),(1,'特征(1)'),(1,'特征(3)'),"
        "(1,'特征(02)'),(1,'特征 (2)'),(2,'A'),(2,'a(1)(1)'),(2,'x%'),(2,'x_y'),(2,'('),(2,'')");
    for (const auto& [base, name] : {std::pair(u"特征"_s, u"特征(2)"_s),
                                     {u"a"_s, u"a"_s},
                                     {u"A"_s, u"A(1)"_s},
                                     {u"a(1)"_s, u"a(1)"_s},
                                     {u"x%"_s, u"x%(1)"_s},
                                     {u"x_y"_s, u"x_y(1)"_s},
                                     {u"xzy"_s, u"xzy"_s},
                                     {u"("_s, u"((1)"_s},
                                     {u""_s, u"(1)"_s},
                                     {u"7"_s, u"7(1)"_s},
                                     {u"  b "_s, u"b"_s},
                                     {u"\u3000b"_s, u"\u3000b"_s}})
        EXPECT_EQ(copyName(base), name);
    library.run("INSERT INTO tblBillSpec(BillID,Name) VALUES(1,'特征(2)'),(1,'特征(4)')");
    EXPECT_EQ(copyName(u"特征"_s), u"特征(5)"_s);
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(copyName(u"特'征"_s) + GetCopyName(nullptr, u"特征"_s, "tblBillSpec", "Name"), QString());
    EXPECT_EQ(answers.takePlaces(), QStringList(2, u"frmEditor.GetCopyName"_s));
}

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
        for (int time = 0; time < 2; ++time) {
            if (codes.contains(u" 0101 0101 "_s))
                EXPECT_THROW(buildChapterTree(library.connection(), &tree), Error);
            else
                EXPECT_NO_THROW(buildChapterTree(library.connection(), &tree));
        }
        QStringList lines;
        for (const KeyedTree::Node* node : tree.nodes()) {
            EXPECT_EQ(node->text(0), KeyedTree::tag(node) + u" n"_s);
            QString line = KeyedTree::tag(node);
            for (const KeyedTree::Node* parent = node->parent(); parent; parent = parent->parent())
                line.prepend(u'.');
            lines << line + (node->isExpanded() ? u"+"_s : u""_s) + (tree.selectedNode() == node ? u"*"_s : u""_s);
        }
        EXPECT_EQ(lines.join(u' '), expected);
    }
}

// The first zero decides the level; without its parent a chapter hangs under the nearest level there is; a chapter id
// that occurs twice ends the tree there.
TEST(RationTree, HangsChaptersByTheirNumbers) {
    struct Case {
        SqlText chapters;  ///< sybID, CH, ZH, JH, XH, MH, BTM, isdel
        QString nodes;     ///< "parent key>key text tag", one a node
        bool fails = false;
    } const cases[] = {
        {"(1,1,0,0,0,0,'章',0),(2,1,0,7,0,0,'跳级',0),(3,1,1,0,0,0,'节',0),(4,1,1,1,0,0,'小节',0),"
         "(5,1,1,1,1,0,'项',0),(6,1,1,1,1,1,'子项',0),(7,1,2,0,0,0,'节二',0),(-8,2,NULL,NULL,NULL,NULL,NULL,0)",
         u">Root 目录 |Root>K1 1.章 1.0.0.0.0|Root>K2 1.跳级 1.0.7.0.0|K2>K3 1.节 1.1.0.0.0|K3>K4 1.小节 1.1.1.0.0|"
         "K4>K5 1.项 1.1.1.1.0|K5>K6 1.子项 1.1.1.1.1|K2>K7 2.节二 1.2.0.0.0|Root>K-8 2. 2.0.0.0.0"_s},
        {"(1,1,1,1,1,1,'子项',0),(2,2,0,0,0,0,'章',0),(3,2,1,1,1,0,'项',0),(4,2,1,1,1,1,'子项',0)",
         u">Root 目录 |Root>K1 1.子项 1.1.1.1.1|Root>K2 2.章 2.0.0.0.0|K2>K3 1.项 2.1.1.1.0|K3>K4 1.子项 2.1.1.1.1"_s},
        {"(1,1,0,0,0,0,'章',0),(1,2,0,0,0,0,'又',0),(3,3,0,0,0,0,'后',0)", u">Root 目录 |Root>K1 1.章 1.0.0.0.0"_s,
         true}};
    for (const Case& c : cases) {
        const TemporaryLibrary library;
        KeyedTree tree;
        addRationRoot(&tree);
        Recordset rows =
            library.connection()->OpenRecordset(sql("WITH DeSYB(sybID,CH,ZH,JH,XH,MH,BTM,isdel) AS (VALUES ",
                                                    c.chapters, ") SELECT * FROM DeSYB ORDER BY CH,ZH,JH,XH,MH;"));
        if (c.fails)
            EXPECT_THROW(addRationChapters(&tree, rows), Error);
        else
            addRationChapters(&tree, rows);
        QStringList nodes;
        for (const auto* node : tree.nodes())
            nodes << (node->parent() ? KeyedTree::key(node->parent()) : QString()) + u'>' + KeyedTree::key(node) +
                         u' ' + node->text(0) + u' ' + KeyedTree::tag(node);
        EXPECT_EQ(nodes.join(u'|'), c.nodes);
    }
    EXPECT_EQ(chapterOfKey(u"K12"_s), 12);
    EXPECT_EQ(chapterOfKey(u"K-8"_s), -8);
    EXPECT_EQ(chapterOfKey(u"Root"_s), 0);
}

TEST(RationLookup, ThePathComesFromRegionAndFileName) {
    const RationLibraries libraries;
    libraries.list({{"HN01", "", "湖南.db", "", "湖南省"}, {"HN01", "", "second.db", "", "second"}});
    EXPECT_EQ(GetDekFilePath(u"HN01"_s), joinPath(joinPath(dataPath, u"湖南省"_s), u"湖南.db"_s));
    EXPECT_EQ(GetDekFilePath(u"hn01"_s), QString()) << "ids are compared exactly";

    QFile::remove(RationLibraries::systemDatabasePath());
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(GetDekFilePath(u"HN01"_s), QString());
    EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.GetDekFilePath"_s});
    EXPECT_FALSE(QFile::exists(RationLibraries::systemDatabasePath()));
}

TEST(RationLookup, FindsTheFirstRationOfThatCodeIgnoringCase) {
    const RationLibraries libraries;
    const QString path =
        libraries.make("a.db", {"1,1,'A1-1','人工挖土方','100m3'", "2,1,'a1-1','second',''", "3,1,' A2','blank',NULL"});
    const QString damaged = libraries.makeDamaged("text.db");
    ModalAnswers answers;
    answers.closeAnything();
    // What is wrong with the library or the code is an error that is shown, not a quiet miss.
    const QString shown = u"untouched|too frmEditor.GetDeData"_s, missed = u"untouched|too "_s;
    for (const auto& [code, file, outcome] : {std::tuple("a1-1", path, u"人工挖土方|100m3 "_s),
                                              {" a2", path, u"blank| "_s},
                                              {"A2", path, missed},
                                              {"A1-", path, missed},
                                              {"", path, missed},
                                              {"x' OR '1'='1", path, shown},
                                              {"A1-1", damaged, shown},
                                              {"A1-1", dataPath, shown}}) {
        QString name = u"untouched"_s, unit = u"too"_s;
        EXPECT_EQ(GetDeData(QString::fromLatin1(code), file, name, unit), !outcome.startsWith(u"untouched"_s)) << code;
        EXPECT_EQ(name + u'|' + unit + u' ' + answers.takePlaces().join(u' '), outcome) << code;
    }
    EXPECT_EQ(QDir(QFileInfo(path).path()).entryList(QDir::Files).size(), 2) << "no side files";
}

TEST(RationLibraries, AreListedByNameAndTheFirstOfTheFileNameIsTheDefault) {
    const RationLibraries files;
    files.list({});
    EXPECT_EQ(GetDekComboList(), QString());
    files.list(
        {{"B1", "乙", "", "", "", "a.bdb"}, {"A1", "丙", "", "", "", "a.bdb"}, {"C1", "丁", "", "", "", "c.bdb"}});
    EXPECT_EQ(GetDekComboList(), u"#C1;丁|#A1;丙|#B1;乙"_s);
    EXPECT_EQ(GetDefDekID(u"a.bdb"_s), u"B1"_s);
    EXPECT_EQ(GetDefDekID(u"A.bdb"_s), QString());
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(GetDefDekID(u"it's.bdb"_s), QString());
    EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.GetDefDekID"_s});
}

TEST(BrowserPlacement, OnlyAnUnreachableTitleBarIsBroughtBack) {
    const QList<QRect> screens{{0, 0, 1366, 728}, {1366, 0, 1920, 1040}};
    const QRect onSecond(2000, 100, 900, 600);
    for (const QRect& reachable : {QRect(-500, 600, 900, 600), onSecond, QRect(1000, 100, 1500, 600)})
        EXPECT_EQ(broughtBack(reachable, screens), reachable);
    for (const QRect& lost : {QRect(4000, 100, 900, 600), QRect(0, -200, 900, 600), QRect(-880, 0, 900, 600),
                              QRect(0, 750, 900, 600), QRect(-100'000, -100'000, 100'000, 100'000)}) {
        const QRect back = broughtBack(lost, screens);
        EXPECT_TRUE(screens.first().contains(back)) << lost.x() << ' ' << lost.y();
    }
    EXPECT_EQ(broughtBack(onSecond, {screens.first()}).size(), onSecond.size());
    EXPECT_EQ(broughtBack(onSecond, {}), onSecond);
}

// Above, below or beside the row, whichever leaves the window largest, and never over it.
TEST(BrowserPlacement, StandsBesideTheRowThatItServes) {
    const QRect screen(100, 50, 1366, 728);
    const QSize wanted(880, 600), smallest(640, 360);
    for (const QRect& row : {QRect(500, 600, 900, 28), QRect(500, 80, 900, 28), QRect(100, 400, 500, 28),
                             QRect(1000, 400, 460, 28), QRect(100, 740, 1366, 28)}) {
        const QRect placed = besideRow(row, wanted, smallest, screen);
        EXPECT_TRUE(screen.contains(placed)) << row.x() << ' ' << row.y();
        EXPECT_FALSE(placed.adjusted(-8, -38, 8, 8).intersects(row.adjusted(0, -28, 0, 28)));
        EXPECT_TRUE(placed.width() >= 640 && placed.height() >= 360 && placed.height() <= 600);
    }
    EXPECT_EQ(besideRow({500, 740, 800, 28}, wanted, smallest, screen).size(), wanted);
    EXPECT_TRUE(besideRow({100, 400, 1366, 28}, wanted, smallest, screen).isNull()) << "no room";
}
