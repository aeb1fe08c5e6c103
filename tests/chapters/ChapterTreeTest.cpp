#include "editor/chapters/ChapterTree.h"

#include <gtest/gtest.h>

#include "app/base/Error.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

void addChapters(const TemporaryLibrary& library, const QString& codes) {
    for (const QString& code : codes.split(QLatin1Char(' ')))
        library.run(sql("INSERT INTO tblSYB(code,name) VALUES('", code, "','n')"));
}

/// The nodes in the order of the tree: two blanks a level, the code, "+" when open, "*" when selected.
QString shown(const KeyedTree& tree) {
    QStringList lines;
    for (const KeyedTree::Node* node : tree.nodes()) {
        const QString code = KeyedTree::tag(node);
        EXPECT_EQ(KeyedTree::key(node), QLatin1Char('K') + code);
        EXPECT_EQ(node->text(0), code + QLatin1String(" n"));
        QString line;
        for (const KeyedTree::Node* parent = node->parent(); parent; parent = parent->parent())
            line += QLatin1Char('.');
        lines << line + code + (node->isExpanded() ? QLatin1String("+") : QLatin1String("")) +
                     (tree.selectedNode() == node ? QLatin1String("*") : QLatin1String(""));
    }
    return lines.join(QLatin1Char(' '));
}

QString built(const char* codes) {
    const TemporaryLibrary library;
    addChapters(library, QString::fromLatin1(codes));
    KeyedTree tree;
    buildChapterTree(library.connection(), &tree);
    return shown(tree);
}

}  // namespace

TEST(ChapterTree, ShowsChaptersBelowTheirParents) {
    EXPECT_EQ(built("02 010101 01 0101"), QStringLiteral("01+* .0101 ..010101 02+"));
    // Orphans are left out and stop nothing.
    EXPECT_EQ(built("0301 01 0101 020101 0201"), QStringLiteral("01+* .0101"));
    EXPECT_EQ(built("0301"), QString());
}

TEST(ChapterTree, ACodeOfAnotherLengthEndsTheBuild) {
    EXPECT_EQ(built("01 0101 1"), QString());
    EXPECT_EQ(built("01 02 0101 100"), QStringLiteral("01 02"));
    EXPECT_EQ(built("01 0101 010101 01010101"), QStringLiteral("01 .0101 ..010101"));
}

TEST(ChapterTree, IgnoresRowsWithoutCodeAndReadsMissingNames) {
    const TemporaryLibrary library;
    library.run("INSERT INTO tblSYB(code,name) VALUES(NULL,'x')");
    library.run("INSERT INTO tblSYB(code,name) VALUES('','x')");
    KeyedTree tree;
    buildChapterTree(library.connection(), &tree);
    EXPECT_EQ(tree.nodeCount(), 0);
    EXPECT_EQ(tree.selectedNode(), nullptr);
    addChapters(library, QStringLiteral("01 02"));
    buildChapterTree(library.connection(), &tree);
    EXPECT_EQ(shown(tree), QStringLiteral("01+* 02+"));
    // Built anew, not added to.
    buildChapterTree(library.connection(), &tree);
    EXPECT_EQ(shown(tree), QStringLiteral("01+* 02+"));
    EXPECT_EQ(GetTvwNode(&tree, QStringLiteral("K03")), nullptr);
    EXPECT_EQ(GetTvwNode(&tree, QStringLiteral("K02")), tree.firstNode()->treeWidget()->topLevelItem(1));
}

TEST(ChapterTree, ADuplicateCodeKeepsWhatWasAdded) {
    const TemporaryLibrary library;
    addChapters(library, QStringLiteral("01 02 0101 0101 0102 010101"));
    KeyedTree tree;
    EXPECT_THROW(buildChapterTree(library.connection(), &tree), Error);
    EXPECT_EQ(shown(tree), QStringLiteral("01 .0101 02"));
}
