#include "editor/chapters/ChapterPane.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

class ChapterPaneTest : public testing::Test {
protected:
    ChapterPaneTest() {
        pane.setConnection(library.connection());
        pane.chapterClicked = [this](const QString& tag) { clicks << tag; };
        pane.chapterDeleted = [this] { clicks << u"deleted"_s; };
        pane.resize(300, 400);
        pane.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&pane));
    }

    void build(const QString& codes) {
        for (const QString& code : codes.split(u' '))
            library.run(sql("INSERT INTO tblSYB(code,name) VALUES('", code, "','n')"));
        pane.CreateTvwSYB();
    }
    void click(const QString& code, Qt::MouseButton button = Qt::LeftButton) {
        KeyedTree::Node* node = tree.node(u'K' + code);
        ASSERT_NE(node, nullptr);
        tree.scrollToItem(node);
        QTest::mouseClick(tree.viewport(), button, {}, tree.visualItemRect(node).center());
    }
    /// Answers the next name dialog by typing `name` and Enter.
    void type(const QString& name) {
        answers.then([name](QWidget*) {
            QTest::keyClicks(QApplication::focusWidget(), name);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        });
    }
    QString selected() const { return KeyedTree::tag(tree.selectedNode()); }
    QString takeClicks() { return std::exchange(clicks, {}).join(u' '); }
    QString shown() const {
        QStringList texts;
        for (const KeyedTree::Node* node : tree.nodes())
            texts << node->text(0);
        return texts.join(u'|');
    }
    QString inFile() const { return library.rowsInFile("SELECT code||' '||name FROM tblSYB ORDER BY code").join(u'|'); }

    TemporaryLibrary library;
    ChapterPane pane;
    KeyedTree& tree = *pane.tvSYB();
    QStringList clicks;
    ModalAnswers answers;
};

}  // namespace

TEST_F(ChapterPaneTest, OnlyTheUserClicksNodes) {
    build(u"01 0101 010101 02"_s);
    EXPECT_EQ(selected(), u"01"_s);
    EXPECT_EQ(takeClicks(), QString());
    click(u"01"_s);
    click(u"02"_s);
    QTest::keyClick(&tree, Qt::Key_Up);
    EXPECT_EQ(takeClicks(), u"01 02 0101"_s);
    int menus = 0;
    QObject::connect(&pane, &ChapterPane::contextMenuWanted, &pane, [&] { ++menus; });
    click(u"02"_s, Qt::RightButton);
    EXPECT_EQ(menus, 1);
    EXPECT_EQ(selected(), u"0101"_s);
    pane.expandAll();
    EXPECT_EQ(takeClicks(), QString());
    // Closing takes the selection up to the root.
    click(u"010101"_s);
    pane.collapseAll();
    EXPECT_FALSE(tree.firstNode()->isExpanded());
    EXPECT_EQ(takeClicks(), u"010101 01"_s);
}

TEST_F(ChapterPaneTest, AddsTheFirstChaptersAndClicksThem) {
    pane.CreateTvwSYB();
    type(u" first "_s);
    pane.mnuAddContent_Click();
    type(u"sub"_s);
    pane.mnuAddSubContent_Click();
    type(u"deep"_s);
    pane.mnuAddSubContent_Click();
    EXPECT_EQ(answers.takeSeen().join(u' '), u"添加清单目录 添加清单子目录 添加清单子目录"_s);
    EXPECT_EQ(takeClicks(), u"01 0101 010101"_s);
    EXPECT_EQ(selected(), u"010101"_s);
    EXPECT_EQ(inFile(), u"01 first|0101 sub|010101 deep"_s);
    EXPECT_EQ(shown(), inFile());
}

TEST_F(ChapterPaneTest, ACodeThatOverflowsStandsBehindItsSiblingUntilTheTreeIsRebuilt) {
    build(u"01 0199 02 99"_s);
    click(u"0199"_s);
    type(u"a"_s);
    pane.mnuAddContent_Click();
    EXPECT_EQ(shown(), u"01 n|0199 n|0200 a|02 n|99 n"_s);
    pane.CreateTvwSYB();
    EXPECT_EQ(shown(), u"01 n|0199 n|02 n|0200 a|99 n"_s);
    type(u"b"_s);
    pane.mnuAddContent_Click();
    EXPECT_EQ(selected(), u"100"_s);
    // A rebuilt tree stops at it, and nothing is selected that a command could do something with.
    clicks.clear();
    pane.CreateTvwSYB();
    EXPECT_EQ(shown(), u"01 n|02 n|99 n"_s);
    EXPECT_EQ(selected(), QString());
    type(u"c"_s);
    answers.press(QMessageBox::Ok);
    pane.mnuAddContent_Click();
    EXPECT_TRUE(answers.seen().last().contains(u"frmEditor.mnuAddContent_Click"_s));
    const QString before = inFile();
    pane.mnuAddSubContent_Click();
    pane.mnuModifyContent_Click();
    pane.mnuDeleteContent_Click();
    pane.mnuMoveContentUp_Click();
    pane.mnuMoveContentDown_Click();
    EXPECT_EQ(takeClicks(), QString());
    EXPECT_EQ(inFile(), before);
}

TEST_F(ChapterPaneTest, CancellingAndFailuresChangeNothing) {
    build(u"01 02"_s);
    library.run("INSERT INTO tblSYB(code,name) VALUES('03','later')");
    const QString before = inFile();
    const auto cancel = [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); };
    answers.then(cancel).then([](QWidget* dialog) { dialog->close(); }).then(cancel).press(QMessageBox::No);
    pane.mnuAddContent_Click();
    pane.mnuAddContent_Click();
    pane.mnuModifyContent_Click();
    pane.mnuDeleteContent_Click();
    EXPECT_EQ(answers.takeSeen().last(), u"提示: 确实要删除 01 n 吗?"_s);
    // The code is taken by a row that came into the file since; the name has an apostrophe.
    for (const auto command : {&ChapterPane::mnuAddContent_Click, &ChapterPane::mnuAddSubContent_Click,
                               &ChapterPane::mnuModifyContent_Click}) {
        type(u"x'--"_s);
        answers.press(QMessageBox::Ok);
        (pane.*command)();
    }
    EXPECT_EQ(answers.seen()[1], u"提示: 目录编号已经存在!"_s);
    QApplication::processEvents();
    EXPECT_EQ(shown(), u"01 n|02 n"_s);
    EXPECT_EQ(takeClicks(), QString());
    EXPECT_EQ(inFile(), before);
}

TEST_F(ChapterPaneTest, TheCloseBoxWritesTheOldNameBack) {
    build(u"01 02"_s);
    library.run("UPDATE tblSYB SET lastUpdate='old'");
    answers.then([](QWidget* dialog) {
        QTest::keyClicks(QApplication::focusWidget(), u"typed"_s);
        dialog->close();
    });
    pane.mnuModifyContent_Click();
    EXPECT_EQ(answers.seen(), QStringList{u"修改清单目录"_s});
    EXPECT_EQ(library.rowsInFile("SELECT name,lastUpdate='old' FROM tblSYB").join(u' '), u"n|0 n|1"_s);
    EXPECT_EQ(takeClicks(), QString());
}

TEST_F(ChapterPaneTest, DeletingClicksTheNextThePreviousOrTheParent) {
    build(u"01 0101 0102 0103 010301 02"_s);
    for (const auto& [code, next] : {std::pair(u"0102"_s, u" 0103"_s),
                                     {u"0103"_s, u" 0101"_s},
                                     {u"0101"_s, u" 01"_s},
                                     {u"01"_s, u" 02"_s},
                                     {u"02"_s, QString()}}) {
        click(code);
        clicks.clear();
        answers.press(QMessageBox::Yes);
        pane.mnuDeleteContent_Click();
        EXPECT_EQ(takeClicks(), u"deleted"_s + next);
    }
    // What was below a deleted chapter stays in the file.
    EXPECT_EQ(inFile(), u"010301 n"_s);
}

TEST_F(ChapterPaneTest, AMovedChapterTakesAllBelowAlongAndIsClickedAtItsNewPlace) {
    build(u"01 0101 0102 010201 0103 010301"_s);
    library.run("INSERT INTO tblBill(code) VALUES('010301001')");
    click(u"0103"_s);
    clicks.clear();
    pane.mnuMoveContentUp_Click();
    EXPECT_EQ(selected(), u"0102"_s);
    EXPECT_FALSE(tree.selectedNode()->isExpanded());
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblBill"), QStringList{u"010201001"_s});
    pane.mnuMoveContentDown_Click();
    pane.mnuMoveContentDown_Click();
    EXPECT_EQ(takeClicks(), u"0102 0103"_s);
    // A tree that stops before it reaches the chapter leaves nothing selected.
    library.run("INSERT INTO tblSYB(code,name) VALUES('100','x')");
    pane.mnuMoveContentUp_Click();
    EXPECT_EQ(shown(), u"01 n"_s);
    EXPECT_EQ(selected(), QString());
    EXPECT_EQ(clicks, QStringList{QString()});
}

TEST_F(ChapterPaneTest, ATreeThatCannotBeReadIsRecorded) {
    build(u"01"_s);
    answers.press(QMessageBox::Ok).press(QMessageBox::Ok);
    pane.setConnection(nullptr);
    pane.CreateTvwSYB();
    EXPECT_EQ(tree.nodeCount(), 0);
    pane.setConnection(library.connection());
    build(u"02 0101 0101"_s);
    EXPECT_EQ(shown(), u"01 n|0101 n|02 n"_s);
    for (const QString& text : answers.seen())
        EXPECT_TRUE(text.contains(u"frmEditor.CreateTvwSYB"_s)) << qPrintable(text);
}
