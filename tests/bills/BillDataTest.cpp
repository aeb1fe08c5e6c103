#include "editor/bills/BillData.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "tests/bills/BillLibrary.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

QString codes(Recordset rows) {
    QStringList found;
    for (; !rows.EndOfFile(); rows.MoveNext())
        found << rows.text("Code");
    return found.join(u' ');
}

/// Eight bills: enough for a temporary index on the tables below them.
class BillData : public testing::Test {
protected:
    BillData() {
        for (qint64 id = 1; id <= 8; ++id)
            library.addBillWithDetails(id, u"01010100%1"_s.arg(id));
    }
    void expectNoIndex() const {
        EXPECT_EQ(library.rowsInFile("SELECT name FROM sqlite_master WHERE type='index'"), QStringList());
    }
    BillLibrary library;
};

}  // namespace

TEST(BillLists, AreThoseOfAChapterOrOfPartOfACode) {
    const BillLibrary library;
    qint64 id = 0;
    for (const char* code : {"010101002", "010101001", "0101010011", "020101001", "01010'001"})
        library.addBill(++id, code);
    const auto chapter = [&](const QString& code) { return codes(billsOfChapter(library.connection(), code)); };
    const auto query = [&](const QString& text) { return codes(billsWithCode(library.connection(), text)); };
    EXPECT_EQ(chapter(u"010101"_s), u"010101001 010101002"_s);
    EXPECT_EQ(chapter(u"01010199"_s), u"010101001 010101002"_s);
    EXPECT_EQ(chapter(u"0101"_s), QString());
    EXPECT_EQ(query(u"20101"_s), u"020101001"_s);
    EXPECT_EQ(query(u"0'0"_s), u"01010'001"_s);
    EXPECT_EQ(query(u"' OR 1=1 --"_s), QString());
    EXPECT_EQ(query(u"1_1001"_s).split(u' ').size(), 3);
    EXPECT_EQ(query({}).split(u' ').size(), 5);
}

TEST_F(BillData, DeletingTakesAllThatDependsOnTheBillAndNothingElse) {
    std::vector<BillCode> below;
    for (qint64 id = 2; id <= 8; ++id)
        below.push_back({id, u"01010100%1"_s.arg(id - 1)});
    EXPECT_TRUE(deleteBill(library.connection(), 1, below));
    // Details carry the row id of the bill, too.
    for (const auto& [table, owner] : {std::pair<SqlText, SqlText>("tblBill", "ID"),
                                       {"tblParm", "BillID"},
                                       {"tblCont", "BillID"},
                                       {"tblBillSpec", "BillID"},
                                       {"tblContDe", "Name"},
                                       {"tblSpecEnum", "EigenValue"}})
        EXPECT_EQ(library.rowsInFile(sql("SELECT group_concat(DISTINCT ", owner, ") FROM ", table)),
                  QStringList{u"2,3,4,5,6,7,8"_s});

    // A bill that is no longer there: nothing else of it, nor of others, is touched.
    library.addBillWithDetails(1, u"010101001"_s);
    library.run("DELETE FROM tblBill WHERE ID=1");
    const QStringList before = library.contents();
    EXPECT_FALSE(deleteBill(library.connection(), 1, below));
    EXPECT_FALSE(deleteBill(library.connection(), 1, {}));
    QCoreApplication::processEvents();
    EXPECT_EQ(library.contents(), before);
    expectNoIndex();
}

TEST_F(BillData, WhatFailsIsRecordedAndRolledBackAndTheNextEditIsInTheFile) {
    library.dontWait();
    const QStringList before = library.contents();
    std::vector<BillCode> shifted;
    for (qint64 id = 1; id <= 8; ++id)
        shifted.push_back({id, u"01010101%1"_s.arg(id)});
    ModalAnswers answers;
    answers.closeAnything();
    const auto expectAllFail = [&](const std::vector<BillCode>& codes) {
        EXPECT_EQ(addBill(library.connection(), u"010101001"_s, codes), std::nullopt);
        EXPECT_FALSE(deleteBill(library.connection(), 1, codes));
        EXPECT_FALSE(moveBill(library.connection(), codes.front(), codes.back(), u"010101009"_s));
        EXPECT_EQ(errorPlaces(answers).join(u' '),
                  u"frmEditor.mnuAddBill_Click frmEditor.mnuDeleteBill_Click frmEditor.MoveBillRow"_s);
    };
    std::vector<BillCode> broken = shifted;
    broken.back().code = u"01'"_s;
    expectAllFail(broken);
    QCoreApplication::processEvents();
    EXPECT_EQ(library.contents(), before);
    {
        Connection writer;
        writer.Open(library.path(), QString(), Connection::readWriteCreate);
        writer.Execute("BEGIN EXCLUSIVE");
        expectAllFail(shifted);
    }
    QCoreApplication::processEvents();
    {  // While another program reads the savepoint cannot be released.
        Connection reader;
        reader.Open(library.path(), QString(), Connection::readWriteCreate);
        const Recordset held = reader.OpenRecordset("SELECT * FROM tblBill");
        EXPECT_EQ(addBill(library.connection(), u"010101001"_s, shifted), std::nullopt);
        EXPECT_EQ(errorPlaces(answers), QStringList{u"ModDBOperator.ReleaseSP"_s});
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(library.contents(), before);

    EXPECT_EQ(addBill(library.connection(), u"010101009"_s, {}), std::optional<qint64>(9));
    EXPECT_EQ(library.rowsInFile("SELECT Code FROM tblBill WHERE ID=9"), QStringList{u"010101009"_s});
    EXPECT_TRUE(answers.takeSeen().isEmpty());
    expectNoIndex();
}
