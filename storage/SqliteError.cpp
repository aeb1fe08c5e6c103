#include "storage/SqliteError.h"

#include <sqlite3.h>

#include "storage/ErrorWords.h"

using namespace Qt::StringLiterals;

Error sqliteError(sqlite3* database, int code) {
    const bool known = database && (sqlite3_errcode(database) & 0xff) == (code & 0xff);
    const char* said = known ? sqlite3_errmsg(database) : sqlite3_errstr(code);
    return {code & 0xff, errorWords(known ? sqlite3_extended_errcode(database) : code, QString::fromUtf8(said))};
}

Error brokenValueError(const QString& near) { return {SQLITE_ERROR, brokenValueWords(near)}; }

Error statementError(const QString& said) { return {SQLITE_ERROR, errorWords(SQLITE_ERROR, said)}; }

Error noConnectionError() { return {SQLITE_MISUSE, errorWords(SQLITE_MISUSE, u"the connection is closed"_s)}; }

Error cannotOpenError(const QString& path) {
    return {SQLITE_CANTOPEN, errorWords(SQLITE_CANTOPEN, u"unable to open database file: "_s + path)};
}
