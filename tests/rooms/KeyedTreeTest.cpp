#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include "app/controls/KeyedTree.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

class KeyedTreeTest : public ::testing::Test {
protected:
    KeyedTreeTest() {
        for (const QString& code : u"01 02 03 0101 0102 010101 010102 0201"_s.split(u' '))
            tree.addNode(node(code.chopped(2)), u'K' + code, code + u" 土石方"_s, code);
        const auto tell = [this](const char* what) { return [this, what] { told << QLatin1String(what); }; };
        QObject::connect(&tree, &KeyedTree::nodeClick, [this](const auto* node) { told << KeyedTree::tag(node); });
        QObject::connect(&tree, &KeyedTree::contextMenuWanted, tell("menu"));
        QObject::connect(&tree, &KeyedTree::renameWanted, tell("rename"));
        QObject::connect(&tree, &KeyedTree::deleteWanted, tell("delete"));
        tree.resize(300, 300);
        tree.show();
        EXPECT_TRUE(makeActive(&tree));
        tree.setAllExpanded(true);
    }

    KeyedTree::Node* node(const QString& code) const { return tree.node(u'K' + code); }
    QPoint at(const QString& code) const { return tree.visualItemRect(node(code)).center(); }
    void click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(tree.viewport(), button, modifiers, at);
    }
    /// What was told since the last call, and what is selected.
    QString happened() { return std::exchange(told, {}).join(u' ') + u" > "_s + KeyedTree::tag(tree.selectedNode()); }

    KeyedTree tree;
    QStringList told;
};

}  // namespace

TEST_F(KeyedTreeTest, AClickIsToldEachTimeAndOnlyByTheLeftButtonOnTheNode) {
    click(at(u"0101"_s));
    click(at(u"0101"_s));
    EXPECT_EQ(happened(), u"0101 0101 > 0101"_s);
    click(at(u"0101"_s), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_TRUE(happened().endsWith(u"> 0101"_s));
    click(at(u"02"_s), Qt::RightButton);
    click(at(u"03"_s), Qt::MiddleButton);
    click(QPoint(150, tree.viewport()->height() - 4));
    EXPECT_EQ(happened(), u"menu > 0101"_s);
    // A node that closes over the selected one is clicked by that.
    const QRect rect = tree.visualItemRect(node(u"01"_s));
    click(QPoint(rect.left() - 8, rect.center().y()));
    EXPECT_FALSE(node(u"01"_s)->isExpanded());
    EXPECT_EQ(happened(), u"01 > 01"_s);

    // A press tells at once; dragging tells where it began.
    tree.setAllExpanded(true);
    const QPoint to = at(u"0102"_s);
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, at(u"02"_s));
    EXPECT_EQ(happened(), u"02 > 02"_s);
    QTest::mouseMove(tree.viewport(), to);
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(happened(), u" > 02"_s);
    // So does a double click whose first press did not arrive.
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(happened(), u"0102 > 0102"_s);
}

TEST_F(KeyedTreeTest, KeysTellWhatTheyAskForOnceAndTheProgramTellsNothing) {
    tree.selectNode(node(u"02"_s));
    // Asked for once, however long the key is held.
    for (const int key : {Qt::Key_F2, Qt::Key_Delete})
        for (const bool repeats : {false, true}) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, repeats);
            QApplication::sendEvent(&tree, &event);
        }
    EXPECT_EQ(happened(), u"rename delete > 02"_s);
    // Nothing stays selected until the user acts, not even when the focus comes.
    tree.selectNode(nullptr);
    tree.clearFocus();
    tree.setFocus(Qt::TabFocusReason);
    tree.removeNode(node(u"0102"_s));
    EXPECT_EQ(happened(), u" > "_s);
    EXPECT_FALSE(tree.currentIndex().isValid());
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(happened(), u"01 > 01"_s);
}
