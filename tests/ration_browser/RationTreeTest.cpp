#include "ration_browser/RationTree.h"

#include <gtest/gtest.h>

#include "app/base/Error.h"
#include "app/controls/KeyedTree.h"
#include "storage/Connection.h"
#include "tests/support/RationLibraries.h"

namespace {

/// "parent key>key text tag", one a node, of the tree made of chapters.
std::string treeOf(const std::vector<SqlText>& chapters, bool fails = false) {
    const RationLibraries libraries;
    Connection library;
    library.Open(libraries.make("a.db", {}, chapters), QString(), Connection::readWriteCreate);
    KeyedTree tree;
    addRationRoot(&tree);
    Recordset rows = library.OpenRecordset("SELECT * FROM DeSYB ORDER BY CH,ZH,JH,XH,MH;");
    if (fails)
        EXPECT_THROW(addRationChapters(&tree, rows), Error);
    else
        addRationChapters(&tree, rows);
    QStringList nodes;
    for (const auto* node : tree.nodes())
        nodes << (node->parent() ? KeyedTree::key(node->parent()) : QString()) + QLatin1Char('>') +
                     KeyedTree::key(node) + QLatin1Char(' ') + node->text(0) + QLatin1Char(' ') + KeyedTree::tag(node);
    return nodes.join(QLatin1Char('\n')).toStdString();
}

}  // namespace

TEST(RationTree, TheFirstZeroDecidesTheLevel) {
    EXPECT_EQ(treeOf({"1,1,0,0,0,0,'章',0", "2,1,0,7,0,0,'跳级',0", "3,1,1,0,0,0,'节',0", "4,1,1,1,0,0,'小节',0",
                      "5,1,1,1,1,0,'项',0", "6,1,1,1,1,1,'子项',0", "7,1,2,0,0,0,'节二',0",
                      "-8,2,NULL,NULL,NULL,NULL,NULL,0"}),
              ">Root 目录 \nRoot>K1 1.章 1.0.0.0.0\nRoot>K2 1.跳级 1.0.7.0.0\nK2>K3 1.节 1.1.0.0.0\n"
              "K3>K4 1.小节 1.1.1.0.0\nK4>K5 1.项 1.1.1.1.0\nK5>K6 1.子项 1.1.1.1.1\nK2>K7 2.节二 1.2.0.0.0\n"
              "Root>K-8 2. 2.0.0.0.0");
    EXPECT_EQ(chapterOfKey(QStringLiteral("K12")), 12);
    EXPECT_EQ(chapterOfKey(QStringLiteral("K-8")), -8);
    EXPECT_EQ(chapterOfKey(QStringLiteral("Root")), 0);
}

TEST(RationTree, ChaptersWithoutParentHangUnderTheNearestLevelThereIs) {
    EXPECT_EQ(treeOf({"1,1,1,1,1,1,'子项',0", "2,2,0,0,0,0,'章',0", "3,2,1,1,1,0,'项',0", "4,2,1,1,1,1,'子项',0"}),
              ">Root 目录 \nRoot>K1 1.子项 1.1.1.1.1\nRoot>K2 2.章 2.0.0.0.0\nK2>K3 1.项 2.1.1.1.0\n"
              "K3>K4 1.子项 2.1.1.1.1");
}

TEST(RationTree, AChapterIdThatOccursTwiceEndsTheTreeThere) {
    EXPECT_EQ(treeOf({"1,1,0,0,0,0,'章',0", "1,2,0,0,0,0,'又',0", "3,3,0,0,0,0,'后',0"}, true),
              ">Root 目录 \nRoot>K1 1.章 1.0.0.0.0");
}
