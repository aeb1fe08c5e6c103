#include "editor/chapters/ChapterPane.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include "editor/chapters/ChapterTree.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

const SqlText chapters = "SELECT code||' '||name FROM tblSYB ORDER BY code,id";

QString string(const char* text) { return QString::fromUtf8(text); }

class ChapterPaneTest : public testing::Test {
protected:
    ChapterPaneTest() {
        pane.setConnection(library.connection());
        pane.chapterClicked = [this](const QString& tag) { clicks << tag; };
        pane.chapterDeleted = [this] { clicks << string("deleted"); };
        pane.resize(300, 400);
        pane.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&pane));
    }

    void build(const char* codes) {
        for (const QString& code : string(codes).split(QLatin1Char(' ')))
            library.run(sql("INSERT INTO tblSYB(code,name) VALUES('", code, "','章')"));
        pane.CreateTvwSYB();
    }

    KeyedTree& tree() { return *pane.tvSYB(); }

    void click(const char* code, Qt::MouseButton button = Qt::LeftButton) {
        KeyedTree::Node* node = GetTvwNode(&tree(), chapterKey(string(code)));
        ASSERT_NE(node, nullptr);
        tree().scrollToItem(node);
        QTest::mouseClick(tree().viewport(), button, {}, tree().visualItemRect(node).center());
    }

    QString selected() { return tree().selectedNode() ? KeyedTree::tag(tree().selectedNode()) : QString(); }

    /// Answers the name dialog `caption`, which must show `preset`, by typing `name` and Enter.
    void type(ModalAnswers& answers, const char* caption, const char* preset, const char* name) {
        answers.then([=](QWidget* dialog) {
            EXPECT_TRUE(QTest::qWaitFor([dialog] { return QApplication::activeWindow() == dialog; }));
            EXPECT_EQ(dialog->windowTitle(), string(caption));
            auto* txtContent = qobject_cast<QLineEdit*>(QApplication::focusWidget());
            if (!txtContent) {
                ADD_FAILURE() << "the text box has no focus";
                dialog->close();
                return;
            }
            EXPECT_EQ(txtContent->text(), string(preset));
            QTest::keyClicks(txtContent, string(name));
            QTest::keyClick(txtContent, Qt::Key_Return);
        });
    }

    /// All nodes, in order, as the tree shows them.
    QStringList texts() {
        QStringList texts;
        for (const KeyedTree::Node* node : tree().nodes())
            texts << node->text(0);
        return texts;
    }

    /// The tree shows what a fresh load of the file shows.
    void expectAsLoaded() {
        KeyedTree fresh;
        buildChapterTree(library.connection(), &fresh);
        QStringList loaded;
        for (const KeyedTree::Node* node : fresh.nodes())
            loaded << node->text(0);
        EXPECT_EQ(texts(), loaded);
    }

    TemporaryLibrary library;
    ChapterPane pane;
    QStringList clicks;
};

TEST_F(ChapterPaneTest, ClicksAndTheKeyboardChooseTheChapter) {
    build("01 0101 010101 02");
    EXPECT_EQ(selected(), string("01"));
    EXPECT_TRUE(clicks.isEmpty());
    click("01");
    click("02");
    QTest::keyClick(&tree(), Qt::Key_Up);
    EXPECT_EQ(clicks, (QStringList{string("01"), string("02"), string("0101")}));
    EXPECT_EQ(selected(), string("0101"));

    int menus = 0;
    QObject::connect(&pane, &ChapterPane::contextMenuWanted, &pane, [&] { ++menus; });
    click("02", Qt::RightButton);
    EXPECT_EQ(menus, 1);
    EXPECT_EQ(selected(), string("0101"));
    EXPECT_EQ(clicks.size(), 3);
}

TEST_F(ChapterPaneTest, ExpandingAndCollapsingAllNodes) {
    build("01 0101 010101 02");
    pane.expandAll();
    click("010101");
    pane.collapseAll();
    for (const KeyedTree::Node* node : tree().nodes())
        EXPECT_FALSE(node->isExpanded());
    EXPECT_EQ(clicks, (QStringList{string("010101"), string("01")}));
    EXPECT_EQ(selected(), string("01"));
    pane.expandAll();
    EXPECT_TRUE(GetTvwNode(&tree(), string("K0101"))->isExpanded());
    EXPECT_EQ(clicks.size(), 2);
}

TEST_F(ChapterPaneTest, AddsChapters) {
    pane.CreateTvwSYB();
    ModalAnswers answers;
    type(answers, "添加清单目录", "", " first ");
    pane.mnuAddContent_Click();
    EXPECT_EQ(selected(), string("01"));
    type(answers, "添加清单子目录", "", "sub");
    pane.mnuAddSubContent_Click();
    EXPECT_EQ(selected(), string("0101"));
    type(answers, "添加清单子目录", "", "deep");
    pane.mnuAddSubContent_Click();
    EXPECT_EQ(selected(), string("010101"));
    EXPECT_TRUE(tree().selectedNode()->parent()->isExpanded());
    EXPECT_EQ(clicks, (QStringList{string("01"), string("0101"), string("010101")}));
    EXPECT_EQ(library.rowsInFile(chapters),
              (QStringList{string("01 first"), string("0101 sub"), string("010101 deep")}));
    expectAsLoaded();
}

TEST_F(ChapterPaneTest, ANewChapterFollowsTheLastSibling) {
    build("01 0101 0102 010201 010203 0105 02 99");
    ModalAnswers answers;
    pane.expandAll();
    click("0102");
    type(answers, "添加清单目录", "", "a");
    pane.mnuAddContent_Click();
    EXPECT_EQ(selected(), string("0106"));
    click("0102");
    type(answers, "添加清单子目录", "", "b");
    pane.mnuAddSubContent_Click();
    EXPECT_EQ(selected(), string("010204"));
    expectAsLoaded();

    // Behind 99 the code grows beyond its level; a rebuild will stop at it.
    click("01");
    type(answers, "添加清单目录", "", "c");
    pane.mnuAddContent_Click();
    EXPECT_EQ(selected(), string("100"));
    EXPECT_EQ(texts().last(), string("100 c"));
    pane.CreateTvwSYB();
    EXPECT_EQ(texts(), (QStringList{string("01 章"), string("02 章"), string("99 章")}));
    EXPECT_EQ(selected(), QString());

    // Nothing is selected to add beside.
    clicks.clear();
    answers.takeSeen();
    type(answers, "添加清单目录", "", "d");
    answers.press(QMessageBox::Ok);
    pane.mnuAddContent_Click();
    pane.mnuAddSubContent_Click();
    pane.mnuModifyContent_Click();
    pane.mnuDeleteContent_Click();
    pane.mnuMoveContentUp_Click();
    pane.mnuMoveContentDown_Click();
    EXPECT_EQ(answers.seen().size(), 2);
    EXPECT_TRUE(answers.seen().last().contains(string("frmEditor.mnuAddContent_Click")));
    EXPECT_TRUE(clicks.isEmpty());
    EXPECT_EQ(library.rowsInFile(chapters).size(), 11);
}

TEST_F(ChapterPaneTest, CarryingIntoTheParentsDigits) {
    build("01 0199 02");
    ModalAnswers answers;
    click("0199");
    type(answers, "添加清单目录", "", "a");
    pane.mnuAddContent_Click();
    EXPECT_EQ(texts(), (QStringList{string("01 章"), string("0199 章"), string("0200 a"), string("02 章")}));
    pane.CreateTvwSYB();
    EXPECT_EQ(texts(), (QStringList{string("01 章"), string("0199 章"), string("02 章"), string("0200 a")}));
}

TEST_F(ChapterPaneTest, CancellingAndFailuresChangeNothing) {
    build("01 02");
    library.run("INSERT INTO tblSYB(code,name) VALUES('03','later')");
    const QStringList before = library.rowsInFile(chapters);
    ModalAnswers answers;
    const auto cancel = [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); };
    const auto close = [](QWidget* dialog) { dialog->close(); };
    answers.then(cancel).then(close).then(cancel).then(cancel).press(QMessageBox::No);
    pane.mnuAddContent_Click();
    pane.mnuAddContent_Click();
    pane.mnuAddSubContent_Click();
    pane.mnuModifyContent_Click();
    pane.mnuDeleteContent_Click();
    EXPECT_EQ(answers.takeSeen().last(), string("提示: 确实要删除 01 章 吗?"));

    // The code is taken by a row that came into the file since; the name has an apostrophe.
    type(answers, "添加清单目录", "", "x");
    answers.press(QMessageBox::Ok);
    pane.mnuAddContent_Click();
    EXPECT_EQ(answers.takeSeen().last(), string("提示: 目录编号已经存在!"));
    type(answers, "添加清单子目录", "", "x'--");
    answers.press(QMessageBox::Ok);
    pane.mnuAddSubContent_Click();
    type(answers, "修改清单目录", "章", "x'--");
    answers.press(QMessageBox::Ok);
    pane.mnuModifyContent_Click();

    EXPECT_EQ(texts(), (QStringList{string("01 章"), string("02 章")}));
    EXPECT_TRUE(clicks.isEmpty());
    QApplication::processEvents();
    EXPECT_EQ(library.rowsInFile(chapters), before);
}

TEST_F(ChapterPaneTest, RenamesInPlace) {
    build("01 0101 02");
    ModalAnswers answers;
    click("0101");
    clicks.clear();
    type(answers, "修改清单目录", "章", "new name");
    pane.mnuModifyContent_Click();
    EXPECT_EQ(texts()[1], string("0101 new name"));
    // The close box writes the old name back.
    answers.then([](QWidget* dialog) { dialog->close(); });
    library.run("UPDATE tblSYB SET lastUpdate='old'");
    pane.mnuModifyContent_Click();
    EXPECT_EQ(library.rowsInFile("SELECT name,lastUpdate='old' FROM tblSYB WHERE code='0101'"),
              QStringList{string("new name|0")});
    EXPECT_TRUE(clicks.isEmpty());
    expectAsLoaded();
}

TEST_F(ChapterPaneTest, DeletingSelectsTheNextThePreviousOrTheParent) {
    build("01 0101 0102 0103 010301 02");
    ModalAnswers answers;
    const auto remove = [&](const char* code, const char* selectedAfter) {
        click(code);
        clicks.clear();
        answers.press(QMessageBox::Yes);
        pane.mnuDeleteContent_Click();
        EXPECT_EQ(selected(), string(selectedAfter));
        EXPECT_EQ(clicks, (QStringList{string("deleted"), string(selectedAfter)}));
        expectAsLoaded();
    };
    remove("0102", "0103");
    remove("0103", "0101");
    remove("0101", "01");
    remove("01", "02");
    click("02");
    clicks.clear();
    answers.press(QMessageBox::Yes);
    pane.mnuDeleteContent_Click();
    EXPECT_EQ(clicks, QStringList{string("deleted")});
    EXPECT_EQ(tree().nodeCount(), 0);
    // What was below a deleted chapter stays in the file.
    EXPECT_EQ(library.rowsInFile(chapters), QStringList{string("010301 章")});
}

TEST_F(ChapterPaneTest, MovesWithAllThatIsBelow) {
    build("01 0101 0102 010201 0103 010301 02");
    library.run("INSERT INTO tblBill(code) VALUES('010301001')");
    click("0103");
    clicks.clear();
    pane.mnuMoveContentUp_Click();
    EXPECT_EQ(selected(), string("0102"));
    EXPECT_EQ(clicks, QStringList{string("0102")});
    EXPECT_FALSE(tree().selectedNode()->isExpanded());
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblBill"), QStringList{string("010201001")});
    expectAsLoaded();
    pane.mnuMoveContentDown_Click();
    EXPECT_EQ(selected(), string("0103"));
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblBill"), QStringList{string("010301001")});
    pane.mnuMoveContentDown_Click();
    click("01");
    pane.mnuMoveContentUp_Click();
    EXPECT_EQ(clicks, (QStringList{string("0102"), string("0103"), string("01")}));
}

TEST_F(ChapterPaneTest, AMoveWhoseChapterIsCutOffLeavesNothingSelected) {
    build("01 0101 0102 99");
    library.run("INSERT INTO tblSYB(code,name) VALUES('100','x')");
    click("0102");
    clicks.clear();
    pane.mnuMoveContentUp_Click();
    EXPECT_EQ(texts(), (QStringList{string("01 章"), string("99 章")}));
    EXPECT_EQ(selected(), QString());
    EXPECT_EQ(clicks, QStringList{QString()});
}

TEST_F(ChapterPaneTest, WithoutALibraryTheTreeIsEmptyAndTheErrorRecorded) {
    build("01");
    pane.setConnection(nullptr);
    ModalAnswers answers;
    answers.press(QMessageBox::Ok);
    pane.CreateTvwSYB();
    EXPECT_TRUE(answers.seen().value(0).contains(string("frmEditor.CreateTvwSYB")));
    EXPECT_EQ(tree().nodeCount(), 0);
}

TEST_F(ChapterPaneTest, ADuplicateCodeIsRecordedAndTheRestOfTheTreeKept) {
    ModalAnswers answers;
    answers.press(QMessageBox::Ok);
    build("01 02 0101 0101");
    EXPECT_TRUE(answers.seen().value(0).contains(string("frmEditor.CreateTvwSYB")));
    EXPECT_EQ(texts(), (QStringList{string("01 章"), string("0101 章"), string("02 章")}));
}

}  // namespace
