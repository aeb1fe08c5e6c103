#pragma once

#include "tests/support/Toolkit.h"

/// Types `text` into `widget` character by character, as an input method that is done composing would: Chinese too.
/// Without `widget` each goes to whatever has the focus by then: the first may open an editor, which takes the rest.
void typeText(QWidget* widget, const QString& text);

/// Makes `window` the one that is typed into, and waits until it is. False when that does not come about.
bool makeActive(QWidget* window);
