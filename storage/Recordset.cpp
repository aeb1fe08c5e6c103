#include "storage/Recordset.h"

#include <sqlite3.h>

#include <QStringList>

#include "storage/SqliteError.h"

using namespace Qt::StringLiterals;

void Recordset::Finalizer::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

Recordset::Recordset(sqlite3* database, sqlite3_stmt* statement) : m_database(database), m_statement(statement) {
    m_ended = false;
    MoveNext();
}

void Recordset::MoveNext() {
    if (EndOfFile())
        return;
    const int code = sqlite3_step(m_statement.get());
    if (code == SQLITE_ROW)
        return;
    m_ended = true;
    if (code != SQLITE_DONE)
        throw sqliteError(m_database, code);
    // Resetting gives up the lock on the file now, not when the recordset is destroyed.
    sqlite3_reset(m_statement.get());
}

void Recordset::Close() { m_statement.reset(); }

int Recordset::columnIndex(const char* column) const {
    if (EndOfFile())
        throw Error(3021, u"没有当前记录"_s);
    for (const auto& [name, index] : m_columns) {
        if (qstrcmp(name, column) == 0)
            return index;
    }
    for (int i = 0; i < sqlite3_column_count(m_statement.get()); ++i) {
        const char* name = sqlite3_column_name(m_statement.get(), i);
        if (name && qstricmp(name, column) == 0) {
            m_columns.emplace_back(column, i);
            return i;
        }
    }
    throw Error(3265, u"文件中没有字段："_s + QString::fromUtf8(column));
}

QString Recordset::text(const char* column) const { return QString::fromUtf8(view(column)); }

QByteArray Recordset::utf8(const char* column) const { return view(column).toByteArray(); }

QByteArrayView Recordset::view(const char* column) const {
    const int index = columnIndex(column);
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), index));
    return {bytes, bytes ? sqlite3_column_bytes(m_statement.get(), index) : 0};
}

qint64 Recordset::number(const char* column) const {
    return sqlite3_column_int64(m_statement.get(), columnIndex(column));
}

QString Recordset::joined(const QString& separator) const {
    QStringList values;
    for (int i = 0; !EndOfFile() && i < sqlite3_column_count(m_statement.get()); ++i) {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), i));
        values << (bytes ? QString::fromUtf8(bytes) : u"NULL"_s);
    }
    return values.join(separator);
}
