#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// The rows of a query, read forward once. Movable; closes itself when it goes.
///
/// Fields are found by column name, ignoring letter case. NULL reads as an empty text or 0; a text that is no valid
/// UTF-8 reads with replacement characters. A row that cannot be read throws Error from MoveNext.
class Recordset {
public:
    Recordset() = default;
    Recordset(Recordset&&) = default;
    Recordset& operator=(Recordset&&) = default;

    /// True when no current row remains.
    bool EndOfFile() const { return !m_statement || m_ended; }

    void MoveNext();
    void Close();

    /// The current row's value as text. Throws Error when there is no such column or no current row.
    QString text(const char* column) const;

    /// The same as UTF-8, not converted: for long lists of which few texts are ever shown.
    QByteArray utf8(const char* column) const;

    /// The current row's value as a whole number, by SQLite's conversion.
    qint64 number(const char* column) const;

    /// All values of the current row as text, NULL as "NULL", with `separator` between them.
    QString joined(const QString& separator) const;

private:
    friend class Connection;
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };

    Recordset(sqlite3* database, sqlite3_stmt* statement);
    int columnIndex(const char* column) const;
    QByteArrayView view(const char* column) const;

    sqlite3* m_database = nullptr;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
    bool m_ended = true;
    mutable std::vector<std::pair<QByteArray, int>>
        m_columns;  ///< those asked for so far; few, so looked through in order
};
