#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTest>
#include <QWheelEvent>

#include "editor/bills/BillTextBox.h"
#include "editor/chapters/frmEditContent.h"
#include "editor/contents/ContentPane.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/Lookups.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/Libraries.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/Rations.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

const QString cont = u"cont"_s;
const QString dekName = u"dekName"_s;

/// The window of a library with what is awkward.
class Panes : public testing::Test {
protected:
    void list(const QString& chapter) { user.click(user.tree()->node(u'K' + chapter)); }
    QString shown(int row, const QString& key, int role = Qt::DisplayRole) const {
        return contents->model()->index(row, contents->column(key)).data(role).toString();
    }

    const Rations rations;
    EditorDriver user{awkwardLibrary()};
    KeyedGrid* const bills = user.bills();
    KeyedGrid* const contents = user.contents();
};

}  // namespace

TEST_F(Panes, RefuseTheThousandthBill) {
    OtherProgram(user.path())
        .run(
            "INSERT INTO tblBill(Code) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<998) "
            "SELECT printf('010104%03d',i) FROM n");
    list(u"010104"_s);
    user.run(2, 200);
    ModalAnswers answers;
    answers.press(QMessageBox::Ok);
    user.run(2, 200);
    EXPECT_EQ(answers.seen(), QStringList{u"提示: 对不起！ 由于编码规则此章节只能添加999条清单！"_s});
    EXPECT_EQ(bills->rowCount(), 999);
}

TEST_F(Panes, WriteABoxOnceEachTimeItIsLeftButLentOnlyWhenChanged) {
    list(u"010101"_s);
    Connection* connection = user.editor()->ormConn();
    while (connection->lookups().fillSlice()) {
    }
    auto writes = [&, before = qint64(0)]() mutable {
        const qint64 now = connection->OpenRecordset("SELECT total_changes() AS n").number("n");
        return now - std::exchange(before, now);
    };
    user.showPage(user.rule());
    QWidget other;
    const auto lend = [&] {
        other.show();
        EditorDriver::activate(&other);
        user.activate();
        QMenu menu;
        menu.popup(QPoint(5, 5));
    };
    for (const auto& [typed, lent, written] :
         {std::tuple("", false, 1), {"X", false, 1}, {"", true, 0}, {"Y", true, 1}}) {
        user.rule()->setFocus();
        writes();
        if (*typed)
            EditorDriver::typeOver(user.rule(), QString::fromLatin1(typed));
        lent ? lend() : user.key(user.rule(), Qt::Key_Tab);
        EXPECT_EQ(writes(), written) << typed;
    }
}

TEST(BillTextBox, KeepsWhatTheToolkitWouldReplace) {
    BillTextBox box;
    const QString stored = u"a\u00a0b\u2028c\r\nd😀"_s;
    box.showText(1, stored);
    box.insertPlainText(u"x"_s);
    EXPECT_EQ(box.text(), u'x' + stored);
    box.undo();
    EXPECT_FALSE(box.isChanged());
    QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(box.text(), u"\r\n"_s + stored);
    // What was refused does not come back.
    box.restore();
    QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box.text(), stored);
}

TEST_F(Panes, LetEachRowBeChangedInItsWay) {
    // A content, a second-level content, a ration.
    list(u"030101"_s);
    QStringList asked;
    QObject::connect(user.editor()->contentPane(), &ContentPane::rationWanted, contents,
                     [&](const QString& dekId) { asked << dekId; });
    for (const int row : {0, 5, 6}) {
        EXPECT_FALSE(user.openEditor(contents, row, u"Unit"_s));
        EXPECT_EQ(user.openEditor(contents, row, dekName) != nullptr, row == 6);
        contents->cancelEdit();
        user.click(contents, row, cont);
        user.key(contents, Qt::Key_F4);
    }
    EXPECT_EQ(asked, QStringList{u"AWKWARD"_s}) << "only ration rows ask for the browser";
    EXPECT_EQ(shown(6, dekName), u"特殊定额"_s);
    // A new one is of the library for the leading digits of its bill, also when these have changed.
    user.run(2, 402);
    EXPECT_EQ(contents->text(contents->row(), dekName), u"GD2018ZHDE03"_s);
    list(u"03"_s);
    user.run(1, 104);
    contents->setCell(1, cont);
    user.run(2, 402);
    EXPECT_EQ(contents->text(contents->row(), dekName), u"GD2018ZHDE01"_s);
}

TEST_F(Panes, MarkALibraryUntilItIsWrittenAndTakeTheCodeOfTheBrowserForOneHalfTyped) {
    list(u"030101"_s);
    const auto isMarked = [this] { return shown(2, dekName, Qt::AccessibleDescriptionRole).contains(u"未写入文件"); };
    const QString id = u"GD2018ZHDE03"_s;
    QComboBox* libraries = user.openList(contents, 2, dekName, false);
    EditorDriver::choose(libraries, libraries->findData(id), false);
    EXPECT_TRUE(isMarked());
    user.edit(contents, 2, cont, rations.library(id).names.firstKey());
    EXPECT_FALSE(isMarked());
    user.key(contents, Qt::Key_F4);
    auto* browser = frmDekBrowser::shared(user.window());
    user.activate();
    EditorDriver::typeOver(user.openEditor(contents, 2, cont), u"A9"_s);
    EditorDriver::activate(browser);
    const QString code = rations.library(id).names.lastKey();
    user.editor()->WinCommand(RationMode::Replace, code, id);
    EXPECT_EQ(contents->text(2, cont).section(u']', 0, 0), u'[' + code);
    // A code that is not there is a warning, a library that is not there is critical.
    ModalAnswers answers;
    for (const QMessageBox::Icon icon : {QMessageBox::Warning, QMessageBox::Critical})
        answers.then([icon](QWidget* box) {
            EXPECT_EQ(static_cast<QMessageBox*>(box)->icon(), icon);
            QTest::keyClick(box, Qt::Key_Return);
        });
    user.edit(contents, 2, cont, u"zz"_s);
    EXPECT_FALSE(user.editor()->contentPane()->EditBillContDe(u"A1-1"_s, u"not listed"_s));
}

TEST_F(Panes, KeepTheirSizesAndTurnByTheWheelOnlyWithTheFocus) {
    QComboBox* box = user.profession();
    for (QWidget* focused : std::initializer_list<QWidget*>{user.tree(), box}) {
        focused->setFocus();
        QWheelEvent wheel({1, 1}, box->mapToGlobal(QPointF(1, 1)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &wheel);
        EXPECT_EQ(box->currentIndex(), focused == box ? 1 : 0);
    }
    const auto split = [this] { return user.editor()->findChild<QSplitter*>(u"chaptersAndBills"_s); };
    const int width = split()->sizes().first() + 40;
    split()->setSizes({width, split()->sizes().last() - 40});
    user.close();
    user.open();
    EXPECT_EQ(split()->sizes().first(), width);
}

TEST(EditContent, EnterOnCancelCancelsTheCloseBoxDoesNotAndValiCharsFilterWhatIsTyped) {
    QWidget window;
    frmEditContent dialog(&window);
    dialog.setContent(u"旧名"_s);
    ModalAnswers answers;
    answers.then(&QWidget::close).then([&](QWidget*) {
        auto* cancel = dialog.findChild<QPushButton*>(u"cmdCancel"_s);
        cancel->setFocus();
        QTest::keyClick(cancel, Qt::Key_Return);
    });
    for (const QString& content : {u"旧名"_s, QString()}) {
        dialog.exec();
        EXPECT_EQ(dialog.Content(), content);
    }
    dialog.setValiChars(u"ab1"_s);
    auto* box = dialog.findChild<QLineEdit*>(u"txtContent"_s);
    box->clear();
    typeText(box, u"Axb c21'B"_s);
    EXPECT_EQ(box->text(), u"Ab1B"_s);
    QTest::keyClick(box, Qt::Key_Backspace);
    QInputMethodEvent composed;
    composed.setCommitString(u"中a文1"_s);
    QApplication::sendEvent(box, &composed);
    EXPECT_EQ(box->text(), u"Ab1a1"_s);
}
