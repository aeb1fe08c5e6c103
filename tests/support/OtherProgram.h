#pragma once

#include "storage/Sql.h"
#include "tests/support/Toolkit.h"

struct sqlite3;

using Rows = QList<QStringList>;

/// Another program that works on a database file by itself, on the database's own calls, with values that are bound and
/// thus never part of a statement. What it cannot do fails the test.
class OtherProgram {
public:
    /// Opens the file at `path`, created when missing; `key` as for the system database, empty for a plain file.
    explicit OtherProgram(const QString& path, const char* key = "");
    ~OtherProgram();
    Q_DISABLE_COPY(OtherProgram)

    /// Runs `statement` with `values` for its question marks; gives all values of its rows as text, NULL as a null one.
    Rows rows(const QString& statement, const QStringList& values = {});
    /// The same, one text a row: values joined by "|", NULL as "NULL".
    QStringList run(const SqlText& statement, const QStringList& values = {});
    /// Runs a whole script; false when it fails.
    bool tryScript(const QByteArray& script);
    /// Begins to read the file and keeps at it for as long as this lives.
    void keepReading();

private:
    sqlite3* m_database = nullptr;
};

/// All rows of a query on the file at `path`, read by another program, so that only what is in the file is seen.
QStringList rowsInFile(const QString& path, const SqlText& query);

/// Every row of every table, but for the counters of row ids; a missing value is ␀.
QStringList contentOf(const QString& path);

/// Makes `bytes` all that the file holds, in its place.
void overwrite(const QString& path, const QByteArray& bytes);

QByteArray bytesOf(const QString& path);
