#include "editor/chapters/frmEditContent.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "tests/support/ModalAnswers.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

namespace {

const QString oldName = u"旧 名"_s;

/// Shows the dialog with `preset`, types `typed`, closes it by the key or the button and gives the content afterwards.
QString asked(const QString& typed, Qt::Key key, const char* button = nullptr, const QString& preset = oldName,
              const QString& message = {}) {
    QWidget window;
    frmEditContent dialog(&window);
    dialog.setContent(preset);
    ModalAnswers answers;
    answers.then([&](QWidget*) {
        QWidget* box = QApplication::focusWidget();
        EXPECT_EQ(box, dialog.findChild<QLineEdit*>(u"txtContent"_s));
        typeText(box, typed);
        auto* pressed = button ? dialog.findChild<QPushButton*>(QString::fromLatin1(button)) : nullptr;
        if (!pressed && key == Qt::Key_unknown) {
            dialog.close();
        } else if (!pressed) {
            QTest::keyClick(box, key);
        } else if (key == Qt::Key_unknown) {
            QTest::mouseClick(pressed, Qt::LeftButton);
        } else {
            pressed->setFocus();
            QTest::keyClick(pressed, key);
        }
        if (!message.isEmpty()) {
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(dialog.focusWidget(), box);
            QTest::keyClick(box, Qt::Key_Escape);
        }
    });
    if (!message.isEmpty())
        answers.press(QMessageBox::Ok);
    dialog.exec();
    EXPECT_EQ(answers.seen().value(1), message);
    EXPECT_FALSE(dialog.isVisible());
    return dialog.Content();
}

}  // namespace

TEST(EditContent, EachWayOfClosingLeavesItsContent) {
    const Qt::Key click = Qt::Key_unknown;
    EXPECT_EQ(asked({}, click, "cmdOK"), oldName);
    EXPECT_EQ(asked({}, Qt::Key_Return), oldName);
    EXPECT_EQ(asked({}, Qt::Key_Enter), oldName);
    EXPECT_EQ(asked({}, click, "cmdCancel"), QString());
    EXPECT_EQ(asked({}, Qt::Key_Escape), QString());
    EXPECT_EQ(asked({}, Qt::Key_Return, "cmdCancel"), QString());
    // The close box keeps the preset value, whatever has been typed.
    EXPECT_EQ(asked(u"typed"_s, click), oldName);
}

TEST(EditContent, TypingReplacesThePresetNameTrimsBlanksAndRefusesNothingElse) {
    EXPECT_EQ(asked(u"  new name "_s, Qt::Key_Return), u"new name"_s);
    // A full-width space belongs to the name.
    EXPECT_EQ(asked(u"\u3000"_s, Qt::Key_Return), u"\u3000"_s);
    EXPECT_EQ(asked(u"   "_s, Qt::Key_unknown, "cmdOK", {}, u"提示: 目录名不能不空！"_s), QString());
}

TEST(EditContent, ValiCharsFilterWhatIsTyped) {
    QWidget window;
    frmEditContent dialog(&window);
    dialog.setValiChars(u"ab1"_s);
    auto* box = dialog.findChild<QLineEdit*>(u"txtContent"_s);
    typeText(box, u"Axb c21'B"_s);
    EXPECT_EQ(box->text(), u"Ab1B"_s);
    QTest::keyClick(box, Qt::Key_Backspace);
    QInputMethodEvent composed;
    composed.setCommitString(u"中a文1"_s);
    QApplication::sendEvent(box, &composed);
    EXPECT_EQ(box->text(), u"Ab1a1"_s);
    dialog.setValiChars({});
    typeText(box, u"x"_s);
    EXPECT_EQ(box->text(), u"Ab1a1x"_s);
}
