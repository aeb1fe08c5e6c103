#include "storage/LibraryConnection.h"

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

/// A library is one file that can be copied at any moment: a foreign one in write-ahead mode is turned back.
void keepOneFile(Connection& connection) {
    if (connection.OpenRecordset("PRAGMA main.journal_mode").text("journal_mode") == u"wal"_s)
        connection.Execute("PRAGMA main.journal_mode=DELETE");
}

}  // namespace

std::unique_ptr<Connection> GetOrmConn(const QString& path) {
    return guarded({"ModDBOperator", "GetOrmConn"}, [&] {
        auto connection = std::make_unique<Connection>();
        connection->Open(path, QString(), Connection::readWriteCreate);
        keepOneFile(*connection);
        if (fso().FileExists(companionPath(path)))
            connection->Execute(sql(" attach database '", path, "x' as dbext key '", systemKey, "' ;"));
        return connection;
    });
}

QString companionPath(const QString& path) { return path + u'x'; }

Connection& requireConnection(Connection* connection) {
    if (!connection)
        throw Error(91, u"没有打开的数据库连接，请重新打开文件"_s);
    return *connection;
}

void ReleaseOrmRecordset(Recordset& recordset) {
    guarded({"ModDBOperator", "ReleaseOrmRecordset"}, [&] { recordset.Close(); });
}

bool ExecuteDDL(Connection* connection, const SqlText& statement) {
    return guarded({"ModDBOperator", "ExecuteDDL"}, [&] {
        if (!connection || statement.isEmpty())
            return false;
        connection->Write(statement);
        return true;
    });
}

bool ExistSybCode(Connection* connection, const QString& code) {
    return guarded(
        {"ModDBOperator", "ExistSybCode"},
        [&] {
            if (!connection)
                return true;
            Recordset found =
                connection->OpenRecordset(sql("SELECT code FROM tblSYB WHERE code='", code, "' COLLATE NOCASE;"));
            const bool exists = !found.EndOfFile();
            ReleaseOrmRecordset(found);
            return exists;
        },
        [] { return true; });
}
