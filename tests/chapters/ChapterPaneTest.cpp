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
