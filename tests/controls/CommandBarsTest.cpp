#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QStatusTipEvent>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "app/controls/CommandBars.h"
#include "tests/support/TestMain.h"

namespace {

class CommandBarsTest : public ::testing::Test {
protected:
    CommandBarsTest() {
        const auto note = [this](const char* what) { return [this, what] { ran << QLatin1String(what); }; };
        bars.addActions({{100, QStringLiteral("添加目录"), QStringLiteral("ContentNew"), QStringLiteral("添加目录"),
                          QStringLiteral("Content"), note("add")},
                         {103, QStringLiteral("删除目录"), QStringLiteral("ContentDel"), QStringLiteral("删除"),
                          QStringLiteral("Content"), note("delete"), [this] { return mayDelete; }},
                         {106, QStringLiteral("左移目录"), QString(), QString(), QStringLiteral("Content")}});
        QObject::connect(&bars, &CommandBars::unhandled, &bars,
                         [this](int id) { ran << QStringLiteral("unhandled %1").arg(id); });
        new QVBoxLayout(&window);
    }

    void show() {
        window.show();
        window.activateWindow();
        (void)QTest::qWaitForWindowActive(&window);
    }

    QWidget window;
    CommandBars& bars = *new CommandBars(&window, QStringLiteral("CommandBars1"));
    bool mayDelete = false;
    QStringList ran;
};

}  // namespace

TEST_F(CommandBarsTest, RunsOnlyWhatIsThereAndEnabled) {
    bars.execute(100);
    bars.execute(103);
    bars.execute(106);
    bars.execute(999);
    EXPECT_EQ(ran, (QStringList{QStringLiteral("add"), QStringLiteral("unhandled 106")}));
    EXPECT_FALSE(bars.isEnabled(103));
    EXPECT_FALSE(bars.isEnabled(999));
    EXPECT_EQ(bars.action(999), nullptr);
    // The rule counts as it is now, not as it was shown.
    mayDelete = true;
    bars.execute(103);
    EXPECT_EQ(ran.last(), QStringLiteral("delete"));
}

TEST_F(CommandBarsTest, AskedFirstIsWhetherTypedTextIsCommitted) {
    bars.beforeExecute = [this] {
        ran << QStringLiteral("commit");
        mayDelete = true;
        return true;
    };
    bars.execute(103);
    EXPECT_EQ(ran, (QStringList{QStringLiteral("commit"), QStringLiteral("delete")}));
    ran.clear();
    bars.beforeExecute = [] { return false; };
    bars.execute(100);
    EXPECT_EQ(ran, QStringList());
}

TEST_F(CommandBarsTest, TheEndOfAUsersEventShowsTheRulesAnew) {
    EXPECT_FALSE(bars.action(103)->isEnabled());
    guarded({"tests", "event"}, [this] { mayDelete = true; });
    EXPECT_FALSE(bars.action(103)->isEnabled());
    QApplication::processEvents();
    EXPECT_TRUE(bars.action(103)->isEnabled());
}

TEST_F(CommandBarsTest, ToolbarButtonsShowTheirWholeCaption) {
    QToolBar* bar = bars.createToolBar(QStringLiteral("Content"), {100, 103, 999});
    window.layout()->addWidget(bar);
    bars.loadIcons(joinPath(builtProgramFolder(), QStringLiteral("Res/Icons/ToolBar.bmp")), {100, 103});
    show();
    const QList<QToolButton*> buttons = bar->findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
    QList<QToolButton*> commands;
    for (QToolButton* button : buttons)
        if (button->defaultAction())
            commands << button;
    ASSERT_EQ(commands.size(), 2);
    for (const QToolButton* button : commands) {
        EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text()));
        EXPECT_GE(button->height(), button->fontMetrics().height() + 20);
        EXPECT_FALSE(button->icon().isNull());
        EXPECT_EQ(button->height(), commands.first()->height());
    }
    EXPECT_EQ(commands[0]->toolTip(), QStringLiteral("ContentNew"));
    EXPECT_EQ(commands[1]->statusTip(), QStringLiteral("删除"));
    QTest::mouseClick(commands[1], Qt::LeftButton);
    QTest::mouseClick(commands[0], Qt::LeftButton);
    EXPECT_EQ(ran, QStringList{QStringLiteral("add")});
    EXPECT_EQ(bars.action(100)->objectName(), QStringLiteral("CommandBars1.100"));
}

TEST_F(CommandBarsTest, MenusRenameEntriesAndAskTheRulesWhenShown) {
    QMenu* menu = bars.createMenu(QStringLiteral("Context Menu"),
                                  {{100}, {103, QStringLiteral("删除")}, {103, QStringLiteral("删去")}});
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_EQ(menu->actions().at(0)->text(), QStringLiteral("添加目录"));
    EXPECT_EQ(menu->actions().at(1)->text(), QStringLiteral("删除"));
    show();
    menu->popup(window.mapToGlobal(QPoint(5, 5)));
    EXPECT_FALSE(menu->actions().at(1)->isEnabled());
    menu->close();
    mayDelete = true;
    menu->popup(window.mapToGlobal(QPoint(5, 5)));
    EXPECT_TRUE(menu->actions().at(2)->isEnabled());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(2)).center());
    EXPECT_EQ(ran, QStringList{QStringLiteral("delete")});
}

TEST_F(CommandBarsTest, ShortcutsAndTheTextEntryRunTheirCommand) {
    QToolBar* bar = bars.createToolBar(QStringLiteral("Bill"), {103});
    QLineEdit* entry = bars.addTextEntry(bar, 203, QStringLiteral("查找："), 100);
    window.layout()->addWidget(bar);
    bars.addShortcut(QKeySequence(Qt::CTRL | Qt::Key_N), 100);
    show();
    entry->setFocus();
    QTest::keyClicks(entry, QStringLiteral("abc"));
    QTest::keyClick(entry, Qt::Key_Return);
    EXPECT_EQ(ran.size(), 1);
    QTest::keyClick(entry, Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(ran.size(), 2);
    EXPECT_EQ(entry->text(), QStringLiteral("abc"));
}

TEST_F(CommandBarsTest, ACommandMayDestroyItsWindow) {
    auto* closing = new QWidget;
    auto* own = new CommandBars(closing, QStringLiteral("own"));
    own->addActions({{1, QStringLiteral("关闭"), QString(), QString(), QString(), [&] { delete closing; }}});
    own->execute(1);
    SUCCEED();
}

TEST(IconStrip, GivesTransparentImagesForBothDensities) {
    const std::vector<QIcon> icons =
        iconsFromStrip(joinPath(builtProgramFolder(), QStringLiteral("Res/Icons/ToolBar.bmp")));
    ASSERT_EQ(icons.size(), 15U);
    for (const QIcon& icon : icons) {
        const QImage ordinary = icon.pixmap(QSize(20, 20), 1.0).toImage();
        const QImage dense = icon.pixmap(QSize(20, 20), 2.0).toImage();
        EXPECT_EQ(ordinary.size(), QSize(20, 20));
        EXPECT_EQ(dense.size(), QSize(40, 40));
        EXPECT_EQ(qAlpha(ordinary.pixel(0, 0)), 0);
        EXPECT_EQ(qAlpha(dense.pixel(0, 0)), 0);
        EXPECT_NE(dense, ordinary.scaled(40, 40));
    }
    EXPECT_TRUE(iconsFromStrip(QStringLiteral("nowhere.bmp")).empty());
}
