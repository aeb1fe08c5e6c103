#include "editor/chapters/ChapterTree.h"

#include <gtest/gtest.h>

#include "app/base/Error.h"
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
