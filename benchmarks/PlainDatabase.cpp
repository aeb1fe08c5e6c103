#include "benchmarks/PlainDatabase.h"

#include <sqlite3.h>

#include "storage/SqliteError.h"

void PlainStatement::Finalizer::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

PlainStatement::PlainStatement(sqlite3* database, const char* text) : m_database(database) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(database, text, -1, &statement, nullptr);
    if (code != SQLITE_OK)
        throw sqliteError(database, code);
    m_statement.reset(statement);
}

bool PlainStatement::step() {
    const int code = sqlite3_step(m_statement.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        throw sqliteError(m_database, code);
    return code == SQLITE_ROW;
}

void PlainStatement::reset() { sqlite3_reset(m_statement.get()); }

qint64 PlainStatement::number(int column) const { return sqlite3_column_int64(m_statement.get(), column); }

QString PlainStatement::text(int column) const {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column)));
}

void PlainStatement::bind(int position, qint64 value) { sqlite3_bind_int64(m_statement.get(), position, value); }

void PlainStatement::bind(int position, const QString& value) {
    const QByteArray text = value.toUtf8();
    sqlite3_bind_text(m_statement.get(), position, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void PlainDatabase::Closer::operator()(sqlite3* database) const { sqlite3_close_v2(database); }

PlainDatabase::PlainDatabase(const QString& path) {
    sqlite3* database = nullptr;
    const int code = sqlite3_open(path.toUtf8().constData(), &database);
    m_database.reset(database);
    if (code != SQLITE_OK)
        throw sqliteError(database, code);
}

void PlainDatabase::run(const char* script) {
    // sqlite3_exec gives every column of a row as text.
    const auto read = [](void*, int, char**, char**) { return 0; };
    const int code = sqlite3_exec(m_database.get(), script, read, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw sqliteError(m_database.get(), code);
}
