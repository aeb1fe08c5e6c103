#pragma once

#include <QStringList>
#include <initializer_list>
#include <vector>

/// A row of a CSV file.
struct CsvRow {
    QString file;  ///< as messages name it
    int line = 0;  ///< where the row begins, from 1
    QStringList fields;

    const QString& operator[](int column) const { return fields[column]; }
};

/// What is wrong with the files that were read, each with file and line, so that one run tells everything.
class Complaints {
public:
    void add(const CsvRow& row, const QString& message);
    /// What is no mistake, but worth knowing.
    void note(const CsvRow& row, const QString& message);

    bool any() const { return !m_all.isEmpty(); }
    const QStringList& all() const { return m_all; }
    const QStringList& notes() const { return m_notes; }

private:
    QStringList m_all;
    QStringList m_notes;
};

/// A column that a CSV file may have.
struct CsvColumn {
    const char* name;  ///< as the first row names it
    int width;         ///< most characters that the database's column takes
    bool optional = false;
};

/// The rows of the CSV file at `path` below the row of column names; every row has all `columns` in the order given,
/// whatever their order in the file.
///
/// The file is as spreadsheets save it: UTF-8 or UTF-16 as its mark says, without a mark UTF-8 or else GBK; fields
/// apart by commas, semicolons or tabs, whichever the row of names has; a field with those, quotes or line breaks in
/// quotes, quotes in it doubled. Blanks around fields are dropped, rows of empty fields are left out. A column that is
/// optional may be missing; others than `columns` are noted and left out.
///
/// Complains about a file that cannot be read or lacks a column, and about fields that are missing, too long, or hold
/// an apostrophe or NUL, which no statement can carry.
std::vector<CsvRow> readCsv(const QString& path, std::initializer_list<CsvColumn> columns, Complaints& complaints);
