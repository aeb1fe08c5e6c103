#include "storage/LibraryConnection.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "storage/Savepoint.h"
#include "storage/Schema.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

TEST(LibraryConnection, AttachesTheCompanionWhenThereIsOneAndKeepsOneFile) {
    const QTemporaryDir folder;
    const QString path = joinPath(folder.path(), u"a.bdb"_s);
    {
        OtherProgram foreign(path);
        foreign.run("PRAGMA journal_mode=WAL");
        foreign.run("CREATE TABLE t (a)");
    }
    {
        const auto alone = GetOrmConn(path);
        ASSERT_TRUE(alone);
        alone->Execute("INSERT INTO t VALUES(1)");
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"a.bdb"_s});
        EXPECT_THROW(alone->OpenRecordset("SELECT * FROM dbext.sqlite_master"), Error);
    }
    OtherProgram(path + u'x', "830547").run("CREATE TABLE extra (a)");
    {
        const auto both = GetOrmConn(path);
        ASSERT_TRUE(both);
        EXPECT_EQ(both->OpenRecordset("SELECT name FROM dbext.sqlite_master").text("name"), u"extra"_s);
        both->Execute("detach database dbext;");
    }
    overwrite(path + u'x', QByteArray(4096, 'x'));
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(GetOrmConn(path));
    EXPECT_FALSE(GetOrmConn(joinPath(folder.path(), u"none/a.bdb"_s)));
    EXPECT_EQ(answers.takePlaces(), QStringList(2, u"ModDBOperator.GetOrmConn"_s));
}

TEST(ExistSybCode, IgnoresLetterCaseAndRefusesWithoutConnection) {
    const TemporaryLibrary library;
    library.run("INSERT INTO tblSYB(code,name) VALUES('01A','x')");
    EXPECT_TRUE(ExistSybCode(library.connection(), u"01a"_s));
    EXPECT_FALSE(ExistSybCode(library.connection(), u"02"_s));
    EXPECT_TRUE(ExistSybCode(nullptr, u"02"_s));
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_TRUE(ExistSybCode(library.connection(), u"0'2"_s));
}

TEST(Savepoint, RunsOnlyWhatWasStartedAndARollBackLeavesItOpen) {
    const TemporaryLibrary library;
    Connection* connection = library.connection();
    EXPECT_FALSE(SetSP(QString(), connection) || ReleaseSP(u"a"_s, connection, false) ||
                 RollBackSP(u"a"_s, connection, false) || ExecuteDDL(nullptr, "SELECT 1") ||
                 ExecuteDDL(connection, ""));
    ASSERT_TRUE(SetSP(u"a"_s, connection));
    library.run("INSERT INTO tblSYB(code,name) VALUES('01','x')");
    EXPECT_TRUE(RollBackSP(u"a"_s, connection, true));
    library.run("INSERT INTO tblSYB(code,name) VALUES('02','x')");
    EXPECT_TRUE(library.rowsInFile("SELECT code FROM tblSYB").isEmpty());
    EXPECT_TRUE(ReleaseSP(u"a"_s, connection, true));
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblSYB"), QStringList{u"02"_s});
}

TEST(Leftovers, ThatCannotBeCommittedAreReportedOnceAndTriedAgain) {
    const TemporaryLibrary library;
    library.connection()->OpenRecordset("PRAGMA busy_timeout=0");
    guarded({"frmEditor", "failing"}, [&] {
        EXPECT_TRUE(SetSP(u"failing"_s, library.connection()));
        library.run("INSERT INTO tblSYB(code,name) VALUES('01','x')");
    });
    ModalAnswers answers;
    answers.closeAnything();
    const auto event = [] {
        guarded({"frmEditor", "another event"}, [] {});
        QCoreApplication::processEvents();
    };
    {
        OtherProgram reader(library.path());
        reader.keepReading();
        for (int i = 0; i < 4; ++i)
            event();
    }
    event();
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblSYB"), QStringList{u"01"_s});
    EXPECT_EQ(answers.takePlaces(), QStringList{u"Connection.Commit"_s});
}

// Every table with its columns: names, declared types, defaults, and "!" for what may not be empty.
TEST(Schema, ALibraryHoldsTheNineTablesAndNothingElse) {
    EXPECT_TRUE(GetCreateTableSQL(u"tblsyb"_s).isEmpty()) << "names are compared exactly";
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
    EXPECT_FALSE(CreateAllBillDBTable(nullptr));
}
