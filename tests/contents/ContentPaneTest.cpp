#include "editor/contents/ContentPane.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include "tests/support/EditorDriver.h"
#include "tests/support/Libraries.h"
#include "tests/support/Rations.h"
#include "tests/support/Snapshot.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

const QString cont = u"cont"_s;
const QString dekName = u"dekName"_s;

/// The contents of bill 030101001: 0 First, 1 -Sub, 2 --A1-1, 3 --A1-2, 4 -Empty, 5 -o'clock, 6 --X1, 7 Both, …
class ContentPaneTest : public testing::Test {
protected:
    ContentPaneTest() {
        user.click(user.tree()->node(u"K030101"_s));
        user.click(user.bills(), 0, u"Name"_s);
        EXPECT_EQ(grid->text(4, cont), u"Empty"_s);
    }

    const Rations rations;
    EditorDriver user{awkwardLibrary()};
    ContentPane* const pane = user.editor()->contentPane();
    KeyedGrid* const grid = user.contents();
};

auto pressReturn(QMessageBox::Icon icon) {
    return [icon](QWidget* box) {
        EXPECT_EQ(static_cast<QMessageBox*>(box)->icon(), icon);
        QTest::keyClick(box, Qt::Key_Return);
    };
}

}  // namespace

TEST_F(ContentPaneTest, OffersProfessionsAndShowsLibrariesByName) {
    QStringList names;
    for (int i = 0; i < pane->cboProfession()->count(); ++i)
        names << pane->cboProfession()->itemText(i) + pane->cboProfession()->itemData(i).toString();
    EXPECT_EQ(names.join(u' '), u"建筑1 装饰2 安装3 市政4 园林5 送电6 变电7 发电8 配网9"_s);
    const auto shown = [&](int row) { return grid->model()->index(row, grid->column(dekName)).data().toString(); };
    EXPECT_EQ(shown(6), u"特殊定额"_s);
    EXPECT_EQ(grid->text(6, dekName), u"AWKWARD"_s);
}

TEST_F(ContentPaneTest, EditsWhatMayBeEditedUpToItsLength) {
    for (const auto& [row, limit] : {std::pair{0, 50}, {1, 50}, {2, 150}}) {
        QWidget* editor = user.openEditor(grid, row, cont);
        ASSERT_TRUE(editor);
        EditorDriver::typeOver(editor, QString(200, u'x'));
        EXPECT_EQ(qobject_cast<QLineEdit*>(editor)->text().size(), limit);
        QTest::keyClick(editor, Qt::Key_Escape);
        EXPECT_FALSE(user.openEditor(grid, row, u"Unit"_s));
        EXPECT_EQ(user.openEditor(grid, row, dekName) != nullptr, row == 2);
        grid->cancelEdit();
    }
}

TEST_F(ContentPaneTest, TheOnlyBlankRationIsOfTheLibraryForTheLeadingCode) {
    const QStringList before = rowsInFile(user.path(), "SELECT ID FROM tblContDe");
    for (const auto& [row, at] : {std::pair{1, 4}, {7, 7}, {3, 4}}) {
        grid->setCell(row, cont);
        const int rows = grid->rowCount();
        pane->munAddBillContDe_Click();
        EXPECT_EQ(grid->row(), at);
        EXPECT_EQ(grid->rowCount(), row == 1 ? rows + 1 : rows);
        EXPECT_EQ(grid->text(at, dekName), u"GD2018ZHDE03"_s);
    }
    EXPECT_EQ(rowsInFile(user.path(), "SELECT ID FROM tblContDe"), before) << "nothing is written";
}

TEST_F(ContentPaneTest, ARationRowIsRemovedOrClearedByItsNeighbours) {
    struct {
        const char* place;
        int row;
        QString left;
    } const cases[] = {{"first, a ration below", 2, u"1||1|a1-2|2|NULL|3|X1"_s},
                       {"first, a second-level content below", 2, u"1||2|NULL|3|X1"_s},
                       {"first, a content below", 4, u"1||2|NULL|3|"_s}};
    for (const auto& [place, row, left] : cases) {
        ModalAnswers answers;
        answers.press(QMessageBox::Yes);
        grid->setRow(row);
        user.run(2, 403);
        EXPECT_EQ(rowsInFile(user.path(), "SELECT SubNum,Deh FROM tblContDe WHERE ContID=41 ORDER BY ID").join(u'|'),
                  left)
            << place;
    }
}

TEST_F(ContentPaneTest, ARejectedCodeWarnsAndAMissingLibraryIsCritical) {
    ModalAnswers answers;
    answers.then(pressReturn(QMessageBox::Warning)).then(pressReturn(QMessageBox::Critical));
    const QString before = grid->text(2, cont);
    user.edit(grid, 2, cont, u"zz"_s);
    user.activate();
    EXPECT_TRUE(grid->isEditing());
    EXPECT_EQ(qobject_cast<QLineEdit*>(QApplication::focusWidget())->selectedText(), u"zz"_s);
    grid->cancelEdit();
    EXPECT_EQ(grid->text(2, cont), before);
    EXPECT_FALSE(pane->EditBillContDe(u"A1-1"_s, u"not listed"_s));
    EXPECT_EQ(answers.seen(), (QStringList{u"提示: 定额 [ZZ] 不存在, 请重新输入!"_s, u"提示: 定额库文件不存在!"_s}));
}

TEST_F(ContentPaneTest, OnlyRationRowsAskForTheBrowser) {
    QStringList asked;
    QObject::connect(pane, &ContentPane::rationWanted, pane, [&](const QString& dekId) { asked << dekId; });
    for (const int row : {0, 1, 6}) {
        user.click(grid, row, cont);
        user.key(grid, Qt::Key_F4);
    }
    EXPECT_EQ(asked, QStringList{u"AWKWARD"_s});
}
