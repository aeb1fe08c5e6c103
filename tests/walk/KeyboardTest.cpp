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
#include "tests/support/ModalAnswers.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/SampleProgram.h"
#include "tests/support/Typing.h"

namespace {

QString focusName() { return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString(); }

void giveName(const QString& name) {
    typeText(QApplication::focusWidget(), name);
    QTest::keyClick(QApplication::focusWidget(), name.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
}

class Keyboard : public ::testing::Test {
protected:
    Keyboard() {
        installSamples();
        QFile::remove(path);
        main.MDIForm_Load();
        main.resize(1366, 768);
        main.show();
        EditorDriver::activate(&main);
        ModalAnswers answers;
        answers.then([](QWidget*) { giveName(u"键盘"_s); });
        press(u"Ctrl+N"_s);
        activate();
        EXPECT_EQ(focusName(), u"tvSYB"_s);
    }

    /// Does one step after the other: a gesture, what it is done to, and after " = " what is typed or found.
    void does(const char* steps) {
        for (const QString& step :
             QString::fromUtf8(steps).replace(u'\n', u"; "_s).split(u"; "_s, Qt::SkipEmptyParts)) {
            SCOPED_TRACE(step.toStdString());
            const QString rest = step.section(u' ', 1);
            const auto found = gestures.find(step.section(u' ', 0, 0));
            ASSERT_NE(found, gestures.end());
            found->second(rest.section(u" = "_s, 0, 0), rest.section(u" = "_s, 1));
            ASSERT_FALSE(HasFailure());
        }
    }

    /// Without a window manager nobody gives the focus back when a window has closed.
    void activate() {
        QWidget* browser = frmDekBrowser::shared(&main);
        EditorDriver::activate(browser->isVisible() ? browser : &main);
    }

    /// Presses a key, "Down*3" several times.
    void press(const QString& keys) {
        const QKeyCombination key = QKeySequence(keys.section(u'*', 0, 0))[0];
        for (int times = qMax(1, keys.section(u'*', 1).toInt()); times > 0; --times) {
            QWidget* popup = QApplication::activePopupWidget();
            // A window without a control that has the focus takes the keys itself.
            for (QWidget* taker : {popup ? popup->focusWidget() : nullptr, popup, QApplication::focusWidget(),
                                   QApplication::activeWindow()})
                if (taker) {
                    QTest::keyClick(taker, key.key(), key.keyboardModifiers());
                    break;
                }
            if (popup && !QApplication::activePopupWidget())
                activate();
        }
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
        QStringList ring = (u"qt_tabwidget_tabbar "_s + names + u" tvSYB CommandBars2.203 grdBillList"_s).split(u' ');
        tabTo(ring[0]);
        for (const QString& key : {u"Tab"_s, u"Shift+Tab"_s}) {
            ring << ring[0];
            for (const QString& name : ring.mid(1)) {
                press(key);
                EXPECT_EQ(focusName(), name) << qPrintable(key);
            }
            ring.removeLast();
            std::reverse(ring.begin() + 1, ring.end());
        }
    }

    /// Opens the context menu of what has the focus by the menu key and chooses an entry by arrows and Enter; `answer`
    /// is given to what it asks.
    void choose(const QString& caption, const std::function<void(QWidget*)>& answer = {}) {
        ModalAnswers answers;
        if (answer)
            answers.then(answer);
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

    void confirm(QWidget* box) {
        const auto* yes = qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes);
        pressUntil(u"Tab"_s, [&] { return QApplication::focusWidget() == yes; });
        press(u"Space"_s);
    }

    /// The first character may open an editor, which takes the rest.
    static void type(const QString& text) {
        for (const QChar character : text)
            typeText(QApplication::focusWidget(), character);
    }

    const QString path = dataPath + u"键盘.bdb"_s;
    frmMain main;

    using Gesture = std::function<void(const QString& what, const QString& text)>;
    const std::map<QString, Gesture> gestures{
        {u"key"_s, [this](auto& keys, auto&) { press(keys); }},
        {u"type"_s, [](auto& text, auto&) { type(text); }},
        {u"tab"_s, [this](auto& name, auto&) { tabTo(name); }},
        {u"round"_s, [this](auto& names, auto&) { goRound(names); }},
        {u"choose"_s, [this](auto& caption, auto&) { choose(caption); }},
        {u"confirm"_s, [this](auto& caption, auto&) { choose(caption, [this](QWidget* box) { confirm(box); }); }},
        {u"name"_s, [this](auto& caption, auto& name) { choose(caption, [&](QWidget*) { giveName(name); }); }},
        {u"file"_s,
         [this](auto& query, auto& rows) { EXPECT_EQ(rowsInFile(path, sql("SELECT ", query)).join(u", "_s), rows); }},
    };
};

}  // namespace

TEST_F(Keyboard, MakesAndChangesEverything) {
    does(R"(
name 添加目录 = 土建; name 添加子目录 = 土石方; name 添加子目录 = 土方
file Code,Name FROM tblSYB ORDER BY Code = 01|土建, 0101|土石方, 010101|土方; name 添加目录 = 石方
choose 上移目录; file Name FROM tblSYB ORDER BY Code = 土建, 土石方, 石方, 土方; choose 下移目录
name 修改目录 = 岩石; name 修改目录; file Name FROM tblSYB ORDER BY Code = 土建, 土石方, 土方, 岩石
confirm 删除目录; file Name FROM tblSYB ORDER BY Code = 土建, 土石方, 土方
tab grdBillList; choose 添加清单; type 平整场地; key Return; key F2; type 2; key Tab; type m2
key Esc; file Name,Unit FROM tblBill = 2|NULL; key F2; type m2; key Return; file Unit FROM tblBill = m2
round cboProfession grdConcent; key Right; round grdSpec grdSpecEnum; key Right; round txtRule; key Right
round txtContent; tab grdBillList
choose 添加清单; choose 上移清单; file ID FROM tblBill ORDER BY Code = 2, 1; choose 下移清单; key Up
tab txtContent; type 平整; tab qt_tabwidget_tabbar; key Left; tab txtRule; type 按面积; key Tab
file Rule,Cont FROM tblBill ORDER BY ID = 按面积|平整, NULL|NULL; tab CommandBars2.203; type 002; key Return
tab grdBillList; confirm 删除清单; file ID FROM tblBill = 1; tab CommandBars2.203; key Esc; tab grdBillList
tab qt_tabwidget_tabbar; key Left; tab grdSpec; choose 添加项目特征; type 土壤类别; key Return; key Right
key F4; key Down*2; key Return; file Name,Type FROM tblBillSpec = 土壤类别|2; tab grdSpecEnum
choose 添加特征值; key Right; type 三类土; key Return; key Left; key Space
file DefVal FROM tblBillSpec = 三类土; choose 添加特征值; choose 删除特征值
file EigenValue,IsUse FROM tblSpecEnum = 三类土|1; tab grdSpec; choose 删除项目特征; file ID FROM tblBillSpec = 
tab qt_tabwidget_tabbar; key Left; tab cboProfession; key Down; key Up; tab grdConcent
choose 添加工程内容; type 土方开挖; key Return; choose 添加工程细节; type 人工挖土方; key Return
file cont,subCont FROM tblCont JOIN tblContDe ON tblCont.ID=ContID = 土方开挖|人工挖土方; choose 添加定额
key Right*2; key F4; key Down; key Return; key Left*2; key F4
tab tvRationContent; key Right; key Down; key Right; key Down; tab grdDEB; key Down; key Return; key Esc
file Deh FROM tblContDe = D1-2; tab grdConcent; type d1-1; key Return; file Deh FROM tblContDe = D1-1
confirm 删除; key Ctrl+Home; confirm 删除; file ID FROM tblCont UNION ALL SELECT ID FROM tblContDe = )");
    press(u"Ctrl+E"_s);
    EXPECT_TRUE(main.editors().isEmpty());
}
