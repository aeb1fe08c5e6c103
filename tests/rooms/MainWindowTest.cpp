#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

#include "app/base/Definitions.h"
#include "storage/LibraryConnection.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/Libraries.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

/// The main window as a user has it after the start.
class MainWindow : public ::testing::Test {
protected:
    MainWindow() {
        installSamples();
        window.MDIForm_Load();
        window.show();
        EXPECT_TRUE(makeActive(&window));
    }

    void run(int id) {
        window.commandBars()->execute(id);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EditorDriver::settle();
    }

    QString load(const QString& name) {
        const QString path = copyOfSampleLibrary(name);
        window.LoadBillDB(path);
        return path;
    }

    QString captions() const {
        QStringList all;
        for (const frmEditor* editor : window.editors())
            all << editor->windowTitle();
        return all.join(u' ');
    }

    /// Runs a command whose dialog has the box `box`, and has each of the names typed into that, in place of what is
    /// there; a dialog that is still there then is left. Message boxes are answered with `presses`. Gives what they
    /// said.
    QString enter(int command, const QString& box, const QStringList& names, std::initializer_list<int> presses = {}) {
        ModalAnswers answers;
        answers.then([&](QWidget* dialog) {
            auto* line = dialog->findChild<QLineEdit*>(box);
            for (const QString& name : names) {
                EXPECT_TRUE(makeActive(dialog));
                line->selectAll();
                typeText(line, name);
                QTest::keyClick(line, Qt::Key_Return);
            }
            if (dialog->isVisible())
                QTest::keyClick(dialog, Qt::Key_Escape);
        });
        for (const int button : presses)
            answers.press(button);
        run(command);
        return answers.seen().mid(1).join(u' ');
    }
    QString make(const QStringList& names, std::initializer_list<int> presses = {}) {
        return enter(256, u"txtFileName"_s, names, presses);
    }

    /// Opens `name`; gives the library in front and how many are open.
    QString open(const QString& name) {
        enter(257, u"fileNameEdit"_s, {name});
        return window.activeEditor()->DBFilePath() + QString::number(window.editors().size());
    }

    QStringList shownMenus() const {
        QStringList shown;
        for (const QAction* menu : window.menuBar()->actions()) {
            if (!menu->isVisible())
                continue;
            Q_EMIT menu->menu()->aboutToShow();
            QStringList entries;
            for (const QAction* entry : menu->menu()->actions())
                if (entry->isVisible())
                    entries << entry->text();
            shown << menu->text() + u": "_s + entries.join(u' ');
        }
        return shown;
    }

    frmMain window;
};

}  // namespace

TEST_F(MainWindow, HasOneSetOfMenusWithoutAndOneWithLibraries) {
    const QStringList ordinary = {u"文件(&F): 新建(&N) 打开(&O) &Window List 退出(&E)"_s, u"帮助(&H): 帮助 关于"_s};
    EXPECT_EQ(shownMenus(), ordinary);
    load(u"a&b.bdb"_s);
    load(u"c.bdb"_s);
    QCoreApplication::processEvents();
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(shownMenus(), QStringList({u"文件(&F): 新建(&N) 打开(&O) 关闭(&C) 关闭全部(&L) 退出(&E)"_s,
                                             u"窗口(&W): 层叠窗口 横排窗口 竖排窗口 &1 a&&b.bdb &2 c.bdb"_s,
                                             u"帮助(&H): 帮助 关于"_s}));
    // The pane shows what the active library says.
    const auto* pane = window.statusBar()->findChild<QLabel*>();
    Q_EMIT window.activeEditor()->statusText(u"<b>查找"_s);
    Q_EMIT window.editors().constFirst()->statusText(u"一"_s);
    EXPECT_EQ(pane->text(), u"<b>查找"_s);
    run(261);
    EXPECT_TRUE(window.editors().isEmpty());
    EXPECT_EQ(shownMenus(), ordinary);
}

TEST_F(MainWindow, PlaceholdersAnnounceThemselvesAndOnlyExitAsks) {
    load(u"copy.bdb"_s);
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
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(makeActive(&window));
    for (const Qt::Key close : {Qt::Key_E, Qt::Key_F4}) {
        load(u"c.bdb"_s);
        // Claims every key for itself, as text boxes do with some, and on some systems with Ctrl+E.
        auto* box = new QKeySequenceEdit(window.activeEditor());
        box->show();
        box->setFocus();
        QTest::keyClick(box, close, Qt::ControlModifier);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(window.editors().size(), 1);
    }
    // Nothing can be hidden: there is no menu for it.
    auto* bar = window.findChild<QToolBar*>();
    QContextMenuEvent asked(QContextMenuEvent::Mouse, bar->rect().center(), bar->mapToGlobal(bar->rect().center()));
    QCoreApplication::sendEvent(bar, &asked);
    EXPECT_FALSE(QApplication::activePopupWidget());

    window.setWindowState(Qt::WindowNoState);
    window.resize(911, 622);
    EXPECT_TRUE(window.close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.editors().isEmpty() && answers.seen().isEmpty());
    EXPECT_EQ(frmMain().size(), QSize(911, 622)) << "the placement is remembered";
}

TEST_F(MainWindow, NewRefusesBadNamesAsksBeforeItReplacesALibraryAndNeverTouchesAnOpenOne) {
    using enum QMessageBox::StandardButton;
    EXPECT_EQ(make({u"   "_s, u"x|"_s, u" 新库.v2 "_s}, {Ok, Ok}),
              u"输入错误: 输入文件名不能为空！ 输入错误: 文件不能包含下列任何字符之一：\\/:*?\"<>|"_s);
    ASSERT_TRUE(window.activeEditor());
    EXPECT_EQ(window.activeEditor()->DBFilePath(), dataPath + u"新库.v2.bdb"_s);

    const QString question = u"提示: 存在相同的文件名，是否覆盖原来的文件？"_s;
    const QString path = copyOfSampleLibrary(u"old.bdb"_s);
    QFile(path).setPermissions(QFileDevice::ReadOwner);
    const auto bills = [&] { return rowsInFile(path, "SELECT ID FROM tblBill").size(); };
    EXPECT_EQ(make({}) + make({u"old"_s}, {No}), question);
    EXPECT_GT(bills(), 0);
    EXPECT_EQ(make({u"old"_s}, {Yes}), question);
    EXPECT_EQ(captions(), u"新库.v2.bdb old.bdb"_s);
    EXPECT_EQ(bills(), 0);
    OtherProgram(path).run("INSERT INTO tblBill(Code) VALUES('010101001')");
    EXPECT_EQ(make({u"old"_s}, {Yes, Ok}), question + u" 提示: 创建文件失败！"_s);
    EXPECT_EQ(bills(), 1);
    // Where letter case counts this is another file.
    if (!QFile::exists(dataPath + u"OLD.bdb"_s)) {
        EXPECT_EQ(make({u"OLD"_s}), QString());
        EXPECT_EQ(window.activeEditor()->windowTitle(), u"OLD.bdb（%1）"_s.arg(dataPath.chopped(1)));
        EXPECT_EQ(bills(), 1);
    }
}

TEST_F(MainWindow, OpenShowsALibraryOnceAndBringsItToTheFrontAfterwards) {
    const QString first = copyOfSampleLibrary(u"first.bdb"_s), second = copyOfSampleLibrary(u"second.bdb"_s);
    open(first);
    EXPECT_EQ(open(second), second + u'2');
    window.findChild<QMdiArea*>()->subWindowList().constFirst()->showMinimized();
    EXPECT_EQ(open(u"  first "_s), first + u'2');
    EXPECT_FALSE(window.activeEditor()->parentWidget()->isMinimized());
    EXPECT_EQ(open(dataPath + u"no such.bdb"_s), first + u'2');
    EXPECT_EQ(open(u" second "_s), second + u'2');
    // A file of its own where letter case counts; the comparison does not look at the file system.
    QFile::copy(first, dataPath + u"FIRST.BDB"_s);
    EXPECT_EQ(open(dataPath + u"FIRST.BDB"_s), first + u'2');
    QFile::remove(dataPath + u"FIRST.BDB"_s);

    const QTemporaryDir folder;
    const QString namesake = folder.filePath(u"First.bdb"_s);
    ASSERT_TRUE(QFile::copy(first, namesake));
    window.LoadBillDB(namesake);
    EXPECT_EQ(captions(), u"first.bdb（%1） second.bdb First.bdb（%2）"_s.arg(
                              QDir::toNativeSeparators(QFileInfo(first).path()), folder.path()));
    run(260);
    EXPECT_EQ(captions(), u"first.bdb second.bdb"_s);
}

TEST_F(MainWindow, ALibraryWhoseCompanionCannotBeDetachedKeepsItsConnection) {
    const QString path = load(u"first.bdb"_s);
    const Connection* connection = window.activeEditor()->ormConn();
    // One that came later is not attached.
    overwrite(companionPath(path), {});
    ModalAnswers answers;
    answers.closeAnything();
    run(260);
    EXPECT_TRUE(window.editors().isEmpty());
    EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.Form_Unload"_s});
    EXPECT_EQ(connection->State(), 1);
    QFile::remove(companionPath(path));
}

// One above the other, beside one another, and behind one another; more than fit get lanes. The active window comes
// first and stays active; a minimised one stays so.
TEST_F(MainWindow, ArrangesItsWindowsAsTheCommandSaysAndLeavesRoomToWorkIn) {
    auto* area = window.findChild<QMdiArea*>();
    window.setWindowState(Qt::WindowNoState);
    window.resize(1300, 900);
    QMdiSubWindow* minimised = area->addSubWindow(new QWidget);
    minimised->showMinimized();
    for (const int count : {3, 11}) {
        while (area->subWindowList().size() <= count)
            area->addSubWindow(new QWidget)->show();
        QMdiSubWindow* active = area->subWindowList().at(2);
        area->setActiveSubWindow(active);
        for (const int id : {513, 514, 512}) {
            SCOPED_TRACE(testing::Message() << count << " windows, command " << id);
            run(id);
            EXPECT_TRUE(area->currentSubWindow() == active && minimised->isMinimized());
            const QRect whole = area->viewport()->rect();
            QRegion covered;
            for (const QMdiSubWindow* one : area->subWindowList().mid(1)) {
                const QRect place = one->geometry();
                EXPECT_TRUE(whole.contains(place) && place.width() >= 200 && place.height() >= 220);
                EXPECT_TRUE(id == 512 || !covered.intersects(place));
                covered += place;
            }
            if (id == 512) {
                EXPECT_EQ(area->subWindowList(QMdiArea::StackingOrder).constLast(), active);
                EXPECT_NE(area->subWindowList().at(1)->pos(), active->pos());
                EXPECT_TRUE(active->width() > 800 && active->height() > 500);
            } else {
                EXPECT_EQ(active->pos(), QPoint(0, 0));
                EXPECT_TRUE(covered == QRegion(whole));
                EXPECT_EQ(id == 513 ? active->width() == whole.width() : active->height() == whole.height(),
                          count == 3);
            }
        }
    }
}
