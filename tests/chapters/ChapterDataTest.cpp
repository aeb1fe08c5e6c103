#include "editor/chapters/ChapterData.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "app/base/Text.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

class ChapterData : public testing::Test {
protected:
    // The suite need not wait as long as a user would for a file that stays locked.
    ChapterData() { library.connection()->OpenRecordset("PRAGMA busy_timeout=50"); }

    void add(const QString& codes) const {
        for (const QString& code : codes.split(u' '))
            library.run(sql("INSERT INTO tblSYB(code,name) VALUES('", code, "','x')"));
    }
    /// A bill with a row in each table below it, all of which carry its code.
    void addBill(const QString& code) const {
        library.run(sql("INSERT INTO tblBill(code,name) VALUES('", code, "','x')"));
        const qint64 bill = connection->LastInsertId();
        library.run(sql("INSERT INTO tblParm(code,billID) VALUES('", code, "',", bill, ")"));
        library.run(sql("INSERT INTO tblCont(code,billID) VALUES('", code, "',", bill, ")"));
        library.run(sql("INSERT INTO tblContDe(Deh,contID) VALUES('", code, "',", connection->LastInsertId(), ")"));
        library.run(sql("INSERT INTO tblBillSpec(Name,billID) VALUES('", code, "',", bill, ")"));
        library.run(
            sql("INSERT INTO tblSpecEnum(EigenValue,specID) VALUES('", code, "',", connection->LastInsertId(), ")"));
    }
    QString chapters() const { return library.rowsInFile("SELECT code||name FROM tblSYB ORDER BY id").join(u' '); }

    const TemporaryLibrary library;
    Connection* const connection = library.connection();
};

}  // namespace

TEST_F(ChapterData, AreAddedOnceAndRenamedAlone) {
    const QString before = nowText();
    EXPECT_TRUE(AddBillSYB(connection, u"01"_s, u"土石方工程 \"%_--"_s));
    EXPECT_TRUE(AddBillSYB(connection, u"0A"_s, u"x"_s));
    EXPECT_EQ(library.rowsInFile("SELECT code,name,note,version,isdel,borg FROM tblSYB WHERE code='01'"),
              QStringList{u"01|土石方工程 \"%_--|NULL|NULL|0|NULL"_s});
    const QString stamp = library.rowsInFile("SELECT lastUpdate FROM tblSYB").value(0);
    EXPECT_TRUE(before <= stamp && stamp <= nowText()) << qPrintable(stamp);
    {
        ModalAnswers answers;
        answers.closeAnything();
        EXPECT_FALSE(AddBillSYB(connection, u"01"_s, u"y"_s));
        EXPECT_FALSE(AddBillSYB(connection, u"0a"_s, u"y"_s));
        EXPECT_EQ(answers.seen(), QStringList(2, u"提示: 目录编号已经存在!"_s));
    }
    library.run("UPDATE tblSYB SET lastUpdate=NULL");
    EXPECT_TRUE(ModifyBillSYB(connection, u"01"_s, u"新名"_s));
    EXPECT_EQ(chapters(), u"01新名 0Ax"_s);
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblSYB WHERE lastUpdate IS NOT NULL"), QStringList{u"01"_s});
}

TEST_F(ChapterData, DeletingTakesTheBillsOfTheChapterAndItsOwnRow) {
    add(u"01 0101 010101 010102 01010101"_s);
    for (const QString& code : u"010101001 010101002 01010100 0101010011 010102001 01001"_s.split(u' '))
        addBill(code);
    const auto expectLeft = [&](const QString& chapters, const QString& bills) {
        EXPECT_EQ(library.rowsInFile("SELECT group_concat(code) FROM tblSYB"), QStringList{chapters});
        for (const auto& [table, column] : {std::pair<SqlText, SqlText>("tblBill", "code"),
                                            {"tblParm", "code"},
                                            {"tblCont", "code"},
                                            {"tblContDe", "Deh"},
                                            {"tblBillSpec", "Name"},
                                            {"tblSpecEnum", "EigenValue"}})
            EXPECT_EQ(library.rowsInFile(sql("SELECT group_concat(", column, ") FROM ", table)), QStringList{bills});
    };
    EXPECT_TRUE(DeleteBillSYB(connection, u"010101"_s));
    expectLeft(u"01,0101,010102,01010101"_s, u"01010100,0101010011,010102001,01001"_s);
    // Three characters more than the code, whatever its level, make a bill of the chapter.
    EXPECT_TRUE(DeleteBillSYB(connection, u"01"_s));
    expectLeft(u"0101,010102,01010101"_s, u"01010100,0101010011,010102001"_s);
    EXPECT_TRUE(DeleteBillSYB(connection, u"09"_s));
    expectLeft(u"0101,010102,01010101"_s, u"01010100,0101010011,010102001"_s);
}

TEST_F(ChapterData, ADeleteThatFailsKeepsWhatRanBeforeTheError) {
    add(u"010101 010102"_s);
    addBill(u"010101001"_s);
    library.run("DROP TABLE tblSpecEnum");
    const SqlText counts =
        "SELECT (SELECT count(*) FROM tblParm),(SELECT count(*) FROM tblContDe),(SELECT count(*) FROM tblCont),"
        "(SELECT count(*) FROM tblBillSpec),(SELECT count(*) FROM tblBill),(SELECT count(*) FROM tblSYB)";
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(DeleteBillSYB(connection, u"010101"_s));
    EXPECT_EQ(answers.seen().size(), 1);
    // Nothing is in the file until the event is over; the savepoint is open until then.
    EXPECT_EQ(library.rowsInFile(counts), QStringList{u"1|1|1|1|1|2"_s});
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile(counts), QStringList{u"0|0|0|1|1|2"_s});
    EXPECT_TRUE(AddBillSYB(connection, u"02"_s, u"x"_s));
    EXPECT_EQ(chapters(), u"010101x 010102x 02x"_s);
}

TEST_F(ChapterData, ApostrophesAndALockedFileFailAndLaterEditsReachTheFile) {
    add(u"01 02"_s);
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(AddBillSYB(connection, u"03"_s, u"x',0);--"_s));
    EXPECT_FALSE(ModifyBillSYB(connection, u"01"_s, u"y'--"_s));
    EXPECT_FALSE(DeleteBillSYB(connection, u"01' OR ''='"_s));
    EXPECT_FALSE(ExchangeSYBNode(connection, u"01"_s, u"0'"_s));
    const QStringList said = answers.takeSeen();
    const QStringList places = {u"AddBillSYB"_s, QString(), u"DeleteBillSYB"_s, u"ExchangeSYBNode"_s};
    ASSERT_EQ(said.size(), places.size());
    for (qsizetype i = 0; i < said.size(); ++i)
        EXPECT_TRUE(said[i].contains(u"错误位置: frmEditor."_s + places[i] + u"\r\n"_s)) << qPrintable(said[i]);
    {
        Connection other;
        other.Open(library.path(), QString(), Connection::readWriteCreate);
        other.Execute("BEGIN IMMEDIATE");
        EXPECT_FALSE(ExchangeSYBNode(connection, u"01"_s, u"02"_s));
        EXPECT_FALSE(DeleteBillSYB(connection, u"01"_s));
        EXPECT_EQ(answers.takeSeen().size(), 2);
    }
    EXPECT_TRUE(AddBillSYB(connection, u"03"_s, u"x"_s));
    QCoreApplication::processEvents();
    EXPECT_EQ(chapters(), u"01x 02x 03x"_s);
}

TEST_F(ChapterData, AReleaseThatFailsIsAFailedCommand) {
    add(u"01 02"_s);
    ModalAnswers answers;
    answers.closeAnything();
    // A reader lets the statements run, but nobody may commit while it reads. A delete is not rolled back.
    for (const bool deletes : {false, true}) {
        {
            Connection reader;
            reader.Open(library.path(), QString(), Connection::readWriteCreate);
            const Recordset held = reader.OpenRecordset("SELECT * FROM tblSYB");
            EXPECT_FALSE(deletes ? DeleteBillSYB(connection, u"01"_s) : ExchangeSYBNode(connection, u"01"_s, u"02"_s));
            EXPECT_EQ(answers.takeSeen().size(), 1);
        }
        QCoreApplication::processEvents();
        EXPECT_EQ(chapters(), deletes ? u"02x"_s : u"01x 02x"_s);
    }
}
