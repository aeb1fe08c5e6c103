// A library is made, filled, changed and searched with the keyboard alone: every key goes to whatever has the focus.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "app/base/Definitions.h"
#include "ration_browser/frmDekBrowser.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/Libraries.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Typing.h"

namespace {

QString focusName() { return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString(); }

class Keyboard : public ::testing::Test {
protected:
    Keyboard() {
        installSamples();
        QFile::remove(path);
        main.MDIForm_Load();
        main.resize(1366, 768);
        main.show();
        activate();
    }

    /// Does one step after the other: a gesture, what it is done to, and after " = " the answer to what it asks or what
    /// is found in the file.
    void does(const char* steps) {
        for (const QString& step :
             QString::fromUtf8(steps).replace(u'\n', u"; "_s).split(u"; "_s, Qt::SkipEmptyParts)) {
            SCOPED_TRACE(step.toStdString());
            const QString gesture = step.section(u' ', 0, 0);
            const QString what = step.section(u' ', 1).section(u" = "_s, 0, 0);
            const QString text = step.section(u" = "_s, 1);
            ModalAnswers answers;
            answers.otherwise([&](QWidget* window) { answer(window, text); });
            if (gesture == u"file")
                EXPECT_EQ(rowsInFile(path, sql("SELECT ", what)).join(u", "_s), text);
            else if (gesture == u"type")
                type(what);
            else if (gesture == u"tab")
                tabTo(what);
            else if (gesture == u"round")
                goRound(what);
            else if (gesture == u"choose")
                choose(what);
            else
                press(what);
            EXPECT_EQ(answers.seen().isEmpty(), text.isEmpty() || gesture == u"file");
            ASSERT_FALSE(HasFailure());
        }
    }

    /// Without a window manager nobody gives the focus back when a window has closed.
    void activate() {
        QWidget* browser = frmDekBrowser::shared(&main);
        EditorDriver::activate(browser->isVisible() ? browser : &main);
    }

    void press(const QString& keys) {
        const QKeyCombination key = QKeySequence(keys)[0];
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* taker = popup ? popup->focusWidget() : QApplication::focusWidget();
        // A window without a control that has the focus takes the keys itself.
        if (!taker)
            taker = popup ? popup : QApplication::activeWindow();
        QTest::keyClick(taker, key.key(), key.keyboardModifiers());
        if (popup && !QApplication::activePopupWidget())
            activate();
    }

    void pressUntil(const QString& key, const std::function<bool()>& there) {
        for (int i = 0; i < 40 && !there(); ++i)
            press(key);
        EXPECT_TRUE(there()) << qPrintable(key) << " has led to " << qPrintable(focusName());
    }

    void tabTo(const QString& name) {
        activate();
        pressUntil(u"Tab"_s, [&] { return focusName() == name; });
    }

    /// The way of Tab from the tabs through these and what stands above them, and that of Shift+Tab back.
    void goRound(const QString& names) {
        const QString bar = u"qt_tabwidget_tabbar"_s;
        QStringList ring = (bar + u' ' + names + u" tvSYB CommandBars2.203 grdBillList "_s + bar).split(u' ');
        tabTo(bar);
        for (const QString& key : {u"Tab"_s, u"Shift+Tab"_s}) {
            for (const QString& name : ring.mid(1)) {
                press(key);
                EXPECT_EQ(focusName(), name) << qPrintable(key);
            }
            std::reverse(ring.begin(), ring.end());
        }
    }

    /// Opens the context menu of what has the focus by the menu key and chooses an entry by arrows and Enter.
    void choose(const QString& caption) {
        QWidget* focus = QApplication::focusWidget();
        // The menu key, as every platform hands it over.
        const QPoint position = focus->rect().center();
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, position, focus->mapToGlobal(position));
        QApplication::sendEvent(focus, &menuKey);
        QCoreApplication::processEvents();
        const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        pressUntil(u"Down"_s, [&] { return menu->activeAction() && menu->activeAction()->text() == caption; });
        press(u"Return"_s);
        EXPECT_FALSE(menu->isVisible());
        EXPECT_EQ(QApplication::focusWidget(), focus) << qPrintable(focusName());
    }

    /// Says yes to a question, gives a dialog a name or leaves it by a key.
    void answer(QWidget* window, const QString& text) {
        if (const auto* box = qobject_cast<QMessageBox*>(window)) {
            pressUntil(u"Tab"_s, [&] { return QApplication::focusWidget() == box->button(QMessageBox::Yes); });
            press(u"Space"_s);
        } else if (text == u"Esc") {
            press(text);
        } else {
            type(text);
            press(u"Return"_s);
        }
    }

    /// The first character may open an editor, which takes the rest.
    static void type(const QString& text) {
        for (const QChar character : text)
            typeText(QApplication::focusWidget(), character);
    }

    const QString path = dataPath + u"键盘.bdb"_s;
    frmMain main;
};

}  // namespace

TEST_F(Keyboard, MakesAndChangesEverything) {
    does(R"(
key Ctrl+N = 键盘; tab tvSYB; choose 添加目录 = 土建; choose 添加子目录 = 土石方; choose 添加子目录 = 土方
file Code,Name FROM tblSYB ORDER BY Code = 01|土建, 0101|土石方, 010101|土方; choose 添加目录 = 石方
choose 上移目录; file Name FROM tblSYB ORDER BY Code = 土建, 土石方, 石方, 土方; choose 下移目录
choose 修改目录 = 岩石; choose 修改目录 = Esc; file Name FROM tblSYB ORDER BY Code = 土建, 土石方, 土方, 岩石
choose 删除目录 = yes; file Name FROM tblSYB ORDER BY Code = 土建, 土石方, 土方
tab grdBillList; choose 添加清单; type 平整场地; key Return; key F2; type 2; key Tab; type m2
key Esc; file Name,Unit FROM tblBill = 2|NULL; key F2; type m2; key Tab; file Unit FROM tblBill = m2
key F2; key Shift+Backtab; type 3; key Return; file Name FROM tblBill = 3
round cboProfession grdConcent; key Right; round grdSpec grdSpecEnum; key Right; round txtRule; key Right
round txtContent; tab grdBillList
choose 添加清单; choose 上移清单; file ID FROM tblBill ORDER BY Code = 2, 1; choose 下移清单; key Up
tab txtContent; type 平整; tab qt_tabwidget_tabbar; key Left; tab txtRule; type 按面积; key Tab
file Rule,Cont FROM tblBill ORDER BY ID = 按面积|平整, NULL|NULL; tab CommandBars2.203; type 002; key Return
tab grdBillList; choose 删除清单 = yes; file ID FROM tblBill = 1; tab CommandBars2.203; key Esc; tab grdBillList
tab qt_tabwidget_tabbar; key Left; tab grdSpec; choose 添加项目特征; type 土壤类别; key Return; key Right
key F4; key Down; key Down; key Return; file Name,Type FROM tblBillSpec = 土壤类别|2; tab grdSpecEnum
choose 添加特征值; key Right; type 三类土; key Return; key Left; key Space
file DefVal FROM tblBillSpec = 三类土; choose 添加特征值; choose 删除特征值
file EigenValue,IsUse FROM tblSpecEnum = 三类土|1; tab grdSpec; choose 删除项目特征; file ID FROM tblBillSpec = 
tab qt_tabwidget_tabbar; key Left; tab cboProfession; key Down; key Up; tab grdConcent
choose 添加工程内容; type 土方开挖; key Return; choose 添加工程细节; type 人工挖土方; key Return
file cont,subCont FROM tblCont JOIN tblContDe ON tblCont.ID=ContID = 土方开挖|人工挖土方; choose 添加定额
key Right; key Right; key F4; key Down; key Return; key Left; key Left; key F4
tab tvRationContent; key Right; key Down; key Right; key Down; tab grdDEB; key Down; key Return; key Esc
file Deh FROM tblContDe = D1-2; tab grdConcent; type d1-1; key Return; file Deh FROM tblContDe = D1-1
choose 删除 = yes; key Ctrl+Home; choose 删除 = yes; file ID FROM tblCont UNION ALL SELECT ID FROM tblContDe = )");
    press(u"Ctrl+E"_s);
    EXPECT_TRUE(main.editors().isEmpty());
}
