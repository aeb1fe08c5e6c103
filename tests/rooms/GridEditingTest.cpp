#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QMenu>
#include <QScrollBar>

#include "app/base/MessageBox.h"
#include "tests/rooms/GridWindow.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

const QString type = u"Type"_s;
const QString typed = u"挖沟槽"_s;

using GridEditing = GridWindow;

}  // namespace

TEST_F(GridEditing, StartsByF2DoubleClickTypingAndInputMethodWhereItMay) {
    expect({
        {"key F2", "", "1 Name [平整场地1]"},
        {"key Esc", "", "1 Name"},
        {"double 2 Unit", "row 1>2, cell 2 Unit, double 2", "2 Unit [m2]"},
        {"key Esc; type xy", "", "2 Unit [xy]"},
        {"key Esc; cell 1 Code; key F2; key A", "row 2>1, cell 1 Code", "1 Code"},
        {"cell 1 Unit; key Del; key Backspace; key Esc; key Return", "cell 1 Unit", "1 Unit"},
        {"compose wa; committed 挖", "", "1 Unit [挖]"},
        {"key Return", "asked 1 Unit 挖, edited 1 Unit", "1 Unit"},
        // Punctuation comes without composing, and replaces the text as any typed character does.
        {"committed ，", "", "1 Unit [，]"},
        // Leaving in the midst of composing ends the edit too.
        {"key Esc; compose wa; leave", "asked 1 Unit , edited 1 Unit", "1 Unit"},
    });
    EXPECT_EQ(texts(unit), u"m2  m2 m2"_s);
}

TEST_F(GridEditing, LeavingTheEditorCommitsButAMenuOnlyBorrowsTheFocus) {
    expect({{"type a; key PgDown; key PgUp; key Home", "", "1 Name [a]"}});
    QMenu menu;
    menu.addAction(u"命令"_s);
    menu.popup(QPoint(50, 50));
    QApplication::processEvents();
    expect({{"menukey", "asked 1 Name a, edited 1 Name, menu at 1 Name", "1 Name"}});
    menu.close();
    activate();
    expect({
        {"focus; type a; leave", "asked 1 Name a, edited 1 Name", "1 Name"},
        {"focus; type b; click 3 Unit", "asked 1 Name b, edited 1 Name, row 1>3, cell 3 Unit", "3 Unit"},
        {"type c; right 0 Unit", "asked 3 Unit c, edited 3 Unit, row 3>0, cell 0 Unit, menu at 0 Unit", "0 Unit"},
        {"type d; row 2", "asked 0 Unit d, edited 0 Unit, row 0>2, cell 2 Unit", "2 Unit"},
        // Up and Down go to the next row that there is.
        {"type e; key Down", "asked 2 Unit e, edited 2 Unit, row 2>3, cell 3 Unit", "3 Unit"},
        {"type e; key Down", "", "3 Unit [e]"},
        {"key Esc; type f; commit; commit", "asked 3 Unit f, edited 3 Unit, done, done", "3 Unit"},
    });
    EXPECT_EQ(texts(unit), u"d m2 e f"_s);
}

TEST_F(GridEditing, ARefusedEditStaysOpenWhateverEndedItAndNothingElseHappens) {
    otherWindow.show();
    // The validation says no in a message box, which takes the focus.
    grid.validateEdit = [this](int, const QString&, QString& text) {
        EXPECT_EQ(text, typed);
        EXPECT_FALSE(grid.commitEdit());
        showMessage(u"不存在"_s);
        return EditVerdict::KeepOpen;
    };
    for (const char* end : {"key Return", "key Tab", "commit", "leave", "menukey", "click 3 Unit", "click 1 Use",
                            "right 3 Unit", "double 3 Unit", "window"}) {
        SCOPED_TRACE(end);
        ModalAnswers answers;
        answers.closeAnything();
        does(u"type "_s + typed);
        EXPECT_EQ(does(QString::fromLatin1(end)), qstrcmp(end, "commit") == 0 ? u"refused"_s : QString());
        // A double click is two clicks: it is told twice.
        EXPECT_EQ(answers.seen().size(), qstrcmp(end, "double 3 Unit") == 0 ? 2 : 1);
        activate();
        ASSERT_EQ(state(), u"1 Name ["_s + typed + u']');
        EXPECT_TRUE(lineEditor()->hasFocus() && lineEditor()->selectedText() == typed);
        EXPECT_EQ(grid.currentIndex().row(), 1);
        EXPECT_EQ(grid.text(1, name) + texts(u"Use"_s), u"平整场地12 2 2 2"_s);
        grid.cancelEdit();
        grid.setFocus();
    }
}

TEST_F(GridEditing, APressThatLostItsMeaningWhileTheEditEndedIsDropped) {
    // A scroll bar and the editor itself leave the edit alone.
    fill(40);
    does(u"row 1; type "_s + typed);
    clickOn(*editor(), editor()->rect().center());
    clickOn(*grid.verticalScrollBar(), QPoint(5, 20));
    ASSERT_TRUE(editor());
    EXPECT_TRUE(editor()->hasFocus() && told.isEmpty());
    // The user has let go of the button for a message box of the decision.
    grid.validateEdit = [this](int, const QString&, QString&) {
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, {1, 1});
        return EditVerdict::Accept;
    };
    expect({{"click 3 Unit", "edited 1 Name", "1 Name"}});
}

TEST_F(GridEditing, ALongerTextThanTheLimitMayOnlyBecomeShorter) {
    grid.editLimit = [](int, const QString&) { return 4; };
    expect({{"key F2; key Home; type x", "", "1 Name [平整场地1]"}});
    lineEditor()->setSelection(0, 3);
    expect({{"type xyz", "", "1 Name [xy地1]"}, {"key Ctrl+Z", "", "1 Name [平整场地1]"}});
}

TEST_F(GridEditing, PastingIsTypingAndSeveralLinesGoDownToTheLastRowOrTheFirstRefusal) {
    grid.setComboList(type, u"#1;数值"_s);
    grid.validateEdit = [this](int row, const QString& key, QString& text) {
        told << u"asked %1 %2 %3"_s.arg(row).arg(key, text);
        return text == u"no"_s ? EditVerdict::KeepOpen : EditVerdict::Accept;
    };
    for (const auto& [at, pasted, edits, after] :
         {std::tuple("cell 1 Unit", "t\t1", "asked 1 Unit t, edited 1 Unit", "1 Unit"),
          {"cell 2 Name", "\"甲\n\"\"乙\"\"\"\t1\r\n\"丙\" 丁\n戊\n",
           "asked 2 Name 甲 \"乙\", edited 2 Name, row 2>3, cell 3 Name, asked 3 Name \"丙\" 丁, edited 3 Name",
           "3 Name"},
          {"cell 0 Unit", "a\n\nno\nc",
           "asked 0 Unit a, edited 0 Unit, row 0>1, cell 1 Unit, asked 1 Unit , edited 1 Unit, row 1>2, cell 2 Unit, "
           "asked 2 Unit no",
           "2 Unit [no]"},
          {"cell 1 Name; type x", "甲\n乙", "", "1 Name [x甲 乙]"},
          {"cell 1 Code", "x", "", "1 Code"},
          {"cell 1 Type", "1", "", "1 Type"}}) {
        does(QString::fromUtf8(at));
        QApplication::clipboard()->setText(QString::fromUtf8(pasted));
        expect({{"key Ctrl+V", edits, after}, {"key Esc", ""}});
    }
}

TEST_F(GridEditing, AListMarksNothingForAValueThatItHasNotSoEnterChoosesNothing) {
    grid.setComboList(type, u"#0; |#2;数值"_s);
    does(u"cell 1 Type; key Alt+Down"_s);
    const auto* choice = qobject_cast<QComboBox*>(editor());
    ASSERT_TRUE(choice && choice->view()->isVisible());
    QTest::keyClick(choice->view(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(state() + grid.text(1, type), u"1 Type1"_s);
}

TEST_F(GridEditing, TheEllipsisButtonWorksInTheCurrentCellAndInItsEditor) {
    grid.setComboList(name, u"|..."_s);
    expect({{"end 1 Name", "ellipsis 1 Name", "1 Name"},
            {"end 2 Name", "row 1>2, cell 2 Name", "2 Name"},
            {"type ab", "", "2 Name [ab]"}});
    auto* inside = editor()->findChild<QWidget*>(u"cellButton"_s);
    ASSERT_TRUE(inside);
    QTest::mouseClick(inside, Qt::LeftButton);
    EXPECT_NE(grid.text(2, name), u"ab"_s) << "what is chosen takes its place";
    expect({{"focus", "ellipsis 2 Name"}});
}
