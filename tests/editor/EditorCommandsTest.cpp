#include <gtest/gtest.h>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QToolBar>

#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

class EditorCommands : public ::testing::Test {
protected:
    EditorCommands() : editor(nullptr) {
        editor.setDBFilePath(copyOfSampleLibrary(sampleLibraryName()));
        EXPECT_TRUE(editor.Form_Load());
        editor.resize(1200, 800);
        editor.show();
    }

    KeyedTree* tree() { return editor.chapterPane()->tvSYB(); }
    KeyedGrid* bills() { return editor.billPane()->grdBillList(); }
    KeyedGrid* contents() { return editor.contentPane()->grdConcent(); }
    KeyedGrid* features() { return editor.featurePane()->grdSpec(); }

    void click(const QString& code) {
        KeyedTree::Node* node = tree()->node(QLatin1Char('K') + code);
        ASSERT_TRUE(node) << qPrintable(code);
        tree()->selectNode(node);
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, tree()->visualItemRect(node).center());
    }

    QString enabled(int host, std::initializer_list<int> ids) {
        QStringList list;
        for (const int id : ids) {
            if (editor.commandBars(host)->isEnabled(id))
                list << QString::number(id);
        }
        return list.join(QLatin1Char(' '));
    }

    QStringList popups() {
        QStringList menus;
        for (QMenu* menu : editor.findChildren<QMenu*>()) {
            QStringList entries;
            for (const QAction* entry : menu->actions())
                entries << entry->text();
            if (!menu->title().isEmpty())
                menus << menu->title() + QLatin1String(": ") + entries.join(QLatin1Char(' '));
        }
        menus.sort();
        return menus;
    }

    frmEditor editor;
};

}  // namespace

TEST_F(EditorCommands, MenusAndToolbarsAreComplete) {
    EXPECT_EQ(popups(),
              QStringList(
                  {QStringLiteral("Bill Menu: 添加工程内容 添加工程细节 添加定额 删除"),
                   QStringLiteral("Bill Menu: 添加清单 删除清单 上移清单 下移清单"),
                   QStringLiteral("BillSpec Menu: 添加项目特征 删除项目特征"),
                   QStringLiteral("Context Menu: 添加目录 添加子目录 删除目录 修改目录 上移目录 下移目录 展开所有节点 "
                                  "收起所有节点"),
                   QStringLiteral("SpecEnum Menu: 添加特征值 删除特征值")}));
    QStringList bars;
    for (const QToolBar* bar : editor.findChildren<QToolBar*>()) {
        QStringList buttons;
        for (const QAction* action : bar->actions()) {
            if (!action->text().isEmpty() && action->isVisible())
                buttons << action->text() + QLatin1Char('/') + action->toolTip();
        }
        bars << bar->windowTitle() + QLatin1String(": ") + buttons.join(QLatin1Char(' '));
    }
    bars.sort();
    EXPECT_EQ(bars, QStringList(
                        {QStringLiteral("Bill: 查找清单/BillQuery 添加清单/BillNew 删除清单/BillDel 上移/ContentUp "
                                        "下移/ContentDown"),
                         QStringLiteral("Content: 添加目录/ContentNew 添加子目录/ContentAddSub 修改目录/ContentModify "
                                        "删除目录/ContentDel")}));
    EXPECT_EQ(editor.commandBars(1)->action(107)->statusTip(), QStringLiteral("最近打开清单库"));
    for (const int id : {100, 101, 102, 103, 104, 105, 106, 107})
        EXPECT_FALSE(editor.commandBars(1)->action(id)->icon().isNull()) << id;
    for (const int id : {200, 201, 202, 104, 105, 300, 301, 400, 401})
        EXPECT_FALSE(editor.commandBars(2)->action(id)->icon().isNull()) << id;
}

TEST_F(EditorCommands, AreEnabledByWhatIsShown) {
    const auto chapter = {100, 101, 102, 103, 104, 105, 106, 107, 108, 109};
    const auto bill = {104, 105, 200, 201, 202, 400, 401, 402, 403};
    click(QStringLiteral("01"));
    EXPECT_EQ(enabled(1, chapter), QStringLiteral("100 101 102 103 105 106 107 108 109"));
    EXPECT_EQ(enabled(2, bill), QStringLiteral("202"));
    EXPECT_EQ(enabled(3, {300, 301}), QString());
    EXPECT_EQ(enabled(4, {300, 301}), QString());

    click(QStringLiteral("010101"));
    ASSERT_GT(bills()->rowCount(), 2);
    EXPECT_EQ(enabled(1, chapter), QStringLiteral("100 102 103 105 106 107 108 109"));
    EXPECT_EQ(enabled(2, {104, 105, 200, 201, 202, 400}), QStringLiteral("105 200 201 202 400"));
    bills()->setRow(bills()->rowCount() - 1);
    EXPECT_EQ(enabled(2, {104, 105}), QStringLiteral("104"));
    EXPECT_EQ(enabled(3, {300}), QStringLiteral("300"));

    bills()->setRow(0);
    ASSERT_GT(contents()->rowCount(), 0);
    EXPECT_EQ(contents()->level(0), 0);
    contents()->setRow(0);
    EXPECT_EQ(enabled(2, {400, 401, 402, 403}), QStringLiteral("400 401 403"));

    // Query results can be deleted from, but neither moved nor added to.
    editor.commandBars(2)->execute(202);
    EXPECT_FALSE(tree()->selectedNode());
    bills()->setRow(1);
    EXPECT_EQ(enabled(2, {104, 105, 200, 201, 202}), QStringLiteral("201 202"));
    EXPECT_EQ(enabled(1, chapter), QStringLiteral("106 107 108 109"));
}

TEST_F(EditorCommands, EnterInTheSearchBoxSearches) {
    auto* box = editor.findChild<QLineEdit*>(QStringLiteral("CommandBars2.203"));
    ASSERT_TRUE(box);
    QTest::keyClicks(box, QStringLiteral("010101001"));
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(bills()->rowCount(), 1);
    EXPECT_EQ(bills()->tag(), QStringLiteral("1"));
}

TEST_F(EditorCommands, InertIdsChangeNothing) {
    const SqlText all = "SELECT * FROM tblSYB ORDER BY id";
    const QStringList before = rowsInFile(editor.DBFilePath(), all);
    editor.commandBars(1)->execute(106);
    editor.commandBars(1)->execute(107);
    editor.commandBars(2)->execute(300);
    editor.commandBars(2)->execute(301);
    editor.commandBars(2)->execute(403);
    editor.commandBars(3)->execute(999);
    EXPECT_EQ(rowsInFile(editor.DBFilePath(), all), before);
}

TEST_F(EditorCommands, TextStillBeingTypedIsCommittedBeforeACommandRuns) {
    click(QStringLiteral("010101"));
    bills()->setCell(0, QStringLiteral("Name"));
    bills()->setFocus();
    QTest::keyClick(bills(), Qt::Key_F2);
    auto* box = bills()->findChild<QLineEdit*>(QStringLiteral("cellEditor"));
    ASSERT_TRUE(box);
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("typed"));
    editor.commandBars(2)->execute(105);
    EXPECT_EQ(bills()->text(1, QStringLiteral("Name")), QStringLiteral("typed"));
    EXPECT_EQ(rowsInFile(editor.DBFilePath(), "SELECT name FROM tblBill WHERE code='010101002'"),
              QStringList{QStringLiteral("typed")});
}

TEST_F(EditorCommands, DetailsOfABillThatIsGoneTakeNoCommands) {
    // The only chapter of its parent: the parent is current when it is gone, and the details stay on the screen.
    editor.ormConn()->Execute("DELETE FROM tblSYB WHERE code>'010101' AND code LIKE '0101__'");
    editor.chapterPane()->CreateTvwSYB();
    click(QStringLiteral("010101"));
    bills()->setRow(0);
    ASSERT_GT(features()->rowCount(), 0);
    ModalAnswers answers;
    answers.press(QMessageBox::Yes);
    editor.commandBars(1)->execute(103);
    EXPECT_FALSE(bills()->hasRows());
    ASSERT_TRUE(features()->hasRows());
    EXPECT_EQ(enabled(3, {300, 301}), QString());
    EXPECT_EQ(enabled(4, {300, 301}), QString());
    EXPECT_EQ(enabled(2, {400, 401, 402, 403}), QString());
    features()->setCell(0, QStringLiteral("Name"));
    QTest::keyClick(features(), Qt::Key_F2);
    EXPECT_FALSE(features()->isEditing());
}
