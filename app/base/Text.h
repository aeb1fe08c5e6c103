#pragma once

#include <QString>

/// Without the blanks (U+0020 only) at both ends; every other white space belongs to the text.
[[nodiscard]] QString trimBlanks(const QString& text);

/// Without unpaired surrogates, which a length limit or a cut leaves behind: UTF-8 has no form for them.
[[nodiscard]] QString wholeCharacters(const QString& text);

/// The number a text begins with, blanks ignored; 0 when it begins with none. Saturates at the limits of 64 bits.
qint64 numericValue(const QString& text);

/// `number` in decimal, padded with zeros on the left to at least `digits` characters.
QString zeroPadded(qint64 number, int digits);

/// Now, in local time, in the one form in which the program writes a date and time: "2024-05-01 13:04:05".
QString nowText();
