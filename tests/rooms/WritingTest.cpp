// What procedures write, time stamps and all, and what is left of those that are not rolled back. That the others leave
// nothing is shown where whole commands fail.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>

#include "app/base/Text.h"
#include "editor/bills/BillData.h"
#include "editor/bills/FeatureData.h"
#include "editor/chapters/ChapterData.h"
#include "editor/contents/ContentData.h"
#include "storage/Lookups.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

const char* const tables[] = {"tblSYB", "tblBill", "tblParm", "tblCont", "tblContDe", "tblBillSpec", "tblSpecEnum"};

/// A library in which every row has neighbours that a statement could hit by mistake, all of them stamped 'old':
/// chapters 01, 0101, 010101, 010102 and 02 (ids 1 to 5); bills 010101001 to 010101005, 010102001 and 01001 (ids 1 to
/// 7), each with a parameter, two contents (id of the bill and 1 or 2) and two features (likewise); each content with
/// three second-level contents, of which the first has two rations (id of the content and 1 to 4); each feature with
/// two values (likewise).
class DetailedLibrary : public TemporaryLibrary {
public:
    DetailedLibrary() {
        run("PRAGMA synchronous=OFF");
        const SqlText two = "(SELECT 1 AS n UNION ALL SELECT 2)";
        const SqlText four = "(SELECT 1 AS n,1 AS s UNION ALL SELECT 2,1 UNION ALL SELECT 3,2 UNION ALL SELECT 4,3)";
        for (const SqlText& statement :
             {SqlText("INSERT INTO tblSYB(Code,Name) VALUES('01','章'),('0101','章'),('010101','章'),('010102','章'),"
                      "('02','章')"),
              SqlText("INSERT INTO tblBill(Code,Name) VALUES('010101001','清单'),('010101002','清单'),"
                      "('010101003','清单'),('010101004','清单'),('010101005','清单'),('010102001','清单'),"
                      "('01001','清单')"),
              SqlText("INSERT INTO tblParm(Code,BillID) SELECT Code,ID FROM tblBill"),
              sql("INSERT INTO tblCont(ID,Code,Num,Cont,BillID) SELECT ID*10+n,Code,n,'内容',ID FROM tblBill,", two),
              sql("INSERT INTO tblContDe(ID,ContID,SubNum,SubCont,Deh) SELECT ID*10+n,ID,s,'细目','A1' FROM tblCont,",
                  four),
              sql("INSERT INTO tblBillSpec(ID,BillID,Name,Type) SELECT ID*10+n,ID,'特征',2 FROM tblBill,", two),
              sql("INSERT INTO tblSpecEnum(ID,SpecID,IsUse) SELECT ID*10+n,ID,2 FROM tblBillSpec,", two)})
            run(statement);
        for (const char* table : tables)
            run(sql("UPDATE ", QString::fromLatin1(table), " SET LastUpdate='old'"));
    }

    /// What `act` changes in the file, a line for each table and kind of change: "tblBill +8 Code=010101006 IsDel=0",
    /// "tblCont ~31 ~32 Code=010101002", "tblParm -1 -2". NULL in a new row is not told; a time of now is told as
    /// "now".
    std::string changes(const std::function<void()>& act) const {
        const QString before = path() + u".before"_s, start = nowText();
        EXPECT_TRUE(QFile::copy(path(), before));
        act();
        OtherProgram file(path());
        file.run("ATTACH ? AS old", {before});
        QStringList lines;
        for (const char* name : tables) {
            const QString table = QLatin1String(name);
            QStringList cells;
            for (const QString& column : file.run("SELECT name FROM pragma_table_info(?) WHERE name<>'ID'", {table}))
                cells << u"iif(n.[%1] IS o.[%1],'',' %1='||iif(n.[%1] BETWEEN ?1 AND ?2,'now',ifnull(n.[%1],'NULL')))"_s
                             .arg(column);
            for (const QStringList& line : file.rows(
                     u"SELECT '%1'||group_concat(row,'')||change FROM (SELECT iif(o.ID IS NULL,' +',' ~')||n.ID AS row,"
                     "%2 AS change FROM main.%1 n LEFT JOIN old.%1 o USING(ID) WHERE change<>'' ORDER BY n.ID) "
                     "GROUP BY substr(row,1,2),change UNION ALL SELECT '%1 -'||group_concat(ID,' -') FROM old.%1 "
                     "WHERE ID NOT IN (SELECT ID FROM main.%1) HAVING count(*)>0"_s.arg(table, cells.join(u"||")),
                     {start, nowText()}))
                lines << line;
        }
        QFile::remove(before);
        return lines.join(u'\n').toStdString();
    }
};

struct Writing {
    std::function<bool(Connection*)> runs;  ///< whether it says that it succeeded
    const char* changes;
    SqlText refused = "";   ///< a change that comes late in it, as in CREATE TEMP TRIGGER … BEFORE
    const char* left = "";  ///< what has been changed when that was refused
};

/// Each runs without a library, undisturbed, by passes and by look-ups, and refused.
void expectWriting(std::initializer_list<Writing> all) {
    for (const auto& [runs, changes, refused, left] : all) {
        SCOPED_TRACE(changes);
        ModalAnswers answers;
        answers.closeAnything();
        EXPECT_FALSE(runs(nullptr));
        for (const bool lookedUp : {false, true}) {
            const DetailedLibrary library;
            while (lookedUp && library.connection()->lookups().fillSlice()) {
            }
            EXPECT_EQ(library.changes([&] { EXPECT_TRUE(runs(library.connection())); }), changes);
        }
        if (refused.isEmpty())
            continue;
        const DetailedLibrary library;
        library.run(sql("CREATE TEMP TRIGGER refuse BEFORE ", refused, " BEGIN SELECT RAISE(ABORT,'refused'); END"));
        EXPECT_EQ(library.changes([&] {
            EXPECT_FALSE(runs(library.connection()));
            QCoreApplication::processEvents();
        }),
                  left);
    }
}

}  // namespace

TEST(Writing, OfChapters) {
    expectWriting(
        {{[](Connection* c) { return AddBillSYB(c, u"0A"_s, u"土 \"%_--"_s); },
          "tblSYB +6 Code=0A Name=土 \"%_-- LastUpdate=now IsDel=0"},
         {[](Connection* c) { return ModifyBillSYB(c, u"01"_s, u"新名"_s); }, "tblSYB ~1 Name=新名 LastUpdate=now"},
         {[](Connection* c) { return ExchangeSYBNode(c, u"010101"_s, u"010102"_s); },
          "tblSYB ~4 Code=010101\ntblSYB ~3 Code=010102\n"
          "tblBill ~6 Code=010101001\ntblBill ~1 Code=010102001\ntblBill ~2 Code=010102002\n"
          "tblBill ~3 Code=010102003\ntblBill ~4 Code=010102004\ntblBill ~5 Code=010102005\n"
          "tblCont ~61 ~62 Code=010101001\ntblCont ~11 ~12 Code=010102001\ntblCont ~21 ~22 Code=010102002\n"
          "tblCont ~31 ~32 Code=010102003\ntblCont ~41 ~42 Code=010102004\ntblCont ~51 ~52 Code=010102005"},
         {[](Connection* c) { return DeleteBillSYB(c, u"010102"_s); },
          "tblSYB -4\ntblBill -6\ntblParm -6\ntblCont -61 -62\n"
          "tblContDe -611 -612 -613 -614 -621 -622 -623 -624\ntblBillSpec -61 -62\ntblSpecEnum -611 -612 -621 -622",
          "DELETE ON tblSpecEnum", "tblParm -6\ntblCont -61 -62\ntblContDe -611 -612 -613 -614 -621 -622 -623 -624"},
         // Three characters more than the code, whatever its level, make a bill of the chapter.
         {[](Connection* c) { return DeleteBillSYB(c, u"01"_s); },
          "tblSYB -1\ntblBill -7\ntblParm -7\ntblCont -71 -72\n"
          "tblContDe -711 -712 -713 -714 -721 -722 -723 -724\ntblBillSpec -71 -72\ntblSpecEnum -711 -712 -721 -722",
          "DELETE ON tblParm"}});
}

// What is only renumbered keeps its time stamp; parameters follow moves only.
TEST(Writing, OfBillsFeaturesAndValues) {
    const std::vector<Bill> on{{4, u"010101005"_s}, {5, u"010101006"_s}}, back{{5, u"010101004"_s}};
    expectWriting(
        {{[](Connection* c) { return ModifyBill(c, 2, u"Rule"_s, u"新"_s); }, "tblBill ~2 Rule=新 LastUpdate=now"},
         {[&](Connection* c) { return addBill(c, u"010101004"_s, on) == 8; },
          "tblBill +8 Code=010101004 LastUpdate=now IsDel=0\ntblBill ~4 Code=010101005\ntblBill ~5 Code=010101006\n"
          "tblCont ~41 ~42 Code=010101005\ntblCont ~51 ~52 Code=010101006"},
         {[&](Connection* c) { return deleteBill(c, 4, back); },
          "tblBill ~5 Code=010101004\ntblBill -4\ntblParm -4\ntblCont ~51 ~52 Code=010101004\ntblCont -41 -42\n"
          "tblContDe -411 -412 -413 -414 -421 -422 -423 -424\ntblBillSpec -41 -42\ntblSpecEnum -411 -412 -421 -422"},
         {[](Connection* c) {
              return moveBill(c, {3, u"010101003"_s}, {2, u"010101002"_s}, u"010101006"_s);
          },
          "tblBill ~3 Code=010101002\ntblBill ~2 Code=010101003\ntblParm ~3 Code=010101002\n"
          "tblParm ~2 Code=010101003\ntblCont ~31 ~32 Code=010101002\ntblCont ~21 ~22 Code=010101003"},
         {[](Connection* c) { return ModifyBillSpec(c, 11, u"DefVal"_s, u"新"_s); },
          "tblBillSpec ~11 DefVal=新 LastUpdate=now"},
         {[](Connection* c) { return addFeature(c, 1, u"新"_s) == 73; },
          "tblBillSpec +73 BillID=1 Name=新 Type=0 Version=1 LastUpdate=now IsDel=0"},
         {[](Connection* c) { return deleteFeature(c, 12); }, "tblBillSpec -12\ntblSpecEnum -121 -122"},
         {[](Connection* c) { return addFeatureVal(c, 12) == 723; },
          "tblSpecEnum +723 SpecID=12 Version=1 LastUpdate=now IsDel=0"},
         {[](Connection* c) { return deleteFeatureVal(c, 121); }, "tblSpecEnum -121"},
         {[](Connection* c) {
              return writeFeatureValues(c, 11, {{111, u"1"_s, u"甲"_s}, {112, u"2"_s, u"乙"_s}}, u"甲"_s);
          },
          "tblBillSpec ~11 DefVal=甲 LastUpdate=now\ntblSpecEnum ~112 EigenValue=乙 LastUpdate=now\n"
          "tblSpecEnum ~111 IsUse=1 EigenValue=甲 LastUpdate=now"}});
}

TEST(Writing, OfContents) {
    const Ration ration{u"B2"_s, u"新"_s, u"m"_s, u"GD"_s};
    expectWriting(
        {{[](Connection* c) { return ModifyCont(c, 11, u"新"_s); }, "tblCont ~11 Cont=新 LastUpdate=now"},
         {[](Connection* c) { return ModifySubCont(c, 11, 1, u"新"_s); },
          "tblContDe ~111 ~112 SubCont=新 LastUpdate=now"},
         {[](Connection* c) {
              return addContent(c, {1, u"010101001"_s, 2, u"新"_s, u"02"_s}) == 73;
          },
          "tblCont +73 Code=010101001 Num=2 Cont=新 Prof=02 BillID=1 Version=1 LastUpdate=now IsDel=0\n"
          "tblCont ~12 Num=3",
          "INSERT ON tblCont", "tblCont ~12 Num=3"},
         {[](Connection* c) { return addSubContent(c, 11, 2, u"新"_s); },
          "tblContDe +725 ContID=11 SubNum=2 SubCont=新 Version=1 LastUpdate=now IsDel=0\n"
          "tblContDe ~113 SubNum=3\ntblContDe ~114 SubNum=4",
          "INSERT ON tblContDe", "tblContDe ~113 SubNum=3\ntblContDe ~114 SubNum=4"},
         {[](Connection* c) { return deleteContent(c, 11, 1, 1); },
          "tblCont ~12 Num=1\ntblCont -11\ntblContDe -111 -112 -113 -114"},
         {[](Connection* c) { return deleteSubContent(c, 11, 2); }, "tblContDe ~114 SubNum=2\ntblContDe -113"},
         {[](Connection* c) { return deleteRation(c, 112, RationRow::Removed); }, "tblContDe -112"},
         {[](Connection* c) { return deleteRation(c, 113, RationRow::Cleared); },
          "tblContDe ~113 Deh= Name= Unit= DekID= LastUpdate=now"},
         {[&](Connection* c) { return updateRation(c, 111, ration); },
          "tblContDe ~111 Deh=B2 Name=新 Unit=m DekID=GD LastUpdate=now"},
         {[&](Connection* c) { return insertRation(c, 12, 3, u"细"_s, ration) == 725; },
          "tblContDe +725 ContID=12 SubNum=3 SubCont=细 Deh=B2 Name=新 Unit=m DekID=GD Version=1 LastUpdate=now "
          "IsDel=0"}});
}
