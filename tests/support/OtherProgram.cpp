#include "tests/support/OtherProgram.h"

#include <sqlite3.h>

OtherProgram::OtherProgram(const QString& path, const char* key) {
    EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &m_database), SQLITE_OK);
    if (*key) {
        const QByteArray unlock = QByteArray("PRAGMA cipher='sqlcipher';PRAGMA legacy=4;PRAGMA key='") + key + '\'';
        EXPECT_TRUE(tryScript(unlock));
    }
}

OtherProgram::~OtherProgram() { sqlite3_close(m_database); }

Rows OtherProgram::rows(const QString& statement, const QStringList& values) {
    sqlite3_stmt* prepared = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(m_database, statement.toUtf8().constData(), -1, &prepared, nullptr), SQLITE_OK)
        << sqlite3_errmsg(m_database) << ": " << qPrintable(statement);
    int number = 0;
    for (const QString& value : values) {
        const QByteArray bytes = value.toUtf8();
        sqlite3_bind_text(prepared, ++number, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    }
    Rows all;
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(prepared)) == SQLITE_ROW) {
        QStringList& row = all.emplace_back();
        for (int column = 0; column < sqlite3_column_count(prepared); ++column) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, column));
            row << (text ? QString::fromUtf8(text, sqlite3_column_bytes(prepared, column)) : QString());
        }
    }
    EXPECT_EQ(code, SQLITE_DONE) << sqlite3_errmsg(m_database) << ": " << qPrintable(statement);
    sqlite3_finalize(prepared);
    return all;
}

QStringList OtherProgram::run(const SqlText& statement, const QStringList& values) {
    QStringList lines;
    for (QStringList row : rows(statement.text(), values)) {
        for (QString& value : row)
            if (value.isNull())
                value = u"NULL"_s;
        lines << row.join(u'|');
    }
    return lines;
}

bool OtherProgram::tryScript(const QByteArray& script) {
    return sqlite3_exec(m_database, script.constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

void OtherProgram::keepReading() {
    run("BEGIN");
    run("SELECT name FROM sqlite_schema");
}

QStringList rowsInFile(const QString& path, const SqlText& query) { return OtherProgram(path).run(query); }

QStringList contentOf(const QString& path) {
    OtherProgram reader(path);
    QStringList all;
    for (const QString& table :
         reader.run("SELECT name FROM sqlite_schema WHERE name NOT LIKE 'sqlite%' ORDER BY name")) {
        all << table;
        for (const QStringList& row : reader.rows(u"SELECT * FROM "_s + table)) {
            all << QString();
            for (const QString& value : row)
                all.last() += (value.isNull() ? u"␀"_s : value) + u'|';
        }
    }
    return all;
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
