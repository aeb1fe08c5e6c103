#include "tests/kill/Content.h"

#include <sqlite3.h>

#include <QCryptographicHash>
#include <QStringList>
#include <memory>

QString contentOf(const QString& path) {
    sqlite3* opened = nullptr;
    sqlite3_open(path.toUtf8().constData(), &opened);
    const std::unique_ptr<sqlite3, int (*)(sqlite3*)> file(opened, sqlite3_close_v2);
    bool read = true;
    const auto eachRow = [&](const QByteArray& query, const auto& take) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(opened, query.constData(), -1, &statement, nullptr);
        int code = SQLITE_ROW;
        while ((code = sqlite3_step(statement)) == SQLITE_ROW)
            take(statement);
        read = read && code == SQLITE_DONE;
        sqlite3_finalize(statement);
    };
    const auto value = [](sqlite3_stmt* row, int column) {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
        return QByteArray(bytes, sqlite3_column_bytes(row, column));
    };
    QList<QByteArray> tables;
    eachRow("SELECT name FROM sqlite_schema WHERE type='table' ORDER BY name",
            [&](sqlite3_stmt* row) { tables << value(row, 0); });
    QStringList digests;
    for (const QByteArray& table : tables) {
        QCryptographicHash digest(QCryptographicHash::Sha1);
        eachRow("SELECT * FROM " + table + " ORDER BY 1", [&](sqlite3_stmt* row) {
            for (int column = 0; column < sqlite3_column_count(row); ++column)
                if (sqlite3_stricmp(sqlite3_column_name(row, column), "LastUpdate") != 0)
                    digest.addData(QByteArray::number(sqlite3_column_type(row, column)) + value(row, column) + '|');
        });
        digests << QString::fromUtf8(table + '=' + digest.result().toHex().left(10));
    }
    return read ? digests.join(u' ') : QString();
}
