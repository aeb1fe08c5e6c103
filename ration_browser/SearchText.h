#pragma once

#include <QString>
#include <QStringList>

/// How what is typed is compared with codes and names: full-width and half-width forms, letter case and forms such as
/// ㎡ and m2 are the same, and a letter also stands for a Chinese character that is read with it.

/// A code and a name in the form in which they are compared; of very long ones, the beginnings.
struct Searchable {
    Searchable(const QString& code, const QString& name);

    QStringView code() const { return QStringView(text).left(codeLength); }

    /// The code, the name, and the name without its signs and blanks: who types initials leaves them out.
    QString text;
    qsizetype codeLength;
};

/// The words of what was typed, in that form.
QStringList searchWords(const QString& typed);

/// Whether each of `words` is somewhere in `text`.
bool containsAll(const Searchable& text, const QStringList& words);
