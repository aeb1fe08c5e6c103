#include "storage/Connection.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

int errorNumber(const std::function<void()>& act) {
    try {
        act();
    } catch (const Error& error) {
        EXPECT_FALSE(error.description().isEmpty());
        return error.number();
    }
    return 0;
}

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
    EXPECT_EQ(connection.OpenRecordset("PRAGMA synchronous").number("synchronous"), 2);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "no side files";
}

TEST_F(ConnectionTest, NoValueBreaksOutOfItsStatement) {
    connection.Execute("INSERT INTO t(b) VALUES('one'),('two')");
    for (const char* hostile : {"x'--", "x' OR '1'='1", "';DELETE FROM t;--", "''", "'"}) {
        const QString value = QString::fromUtf8(hostile);
        EXPECT_EQ(errorNumber([&] { connection.Execute(sql("UPDATE t SET b='", value, "' WHERE a='1';")); }), 1);
    }
    QString nul = u"a'b"_s;
    nul[1] = QChar::Null;
    EXPECT_EQ(errorNumber([&] { connection.Execute(sql("UPDATE t SET b='", nul, "' WHERE a='1';")); }), 1);
    EXPECT_EQ(rowsInFile(path(), "SELECT b FROM t"), QStringList({u"one"_s, u"two"_s}));
    EXPECT_EQ(connection.OpenRecordset(sql("SELECT '", Doubled{u"it's"_s}, "' AS v")).text("V"), u"it's"_s);
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

TEST_F(ConnectionTest, WhatCannotBeOpenedFailsAtOnce) {
    Connection other;
    EXPECT_EQ(other.State(), 0);
    const QString missing = joinPath(folder.path(), u"none/x.bdb"_s);
    EXPECT_EQ(errorNumber([&] { other.Open(missing, QString(), 6); }), 14);
    EXPECT_NE(errorNumber([&] { other.Open(folder.path(), QString(), 6); }), 0);

    const QString text = joinPath(folder.path(), u"text.bdb"_s);
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    EXPECT_EQ(errorNumber([&] { other.Open(text, QString(), 6); }), 26);
    EXPECT_EQ(other.State(), 0);
    EXPECT_EQ(errorNumber([&] { other.Execute("SELECT 1"); }), 21);
}

TEST_F(ConnectionTest, ALockedFileIsReportedWithinSeconds) {
    Connection locker;
    locker.Open(path(), QString(), 6);
    locker.Execute("BEGIN EXCLUSIVE");
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(errorNumber([&] { connection.Execute("INSERT INTO t(b) VALUES('x')"); }), 5);
    EXPECT_GT(timer.elapsed(), 500);
    EXPECT_LT(timer.elapsed(), 3000);
    locker.Execute("ROLLBACK");
    EXPECT_EQ(connection.Execute("INSERT INTO t(b) VALUES('x')"), 1);
}

TEST_F(ConnectionTest, AFileIsOnlyData) {
    connection.Execute("CREATE VIEW v AS SELECT * FROM t");
    EXPECT_EQ(errorNumber([&] { connection.OpenRecordset("SELECT * FROM v"); }), 1);
    connection.Execute("CREATE TABLE l(a, b AS (hex(zeroblob(40000000))))");
    EXPECT_EQ(errorNumber([&] { connection.Execute("INSERT INTO l(a) VALUES(1)"); }), 18);
    // A trigger that would count for ever; what comes after it works.
    connection.Execute(
        "INSERT INTO t(b) WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM r LIMIT 99) "
        "SELECT n FROM r");
    connection.Execute("CREATE TRIGGER e AFTER DELETE ON t BEGIN SELECT count(*) FROM t a,t b,t c,t d,t e,t f; END");
    EXPECT_EQ(errorNumber([&] { connection.Execute("DELETE FROM t WHERE a=1"); }), 9);
    EXPECT_EQ(connection.Execute("UPDATE t SET b='y' WHERE a=1"), 1);
}
