#include "editor/chapters/ChapterData.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QRegularExpression>

#include "app/base/Text.h"
#include "storage/LibraryConnection.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

const SqlText chapters = "SELECT code,name FROM tblSYB ORDER BY id";

QString string(const char* text) { return QString::fromUtf8(text); }

/// Two deepest chapters; every bill has a parameter, a feature with a value, and a content with a sub-content. All
/// rows that belong to one bill carry its code.
void addBill(const TemporaryLibrary& library, const QString& code) {
    library.run(sql("INSERT INTO tblBill(code,name) VALUES('", code, "','x')"));
    const qint64 bill = library.connection()->LastInsertId();
    library.run(sql("INSERT INTO tblParm(code,billID) VALUES('", code, "',", bill, ")"));
    library.run(sql("INSERT INTO tblCont(code,billID) VALUES('", code, "',", bill, ")"));
    library.run(
        sql("INSERT INTO tblContDe(Deh,contID) VALUES('", code, "',", library.connection()->LastInsertId(), ")"));
    library.run(sql("INSERT INTO tblBillSpec(Name,billID) VALUES('", code, "',", bill, ")"));
    library.run(sql("INSERT INTO tblSpecEnum(EigenValue,specID) VALUES('", code, "',",
                    library.connection()->LastInsertId(), ")"));
}

void addChapters(const TemporaryLibrary& library, std::initializer_list<const char*> codes) {
    for (const char* code : codes)
        library.run(sql("INSERT INTO tblSYB(code,name) VALUES('", string(code), "','x')"));
}

/// The codes that are left in each table, table by table.
QStringList remaining(const TemporaryLibrary& library) {
    return library.rowsInFile(
        "SELECT (SELECT group_concat(code) FROM tblSYB),(SELECT group_concat(code) FROM tblBill),"
        "(SELECT group_concat(code) FROM tblParm),(SELECT group_concat(code) FROM tblCont),"
        "(SELECT group_concat(Deh) FROM tblContDe),(SELECT group_concat(Name) FROM tblBillSpec),"
        "(SELECT group_concat(EigenValue) FROM tblSpecEnum)");
}

/// The suite need not wait as long as a user would for a file that stays locked.
void waitBriefly(const TemporaryLibrary& library) { library.connection()->OpenRecordset("PRAGMA busy_timeout=50"); }

QStringList everywhere(const char* chapterCodes, const char* billCodes) {
    return {string(chapterCodes) + (QLatin1Char('|') + string(billCodes)).repeated(6)};
}

}  // namespace

TEST(AddBillSYB, WritesOneRowAndRefusesTakenCodes) {
    const TemporaryLibrary library;
    const QString before = nowText();
    EXPECT_TRUE(AddBillSYB(library.connection(), string("01"), string("土石方工程 \"%_--")));
    EXPECT_TRUE(AddBillSYB(library.connection(), string("0A"), string("x")));
    EXPECT_EQ(library.rowsInFile("SELECT code,name,note,version,isdel,borg FROM tblSYB WHERE code='01'"),
              QStringList{string("01|土石方工程 \"%_--|NULL|NULL|0|NULL")});
    const QString stamp = library.rowsInFile("SELECT lastUpdate FROM tblSYB").value(0);
    EXPECT_TRUE(before <= stamp && stamp <= nowText()) << qPrintable(stamp);

    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(AddBillSYB(library.connection(), string("01"), string("y")));
    EXPECT_FALSE(AddBillSYB(library.connection(), string("0a"), string("y")));
    EXPECT_FALSE(AddBillSYB(nullptr, string("02"), string("y")));
    EXPECT_EQ(answers.seen(), QStringList(3, string("提示: 目录编号已经存在!")));
    EXPECT_EQ(library.rowsInFile(chapters).size(), 2);
}

TEST(ModifyBillSYB, RenamesOnlyThatChapter) {
    const TemporaryLibrary library;
    addChapters(library, {"01", "0101"});
    EXPECT_TRUE(ModifyBillSYB(library.connection(), string("01"), string("新名")));
    EXPECT_EQ(library.rowsInFile(chapters), (QStringList{string("01|新名"), string("0101|x")}));
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblSYB WHERE lastUpdate IS NOT NULL"), QStringList{string("01")});
}

TEST(ChapterStatements, AnApostropheFailsAndChangesNothing) {
    const TemporaryLibrary library;
    addChapters(library, {"01", "02"});
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(AddBillSYB(library.connection(), string("03"), string("x',0);--")));
    EXPECT_FALSE(ModifyBillSYB(library.connection(), string("01"), string("y'--")));
    EXPECT_FALSE(DeleteBillSYB(library.connection(), string("01' OR ''='")));
    EXPECT_FALSE(ExchangeSYBNode(library.connection(), string("01"), string("0'")));
    const QStringList places = {string("frmEditor.AddBillSYB"), string("frmEditor."), string("frmEditor.DeleteBillSYB"),
                                string("frmEditor.ExchangeSYBNode")};
    ASSERT_EQ(answers.seen().size(), places.size());
    for (qsizetype i = 0; i < places.size(); ++i)
        EXPECT_TRUE(answers.seen()[i].contains(string("错误位置: ") + places[i] + string("\r\n")))
            << qPrintable(answers.seen()[i]);
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile(chapters), (QStringList{string("01|x"), string("02|x")}));
}

TEST(DeleteBillSYB, TakesTheBillsOfTheDeepestChapterAndItsOwnRow) {
    const TemporaryLibrary library;
    addChapters(library, {"01", "0101", "010101", "010102", "01010101"});
    for (const char* code : {"010101001", "010101002", "01010100", "0101010011", "010102001", "01001"})
        addBill(library, string(code));
    EXPECT_TRUE(DeleteBillSYB(library.connection(), string("010101")));
    EXPECT_EQ(remaining(library), everywhere("01,0101,010102,01010101", "01010100,0101010011,010102001,01001"));
    // Three characters more than the code, whatever its level, make a bill of the chapter.
    EXPECT_TRUE(DeleteBillSYB(library.connection(), string("01")));
    EXPECT_EQ(remaining(library), everywhere("0101,010102,01010101", "01010100,0101010011,010102001"));
    EXPECT_TRUE(DeleteBillSYB(library.connection(), string("09")));
    EXPECT_EQ(remaining(library), everywhere("0101,010102,01010101", "01010100,0101010011,010102001"));
}

TEST(DeleteBillSYB, KeepsWhatRanBeforeAnError) {
    const TemporaryLibrary library;
    addChapters(library, {"010101", "010102"});
    addBill(library, string("010101001"));
    library.run("DROP TABLE tblSpecEnum");
    {
        ModalAnswers answers;
        answers.closeAnything();
        EXPECT_FALSE(DeleteBillSYB(library.connection(), string("010101")));
        EXPECT_EQ(answers.seen().size(), 1);
    }
    // Nothing is in the file until the event is over; the savepoint is open until then.
    EXPECT_EQ(library.rowsInFile("SELECT count(*) FROM tblParm"), QStringList{string("1")});
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile("SELECT (SELECT count(*) FROM tblParm),(SELECT count(*) FROM tblContDe),"
                                 "(SELECT count(*) FROM tblCont),(SELECT count(*) FROM tblBillSpec),"
                                 "(SELECT count(*) FROM tblBill),(SELECT count(*) FROM tblSYB)"),
              QStringList{string("0|0|0|1|1|2")});
    EXPECT_TRUE(AddBillSYB(library.connection(), string("02"), string("x")));
    EXPECT_EQ(library.rowsInFile(chapters).size(), 3);
}

TEST(ChapterStatements, ALockedFileFailsAndLaterEditsReachIt) {
    const TemporaryLibrary library;
    waitBriefly(library);
    addChapters(library, {"01", "02"});
    ModalAnswers answers;
    answers.closeAnything();
    {
        Connection other;
        other.Open(library.path(), QString(), Connection::readWriteCreate);
        other.Execute("BEGIN IMMEDIATE");
        EXPECT_FALSE(ExchangeSYBNode(library.connection(), string("01"), string("02")));
        EXPECT_FALSE(DeleteBillSYB(library.connection(), string("01")));
        EXPECT_EQ(answers.takeSeen().size(), 2);
        other.Execute("ROLLBACK");
    }
    EXPECT_TRUE(AddBillSYB(library.connection(), string("03"), string("x")));
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile(chapters), (QStringList{string("01|x"), string("02|x"), string("03|x")}));
}

TEST(ChapterStatements, AReleaseThatFailsIsAFailedCommand) {
    const TemporaryLibrary library;
    waitBriefly(library);
    addChapters(library, {"01", "02"});
    ModalAnswers answers;
    answers.closeAnything();
    {
        // A reader lets the statements run, but nobody may commit while it reads.
        Connection reader;
        reader.Open(library.path(), QString(), Connection::readWriteCreate);
        const Recordset held = reader.OpenRecordset("SELECT * FROM tblSYB");
        EXPECT_FALSE(ExchangeSYBNode(library.connection(), string("01"), string("02")));
        EXPECT_EQ(answers.takeSeen().size(), 1);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile(chapters), (QStringList{string("01|x"), string("02|x")}));
    {
        Connection reader;
        reader.Open(library.path(), QString(), Connection::readWriteCreate);
        const Recordset held = reader.OpenRecordset("SELECT * FROM tblSYB");
        EXPECT_FALSE(DeleteBillSYB(library.connection(), string("01")));
        EXPECT_EQ(answers.takeSeen().size(), 1);
    }
    // A delete is not rolled back.
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile(chapters), QStringList{string("02|x")});
}
