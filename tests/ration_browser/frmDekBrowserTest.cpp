#include "ration_browser/frmDekBrowser.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QMainWindow>
#include <QSettings>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <limits>

#include "app/base/Definitions.h"
#include "app/controls/CommandBars.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "ration_browser/RationReceiver.h"
#include "storage/Connection.h"
#include "tests/ration_browser/RationFiles.h"
#include "tests/support/ModalAnswers.h"

namespace {

class Editor final : public RationReceiver {
public:
    void WinCommand(short mode, const QString& deh, const QString& dekID) override {
        calls << QStringLiteral("%1 %2 %3").arg(mode).arg(deh, dekID);
    }
    QStringList takeCalls() { return std::exchange(calls, {}); }

private:
    QStringList calls;
};

/// A main window with the shared browser, as the editor opens it.
class Browser : public ::testing::Test {
protected:
    Browser() {
        files.makeSmall("a.db");
        files.makeSmall("b.db");
        files.list({{"GD02", "安装定额", "b.db", "02"}, {"GD01", "建筑定额", "a.db", "01"}});
        settings().clear();
    }

    static QSettings settings() {
        return {QSettings::defaultFormat(), QSettings::UserScope, QStringLiteral("Tessel"),
                QStringLiteral("frmDekBrowser")};
    }

    frmDekBrowser* open(const QString& dekId) {
        if (!mainWindow) {
            mainWindow = std::make_unique<QMainWindow>();
            mainWindow->setGeometry(10, 10, 700, 500);
            mainWindow->show();
        }
        frmDekBrowser* browser = frmDekBrowser::shared(mainWindow.get());
        browser->setParetnForm(&editor);
        browser->setDekID(dekId);
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

    static QPoint cell(const KeyedGrid* grid, int row, const char* key) {
        const auto index = grid->model()->index(row, grid->column(QString::fromLatin1(key)));
        return grid->visualRect(index).center();
    }

    static void doubleClick(KeyedGrid* grid, int row, const char* key) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell(grid, row, key));
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell(grid, row, key));
    }

    static QStringList rations(const KeyedGrid* grid) {
        QStringList rows;
        for (int row = 0; row < grid->rowCount(); ++row)
            rows << QStringList{grid->text(row, QStringLiteral("id")), grid->text(row, QStringLiteral("DEH")),
                                grid->text(row, QStringLiteral("mc")), grid->text(row, QStringLiteral("DW"))}
                        .join(QLatin1Char('|'));
        return rows;
    }

    static QToolButton* button(frmDekBrowser* browser, int id) {
        QAction* action = browser->CommandBars1()->action(id);
        return qobject_cast<QToolButton*>(browser->findChild<QToolBar*>()->widgetForAction(action));
    }

    RationFiles files;
    Editor editor;
    std::unique_ptr<QMainWindow> mainWindow;
};

}  // namespace

TEST_F(Browser, ShowsTheChosenLibraryAndTheRationsOfAChapter) {
    frmDekBrowser* browser = open(QStringLiteral("GD02"));
    ASSERT_EQ(browser->cboDek()->count(), 2);
    EXPECT_EQ(browser->cboDek()->itemText(0), QStringLiteral("建筑定额"));
    EXPECT_EQ(browser->cboDek()->currentText(), QStringLiteral("安装定额"));
    EXPECT_EQ(browser->parentWidget(), mainWindow.get());
    EXPECT_TRUE(browser->isWindow());
    EXPECT_FALSE(browser->isModal());

    KeyedTree* tree = browser->tvRationContent();
    EXPECT_EQ(tree->nodeCount(), 7);
    EXPECT_FALSE(tree->node(QStringLiteral("K7"))) << "a dead chapter";
    EXPECT_EQ(tree->node(QStringLiteral("K6"))->text(0), QStringLiteral("9.反铲"));
    EXPECT_EQ(KeyedTree::tag(tree->node(QStringLiteral("K6"))), QStringLiteral("1.2.5.1.9"));
    EXPECT_TRUE(rations(browser->grdDEB()).isEmpty());
    EXPECT_FALSE(button(browser, 259)->isEnabled());
    EXPECT_FALSE(button(browser, 260)->isEnabled());

    click(tree, "K12");
    EXPECT_EQ(rations(browser->grdDEB()),
              QStringList({QStringLiteral("101|A1-1|平整场地|100m2"), QStringLiteral("102|a1-2x|原土打夯|")}));
    EXPECT_EQ(browser->grdDEB()->row(), 0);
    QCoreApplication::processEvents();
    EXPECT_TRUE(button(browser, 259)->isEnabled());
    EXPECT_TRUE(button(browser, 260)->isEnabled());

    QTest::keyClick(tree, Qt::Key_Down);
    EXPECT_TRUE(rations(browser->grdDEB()).isEmpty()) << "the next chapter has none";
    click(tree, "K12");
    click(tree, "Root");
    EXPECT_TRUE(rations(browser->grdDEB()).isEmpty());
    QCoreApplication::processEvents();
    EXPECT_FALSE(button(browser, 259)->isEnabled());

    // Rations of the library left behind must not stay beside the name of the new one.
    click(tree, "K12");
    QTest::keyClick(browser->cboDek(), Qt::Key_Up);
    EXPECT_EQ(browser->cboDek()->currentText(), QStringLiteral("建筑定额"));
    EXPECT_EQ(tree->nodeCount(), 7);
    EXPECT_TRUE(rations(browser->grdDEB()).isEmpty());
}

TEST_F(Browser, DekIDSelectsALibraryOrElseTheFirst) {
    frmDekBrowser* browser = open(QStringLiteral("gd02"));
    EXPECT_EQ(browser->cboDek()->currentIndex(), 0) << "ids are compared exactly";
    EXPECT_EQ(browser->DekID(), QStringLiteral("gd02"));
    EXPECT_EQ(browser->tvRationContent()->nodeCount(), 7);
    EXPECT_EQ(open(QStringLiteral("GD02")), browser);
    EXPECT_EQ(browser->cboDek()->currentIndex(), 1);

    // Asked for from another row, the chapter that was being read stays.
    click(browser->tvRationContent(), "K12");
    open(QStringLiteral("GD02"));
    EXPECT_EQ(KeyedTree::key(browser->tvRationContent()->selectedNode()), QStringLiteral("K12"));
    EXPECT_EQ(browser->grdDEB()->rowCount(), 2);
    open(QStringLiteral("GD01"));
    EXPECT_EQ(browser->grdDEB()->rowCount(), 0);
}

TEST_F(Browser, HandsTheRationToTheEditor) {
    frmDekBrowser* browser = open(QStringLiteral("GD01"));
    KeyedGrid* grid = browser->grdDEB();
    click(browser->tvRationContent(), "K12");
    QCoreApplication::processEvents();

    doubleClick(grid, 1, "MC");
    EXPECT_EQ(editor.takeCalls(), QStringList{QStringLiteral("0 a1-2x GD01")});
    QTest::mouseDClick(grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(20, 8));
    EXPECT_TRUE(editor.takeCalls().isEmpty());

    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Up);
    QTest::keyClick(grid, Qt::Key_Return);
    QTest::keyClick(grid, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(editor.takeCalls(), QStringList({QStringLiteral("0 A1-1 GD01"), QStringLiteral("0 A1-1 GD01")}));

    QTest::mouseClick(button(browser, 260), Qt::LeftButton);
    QTest::mouseClick(button(browser, 259), Qt::LeftButton);
    EXPECT_EQ(editor.takeCalls(), QStringList({QStringLiteral("1 A1-1 GD01"), QStringLiteral("0 A1-1 GD01")}));
    for (const int id : {256, 257, 258})
        browser->CommandBars1()->execute(id);
    EXPECT_TRUE(editor.takeCalls().isEmpty());

    // An editor that goes takes itself out, and only itself.
    const Editor other;
    frmDekBrowser::forget(&other);
    EXPECT_EQ(browser->ParetnForm(), &editor);
    frmDekBrowser::forget(&editor);
    doubleClick(grid, 0, "DEH");
    QTest::mouseClick(button(browser, 259), Qt::LeftButton);
    QTest::mouseClick(button(browser, 260), Qt::LeftButton);
    EXPECT_TRUE(editor.takeCalls().isEmpty());
}

TEST_F(Browser, TheCommandTable) {
    frmDekBrowser* browser = open(QStringLiteral("GD01"));
    QStringList commands;
    for (int id = 256; id <= 261; ++id) {
        const QAction* action = browser->CommandBars1()->action(id);
        ASSERT_TRUE(action) << id;
        commands << action->text() + QLatin1Char('/') + action->toolTip();
    }
    EXPECT_EQ(commands.join(QLatin1Char(' ')),
              QStringLiteral("查找/查找 身上/查找上一个 向下/查找下一个 插入/插入 替换/替换 关闭/关闭"));
    QStringList buttons;
    for (const QAction* action : browser->findChild<QToolBar*>()->actions())
        buttons << action->text();
    EXPECT_EQ(buttons, QStringList({QStringLiteral("插入"), QStringLiteral("替换")}));
    for (const auto& [key, width] : {std::pair{"DEH", 123}, {"MC", 333}, {"DW", 53}})
        EXPECT_EQ(browser->grdDEB()->columnWidth(browser->grdDEB()->column(QString::fromLatin1(key))), width) << key;
    click(browser->tvRationContent(), "K6");
    const int units = browser->grdDEB()->columnWidth(browser->grdDEB()->column(QStringLiteral("DW")));
    EXPECT_GT(units, browser->grdDEB()->fontMetrics().horizontalAdvance(QStringLiteral("1000m3")) + 8);
    EXPECT_TRUE(browser->grdDEB()->isColumnHidden(browser->grdDEB()->column(QStringLiteral("Id"))));
}

TEST_F(Browser, MissingAndDamagedFilesAreReportedAndLeaveNothing) {
    files.list({{"GD01", "建筑定额", "a.db", "01"},
                {"NONE", "没有", "none.db", "02"},
                {"BAD", "坏", "bad.db", "03"},
                {"FOREIGN", "别的", "foreign.db", "04"},
                {"Q'", "引号", "a.db", "05"}});
    QFile bad(files.path("bad.db"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write(QByteArray(5000, 'x'));
    bad.close();
    Connection foreign;
    foreign.Open(files.path("foreign.db"), QString(), Connection::readWriteCreate);
    foreign.Execute("CREATE TABLE other (a)");
    foreign.Close();

    frmDekBrowser* browser = open(QStringLiteral("GD01"));
    const auto choose = [&](int index) {
        open(QStringLiteral("GD01"));
        click(browser->tvRationContent(), "K12");
        EXPECT_EQ(browser->grdDEB()->rowCount(), 2);
        ModalAnswers answers;
        answers.closeAnything();
        browser->cboDek()->setFocus();
        for (int i = 0; i < index; ++i)
            QTest::keyClick(browser->cboDek(), Qt::Key_Down);
        EXPECT_EQ(browser->cboDek()->currentIndex(), index);
        EXPECT_EQ(browser->grdDEB()->rowCount(), 0);
        return answers.takeSeen();
    };
    const QString log = appPath + QStringLiteral("Error.log");

    EXPECT_EQ(choose(1),
              QStringList{QStringLiteral("提示: ") + files.path("none.db") + QStringLiteral(" 文件不存在!")});
    EXPECT_EQ(browser->tvRationContent()->nodeCount(), 0);
    EXPECT_FALSE(QFile::exists(files.path("none.db"))) << "looking for a file must not make it";
    EXPECT_EQ(choose(2).last(), QStringLiteral("提示: ") + files.path("bad.db") + QStringLiteral(" 文件已损坏!"));
    EXPECT_EQ(browser->tvRationContent()->nodeCount(), 0);
    EXPECT_FALSE(QFile::exists(log)) << "these two are no recorded errors";

    const QString noTable = choose(3).last();
    EXPECT_TRUE(noTable.contains(QStringLiteral("frmDekBrowser.CreateRationContent"))) << qPrintable(noTable);
    EXPECT_EQ(browser->tvRationContent()->nodeCount(), 1);
    EXPECT_TRUE(choose(4).last().contains(QStringLiteral("frmDekBrowser.LoadSYB")));
    EXPECT_EQ(browser->tvRationContent()->nodeCount(), 0);
}

TEST_F(Browser, WithoutASystemDatabaseTheListIsEmpty) {
    QFile::remove(appPath + QStringLiteral("tessel.dat"));
    ModalAnswers answers;
    answers.closeAnything();
    frmDekBrowser* browser = open(QStringLiteral("GD01"));
    ASSERT_EQ(answers.seen().size(), 1);
    EXPECT_TRUE(answers.seen().first().contains(QStringLiteral("frmDekBrowser.LoadDekCom2boList")));
    EXPECT_EQ(browser->cboDek()->count(), 0);
    EXPECT_EQ(browser->tvRationContent()->nodeCount(), 0);
    EXPECT_FALSE(QFile::exists(appPath + QStringLiteral("tessel.dat")));
}

TEST_F(Browser, EscHidesClosingUnloadsAndThePlacementIsRemembered) {
    frmDekBrowser* browser = open(QStringLiteral("GD01"));
    browser->setGeometry(120, 80, 640, 420);
    click(browser->tvRationContent(), "K12");
    QTest::keyClick(browser->tvRationContent(), Qt::Key_Escape);
    EXPECT_FALSE(browser->isVisible());
    EXPECT_EQ(browser->grdDEB()->rowCount(), 2);
    EXPECT_FALSE(settings().contains(QStringLiteral("Settings/MainLeft")));

    browser->show();
    browser->close();
    EXPECT_FALSE(browser->isVisible());
    EXPECT_EQ(browser->cboDek()->count(), 0);
    EXPECT_EQ(settings().value(QStringLiteral("Settings/MainLeft")).toInt(), browser->x());
    EXPECT_EQ(settings().value(QStringLiteral("Settings/MainHeight")).toInt(), 420);

    // The main window takes the browser with it; the next one stands where this one stood.
    browser->resize(700, 450);
    open(QStringLiteral("GD01"));
    EXPECT_EQ(browser->geometry(), QRect(120, 80, 640, 420));
    browser->setGeometry(60, 40, 660, 440);
    mainWindow.reset();
    EXPECT_EQ(open(QStringLiteral("GD01"))->geometry(), QRect(60, 40, 660, 440));
}

TEST_F(Browser, WhatWasNeverShownOrMakesNoSenseLeavesThePlacementAlone) {
    settings().setValue(QStringLiteral("Settings/MainLeft"), 5);
    {
        const frmDekBrowser unused(nullptr);
        frmDekBrowser loaded(nullptr);
        loaded.setDekID(QStringLiteral("GD01"));
        loaded.resize(500, 500);
    }
    EXPECT_EQ(settings().value(QStringLiteral("Settings/MainLeft")).toInt(), 5);
    EXPECT_FALSE(settings().contains(QStringLiteral("Settings/MainWidth")));

    for (const char* key : {"MainLeft", "MainTop", "MainWidth", "MainHeight"})
        settings().setValue(QStringLiteral("Settings/") + QString::fromLatin1(key), QStringLiteral("2147483647"));
    frmDekBrowser* browser = open(QStringLiteral("GD01"));
    EXPECT_TRUE(browser->screen()->availableGeometry().contains(browser->geometry()));
    browser->close();
    settings().setValue(QStringLiteral("Settings/MainWidth"), QStringLiteral("宽"));
    settings().setValue(QStringLiteral("Settings/MainHeight"), -7);
    open(QStringLiteral("GD01"));
    EXPECT_GE(browser->height(), browser->minimumHeight());

    browser->showMinimized();
    settings().setValue(QStringLiteral("Settings/MainLeft"), 5);
    browser->close();
    EXPECT_EQ(settings().value(QStringLiteral("Settings/MainLeft")).toInt(), 5) << "minimised: nothing is remembered";
}

TEST_F(Browser, NeverWritesToALibrary) {
    const auto content = [&] {
        QFile file(files.path("a.db"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    const QByteArray before = content();
    frmDekBrowser* browser = open(QStringLiteral("GD01"));
    click(browser->tvRationContent(), "K12");
    doubleClick(browser->grdDEB(), 0, "MC");
    QTest::keyClick(browser->grdDEB(), Qt::Key_F2);
    QTest::keyClicks(browser->grdDEB(), QStringLiteral("x"));
    browser->close();
    EXPECT_EQ(content(), before);
}

TEST_F(Browser, ALargeLibraryShowsItsTreeAtOnce) {
    files.make("big.db", [](Connection& library) {
        library.Execute(
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i<499) INSERT INTO DeSYB"
            " SELECT i+1, i/25+1, (i%25+4)/5, CASE WHEN i%25=0 THEN 0 ELSE (i%25-1)%5 END, 0, 0, '章'||i, 0 FROM n");
        library.Execute(
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i<19999) INSERT INTO DEB"
            " SELECT i+1, i%500+1, 'A1-'||i, '挖掘机挖土方 一、二类土 深度'||i||'m以内', '1000m3' FROM n");
    });
    files.list({{"GD01", "建筑定额", "a.db", "01"}, {"BIG", "大", "big.db", "02"}});
    frmDekBrowser* browser = open(QStringLiteral("GD01"));
    qint64 best = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 5; ++i) {
        browser->setDekID(QStringLiteral("GD01"));
        QCoreApplication::processEvents();
        QElapsedTimer timer;
        timer.start();
        browser->setDekID(QStringLiteral("BIG"));
        QCoreApplication::processEvents();
        best = std::min(best, timer.elapsed());
    }
    ASSERT_EQ(browser->tvRationContent()->nodeCount(), 501);
    EXPECT_LE(best, 100);
    RecordProperty("milliseconds", static_cast<int>(best));
    click(browser->tvRationContent(), "K500");
    EXPECT_EQ(browser->grdDEB()->rowCount(), 40);
}
