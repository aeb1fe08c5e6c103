#include "app/controls/CommandBars.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QPointer>
#include <QWidget>

#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;

namespace {

class CommandBarsTest : public ::testing::Test {
protected:
    CommandBarsTest() {
        bars.addActions(
            {{100, u"添加目录"_s, u"ContentNew"_s, u"添加目录"_s, u"Content"_s, [this] { ran << u"add"_s; }},
             {103, u"删除目录"_s, u"ContentDel"_s, u"删除"_s, u"Content"_s, [this] { ran << u"delete"_s; },
              [this] { return mayDelete; }},
             {106, u"左移目录"_s, QString(), QString(), u"Content"_s}});
        QObject::connect(&bars, &CommandBars::unhandled, &bars, [this](int id) { ran << QString::number(id); });
    }

    QString takeRan() { return std::exchange(ran, {}).join(u' '); }

    QWidget window;
    CommandBars& bars = *new CommandBars(&window, u"CommandBars1"_s);
    const QString strip = joinPath(builtProgramFolder(), u"Res/Icons/ToolBar.bmp"_s);
    bool mayDelete = false;
    QStringList ran;
};

}  // namespace

TEST_F(CommandBarsTest, RunOnlyWhatIsThereAndEnabledOnceTypedTextIsCommitted) {
    for (const int id : {100, 103, 106, 999})
        bars.execute(id);
    EXPECT_EQ(takeRan(), u"add 106"_s);
    EXPECT_FALSE(bars.isEnabled(999));
    // The rule counts as it is then, not as it was shown.
    bars.beforeExecute = [this] { return mayDelete = true; };
    bars.execute(103);
    bars.beforeExecute = [] { return false; };
    bars.execute(100);
    EXPECT_EQ(takeRan(), u"delete"_s);
    // The end of a user's event shows the rules anew.
    mayDelete = false;
    guarded({"tests", "event"}, [] {});
    QApplication::processEvents();
    EXPECT_FALSE(bars.action(103)->isEnabled());
    guarded({"tests", "event"}, [this] { mayDelete = true; });
    QApplication::processEvents();
    EXPECT_TRUE(bars.action(103)->isEnabled());
}

TEST_F(CommandBarsTest, ACommandMayDestroyItsWindow) {
    QPointer<QWidget> closing = new QWidget;
    auto* own = new CommandBars(closing, u"own"_s);
    own->addActions({{1, u"关闭"_s, QString(), QString(), QString(), [&] { delete closing; }}});
    own->execute(1);
    EXPECT_FALSE(closing);
}

TEST_F(CommandBarsTest, EachIconOfTheStripHasAPixmapForBothDensities) {
    const std::vector<QIcon> icons = iconsFromStrip(strip);
    ASSERT_EQ(icons.size(), 15U);
    for (const QIcon& icon : icons)
        EXPECT_NE(icon.pixmap(QSize(20, 20), 2.0).toImage(), icon.pixmap(QSize(20, 20), 1.0).toImage().scaled(40, 40));
    EXPECT_TRUE(iconsFromStrip(u"nowhere.bmp"_s).empty());
}
