#include "editor/bills/BillData.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "tests/bills/BillLibrary.h"
#include "tests/support/ModalAnswers.h"

namespace {

const SqlText indexes = "SELECT count(*) FROM sqlite_master WHERE type='index'";

QStringList codes(Recordset rows) {
    QStringList found;
    for (; !rows.EndOfFile(); rows.MoveNext())
        found << rows.text("Code");
    return found;
}

}  // namespace

TEST(BillData, ListsByChapterAndByPartOfTheCode) {
    const BillLibrary library;
    library.addBill(1, "010101002");
    library.addBill(2, "010101001");
    library.addBill(3, "0101010011");
    library.addBill(4, "020101001");
    library.addBill(5, "01010'001");
    const auto chapter = [&](const char* code) {
        return codes(billsOfChapter(library.connection(), QString::fromLatin1(code)));
    };
    const auto query = [&](const char* text) {
        return codes(billsWithCode(library.connection(), QString::fromLatin1(text)));
    };
    const QStringList first = {QStringLiteral("010101001"), QStringLiteral("010101002")};
    EXPECT_EQ(chapter("010101"), first);
    EXPECT_EQ(chapter("01010199"), first);
    EXPECT_EQ(chapter("0101"), QStringList());
    EXPECT_EQ(query("20101"), QStringList{QStringLiteral("020101001")});
    EXPECT_EQ(query("0'0"), QStringList{QStringLiteral("01010'001")});
    EXPECT_EQ(query("' OR 1=1 --"), QStringList());
    EXPECT_EQ(query("1_1001").size(), 3);
    EXPECT_EQ(query("").size(), 5);
}

TEST(BillData, DeletingTakesAllThatDependsOnTheBillAndNothingElse) {
    const BillLibrary library;
    for (qint64 id = 1; id <= 8; ++id)
        library.addBillWithDetails(id, QStringLiteral("01010100%1").arg(id));
    const auto rowsOf = [&](const SqlText& table, const SqlText& owner) {
        return library.rowsInFile(sql("SELECT group_concat(DISTINCT ", owner, ") FROM ", table)).first();
    };
    std::vector<BillCode> below;
    for (qint64 id = 2; id <= 8; ++id)
        below.push_back({id, QStringLiteral("01010100%1").arg(id - 1)});
    EXPECT_TRUE(deleteBill(library.connection(), 1, below));
    const QString rest = QStringLiteral("2,3,4,5,6,7,8");
    EXPECT_EQ(rowsOf("tblBill", "ID"), rest);
    EXPECT_EQ(rowsOf("tblParm", "BillID"), rest);
    EXPECT_EQ(rowsOf("tblCont", "BillID"), rest);
    EXPECT_EQ(rowsOf("tblBillSpec", "BillID"), rest);
    // Details carry the row id of the bill, too.
    EXPECT_EQ(rowsOf("tblContDe", "Name"), rest);
    EXPECT_EQ(rowsOf("tblSpecEnum", "EigenValue"), rest);

    // The bill is no longer there: nothing else of it, nor of others, is touched.
    library.addBillWithDetails(1, QStringLiteral("010101001"));
    library.run("DELETE FROM tblBill WHERE ID=1");
    const QStringList before = library.contents();
    EXPECT_FALSE(deleteBill(library.connection(), 1, below));
    EXPECT_FALSE(deleteBill(library.connection(), 1, {}));
    QCoreApplication::processEvents();
    EXPECT_EQ(library.contents(), before);
    EXPECT_EQ(library.rowsInFile(indexes), QStringList{QStringLiteral("0")});
}

TEST(BillData, WhatFailsIsRecordedAndRolledBackAndTheNextEditIsInTheFile) {
    const BillLibrary library;
    for (qint64 id = 1; id <= 8; ++id)
        library.addBillWithDetails(id, QStringLiteral("01010100%1").arg(id));
    library.dontWait();
    const QStringList before = library.contents();
    std::vector<BillCode> shifted;
    for (qint64 id = 1; id <= 8; ++id)
        shifted.push_back({id, QStringLiteral("01010101%1").arg(id)});
    std::vector<BillCode> broken = shifted;
    broken.back().code = QStringLiteral("01'");
    const auto allFail = [&](const std::vector<BillCode>& codes) {
        EXPECT_EQ(addBill(library.connection(), QStringLiteral("010101001"), codes), std::nullopt);
        EXPECT_FALSE(deleteBill(library.connection(), 1, codes));
        EXPECT_FALSE(moveBill(library.connection(), codes.front(), codes.back(), QStringLiteral("010101009")));
    };
    const QStringList places = {QStringLiteral("frmEditor.mnuAddBill_Click"),
                                QStringLiteral("frmEditor.mnuDeleteBill_Click"),
                                QStringLiteral("frmEditor.MoveBillRow")};
    ModalAnswers answers;
    answers.closeAnything();
    allFail(broken);
    QCoreApplication::processEvents();
    EXPECT_EQ(errorPlaces(answers), places);
    EXPECT_EQ(library.contents(), before);

    {  // Another program writes.
        Connection other;
        other.Open(library.path(), QString(), Connection::readWriteCreate);
        other.Execute("BEGIN EXCLUSIVE");
        allFail(shifted);
        EXPECT_EQ(errorPlaces(answers), places);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(library.contents(), before);

    {  // Another program reads: the savepoint cannot be released.
        Connection other;
        other.Open(library.path(), QString(), Connection::readWriteCreate);
        other.Execute("BEGIN");
        const Recordset held = other.OpenRecordset("SELECT * FROM tblBill");
        EXPECT_EQ(addBill(library.connection(), QStringLiteral("010101001"), shifted), std::nullopt);
        EXPECT_EQ(errorPlaces(answers), QStringList{QStringLiteral("ModDBOperator.ReleaseSP")});
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(library.contents(), before);

    EXPECT_EQ(addBill(library.connection(), QStringLiteral("010101009"), {}), std::optional<qint64>(9));
    EXPECT_EQ(library.rowsInFile("SELECT Code FROM tblBill WHERE ID=9"), QStringList{QStringLiteral("010101009")});
    EXPECT_EQ(library.rowsInFile(indexes), QStringList{QStringLiteral("0")});
    EXPECT_TRUE(answers.takeSeen().isEmpty());

    EXPECT_EQ(addBill(nullptr, QStringLiteral("010101009"), {}), std::nullopt);
    EXPECT_EQ(errorPlaces(answers).size(), 1);
}
