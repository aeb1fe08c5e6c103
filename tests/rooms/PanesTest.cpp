#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "editor/bills/BillPane.h"
#include "editor/bills/BillTextBox.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/chapters/frmEditContent.h"
#include "editor/contents/ContentPane.h"
#include "tests/support/EditorDriver.h"
#include "tests/support/Libraries.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/OtherProgram.h"
#include "tests/support/RationLibraries.h"
#include "tests/support/Rations.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

const QString name = u"Name"_s;
const QString cont = u"cont"_s;
const QString dekName = u"dekName"_s;

/// A library with what is awkward; its chapter `chapter` is listed and the bill in `row` is current.
class Panes : public testing::Test {
protected:
    Panes(const QString& chapter, int row) {
        user.click(user.tree()->node(u'K' + chapter));
        user.click(bills, row, name);
    }

    QString file(const SqlText& query) const { return rowsInFile(user.path(), query).join(u", "_s); }

    const Rations rations;
    EditorDriver user{awkwardLibrary()};
    KeyedGrid* const bills = user.bills();
};

/// The rule of the second bill has the line ends of one platform, its content of another.
class BillPanes : public Panes {
protected:
    BillPanes() : Panes(u"010101"_s, 1) {
        run("CREATE TEMP TABLE written(text)");
        run("CREATE TEMP TRIGGER watch AFTER UPDATE OF Rule,Cont ON main.tblBill BEGIN INSERT INTO written VALUES("
            "new.ID||replace(replace(' '||ifnull(new.Rule,'')||'|'||ifnull(new.Cont,''),char(13),'<'),char(10),'>')); "
            "END");
    }

    void run(const SqlText& statement) const { user.editor()->ormConn()->Execute(statement); }

    /// What has been written of the boxes since the last call: "id rule|content".
    QString written() const {
        QStringList rows;
        Recordset row = user.editor()->ormConn()->OpenRecordset("SELECT text FROM temp.written");
        for (; !row.EndOfFile(); row.MoveNext())
            rows << row.text("text");
        run("DELETE FROM temp.written");
        return rows.join(u", "_s);
    }

    void typeAtEnd(QPlainTextEdit* box, const QString& text) const {
        user.showPage(box);
        box->setFocus();
        box->moveCursor(QTextCursor::End);
        for (const QChar c : text)
            c == u'\n' ? QTest::keyClick(box, Qt::Key_Return) : typeText(box, c);
    }
};

/// 0 First, 1 -Sub, 2 --A1-1, 3 --A1-2, 4 -Empty, 5 -o'clock, 6 --X1, 7 Both, …
class ContentPanes : public Panes {
protected:
    ContentPanes() : Panes(u"030101"_s, 0) {}

    ContentPane* const pane = user.editor()->contentPane();
    KeyedGrid* const grid = user.contents();
};

}  // namespace

TEST_F(BillPanes, CellsAreTrimmedAndKeptWithinTheirLimits) {
    user.edit(bills, 1, name, u"  \u3000挖 土 方 "_s);
    user.edit(bills, 1, u"CodePreFix"_s, u"一二三四五六七八九"_s);
    user.edit(bills, 1, u"Unit"_s, u"1234567890123"_s);
    user.edit(bills, 0, name, QString(60, u'n'));
    user.edit(user.features(), 0, u"defval"_s, u" C30 "_s);
    EXPECT_EQ(file("SELECT Name,CodePrefix,Unit FROM tblBill WHERE ID<3"),
              QString(50, u'n') + u"|NULL|m, \u3000挖 土 方|一二三四五六七八|123456789012"_s);
    EXPECT_EQ(file("SELECT DefVal FROM tblBillSpec WHERE BillID=1 LIMIT 1"), u"C30"_s);
    for (const char* key : {"Code", "id", "Cont", "RULE", ""}) {
        QString text = u"x"_s;
        EXPECT_EQ(bills->validateEdit(1, QString::fromLatin1(key), text), EditVerdict::Restore) << key;
    }
    EXPECT_EQ(user.features()->comboList(u"type"_s), u"#0; |#1;数值|#2;枚举|#3;计算"_s);
    // What is still being typed is committed before a command runs.
    EditorDriver::typeOver(user.openEditor(bills, 0, name), u"typed"_s);
    user.run(2, 105);
    EXPECT_EQ(bills->text(1, name), u"typed"_s);
    EXPECT_EQ(file("SELECT Name FROM tblBill WHERE code='010101002'"), u"typed"_s);
}

TEST_F(BillPanes, TickingAValueUnticksTheOthersAndMakesItTheDefault) {
    const auto state = [&] {
        return file("SELECT IsUse FROM tblSpecEnum WHERE SpecID=4 ORDER BY ID") + u" | "_s +
               file("SELECT DefVal FROM tblBillSpec WHERE ID=4") + u" | "_s + user.features()->text(0, u"defval"_s);
    };
    EXPECT_EQ(state(), u"1, 2, NULL | 值 | 值"_s);
    for (const auto& [row, after] :
         {std::pair(1, u"2, 1, 2 |  C30  |  C30 "_s), {0, u"1, 2, 2 | 值 | 值"_s}, {0, u"2, 2, 2 |  | "_s}}) {
        user.click(user.values(), row, u"isUse"_s);
        EXPECT_EQ(state(), after);
    }
}

TEST_F(BillPanes, RefuseTheThousandthBill) {
    run("INSERT INTO tblBill(Code) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<998) "
        "SELECT printf('010104%03d',i) FROM n");
    user.click(user.tree()->node(u"K010104"_s));
    user.run(2, 200);
    ModalAnswers answers;
    answers.press(QMessageBox::Ok);
    user.run(2, 200);
    EXPECT_EQ(answers.seen(), QStringList{u"提示: 对不起！ 由于编码规则此章节只能添加999条清单！"_s});
    EXPECT_EQ(file("SELECT count(*) FROM tblBill WHERE Code LIKE '010104%'"), u"999"_s);
}

TEST_F(BillPanes, TextBoxesAreWrittenOnceEachTimeTheyAreLeftWithTheLineEndsTheyHad) {
    typeAtEnd(user.rule(), {});
    QTest::keyClick(user.rule(), Qt::Key_Tab);
    EXPECT_EQ(written(), u"2 one<>two|one>two"_s) << "left unchanged";
    typeAtEnd(user.rule(), u"\nX"_s);
    bills->setFocus();
    typeAtEnd(user.content(), u"\nY"_s);
    user.click(bills, 0, name);
    EXPECT_EQ(written(), u"2 one<>two<>X|one>two, 2 one<>two<>X|one>two>Y"_s);
    EXPECT_EQ(bills->text(1, u"RULE"_s), u"one\r\ntwo\r\nX"_s);

    // Lent to another window or a menu they are written when changed only.
    QWidget other;
    for (const bool changed : {false, true}) {
        typeAtEnd(user.content(), changed ? u"a\nb"_s : QString());
        other.show();
        EditorDriver::activate(&other);
        user.activate();
        QMenu menu;
        menu.addAction(u"x"_s);
        menu.popup(QPoint(5, 5));
        menu.close();
        EXPECT_EQ(written(), changed ? u"1 |a<>b"_s : QString());
    }
}

TEST_F(BillPanes, TheTextOfOneBillIsNeverWrittenToAnother) {
    typeAtEnd(user.rule(), u"Z"_s);
    bills->setRow(0);
    EXPECT_EQ(written(), u"2 one<>twoZ|one>two"_s);
    typeAtEnd(user.rule(), u"W"_s);
    user.run(2, 200);
    EXPECT_EQ(written(), u"1 W|, 1 W|"_s) << "committed before the command, written when the box is left";
    EXPECT_EQ(user.rule()->toPlainText(), QString());
    typeAtEnd(user.rule(), u"V"_s);
    user.click(user.tree()->node(u"K03"_s));
    EXPECT_EQ(written(), u"15 V|"_s);
    typeAtEnd(user.rule(), u"U"_s);
    bills->setFocus();
    EXPECT_EQ(user.rule()->toPlainText() + written(), QString()) << "no bill, nothing to type into";
}

TEST(BillTextBox, KeepsWhatTheToolkitWouldReplaceAndLocksMonstrousTexts) {
    BillTextBox box;
    const QString stored = u"a\u00a0b\u2028c\r\nd😀"_s;
    box.showText(1, stored);
    EXPECT_EQ(box.text(), stored);
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
    const QString line(20'000, u'x');
    for (const auto& [text, shown] : {std::pair(line, 20'000),
                                      {line + u'x', 20'000},
                                      {(line + u'\n').repeated(9), 9 * 20'001},
                                      {(line + u'\n').repeated(10), 200'000}}) {
        box.showText(1, text);
        EXPECT_EQ(box.toPlainText().size(), shown);
        EXPECT_EQ(box.isReadOnly(), shown < text.size());
        EXPECT_TRUE(box.text() == text);
    }
}

TEST_F(ContentPanes, OfferProfessionsAndShowLibrariesByName) {
    QStringList names;
    for (int i = 0; i < user.profession()->count(); ++i)
        names << user.profession()->itemText(i) + user.profession()->itemData(i).toString();
    EXPECT_EQ(names.join(u' '), u"建筑1 装饰2 安装3 市政4 园林5 送电6 变电7 发电8 配网9"_s);
    EXPECT_EQ(grid->model()->index(6, grid->column(dekName)).data().toString(), u"特殊定额"_s);
    EXPECT_EQ(grid->text(6, dekName), u"AWKWARD"_s);
    QStringList asked;
    QObject::connect(pane, &ContentPane::rationWanted, pane, [&](const QString& dekId) { asked << dekId; });
    for (const int row : {0, 1, 6}) {
        user.click(grid, row, cont);
        user.key(grid, Qt::Key_F4);
    }
    EXPECT_EQ(asked, QStringList{u"AWKWARD"_s}) << "only ration rows ask for the browser";
}

TEST_F(ContentPanes, EditWhatMayBeEditedUpToItsLength) {
    for (const auto& [row, limit] : {std::pair{0, 50}, {1, 50}, {2, 150}}) {
        QWidget* editor = user.openEditor(grid, row, cont);
        ASSERT_TRUE(editor);
        EditorDriver::typeOver(editor, QString(200, u'x'));
        EXPECT_EQ(qobject_cast<QLineEdit*>(editor)->text().size(), limit);
        QTest::keyClick(editor, Qt::Key_Escape);
        EXPECT_FALSE(user.openEditor(grid, row, u"Unit"_s));
        EXPECT_EQ(user.openEditor(grid, row, dekName) != nullptr, row == 2);
        grid->cancelEdit();
    }
}

TEST_F(ContentPanes, TheOnlyBlankRationIsOfTheLibraryForTheLeadingCode) {
    const QString before = file("SELECT ID FROM tblContDe");
    for (const auto& [row, at] : {std::pair{1, 4}, {7, 7}, {3, 4}}) {
        grid->setCell(row, cont);
        const int rows = grid->rowCount();
        pane->munAddBillContDe_Click();
        EXPECT_EQ(grid->row(), at);
        EXPECT_EQ(grid->rowCount(), row == 1 ? rows + 1 : rows);
        EXPECT_EQ(grid->text(at, dekName), u"GD2018ZHDE03"_s);
    }
    EXPECT_EQ(file("SELECT ID FROM tblContDe"), before) << "nothing is written";
}

// First with a ration below, then a second-level content, then a content.
TEST_F(ContentPanes, ARationRowIsRemovedOrClearedByItsNeighbours) {
    for (const auto& [row, left] :
         {std::pair(2, u"1||1|a1-2|2|NULL|3|X1"_s), {2, u"1||2|NULL|3|X1"_s}, {4, u"1||2|NULL|3|"_s}}) {
        ModalAnswers answers;
        answers.press(QMessageBox::Yes);
        grid->setRow(row);
        user.run(2, 403);
        EXPECT_EQ(file("SELECT SubNum,Deh FROM tblContDe WHERE ContID=41 ORDER BY ID").replace(u", "_s, u"|"_s), left);
    }
}

TEST_F(ContentPanes, ARejectedCodeWarnsAndAMissingLibraryIsCritical) {
    ModalAnswers answers;
    for (const QMessageBox::Icon icon : {QMessageBox::Warning, QMessageBox::Critical})
        answers.then([icon](QWidget* box) {
            EXPECT_EQ(static_cast<QMessageBox*>(box)->icon(), icon);
            QTest::keyClick(box, Qt::Key_Return);
        });
    const QString before = grid->text(2, cont);
    user.edit(grid, 2, cont, u"zz"_s);
    user.activate();
    EXPECT_TRUE(grid->isEditing());
    EXPECT_EQ(qobject_cast<QLineEdit*>(QApplication::focusWidget())->selectedText(), u"zz"_s);
    grid->cancelEdit();
    EXPECT_EQ(grid->text(2, cont), before);
    EXPECT_FALSE(pane->EditBillContDe(u"A1-1"_s, u"not listed"_s));
    EXPECT_EQ(answers.seen(), (QStringList{u"提示: 定额 [ZZ] 不存在, 请重新输入!"_s, u"提示: 定额库文件不存在!"_s}));
}

TEST_F(BillPanes, AllChaptersOpenAndCloseAndClosingGoesToTheFirst) {
    const auto open = [&] {
        QStringList codes;
        for (const KeyedTree::Node* node : user.tree()->nodes())
            if (node->isExpanded() && node->childCount() > 0)
                codes << KeyedTree::tag(node);
        return codes.join(u' ') + u" / "_s + user.chapter() + u" / "_s + QString::number(bills->rowCount());
    };
    for (int time = 0; time < 2; ++time) {
        user.runByMouse(1, 108);
        EXPECT_EQ(open(), u"01 0101 0103 03 0301 / "_s + (time ? u"01 / 0"_s : u"010101 / 5"_s));
        user.runByMouse(1, 109);
        EXPECT_EQ(open(), u" / 01 / 0"_s);
    }
}

// By the close button of the child window, and by that of the main window.
TEST(ClosingAWindow, KeepsWhatIsBeingTyped) {
    using Driver = EditorDriver;
    struct {
        KeyedGrid* (Driver::*grid)() const;
        QPlainTextEdit* (Driver::*box)() const;
        const char* key;
        SqlText query;
    } const places[] = {{&Driver::bills, nullptr, "Name", "SELECT Name FROM tblBill WHERE ID=1"},
                        {&Driver::features, nullptr, "Name", "SELECT Name FROM tblBillSpec WHERE ID=1"},
                        {&Driver::values, nullptr, "eigenValue", "SELECT EigenValue FROM tblSpecEnum WHERE ID=1"},
                        {&Driver::contents, nullptr, "cont", "SELECT Cont FROM tblCont WHERE ID=1"},
                        {nullptr, &Driver::rule, "", "SELECT Rule FROM tblBill WHERE ID=1"},
                        {nullptr, &Driver::content, "", "SELECT Cont FROM tblBill WHERE ID=1"}};
    for (const bool main : {false, true})
        for (const auto& [grid, box, key, query] : places) {
            EditorDriver user(awkwardLibrary());
            user.click(user.tree()->node(u"K010101"_s));
            user.click(user.bills(), 0, name);
            if (grid)
                EditorDriver::typeOver(user.openEditor((user.*grid)(), 0, QString::fromLatin1(key)), u"typed"_s);
            else
                user.typeInto((user.*box)(), u"typed"_s);
            EXPECT_TRUE(main ? user.window()->close() : user.editor()->parentWidget()->close());
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            EXPECT_TRUE(user.window()->editors().isEmpty());
            EXPECT_EQ(rowsInFile(user.path(), query), QStringList{u"typed"_s}) << main << qPrintable(query.text());
        }
}

TEST(EditContent, EnterOnCancelCancelsAndValiCharsFilterWhatIsTyped) {
    QWidget window;
    frmEditContent dialog(&window);
    dialog.setContent(u"旧名"_s);
    ModalAnswers answers;
    answers.then([&](QWidget*) {
        auto* cancel = dialog.findChild<QPushButton*>(u"cmdCancel"_s);
        cancel->setFocus();
        QTest::keyClick(cancel, Qt::Key_Return);
    });
    dialog.exec();
    EXPECT_EQ(dialog.Content(), QString());

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

TEST(Editor, HasItsIconsAndWorksWithoutTheListOfRationLibraries) {
    frmEditor editor(nullptr);
    editor.setDBFilePath(sampleCopy());
    const KeptFile list(RationLibraries::systemDatabasePath());
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_TRUE(editor.Form_Load());
    EXPECT_EQ(answers.takeRecords().join(u' '), u"frmEditor.GetDefDekID 14 frmEditor.GetDekComboList 14"_s);
    EXPECT_EQ(editor.DekID(), QString());
    EXPECT_GT(editor.chapterPane()->tvSYB()->nodeCount(), 0);
    EXPECT_EQ(editor.chapterPane()->tvSYB()->selectedNode(), editor.chapterPane()->tvSYB()->firstNode());
    EXPECT_FALSE(editor.billPane()->grdBillList()->hasRows());
    EXPECT_FALSE(QFile::exists(RationLibraries::systemDatabasePath()));
    for (const auto& [host, ids] : {std::pair(1, QList{100, 101, 102, 103, 104, 105, 106, 107}),
                                    {2, QList{200, 201, 202, 104, 105, 300, 301, 400, 401}}})
        for (const int id : ids)
            EXPECT_FALSE(editor.commandBars(host)->action(id)->icon().isNull()) << id;
    EXPECT_EQ(editor.commandBars(1)->action(107)->statusTip(), u"最近打开清单库"_s);
}
