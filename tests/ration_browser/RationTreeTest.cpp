#include "ration_browser/RationTree.h"

#include <gtest/gtest.h>

#include "app/base/Error.h"
#include "app/controls/KeyedTree.h"
#include "storage/Connection.h"
#include "tests/ration_browser/RationFiles.h"

namespace {

/// "parent key > key text [tag]", one a node.
QStringList described(const KeyedTree& tree) {
    QStringList nodes;
    for (const auto* node : tree.nodes())
        nodes << (node->parent() ? KeyedTree::key(node->parent()) : QString()) + QLatin1String(" > ") +
                     KeyedTree::key(node) + QLatin1Char(' ') + node->text(0) + QLatin1String(" [") +
                     KeyedTree::tag(node) + QLatin1Char(']');
    return nodes;
}

void load(KeyedTree& tree, const QString& path) {
    Connection library;
    library.Open(path, QString(), Connection::readWriteCreate);
    addRationRoot(&tree);
    Recordset rows = library.OpenRecordset("SELECT * FROM DeSYB ORDER BY CH,ZH,JH,XH,MH;");
    addRationChapters(&tree, rows);
}

}  // namespace

TEST(RationTree, TheFirstZeroDecidesTheLevel) {
    const RationFiles files;
    files.makeChapters("a.db", {"1,1,0,0,0,0,'章',0", "2,1,0,7,0,0,'跳级',0", "3,1,1,0,0,0,'节',0",
                                "4,1,1,1,0,0,'小节',0", "5,1,1,1,1,0,'项',0", "6,1,1,1,1,1,'子项',0",
                                "7,1,2,0,0,0,'节二',0", "-8,2,NULL,NULL,NULL,NULL,NULL,0"});
    KeyedTree tree;
    load(tree, files.path("a.db"));
    EXPECT_EQ(described(tree).join(QLatin1Char('\n')), QStringLiteral(" > Root 目录 []\n"
                                                                      "Root > K1 1.章 [1.0.0.0.0]\n"
                                                                      "Root > K2 1.跳级 [1.0.7.0.0]\n"
                                                                      "K2 > K3 1.节 [1.1.0.0.0]\n"
                                                                      "K3 > K4 1.小节 [1.1.1.0.0]\n"
                                                                      "K4 > K5 1.项 [1.1.1.1.0]\n"
                                                                      "K5 > K6 1.子项 [1.1.1.1.1]\n"
                                                                      "K2 > K7 2.节二 [1.2.0.0.0]\n"
                                                                      "Root > K-8 2. [2.0.0.0.0]"));
    EXPECT_EQ(chapterOfKey(QStringLiteral("K12")), 12);
    EXPECT_EQ(chapterOfKey(QStringLiteral("K-8")), -8);
    EXPECT_EQ(chapterOfKey(QStringLiteral("Root")), 0);
}

TEST(RationTree, ChaptersWithoutParentHangUnderTheNearestLevelThereIs) {
    const RationFiles files;
    files.makeChapters("a.db",
                       {"1,1,1,1,1,1,'子项',0", "2,2,0,0,0,0,'章',0", "3,2,1,1,1,0,'项',0", "4,2,1,1,1,1,'子项',0"});
    KeyedTree tree;
    load(tree, files.path("a.db"));
    EXPECT_EQ(described(tree).join(QLatin1Char('\n')), QStringLiteral(" > Root 目录 []\n"
                                                                      "Root > K1 1.子项 [1.1.1.1.1]\n"
                                                                      "Root > K2 2.章 [2.0.0.0.0]\n"
                                                                      "K2 > K3 1.项 [2.1.1.1.0]\n"
                                                                      "K3 > K4 1.子项 [2.1.1.1.1]"));
}

TEST(RationTree, AChapterIdThatOccursTwiceEndsTheTreeThere) {
    const RationFiles files;
    files.makeChapters("a.db", {"1,1,0,0,0,0,'章',0", "1,2,0,0,0,0,'又',0", "3,3,0,0,0,0,'后',0"});
    KeyedTree tree;
    EXPECT_THROW(load(tree, files.path("a.db")), Error);
    EXPECT_EQ(tree.nodeCount(), 2);
}
