#include <gtest/gtest.h>

#include <QStringList>

#include "app/base/Guarded.h"
#include "editor/chapters/ChapterTree.h"
#include "editor/contents/ContentOutline.h"
#include "storage/Lookups.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

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
