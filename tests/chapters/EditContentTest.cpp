#include "editor/chapters/frmEditContent.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "tests/support/ModalAnswers.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

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
