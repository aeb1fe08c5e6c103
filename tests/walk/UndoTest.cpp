// What is done can be taken back and done again; what another program writes meanwhile is seen, and stays.

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTabWidget>

#include "editor/common/LibraryDocument.h"
#include "tests/support/Libraries.h"
#include "tests/support/ModalAnswers.h"
#include "tests/walk/RandomUser.h"

using namespace Qt::StringLiterals;

namespace {

/// All that the library holds, time stamps included; the counters of row ids, which come first, go on counting.
QStringList rowsOf(const QString& path) {
    const QStringList content = contentOf(path);
    return content.mid(content.indexOf(u"tblBill"_s));
}

/// The awkward library with the bills of 010101 listed, and how it is worked in.
class Undo : public ::testing::Test {
protected:
    Undo() { driver.click(node("010101")); }

    KeyedTree::Node* node(const char* code) const { return driver.tree()->node(u'K' + QLatin1String(code)); }
    void back() const { driver.key(driver.tree(), Qt::Key_Z, Qt::ControlModifier); }
    QStringList names() const {
        return rowsInFile(path, "SELECT Code,Name FROM tblBill WHERE Code LIKE '010101___' ORDER BY Code");
    }
    QString said() const { return driver.window()->findChild<QLabel*>(u"statusLine"_s)->text(); }
    void deleteBill(int row) const {
        driver.click(driver.bills(), row, u"Name"_s);
        ModalAnswers yes;
        yes.press(QMessageBox::Yes);
        driver.run(2, 201);
        EditorDriver::settle();
    }

    const QString path = awkwardLibrary();
    EditorDriver driver{path};
};

}  // namespace

TEST(UndoOfRandomSteps, BringsBackEveryByteAndDoesItAgain) {
    for (const QString& path : {sampleCopy(), awkwardLibrary()}) {
        EditorDriver driver(path);
        QList<QStringList> states{rowsOf(path)};
        qsizetype state = 0, gone = 0;
        using Offer = LibraryHistory::Offer;
        LibraryHistory* history = driver.editor()->library().history();
        QObject::connect(history, &LibraryHistory::said, history, [&](const QString& text, Offer offer) {
            if (text.startsWith(u"已撤消") || text.startsWith(u"已重做")) {
                state += text.startsWith(u"已撤消") ? -1 : 1;
                gone += rowsOf(path) != states[state];
            } else if (offer == Offer::Undo) {
                states.resize(++state);
                states << rowsOf(path);
            }
        });
        RandomUser user(driver, 11, {false, false});
        for (int step = 0; step < 450; ++step)
            user.step();
        const qsizetype last = states.size() - 1;
        for (qsizetype left = states.size(); left > 0; --left)
            history->undo();
        EXPECT_EQ(state, 0);
        EXPECT_EQ(rowsOf(path), states.first());
        for (qsizetype left = states.size(); left > 0; --left)
            history->redo();
        EXPECT_EQ(state, last);
        EXPECT_EQ(rowsOf(path), states.last());
        EXPECT_EQ(gone, 0) << "of " << last << " steps";
        EXPECT_GT(last, 60);
    }
}

TEST_F(Undo, TakesTypingBackWhereThereIsAnyAndShowsWhereAStepWas) {
    const QStringList before = names();
    auto* editor = qobject_cast<QLineEdit*>(driver.openEditor(driver.bills(), 0, u"Name"_s));
    const QString name = editor->text();
    EditorDriver::typeOver(editor, u"x"_s);
    driver.key(editor, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor->text(), name);
    driver.key(editor, Qt::Key_Escape);
    driver.showPage(driver.rule());
    driver.typeInto(driver.rule(), u"规则"_s);
    driver.key(driver.rule(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(driver.rule()->toPlainText(), u"规则"_s);
    EXPECT_EQ(names(), before);

    const int last = driver.bills()->rowCount() - 1;
    deleteBill(last);
    EXPECT_TRUE(said().startsWith(u"已删除清单 "_s + before.last().section(u'|', 0, 0))) << qPrintable(said());
    driver.click(node("02"));
    driver.showPage(driver.features());
    back();
    EXPECT_EQ(names(), before);
    EXPECT_EQ(driver.chapter(), u"010101"_s);
    EXPECT_EQ(driver.bills()->row(), last);
    EXPECT_EQ(driver.rule()->parentWidget()->parentWidget(), driver.editor()->findChild<QTabWidget*>());
    EXPECT_TRUE(driver.rule()->isVisible());
    back();
    EXPECT_TRUE(said().startsWith(u"没有可以撤消的操作"_s)) << qPrintable(said());
}

TEST_F(Undo, TakesAPastedColumnBackAtOnceUpToTheLineThatWasRefused) {
    const QStringList lines = u"甲,乙,丙',丁"_s.split(u',');
    const std::pair<KeyedGrid*, QString> columns[] = {
        {driver.bills(), u"Name"_s}, {driver.values(), u"eigenValue"_s}, {driver.contents(), u"cont"_s}};
    for (const auto& [grid, key] : columns) {
        driver.click(grid, 0, key);
        const QStringList before = rowsOf(path);
        QApplication::clipboard()->setText(lines.join(u"\tm\n"_s));
        ModalAnswers told;
        told.closeAnything();
        driver.key(grid, Qt::Key_V, Qt::ControlModifier);
        EXPECT_FALSE(told.seen().isEmpty());
        grid->cancelEdit();
        EXPECT_TRUE(said().startsWith(u"已粘贴 2 行"_s)) << qPrintable(said());
        const QString file = rowsOf(path).join(u'|');
        for (int row = 0; row < lines.size(); ++row) {
            EXPECT_EQ(grid->text(row, key) == lines[row], row < 2) << qPrintable(key) << row;
            EXPECT_EQ(file.contains(u'|' + lines[row] + u'|'), row < 2) << qPrintable(key) << row;
        }
        driver.activate();
        back();
        EXPECT_EQ(rowsOf(path), before) << qPrintable(key);
    }
}

TEST_F(Undo, LeavesAloneWhatAnotherProgramHasChanged) {
    OtherProgram other(path);
    EXPECT_TRUE(driver.edit(driver.bills(), 0, u"Name"_s, u"甲"_s));
    EXPECT_TRUE(driver.edit(driver.bills(), 1, u"Name"_s, u"乙"_s));
    other.run("UPDATE tblBill SET Name='丙' WHERE Name='乙'");
    const QStringList changed = names();
    back();
    EXPECT_TRUE(said().startsWith(u"不能撤消：修改清单 010101002 的清单名称"_s)) << qPrintable(said());
    EXPECT_EQ(driver.bills()->text(1, u"Name"_s), u"丙"_s);
    back();
    EXPECT_EQ(names(), changed) << "a step before one that cannot be undone was";

    // One row alone can be taken back beside what others write, but no renumbering.
    EXPECT_TRUE(driver.edit(driver.bills(), 0, u"Name"_s, u"丁"_s));
    other.run("UPDATE tblBill SET Name='戊' WHERE Name='丙'");
    back();
    EXPECT_EQ(driver.bills()->text(0, u"Name"_s) + driver.bills()->text(1, u"Name"_s), u"甲戊"_s);
    deleteBill(0);
    other.run("UPDATE tblBill SET Unit='t' WHERE Name='戊'");
    const QStringList deleted = names();
    back();
    EXPECT_EQ(names(), deleted);
}

TEST_F(Undo, NoCommandActsOnRowsThatAnotherProgramHasChanged) {
    OtherProgram other(path);
    const int rows = driver.bills()->rowCount();
    driver.click(driver.bills(), rows - 1, u"Name"_s);
    other.run("INSERT INTO tblBill(Code,Name) SELECT '010101'||substr('00'||(?+1),-3),'别人的'",
              {QString::number(rows)});
    driver.run(2, 200);
    EditorDriver::settle();
    EXPECT_EQ(driver.bills()->rowCount(), rows + 2);
    EXPECT_EQ(rowsInFile(path, "SELECT count(*)-count(DISTINCT Code) FROM tblBill"), QStringList{u"0"_s});

    // What is being typed stays, and is written to its own row.
    QWidget* editor = driver.openEditor(driver.bills(), rows - 1, u"Name"_s);
    const QString code = driver.bills()->text(rows - 1, u"Code"_s);
    EditorDriver::typeOver(editor, u"我的"_s);
    other.run("DELETE FROM tblBill WHERE Code='010101001'");
    EXPECT_TRUE(driver.editor()->commitPending());
    EXPECT_TRUE(names().contains(code + u"|我的"_s)) << qPrintable(names().join(u' '));

    // The row is gone that a command was meant for, or that is being typed into: nothing is done, and it is told.
    driver.click(driver.bills(), 0, u"Name"_s);
    other.run("DELETE FROM tblBill WHERE ID=?", {driver.bills()->text(0, u"id"_s)});
    const QStringList left = names();
    driver.run(2, 201);
    EXPECT_EQ(names(), left);
    editor = driver.openEditor(driver.bills(), 0, u"Name"_s);
    EditorDriver::typeOver(editor, u"白打了"_s);
    other.run("DELETE FROM tblBill WHERE ID=?", {driver.bills()->text(0, u"id"_s)});
    ModalAnswers told;
    told.closeAnything();
    driver.editor()->commitPending();
    EXPECT_EQ(told.seen().size(), 1);
    EXPECT_TRUE(told.seen().value(0).contains(u"白打了"_s));
    EXPECT_FALSE(names().join(u' ').contains(u"白打了"_s));
}

TEST_F(Undo, AFileLaidOverTheLibraryIsSeenThoughItsCountOfChangesIsTheSame) {
    const QString copy = path + u".copy"_s;
    QFile::remove(copy);
    ASSERT_TRUE(QFile::copy(path, copy));
    OtherProgram(copy).run("UPDATE tblBill SET Name='另一个文件' WHERE Code='010101001'");
    EXPECT_TRUE(driver.edit(driver.bills(), 0, u"Name"_s, u"我的"_s));
    driver.editor()->showChangesOfOthers();
    EXPECT_EQ(driver.bills()->text(0, u"Name"_s), u"我的"_s);
    overwrite(path, bytesOf(copy));
    QFile later(path);
    ASSERT_TRUE(later.open(QIODevice::ReadWrite) &&
                later.setFileTime(QDateTime::currentDateTime().addSecs(2), QFileDevice::FileModificationTime));
    later.close();
    driver.editor()->showChangesOfOthers();
    EXPECT_EQ(driver.bills()->text(0, u"Name"_s), u"另一个文件"_s);
}
