// A library is made, filled, changed and searched with the keyboard alone: every key goes to whatever has the focus.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabBar>
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

void press(const QString& keys) {
    QWidget* popup = QApplication::activePopupWidget();
    // A window without a control that has the focus takes the keys itself.
    for (QWidget* taker :
         {popup ? popup->focusWidget() : nullptr, popup, QApplication::focusWidget(), QApplication::activeWindow()})
        if (taker) {
            const QKeyCombination key = QKeySequence(keys)[0];
            return QTest::keyClick(taker, key.key(), key.keyboardModifiers());
        }
}

/// Presses `key` until `there`.
void pressUntil(const QString& key, const std::function<bool()>& there) {
    for (int i = 0; i < 40 && !there(); ++i)
        press(key);
    EXPECT_TRUE(there()) << qPrintable(key) << " has led to " << qPrintable(focusName());
}

void type(const QString& text) {
    // The first character may open an editor, which takes the rest.
    for (const QChar character : text)
        typeText(QApplication::focusWidget(), character);
}

class Keyboard : public ::testing::Test {
protected:
    const QString path = dataPath + u"键盘.bdb"_s;

    Keyboard() {
        installSamples();
        QFile::remove(path);
        main.MDIForm_Load();
        main.resize(1366, 768);
        main.show();
        EditorDriver::activate(&main);
        // Three chapters, each below the one before.
        {
            ModalAnswers answers;
            answers.then([](QWidget*) { giveName(u"键盘"_s); });
            press(u"Ctrl+N"_s);
        }
        EditorDriver::activate(&main);
        EXPECT_EQ(focusName(), u"tvSYB"_s);
        does("name 添加目录 = 土建; name 添加子目录 = 土石方; name 添加子目录 = 土方");
    }

    /// Does one step after the other: a gesture, what it is done to, and after " = " what is typed or found.
    void does(const char* steps) {
        static const QRegularExpression separator(u"\n|; "_s);
        for (const QString& step : QString::fromUtf8(steps).split(separator, Qt::SkipEmptyParts)) {
            SCOPED_TRACE(step.toStdString());
            const QString rest = step.section(u' ', 1);
            const auto found = gestures.find(step.section(u' ', 0, 0));
            ASSERT_NE(found, gestures.end());
            found->second(rest.section(u" = "_s, 0, 0), rest.section(u" = "_s, 1));
            ASSERT_FALSE(HasFailure());
        }
    }

    QString file(const QString& query) const { return rowsInFile(path, sql("SELECT ", query)).join(u", "_s); }
    static KeyedGrid* grid() { return qobject_cast<KeyedGrid*>(QApplication::focusWidget()); }

    void tabTo(const QString& name) {
        EditorDriver::activate(QApplication::activeWindow() ? QApplication::activeWindow() : &main);
        pressUntil(u"Tab"_s, [&] { return focusName() == name; });
    }

    /// Brings a page of the details to the front by the arrow keys of the tab bar.
    void turnTo(int page) {
        auto* bar = main.activeEditor()->findChild<QTabBar*>();
        pressUntil(u"Tab"_s, [&] { return bar->hasFocus(); });
        pressUntil(bar->currentIndex() < page ? u"Right"_s : u"Left"_s, [&] { return bar->currentIndex() == page; });
    }

    static void goToColumn(const QString& key) {
        const int wanted = grid()->column(key);
        pressUntil(grid()->currentIndex().column() < wanted ? u"Right"_s : u"Left"_s,
                   [&] { return grid()->currentIndex().column() == wanted; });
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
        EditorDriver::activate(&main);
        EXPECT_EQ(QApplication::focusWidget(), focus) << qPrintable(focusName());
    }

    static void giveName(const QString& name) {
        type(name);
        press(name.isEmpty() ? u"Esc"_s : u"Return"_s);
    }

    static void confirm(QWidget* box) {
        const auto* yes = qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes);
        pressUntil(u"Tab"_s, [&] { return QApplication::focusWidget() == yes; });
        press(u"Space"_s);
    }

    /// Opens the drop-down list of a cell and goes `steps` entries down.
    void pick(int steps) {
        for (press(u"F4"_s); steps > 0; --steps)
            press(u"Down"_s);
        press(u"Return"_s);
        EditorDriver::activate(&main);
    }

    using Gesture = std::function<void(const QString& what, const QString& text)>;
    const std::map<QString, Gesture> gestures{
        {u"key"_s, [](auto& keys, auto&) { press(keys); }},
        {u"type"_s, [](auto& text, auto&) { type(text); }},
        {u"tab"_s, [this](auto& name, auto&) { tabTo(name); }},
        {u"page"_s, [this](auto& page, auto&) { turnTo(page.toInt()); }},
        {u"column"_s, [](auto& key, auto&) { goToColumn(key); }},
        {u"pick"_s, [this](auto& steps, auto&) { pick(steps.toInt()); }},
        {u"choose"_s, [this](auto& caption, auto&) { choose(caption); }},
        {u"confirm"_s, [this](auto& caption, auto&) { choose(caption, confirm); }},
        {u"name"_s, [this](auto& caption, auto& name) { choose(caption, [&](QWidget*) { giveName(name); }); }},
        {u"file"_s, [this](auto& query, auto& rows) { EXPECT_EQ(file(query), rows); }},
    };

    frmMain main;
};

}  // namespace

TEST_F(Keyboard, TabGoesAsTheEyeDoesBothWays) {
    does("tab grdBillList; choose 添加清单");
    const QStringList details[] = {
        {u"cboProfession"_s, u"grdConcent"_s}, {u"grdSpec"_s, u"grdSpecEnum"_s}, {u"txtRule"_s}, {u"txtContent"_s}};
    for (int page = 0; page < 4; ++page) {
        turnTo(page);
        QStringList ring = QStringList{u"qt_tabwidget_tabbar"_s} + details[page] +
                           QStringList{u"tvSYB"_s, u"CommandBars2.203"_s, u"grdBillList"_s, u"qt_tabwidget_tabbar"_s};
        for (const QString& key : {u"Tab"_s, u"Shift+Tab"_s}) {
            for (const QString& name : ring.mid(1)) {
                press(key);
                EXPECT_EQ(focusName(), name) << qPrintable(key);
            }
            std::reverse(ring.begin(), ring.end());
        }
    }
}

TEST_F(Keyboard, MakesAndChangesEverything) {
    does(R"(
file Code,Name FROM tblSYB ORDER BY Code = 01|土建, 0101|土石方, 010101|土方; name 添加目录 = 石方
choose 上移目录; file Name FROM tblSYB ORDER BY Code = 土建, 土石方, 石方, 土方; choose 下移目录
name 修改目录 = 岩石; name 修改目录; file Name FROM tblSYB ORDER BY Code = 土建, 土石方, 土方, 岩石
confirm 删除目录; file Name FROM tblSYB ORDER BY Code = 土建, 土石方, 土方
tab grdBillList; choose 添加清单; column Name; type 平整场地; key Return; key F2; type 2; key Tab; type m2
key Esc; file Name,Unit FROM tblBill = 2|NULL; key F2; type m2; key Return; file Unit FROM tblBill = m2
choose 添加清单; choose 上移清单; file ID FROM tblBill ORDER BY Code = 2, 1; choose 下移清单
key Up; page 2; tab txtRule; type 按面积; key Tab; page 3; tab txtContent; type 平整; key Tab
file Rule,Cont FROM tblBill ORDER BY ID = 按面积|平整, NULL|NULL; tab CommandBars2.203; type 002; key Return
tab grdBillList; confirm 删除清单; file ID FROM tblBill = 1; tab CommandBars2.203; key Esc; tab grdBillList
page 1; tab grdSpec; choose 添加项目特征; column Name; type 土壤类别
key Return; column type; pick 2; file Name,Type FROM tblBillSpec = 土壤类别|2; tab grdSpecEnum
choose 添加特征值; column eigenValue; type 三类土; key Return; column isUse; key Space
file DefVal FROM tblBillSpec = 三类土; choose 添加特征值; choose 删除特征值
file EigenValue,IsUse FROM tblSpecEnum = 三类土|1; tab grdSpec; choose 删除项目特征; file ID FROM tblBillSpec = 
page 0; tab cboProfession; key Down; key Up; tab grdConcent
choose 添加工程内容; type 土方开挖; key Return; choose 添加工程细节; type 人工挖土方; key Return
file cont,subCont FROM tblCont JOIN tblContDe ON tblCont.ID=ContID = 土方开挖|人工挖土方; choose 添加定额
column dekName; pick 1; column cont; key F4)");
    // The browser: a chapter chosen, a ration inserted, closed.
    auto* browser = frmDekBrowser::shared(&main);
    EditorDriver::activate(browser);
    tabTo(u"tvRationContent"_s);
    bool open = false;
    for (int i = 0; i < 40 && !browser->grdDEB()->hasRows(); ++i)
        press((open = !open) ? u"Right"_s : u"Down"_s);
    does("tab grdDEB; key Down");
    const QString code = browser->grdDEB()->text(browser->grdDEB()->row(), u"DEH"_s);
    const QString other = browser->grdDEB()->text(0, u"DEH"_s);
    does("key Return; key Esc");
    EXPECT_EQ(file(u"Deh FROM tblContDe"_s), code);
    does("tab grdConcent");
    type(other.toLower());
    press(u"Return"_s);
    EXPECT_EQ(file(u"Deh FROM tblContDe"_s), other);
    does("confirm 删除; key Ctrl+Home; key Left");
    EXPECT_TRUE(grid()->isCollapsed(0));
    does("confirm 删除; file ID FROM tblCont UNION ALL SELECT ID FROM tblContDe = ");
    press(u"Ctrl+E"_s);
    EXPECT_TRUE(main.editors().isEmpty());
}
