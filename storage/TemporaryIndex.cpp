#include "storage/TemporaryIndex.h"

#include "app/base/Guarded.h"
#include "storage/Connection.h"

using namespace Qt::StringLiterals;

namespace {

QString unusedName(Connection* connection, const SqlText& table, const SqlText& column) {
    const QString base = u"tessel_"_s + table.text() + u'_' + column.text();
    QString name = base;
    for (int n = 1;
         !connection->OpenRecordset(sql("SELECT 1 FROM main.sqlite_master WHERE name='", name, "'")).EndOfFile(); ++n)
        name = base + QString::number(n);
    return name;
}

}  // namespace

TemporaryIndex::TemporaryIndex(Connection* connection, const SqlText& table, const SqlText& column)
    : m_connection(connection) {
    const QString name = unusedName(connection, table, column);
    connection->Execute(sql("CREATE INDEX main.", name, " ON ", table, "(", column, ");"));
    m_name = name;
}

TemporaryIndex::~TemporaryIndex() {
    guarded({"ModDBOperator", "TemporaryIndex"}, [this] { drop(); });
}

void TemporaryIndex::drop() {
    if (m_name.isEmpty())
        return;
    // Gone already when the database undid the whole transaction on its own.
    m_connection->Execute(sql("DROP INDEX IF EXISTS main.", m_name, ";"));
    m_name.clear();
}
