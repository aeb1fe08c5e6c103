#pragma once

#include <QString>

#include "app/base/Definitions.h"

/// The one place where message boxes are asked. Texts are shown literally, whatever they contain. In a program without
/// windows they go to its error stream, and questions count as answered with No.

enum class MessageIcon { None, Information, Question, Exclamation, Critical };

/// Shows `text` with an OK button over the active window and waits for the user.
void showMessage(const QString& text, const QString& title = applicationTitle(), MessageIcon icon = MessageIcon::None);

/// Asks `text` with the buttons Yes and No; true for Yes. Closing the box counts as No.
[[nodiscard]] bool askYesNo(const QString& text, const QString& title = applicationTitle(),
                            MessageIcon icon = MessageIcon::None);
