#include "editor/chapters/ChapterTree.h"

#include <gtest/gtest.h>

#include "app/base/Error.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

/// The tree that the chapters `codes`, a word each, make: a dot a level, the code, "+" when open, "*" when selected.
QString built(const QString& codes, bool fails = false) {
    const TemporaryLibrary library;
    library.run("INSERT INTO tblSYB(code,name) VALUES(NULL,'x'),('','x')");
    for (const QString& code : codes.split(u' '))
        library.run(sql("INSERT INTO tblSYB(code,name) VALUES('", code, "','n')"));
    KeyedTree tree;
    // Each time it is built anew, not added to.
    for (int time = 0; time < 2; ++time)
        if (fails)
            EXPECT_THROW(buildChapterTree(library.connection(), &tree), Error);
        else
            EXPECT_NO_THROW(buildChapterTree(library.connection(), &tree));
    QStringList lines;
    for (const KeyedTree::Node* node : tree.nodes()) {
        const QString code = KeyedTree::tag(node);
        EXPECT_EQ(GetTvwNode(&tree, u'K' + code), node);
        EXPECT_EQ(node->text(0), code + u" n"_s);
        QString line = code;
        for (const KeyedTree::Node* parent = node->parent(); parent; parent = parent->parent())
            line.prepend(u'.');
        lines << line + (node->isExpanded() ? u"+"_s : u""_s) + (tree.selectedNode() == node ? u"*"_s : u""_s);
    }
    return lines.join(u' ');
}

}  // namespace

TEST(ChapterTree, HangsChaptersBelowTheirParentsAndLeavesOrphansOut) {
    EXPECT_EQ(built(u"02 010101 01 0101"_s), u"01+* .0101 ..010101 02+"_s);
    EXPECT_EQ(built(u"0301 01 0101 020101 0201"_s), u"01+* .0101"_s);
    EXPECT_EQ(built(u"0301"_s), QString());
}

TEST(ChapterTree, StopsAtACodeOfAnotherLengthOrADuplicateNeitherOpeningNorSelecting) {
    EXPECT_EQ(built(u"01 0101 1"_s), QString());
    EXPECT_EQ(built(u"01 02 0101 100"_s), u"01 02"_s);
    EXPECT_EQ(built(u"01 0101 010101 01010101"_s), u"01 .0101 ..010101"_s);
    EXPECT_EQ(built(u"01 02 0101 0101 0102 010101"_s, true), u"01 .0101 02"_s);
}
