#include "tests/faults/OtherProgram.h"

#include <sqlite3.h>

OtherProgram::OtherProgram(const QString& path, const char* key) {
    EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &m_database), SQLITE_OK);
    if (*key) {
        const QByteArray unlock = QByteArray("PRAGMA cipher='sqlcipher';PRAGMA legacy=4;PRAGMA key='") + key + '\'';
        EXPECT_EQ(sqlite3_exec(m_database, unlock.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
    }
}

OtherProgram::~OtherProgram() { sqlite3_close(m_database); }

QStringList OtherProgram::run(const char* statement, const QStringList& values) {
    sqlite3_stmt* prepared = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(m_database, statement, -1, &prepared, nullptr), SQLITE_OK)
        << sqlite3_errmsg(m_database) << ": " << statement;
    int number = 0;
    for (const QString& value : values) {
        const QByteArray bytes = value.toUtf8();
        sqlite3_bind_text(prepared, ++number, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    }
    QStringList rows;
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(prepared)) == SQLITE_ROW)
        rows << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0)),
                                  sqlite3_column_bytes(prepared, 0));
    EXPECT_EQ(code, SQLITE_DONE) << sqlite3_errmsg(m_database) << ": " << statement;
    sqlite3_finalize(prepared);
    return rows;
}

void overwrite(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Truncate));
    file.write(bytes);
}

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}
