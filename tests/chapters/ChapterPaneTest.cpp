#include "editor/chapters/ChapterPane.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "editor/chapters/frmEditContent.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

TEST(ChapterPane, TheCloseBoxWritesTheOldNameBack) {
    const TemporaryLibrary library;
    library.run("INSERT INTO tblSYB(Code,Name,LastUpdate) VALUES('01','n','old'),('02','n','old')");
    ChapterPane pane;
    QStringList clicks;
    pane.chapterClicked = [&](const QString& tag) { clicks << tag; };
    pane.setConnection(library.connection());
    pane.CreateTvwSYB();
    ModalAnswers answers;
    answers.then([](QWidget* dialog) {
        typeText(QApplication::focusWidget(), u"typed"_s);
        dialog->close();
    });
    pane.mnuModifyContent_Click();
    EXPECT_EQ(library.rowsInFile("SELECT name,lastUpdate='old' FROM tblSYB").join(u' '), u"n|0 n|1"_s);
    pane.expandAll();
    EXPECT_EQ(clicks, QStringList()) << "only the user clicks chapters";
}

TEST(ChapterPane, ATreeThatCannotBeReadIsRecorded) {
    const TemporaryLibrary library;
    library.run("INSERT INTO tblSYB(Code,Name) VALUES('01','n'),('0101','n'),('0101','n'),('010101','n')");
    ModalAnswers answers;
    answers.closeAnything();
    ChapterPane pane;
    for (Connection* connection : {static_cast<Connection*>(nullptr), library.connection()}) {
        pane.setConnection(connection);
        pane.CreateTvwSYB();
        EXPECT_EQ(pane.tvSYB()->nodeCount(), connection ? 2 : 0);
        EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.CreateTvwSYB"_s});
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
