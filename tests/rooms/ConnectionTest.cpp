#include "storage/Connection.h"

#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "storage/Savepoint.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

QString errorOf(const std::function<void()>& act) {
    try {
        act();
    } catch (const Error& error) {
        return QString::number(error.number()) + u' ' + error.description();
    }
    return {};
}

int errorNumber(const std::function<void()>& act) { return errorOf(act).section(u' ', 0, 0).toInt(); }

class ConnectionTest : public ::testing::Test {
protected:
    ConnectionTest() { library.run("CREATE TABLE t (a Integer PRIMARY KEY, b text)"); }

    const TemporaryLibrary library;
    Connection& connection = *library.connection();
};

}  // namespace

TEST_F(ConnectionTest, RunsExactlyOneStatementAndReadsRowsForward) {
    for (const auto& [statement, rows] : std::initializer_list<std::pair<SqlText, qint64>>{
             {"INSERT INTO t(b) VALUES(NULL),(CAST(x'ff41' AS TEXT)),('12😀')", 3},
             {" Savepoint s;", 0},
             {"UPDATE t SET b=b WHERE a>1", 2},
             {"Release Savepoint s;", 0},
             {"DELETE FROM t WHERE a=99; ; -- done\n /* really */ ", 0}})
        EXPECT_EQ(connection.Execute(statement), rows) << qPrintable(statement.text());
    for (const SqlText& statement : {SqlText("INSERT INTO t(b) VALUES('x'); DELETE FROM t"), SqlText("-- nothing")})
        EXPECT_EQ(errorNumber([&] { connection.Execute(statement); }), 1);
    EXPECT_EQ(errorNumber([&] { connection.Execute("INSERT INTO t(a) VALUES(1)"); }), 19) << "the primary number";

    Recordset rows = connection.OpenRecordset("SELECT a AS Id, b FROM t ORDER BY a DESC");
    EXPECT_TRUE(rows.number("ID") == 3 && rows.number("B") == 12 && rows.joined(u"|"_s) == u"3|12😀"_s);
    rows.MoveNext();
    EXPECT_TRUE(rows.text("b").endsWith(u'A'));
    rows.MoveNext();
    EXPECT_TRUE(rows.text("b").isEmpty() && rows.number("b") == 0);
    EXPECT_EQ(errorNumber([&] { rows.text("none"); }), 3265);
    rows.MoveNext();
    rows.MoveNext();
    EXPECT_EQ(errorNumber([&] { rows.text("b"); }), 3021);
}

TEST_F(ConnectionTest, SaysInTheUsersWordsWhatHappened) {
    const QString foreign = library.path() + u".text"_s;
    overwrite(foreign, QByteArray(4096, 'x'));
    connection.OpenRecordset("PRAGMA busy_timeout=0");
    Connection other;
    const std::pair<std::function<void()>, QString> cases[] = {
        {[&] {
             OtherProgram writer(library.path());
             writer.run("BEGIN EXCLUSIVE");
             library.run("DELETE FROM t");
         },
         u"5 文件正被其他程序占用，请关闭该程序后重试（database is locked）"_s},
        {[&] { connection.Execute(sql("UPDATE t SET b='", u"x'y"_s, "'")); },
         u"1 文字中不能有英文单引号（'），请改用中文引号（near \"'y\": syntax error）"_s},
        {[&] { connection.Execute("DELETE FROM gone"); },
         u"1 文件中没有所需的表，可能不是本程序的文件，请核对文件（no such table: gone）"_s},
        {[&] {
             connection.OpenRecordset("PRAGMA max_page_count=1");
             connection.Execute("INSERT INTO t(b) VALUES(hex(zeroblob(9000)))");
         },
         u"13 磁盘已满，没有写入，请腾出空间后重试（database or disk is full）"_s},
        {[&] { other.Open(foreign, QString(), Connection::readWriteCreate); },
         u"26 文件不是数据库，或者设有别的密码，请核对文件（file is not a database）"_s}};
    for (const auto& [act, words] : cases)
        EXPECT_EQ(errorOf(act), words);
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
    EXPECT_EQ(library.rowsInFile("SELECT b FROM t"), QStringList{u"seen"_s});
}

TEST(LibraryConnection, AttachesTheCompanionWhenThereIsOneAndKeepsOneFile) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.bdb"_s);
    OtherProgram(path).run("PRAGMA journal_mode=WAL");
    {
        const auto alone = GetOrmConn(path);
        ASSERT_TRUE(alone);
        alone->Execute("CREATE TABLE t (a)");
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"a.bdb"_s});
        EXPECT_THROW(alone->OpenRecordset("SELECT * FROM dbext.sqlite_master"), Error);
    }
    OtherProgram(path + u'x', "830547").run("CREATE TABLE extra (a)");
    {
        const auto both = GetOrmConn(path);
        ASSERT_TRUE(both);
        EXPECT_EQ(both->OpenRecordset("SELECT name FROM dbext.sqlite_master").text("name"), u"extra"_s);
    }
    overwrite(path + u'x', QByteArray(4096, 'x'));
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(GetOrmConn(path) || GetOrmConn(folder.filePath(u"none/a.bdb"_s)));
    EXPECT_EQ(answers.takePlaces(), QStringList(2, u"ModDBOperator.GetOrmConn"_s));
}

TEST_F(ConnectionTest, RunsOnlySavepointsThatWereStartedAndARollBackLeavesThemOpen) {
    ModalAnswers answers;
    EXPECT_FALSE(ReleaseSP(u"a"_s, &connection, false) || RollBackSP(u"a"_s, &connection, false));
    ASSERT_TRUE(SetSP(u"a"_s, &connection));
    library.run("INSERT INTO tblSYB(code,name) VALUES('01','x')");
    EXPECT_TRUE(RollBackSP(u"a"_s, &connection, true));
    library.run("INSERT INTO tblSYB(code,name) VALUES('02','x')");
    EXPECT_TRUE(library.rowsInFile("SELECT code FROM tblSYB").isEmpty());
    EXPECT_TRUE(ReleaseSP(u"a"_s, &connection, true));
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblSYB"), QStringList{u"02"_s});
    // Chapters are known in any letter case.
    EXPECT_TRUE(ExistSybCode(nullptr, u"03"_s) && !ExistSybCode(&connection, u"03A"_s));
    // Closing commits.
    ASSERT_TRUE(SetSP(u"b"_s, &connection));
    library.run("UPDATE tblSYB SET code='03A'");
    EXPECT_TRUE(ExistSybCode(&connection, u"03a"_s));
    connection.Close();
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblSYB"), QStringList{u"03A"_s});
    answers.closeAnything();
    EXPECT_TRUE(ExistSybCode(&connection, u"04"_s)) << "what cannot be asked";
}

// Twice: what could not be committed at first is forgotten with the commit that came through.
TEST_F(ConnectionTest, LeftoversThatCannotBeCommittedAreReportedOnceAndTriedAgain) {
    connection.OpenRecordset("PRAGMA busy_timeout=0");
    ModalAnswers answers;
    answers.closeAnything();
    const auto event = [](const std::function<void()>& act) {
        guarded({"frmEditor", "event"}, act);
        QCoreApplication::processEvents();
    };
    for (const QString& code : {u"01"_s, u"02"_s}) {
        {
            OtherProgram reader(library.path());
            reader.keepReading();
            event([&] {
                EXPECT_TRUE(SetSP(u"failing"_s, &connection));
                library.run(sql("INSERT INTO tblSYB(code,name) VALUES('", code, "','x')"));
            });
            for (int i = 0; i < 3; ++i)
                event([] {});
        }
        event([] {});
        EXPECT_EQ(library.rowsInFile("SELECT max(code) FROM tblSYB"), QStringList{code});
        EXPECT_EQ(answers.takePlaces(), QStringList{u"Connection.Commit"_s});
    }
}

// Every table with its columns: names, declared types, defaults, and "!" for what may not be empty.
TEST(Schema, ALibraryHoldsTheNineTablesAndNothingElse) {
    const TemporaryLibrary library;
    EXPECT_EQ(
        library
            .rowsInFile("SELECT t.name||': '||group_concat(c.name||' '||c.type||ifnull('='||c.dflt_value,'')||"
                        "iif(c.\"notnull\",'!',''),', ') FROM sqlite_master t, pragma_table_info(t.name) c WHERE "
                        "t.name NOT LIKE 'sqlite%' GROUP BY t.name ORDER BY t.name")
            .join(u'\n'),
        uR"(tblBill: ID INTEGER, Code text(50)!, CodePrefix text(8), addmark text(10), Name text(50), Spec TEXT, Unit text(12), Rule TEXT, macro TEXT, Cont TEXT, Version INTEGER, LastUpdate Datetime, IsDel Boolean, Borg Boolean, ImgID INTEGER
tblBillSpec: ID INTEGER, BillID INTEGER, Name text(100), Type INTEGER, Unit text(12), DefVal TEXT, Version INTEGER=1, LastUpdate Datetime, IsDel Boolean
tblCont: ID INTEGER, Code text(50), Num SmallInt, Cont text(50), Prof text(20), BillID INTEGER!, Version INTEGER=1, LastUpdate Datetime, IsDel Boolean=0, Borg Boolean
tblContDe: ID INTEGER, ContID INTEGER, Num SmallInt, SubNum SmallInt, SubCont text(50), Deh text(100), Name text(150), Unit text(25), DekID text(12), Version INTEGER=1, LastUpdate Datetime, IsDel Boolean, Borg Boolean
tblDekInfo: id INTEGER, DEKID INTEGER!, Name text(50)!, Declare text(16)!, Profession text(50)!, Version INTEGER=1, LastUpdate Datetime, IsDel Boolean, Borg Boolean
tblImage: ID INTEGER, Name text(100), Size INTEGER, pic BLOB, Time Datetime, Note TEXT
tblParm: ID INTEGER, Num INTEGER, Code text(12), Title text(50), Name text(50), Type SmallInt, Unit text(12), List TEXT, default text(50), BillID INTEGER, Version INTEGER=1, LastUpdate Datetime, IsDel Boolean, Borg Boolean
tblSpecEnum: ID INTEGER, SpecID INTEGER, IsUse Boolean, EigenValue TEXT, Version INTEGER=1, LastUpdate Datetime, IsDel Boolean
tblsyb: ID INTEGER, Code text(9), Name text(50)!, Note TEXT, Version INTEGER, LastUpdate Datetime, IsDel Boolean=0, Borg Boolean)"_s);
    EXPECT_EQ(library.rowsInFile("SELECT count(*) FROM sqlite_master WHERE sql LIKE '%(ID Integer PRIMARY KEY "
                                 "AUTOINCREMENT%' OR sql LIKE '%( id Integer PRIMARY KEY AUTOINCREMENT%'"),
              QStringList{u"9"_s});
    library.run("INSERT INTO tblBill(code) VALUES('010101001')");
    EXPECT_TRUE(CreateAllBillDBTable(library.connection()));
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblBill"), QStringList{u"010101001"_s});
    // One that cannot be made leaves none.
    const QTemporaryDir folder;
    Connection other;
    other.Open(folder.filePath(u"a.bdb"_s), QString(), Connection::readWriteCreate);
    other.Execute("CREATE TABLE t(a)");
    other.Execute("CREATE INDEX tblCont ON t(a)");
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(CreateAllBillDBTable(&other));
    EXPECT_EQ(other.OpenRecordset("SELECT count(*) AS n FROM sqlite_schema WHERE type='table'").number("n"), 1);
}
