#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolBar>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "app/shell/frmMain.h"
#include "editor/frmEditor.h"
#include "storage/LibraryConnection.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/ShippedProgram.h"
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
        QCoreApplication::processEvents();
    }

    QString load(const QString& name) {
        const QString path = copyOfSampleLibrary(name);
        window.LoadBillDB(path);
        return path;
    }

    QStringList captions() const {
        QStringList all;
        for (const frmEditor* editor : window.editors())
            all << editor->windowTitle();
        return all;
    }

    /// Runs Open and types `name` into the file dialog; gives the library in front and how many are open.
    QString open(const QString& name) {
        ModalAnswers answers;
        answers.then([&](QWidget* dialog) {
            auto* box = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
            ASSERT_TRUE(box);
            box->setText(name);
            QTest::keyClick(box, Qt::Key_Return);
        });
        run(257);
        return window.activeEditor()->DBFilePath() + QString::number(window.editors().size());
    }

    /// Types each name into the name dialog in place of what is there and presses Enter; then presses its button
    /// `last`, or else Esc.
    static std::function<void(QWidget*)> enter(const QStringList& names, const QString& last = {}) {
        return [=](QWidget* dialog) {
            auto* box = dialog->findChild<QLineEdit*>(u"txtFileName"_s);
            for (const QString& name : names) {
                EXPECT_TRUE(makeActive(dialog) && box->hasFocus());
                box->selectAll();
                typeText(box, name);
                QTest::keyClick(box, Qt::Key_Return);
            }
            if (!last.isEmpty())
                QTest::mouseClick(dialog->findChild<QPushButton*>(last), Qt::LeftButton);
            else if (dialog->isVisible())
                QTest::keyClick(dialog, Qt::Key_Escape);
        };
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
    EXPECT_FALSE(window.commandBars()->isEnabled(260) || window.commandBars()->isEnabled(261));
    for (const int id : {256, 257, 260, 769})
        EXPECT_EQ(window.commandBars()->action(id)->icon().isNull(), id == 260) << id;
    load(u"a&b.bdb"_s);
    load(u"c.bdb"_s);
    QCoreApplication::processEvents();
    EXPECT_EQ(shownMenus(),
              QStringList({u"文件(&F): 新建(&N) 打开(&O) 关闭(&C) 关闭全部(&L) 退出(&E)"_s,
                           u"窗口(&W): 层叠窗口 横排窗口 竖排窗口 &1 a&&b.bdb &2 c.bdb"_s, u"帮助(&H): 帮助 关于"_s}));
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
    EXPECT_TRUE(window.isVisible() && window.editors().size() == 1);
    load(u"c.bdb"_s);
    EXPECT_TRUE(makeActive(&window));
    for (const Qt::Key close : {Qt::Key_E, Qt::Key_F4}) {
        const qsizetype open = window.editors().size();
        auto* box = new GreedyBox(window.activeEditor());
        box->show();
        box->setFocus();
        QTest::keyClick(box, close, Qt::ControlModifier);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(window.editors().size(), open - 1);
    }
    // Nothing can be hidden: there is no menu for it.
    auto* bar = window.findChild<QToolBar*>();
    QContextMenuEvent asked(QContextMenuEvent::Mouse, bar->rect().center(), bar->mapToGlobal(bar->rect().center()));
    QCoreApplication::sendEvent(bar, &asked);
    EXPECT_FALSE(QApplication::activePopupWidget());

    load(u"copy.bdb"_s);
    window.setWindowState(Qt::WindowNoState);
    window.resize(911, 622);
    EXPECT_TRUE(window.close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.editors().isEmpty() && answers.seen().isEmpty());
    EXPECT_EQ(frmMain().size(), QSize(911, 622)) << "the placement is remembered";
}

TEST_F(MainWindow, ThePaneShowsWhatTheActiveLibrarySays) {
    const auto said = [this](frmEditor* editor, const QString& text) {
        Q_EMIT editor->statusText(text);
        return window.statusBar()->findChild<QLabel*>()->text();
    };
    load(u"copy.bdb"_s);
    frmEditor* first = window.activeEditor();
    EXPECT_EQ(said(first, u"<b>查找"_s), u"<b>查找"_s);
    EXPECT_EQ(said(first, {}), u"Ready"_s);
    said(first, u"一"_s);
    load(u"c.bdb"_s);
    EXPECT_EQ(said(first, u"二"_s), u"Ready"_s);
}

TEST_F(MainWindow, NewRefusesBadNamesAndMakesTheLibraryOfAGoodOne) {
    ModalAnswers answers;
    answers.then(enter({u"   "_s, u"a:b"_s, u"x|"_s, u" 新库.v2 "_s}));
    for (int i = 0; i < 3; ++i)
        answers.press(QMessageBox::Ok);
    run(256);
    const QString forbidden = u"输入错误: 文件不能包含下列任何字符之一：\\/:*?\"<>|"_s;
    EXPECT_EQ(answers.seen(), QStringList({u"新建文件"_s, u"输入错误: 输入文件名不能为空！"_s, forbidden, forbidden}));
    ASSERT_TRUE(window.activeEditor());
    EXPECT_EQ(window.activeEditor()->DBFilePath(), dataPath + u"新库.v2.bdb"_s);
    EXPECT_EQ(window.activeEditor()->windowTitle(), u"新库.v2.bdb"_s);
    EXPECT_EQ(rowsInFile(window.activeEditor()->DBFilePath(), "SELECT count(*) FROM sqlite_master"),
              QStringList{u"10"_s});
}

TEST_F(MainWindow, NewAsksBeforeItReplacesALibraryAndNeverTouchesAnOpenOne) {
    const QString question = u"提示: 存在相同的文件名，是否覆盖原来的文件？"_s;
    const QString path = copyOfSampleLibrary(u"old.bdb"_s);
    QFile(path).setPermissions(QFileDevice::ReadOwner);
    const auto bills = [&] { return rowsInFile(path, "SELECT ID FROM tblBill").size(); };
    ModalAnswers answers;
    answers.then(enter({})).then(enter({u"old"_s}, u"btnCanel"_s)).press(QMessageBox::No);
    run(256);
    run(256);
    EXPECT_EQ(answers.takeSeen(), QStringList({u"新建文件"_s, u"新建文件"_s, question}));
    EXPECT_FALSE(window.activeEditor());
    EXPECT_GT(bills(), 0);

    answers.then(enter({u"old"_s})).press(QMessageBox::Yes);
    run(256);
    ASSERT_TRUE(window.activeEditor());
    EXPECT_EQ(bills(), 0);

    OtherProgram(path).run("INSERT INTO tblBill(Code) VALUES('010101001')");
    answers.takeSeen();
    answers.then(enter({u"old"_s})).press(QMessageBox::Yes).press(QMessageBox::Ok);
    run(256);
    EXPECT_EQ(answers.seen(), QStringList({u"新建文件"_s, question, u"提示: 创建文件失败！"_s}));
    EXPECT_EQ(bills(), 1);
    EXPECT_EQ(window.editors().size(), 1);

    // Where letter case counts this is another file.
    if (!QFile::exists(dataPath + u"OLD.bdb"_s)) {
        answers.then(enter({u"OLD"_s}));
        run(256);
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
    open(second);
    // A file of its own where letter case counts; the comparison does not look at the file system.
    QFile::copy(first, dataPath + u"FIRST.BDB"_s);
    EXPECT_EQ(open(dataPath + u"FIRST.BDB"_s), first + u'2');
    QFile::remove(dataPath + u"FIRST.BDB"_s);

    const QTemporaryDir folder;
    const QString namesake = folder.filePath(u"First.bdb"_s);
    ASSERT_TRUE(QFile::copy(first, namesake));
    window.LoadBillDB(namesake);
    const auto in = [](const QString& path) { return u"（%1）"_s.arg(QDir::toNativeSeparators(path)); };
    EXPECT_EQ(captions(), QStringList({u"first.bdb"_s + in(QFileInfo(first).path()), u"second.bdb"_s,
                                       u"First.bdb"_s + in(folder.path())}));
    run(260);
    EXPECT_EQ(captions(), QStringList({u"first.bdb"_s, u"second.bdb"_s}));
}

TEST_F(MainWindow, ALibraryWhoseCompanionCannotBeDetachedKeepsItsConnection) {
    const QString path = load(u"first.bdb"_s);
    // A companion that came later is not attached.
    const Connection* connection = window.activeEditor()->ormConn();
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
            int covered = 0, lanes = 0, overlaps = 0;
            for (const QMdiSubWindow* one : area->subWindowList()) {
                const QRect place = one->geometry();
                EXPECT_TRUE(one == minimised || whole.contains(place));
                EXPECT_TRUE(one == minimised || (place.width() >= 200 && place.height() >= 220));
                covered += one == minimised ? 0 : place.width() * place.height();
                lanes += one != minimised && (id == 513 ? place.top() : place.left()) == 0 ? 1 : 0;
                for (const QMdiSubWindow* other : area->subWindowList())
                    overlaps +=
                        one != other && one != minimised && other != minimised && place.intersects(other->geometry())
                            ? 1
                            : 0;
            }
            if (id == 512) {
                EXPECT_EQ(area->subWindowList(QMdiArea::StackingOrder).constLast(), active);
                EXPECT_NE(area->subWindowList().at(1)->pos(), active->pos());
                EXPECT_TRUE(active->width() > 800 && active->height() > 500);
                continue;
            }
            EXPECT_EQ(active->pos(), QPoint(0, 0));
            EXPECT_EQ(overlaps, 0);
            EXPECT_EQ(covered, whole.width() * whole.height());
            EXPECT_TRUE(count > 3 ? lanes > 1 : lanes == 1) << lanes;
        }
    }
}

TEST(StartUp, ASecondCopyEndsAndACrashedOneDoesNotBlock) {
    const QTemporaryDir home, elsewhere;
    const auto start = [&](const QTemporaryDir& folder) {
        return std::make_unique<ShippedProgram>(
            QStringList(), ShippedProgram::Variables{{u"TESSEL_HOME"_s, folder.path()},
                                                     {u"XDG_CONFIG_HOME"_s, joinPath(home.path(), u"config"_s)},
                                                     {u"QT_QPA_PLATFORM"_s, u"offscreen"_s}});
    };
    // A program that may run makes its folder for libraries.
    const auto runs = [](ShippedProgram& program, const QTemporaryDir& folder) {
        return program.waitUntil([&] { return QDir(joinPath(folder.path(), u"Data"_s)).exists(); });
    };
    const auto first = start(home);
    ASSERT_TRUE(runs(*first, home)) << qPrintable(first->lastWords());
    EXPECT_TRUE(start(home)->waitForEnd());
    EXPECT_TRUE(first->isRunning());
    EXPECT_TRUE(runs(*start(elsewhere), elsewhere)) << "another folder is another program";
    first->kill();
    ASSERT_TRUE(QDir(joinPath(home.path(), u"Data"_s)).removeRecursively());
    EXPECT_TRUE(runs(*start(home), home));
}
