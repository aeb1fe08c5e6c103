#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <memory>

#include "storage/Connection.h"
#include "tests/support/OtherProgram.h"

/// A bill library with the nine tables in a folder of its own, open on `connection()`.
class TemporaryLibrary {
public:
    TemporaryLibrary();

    QString path() const;
    Connection* connection() const { return m_connection.get(); }

    /// Runs `statement` on the library's connection and fails the test when it cannot.
    void run(const SqlText& statement) const;

    /// All rows of a query, read over a second connection, so that only what is in the file is seen: one text a row,
    /// fields joined by "|", NULL as "NULL".
    QStringList rowsInFile(const SqlText& query) const;

private:
    QTemporaryDir m_folder;
    std::unique_ptr<Connection> m_connection;
};
