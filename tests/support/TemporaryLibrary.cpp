#include "tests/support/TemporaryLibrary.h"

#include <gtest/gtest.h>

#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "storage/LibraryConnection.h"
#include "storage/Schema.h"

using namespace Qt::StringLiterals;

TemporaryLibrary::TemporaryLibrary() : m_connection(GetOrmConn(path())) {
    EXPECT_TRUE(CreateAllBillDBTable(m_connection.get()));
}

QString TemporaryLibrary::path() const { return joinPath(m_folder.path(), u"library.bdb"_s); }

void TemporaryLibrary::run(const SqlText& statement) const {
    try {
        m_connection->Execute(statement);
    } catch (const Error& error) {
        ADD_FAILURE() << qPrintable(error.description()) << " in " << qPrintable(statement.text());
    }
}

QStringList TemporaryLibrary::rowsInFile(const SqlText& query) const { return ::rowsInFile(path(), query); }
