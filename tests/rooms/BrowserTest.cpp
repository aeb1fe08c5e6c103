#include "ration_browser/frmDekBrowser.h"

#include "administration/RationFiles.h"
#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "app/base/UserSettings.h"
#include "app/controls/CommandBars.h"
#include "ration_browser/ElidedLine.h"
#include "ration_browser/RationReceiver.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Typing.h"

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
    EXPECT_FALSE(button(259)->isEnabled() || button(260)->isEnabled());
    click("K12");
    tree->setAllExpanded(false);
    tree->node(u"Root"_s)->setExpanded(true);
    tree->node(u"K12"_s)->setExpanded(true);
    EXPECT_TRUE(button(259)->isEnabled() && button(260)->isEnabled());
    QTest::keyClick(grid, Qt::Key_Down);
    const QString left = u"安装>K12> A1-1100m2*a1-2x> Root K12"_s;
    EXPECT_EQ(shown(), left);
    browser->close();
    EXPECT_EQ(browser->cboDek()->count() + tree->nodeCount() + grid->rowCount(), 0);
    open("GD02");
    EXPECT_EQ(shown(), left) << "closed";
    QTest::keyClick(browser->cboDek(), Qt::Key_Up);
    EXPECT_EQ(shown(), u"建筑>>> Root"_s);
    open("GD02");
    EXPECT_EQ(shown(), left) << "after another library";
}

TEST_F(Browser, HandsTheRationToTheEditorThatIsThere) {
    open("GD01");
    editor.row = QString(5000, u'长');
    click("K12");
    EXPECT_EQ(browser->lblReceiver()->text().size(), 2000) << "told anew after whatever the user did";
    QTest::mouseDClick(grid->horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(20, 8));
    // A right click chooses the row that its menu means.
    QTest::mouseClick(grid->viewport(), Qt::RightButton, {}, cell(1));
    auto* menu = browser->findChild<QMenu*>(u"Ration Menu"_s);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().last()).center());
    EXPECT_EQ(editor.takeCalls(), u"1 a1-2x GD01;"_s);
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
    const std::pair<QWidget*, QString> ring[] = {{browser->cboDek(), {}},
                                                 {button(259), inserted.repeated(4)},
                                                 {button(260), replaced.repeated(4)},
                                                 {tree, {}},
                                                 {grid, inserted.repeated(2) + replaced}};
    grid->setFocus();
    unsigned long now = 1000;
    for (const auto& [focus, written] : ring) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
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
    EXPECT_FALSE(browser->isVisible() || besideTheRowAt(own.bottom() - 20));
    EXPECT_EQ(browser->geometry(), own);
    browser->showMaximized();
    QCoreApplication::processEvents();
    mainWindow.reset();
    open("GD01");
    EXPECT_EQ(browser->geometry(), own) << "maximised, and gone with the main window";
}

// A library as nobody should have it, with two chapters of one id, at which its tree ends, and rations of no chapter.
TEST_F(Browser, FindsInTheWholeLibraryWhatIsTypedAndWritesNothing) {
    for (const QString& name : {u"bad.db"_s, u"find.db"_s})
        writeRationLibrary(file(name), {});
    OtherProgram(file(u"bad.db"_s)).run("DROP TABLE DEB");
    EXPECT_TRUE(OtherProgram(file(u"find.db"_s)).tryScript(R"(DROP TABLE DEB; DROP TABLE DeSYB;
        CREATE TABLE DEB(ID,sybID,DEH,MC,DW); CREATE TABLE DeSYB(sybID,CH,ZH,JH,XH,MH,BTM,isdel);
        INSERT INTO DeSYB VALUES(5,1,1,1,1,1,'孤',0),(20,2,0,0,0,0,'章',0),(21,2,0,7,0,0,'跳',0),(22,2,1,0,0,0,'节',0),
            (23,2,1,1,0,0,'小',0),(24,2,1,1,1,0,'项',0),(25,2,1,1,1,1,'子',0),(-8,3,NULL,NULL,NULL,NULL,NULL,0),
            (26,3,0,0,0,0,'废',1),(22,4,0,0,0,0,'又',0),(27,5,0,0,0,0,'后',0); INSERT INTO DEB VALUES
            (1,25,'a1-3','给水管道长度','m'),(2,'25','Z9','平整','m'),(3,99,'Z1','平整','m'),(4,26,'Z2','平整','m'),
            (4,5,'A1-1','平整场地','m2'),(5,22,'A1-10','人工挖沟槽(三类土)、深2.5M内',''),(0,-8,'N','a13','m'),
            (6,23,'Ａ１－２','Ｃ30混凝土、砂浆 100%','m3'),(NULL,25,NULL,'it''s <b>平整</b>; DROP',NULL),
            (8,25,'L',replace(hex(zeroblob(3000)),'00','长')||'末',x'00FF');)"));
    ModalAnswers answers;
    answers.closeAnything();
    writeSystemDatabase(appPath + u"tessel.dat"_s, {{u"F"_s, u"找"_s, u"find.db"_s, {}},
                                                    {u"GD01"_s, u"建筑"_s, u"a.db"_s, {}},
                                                    {u"NO"_s, u"无"_s, u"n.db"_s, {}},
                                                    {u"BAD"_s, u"坏"_s, u"bad.db"_s, {}}});
    open("F");
    QString nodes;
    for (const auto* node : tree->nodes().mid(1))
        nodes += KeyedTree::key(node->parent()) + u'>' + node->text(0) + u' ' + KeyedTree::tag(node) + u'|';
    EXPECT_EQ(nodes,
              u"Root>1.孤 1.1.1.1.1|Root>2.章 2.0.0.0.0|Root>2.跳 2.0.7.0.0|K21>1.节 2.1.0.0.0|"
              u"K22>1.小 2.1.1.0.0|K23>1.项 2.1.1.1.0|K24>1.子 2.1.1.1.1|Root>3. 3.0.0.0.0|"_s);
    auto* box = browser->findChild<QLineEdit*>(u"txtFind"_s);
    const auto* told = browser->findChild<QLabel*>(u"lblFound"_s);
    const auto hit = [&] {
        QCoreApplication::processEvents();
        const QString chapter = KeyedTree::key(tree->selectedNode());
        return QStringList{told->text(), chapter, grid->text(grid->row(), u"DEH"_s)}.join(u' ');
    };
    const QString searches =
        u"pzcd=K5 A1-1|平z场d=K5 A1-1|平整=K5 A1-1,K25 |ａ1-1=K5 A1-1,K22 A1-10|A1-10=K22 A1-10|2.5m=K22 A1-10|"
        u"rgwgcslts=K22 A1-10|25m=|hntsj=K23 Ａ１－２|c30H　a1-2 %=K23 Ａ１－２|HNT a1-1=|'s <b>=K25 |gsgdcd=K25 a1-3|"
        u"jsgdz=K25 a1-3|A13=K-8 N|_=|末="_s;
    for (const QString& search : searches.split(u'|')) {
        const QString typed = search.section(u'=', 0, 0);
        const QStringList hits = search.section(u'=', 1).split(u',', Qt::SkipEmptyParts);
        click("K21");
        EXPECT_EQ(grid->emptyHint(), u"本章无定额，下级目录共有 5 条"_s);
        click("Root");
        grid->setFocus();
        typeText(grid, typed.first(1));
        typeText(QApplication::focusWidget(), typed.mid(1));
        EXPECT_EQ(hits.isEmpty(), hit().startsWith(u"没有找到")) << qPrintable(typed);
        for (qsizetype i = 0; i < hits.size() * 2; ++i) {
            const qsizetype at = i % hits.size();
            EXPECT_EQ(hit(), u"%1 / %2 "_s.arg(at + 1).arg(hits.size()) + hits[at]) << qPrintable(typed);
            QTest::keyClick(box, Qt::Key_Return);
        }
    }
    // By keys wherever the focus is and by the mouse, from where the user has gone; what was only passed closes again.
    tree->setAllExpanded(false);
    QTest::keyClick(grid, Qt::Key_F, Qt::ControlModifier);
    typeText(box, u"a1-"_s);
    QTest::keyClick(browser->cboDek(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(hit(), u"4 / 4 K25 a1-3"_s);
    click("K22");
    QTest::keyClick(tree, Qt::Key_F3);
    EXPECT_EQ(hit(), u"3 / 4 K23 Ａ１－２"_s);
    EXPECT_FALSE(tree->node(u"K23"_s)->isExpanded());
    EXPECT_TRUE(tree->viewport()->rect().contains(tree->visualItemRect(tree->selectedNode()).center()));
    click("Root");
    EXPECT_EQ(hit(), u"共 4 条 Root "_s);
    const auto buttons = box->parentWidget()->findChildren<QToolButton*>();
    for (const int arrow : {1, 0, 0})
        QTest::mouseClick(buttons[arrow], Qt::LeftButton);
    EXPECT_EQ(hit(), u"3 / 4 K23 Ａ１－２"_s);
    for (const Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::ControlModifier})
        QTest::keyClick(box, Qt::Key_Return, modifiers);
    EXPECT_EQ(editor.takeCalls(), QString());
    // What is told is of the library that is shown.
    for (const auto& [dekId, found] :
         {std::pair("GD01", u"共 2 条  "_s), {"NO", u"没有找到  "_s}, {"BAD", u"没有找到  "_s}}) {
        open(dekId);
        EXPECT_EQ(hit(), found) << dekId;
    }
    EXPECT_EQ(answers.takePlaces(),
              QStringList({u"frmDekBrowser.CreateRationContent"_s, u"提示: "_s + file(u"n.db"_s) + u" 文件不存在!"_s,
                           u"frmDekBrowser.rations"_s}));
    EXPECT_FALSE(QFile::exists(file(u"n.db"_s))) << "looking for a file must not make it";
    EXPECT_TRUE(makeActive(browser));
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_TRUE(browser->isVisible() && !box->isVisible() && grid->hasFocus());
    QTest::keyClick(grid, Qt::Key_F3);
    EXPECT_TRUE(box->isVisible() && grid->hasFocus());
    for (QWidget* focus : {static_cast<QWidget*>(box), static_cast<QWidget*>(buttons[0])}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), focus);
    }
    browser->close();
    open("GD01");
    QTest::keyClick(tree, Qt::Key_Escape);
    EXPECT_FALSE(browser->isVisible()) << "the box was closed with the window";
}
