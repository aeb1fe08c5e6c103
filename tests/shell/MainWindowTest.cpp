#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>

#include "editor/frmEditor.h"
#include "tests/shell/ShellFixture.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

/// Claims every key for itself, as text boxes do with some, and on some systems with Ctrl+E.
class GreedyBox : public QLineEdit {
public:
    using QLineEdit::QLineEdit;
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride)
            event->accept();
        return event->type() == QEvent::ShortcutOverride || QLineEdit::event(event);
    }
};

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
    EXPECT_TRUE(makeActive(&window));
    QTest::keyClick(&window, Qt::Key_Q, Qt::AltModifier);
    EXPECT_EQ(answers.takeSeen(),
              QStringList({u"Button Clicked: 保存(&S) clicked"_s, u"Button Clicked: 另存为(&A) clicked"_s,
                           u"Button Clicked: 关于 clicked"_s, u"Button Clicked: 帮助 clicked"_s,
                           u"清单库编辑器: Open x.bdb"_s, u"打开"_s, u"退出程序: 确认要关闭窗体吗？"_s}));
    EXPECT_TRUE(window.isVisible() && window.editors().size() == 1);
    window.LoadBillDB(copyOfSampleLibrary(u"c.bdb"_s));
    EXPECT_TRUE(makeActive(&window));
    for (const Qt::Key close : {Qt::Key_E, Qt::Key_F4}) {
        const qsizetype open = window.editors().size();
        auto* box = new GreedyBox(window.activeEditor());
        box->show();
        box->setFocus();
        QTest::keyClick(box, close, Qt::ControlModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return window.editors().size() == open - 1; }));
    }
    // Nothing can be hidden: there is no menu for it.
    const QPoint middle = window.findChild<QToolBar*>()->rect().center();
    QContextMenuEvent asked(QContextMenuEvent::Mouse, middle, window.findChild<QToolBar*>()->mapToGlobal(middle));
    QCoreApplication::sendEvent(window.findChild<QToolBar*>(), &asked);
    EXPECT_FALSE(QApplication::activePopupWidget());

    window.LoadBillDB(copyOfSampleLibrary());
    window.setWindowState(Qt::WindowNoState);
    window.resize(911, 622);
    EXPECT_TRUE(window.close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.editors().isEmpty() && answers.seen().isEmpty());
    EXPECT_EQ(frmMain().size(), QSize(911, 622)) << "the placement is remembered";
}

TEST_F(MainWindow, ThePaneShowsWhatTheActiveLibrarySays) {
    const auto pane = [this] { return window.statusBar()->findChild<QLabel*>()->text(); };
    window.LoadBillDB(copyOfSampleLibrary());
    frmEditor* first = window.activeEditor();
    Q_EMIT first->statusText(u"<b>查找"_s);
    EXPECT_EQ(pane(), u"<b>查找"_s);
    Q_EMIT first->statusText(QString());
    EXPECT_EQ(pane(), u"Ready"_s);
    Q_EMIT first->statusText(u"一"_s);
    window.LoadBillDB(copyOfSampleLibrary(u"c.bdb"_s));
    EXPECT_EQ(pane(), u"Ready"_s);
    Q_EMIT first->statusText(u"二"_s);
    EXPECT_EQ(pane(), u"Ready"_s);
}
