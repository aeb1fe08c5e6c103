#pragma once

#include <QStringList>
#include <vector>

using namespace Qt::StringLiterals;

/// One line of a source file: a keyword, a blank, and fields separated by "|".
struct SourceLine {
    QString file;  ///< as messages name it
    int number = 0;
    QString keyword;
    QStringList fields;  ///< trimmed; at least one, which may be empty

    /// The field at `index`, empty when the line ends before it.
    QString field(int index) const { return fields.value(index); }
};

/// What is wrong with the sources, line by line, so that one run tells everything.
class Complaints {
public:
    void add(const QString& file, const QString& message) { m_all << file + u": "_s + message; }
    void add(const SourceLine& line, const QString& message);

    /// Complains when `text` is longer than a field of the database takes, or holds what no statement can carry.
    void checkText(const SourceLine& line, const QString& text, int limit);

    bool any() const { return !m_all.isEmpty(); }
    const QStringList& all() const { return m_all; }

private:
    QStringList m_all;
};

/// The lines of the UTF-8 file `name` in `folder`. Empty lines and those that begin with "#" are left out.
std::vector<SourceLine> readSource(const QString& folder, const QString& name, Complaints& complaints);
