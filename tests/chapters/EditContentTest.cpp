#include "editor/chapters/frmEditContent.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "tests/support/ModalAnswers.h"

namespace {

const QString oldName = QStringLiteral("旧 名");

QLineEdit* box(QWidget* dialog) { return dialog->findChild<QLineEdit*>(QStringLiteral("txtContent")); }

QPushButton* button(QWidget* dialog, const char* name) {
    return dialog->findChild<QPushButton*>(QString::fromLatin1(name));
}

/// Shows the dialog with the old name preset, lets `act` close it and gives the content afterwards.
QString asked(const std::function<void(QWidget*)>& act) {
    QWidget window;
    frmEditContent dialog(&window);
    dialog.setContent(oldName);
    ModalAnswers answers;
    answers.then([&](QWidget* shown) {
        EXPECT_TRUE(QTest::qWaitFor([shown] { return QApplication::activeWindow() == shown; }));
        act(shown);
    });
    dialog.exec();
    EXPECT_FALSE(dialog.isVisible());
    return dialog.Content();
}

}  // namespace

TEST(EditContent, EachWayOfClosingLeavesItsContent) {
    EXPECT_EQ(asked([](QWidget* dialog) { QTest::mouseClick(button(dialog, "cmdOK"), Qt::LeftButton); }), oldName);
    EXPECT_EQ(asked([](QWidget* dialog) { QTest::keyClick(box(dialog), Qt::Key_Return); }), oldName);
    EXPECT_EQ(asked([](QWidget* dialog) { QTest::keyClick(box(dialog), Qt::Key_Enter); }), oldName);
    EXPECT_EQ(asked([](QWidget* dialog) { QTest::mouseClick(button(dialog, "cmdCancel"), Qt::LeftButton); }),
              QString());
    EXPECT_EQ(asked([](QWidget* dialog) { QTest::keyClick(box(dialog), Qt::Key_Escape); }), QString());
    EXPECT_EQ(asked([](QWidget* dialog) {
                  button(dialog, "cmdCancel")->setFocus();
                  QTest::keyClick(button(dialog, "cmdCancel"), Qt::Key_Return);
              }),
              QString());
    // The close box keeps the preset value, whatever has been typed.
    EXPECT_EQ(asked([](QWidget* dialog) {
                  QTest::keyClicks(box(dialog), QStringLiteral("typed"));
                  dialog->close();
              }),
              oldName);
}

TEST(EditContent, TypingReplacesThePresetNameAndBlanksAreTrimmed) {
    EXPECT_EQ(asked([](QWidget* dialog) {
                  EXPECT_EQ(QApplication::focusWidget(), box(dialog));
                  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("  new name "));
                  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
              }),
              QStringLiteral("new name"));
    // A full-width space belongs to the name.
    const QString wide(QChar(0x3000));
    EXPECT_EQ(asked([&](QWidget* dialog) {
                  box(dialog)->setText(wide);
                  QTest::keyClick(box(dialog), Qt::Key_Return);
              }),
              wide);
}

TEST(EditContent, RefusesAnEmptyName) {
    QWidget window;
    frmEditContent dialog(&window);
    ModalAnswers answers;
    answers.then([](QWidget* shown) {
        EXPECT_TRUE(QTest::qWaitFor([shown] { return QApplication::activeWindow() == shown; }));
        QTest::keyClicks(box(shown), QStringLiteral("   "));
        // The message comes while the button is being pressed, and the dialog stays.
        QTest::mouseClick(button(shown, "cmdOK"), Qt::LeftButton);
        EXPECT_TRUE(shown->isVisible());
        EXPECT_EQ(shown->focusWidget(), box(shown));
        QTest::keyClick(box(shown), Qt::Key_Escape);
    });
    answers.press(QMessageBox::Ok);
    dialog.exec();
    EXPECT_EQ(answers.seen().value(1), QStringLiteral("提示: 目录名不能不空！"));
    EXPECT_TRUE(dialog.Content().isEmpty());
}

TEST(EditContent, ValiCharsFilterWhatIsTyped) {
    QWidget window;
    frmEditContent dialog(&window);
    dialog.setValiChars(QStringLiteral("ab1"));
    QLineEdit* txtContent = box(&dialog);
    QTest::keyClicks(txtContent, QStringLiteral("Axb c21'B"));
    EXPECT_EQ(txtContent->text(), QStringLiteral("Ab1B"));
    QTest::keyClick(txtContent, Qt::Key_Backspace);
    EXPECT_EQ(txtContent->text(), QStringLiteral("Ab1"));
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("中a文1"));
    QApplication::sendEvent(txtContent, &composed);
    EXPECT_EQ(txtContent->text(), QStringLiteral("Ab1a1"));
    dialog.setValiChars(QString());
    QTest::keyClicks(txtContent, QStringLiteral("x"));
    EXPECT_EQ(txtContent->text(), QStringLiteral("Ab1a1x"));
}
