#include "tests/damage/BadFile.h"

#include <gtest/gtest.h>

#include <QFile>

#include "storage/KeyedAccess.h"

using namespace Qt::StringLiterals;

BadFile::BadFile(QString path, QString password, unsigned seed)
    : m_path(std::move(path)), m_password(std::move(password)), m_dice(seed) {}

QByteArray BadFile::randomBytes(int count) {
    QByteArray bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(upTo(256));
    return bytes;
}

QByteArray BadFile::bytes() const {
    QFile file(m_path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

void BadFile::write(const QByteArray& bytes) const {
    QFile file(m_path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

int BadFile::pageSize(const QByteArray& bytes) {
    const int size = bytes.size() < 18 ? 0 : static_cast<uchar>(bytes[16]) << 8 | static_cast<uchar>(bytes[17]);
    return size < 512 || size > bytes.size() ? 512 : size;
}

PlainDatabase BadFile::open(const QString& path, const QString& password) {
    PlainDatabase database(path);
    database.run("PRAGMA cipher='sqlcipher'; PRAGMA legacy=4");
    if (!password.isEmpty())
        database.run(u"PRAGMA key=\"%1\""_s.arg(QString::fromUtf8(keyForFile(path, password))));
    database.run("PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY");
    return database;
}

PlainDatabase BadFile::open() const { return open(m_path, m_password); }

void BadFile::replaceByNew(const QString& password) const {
    QFile::remove(m_path);
    open(m_path, password).run("CREATE TABLE t(a); INSERT INTO t VALUES(1)");
}

QString BadFile::table(PlainDatabase& database) {
    QStringList names;
    PlainStatement rows =
        database.prepare("SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE 'sqlite%'");
    while (rows.step())
        names << rows.text(0);
    return oneOf(names);
}

QStringList BadFile::columns(PlainDatabase& database, const QString& table) {
    QStringList names;
    PlainStatement rows = database.prepare(u"SELECT name FROM pragma_table_info('%1')"_s.arg(table));
    while (rows.step())
        names << u"[%1]"_s.arg(rows.text(0));
    return names;
}
