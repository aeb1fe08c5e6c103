#pragma once

#include <QStringList>

/// Texts that try to break out of a statement, a message, a menu or a line, and texts that are merely unusual. Each is
/// different from the others.
const QStringList& hostileTexts();

/// Whether `text` breaks the statement that it is put into as it is: it is refused then.
bool breaksStatement(const QString& text);

/// A library whose every text is hostile: its chapters have codes that no command makes, and the chapter 010102 has a
/// bill for each hostile text, in their order.
QString hostileLibrary();

/// Codes of its chapters. None is a pattern (%, _): the statements that find what belongs to a chapter by its code
/// would find that of others too.
const QStringList& hostileChapters();
