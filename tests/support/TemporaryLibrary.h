#pragma once

#include "app/base/Paths.h"
#include "storage/LibraryConnection.h"
#include "storage/Schema.h"
#include "tests/support/OtherProgram.h"

/// A bill library with the nine tables in a folder of its own, open on `connection()`.
class TemporaryLibrary {
public:
    TemporaryLibrary() { EXPECT_TRUE(CreateAllBillDBTable(connection())); }

    QString path() const { return joinPath(m_folder.path(), u"library.bdb"_s); }
    Connection* connection() const { return m_connection.get(); }

    void run(const SqlText& statement) const { connection()->Execute(statement); }

    /// Read over a second connection, so that only what is in the file is seen.
    QStringList rowsInFile(const SqlText& query) const { return ::rowsInFile(path(), query); }

private:
    QTemporaryDir m_folder;
    const std::unique_ptr<Connection> m_connection = GetOrmConn(path());
};
