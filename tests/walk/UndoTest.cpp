// What is done can be taken back and done again; what another program writes meanwhile is seen, and stays.

#include "tests/support/Libraries.h"
#include "tests/walk/RandomUser.h"

namespace {

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
    EXPECT_TRUE(driver.rule()->isVisible());
    back();
    EXPECT_TRUE(said().startsWith(u"没有可以撤消的操作"_s)) << qPrintable(said());
    driver.click(driver.bills(), 0, u"Name"_s);
    driver.run(2, 200);
    EditorDriver::settle();
    back();
    driver.key(driver.tree(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(driver.bills()->row(), 1) << said().toStdString();
}

TEST_F(Undo, TakesAPastedColumnBackAtOnceUpToTheLineThatWasRefused) {
    const QStringList lines = u"甲,乙,丙',丁"_s.split(u',');
    const std::pair<KeyedGrid*, QString> columns[] = {
        {driver.bills(), u"Name"_s}, {driver.values(), u"eigenValue"_s}, {driver.contents(), u"cont"_s}};
    for (const auto& [grid, key] : columns) {
        driver.click(grid, 0, key);
        const QStringList before = contentOf(path);
        QApplication::clipboard()->setText(lines.join(u"\tm\n"_s));
        // The refusal is told of when the lines above are written.
        QString file;
        ModalAnswers told;
        told.closeAnything();
        told.then([&](QWidget* refusal) {
            file = contentOf(path).join(u'|');
            refusal->close();
        });
        driver.key(grid, Qt::Key_V, Qt::ControlModifier);
        grid->cancelEdit();
        EXPECT_TRUE(said().startsWith(u"已粘贴 2 行"_s)) << qPrintable(said());
        for (int row = 0; row < lines.size(); ++row) {
            EXPECT_EQ(grid->text(row, key) == lines[row], row < 2) << qPrintable(key) << row;
            EXPECT_EQ(file.contains(u'|' + lines[row] + u'|'), row < 2) << qPrintable(key) << row;
        }
        driver.activate();
        back();
        EXPECT_EQ(contentOf(path), before) << qPrintable(key);
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
    EXPECT_TRUE(said().startsWith(u"没有可以撤消的操作"_s)) << qPrintable(said());

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
    driver.comeBack();
    EXPECT_EQ(driver.bills()->text(0, u"Name"_s), u"另一个文件"_s);
}

TEST_F(Undo, WhatAnotherProgramWritesIsShownWhereTheUserIs) {
    const auto othersWrite = [this] {
        OtherProgram(path).run("UPDATE tblSYB SET Name=Name||'…' WHERE Code='05'");
        driver.editor()->showChangesOfOthers();
        EXPECT_TRUE(node("05")->text(0).endsWith(u'…'));
    };
    driver.showPage(driver.rule());
    driver.typeInto(driver.rule(), u"半句"_s);
    othersWrite();
    EXPECT_EQ(driver.rule()->toPlainText(), u"半句"_s);

    driver.showPage(driver.contents());
    driver.profession()->setFocus();
    driver.key(driver.profession(), Qt::Key_Down);
    driver.run(2, 400);
    EditorDriver::settle();
    driver.key(driver.profession(), Qt::Key_Home);
    driver.tree()->setFocus();
    back();
    EXPECT_EQ(driver.profession()->currentIndex(), 1);
    EXPECT_EQ(driver.window()->focusWidget(), driver.profession());
    driver.key(driver.profession(), Qt::Key_Home);

    KeyedGrid* contents = driver.contents();
    int row = contents->rowCount() - 1;
    while (row > 0 && contents->level(row) != 1)
        --row;
    ASSERT_GT(row, 0);
    driver.click(contents, row, u"cont"_s);
    driver.run(2, 402);
    EditorDriver::settle();
    const int rows = contents->rowCount();
    const int blank = contents->row();
    othersWrite();
    EXPECT_EQ(contents->rowCount(), rows);
    EXPECT_EQ(contents->row(), blank);
    contents->setCollapsed(row, true);
    othersWrite();
    EXPECT_TRUE(contents->isCollapsed(row));
}
