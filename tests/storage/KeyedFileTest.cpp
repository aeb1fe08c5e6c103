#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "storage/SystemDatabase.h"

namespace {

void makeKeyedFile(const QString& path, const char* content) {
    Connection connection;
    connection.Open(path, QString::fromLatin1(systemKey), 6);
    connection.Execute("CREATE TABLE SysBaseData (DekId text)");
    connection.Execute(sql("INSERT INTO SysBaseData VALUES('", QString::fromLatin1(content), "')"));
}

}  // namespace

TEST(KeyedFile, IsProtectedAndReopensFast) {
    const QTemporaryDir folder;
    const QString path = joinPath(folder.path(), QStringLiteral("a.dat"));
    makeKeyedFile(path, "one");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_FALSE(bytes.startsWith("SQLite format 3"));
    EXPECT_FALSE(bytes.contains("SysBaseData"));

    Connection connection;
    EXPECT_THROW(connection.Open(path, QString(), 6), Error);
    EXPECT_THROW(connection.Open(path, QStringLiteral("830548"), 6), Error);
    connection.Open(path, QStringLiteral("830547"), 6);
    QElapsedTimer timer;
    timer.start();
    connection.Open(path, QStringLiteral("830547"), 6);
    EXPECT_EQ(connection.OpenRecordset("SELECT DekId FROM SysBaseData").text("DekId"), QStringLiteral("one"));
    EXPECT_LT(timer.elapsed(), 5);
}

TEST(KeyedFile, ANewFileUnderTheOldNameHasAKeyOfItsOwn) {
    const QTemporaryDir folder;
    const QString path = joinPath(folder.path(), QStringLiteral("a.dat"));
    Connection connection;
    for (const char* content : {"one", "two"}) {
        QFile::remove(path);
        makeKeyedFile(path, content);
        connection.Open(path, QStringLiteral("830547"), 6);
        EXPECT_EQ(connection.OpenRecordset("SELECT DekId FROM SysBaseData").text("DekId"),
                  QString::fromLatin1(content));
        connection.Close();
    }
}
