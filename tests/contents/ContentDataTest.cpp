#include "editor/contents/ContentData.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "storage/LibraryConnection.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

const SqlText contents = "SELECT ID,num,cont,prof,code,billID,IsDel FROM tblCont ORDER BY billID,num";
const SqlText details = "SELECT ID,contID,subNum,subCont,deh FROM tblContDe ORDER BY contID,subNum,ID";

QStringList lines(std::initializer_list<const char*> texts) {
    QStringList list;
    for (const char* text : texts)
        list << QString::fromUtf8(text);
    return list;
}

/// Bill 1 with contents 1 to 3 (ids 11 to 13) and content 11 with second-level contents 1 and 2.
class ContentData : public ::testing::Test {
protected:
    ContentData() {
        library.run(
            "INSERT INTO tblCont(ID,code,num,cont,prof,billID,IsDel) VALUES(11,'x',1,'a','01',1,0),"
            "(12,'x',2,'b','02',1,0),(13,'x',3,'c','01',1,0),(21,'y',1,'z','01',2,0)");
        library.run(
            "INSERT INTO tblContDe(ID,contID,subNum,subCont,deh) VALUES(1,11,1,'one',''),(2,11,1,'one','A1'),"
            "(3,11,2,'two','A2'),(4,12,1,'other','A3')");
    }

    QStringList fileOf(const SqlText& query) const { return library.rowsInFile(query); }
    bool transactionOpen() const {
        const bool closed = [this] {
            try {
                library.connection()->Execute("BEGIN");
                library.connection()->Execute("COMMIT");
                return true;
            } catch (...) {
                return false;
            }
        }();
        return !closed;
    }

    TemporaryLibrary library;
    ModalAnswers answers;
};

}  // namespace

TEST_F(ContentData, TextsAreRewrittenForTheWholeSecondLevelContent) {
    EXPECT_TRUE(ModifyCont(library.connection(), 12, QStringLiteral("新")));
    EXPECT_TRUE(ModifySubCont(library.connection(), 11, 1, QStringLiteral("新")));
    EXPECT_EQ(fileOf("SELECT cont FROM tblCont WHERE LastUpdate IS NOT NULL"), lines({"新"}));
    EXPECT_EQ(fileOf("SELECT ID,subCont FROM tblContDe WHERE LastUpdate IS NOT NULL"), lines({"1|新", "2|新"}));
    EXPECT_TRUE(ModifyCont(library.connection(), 99, QStringLiteral("x"))) << "executed, though no row matched";
    EXPECT_FALSE(ModifyCont(nullptr, 12, QStringLiteral("x")));

    answers.closeAnything();
    EXPECT_FALSE(ModifyCont(library.connection(), 12, QStringLiteral("it's")));
    EXPECT_FALSE(ModifySubCont(library.connection(), 11, 1, QStringLiteral("x' --")));
    EXPECT_EQ(answers.seen().size(), 2);
    EXPECT_EQ(fileOf("SELECT DISTINCT subCont FROM tblContDe"), lines({"新", "two", "other"}));
}

TEST_F(ContentData, AddingRenumbersWhatFollows) {
    const qint64 id = addContent(library.connection(),
                                 {1, QStringLiteral("010101001"), 2, QStringLiteral("new"), QStringLiteral("01")});
    EXPECT_EQ(id, 22);
    EXPECT_EQ(fileOf(contents), lines({"11|1|a|01|x|1|0", "22|2|new|01|010101001|1|0", "12|3|b|02|x|1|0",
                                       "13|4|c|01|x|1|0", "21|1|z|01|y|2|0"}));
    EXPECT_TRUE(addSubContent(library.connection(), 11, 2, QStringLiteral("sub")));
    EXPECT_EQ(fileOf(details),
              lines({"1|11|1|one|", "2|11|1|one|A1", "5|11|2|sub|NULL", "3|11|3|two|A2", "4|12|1|other|A3"}));
    EXPECT_FALSE(transactionOpen());
}

TEST_F(ContentData, AddingThatFailsLeavesItsSavepointOpen) {
    answers.closeAnything();
    EXPECT_EQ(addContent(library.connection(), {1, QStringLiteral("it's"), 2, QStringLiteral("n"), {}}), 0);
    EXPECT_TRUE(transactionOpen());
    EXPECT_EQ(answers.takeSeen().filter(QStringLiteral("frmEditor.munAddBillCont_Click")).size(), 1);
    EXPECT_EQ(fileOf("SELECT num FROM tblCont WHERE billID=1 ORDER BY ID"), lines({"1", "2", "3"}));
    // What was done until then, and whatever is done next, is in the file when the event is over.
    EXPECT_TRUE(ModifyCont(library.connection(), 11, QStringLiteral("typed later")));
    QCoreApplication::processEvents();
    EXPECT_FALSE(transactionOpen());
    EXPECT_EQ(fileOf("SELECT num,cont FROM tblCont WHERE billID=1 ORDER BY ID"),
              lines({"1|typed later", "3|b", "4|c"}));

    EXPECT_FALSE(addSubContent(library.connection(), 11, 1, QStringLiteral("it's")));
    EXPECT_TRUE(transactionOpen());
    EXPECT_FALSE(addSubContent(nullptr, 11, 1, QStringLiteral("x")));
}

TEST_F(ContentData, DeletingRenumbersWhatFollows) {
    EXPECT_TRUE(deleteContent(library.connection(), 11, 1, 1));
    EXPECT_EQ(fileOf(contents), lines({"12|1|b|02|x|1|0", "13|2|c|01|x|1|0", "21|1|z|01|y|2|0"}));
    EXPECT_EQ(fileOf(details), lines({"4|12|1|other|A3"}));
    library.run("INSERT INTO tblContDe(ID,contID,subNum,subCont) VALUES(7,12,2,'second'),(8,12,3,'third')");
    EXPECT_TRUE(deleteSubContent(library.connection(), 12, 2));
    EXPECT_EQ(fileOf(details), lines({"4|12|1|other|A3", "8|12|2|third|NULL"}));
    EXPECT_FALSE(transactionOpen());
}

TEST_F(ContentData, DeletingContentsThatFailsRollsBack) {
    const QStringList contentsBefore = fileOf(contents);
    const QStringList detailsBefore = fileOf(details);
    library.run("CREATE TRIGGER no_cont BEFORE DELETE ON tblCont BEGIN SELECT RAISE(ABORT,'refused'); END");
    library.run("CREATE TRIGGER no_sub BEFORE UPDATE OF subNum ON tblContDe BEGIN SELECT RAISE(ABORT,'refused'); END");
    answers.closeAnything();
    EXPECT_FALSE(deleteContent(library.connection(), 11, 1, 1));
    EXPECT_FALSE(deleteSubContent(library.connection(), 11, 1));
    EXPECT_EQ(answers.seen().size(), 2);
    EXPECT_TRUE(transactionOpen()) << "rolled back to the savepoint, which stays";
    EXPECT_TRUE(ModifyCont(library.connection(), 21, QStringLiteral("z")));
    QCoreApplication::processEvents();
    EXPECT_EQ(fileOf(contents), contentsBefore);
    EXPECT_EQ(fileOf(details), detailsBefore);
}

TEST_F(ContentData, AReleaseThatFailsIsAFailure) {
    answers.closeAnything();
    const auto whileReadByAnother = [this](auto&& act) {
        Connection reader;
        reader.Open(library.path(), QString(), Connection::readWriteCreate);
        reader.Execute("BEGIN");
        const Recordset held = reader.OpenRecordset("SELECT * FROM tblCont");
        act();
    };
    whileReadByAnother([this] { EXPECT_FALSE(deleteSubContent(library.connection(), 11, 1)); });
    QCoreApplication::processEvents();
    whileReadByAnother([this] { EXPECT_FALSE(deleteRation(library.connection(), 4, RationRow::Removed)); });
    QCoreApplication::processEvents();
    EXPECT_EQ(fileOf("SELECT count(*) FROM tblContDe WHERE contID=11"), lines({"3"})) << "rolled back";
    EXPECT_EQ(fileOf("SELECT count(*) FROM tblContDe WHERE ID=4"), lines({"0"})) << "left open, committed later";
}

TEST_F(ContentData, RationsAreRemovedClearedAndWritten) {
    EXPECT_EQ(GetSubContID(library.connection(), 11, 1), 1);
    EXPECT_EQ(GetSubContID(library.connection(), 11, 9), 0);
    EXPECT_TRUE(deleteRation(library.connection(), 2, RationRow::Removed));
    EXPECT_TRUE(deleteRation(library.connection(), 3, RationRow::Cleared));
    const SqlText rations = "SELECT ID,subNum,subCont,deh,name,unit,dekID FROM tblContDe WHERE contID=11 ORDER BY ID";
    EXPECT_EQ(fileOf(rations), lines({"1|1|one||NULL|NULL|NULL", "3|2|two||||"}));

    const Ration ration{QStringLiteral("A9"), QStringLiteral("挖土"), QStringLiteral("m3"), QStringLiteral("GD")};
    EXPECT_TRUE(updateRation(library.connection(), 3, ration));
    EXPECT_EQ(insertRation(library.connection(), 11, 2, QStringLiteral("two"), ration), 5);
    EXPECT_EQ(fileOf(rations), lines({"1|1|one||NULL|NULL|NULL", "3|2|two|A9|挖土|m3|GD", "5|2|two|A9|挖土|m3|GD"}));
    answers.closeAnything();
    const Ration broken{QStringLiteral("A9"), QStringLiteral("it's"), QString(), QString()};
    EXPECT_FALSE(updateRation(library.connection(), 3, broken));
    EXPECT_EQ(insertRation(library.connection(), 11, 2, QStringLiteral("two"), broken), 0);
    EXPECT_EQ(fileOf(rations).size(), 3);
}
