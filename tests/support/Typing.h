#pragma once

#include <QWidget>

/// Types `text` into `widget` character by character, as an input method that is done composing would: Chinese too.
void typeText(QWidget* widget, const QString& text);

/// Makes `window` the one that is typed into, and waits until it is. False when that does not come about.
bool makeActive(QWidget* window);
