#include "storage/LibraryConnection.h"

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "storage/LeftJournal.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

/// A library is one file that can be copied at any moment: a foreign one in write-ahead mode is turned back.
void keepOneFile(Connection& connection) {
    if (connection.OpenRecordset("PRAGMA main.journal_mode").text("journal_mode") == u"wal"_s)
        connection.Execute("PRAGMA main.journal_mode=DELETE");
}

/// A copy that was laid over a library is not given up to the journal of the file before it. False when the user does
/// not want it to be opened.
bool keepsItsContent(const QString& path) {
    if (!isJournalOfAnotherFile(path))
        return true;
    const QString question =
        u"清单库旁边的日志文件不是这个文件留下的：\n%1-journal\n\n多半是程序曾经意外中止，之后又把备份复制到了这里。"
        "带着这个日志打开，会破坏现在的文件。\n\n是：把日志改名移开，按文件现在的内容打开（建议）\n"
        "否：不打开，两个文件都保持原样"_s;
    if (!askYesNo(question.arg(path), u"提示"_s, MessageIcon::Exclamation))
        return false;
    moveJournalAside(path);
    return true;
}

}  // namespace

std::unique_ptr<Connection> GetOrmConn(const QString& path) {
    return guarded({"ModDBOperator", "GetOrmConn"}, [&]() -> std::unique_ptr<Connection> {
        if (!keepsItsContent(path))
            return nullptr;
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
