#pragma once

#include "tests/support/OtherProgram.h"

/// Whether `text` breaks the statement that it is put into as it is: it is refused then.
inline bool isBroken(const QString& text) { return text.contains(u'\''); }

/// Without the blanks around it.
QString trimmed(QString text);

/// The code before or after `code`, of which the first `length` characters are a number.
QString neighbourCode(const QString& code, int length, bool forward);

/// The rows of a bill library in a database of its own, which knows nothing of the program. What commands do to a
/// library is told in plain statements; with a row that is deleted goes what belongs to it, and nothing else. Only the
/// times of changes and the version numbers are left out.
class LibraryModel : public OtherProgram {
public:
    LibraryModel() : OtherProgram(u":memory:"_s) {}

    /// Takes the rows as the file has them.
    void load(const QString& path);
    /// Fails the test when the file holds anything else. A row that was added gets the id that the file chose for it.
    void expectFile(const QString& path);

    /// What the rows are now is one more state when they differ from the last one; those that lay ahead are forgotten.
    void remember();
    /// Goes to the state before (-1) or after (1) this one. False when there is none.
    bool go(int by);
    /// The rows as they are now are the only state.
    void forgetStates();

    /// The first value that `query` gives; empty when it gives none.
    QString text(const char* query, const QStringList& values);
    /// `name`, or the first of "name(1)", "name(2)" … for which `taken` gives no row.
    QString copyName(const char* taken, const QString& name);

private:
    bool isState(int state);
    void keep(int state);

    std::map<QString, QString> m_columns;
    int m_state = 0;
    int m_states = 0;
};
