#include "ration_browser/frmDekBrowser.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QToolBar>

#include "administration/RationFiles.h"
#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "app/base/UserSettings.h"
#include "app/controls/CommandBars.h"
#include "ration_browser/ElidedLine.h"
#include "ration_browser/RationReceiver.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

struct Editor final : RationReceiver {
    void WinCommand(RationMode mode, const QString& deh, const QString& dekID) override {
        calls += u"%1 %2 %3;"_s.arg(static_cast<int>(mode)).arg(deh, dekID);
    }
    QString receivingRow() const override { return row; }
    QRect receivingRect() const override { return rect; }
    QString takeCalls() { return std::exchange(calls, {}); }

    QString calls, row;
    QRect rect;
};

/// A key as the platform sends it: down at `at` milliseconds, up a moment later.
void stroke(QKeyCombination keys, unsigned long at, bool repeat) {
    QWidget* focus = QApplication::focusWidget();
    const Qt::KeyboardModifiers modifiers = keys.keyboardModifiers();
    QKeyEvent down(QEvent::KeyPress, keys.key(), modifiers, {}, repeat), up(QEvent::KeyRelease, keys.key(), modifiers);
    down.setTimestamp(at);
    up.setTimestamp(at + 1);
    if (!qt_sendShortcutOverrideEvent(focus, at, keys.key(), modifiers, {}, repeat))
        QCoreApplication::sendEvent(focus, &down);
    QCoreApplication::sendEvent(focus, &up);
}

/// A main window with the shared browser, as the editor opens it.
class Browser : public ::testing::Test {
protected:
    Browser() {
        // One chapter below another, a dead one, and rations in two of them.
        writeRationLibrary(file(u"a.db"_s),
                           {{{3, {1}, u"机械土石方"_s},
                             {6, {1, 1}, u"反铲"_s},
                             {7, {1, 2}, u"作废"_s, true},
                             {12, {2}, u"土石方工程"_s},
                             {13, {2, 1}, u"砌筑"_s}},
                            {{12, u"A1-1"_s, {}, u"100m2"_s}, {12, u"a1-2x"_s, {}, {}}, {6, u"B"_s, {}, u"m"_s}}});
        writeSystemDatabase(appPath + u"tessel.dat"_s, {{u"GD02"_s, u"安装"_s, u"a.db"_s, {}, u"02"_s},
                                                        {u"GD01"_s, u"建筑"_s, u"a.db"_s, {}, u"01"_s},
                                                        {u"NO"_s, u"无"_s, u"n.db"_s, {}, u"03"_s}});
        settings.clear();
    }

    static QString file(const QString& name) { return joinPath(dataPath + u"广东省"_s, name); }

    void open(const char* dekId) {
        if (!mainWindow) {
            mainWindow = std::make_unique<QMainWindow>();
            mainWindow->show();
        }
        browser = frmDekBrowser::shared(mainWindow.get());
        browser->setParetnForm(&editor);
        browser->setDekID(QString::fromLatin1(dekId));
        browser->show();
        EXPECT_TRUE(makeActive(browser));
        tree = browser->tvRationContent();
        grid = browser->grdDEB();
    }

    void click(const char* key) const {
        EditorDriver::click(tree, tree->node(QString::fromLatin1(key)));
        QCoreApplication::processEvents();
    }

    QPoint cell(int row) const { return grid->visualRect(grid->model()->index(row, grid->column(u"MC"_s))).center(); }

    /// What the browser shows: "library>chapter>rations, * before the current one>open nodes".
    QString shown() const {
        QString rations, open;
        for (int row = 0; row < grid->rowCount(); ++row)
            rations += (row == grid->row() ? u"*"_s : u" "_s) + grid->text(row, u"DEH"_s) + grid->text(row, u"DW"_s);
        for (const auto* node : tree->nodes())
            open += node->isExpanded() ? u' ' + KeyedTree::key(node) : QString();
        const QString chapter = KeyedTree::key(tree->selectedNode());
        return QStringList{browser->cboDek()->currentText(), chapter, rations, open}.join(u'>');
    }

    QWidget* button(int id) const {
        return browser->findChild<QToolBar*>()->widgetForAction(browser->CommandBars1()->action(id));
    }

    QSettings settings = userSettings(u"frmDekBrowser"_s);
    Editor editor;
    std::unique_ptr<QMainWindow> mainWindow;
    frmDekBrowser* browser = nullptr;
    KeyedTree* tree = nullptr;
    KeyedGrid* grid = nullptr;
};

}  // namespace

TEST_F(Browser, ShowsTheRationsOfAChapterOfTheAskedOrElseTheFirstLibraryAsItWasLeft) {
    open("gd01");
    EXPECT_EQ(shown(), u"建筑>>> Root"_s) << "the first one: ids are compared exactly";
    open("GD02");
    EXPECT_EQ(shown(), u"安装>>> Root"_s);
    EXPECT_EQ(tree->nodeCount(), 5) << "without the dead chapter";
    EXPECT_FALSE(button(259)->isEnabled() || button(260)->isEnabled());
    click("K12");
    tree->setAllExpanded(false);
    tree->node(u"Root"_s)->setExpanded(true);
    tree->node(u"K12"_s)->setExpanded(true);
    EXPECT_TRUE(button(259)->isEnabled() && button(260)->isEnabled());
    QTest::keyClick(grid, Qt::Key_Down);
    const QString left = u"安装>K12> A1-1100m2*a1-2x> Root K12"_s;
    EXPECT_EQ(shown(), left);
    open("GD02");
    EXPECT_EQ(shown(), left) << "asked for from another row";
    browser->close();
    EXPECT_EQ(browser->cboDek()->count() + tree->nodeCount() + grid->rowCount(), 0);
    open("GD02");
    EXPECT_EQ(shown(), left) << "closed";
    QTest::keyClick(browser->cboDek(), Qt::Key_Up);
    EXPECT_EQ(shown(), u"建筑>>> Root"_s);
    open("GD02");
    EXPECT_EQ(shown(), left) << "after another library";
    click("Root");
    EXPECT_EQ(shown(), u"安装>Root>> Root K12"_s);

    // Nothing of it stays beside the name of a library that is not there.
    click("K12");
    ModalAnswers answers;
    answers.closeAnything();
    QTest::keyClick(browser->cboDek(), Qt::Key_Down);
    EXPECT_EQ(answers.takeSeen(), QStringList{u"提示: "_s + file(u"n.db"_s) + u" 文件不存在!"_s});
    EXPECT_EQ(shown(), u"无>>>"_s);
    EXPECT_FALSE(QFile::exists(file(u"n.db"_s))) << "looking for a file must not make it";
}

TEST_F(Browser, HandsTheRationToTheEditorThatIsThere) {
    const QString inserted = u"0 a1-2x GD01;"_s, replaced = u"1 a1-2x GD01;"_s;
    open("GD01");
    editor.row = QString(5000, u'长');
    click("K12");
    EXPECT_EQ(browser->lblReceiver()->text().size(), 2000) << "told anew after whatever the user did";
    grid->setRow(1);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell(1));
    QTest::mouseDClick(grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(20, 8));
    for (const int id : {256, 257, 258, 259, 260})
        browser->CommandBars1()->execute(id);
    EXPECT_EQ(editor.takeCalls(), inserted + inserted + replaced);
    // A right click chooses the row that its menu means.
    grid->setRow(0);
    QTest::mouseClick(grid->viewport(), Qt::RightButton, {}, cell(1));
    auto* menu = browser->findChild<QMenu*>(u"Ration Menu"_s);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().last()).center());
    EXPECT_EQ(editor.takeCalls(), replaced);
    // An editor that goes takes itself out, and only itself.
    const Editor other;
    frmDekBrowser::forget(&other);
    EXPECT_EQ(browser->ParetnForm(), &editor);
    frmDekBrowser::forget(&editor);
    EXPECT_TRUE(browser->lblReceiver()->text().startsWith(u"定额放不进去"_s));
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell(0));
    EXPECT_EQ(editor.takeCalls(), QString());
}

// However long a key is held down: X11 sends its repeats as strokes of their own, and they are not always marked.
TEST_F(Browser, TabGoesTheWayOfTheEyeAndAKeyWritesOnceWhereverTheFocusIs) {
    open("GD01");
    click("K12");
    const QString inserted = u"0 A1-1 GD01;"_s, replaced = u"1 A1-1 GD01;"_s;
    // What Return, Enter, Ctrl+Return and Space do there. A combo box drops its list down by Space.
    QList<std::pair<QWidget*, QString>> ring{{browser->cboDek(), {}},
                                             {button(259), inserted.repeated(4)},
                                             {button(260), replaced.repeated(4)},
                                             {tree, {}},
                                             {grid, inserted.repeated(2) + replaced}};
    unsigned long now = 1000;
    for (const Qt::Key tab : {Qt::Key_Tab, Qt::Key_Backtab}) {
        ring.last().first->setFocus();
        for (const auto& [focus, written] : ring) {
            QTest::keyClick(QApplication::focusWidget(), tab);
            ASSERT_EQ(QApplication::focusWidget(), focus);
            for (const QKeyCombination key : {QKeyCombination(Qt::Key_Return), Qt::KeypadModifier | Qt::Key_Enter,
                                              Qt::CTRL | Qt::Key_Return, QKeyCombination(Qt::Key_Space)}) {
                if (focus == browser->cboDek() && key.key() == Qt::Key_Space)
                    continue;
                now += 100;
                for (const unsigned long later : {0, 1, 40})
                    stroke(key, now + later, later == 40);
            }
            EXPECT_EQ(editor.takeCalls(), written);
        }
        std::reverse(ring.begin(), ring.end());
    }
}

TEST_F(Browser, OpensBesideTheReceivingRowUntilTheUserPutsItElsewhere) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const auto besideTheRowAt = [&](int y) {
        editor.rect = QRect(screen.left(), y, screen.width(), 28);
        open("GD01");
        return screen.contains(browser->geometry()) && !browser->frameGeometry().intersects(editor.rect);
    };
    // Placements that make no sense are none.
    settings.setValue(u"Settings/MainLeft"_s, u"2147483647"_s);
    settings.setValue(u"Settings/MainHeight"_s, -7);
    EXPECT_TRUE(besideTheRowAt(screen.bottom() - 100));
    browser->showMinimized();
    browser->close();
    EXPECT_EQ(settings.value(u"Settings/MainHeight"_s), -7) << "minimised: nothing is remembered";
    EXPECT_TRUE(besideTheRowAt(screen.top() + 100));
    mainWindow.reset();
    EXPECT_TRUE(besideTheRowAt(screen.bottom() - 100)) << "another day";

    const QRect own(30, 60, 660, 400);
    browser->setGeometry(own);
    QTest::keyClick(browser, Qt::Key_Escape);
    EXPECT_FALSE(browser->isVisible() || besideTheRowAt(own.center().y()));
    EXPECT_EQ(browser->geometry(), own);
    browser->showMaximized();
    QCoreApplication::processEvents();
    mainWindow.reset();
    open("GD01");
    EXPECT_EQ(browser->geometry(), own) << "maximised, and gone with the main window";
}
