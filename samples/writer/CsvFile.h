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

    bool any() const { return !m_all.isEmpty(); }
    const QStringList& all() const { return m_all; }

private:
    QStringList m_all;
};

/// A column that a CSV file must have.
struct CsvColumn {
    const char* name;  ///< as the first row names it
    int width;         ///< most characters that the database's column takes
    bool optional = false;
};

/// The rows of the CSV file `name` in `folder` below the row of column names; every row has all `columns`.
///
/// The file is as spreadsheets save it: UTF-8, with or without a mark, commas between fields, a field with commas,
/// quotes or line breaks in quotes, quotes in it doubled. Blanks around fields are dropped, rows of empty fields are
/// left out. Complains about a file that cannot be read or has other columns, and about fields that are missing, too
/// long, or hold an apostrophe or NUL, which no statement can carry.
std::vector<CsvRow> readCsv(const QString& folder, const QString& name, std::initializer_list<CsvColumn> columns,
                            Complaints& complaints);
