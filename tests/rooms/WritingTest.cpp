// What the random user does not ask of procedures: whose time stamps they renew, and what they leave when they fail
// half-way and are not rolled back.

#include "app/base/Text.h"
#include "editor/bills/BillData.h"
#include "editor/bills/FeatureData.h"
#include "editor/chapters/ChapterData.h"
#include "editor/contents/ContentData.h"
#include "storage/Lookups.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

using Procedure = std::function<bool(Connection*)>;

const NewContent content{1, u"010101001"_s, 2, u"新"_s, u"02"_s};

const QStringList tables = u"tblSYB tblBill tblParm tblCont tblContDe tblBillSpec tblSpecEnum"_s.split(u' ');

/// Every row is stamped 'old', and written by another program since the look-ups were filled. Chapters 010101 and
/// 010102; the bills 010101001, 010101002 and 010102001 (ids 1 to 3), each with a parameter, a content, a feature and a
/// value (likewise), the first with a second one of each but the parameter (id 4); in the first content three rows, of
/// which the first two are one second-level content.
class StampedLibrary : public TemporaryLibrary {
public:
    StampedLibrary() {
        run("PRAGMA synchronous=OFF");
        while (connection()->lookups().fillSlice()) {
        }
        QByteArray script = R"(
            INSERT INTO tblSYB(Code,Name) VALUES('010101','章'),('010102','章');
            INSERT INTO tblBill(Code) VALUES('010101001'),('010101002'),('010102001');
            INSERT INTO tblParm(Code,BillID) SELECT Code,ID FROM tblBill;
            INSERT INTO tblCont(Code,Num,BillID) SELECT Code,1,ID FROM tblBill UNION ALL SELECT 'x',2,1;
            INSERT INTO tblContDe(ContID,SubNum) VALUES(1,1),(1,1),(1,2);
            INSERT INTO tblBillSpec(BillID) SELECT ID FROM tblBill UNION ALL SELECT 1;
            INSERT INTO tblSpecEnum(SpecID) SELECT ID FROM tblBillSpec;)";
        for (const QString& table : tables)
            script += "UPDATE " + table.toLatin1() + " SET LastUpdate='old';";
        EXPECT_TRUE(OtherProgram(path()).tryScript(script));
    }

    /// The rows that `act` stamps: "tblBill 4, tblCont 1".
    QString stampedBy(const Procedure& act) const {
        const QString start = nowText();
        EXPECT_TRUE(act(connection()));
        QStringList stamped;
        for (const QString& table : tables)
            for (const QString& row : rowsInFile(sql("SELECT ID||iif(LastUpdate BETWEEN '", start, "' AND '", nowText(),
                                                     "','',' wrongly') FROM ", table, " WHERE LastUpdate<>'old'")))
                stamped << table + u' ' + row;
        return stamped.join(u", "_s);
    }
};

}  // namespace

// What is only renumbered keeps its time stamp.
TEST(Writing, StampsTheRowsThatTheUserChanges) {
    const Ration ration{u"B2"_s, u"新"_s, u"m"_s, u"GD"_s};
    const Bill first{1, u"010101001"_s}, second{2, u"010101002"_s};
    const std::vector<Bill> on{{2, u"010101003"_s}}, back{{2, u"010101001"_s}};
    const std::vector<FeatureValue> values{{2, u"1"_s, u"甲"_s}};
    ModalAnswers answers;
    answers.closeAnything();
    for (const auto& [writes, stamped] : std::initializer_list<std::pair<Procedure, QString>>{
             {[](auto c) { return AddBillSYB(c, u"02"_s, u"新"_s); }, u"tblSYB 3"_s},
             {[](auto c) { return ModifyBillSYB(c, u"010101"_s, u"新"_s); }, u"tblSYB 1"_s},
             {[](auto c) { return ExchangeSYBNode(c, u"010101"_s, u"010102"_s); }, {}},
             {[](auto c) { return ModifyBill(c, 2, u"Rule"_s, u"新"_s); }, u"tblBill 2"_s},
             {[&](auto c) { return addBill(c, u"010101002"_s, on) == 4; }, u"tblBill 4"_s},
             {[&](auto c) { return deleteBill(c, 1, back); }, {}},
             {[&](auto c) { return moveBill(c, second, first, u"010101003"_s); }, {}},
             {[](auto c) { return ModifyBillSpec(c, 2, u"DefVal"_s, u"新"_s); }, u"tblBillSpec 2"_s},
             {[](auto c) { return addFeature(c, 1, u"新"_s) == 5; }, u"tblBillSpec 5"_s},
             {[](auto c) { return addFeatureVal(c, 1) == 5; }, u"tblSpecEnum 5"_s},
             {[&](auto c) { return writeFeatureValues(c, 2, values, u"甲"_s); }, u"tblBillSpec 2, tblSpecEnum 2"_s},
             {[](auto c) { return ModifyCont(c, 1, u"新"_s); }, u"tblCont 1"_s},
             {[](auto c) { return ModifySubCont(c, 1, 1, u"新"_s); }, u"tblContDe 1, tblContDe 2"_s},
             {[](auto c) { return addContent(c, content) == 5; }, u"tblCont 5"_s},
             {[](auto c) { return addSubContent(c, 1, 2, u"新"_s); }, u"tblContDe 4"_s},
             {[](auto c) { return deleteContent(c, 1, 1, 1); }, {}},
             {[](auto c) { return deleteSubContent(c, 1, 1); }, {}},
             {[](auto c) { return deleteRation(c, 3, RationRow::Cleared); }, u"tblContDe 3"_s},
             {[&](auto c) { return updateRation(c, 1, ration); }, u"tblContDe 1"_s},
             {[&](auto c) { return insertRation(c, 2, 1, u"细"_s, ration) == 4; }, u"tblContDe 4"_s}}) {
        EXPECT_FALSE(writes(nullptr));
        EXPECT_EQ(StampedLibrary().stampedBy(writes), stamped);
    }
    // The row that takes the first ration of a second-level content.
    const StampedLibrary library;
    EXPECT_EQ(GetSubContID(library.connection(), 1, 1), 1);
    EXPECT_EQ(GetSubContID(library.connection(), 1, 3), 0);
    // Renumbering takes along what the look-ups do not know yet.
    EXPECT_EQ(addBill(library.connection(), u"010101002"_s, on), 4);
    EXPECT_EQ(library.rowsInFile("SELECT Code FROM tblCont WHERE BillID=2"), QStringList{u"010101003"_s});
}

TEST(Writing, LeavesWhatWasDoneBeforeAFailureWhereItIsNotRolledBack) {
    for (const auto& [writes, refused, query, left] :
         {std::tuple<Procedure, SqlText, SqlText, const char*>(
              [](auto c) { return DeleteBillSYB(c, u"010101"_s); }, "DELETE ON tblSpecEnum",
              "SELECT 'tblParm',ID FROM tblParm UNION ALL SELECT 'tblCont',ID FROM tblCont UNION ALL "
              "SELECT 'tblContDe',ID FROM tblContDe UNION ALL SELECT 'others',count(*) FROM tblBillSpec,tblBill,tblSYB",
              "tblParm|3, tblCont|3, others|24"),
          {[](auto c) { return addContent(c, content).has_value(); }, "INSERT ON tblCont",
           "SELECT ID,Num FROM tblCont WHERE BillID=1", "1|1, 4|3"},
          {[](auto c) { return addSubContent(c, 1, 2, u"新"_s); }, "INSERT ON tblContDe",
           "SELECT ID,SubNum FROM tblContDe", "1|1, 2|1, 3|3"}}) {
        const StampedLibrary library;
        library.run(sql("CREATE TEMP TRIGGER refuse BEFORE ", refused, " BEGIN SELECT RAISE(ABORT,'refused'); END"));
        ModalAnswers answers;
        answers.closeAnything();
        EXPECT_FALSE(writes(library.connection()));
        // What is still open is committed when the event is over.
        QCoreApplication::processEvents();
        EXPECT_EQ(library.rowsInFile(query).join(u", "_s), QLatin1String(left));
    }
}
