#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>

#include "app/base/MessageBox.h"
#include "tests/controls/GridWindow.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

const QString code = u"Code"_s;
const QString name = u"Name"_s;
const QString unit = u"Unit"_s;
const QString type = u"Type"_s;
const QString use = u"Use"_s;
const QString typed = u"挖沟槽"_s;

class GridEditing : public ::testing::Test {
protected:
    GridEditing() {
        window.fill(4);
        grid.setCell(1, name);
        window.takeTold();
    }

    GridWindow window;
    KeyedGrid& grid = window.grid;
};

}  // namespace

TEST_F(GridEditing, StartsByF2DoubleClickAndTypingWhereItMay) {
    window.key(Qt::Key_F2);
    ASSERT_TRUE(window.lineEditor());
    EXPECT_EQ(window.lineEditor()->text(), u"平整场地1"_s);
    window.key(Qt::Key_Escape);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_TRUE(grid.hasFocus());

    window.doubleClick(2, unit);
    EXPECT_TRUE(grid.isEditing());
    EXPECT_TRUE(window.told.contains(u"double 2"_s));
    window.key(Qt::Key_Escape);
    window.type(u"xy"_s);
    ASSERT_TRUE(window.lineEditor());
    EXPECT_EQ(window.lineEditor()->text(), u"xy"_s);
    window.key(Qt::Key_Escape);
    EXPECT_EQ(grid.text(2, unit), u"m2"_s);
    EXPECT_TRUE(window.asked.isEmpty());

    for (const auto& [column, keys] : {std::pair(code, QList{Qt::Key_F2, Qt::Key_A}),
                                       {unit, {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Escape, Qt::Key_Return}}}) {
        grid.setCell(1, column);
        for (const Qt::Key key : keys) {
            window.key(key);
            EXPECT_FALSE(grid.isEditing()) << key;
        }
    }
}

TEST_F(GridEditing, StartsByAnInputMethod) {
    QInputMethodEvent composing(u"wa"_s, {});
    QApplication::sendEvent(QApplication::focusWidget(), &composing);
    ASSERT_TRUE(window.lineEditor());
    QInputMethodEvent done;
    done.setCommitString(u"挖"_s);
    QApplication::sendEvent(QApplication::focusWidget(), &done);
    EXPECT_TRUE(window.lineEditor()->hasFocus());
    EXPECT_EQ(window.lineEditor()->text(), u"挖"_s);
    window.key(Qt::Key_Return);
    EXPECT_EQ(grid.text(1, name), u"挖"_s);

    // Punctuation comes without composing, and replaces the text as any typed character does.
    done.setCommitString(u"，"_s);
    QApplication::sendEvent(QApplication::focusWidget(), &done);
    ASSERT_TRUE(window.lineEditor());
    EXPECT_EQ(window.lineEditor()->text(), u"，"_s);
    window.key(Qt::Key_Escape);

    // Leaving in the midst of composing ends the edit too.
    QApplication::sendEvent(QApplication::focusWidget(), &composing);
    EXPECT_TRUE(grid.isEditing());
    window.other.setFocus();
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(window.asked.size(), 2);
}

TEST_F(GridEditing, TabGoesOnToTheNextCellThatMayBeEdited) {
    window.type(typed);
    window.key(Qt::Key_Tab);
    EXPECT_EQ(grid.text(1, name), typed);
    EXPECT_EQ(grid.columnKey(), unit);
    ASSERT_TRUE(window.lineEditor());
    EXPECT_TRUE(window.lineEditor()->hasFocus());
    window.key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(grid.columnKey(), name);
    window.key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(grid.row(), 0);
    EXPECT_EQ(grid.columnKey(), use);
    EXPECT_FALSE(grid.isEditing());

    grid.startEdit = [](int, const QString& key) { return key == name; };
    grid.setCell(3, name);
    window.key(Qt::Key_F2);
    window.key(Qt::Key_Tab);
    EXPECT_EQ(grid.row(), 3);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_TRUE(grid.hasFocus());
}

TEST_F(GridEditing, LeavingTheEditorCommitsButAMenuOnlyBorrowsTheFocus) {
    window.type(typed);
    for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home})
        window.key(key);
    EXPECT_TRUE(grid.isEditing());
    QMenu menu;
    menu.addAction(u"命令"_s);
    menu.popup(QPoint(50, 50));
    QApplication::processEvents();
    EXPECT_TRUE(grid.isEditing() && window.asked.isEmpty());
    menu.close();
    window.activate();
    window.other.setFocus();
    EXPECT_TRUE(window.other.hasFocus());
    EXPECT_EQ(window.asked, QStringList{u"1 Name "_s + typed});

    grid.setFocus();
    window.type(u"b"_s);
    window.click(3, unit);
    window.type(u"c"_s);
    window.click(0, unit, Qt::RightButton);
    window.type(u"d"_s);
    grid.setRow(2);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(grid.text(1, name) + grid.text(3, unit) + grid.text(0, unit), u"bcd"_s);
    EXPECT_EQ(grid.row(), 2);
    // Up and Down go to the next row that there is.
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Escape, Qt::Key_Up}) {
        window.type(u"e"_s);
        window.key(key);
    }
    EXPECT_EQ(grid.row(), 2);
    EXPECT_EQ(grid.text(2, unit) + grid.text(3, unit), u"ee"_s);
    window.type(u"f"_s);
    EXPECT_TRUE(grid.commitEdit());
    EXPECT_TRUE(grid.commitEdit());
    EXPECT_EQ(window.asked.size(), 7);
}

TEST_F(GridEditing, ARefusedEditStaysOpenWhateverEndedItAndNothingElseHappens) {
    QPushButton button(&window);
    button.setFocusPolicy(Qt::StrongFocus);
    button.move(10, window.height() - 60);
    button.show();
    QObject::connect(&button, &QPushButton::clicked, &button, [this] { window.told << u"button"_s; });
    QPushButton otherWindow;
    otherWindow.show();
    QObject::connect(&otherWindow, &QPushButton::clicked, &otherWindow, [this] { window.told << u"other window"_s; });
    const auto menuKey = [this] {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
        QApplication::sendEvent(grid.viewport(), &event);
    };
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"Enter", [this] { window.key(Qt::Key_Return); }},
        {"Tab", [this] { window.key(Qt::Key_Tab); }},
        {"program", [this] { EXPECT_FALSE(grid.commitEdit()); }},
        {"focus", [this] { window.other.setFocus(Qt::OtherFocusReason); }},
        {"menu key", menuKey},
        {"click in the grid", [this] { window.click(3, unit); }},
        {"check box", [this] { window.click(1, use); }},
        {"right click", [this] { window.click(3, unit, Qt::RightButton); }},
        {"double click", [this] { window.doubleClick(3, unit); }},
        {"click in another window", [&] { window.clickOn(otherWindow, otherWindow.rect().center()); }},
        {"click elsewhere", [&] { window.clickOn(button, button.rect().center()); }},
    };
    // The validation says no in a message box, which takes the focus.
    grid.validateEdit = [this](int, const QString&, QString& text) {
        window.asked << text;
        EXPECT_FALSE(grid.commitEdit());
        showMessage(u"不存在"_s);
        return EditVerdict::KeepOpen;
    };
    for (const auto& [how, end] : ends) {
        SCOPED_TRACE(how);
        ModalAnswers answers;
        answers.closeAnything();
        window.asked.clear();
        window.type(typed);
        end();
        // A double click is two clicks: it is told twice.
        EXPECT_EQ(answers.seen().size(), qstrcmp(how, "double click") == 0 ? 2 : 1);
        EXPECT_EQ(window.asked.size(), answers.seen().size());
        EXPECT_EQ(window.asked.first(), typed);
        window.activate();
        ASSERT_TRUE(window.lineEditor());
        EXPECT_TRUE(window.lineEditor()->hasFocus());
        EXPECT_EQ(window.lineEditor()->selectedText(), typed);
        EXPECT_TRUE(grid.row() == 1 && grid.columnKey() == name && grid.currentIndex().row() == 1);
        EXPECT_EQ(grid.text(1, name) + grid.text(1, use), u"平整场地12"_s);
        EXPECT_EQ(window.takeTold(), QString());
        grid.cancelEdit();
        grid.setFocus();
    }
}

TEST_F(GridEditing, APressThatLostItsMeaningWhileTheEditEndedIsDropped) {
    // A scroll bar and the editor itself leave the edit alone.
    window.fill(40);
    grid.setRow(1);
    QApplication::processEvents();
    window.type(typed);
    window.clickOn(*window.editor(), window.editor()->rect().center());
    window.clickOn(*grid.verticalScrollBar(), QPoint(5, 20));
    ASSERT_TRUE(window.editor());
    EXPECT_TRUE(window.editor()->hasFocus() && window.asked.isEmpty());
    window.takeTold();
    // The user has let go of the button for a message box of the decision.
    grid.validateEdit = [this](int, const QString&, QString&) {
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, {1, 1});
        return EditVerdict::Accept;
    };
    window.click(3, unit);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(window.takeTold(), u"edited 1 Name"_s);
}

TEST_F(GridEditing, TheLimitHoldsForTypingAndPasting) {
    grid.editLimit = [](int, const QString& key) { return key == name ? 4 : 0; };
    grid.setText(1, name, {});
    window.type(u"一二三四五"_s);
    EXPECT_EQ(window.lineEditor()->text(), u"一二三四"_s);
    QApplication::clipboard()->setText(u"甲\r\n乙\t丙丁戊己"_s);
    window.lineEditor()->selectAll();
    window.lineEditor()->paste();
    window.key(Qt::Key_Return);
    EXPECT_EQ(grid.text(1, name), u"甲 乙"_s);
    // A text of before that is longer is not cut by looking at it.
    grid.setRow(2);
    window.key(Qt::Key_F2);
    window.key(Qt::Key_Return);
    EXPECT_EQ(grid.text(2, name), u"平整场地2"_s);
    window.key(Qt::Key_F2);
    // It may only become shorter, and then be typed anew within the limit.
    window.key(Qt::Key_Home);
    window.type(u"x"_s);
    EXPECT_EQ(window.lineEditor()->text(), u"平整场地2"_s);
    window.lineEditor()->setSelection(0, 3);
    window.type(u"xyz"_s);
    EXPECT_EQ(window.lineEditor()->text(), u"xy地2"_s);
    EXPECT_EQ(window.lineEditor()->cursorPosition(), 2);
    window.lineEditor()->undo();
    EXPECT_EQ(window.lineEditor()->text(), u"平整场地2"_s);
    window.key(Qt::Key_Escape);
    grid.setCell(2, unit);
    window.type(u"0123456789"_s);
    EXPECT_EQ(window.lineEditor()->text().size(), 10);
}

TEST_F(GridEditing, ADropDownListShowsTextsAndStoresValues) {
    grid.setComboList(type, u"#0; |#1;数值|#2;枚举|#3;计算"_s);
    const auto shown = [&] { return grid.model()->index(1, grid.column(type)).data().toString(); };
    EXPECT_EQ(shown(), u"数值"_s);
    grid.setText(1, type, u"9"_s);
    EXPECT_EQ(shown(), u"9"_s);

    // Esc closes the list, and with it the edit.
    grid.setCell(1, type);
    window.takeTold();
    for (const QKeyCombination key : {QKeyCombination(Qt::Key_F4), Qt::ALT | Qt::Key_Down, {Qt::Key_F2}}) {
        grid.setFocus();
        window.key(key.key(), key.keyboardModifiers());
        auto* choice = qobject_cast<QComboBox*>(window.editor());
        ASSERT_TRUE(choice && choice->view()->isVisible());
        QTest::keyClick(choice->view(), Qt::Key_Escape);
        QTest::qWait(20);
        EXPECT_FALSE(grid.isEditing());
    }
    EXPECT_EQ(grid.text(1, type), u"9"_s);
    EXPECT_TRUE(window.asked.isEmpty());

    // The list of an unknown value marks nothing, and Enter chooses nothing.
    window.key(Qt::Key_F4);
    QTest::keyClick(qobject_cast<QComboBox*>(window.editor())->view(), Qt::Key_Return);
    QTest::qWait(20);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(grid.text(1, type), u"9"_s);
    EXPECT_TRUE(window.asked.isEmpty());

    // By mouse: a double click from elsewhere opens the list, and so does a click on the current cell.
    grid.setText(1, type, u"1"_s);
    grid.setCell(2, name);
    window.takeTold();
    window.doubleClick(1, type);
    QTest::qWait(20);
    ASSERT_TRUE(grid.isEditing());
    grid.cancelEdit();
    window.click(1, type);
    const auto* choice = qobject_cast<QComboBox*>(window.editor());
    ASSERT_TRUE(choice && choice->view()->isVisible());
    EXPECT_EQ(choice->currentText(), u"数值"_s);
    window.takeTold();
    QTest::qWait(300);
    const QPoint entry = choice->view()->visualRect(choice->model()->index(2, 0)).center();
    QTest::mouseMove(choice->view()->viewport(), entry);
    QTest::mouseClick(choice->view()->viewport(), Qt::LeftButton, {}, entry);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(window.asked, QStringList{u"1 Type 2"_s});
    EXPECT_EQ(grid.text(1, type) + shown(), u"2枚举"_s);
    EXPECT_EQ(window.takeTold(), u"edited 1 Type"_s);
}

TEST_F(GridEditing, TheEllipsisButtonWorksInTheCellAndInItsEditor) {
    grid.setComboList(name, u"|..."_s);
    const QRect cell = grid.visualRect(grid.currentIndex());
    const QPoint button(cell.right() - 8, cell.center().y());
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, button);
    EXPECT_EQ(window.takeTold(), u"button 1 Name"_s);
    // Another cell of the column has no button before it is current.
    const QRect below = grid.visualRect(grid.model()->index(2, grid.column(name)));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(below.right() - 8, below.center().y()));
    EXPECT_EQ(window.takeTold(), u"row 1>2, cell 2 Name"_s);
    window.type(typed);
    auto* inside = window.lineEditor()->findChild<QWidget*>(u"cellButton"_s);
    ASSERT_TRUE(inside);
    QTest::mouseClick(inside, Qt::LeftButton);
    EXPECT_NE(grid.text(2, name), typed) << "what is chosen takes its place";
    EXPECT_EQ(window.takeTold(), u"button 2 Name"_s);
}

TEST_F(GridEditing, AnEditEndsWithItsRow) {
    window.type(typed);
    grid.removeRows(1);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_TRUE(window.asked.isEmpty());

    // The hook itself may take the row away, or move on.
    grid.validateEdit = [this](int row, const QString&, QString&) {
        grid.removeRows(row);
        return EditVerdict::KeepOpen;
    };
    grid.setCell(1, name);
    window.type(typed);
    EXPECT_TRUE(grid.commitEdit());
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(grid.rowCount(), 2);

    grid.validateEdit = nullptr;
    grid.setCell(1, name);
    window.type(typed);
    grid.insertRow(0, {{"Name", u"新"_s}});
    window.key(Qt::Key_Return);
    EXPECT_EQ(grid.text(2, name), typed);
    EXPECT_EQ(grid.row(), 2);
}
