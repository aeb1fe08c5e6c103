#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QPointer>
#include <QTest>

#include "app/base/Guarded.h"
#include "app/controls/CommandBars.h"
#include "app/controls/KeyedTree.h"

using namespace Qt::StringLiterals;

namespace {

class KeyedTreeTest : public ::testing::Test {
protected:
    KeyedTreeTest() {
        for (const QString& code : u"01 02 03 0101 0102 010101 010102 0201"_s.split(u' '))
            tree.addNode(node(code.chopped(2)), u'K' + code, code + u" 土石方"_s, code);
        QObject::connect(&tree, &KeyedTree::nodeClick, &tree,
                         [this](const QTreeWidgetItem* node) { clicks << KeyedTree::tag(node); });
        QObject::connect(&tree, &KeyedTree::contextMenuWanted, &tree, [this] { ++menus; });
        tree.resize(300, 300);
        tree.show();
        tree.activateWindow();
        (void)QTest::qWaitForWindowActive(&tree);
        tree.setAllExpanded(true);
    }

    KeyedTree::Node* node(const QString& code) const { return tree.node(u'K' + code); }
    QPoint at(const QString& code) const { return tree.visualItemRect(node(code)).center(); }
    void click(const QString& code, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(tree.viewport(), button, modifiers, at(code));
    }
    QString takeClicks() { return std::exchange(clicks, {}).join(u' '); }
    QString selected() const { return KeyedTree::tag(tree.selectedNode()); }

    KeyedTree tree;
    QStringList clicks;
    int menus = 0;
};

}  // namespace

TEST_F(KeyedTreeTest, AClickIsToldEachTimeAndOnlyByTheLeftButtonOnTheNode) {
    for (const QString& code : {u"0101"_s, u"0101"_s})
        click(code);
    EXPECT_EQ(takeClicks(), u"0101 0101"_s);
    click(u"02"_s, Qt::RightButton);
    EXPECT_EQ(menus, 1);
    click(u"02"_s, Qt::MiddleButton);
    const QRect rect = tree.visualItemRect(node(u"01"_s));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(rect.left() - 8, rect.center().y()));
    EXPECT_FALSE(node(u"01"_s)->isExpanded());
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(150, tree.viewport()->height() - 4));
    // The selected node cannot be seen any more, so the closed one above it is clicked.
    EXPECT_EQ(takeClicks(), u"01"_s);
    tree.setAllExpanded(true);
    click(u"0101"_s);
    click(u"0101"_s, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(selected(), u"0101"_s);
    takeClicks();

    // A press tells at once; dragging tells where it began.
    const QPoint to = at(u"0102"_s);
    QTest::mousePress(tree.viewport(), Qt::LeftButton, {}, at(u"02"_s));
    EXPECT_EQ(takeClicks(), u"02"_s);
    QMouseEvent move(QEvent::MouseMove, to, tree.viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(tree.viewport(), &move);
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(selected() + takeClicks(), u"02"_s);
    // So does a double click whose first press did not arrive.
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, to);
    EXPECT_EQ(selected() + takeClicks(), u"01020102"_s);
}

TEST_F(KeyedTreeTest, KeysThatMoveTheSelectionTellItAndTheProgramTellsNothing) {
    tree.selectNode(node(u"01"_s));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Down, Qt::Key_Home, Qt::Key_PageDown})
        QTest::keyClick(&tree, key);
    EXPECT_EQ(takeClicks(), u"0101 03 01 03"_s);
    QTest::keyClicks(&tree, u"02"_s);
    EXPECT_EQ(selected(), u"02"_s);
    takeClicks();
    // F2 and Delete are asked for once, however long the key is held.
    QString wanted;
    QObject::connect(&tree, &KeyedTree::renameWanted, &tree, [&] { wanted += u'r'; });
    QObject::connect(&tree, &KeyedTree::deleteWanted, &tree, [&] { wanted += u'd'; });
    for (const int key : {Qt::Key_F2, Qt::Key_Delete})
        for (const bool repeats : {false, true}) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, {}, repeats);
            QApplication::sendEvent(&tree, &event);
        }
    EXPECT_EQ(wanted, u"rd"_s);
    tree.setAllExpanded(false);
    tree.selectNode(node(u"010102"_s));
    EXPECT_TRUE(node(u"01"_s)->isExpanded() && node(u"0101"_s)->isExpanded());
    EXPECT_TRUE(tree.viewport()->rect().contains(at(u"010102"_s)));
    // Nothing stays selected until the user acts, not even when the focus comes.
    tree.selectNode(nullptr);
    tree.clearFocus();
    tree.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(!tree.selectedNode() && !tree.currentIndex().isValid());
    tree.removeNode(node(u"0102"_s));
    EXPECT_EQ(tree.selectedNode(), nullptr);
    EXPECT_EQ(takeClicks(), QString());
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(takeClicks(), u"01"_s);
}

TEST(CommandBarsTest, RunOnlyWhatIsThereAndEnabledOnceTypedTextIsCommitted) {
    QWidget window;
    CommandBars bars(&window, u"CommandBars1"_s);
    bool mayDelete = false;
    QString ran;
    bars.addActions({{100, u"添加目录"_s, {}, {}, {}, [&] { ran += u"add "_s; }},
                     {103, u"删除目录"_s, {}, {}, {}, [&] { ran += u"delete "_s; }, [&] { return mayDelete; }},
                     {106, u"左移目录"_s, {}, {}, {}}});
    QObject::connect(&bars, &CommandBars::unhandled, &bars, [&](int id) { ran += QString::number(id); });
    for (const int id : {100, 103, 106, 999})
        bars.execute(id);
    EXPECT_EQ(std::exchange(ran, {}), u"add 106"_s);
    EXPECT_FALSE(bars.isEnabled(999));
    // The rule counts as it is then, not as it was shown.
    bars.beforeExecute = [&] { return mayDelete = true; };
    bars.execute(103);
    bars.beforeExecute = [] { return false; };
    bars.execute(100);
    EXPECT_EQ(ran, u"delete "_s);
    // The end of a user's event shows the rules anew.
    for (const bool may : {false, true}) {
        guarded({"tests", "event"}, [&] { mayDelete = may; });
        QApplication::processEvents();
        EXPECT_EQ(bars.action(103)->isEnabled(), may);
    }
    // A command may destroy its window.
    QPointer<QWidget> closing = new QWidget;
    auto* own = new CommandBars(closing, u"own"_s);
    own->addActions({{1, u"关闭"_s, {}, {}, {}, [&] { delete closing; }}});
    own->execute(1);
    EXPECT_FALSE(closing);
}
