#include "storage/Connection.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

QString errorText(const std::function<void()>& act) {
    try {
        act();
    } catch (const Error& error) {
        return QString::number(error.number()) + u' ' + error.description();
    }
    return {};
}

int errorNumber(const std::function<void()>& act) { return errorText(act).section(u' ', 0, 0).toInt(); }

class ConnectionTest : public ::testing::Test {
protected:
    ConnectionTest() {
        connection.Open(path(), QString(), Connection::readWriteCreate);
        connection.Execute("CREATE TABLE t (a Integer PRIMARY KEY, b text)");
    }
    QString path() const { return joinPath(folder.path(), u"it's 清单.bdb"_s); }

    QTemporaryDir folder;
    Connection connection;
};

}  // namespace

TEST_F(ConnectionTest, RunsExactlyOneStatementAndCountsItsRows) {
    for (const auto& [statement, rows] : std::initializer_list<std::pair<SqlText, qint64>>{
             {"INSERT INTO t(b) VALUES('x'),('y'),('z')", 3},
             {" Savepoint s;", 0},
             {"UPDATE t SET b='q' WHERE a>1", 2},
             {"Release Savepoint s;", 0},
             {"DELETE FROM t WHERE a=99", 0},
             {"CREATE TABLE u (a)", 0},
             {"INSERT INTO t(b) VALUES('x'); ; -- done\n /* really */ ", 1}})
        EXPECT_EQ(connection.Execute(statement), rows) << qPrintable(statement.text());
    EXPECT_EQ(connection.LastInsertId(), 4);
    EXPECT_EQ(errorNumber([&] { connection.Execute("INSERT INTO t(b) VALUES('x'); DELETE FROM t"); }), 1);
    EXPECT_EQ(errorNumber([&] { connection.OpenRecordset("SELECT 1; SELECT 2"); }), 1);
    EXPECT_EQ(errorNumber([&] { connection.Execute("-- nothing"); }), 1);
    EXPECT_EQ(rowsInFile(path(), "SELECT count(*) FROM t"), QStringList{u"4"_s});
    EXPECT_EQ(connection.OpenRecordset("PRAGMA synchronous").number("synchronous"), 3);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "no side files";
}

TEST_F(ConnectionTest, ReadsRowsForwardAndNullsAsEmpty) {
    connection.Execute("INSERT INTO t(a,b) VALUES(1,NULL),(2,CAST(x'ff41' AS TEXT)),(3,'12')");
    Recordset rows = connection.OpenRecordset("SELECT a AS Id, b FROM t ORDER BY a");
    EXPECT_EQ(rows.number("ID"), 1);
    EXPECT_EQ(rows.text("B"), QString());
    EXPECT_EQ(rows.number("b"), 0);
    rows.MoveNext();
    EXPECT_TRUE(rows.text("b").endsWith(u'A'));
    rows.MoveNext();
    EXPECT_EQ(rows.number("b"), 12);
    EXPECT_EQ(errorNumber([&] { rows.text("none"); }), 3265);
    rows.MoveNext();
    EXPECT_TRUE(rows.EndOfFile());
    EXPECT_EQ(errorNumber([&] { rows.text("b"); }), 3021);
    rows.MoveNext();
}

TEST_F(ConnectionTest, SaysInTheUsersWordsWhatHappened) {
    Connection other;
    const QString foreign = joinPath(folder.path(), u"text.bdb"_s);
    QFile file(foreign);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    other.Open(path(), QString(), Connection::readWriteCreate);
    other.Execute("BEGIN EXCLUSIVE");
    const auto insert = [&] { connection.Execute("INSERT INTO t(b) VALUES('x')"); };
    EXPECT_EQ(errorText(insert), u"5 文件正被其他程序占用，请关闭该程序后重试（database is locked）"_s);
    other.Execute("ROLLBACK");
    EXPECT_EQ(errorText(insert), QString());
    EXPECT_EQ(errorText([&] { connection.Execute(sql("UPDATE t SET b='", u"x'y"_s, "'")); }),
              u"1 文字中不能有英文单引号（'），请改用中文引号（near \"'y\": syntax error）"_s);
    EXPECT_EQ(errorText([&] { connection.Execute("DELETE FROM gone"); }),
              u"1 文件中没有所需的表，可能不是本程序的文件，请核对文件（no such table: gone）"_s);
    EXPECT_EQ(errorText([&] { other.Open(foreign, QString(), Connection::readWriteCreate); }),
              u"26 文件不是数据库，或者设有别的密码，请核对文件（file is not a database）"_s);
    EXPECT_EQ(other.State(), 0);
    EXPECT_EQ(errorNumber([&] { other.Execute("SELECT 1"); }), 21);
    EXPECT_EQ(errorNumber([&] { other.Open(folder.filePath(u"none/x.bdb"_s), QString(), 6); }), 14);
    EXPECT_NE(errorNumber([&] { other.Open(folder.path(), QString(), 6); }), 0);
    ASSERT_TRUE(QFile::rename(path(), path() + u"2"_s));
    EXPECT_EQ(errorText(insert),
              u"8 文件已被删除、移动或替换，没有写入；请把原文件放回原处，或关闭窗口后重新打开"
              "（attempt to write a readonly database）"_s);
}

TEST_F(ConnectionTest, AFileIsOnlyData) {
    connection.Execute("CREATE VIEW v AS SELECT * FROM t");
    EXPECT_EQ(errorNumber([&] { connection.OpenRecordset("SELECT * FROM v"); }), 1);
    connection.Execute("CREATE TABLE l(a, b AS (hex(zeroblob(40000000))))");
    EXPECT_EQ(errorNumber([&] { connection.Execute("INSERT INTO l(a) VALUES(1)"); }), 18);
    // A statement that would count for ever; what comes after it works.
    const SqlText endless = "WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM r) SELECT count(*) FROM r";
    EXPECT_EQ(errorNumber([&] { connection.OpenRecordset(endless); }), 9);
    // The triggers of a file do not act, temporary ones do.
    connection.Execute("CREATE TRIGGER main.foreign_ AFTER INSERT ON t BEGIN DELETE FROM t; END");
    connection.Execute("CREATE TEMP TRIGGER own AFTER INSERT ON main.t BEGIN UPDATE t SET b='seen' WHERE a=NEW.a; END");
    EXPECT_EQ(connection.Execute("INSERT INTO t(b) VALUES('x')"), 1);
    EXPECT_EQ(rowsInFile(path(), "SELECT b FROM t"), QStringList{u"seen"_s});
}
