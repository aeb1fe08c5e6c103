#include "ration_browser/RationTree.h"

#include <gtest/gtest.h>

#include "app/base/Error.h"
#include "app/controls/KeyedTree.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

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
