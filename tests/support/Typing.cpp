#include "tests/support/Typing.h"

#include <QCoreApplication>
#include <QKeyEvent>

void typeText(QWidget* widget, const QString& text) {
    for (const QChar character : text) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_unknown, Qt::NoModifier, QString(character));
            QCoreApplication::sendEvent(widget, &event);
        }
    }
}
