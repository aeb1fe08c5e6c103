#pragma once

#include <QWidget>

/// Types `text` into `widget` character by character, as an input method that is done composing would: Chinese too.
void typeText(QWidget* widget, const QString& text);
