#pragma once

#include <QString>
#include <QStringList>

/// How what is typed is compared with codes and names: full-width and half-width forms, letter case and forms such as
/// ㎡ and m2 are the same, and a letter also stands for a Chinese character that is read with it.

/// `text` in the form in which texts are compared; of a very long one, the beginning.
QString foldedForSearch(const QString& text);

/// The same of a name, and once more without the signs and blanks in it: who types initials leaves them out.
QString foldedNameForSearch(const QString& name);

/// The words of what was typed, folded.
QStringList searchWords(const QString& typed);

/// Whether each of `words` is somewhere in `folded`.
bool containsAll(QStringView folded, const QStringList& words);
