#include "tests/support/Typing.h"

#include <QCoreApplication>
#include <QKeyEvent>

void typeText(QWidget* widget, const QString& text) {
    for (qsizetype at = 0, length = 0; at < text.size(); at += length) {
        // A character outside the basic plane comes as one.
        length = text[at].isHighSurrogate() && at + 1 < text.size() ? 2 : 1;
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_unknown, Qt::NoModifier, text.mid(at, length));
            QCoreApplication::sendEvent(widget, &event);
        }
    }
}
