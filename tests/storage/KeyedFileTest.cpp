#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "app/base/Error.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

TEST(KeyedFile, IsProtectedAndItsKeyIsForgottenWithIt) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.dat"_s);
    for (const QString& content : {u"one"_s, u"two"_s}) {
        QFile::remove(path);
        Connection connection;
        connection.Open(path, QString::fromLatin1(systemKey), 6);
        connection.Execute("CREATE TABLE SysBaseData (DekId text)");
        connection.Execute(sql("INSERT INTO SysBaseData VALUES('", content, "')"));
        connection.Close();
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        EXPECT_FALSE(bytes.startsWith("SQLite format 3") || bytes.contains("SysBaseData"));

        EXPECT_THROW(connection.Open(path, QString(), 6), Error);
        EXPECT_THROW(connection.Open(path, u"830548"_s, 6), Error);
        connection.Open(path, u"830547"_s, 6);
        EXPECT_EQ(connection.OpenRecordset("SELECT DekId FROM SysBaseData").text("DekId"), content);
    }
}
