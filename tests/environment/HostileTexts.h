#pragma once

#include <QStringList>

/// Texts that try to break out of a statement, a message, a menu or a line, and texts that are merely unusual. Each is
/// different from the others.
const QStringList& hostileTexts();

/// Whether `text` breaks the statement that it is put into as it is: it is refused then.
bool breaksStatement(const QString& text);
