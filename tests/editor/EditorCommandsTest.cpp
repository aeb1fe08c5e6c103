#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>

#include "tests/support/EditorDriver.h"
#include "tests/support/Libraries.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

class EditorCommands : public ::testing::Test {
protected:
    void click(const QString& code) { user.click(user.tree()->node(u'K' + code)); }

    EditorDriver user{sampleCopy()};
};

}  // namespace

TEST_F(EditorCommands, MenusToolbarsAndPagesAreComplete) {
    QStringList lines;
    for (const QMenu* menu : user.editor()->findChildren<QMenu*>()) {
        QStringList entries;
        for (const QAction* entry : menu->actions())
            entries << entry->text();
        if (!menu->title().isEmpty())
            lines << menu->title() + u": "_s + entries.join(u' ');
    }
    for (const QToolBar* bar : user.editor()->findChildren<QToolBar*>()) {
        QStringList buttons;
        for (const QAction* action : bar->actions())
            if (!action->text().isEmpty() && action->isVisible())
                buttons << action->text() + u'/' + action->toolTip();
        lines << bar->windowTitle() + u": "_s + buttons.join(u' ');
    }
    lines.sort();
    const auto* tabs = user.editor()->findChild<QTabWidget*>(u"tabBillDetail"_s);
    ASSERT_TRUE(tabs);
    EXPECT_EQ(tabs->currentIndex(), 0);
    for (int i = 0; i < tabs->count(); ++i)
        lines << tabs->tabText(i);
    EXPECT_EQ(
        lines,
        QStringList(
            {u"Bill Menu: 添加工程内容 添加工程细节 添加定额 删除"_s,
             u"Bill Menu: 添加清单 删除清单 上移清单 下移清单"_s,
             u"Bill: 查找清单/BillQuery 添加清单/BillNew 删除清单/BillDel 上移/ContentUp 下移/ContentDown"_s,
             u"BillSpec Menu: 添加项目特征 删除项目特征"_s,
             u"Content: 添加目录/ContentNew 添加子目录/ContentAddSub 修改目录/ContentModify "
             "删除目录/ContentDel"_s,
             u"Context Menu: 添加目录 添加子目录 删除目录 修改目录 上移目录 下移目录 展开所有节点 收起所有节点"_s,
             u"SpecEnum Menu: 添加特征值 删除特征值"_s, u"工作内容"_s, u"项目特征"_s, u"计算规则"_s, u"工程内容"_s}));
    EXPECT_EQ(user.editor()->commandBars(1)->action(107)->statusTip(), u"最近打开清单库"_s);
    for (const auto& [host, ids] : {std::pair(1, QList{100, 101, 102, 103, 104, 105, 106, 107}),
                                    {2, QList{200, 201, 202, 104, 105, 300, 301, 400, 401}}})
        for (const int id : ids)
            EXPECT_FALSE(user.editor()->commandBars(host)->action(id)->icon().isNull()) << id;
    EXPECT_EQ(user.editor()->windowTitle(), sampleLibraryName());
    EXPECT_EQ(user.tree()->selectedNode(), user.tree()->firstNode());
    EXPECT_FALSE(user.bills()->hasRows());
}

TEST_F(EditorCommands, TextStillBeingTypedIsCommittedBeforeACommandRuns) {
    click(u"010101"_s);
    EditorDriver::typeOver(user.openEditor(user.bills(), 0, u"Name"_s), u"typed"_s);
    user.run(2, 105);
    EXPECT_EQ(user.bills()->text(1, u"Name"_s), u"typed"_s);
    EXPECT_EQ(rowsInFile(user.path(), "SELECT name FROM tblBill WHERE code='010101002'"), QStringList{u"typed"_s});
}
