#include "tests/support/Typing.h"

void typeText(QWidget* widget, const QString& text) {
    for (qsizetype at = 0, length = 0; at < text.size(); at += length) {
        // A character outside the basic plane comes as one.
        length = text[at].isHighSurrogate() && at + 1 < text.size() ? 2 : 1;
        QTest::sendKeyEvent(QTest::Click, widget ? widget : QApplication::focusWidget(), Qt::Key_unknown,
                            text.mid(at, length), Qt::NoModifier);
    }
}

bool makeActive(QWidget* window) {
    // A window counts as active while a window that it owns is; that is not enough to type into it.
    const auto isActive = [window] {
        return QApplication::activeWindow() == window && QGuiApplication::focusWindow() == window->windowHandle();
    };
    for (int tries = 0; tries < 20 && !isActive(); ++tries) {
        // A window that closes the moment it was given the focus may leave the toolkit believing that it still has it.
        // Changing to another window and back puts that right.
        const std::unique_ptr<QWidget> other(tries % 4 == 3 ? new QWidget : nullptr);
        if (other) {
            other->show();
            (void)QTest::qWaitForWindowActive(other.get(), 1000);
        }
        window->activateWindow();
        (void)QTest::qWaitFor(isActive, 250);
    }
    return isActive();
}
