// A library is made, filled, changed and searched with the keyboard alone: every key goes to whatever has the focus.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include "app/base/Definitions.h"
#include "app/shell/frmMain.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "ration_browser/frmDekBrowser.h"
#include "tests/gui/EditorDriver.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/TemporaryLibrary.h"
#include "tests/support/Typing.h"

namespace {

QString objectName(const QObject* object) { return object ? object->objectName() : QStringLiteral("nothing"); }

void press(int key, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* focus = QApplication::activePopupWidget();
    if (focus && focus->focusWidget())
        focus = focus->focusWidget();
    if (!focus)
        focus = QApplication::focusWidget();
    // A window without a control that has the focus takes the keys itself.
    if (!focus)
        focus = QApplication::activeWindow();
    ASSERT_TRUE(focus);
    QTest::keyClick(focus, static_cast<Qt::Key>(key), modifiers);
}

void type(const QString& text) {
    ASSERT_TRUE(QApplication::focusWidget());
    // The first character may open an editor, which takes the rest.
    for (const QChar character : text)
        typeText(QApplication::focusWidget(), character);
}

class Keyboard : public ::testing::Test {
protected:
    Keyboard() {
        installSamples();
        QFile::remove(path());
        main.MDIForm_Load();
        main.resize(1366, 768);
        main.show();
        EditorDriver::activate(&main);
    }

    static QString path() { return dataPath + QStringLiteral("键盘.bdb"); }
    static QStringList file(const SqlText& query) { return rowsInFile(path(), query); }

    frmEditor* editor() { return main.activeEditor(); }
    KeyedTree* tree() { return editor()->chapterPane()->tvSYB(); }
    KeyedGrid* bills() { return editor()->billPane()->grdBillList(); }
    KeyedGrid* contents() { return editor()->contentPane()->grdConcent(); }
    KeyedGrid* features() { return editor()->featurePane()->grdSpec(); }
    KeyedGrid* values() { return editor()->featurePane()->grdSpecEnum(); }

    /// Goes on by Tab until `widget` has the focus.
    void tabTo(const QWidget* widget) {
        EditorDriver::activate(QApplication::activeWindow() ? QApplication::activeWindow() : &main);
        QStringList passed;
        for (int i = 0; i < 40 && QApplication::focusWidget() != widget; ++i) {
            press(Qt::Key_Tab);
            passed << objectName(QApplication::focusWidget());
        }
        EXPECT_EQ(QApplication::focusWidget(), widget) << qPrintable(passed.join(QLatin1Char(' ')));
    }

    /// Brings a page of the details to the front by the arrow keys of the tab bar.
    void turnTo(int page) {
        auto* bar = editor()->findChild<QTabBar*>();
        tabTo(bar);
        for (int i = 0; i < bar->count() && bar->currentIndex() != page; ++i)
            press(bar->currentIndex() < page ? Qt::Key_Right : Qt::Key_Left);
        EXPECT_EQ(bar->currentIndex(), page);
    }

    /// Opens the context menu of what has the focus by the menu key and chooses an entry by arrows and Enter.
    void choose(const char* caption) {
        SCOPED_TRACE(caption);
        QWidget* focus = QApplication::focusWidget();
        ASSERT_TRUE(focus);
        // The menu key, as every platform hands it over.
        const QPoint position = focus->rect().center();
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, position, focus->mapToGlobal(position));
        QApplication::sendEvent(focus, &menuKey);
        QCoreApplication::processEvents();
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        const QString wanted = QString::fromUtf8(caption);
        for (int i = 0; i < 20 && !(menu->activeAction() && menu->activeAction()->text() == wanted); ++i)
            press(Qt::Key_Down);
        ASSERT_TRUE(menu->activeAction());
        ASSERT_EQ(menu->activeAction()->text(), wanted);
        EXPECT_TRUE(menu->activeAction()->isEnabled());
        press(Qt::Key_Return);
        EXPECT_FALSE(menu->isVisible());
        QCoreApplication::processEvents();
        EditorDriver::activate(&main);
        EXPECT_EQ(QApplication::focusWidget(), focus) << qPrintable(objectName(QApplication::focusWidget()));
    }

    /// Chooses a command that asks for a name, and gives one with Enter.
    void chooseAndName(const char* caption, const QString& name) {
        ModalAnswers answers;
        answers.then([&](QWidget*) {
            type(name);
            press(Qt::Key_Return);
        });
        choose(caption);
    }

    /// Chooses a command that asks a question, and goes to Yes.
    void chooseAndConfirm(const char* caption) {
        ModalAnswers answers;
        answers.then([&](QWidget* box) {
            const auto* yes = qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes);
            for (int i = 0; i < 4 && QApplication::focusWidget() != yes; ++i)
                press(Qt::Key_Tab);
            EXPECT_EQ(QApplication::focusWidget(), yes);
            press(Qt::Key_Space);
        });
        choose(caption);
    }

    void goToColumn(const KeyedGrid* grid, const char* key) {
        const int wanted = grid->column(QString::fromLatin1(key));
        for (int i = 0; i < 8 && grid->currentIndex().column() != wanted; ++i)
            press(grid->currentIndex().column() < wanted ? Qt::Key_Right : Qt::Key_Left);
        EXPECT_EQ(grid->currentIndex().column(), wanted);
    }

    /// Ctrl+N, a name, Enter.
    void makeLibrary() {
        ModalAnswers answers;
        answers.then([&](QWidget*) {
            type(QStringLiteral("键盘"));
            press(Qt::Key_Return);
        });
        press(Qt::Key_N, Qt::ControlModifier);
        ASSERT_TRUE(editor());
        EditorDriver::activate(&main);
        EXPECT_EQ(QApplication::focusWidget(), tree());
    }

    void makeChapters() {
        chooseAndName("添加目录", QStringLiteral("土建"));
        chooseAndName("添加子目录", QStringLiteral("土石方"));
        chooseAndName("添加子目录", QStringLiteral("土方"));
    }

    frmMain main;
};

}  // namespace

TEST_F(Keyboard, MakesAndChangesChapters) {
    makeLibrary();
    makeChapters();
    EXPECT_EQ(file("SELECT Code,Name FROM tblSYB ORDER BY Code"),
              QStringList({QStringLiteral("01|土建"), QStringLiteral("0101|土石方"), QStringLiteral("010101|土方")}));
    chooseAndName("添加目录", QStringLiteral("石方"));
    choose("上移目录");
    EXPECT_EQ(file("SELECT Name FROM tblSYB WHERE Code='010101'"), QStringList{QStringLiteral("石方")});
    choose("下移目录");
    chooseAndName("修改目录", QStringLiteral("岩石"));
    EXPECT_EQ(file("SELECT Name FROM tblSYB WHERE Code='010102'"), QStringList{QStringLiteral("岩石")});
    {
        ModalAnswers answers;
        answers.then([](QWidget*) { press(Qt::Key_Escape); });
        choose("修改目录");
    }
    chooseAndConfirm("删除目录");
    EXPECT_EQ(file("SELECT Code FROM tblSYB").size(), 3);
    press(Qt::Key_Home);
    EXPECT_EQ(KeyedTree::tag(tree()->selectedNode()), QStringLiteral("01"));
    choose("展开所有节点");
    press(Qt::Key_Left);
    EXPECT_FALSE(tree()->firstNode()->isExpanded());
    press(Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(main.editors().isEmpty());
}

TEST_F(Keyboard, MakesChangesAndFindsBills) {
    makeLibrary();
    makeChapters();
    tabTo(bills());
    choose("添加清单");
    goToColumn(bills(), "Name");
    // Typing begins an edit; Enter ends it.
    type(QStringLiteral("平整场地"));
    press(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), bills());
    // F2 too; Tab goes on to the next cell, Esc leaves it as it was.
    press(Qt::Key_F2);
    type(QStringLiteral("2"));
    press(Qt::Key_Tab);
    type(QStringLiteral("m2"));
    press(Qt::Key_Escape);
    EXPECT_EQ(file("SELECT Name,IFNULL(Unit,'') FROM tblBill"),
              QStringList{bills()->text(0, QStringLiteral("Name")) + QLatin1Char('|')});
    press(Qt::Key_F2);
    type(QStringLiteral("m2"));
    press(Qt::Key_Return);
    EXPECT_EQ(file("SELECT Unit FROM tblBill"), QStringList{QStringLiteral("m2")});

    choose("添加清单");
    EXPECT_EQ(bills()->row(), 1);
    choose("上移清单");
    EXPECT_EQ(file("SELECT ID FROM tblBill ORDER BY Code"), QStringList({QStringLiteral("2"), QStringLiteral("1")}));
    choose("下移清单");
    press(Qt::Key_Up);
    EXPECT_EQ(bills()->row(), 0);

    turnTo(2);
    tabTo(editor()->billPane()->txtRule());
    type(QStringLiteral("按面积"));
    press(Qt::Key_Tab);
    turnTo(3);
    tabTo(editor()->billPane()->txtContent());
    type(QStringLiteral("平整"));
    press(Qt::Key_Tab);
    EXPECT_EQ(file("SELECT Rule,Cont FROM tblBill WHERE ID=1"), QStringList{QStringLiteral("按面积|平整")});

    tabTo(editor()->findChild<QLineEdit*>(QStringLiteral("CommandBars2.203")));
    type(QStringLiteral("002"));
    press(Qt::Key_Return);
    EXPECT_EQ(bills()->rowCount(), 1);
    EXPECT_EQ(bills()->tag(), QStringLiteral("1"));
    tabTo(bills());
    chooseAndConfirm("删除清单");
    EXPECT_EQ(file("SELECT ID FROM tblBill"), QStringList{QStringLiteral("1")});
}

TEST_F(Keyboard, MakesFeaturesAndValues) {
    makeLibrary();
    makeChapters();
    tabTo(bills());
    choose("添加清单");
    turnTo(1);
    tabTo(features());
    choose("添加项目特征");
    goToColumn(features(), "Name");
    type(QStringLiteral("土壤类别"));
    press(Qt::Key_Return);
    goToColumn(features(), "type");
    press(Qt::Key_F4);
    QCoreApplication::processEvents();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    QCoreApplication::processEvents();
    EditorDriver::activate(&main);
    EXPECT_EQ(file("SELECT Name,Type FROM tblBillSpec"), QStringList{QStringLiteral("土壤类别|2")});
    tabTo(values());
    choose("添加特征值");
    goToColumn(values(), "eigenValue");
    type(QStringLiteral("三类土"));
    press(Qt::Key_Return);
    goToColumn(values(), "isUse");
    press(Qt::Key_Space);
    EXPECT_EQ(file("SELECT DefVal FROM tblBillSpec"), QStringList{QStringLiteral("三类土")});
    choose("添加特征值");
    choose("删除特征值");
    EXPECT_EQ(file("SELECT EigenValue,IsUse FROM tblSpecEnum"), QStringList{QStringLiteral("三类土|1")});
    tabTo(features());
    choose("删除项目特征");
    EXPECT_EQ(file("SELECT ID FROM tblBillSpec"), QStringList());
}

TEST_F(Keyboard, MakesContentsAndChoosesRations) {
    makeLibrary();
    makeChapters();
    tabTo(bills());
    choose("添加清单");
    turnTo(0);
    const auto* profession = editor()->contentPane()->cboProfession();
    tabTo(profession);
    press(Qt::Key_Down);
    EXPECT_EQ(profession->currentText(), QStringLiteral("装饰"));
    press(Qt::Key_Up);
    tabTo(contents());
    choose("添加工程内容");
    type(QStringLiteral("土方开挖"));
    press(Qt::Key_Return);
    choose("添加工程细节");
    type(QStringLiteral("人工挖土方"));
    press(Qt::Key_Return);
    EXPECT_EQ(file("SELECT cont,subCont FROM tblCont JOIN tblContDe ON tblCont.ID=ContID"),
              QStringList{QStringLiteral("土方开挖|人工挖土方")});
    choose("添加定额");
    goToColumn(contents(), "dekName");
    press(Qt::Key_F4);
    QCoreApplication::processEvents();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    QCoreApplication::processEvents();
    EditorDriver::activate(&main);
    const QString library = contents()->text(contents()->row(), QStringLiteral("dekName"));
    EXPECT_FALSE(library.isEmpty());
    goToColumn(contents(), "cont");

    // The browser: opened, a chapter chosen, a ration inserted, closed.
    press(Qt::Key_F4);
    auto* browser = frmDekBrowser::shared(&main);
    EditorDriver::activate(browser);
    tabTo(browser->tvRationContent());
    for (int i = 0; i < 40 && !browser->grdDEB()->hasRows(); ++i)
        press(i % 2 == 0 ? Qt::Key_Right : Qt::Key_Down);
    ASSERT_TRUE(browser->grdDEB()->hasRows());
    tabTo(browser->grdDEB());
    press(Qt::Key_Down);
    const QString code = browser->grdDEB()->text(browser->grdDEB()->row(), QStringLiteral("DEH"));
    press(Qt::Key_Return);
    press(Qt::Key_Escape);
    EXPECT_FALSE(browser->isVisible());
    EditorDriver::activate(&main);
    EXPECT_EQ(file("SELECT Deh FROM tblContDe"), QStringList{code});

    tabTo(contents());
    type(browser->grdDEB()->text(0, QStringLiteral("DEH")).toLower());
    press(Qt::Key_Return);
    EXPECT_EQ(file("SELECT Deh FROM tblContDe"), QStringList{browser->grdDEB()->text(0, QStringLiteral("DEH"))});
    chooseAndConfirm("删除");
    press(Qt::Key_Home, Qt::ControlModifier);
    press(Qt::Key_Left);
    EXPECT_TRUE(contents()->isCollapsed(0));
    chooseAndConfirm("删除");
    EXPECT_EQ(file("SELECT ID FROM tblCont UNION ALL SELECT ID FROM tblContDe"), QStringList());
}
