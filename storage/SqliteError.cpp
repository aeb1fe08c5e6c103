#include "storage/SqliteError.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

Error sqliteError(sqlite3* database, int code) {
    if (code == SQLITE_INTERRUPT)
        return {SQLITE_INTERRUPT, u"数据量异常, 语句已中止, 文件可能已损坏"_s};
    const bool known = database && (sqlite3_errcode(database) & 0xff) == (code & 0xff);
    if (known && sqlite3_extended_errcode(database) == SQLITE_READONLY_DBMOVED)
        return {SQLITE_READONLY, u"文件已被删除、移动或替换, 没有写入"_s};
    return {code & 0xff, QString::fromUtf8(known ? sqlite3_errmsg(database) : sqlite3_errstr(code))};
}

Error syntaxError(const QString& near) { return {SQLITE_ERROR, u"near \"%1\": syntax error"_s.arg(near)}; }

Error cannotOpenError(const QString& path) { return {SQLITE_CANTOPEN, u"unable to open database file: "_s + path}; }
