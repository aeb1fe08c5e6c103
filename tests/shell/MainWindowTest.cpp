#include "app/shell/frmMain.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>

#include "app/base/Definitions.h"
#include "editor/frmEditor.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"

namespace {

class MainWindow : public ::testing::Test {
protected:
    MainWindow() {
        installSamples();
        window.MDIForm_Load();
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QStringList shownMenus() const {
        QStringList shown;
        for (QAction* action : window.menuBar()->actions()) {
            if (action->isVisible())
                shown << menuLine(action);
        }
        return shown;
    }

    static QString menuLine(QAction* action) {
        Q_EMIT action->menu()->aboutToShow();
        QStringList entries;
        for (const QAction* entry : action->menu()->actions()) {
            if (entry->isVisible())
                entries << entry->text() + (entry->isEnabled() ? QString() : QStringLiteral("-"));
        }
        return action->text() + QLatin1String(": ") + entries.join(QLatin1Char(' '));
    }

    frmMain window;
};

}  // namespace

TEST_F(MainWindow, HasTheDefaultMenusUntilALibraryIsOpen) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("清单库编辑器"));
    EXPECT_EQ(shownMenus(), QStringList({QStringLiteral("文件(&F): 新建(&N) 打开(&O) &Window List 退出(&E)"),
                                         QStringLiteral("帮助(&H): 帮助 关于")}));
    EXPECT_FALSE(window.commandBars()->isEnabled(260));
    EXPECT_FALSE(window.commandBars()->isEnabled(261));

    window.LoadBillDB(copyOfSampleLibrary(QStringLiteral("a&b.bdb")));
    window.LoadBillDB(copyOfSampleLibrary(QStringLiteral("c.bdb")));
    QCoreApplication::processEvents();
    EXPECT_EQ(shownMenus(), QStringList({QStringLiteral("文件(&F): 新建(&N) 打开(&O) 关闭(&C) 关闭全部(&L) 退出(&E)"),
                                         QStringLiteral("窗口(&W): 层叠窗口 横排窗口 竖排窗口 &1 a&&b.bdb &2 c.bdb"),
                                         QStringLiteral("帮助(&H): 帮助 关于")}));

    window.commandBars()->execute(261);
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.editors().isEmpty());
    EXPECT_TRUE(shownMenus()[0].contains(QStringLiteral("&Window List")));
    window.commandBars()->execute(261);
}

TEST_F(MainWindow, PlaceholdersAnnounceThemselves) {
    ModalAnswers answers;
    answers.closeAnything();
    for (const int id : {258, 259, 768, 769})
        window.commandBars()->execute(id);
    window.commandBars()->action(35003)->setProperty("parameter", QStringLiteral("x.bdb"));
    window.commandBars()->execute(35003);
    EXPECT_EQ(answers.seen(),
              QStringList(
                  {QStringLiteral("Button Clicked: 保存(&S) clicked"),
                   QStringLiteral("Button Clicked: 另存为(&A) clicked"), QStringLiteral("Button Clicked: 关于 clicked"),
                   QStringLiteral("Button Clicked: 帮助 clicked"), QStringLiteral("清单库编辑器: Open x.bdb")}));
}

TEST_F(MainWindow, ToolbarIconsAndStatusBar) {
    const auto* bar = window.findChild<QToolBar*>();
    ASSERT_TRUE(bar);
    EXPECT_EQ(bar->windowTitle(), QStringLiteral("Standard"));
    EXPECT_FALSE(window.commandBars()->action(256)->icon().isNull());
    EXPECT_FALSE(window.commandBars()->action(257)->icon().isNull());
    EXPECT_FALSE(window.commandBars()->action(769)->icon().isNull());
    EXPECT_TRUE(window.commandBars()->action(260)->icon().isNull());
    EXPECT_EQ(window.statusBar()->findChild<QLabel*>()->text(), QStringLiteral("Ready"));
}

TEST_F(MainWindow, OnlyExitAsks) {
    window.LoadBillDB(copyOfSampleLibrary());
    {
        ModalAnswers answers;
        answers.press(QMessageBox::No);
        QTest::keyClick(&window, Qt::Key_Q, Qt::AltModifier);
        EXPECT_EQ(answers.seen(), QStringList{QStringLiteral("退出程序: 确认要关闭窗体吗？")});
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(window.editors().size(), 1);
    }
    ModalAnswers answers;
    EXPECT_TRUE(window.close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.editors().isEmpty());
}

TEST_F(MainWindow, TheKeysOfNewAndOpenWork) {
    ModalAnswers answers;
    answers.then([](QWidget* dialog) { dialog->close(); }).then([](QWidget* dialog) { dialog->close(); });
    const auto activated = [this] { return QApplication::activeWindow() == &window; };
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor(activated));
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor(activated));
    EXPECT_EQ(answers.seen(), QStringList({QStringLiteral("新建文件"), QStringLiteral("打开")}));
    window.LoadBillDB(copyOfSampleLibrary());
    QTest::qWait(20);
    QTest::keyClick(&window, Qt::Key_E, Qt::ControlModifier);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.editors().isEmpty());
}

TEST_F(MainWindow, OpensTheLibraryOfTheCommandLine) {
    const QString path = copyOfSampleLibrary(QStringLiteral("named.BDB"));
    for (const QString& named : {path, path + QLatin1Char(' '), dataPath + QStringLiteral("none.bdb"), dataPath}) {
        cmdFile = named;
        frmMain started;
        started.MDIForm_Load();
        EXPECT_EQ(started.editors().size(), named == path ? 1 : 0) << qPrintable(named);
    }
    cmdFile.clear();
}
