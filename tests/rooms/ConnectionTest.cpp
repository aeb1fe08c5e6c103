#include "storage/Connection.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "tests/support/OtherProgram.h"

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
    for (const SqlText& statement : {SqlText("INSERT INTO t(b) VALUES('x'); DELETE FROM t"), SqlText("-- nothing")})
        EXPECT_EQ(errorNumber([&] { connection.Execute(statement); }), 1);
    EXPECT_EQ(errorNumber([&] { connection.OpenRecordset("SELECT 1; SELECT 2"); }), 1);
    EXPECT_EQ(rowsInFile(path(), "SELECT count(*) FROM t"), QStringList{u"4"_s});
    EXPECT_EQ(connection.OpenRecordset("PRAGMA synchronous").number("synchronous"), 3);
    EXPECT_EQ(connection.OpenRecordset("PRAGMA busy_timeout").number("timeout"), 2000);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1) << "no side files";
}

TEST_F(ConnectionTest, ReadsRowsForwardAndNullsAsEmpty) {
    connection.Execute("INSERT INTO t(a,b) VALUES(1,NULL),(2,CAST(x'ff41' AS TEXT)),(3,'12😀')");
    Recordset rows = connection.OpenRecordset("SELECT a AS Id, b FROM t ORDER BY a");
    EXPECT_TRUE(rows.number("ID") == 1 && rows.text("B").isEmpty() && rows.number("b") == 0);
    rows.MoveNext();
    EXPECT_TRUE(rows.text("b").endsWith(u'A'));
    rows.MoveNext();
    EXPECT_EQ(rows.number("b"), 12);
    EXPECT_EQ(rows.joined(u"|"_s), u"3|12😀"_s);
    EXPECT_EQ(errorNumber([&] { rows.text("none"); }), 3265);
    rows.MoveNext();
    EXPECT_TRUE(rows.EndOfFile());
    EXPECT_EQ(errorNumber([&] { rows.text("b"); }), 3021);
    rows.MoveNext();
}

TEST_F(ConnectionTest, SaysInTheUsersWordsWhatHappened) {
    const QString foreign = joinPath(folder.path(), u"text.bdb"_s);
    overwrite(foreign, QByteArray(4096, 'x'));
    connection.OpenRecordset("PRAGMA busy_timeout=0");
    Connection other;
    const auto open = [&](const QString& file) { return [&other, file] { other.Open(file, QString(), 6); }; };
    const auto run = [&](const SqlText& statement) { return [&, statement] { connection.Execute(statement); }; };
    const auto insert = run("INSERT INTO t(b) VALUES('x')");
    {
        OtherProgram writer(path());
        writer.run("BEGIN EXCLUSIVE");
        EXPECT_EQ(errorText(insert), u"5 文件正被其他程序占用，请关闭该程序后重试（database is locked）"_s);
    }
    const std::pair<std::function<void()>, QString> cases[] = {
        {insert, {}},
        {run(sql("UPDATE t SET b='", u"x'y"_s, "'")),
         u"1 文字中不能有英文单引号（'），请改用中文引号（near \"'y\": syntax error）"_s},
        {run("DELETE FROM gone"), u"1 文件中没有所需的表，可能不是本程序的文件，请核对文件（no such table: gone）"_s},
        {open(foreign), u"26 文件不是数据库，或者设有别的密码，请核对文件（file is not a database）"_s},
        {open(folder.path()), u"14 "_s},
        {open(folder.filePath(u"none/x.bdb"_s)), u"14 "_s},
        {[&] { other.Execute("SELECT 1"); }, u"21 "_s},
        {[&] { ASSERT_TRUE(QFile::rename(path(), path() + u"2"_s)); }, {}},
        {insert,
         u"8 文件已被删除、移动或替换，没有写入；请把原文件放回原处，或关闭窗口后重新打开"
         "（attempt to write a readonly database）"_s}};
    for (const auto& [act, words] : cases) {
        const QString text = errorText(act);
        EXPECT_EQ(words.endsWith(u' ') ? text.first(words.size()) : text, words);
    }
    EXPECT_EQ(other.State(), 0);
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

// The key is derived once for each salt: a file made anew has another one.
TEST(KeyedFile, IsProtectedAndItsKeyIsForgottenWithIt) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.dat"_s);
    for (const QString& content : {u"one"_s, u"two"_s}) {
        QFile::remove(path);
        Connection connection;
        connection.Open(path, u"830547"_s, 6);
        connection.Execute("CREATE TABLE SysBaseData (DekId text)");
        connection.Execute(sql("INSERT INTO SysBaseData VALUES('", content, "')"));
        connection.Close();
        const QByteArray bytes = bytesOf(path);
        EXPECT_FALSE(bytes.startsWith("SQLite format 3") || bytes.contains("SysBaseData"));
        for (const QString& wrong : {QString(), u"830548"_s})
            EXPECT_EQ(errorNumber([&] { connection.Open(path, wrong, 6); }), 26);
        EXPECT_EQ(OtherProgram(path, "830547").run("SELECT DekId FROM SysBaseData"), QStringList{content});
        connection.Open(path, u"830547"_s, 6);
        EXPECT_EQ(connection.OpenRecordset("SELECT DekId FROM SysBaseData").text("DekId"), content);
    }
}
