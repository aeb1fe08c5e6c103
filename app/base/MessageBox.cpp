#include "app/base/MessageBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextStream>

namespace {

QMessageBox::Icon toolkitIcon(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Information:
            return QMessageBox::Information;
        case MessageIcon::Question:
            return QMessageBox::Question;
        case MessageIcon::Exclamation:
            return QMessageBox::Warning;
        case MessageIcon::Critical:
            return QMessageBox::Critical;
        case MessageIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

/// Names from a library may be of any length; the box must still fit the screen.
constexpr qsizetype longestText = 2000;

QMessageBox::StandardButton ask(const QString& whole, const QString& title, MessageIcon icon,
                                QMessageBox::StandardButtons buttons) {
    const QString text = whole.size() <= longestText ? whole : whole.left(longestText) + QChar(0x2026);
    // A tool without windows cannot show a box: the text goes to its error stream, and a question gets no answer.
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) {
        QTextStream(stderr) << title << ": " << text << '\n';
        return QMessageBox::NoButton;
    }
    QMessageBox box(toolkitIcon(icon), title, text, buttons, QApplication::activeWindow());
    box.setWindowModality(Qt::ApplicationModal);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

MessagesWait* waiting = nullptr;

}  // namespace

MessagesWait::MessagesWait() { waiting = this; }

MessagesWait::~MessagesWait() {
    waiting = nullptr;
    for (const auto& [text, title, icon] : m_waiting)
        showMessage(text, title, icon);
}

void showMessage(const QString& text, const QString& title, MessageIcon icon) {
    if (waiting) {
        waiting->m_waiting.push_back({text, title, icon});
        return;
    }
    ask(text, title, icon, QMessageBox::Ok);
}

bool askYesNo(const QString& text, const QString& title, MessageIcon icon) {
    return ask(text, title, icon, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}
