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

TEST(LibraryConnection, AttachesTheCompanionWhenThereIsOne) {
    const QTemporaryDir folder;
    const QString path = joinPath(folder.path(), QStringLiteral("a.bdb"));
    {
        const auto alone = GetOrmConn(path);
        ASSERT_TRUE(alone);
        EXPECT_THROW(alone->OpenRecordset("SELECT * FROM dbext.sqlite_master"), Error);
    }
    {
        Connection companion;
        companion.Open(path + QLatin1Char('x'), QString::fromLatin1(systemKey), 6);
        companion.Execute("CREATE TABLE extra (a)");
    }
    const auto both = GetOrmConn(path);
    ASSERT_TRUE(both);
    EXPECT_EQ(both->OpenRecordset("SELECT name FROM dbext.sqlite_master").text("name"), QStringLiteral("extra"));
    both->Execute("detach database dbext;");
}

TEST(LibraryConnection, WhatCannotBeOpenedOrAttachedGivesNone) {
    const QTemporaryDir folder;
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(GetOrmConn(joinPath(folder.path(), QStringLiteral("none/a.bdb"))));
    const QString path = joinPath(folder.path(), QStringLiteral("a.bdb"));
    QFile companion(path + QLatin1Char('x'));
    ASSERT_TRUE(companion.open(QIODevice::WriteOnly));
    companion.write(QByteArray(4096, 'x'));
    companion.close();
    EXPECT_FALSE(GetOrmConn(path));
    EXPECT_EQ(answers.seen().size(), 2);
    EXPECT_TRUE(answers.seen().last().contains(QStringLiteral("错误位置: ModDBOperator.GetOrmConn")));
}

TEST(LibraryConnection, AWriteAheadLibraryBecomesOneFileAgain) {
    const QTemporaryDir folder;
    const QString path = joinPath(folder.path(), QStringLiteral("a.bdb"));
    {
        Connection connection;
        connection.Open(path, QString(), 6);
        connection.OpenRecordset("PRAGMA journal_mode=WAL");
        connection.Execute("CREATE TABLE t (a)");
    }
    const auto connection = GetOrmConn(path);
    ASSERT_TRUE(connection);
    connection->Execute("INSERT INTO t VALUES(1)");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("a.bdb")});
}

TEST(ExistSybCode, IgnoresLetterCaseAndRefusesWithoutConnection) {
    const TemporaryLibrary library;
    library.run("INSERT INTO tblSYB(code,name) VALUES('01A','x')");
    EXPECT_TRUE(ExistSybCode(library.connection(), QStringLiteral("01a")));
    EXPECT_FALSE(ExistSybCode(library.connection(), QStringLiteral("02")));
    EXPECT_TRUE(ExistSybCode(nullptr, QStringLiteral("02")));
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_TRUE(ExistSybCode(library.connection(), QStringLiteral("0'2")));
}

TEST(Savepoint, RunsOnlyWhatWasStarted) {
    const TemporaryLibrary library;
    Connection* connection = library.connection();
    EXPECT_FALSE(SetSP(QString(), connection));
    EXPECT_FALSE(ReleaseSP(QStringLiteral("a"), connection, false));
    EXPECT_FALSE(RollBackSP(QStringLiteral("a"), connection, false));

    const bool started = SetSP(QStringLiteral("a"), connection);
    ASSERT_TRUE(started);
    library.run("INSERT INTO tblSYB(code,name) VALUES('01','x')");
    EXPECT_TRUE(RollBackSP(QStringLiteral("a"), connection, started));
    library.run("INSERT INTO tblSYB(code,name) VALUES('02','x')");
    EXPECT_TRUE(library.rowsInFile("SELECT code FROM tblSYB").isEmpty()) << "the savepoint is still open";
    EXPECT_TRUE(ReleaseSP(QStringLiteral("a"), connection, started));
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblSYB"), QStringList{QStringLiteral("02")});

    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(ReleaseSP(QStringLiteral("a"), connection, true));
    EXPECT_FALSE(SetSP(QStringLiteral("a"), nullptr));
    EXPECT_FALSE(ExecuteDDL(connection, "nonsense"));
    EXPECT_FALSE(ExecuteDDL(nullptr, "SELECT 1"));
    EXPECT_FALSE(ExecuteDDL(connection, ""));
    EXPECT_EQ(answers.seen().size(), 3);
}
