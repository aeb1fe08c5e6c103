#pragma once

#include <QString>

#include "storage/Sql.h"

class Connection;

/// An index that lives inside one command's savepoint, so that a statement per row does not cost a pass over the table
/// per row. The file never keeps it: drop() it before the savepoint is released; after an error the destructor does.
class TemporaryIndex {
public:
    TemporaryIndex(Connection* connection, const SqlText& table, const SqlText& column);
    ~TemporaryIndex();
    TemporaryIndex(const TemporaryIndex&) = delete;
    TemporaryIndex& operator=(const TemporaryIndex&) = delete;

    void drop();

private:
    Connection* m_connection;
    QString m_name;
};
