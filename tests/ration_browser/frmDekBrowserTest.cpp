#include "ration_browser/frmDekBrowser.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QSettings>
#include <QTest>
#include <QToolButton>

#include "app/base/Definitions.h"
#include "app/controls/CommandBars.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "ration_browser/ElidedLine.h"
#include "ration_browser/RationReceiver.h"
#include "storage/Connection.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/RationLibraries.h"

using namespace Qt::StringLiterals;

namespace {

class Editor final : public RationReceiver {
public:
    void WinCommand(RationMode mode, const QString& deh, const QString& dekID) override {
        calls << u"%1 %2 %3"_s.arg(static_cast<int>(mode)).arg(deh, dekID);
    }
    QString receivingRow() const override { return row; }
    QRect receivingRect() const override { return rect; }
    QStringList takeCalls() { return std::exchange(calls, {}); }

    QString row;
    QRect rect;

private:
    QStringList calls;
};

/// A main window with the shared browser, as the editor opens it.
class Browser : public ::testing::Test {
protected:
    Browser() {
        // Chapters of all five levels, a dead one, and rations in two of them.
        for (const char* file : {"a.db", "b.db"})
            files.make(
                file,
                {"101,12,'A1-1','平整场地','100m2'", "102,12,'a1-2x','原土打夯',NULL",
                 "103,6,'A1-50','挖掘机挖土','1000m3'"},
                {"12,1,0,0,0,0,'土石方工程',0", "3,1,2,0,0,0,'机械土石方',0", "4,1,2,5,0,0,'挖运',0",
                 "5,1,2,5,1,0,'挖掘机',0", "6,1,2,5,1,9,'反铲',0", "7,1,3,0,0,0,'作废',1", "8,2,0,0,0,0,'砌筑工程',0"});
        files.list({{"GD02", "安装定额", "b.db", "02"}, {"GD01", "建筑定额", "a.db", "01"}});
        settings().clear();
    }

    static QSettings settings() {
        return {QSettings::defaultFormat(), QSettings::UserScope, u"Tessel"_s, u"frmDekBrowser"_s};
    }
    static QString name(const char* key) { return u"Settings/"_s + QString::fromLatin1(key); }
    static int remembered(const char* key) { return settings().value(name(key), -1).toInt(); }

    frmDekBrowser* open(const char* dekId) {
        if (!mainWindow) {
            mainWindow = std::make_unique<QMainWindow>();
            mainWindow->setGeometry(10, 10, 700, 500);
            mainWindow->show();
        }
        frmDekBrowser* browser = frmDekBrowser::shared(mainWindow.get());
        browser->setParetnForm(&editor);
        browser->setDekID(QString::fromLatin1(dekId));
        browser->show();
        browser->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(browser));
        return browser;
    }

    static void click(KeyedTree* tree, const char* key) {
        auto* node = tree->node(QString::fromLatin1(key));
        ASSERT_TRUE(node) << key;
        tree->scrollToItem(node);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
    }

    static QPoint cell(const KeyedGrid* grid, int row) {
        return grid->visualRect(grid->model()->index(row, grid->column(u"MC"_s))).center();
    }
    static void doubleClick(KeyedGrid* grid, int row) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell(grid, row));
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell(grid, row));
    }

    /// The key `code` as the platform sends it: down at `at` milliseconds, up at `at` + 1.
    static void stroke(int code, Qt::KeyboardModifiers modifiers, unsigned long at, bool repeat = false) {
        QWidget* focus = QApplication::focusWidget();
        if (!qt_sendShortcutOverrideEvent(focus, at, code, modifiers, {}, repeat))
            send(focus, QKeyEvent(QEvent::KeyPress, code, modifiers, {}, repeat), at);
        send(focus, QKeyEvent(QEvent::KeyRelease, code, modifiers), at + 1);
    }
    static void send(QWidget* focus, QKeyEvent event, unsigned long at) {
        event.setTimestamp(at);
        QCoreApplication::sendEvent(focus, &event);
    }

    /// What the user is looking at: chapter, ration, open nodes.
    static QString place(const frmDekBrowser* browser) {
        QStringList seen{KeyedTree::key(browser->tvRationContent()->selectedNode()),
                         browser->grdDEB()->text(browser->grdDEB()->row(), u"DEH"_s)};
        for (const auto* node : browser->tvRationContent()->nodes())
            if (node->isExpanded())
                seen << KeyedTree::key(node);
        return seen.join(u' ');
    }

    QStringList rations() const {
        const KeyedGrid* grid = frmDekBrowser::shared(mainWindow.get())->grdDEB();
        QStringList rows;
        for (int row = 0; row < grid->rowCount(); ++row) {
            QStringList cells;
            for (const char* key : {"id", "DEH", "mc", "DW"})
                cells << grid->text(row, QString::fromLatin1(key));
            rows << cells.join(u'|');
        }
        return rows;
    }

    static QToolButton* button(frmDekBrowser* browser, int id) {
        for (auto* button : browser->findChildren<QToolButton*>())
            if (button->defaultAction() == browser->CommandBars1()->action(id))
                return button;
        return nullptr;
    }

    RationLibraries files;
    Editor editor;
    std::unique_ptr<QMainWindow> mainWindow;
};

}  // namespace

TEST_F(Browser, ShowsTheRationsOfAChapterOfTheAskedOrElseTheFirstLibrary) {
    frmDekBrowser* browser = open("gd02");
    EXPECT_EQ(browser->cboDek()->currentText(), u"建筑定额"_s) << "ids are compared exactly";
    EXPECT_EQ(browser->DekID(), u"gd02"_s);
    EXPECT_EQ(open("GD02"), browser);
    EXPECT_EQ(browser->cboDek()->currentText(), u"安装定额"_s);
    EXPECT_TRUE(browser->parentWidget() == mainWindow.get() && browser->isWindow() && !browser->isModal());
    KeyedTree* tree = browser->tvRationContent();
    EXPECT_EQ(tree->nodeCount(), 7) << "without the dead chapter";
    const auto enabled = [&] {
        QCoreApplication::processEvents();
        EXPECT_EQ(button(browser, 259)->isEnabled(), button(browser, 260)->isEnabled());
        return button(browser, 259)->isEnabled();
    };
    EXPECT_FALSE(enabled());
    click(tree, "K12");
    EXPECT_EQ(rations(), QStringList({u"101|A1-1|平整场地|100m2"_s, u"102|a1-2x|原土打夯|"_s}));
    EXPECT_EQ(browser->grdDEB()->row(), 0);
    EXPECT_TRUE(enabled());
    QTest::keyClick(browser->cboDek(), Qt::Key_Up);
    EXPECT_EQ(browser->cboDek()->currentText(), u"建筑定额"_s);
    EXPECT_TRUE(rations().isEmpty() && !enabled());
    click(tree, "K12");
    QTest::keyClick(tree, Qt::Key_Down);
    EXPECT_TRUE(rations().isEmpty()) << "the next chapter has none";
    click(tree, "K12");
    click(tree, "Root");
    EXPECT_TRUE(rations().isEmpty());
    click(tree, "K6");
    const KeyedGrid* grid = browser->grdDEB();
    EXPECT_GT(grid->columnWidth(grid->column(u"DW"_s)), grid->fontMetrics().horizontalAdvance(u"1000m3"_s) + 8);
}

TEST_F(Browser, ShowsALibraryAsItWasLeft) {
    frmDekBrowser* browser = open("GD01");
    click(browser->tvRationContent(), "K12");
    browser->grdDEB()->setRow(1);
    for (const char* key : {"K12", "K4"})
        browser->tvRationContent()->node(QString::fromLatin1(key))->setExpanded(true);
    const QString left = place(browser);
    EXPECT_EQ(left, u"K12 a1-2x Root K12 K4"_s);
    open("GD01");
    EXPECT_EQ(place(browser), left) << "asked for from another row";
    browser->close();
    open("GD01");
    EXPECT_EQ(place(browser), left) << "closed";
    open("GD02");
    EXPECT_EQ(place(browser), u"  Root"_s);
    open("GD01");
    EXPECT_EQ(place(browser), left) << "after another library";
}

TEST_F(Browser, HandsTheRationToTheEditorThatIsThere) {
    const QString insert = u"0 a1-2x GD01"_s, replace = u"1 a1-2x GD01"_s;
    frmDekBrowser* browser = open("GD01");
    KeyedGrid* grid = browser->grdDEB();
    click(browser->tvRationContent(), "K12");
    QCoreApplication::processEvents();
    doubleClick(grid, 1);
    QTest::mouseDClick(grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(20, 8));
    EXPECT_EQ(editor.takeCalls(), QStringList{insert});
    for (const int id : {256, 257, 258, 259, 260})
        browser->CommandBars1()->execute(id);
    EXPECT_EQ(editor.takeCalls(), (QStringList{insert, replace}));
    QTest::keyClick(grid, Qt::Key_F2);
    EXPECT_FALSE(grid->isEditing()) << "a ration library is only read";

    // A right click chooses the row that its menu means.
    grid->setRow(0);
    QTest::mouseClick(grid->viewport(), Qt::RightButton, {}, cell(grid, 1));
    auto* menu = browser->findChild<QMenu*>(u"Ration Menu"_s);
    EXPECT_EQ(menu->actions().size(), 2);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().last()).center());
    EXPECT_EQ(editor.takeCalls(), QStringList{replace});

    // An editor that goes takes itself out, and only itself.
    const Editor other;
    frmDekBrowser::forget(&other);
    EXPECT_EQ(browser->ParetnForm(), &editor);
    frmDekBrowser::forget(&editor);
    doubleClick(grid, 0);
    browser->CommandBars1()->execute(259);
    EXPECT_EQ(editor.takeCalls(), QStringList());
}

// However long a key is held down: X11 sends its repeats as strokes of their own, and they are not always marked.
TEST_F(Browser, AStrokeOfAKeyWritesOnceWhereverTheFocusIs) {
    const QStringList inserts{u"0 A1-1 GD01"_s}, replaces{u"1 A1-1 GD01"_s};
    frmDekBrowser* browser = open("GD01");
    click(browser->tvRationContent(), "K12");
    QCoreApplication::processEvents();
    const struct {
        QWidget* focus;
        int key;
        Qt::KeyboardModifiers modifiers;
        QStringList calls;
    } cases[] = {{browser->grdDEB(), Qt::Key_Return, Qt::NoModifier, inserts},
                 {browser->grdDEB(), Qt::Key_Enter, Qt::KeypadModifier, inserts},
                 {browser->grdDEB(), Qt::Key_Return, Qt::ControlModifier, replaces},
                 {button(browser, 259), Qt::Key_Return, Qt::NoModifier, inserts},
                 {button(browser, 260), Qt::Key_Enter, Qt::KeypadModifier, replaces},
                 {button(browser, 260), Qt::Key_Space, Qt::NoModifier, replaces},
                 {browser->tvRationContent(), Qt::Key_Return, Qt::NoModifier, {}},
                 {browser->cboDek(), Qt::Key_Return, Qt::NoModifier, {}}};
    unsigned long now = 1000;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        c.focus->setFocus();
        for (int again = 0; again < 2; ++again) {
            stroke(c.key, c.modifiers, now += 100);
            stroke(c.key, c.modifiers, now + 1);
            stroke(c.key, c.modifiers, now + 40, true);
            EXPECT_EQ(editor.takeCalls(), c.calls);
        }
    }
}

TEST_F(Browser, TabGoesTheWayOfTheEye) {
    frmDekBrowser* browser = open("GD01");
    click(browser->tvRationContent(), "K12");
    QCoreApplication::processEvents();
    QList<QWidget*> ring{browser->cboDek(), button(browser, 259), button(browser, 260), browser->tvRationContent(),
                         browser->grdDEB()};
    for (const int key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        ring.last()->setFocus();
        for (QWidget* next : ring) {
            QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
            EXPECT_EQ(QApplication::focusWidget(), next);
        }
        std::reverse(ring.begin(), ring.end());
    }
}

TEST_F(Browser, TellsWhichRowReceivesTheRation) {
    editor.row = u"→ a.bdb · 010101001 平整场地 · 人工平整"_s;
    frmDekBrowser* browser = open("GD01");
    EXPECT_EQ(browser->lblReceiver()->text(), editor.row);
    editor.row = QString(5000, u'长') + u"\n尾"_s;
    click(browser->tvRationContent(), "K12");
    QCoreApplication::processEvents();
    EXPECT_EQ(browser->lblReceiver()->text(), editor.row.left(2000)) << "after whatever the user did";
    EXPECT_LT(browser->minimumSizeHint().width(), 900);
    frmDekBrowser::forget(&editor);
    EXPECT_TRUE(browser->lblReceiver()->text().startsWith(u"没有"_s));
}

TEST_F(Browser, MissingAndDamagedFilesAreReportedAndLeaveNothing) {
    files.list({{"GD01", "建筑定额", "a.db", "01"},
                {"NONE", "没有", "none.db", "02"},
                {"BAD", "坏", "bad.db", "03"},
                {"FOREIGN", "别的", "foreign.db", "04"},
                {"Q'", "引号", "a.db", "05"}});
    files.makeDamaged("bad.db");
    Connection foreign;
    foreign.Open(files.path("foreign.db"), QString(), Connection::readWriteCreate);
    foreign.Execute("CREATE TABLE other (a)");
    foreign.Close();

    frmDekBrowser* browser = open("GD01");
    ModalAnswers answers;
    answers.closeAnything();
    struct {
        QString said;
        int nodes;
    } const expected[] = {{u"提示: "_s + files.path("none.db") + u" 文件不存在!"_s, 0},
                          {u"提示: "_s + files.path("bad.db") + u" 文件已损坏!"_s, 0},
                          {u"frmDekBrowser.CreateRationContent"_s, 1},
                          {u"frmDekBrowser.LoadSYB"_s, 0}};
    for (int index = 1; index <= 4; ++index) {
        open("GD01");
        click(browser->tvRationContent(), "K12");
        EXPECT_EQ(rations().size(), 2);
        answers.takeSeen();
        browser->cboDek()->setFocus();
        for (int i = 0; i < index; ++i)
            QTest::keyClick(browser->cboDek(), Qt::Key_Down);
        EXPECT_EQ(answers.takePlaces().last(), expected[index - 1].said);
        EXPECT_EQ(browser->tvRationContent()->nodeCount(), expected[index - 1].nodes);
        EXPECT_TRUE(rations().isEmpty());
        EXPECT_EQ(QFile::exists(appPath + u"Error.log"_s), index > 2) << "missing and damaged are no recorded errors";
    }
    EXPECT_FALSE(QFile::exists(files.path("none.db"))) << "looking for a file must not make it";

    browser->close();
    QFile::remove(files.systemDatabasePath());
    open("GD01");
    EXPECT_EQ(answers.takePlaces(), QStringList{u"frmDekBrowser.LoadDekCom2boList"_s});
    EXPECT_EQ(browser->cboDek()->count() + browser->tvRationContent()->nodeCount(), 0);
    EXPECT_FALSE(QFile::exists(files.systemDatabasePath()));
}

TEST_F(Browser, EscHidesClosingUnloadsAndThePlacementIsRemembered) {
    frmDekBrowser* browser = open("GD01");
    browser->setGeometry(120, 80, 640, 420);
    click(browser->tvRationContent(), "K12");
    QTest::keyClick(browser->tvRationContent(), Qt::Key_Escape);
    EXPECT_FALSE(browser->isVisible());
    EXPECT_EQ(browser->grdDEB()->rowCount(), 2);
    EXPECT_FALSE(settings().contains(name("MainLeft")));

    browser->show();
    browser->close();
    EXPECT_FALSE(browser->isVisible());
    EXPECT_EQ(browser->cboDek()->count(), 0);
    EXPECT_EQ(remembered("MainLeft"), 120);
    EXPECT_EQ(remembered("MainHeight"), 420);

    // The main window takes the browser with it; the next one stands where this one stood.
    browser->resize(700, 450);
    open("GD01");
    EXPECT_EQ(browser->geometry(), QRect(120, 80, 640, 420));
    browser->setGeometry(60, 40, 660, 440);
    mainWindow.reset();
    EXPECT_EQ(open("GD01")->geometry(), QRect(60, 40, 660, 440));
}

TEST_F(Browser, OpensBesideTheReceivingRowUntilTheUserPutsItElsewhere) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const auto besideTheRowAt = [&](int y) {
        editor.rect = QRect(screen.left(), y, screen.width(), 28);
        const frmDekBrowser* browser = open("GD01");
        return screen.contains(browser->geometry()) && !browser->frameGeometry().intersects(editor.rect);
    };
    EXPECT_TRUE(besideTheRowAt(screen.bottom() - 100));
    frmDekBrowser* browser = frmDekBrowser::shared(mainWindow.get());
    browser->hide();
    EXPECT_TRUE(besideTheRowAt(screen.top() + 100)) << "hidden";
    browser->close();
    EXPECT_TRUE(besideTheRowAt(screen.bottom() - 100)) << "closed";
    mainWindow.reset();
    EXPECT_TRUE(besideTheRowAt(screen.top() + 100)) << "another day";
    browser = frmDekBrowser::shared(mainWindow.get());
    const QRect own(30, 60, 660, 400);
    browser->setGeometry(own);
    browser->hide();
    EXPECT_FALSE(besideTheRowAt(own.center().y()));
    EXPECT_EQ(browser->geometry(), own);
    browser->close();
    EXPECT_FALSE(besideTheRowAt(own.center().y()));
    EXPECT_EQ(browser->geometry(), own);
}

TEST_F(Browser, WhatWasNeverShownOrMakesNoSenseLeavesThePlacementAlone) {
    settings().setValue(name("MainLeft"), 5);
    {
        const frmDekBrowser unused(nullptr);
        frmDekBrowser loaded(nullptr);
        loaded.setDekID(u"GD01"_s);
        loaded.resize(500, 500);
    }
    EXPECT_EQ(remembered("MainLeft"), 5);
    EXPECT_FALSE(settings().contains(name("MainWidth")));

    for (const char* key : {"MainLeft", "MainTop", "MainWidth", "MainHeight"})
        settings().setValue(name(key), u"2147483647"_s);
    frmDekBrowser* browser = open("GD01");
    EXPECT_TRUE(browser->screen()->availableGeometry().contains(browser->geometry()));
    browser->close();
    settings().setValue(name("MainWidth"), u"宽"_s);
    settings().setValue(name("MainHeight"), -7);
    open("GD01");
    EXPECT_GE(browser->height(), browser->minimumHeight());

    browser->showMinimized();
    settings().setValue(name("MainLeft"), 5);
    browser->close();
    EXPECT_EQ(remembered("MainLeft"), 5) << "minimised: nothing is remembered";
}
