#include "storage/LibraryConnection.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "storage/Savepoint.h"
#include "storage/SystemDatabase.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

TEST(LibraryConnection, AttachesTheCompanionWhenThereIsOneAndKeepsOneFile) {
    const QTemporaryDir folder;
    const QString path = joinPath(folder.path(), u"a.bdb"_s);
    {
        Connection foreign;
        foreign.Open(path, QString(), 6);
        foreign.Execute("PRAGMA journal_mode=WAL");
        foreign.Execute("CREATE TABLE t (a)");
    }
    {
        const auto alone = GetOrmConn(path);
        ASSERT_TRUE(alone);
        alone->Execute("INSERT INTO t VALUES(1)");
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"a.bdb"_s});
        EXPECT_THROW(alone->OpenRecordset("SELECT * FROM dbext.sqlite_master"), Error);
    }
    {
        Connection companion;
        companion.Open(path + u'x', QString::fromLatin1(systemKey), 6);
        companion.Execute("CREATE TABLE extra (a)");
    }
    const auto both = GetOrmConn(path);
    ASSERT_TRUE(both);
    EXPECT_EQ(both->OpenRecordset("SELECT name FROM dbext.sqlite_master").text("name"), u"extra"_s);
    both->Execute("detach database dbext;");

    QFile companion(path + u'x');
    ASSERT_TRUE(companion.open(QIODevice::WriteOnly));
    companion.write(QByteArray(4096, 'x'));
    companion.close();
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

TEST(Savepoint, RunsOnlyWhatWasStarted) {
    const TemporaryLibrary library;
    Connection* connection = library.connection();
    EXPECT_FALSE(SetSP(QString(), connection));
    EXPECT_FALSE(ReleaseSP(u"a"_s, connection, false));
    EXPECT_FALSE(RollBackSP(u"a"_s, connection, false));
    ASSERT_TRUE(SetSP(u"a"_s, connection));
    EXPECT_TRUE(RollBackSP(u"a"_s, connection, true));
    library.run("INSERT INTO tblSYB(code,name) VALUES('02','x')");
    EXPECT_TRUE(library.rowsInFile("SELECT code FROM tblSYB").isEmpty()) << "the savepoint is still open";
    EXPECT_TRUE(ReleaseSP(u"a"_s, connection, true));
    EXPECT_FALSE(library.rowsInFile("SELECT code FROM tblSYB").isEmpty());
    EXPECT_FALSE(ExecuteDDL(nullptr, "SELECT 1"));
    EXPECT_FALSE(ExecuteDDL(connection, ""));
}
