#include "storage/Schema.h"

#include <gtest/gtest.h>

#include <QProcess>

#include "storage/LibraryConnection.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

TEST(Schema, NamesAreComparedExactly) {
    EXPECT_TRUE(GetCreateTableSQL(QStringLiteral("tblsyb")).isEmpty());
    EXPECT_TRUE(GetCreateTableSQL(QStringLiteral("tblSyb"))
                    .text()
                    .startsWith(QStringLiteral(
                        "CREATE TABLE if not exists tblsyb (ID Integer PRIMARY KEY AUTOINCREMENT,Code text(9) ,")));
}

TEST(Schema, ALibraryHoldsTheNineTablesAndNothingElse) {
    const TemporaryLibrary library;
    EXPECT_EQ(library.rowsInFile("SELECT name FROM sqlite_master ORDER BY name"),
              QStringList({QStringLiteral("sqlite_sequence"), QStringLiteral("tblBill"), QStringLiteral("tblBillSpec"),
                           QStringLiteral("tblCont"), QStringLiteral("tblContDe"), QStringLiteral("tblDekInfo"),
                           QStringLiteral("tblImage"), QStringLiteral("tblParm"), QStringLiteral("tblSpecEnum"),
                           QStringLiteral("tblsyb")}));
    library.run("INSERT INTO tblBill(code) VALUES('010101001')");
    EXPECT_TRUE(CreateAllBillDBTable(library.connection()));
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblBill"), QStringList{QStringLiteral("010101001")});
    EXPECT_FALSE(CreateAllBillDBTable(nullptr));
}

TEST(Schema, TheStockShellReadsALibrary) {
    const TemporaryLibrary library;
    library.run("INSERT INTO tblBill(code,name) VALUES('010101001','平整场地')");
    QProcess shell;
    shell.start(QStringLiteral("sqlite3"),
                {library.path(), QStringLiteral("PRAGMA integrity_check; SELECT name FROM tblBill;")});
    ASSERT_TRUE(shell.waitForFinished()) << qPrintable(shell.errorString());
    EXPECT_EQ(QString::fromUtf8(shell.readAllStandardOutput()), QStringLiteral("ok\n平整场地\n"));
}

TEST(Schema, AFailedTableTakesTheOthersBack) {
    Connection connection;
    const QTemporaryDir folder;
    connection.Open(folder.filePath(QStringLiteral("a.bdb")), QString(), 6);
    connection.Execute("CREATE TABLE other (a)");
    connection.Execute("CREATE INDEX tblImage ON other(a)");
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(CreateAllBillDBTable(&connection));
    connection.Close();
    EXPECT_EQ(rowsInFile(folder.filePath(QStringLiteral("a.bdb")), "SELECT name FROM sqlite_master"),
              QStringList({QStringLiteral("other"), QStringLiteral("tblImage")}));
}
