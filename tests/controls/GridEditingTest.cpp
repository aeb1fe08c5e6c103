#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "app/base/MessageBox.h"
#include "tests/controls/GridWindow.h"
#include "tests/support/ModalAnswers.h"

namespace {

const QString code = QStringLiteral("Code");
const QString name = QStringLiteral("Name");
const QString unit = QStringLiteral("Unit");
const QString type = QStringLiteral("Type");
const QString use = QStringLiteral("Use");
const QString typed = QStringLiteral("挖沟槽");

class GridEditing : public ::testing::Test {
protected:
    GridEditing() {
        window.fill(4);
        grid.setCell(1, name);
        window.takeTold();
    }

    /// A validation that says no in a message box, which takes the focus.
    void refuseWithMessage() {
        grid.validateEdit = [this](int, const QString&, QString& text) {
            window.asked << text;
            EXPECT_FALSE(grid.commitEdit());
            showMessage(QStringLiteral("不存在"));
            return EditVerdict::KeepOpen;
        };
    }

    void expectStillEditing() {
        window.activate();
        ASSERT_TRUE(grid.isEditing());
        ASSERT_TRUE(window.lineEditor());
        EXPECT_TRUE(window.lineEditor()->hasFocus());
        EXPECT_EQ(window.lineEditor()->selectedText(), typed);
        EXPECT_EQ(window.asked, QStringList{typed});
        EXPECT_EQ(grid.row(), 1);
        EXPECT_EQ(grid.columnKey(), name);
        EXPECT_EQ(grid.currentIndex().row(), 1);
        EXPECT_EQ(grid.text(1, name), QStringLiteral("平整场地1"));
    }

    GridWindow window;
    KeyedGrid& grid = window.grid;
};

}  // namespace

TEST_F(GridEditing, StartsByF2DoubleClickAndTyping) {
    window.key(Qt::Key_F2);
    ASSERT_TRUE(window.lineEditor());
    EXPECT_EQ(window.lineEditor()->text(), QStringLiteral("平整场地1"));
    window.key(Qt::Key_Escape);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_TRUE(grid.hasFocus());

    window.doubleClick(2, unit);
    EXPECT_TRUE(grid.isEditing());
    EXPECT_TRUE(window.told.contains(QStringLiteral("double 2")));
    window.key(Qt::Key_Escape);

    window.type(QStringLiteral("x"));
    window.type(QStringLiteral("y"));
    ASSERT_TRUE(window.lineEditor());
    EXPECT_EQ(window.lineEditor()->text(), QStringLiteral("xy"));
    window.key(Qt::Key_Escape);
    EXPECT_EQ(grid.text(2, unit), QStringLiteral("m2"));
    EXPECT_TRUE(window.asked.isEmpty());

    grid.setCell(1, code);
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_A}) {
        window.key(key);
        EXPECT_FALSE(grid.isEditing());
    }
    grid.setCell(1, unit);
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Escape, Qt::Key_Return}) {
        window.key(key);
        EXPECT_FALSE(grid.isEditing()) << key;
    }
}

TEST_F(GridEditing, StartsByAnInputMethod) {
    QInputMethodEvent composing(QStringLiteral("wa"), {});
    QApplication::sendEvent(QApplication::focusWidget(), &composing);
    ASSERT_TRUE(window.lineEditor());
    QInputMethodEvent done;
    done.setCommitString(QStringLiteral("挖"));
    QApplication::sendEvent(QApplication::focusWidget(), &done);
    EXPECT_TRUE(window.lineEditor()->hasFocus());
    EXPECT_EQ(window.lineEditor()->text(), QStringLiteral("挖"));
    window.key(Qt::Key_Return);
    EXPECT_EQ(grid.text(1, name), QStringLiteral("挖"));

    // Leaving in the midst of composing ends the edit too.
    QApplication::sendEvent(QApplication::focusWidget(), &composing);
    EXPECT_TRUE(grid.isEditing());
    window.other.setFocus();
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(window.asked.size(), 2);
}

TEST_F(GridEditing, EnterCommitsAndStays) {
    grid.validateEdit = [](int, const QString&, QString& text) {
        text = text.toUpper();
        return EditVerdict::Accept;
    };
    window.type(QStringLiteral("a1"));
    window.key(Qt::Key_Return);
    EXPECT_EQ(grid.text(1, name), QStringLiteral("A1"));
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(window.takeTold(), QStringList{QStringLiteral("edited 1 Name")});
    EXPECT_EQ(grid.row(), 1);
    EXPECT_TRUE(grid.hasFocus());
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

TEST_F(GridEditing, ArrowsInAnEditorDoNotMoveTheRow) {
    window.type(typed);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home})
        window.key(key);
    EXPECT_TRUE(grid.isEditing());
    EXPECT_EQ(grid.row(), 1);
}

TEST_F(GridEditing, LeavingTheEditorCommits) {
    window.type(typed);
    QTest::mouseClick(&window.other, Qt::LeftButton);
    window.other.setFocus();
    EXPECT_EQ(grid.text(1, name), typed);
    EXPECT_EQ(window.asked.size(), 1);
    EXPECT_TRUE(window.other.hasFocus());

    grid.setFocus();
    window.type(QStringLiteral("b"));
    grid.setFocus(Qt::MouseFocusReason);
    window.click(3, unit);
    EXPECT_EQ(grid.text(1, name), QStringLiteral("b"));
    EXPECT_EQ(grid.row(), 3);
    EXPECT_EQ(window.asked.size(), 2);

    window.type(QStringLiteral("c"));
    window.click(0, unit, Qt::RightButton);
    EXPECT_EQ(grid.text(3, unit), QStringLiteral("c"));
    EXPECT_EQ(grid.row(), 0);

    window.type(QStringLiteral("d"));
    grid.setRow(2);
    EXPECT_EQ(grid.text(0, unit), QStringLiteral("d"));
    EXPECT_EQ(grid.row(), 2);
    EXPECT_FALSE(grid.isEditing());
}

TEST_F(GridEditing, AMenuOnlyBorrowsTheFocus) {
    window.type(typed);
    QMenu menu;
    menu.addAction(QStringLiteral("命令"));
    menu.popup(QPoint(50, 50));
    QApplication::processEvents();
    EXPECT_TRUE(grid.isEditing());
    menu.close();
    EXPECT_TRUE(window.asked.isEmpty());
    EXPECT_TRUE(grid.commitEdit());
    EXPECT_EQ(grid.text(1, name), typed);
    EXPECT_TRUE(grid.commitEdit());
    EXPECT_EQ(window.asked.size(), 1);
}

TEST_F(GridEditing, RestoreClosesAndKeepsTheOldText) {
    window.verdict = EditVerdict::Restore;
    window.type(typed);
    window.key(Qt::Key_Return);
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(grid.text(1, name), QStringLiteral("平整场地1"));
    EXPECT_EQ(window.takeTold(), QStringList());
}

TEST_F(GridEditing, ARefusedEditStaysOpenWhateverEndedIt) {
    const std::vector<std::pair<const char*, std::function<void()>>> ends{
        {"Enter", [this] { window.key(Qt::Key_Return); }},
        {"Tab", [this] { window.key(Qt::Key_Tab); }},
        {"program", [this] { EXPECT_FALSE(grid.commitEdit()); }},
        {"focus", [this] { window.other.setFocus(Qt::OtherFocusReason); }},
        {"menu key",
         [this] {
             QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
             QApplication::sendEvent(grid.viewport(), &event);
         }},
        {"click in the grid", [this] { window.click(3, unit); }},
        {"check box", [this] { window.click(1, use); }},
        {"right click", [this] { window.click(3, unit, Qt::RightButton); }},
        {"double click", [this] { window.doubleClick(3, unit); }},
    };
    for (const auto& [how, end] : ends) {
        SCOPED_TRACE(how);
        ModalAnswers answers;
        window.asked.clear();
        refuseWithMessage();
        window.type(typed);
        // A double click is two clicks: it is told twice.
        const bool twice = qstrcmp(how, "double click") == 0;
        answers.press(QMessageBox::Ok);
        if (twice)
            answers.press(QMessageBox::Ok);
        end();
        if (twice) {
            EXPECT_EQ(window.asked.size(), 2);
            window.asked.removeLast();
        }
        expectStillEditing();
        EXPECT_EQ(window.takeTold(), QStringList());
        EXPECT_EQ(grid.text(1, use), QStringLiteral("2"));
        grid.cancelEdit();
        grid.setFocus();
    }
}

TEST_F(GridEditing, TheClickThatRefusesDoesNothingElsewhere) {
    ModalAnswers answers;
    refuseWithMessage();
    QPushButton button(&window);
    button.setFocusPolicy(Qt::StrongFocus);
    button.show();
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, &button, [&] { ++clicks; });
    window.type(typed);
    answers.press(QMessageBox::Ok);
    QTest::mouseClick(&button, Qt::LeftButton);
    expectStillEditing();
    EXPECT_EQ(clicks, 0);
    window.key(Qt::Key_Escape);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
}

TEST_F(GridEditing, TheLimitHoldsForTypingAndPasting) {
    grid.editLimit = [](int, const QString& key) { return key == name ? 4 : 0; };
    window.type(QStringLiteral("一二三四五"));
    EXPECT_EQ(window.lineEditor()->text(), QStringLiteral("一二三四"));
    QApplication::clipboard()->setText(QStringLiteral("甲乙丙丁戊己"));
    window.lineEditor()->selectAll();
    window.lineEditor()->paste();
    EXPECT_EQ(window.lineEditor()->text(), QStringLiteral("甲乙丙丁"));
    window.key(Qt::Key_Return);
    EXPECT_EQ(grid.text(1, name), QStringLiteral("甲乙丙丁"));
    // A text of before that is longer is not cut by looking at it.
    window.key(Qt::Key_Down);
    window.key(Qt::Key_F2);
    window.key(Qt::Key_Return);
    EXPECT_EQ(grid.text(2, name), QStringLiteral("平整场地2"));
    window.key(Qt::Key_F2);
    window.lineEditor()->selectAll();
    window.lineEditor()->paste();
    EXPECT_EQ(window.lineEditor()->text(), QStringLiteral("甲乙丙丁"));
    window.key(Qt::Key_Escape);
    grid.setText(2, name, QStringLiteral("123456"));
    window.key(Qt::Key_F2);
    window.key(Qt::Key_End);
    window.key(Qt::Key_Backspace);
    EXPECT_EQ(window.lineEditor()->text(), QStringLiteral("12345"));
    window.type(QStringLiteral("x"));
    EXPECT_EQ(window.lineEditor()->text(), QStringLiteral("1234"));
    window.key(Qt::Key_Escape);
    grid.setCell(2, unit);
    window.type(QStringLiteral("0123456789"));
    EXPECT_EQ(window.lineEditor()->text().size(), 10);
    window.key(Qt::Key_Escape);
}

TEST_F(GridEditing, ADropDownListShowsTextsAndStoresValues) {
    grid.setComboList(type, QStringLiteral("#0; |#1;数值|#2;枚举|#3;计算"));
    EXPECT_EQ(grid.comboList(QStringLiteral("TYPE")), QStringLiteral("#0; |#1;数值|#2;枚举|#3;计算"));
    const auto shown = [&] { return grid.model()->index(1, grid.column(type)).data().toString(); };
    EXPECT_EQ(shown(), QStringLiteral("数值"));
    grid.setText(1, type, QStringLiteral("9"));
    EXPECT_EQ(shown(), QStringLiteral("9"));

    grid.setCell(1, type);
    for (const auto& [key, modifiers] : {std::pair<Qt::Key, Qt::KeyboardModifiers>(Qt::Key_F4, {}),
                                         {Qt::Key_Down, Qt::AltModifier},
                                         {Qt::Key_F2, {}}}) {
        SCOPED_TRACE(key);
        grid.setFocus();
        window.key(key, modifiers);
        auto* choice = qobject_cast<QComboBox*>(window.editor());
        ASSERT_TRUE(choice);
        ASSERT_TRUE(choice->view()->isVisible());
        // Esc closes the list, and with it the edit.
        QTest::keyClick(choice->view(), Qt::Key_Escape);
        QTest::qWait(20);
        EXPECT_FALSE(grid.isEditing());
    }
    EXPECT_EQ(grid.text(1, type), QStringLiteral("9"));
    EXPECT_TRUE(window.asked.isEmpty());

    grid.setText(1, type, QStringLiteral("1"));
    window.takeTold();
    window.key(Qt::Key_F4);
    auto* choice = qobject_cast<QComboBox*>(window.editor());
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->currentText(), QStringLiteral("数值"));
    QTest::qWait(300);
    const QRect entry = choice->view()->visualRect(choice->model()->index(2, 0));
    QTest::mouseMove(choice->view()->viewport(), entry.center());
    QTest::mouseClick(choice->view()->viewport(), Qt::LeftButton, {}, entry.center());
    EXPECT_FALSE(grid.isEditing());
    EXPECT_EQ(window.asked, QStringList{QStringLiteral("1 Type 2")});
    EXPECT_EQ(grid.text(1, type), QStringLiteral("2"));
    EXPECT_EQ(shown(), QStringLiteral("枚举"));
    EXPECT_EQ(window.takeTold(), QStringList{QStringLiteral("edited 1 Type")});

    grid.setComboList(type, QString());
    EXPECT_EQ(shown(), QStringLiteral("2"));
}

TEST_F(GridEditing, TheEllipsisButtonWorksInTheCellAndInItsEditor) {
    grid.setComboList(name, QStringLiteral("|..."));
    const QRect cell = grid.visualRect(grid.currentIndex());
    const QPoint button(cell.right() - 8, cell.center().y());
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, button);
    EXPECT_EQ(window.takeTold(), QStringList{QStringLiteral("button 1 Name")});
    // Another cell of the column has no button before it is current.
    const QRect below = grid.visualRect(grid.model()->index(2, grid.column(name)));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, QPoint(below.right() - 8, below.center().y()));
    EXPECT_EQ(window.takeTold(), (QStringList{QStringLiteral("row 1>2"), QStringLiteral("cell 2 Name")}));
    window.key(Qt::Key_F4);
    window.key(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(window.takeTold(), (QStringList{QStringLiteral("button 2 Name"), QStringLiteral("button 2 Name")}));

    window.type(typed);
    auto* inside = window.lineEditor()->findChild<QWidget*>(QStringLiteral("cellButton"));
    ASSERT_TRUE(inside);
    EXPECT_TRUE(window.lineEditor()->rect().contains(inside->geometry()));
    QTest::mouseClick(inside, Qt::LeftButton);
    EXPECT_EQ(grid.text(2, name), typed);
    EXPECT_EQ(window.takeTold(), (QStringList{QStringLiteral("edited 2 Name"), QStringLiteral("button 2 Name")}));

    window.verdict = EditVerdict::KeepOpen;
    window.type(typed);
    window.key(Qt::Key_F4);
    EXPECT_TRUE(grid.isEditing());
    EXPECT_EQ(window.takeTold(), QStringList());
    grid.cancelEdit();
}

TEST_F(GridEditing, CheckBoxesToggleByMouseAndSpaceWhenTheHooksAgree) {
    window.click(1, use);
    EXPECT_EQ(grid.text(1, use), QStringLiteral("1"));
    EXPECT_EQ(window.takeTold(), (QStringList{QStringLiteral("cell 1 Use"), QStringLiteral("edited 1 Use")}));
    window.key(Qt::Key_Space);
    EXPECT_EQ(grid.text(1, use), QStringLiteral("2"));
    EXPECT_EQ(window.asked, (QStringList{QStringLiteral("1 Use 1"), QStringLiteral("1 Use 2")}));
    window.takeTold();

    for (const EditVerdict verdict : {EditVerdict::Restore, EditVerdict::KeepOpen}) {
        window.verdict = verdict;
        window.key(Qt::Key_Space);
    }
    window.verdict = EditVerdict::Accept;
    grid.startEdit = [](int, const QString&) { return false; };
    window.click(1, use);
    EXPECT_EQ(grid.text(1, use), QStringLiteral("2"));
    EXPECT_EQ(window.takeTold(), QStringList());
    // Beside the box the click only makes the cell current.
    grid.startEdit = nullptr;
    window.key(Qt::Key_Space);
    EXPECT_EQ(grid.text(1, use), QStringLiteral("2"));
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
    grid.insertRow(0, {{"Name", QStringLiteral("新")}});
    window.key(Qt::Key_Return);
    EXPECT_EQ(grid.text(2, name), typed);
    EXPECT_EQ(grid.row(), 2);
}
