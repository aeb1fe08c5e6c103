#pragma once

#include <QString>
#include <vector>

#include "app/base/Definitions.h"

/// The one place where message boxes are asked. Texts are shown literally, whatever they contain. In a program without
/// windows they go to its error stream, and questions count as answered with No.

enum class MessageIcon { None, Information, Question, Exclamation, Critical };

/// Shows `text` with an OK button over the active window and waits for the user.
void showMessage(const QString& text, const QString& title = applicationTitle(), MessageIcon icon = MessageIcon::None);

/// Asks `text` with the buttons Yes and No; true for Yes. Closing the box counts as No.
[[nodiscard]] bool askYesNo(const QString& text, const QString& title = applicationTitle(),
                            MessageIcon icon = MessageIcon::None);

/// While one lives, the messages of showMessage() wait; they are shown when it goes. A box stands as long as the user
/// likes, and what is locked or not yet committed meanwhile would stay so.
class MessagesWait {
public:
    MessagesWait();
    ~MessagesWait();
    MessagesWait(const MessagesWait&) = delete;
    MessagesWait& operator=(const MessagesWait&) = delete;

private:
    friend void showMessage(const QString& text, const QString& title, MessageIcon icon);

    struct Message {
        QString text;
        QString title;
        MessageIcon icon;
    };
    std::vector<Message> m_waiting;
};
