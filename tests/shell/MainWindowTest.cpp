#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>

#include "tests/shell/ShellFixture.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

class MainWindow : public ShellFixture {
protected:
    QStringList shownMenus() const {
        QStringList shown;
        for (const QAction* menu : window.menuBar()->actions()) {
            if (!menu->isVisible())
                continue;
            Q_EMIT menu->menu()->aboutToShow();
            QStringList entries;
            for (const QAction* entry : menu->menu()->actions())
                if (entry->isVisible())
                    entries << entry->text() + (entry->isEnabled() ? u""_s : u"-"_s);
            shown << menu->text() + u": "_s + entries.join(u' ');
        }
        return shown;
    }
};

}  // namespace

TEST_F(MainWindow, HasItsMenusToolbarAndStatus) {
    EXPECT_EQ(window.windowTitle(), u"清单库编辑器"_s);
    const QStringList ordinary = {u"文件(&F): 新建(&N) 打开(&O) &Window List 退出(&E)"_s, u"帮助(&H): 帮助 关于"_s};
    EXPECT_EQ(shownMenus(), ordinary);
    EXPECT_FALSE(window.commandBars()->isEnabled(260) || window.commandBars()->isEnabled(261));
    EXPECT_EQ(window.findChild<QToolBar*>()->windowTitle(), u"Standard"_s);
    EXPECT_EQ(window.statusBar()->findChild<QLabel*>()->text(), u"Ready"_s);
    for (const int id : {256, 257, 260, 769})
        EXPECT_EQ(window.commandBars()->action(id)->icon().isNull(), id == 260) << id;

    window.LoadBillDB(copyOfSampleLibrary(u"a&b.bdb"_s));
    window.LoadBillDB(copyOfSampleLibrary(u"c.bdb"_s));
    QCoreApplication::processEvents();
    EXPECT_EQ(shownMenus(),
              QStringList({u"文件(&F): 新建(&N) 打开(&O) 关闭(&C) 关闭全部(&L) 退出(&E)"_s,
                           u"窗口(&W): 层叠窗口 横排窗口 竖排窗口 &1 a&&b.bdb &2 c.bdb"_s, u"帮助(&H): 帮助 关于"_s}));
    run(261);
    EXPECT_TRUE(window.editors().isEmpty());
    EXPECT_EQ(shownMenus(), ordinary);
}

TEST_F(MainWindow, PlaceholdersAnnounceThemselvesAndOnlyExitAsks) {
    window.LoadBillDB(copyOfSampleLibrary());
    ModalAnswers answers;
    answers.closeAnything();
    window.commandBars()->action(35003)->setProperty("parameter", u"x.bdb"_s);
    for (const int id : {258, 259, 768, 769, 35003})
        run(id);
    QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &window; }));
    QTest::keyClick(&window, Qt::Key_Q, Qt::AltModifier);
    EXPECT_EQ(answers.takeSeen(),
              QStringList({u"Button Clicked: 保存(&S) clicked"_s, u"Button Clicked: 另存为(&A) clicked"_s,
                           u"Button Clicked: 关于 clicked"_s, u"Button Clicked: 帮助 clicked"_s,
                           u"清单库编辑器: Open x.bdb"_s, u"打开"_s, u"退出程序: 确认要关闭窗体吗？"_s}));
    EXPECT_TRUE(window.isVisible() && window.editors().size() == 1);
    EXPECT_TRUE(window.close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.editors().isEmpty() && answers.seen().isEmpty());
}
