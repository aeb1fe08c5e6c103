#include "app/controls/KeyedGrid.h"
#include "benchmarks/Actions.h"
#include "benchmarks/Sides.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "editor/contents/RationLookup.h"

using namespace Qt::StringLiterals;

namespace {

// Hosts and ids of the commands.
constexpr int chapterCommands = 1;
constexpr int billCommands = 2;
constexpr int featureCommands = 3;

Gesture command(int host, int id) {
    return [=](EditorWindow& window) { window.command(host, id); };
}

/// Makes a row of the contents current. The first bill's outline begins with a content, its first second-level content
/// and the ration of that.
Gesture onContent(int row) {
    return [=](EditorWindow& window) { window.contents()->setRow(row); };
}

/// What the window shows of bill `id`, one pass over each table. Without contents or features the tables below them
/// need not be looked at.
QString detailsOf(const QString& id) {
    return u"SELECT * FROM tblCont WHERE BillID=%1 AND Prof LIKE '%01%' ORDER BY Num;"
           "SELECT * FROM tblBillSpec WHERE BillID=%1;"_s.arg(id);
}

/// Both codes of the first two bills, exchanged in `table`, whose column `id` says whose row it is.
QString exchanged(const QString& table, const QString& id) {
    return u"UPDATE %1 SET Code=CASE %2 WHEN 1 THEN '010101002' ELSE '010101001' END WHERE %2 IN (1,2);"_s.arg(table,
                                                                                                               id);
}

/// The codes of the full chapter's bills from `first` to `last`, moved on by `by`, one pass a table.
QString shifted(const QString& first, const QString& last, int by) {
    QString text;
    for (const QString& table : {u"tblCont"_s, u"tblBill"_s})
        text += u"UPDATE %1 SET Code=printf('%09d',Code+%2) WHERE Code BETWEEN '010101%3' AND '010101%4';"_s.arg(table)
                    .arg(by)
                    .arg(first, last);
    return text;
}

/// Rows are matched by `match`, a condition on tblBill.
QString deletedBills(const QString& match) {
    return u"CREATE TEMP TABLE gone AS SELECT ID FROM tblBill WHERE %1;"
           "DELETE FROM tblParm WHERE BillID IN gone;"
           "DELETE FROM tblContDe WHERE ContID IN (SELECT ID FROM tblCont WHERE BillID IN gone);"
           "DELETE FROM tblCont WHERE BillID IN gone;"
           "DELETE FROM tblSpecEnum WHERE SpecID IN (SELECT ID FROM tblBillSpec WHERE BillID IN gone);"
           "DELETE FROM tblBillSpec WHERE BillID IN gone;"
           "DELETE FROM tblBill WHERE ID IN gone;"_s.arg(match);
}

QString swappedChapters() {
    QString text;
    for (const QString& table : {u"tblSYB"_s, u"tblBill"_s, u"tblCont"_s})
        text +=
            u"UPDATE %1 SET Code=CASE WHEN Code<'02' THEN '02' ELSE '01' END||substr(Code,3) "
            "WHERE Code>='01' AND Code<'03';"_s.arg(table);
    return text;
}

/// Sure that no text in `table` begins with `name`.
QString checkedName(const QString& table, const QString& column, const QString& name) {
    return u"SELECT count(*) FROM %1 WHERE %2>='%3' AND %2<'%3)';"_s.arg(table, column, name);
}

}  // namespace

std::vector<MeasuredAction> changeActions() {
    constexpr CostLimit noticeable{0, 100};
    // Half of it for the record by which it can be taken back.
    constexpr CostLimit throughout{4, 20};
    constexpr CostLimit renumbering{4, 16, 100, 1.5};
    constexpr CostLimit few{2, 5, 100, 1.5};
    constexpr CostLimit rowsAndRecord{4, 20, 150};
    constexpr CostLimit takenBack{0, 250, 250};
    const QString ration = u"A500-40"_s;
    const Gesture rename = [](EditorWindow& window) { window.edit(window.bills(), 0, u"Name"_s, u"NEW"_s); };
    const Gesture deleteChapter = [](EditorWindow& window) {
        window.timed([&] { window.command(chapterCommands, 103); });
    };
    const Gesture undo = [](EditorWindow& window) { window.undo(); };
    const QString deletedAndNot =
        u"BEGIN;"_s + deletedBills(u"Code BETWEEN '010101' AND '010101999'"_s) + u"ROLLBACK"_s;
    return {
        {"Swap two level-1 chapters", LibrarySize::Every, 15, throughout,
         changing({.before = [](EditorWindow& window) { window.clickChapter(u"01"_s); },
                   .act = command(chapterCommands, 105),
                   .plain = u"BEGIN;"_s + swappedChapters() + u"COMMIT"_s,
                   .shown = u"SELECT * FROM tblSYB ORDER BY length(Code),Code"_s})},
        {"Add a chapter", LibrarySize::Every, 45, noticeable,
         changing(
             {.act = command(chapterCommands, 100),
              .plain = u"SELECT ID FROM tblSYB WHERE Code='010111';"
                       "INSERT INTO tblSYB (Code,Name,LastUpdate,IsDel) VALUES ('010111','NEW','2024-01-01',0)"_s,
              .shown = u"SELECT * FROM tblBill WHERE Code LIKE '010111___' ORDER BY Code;"_s + detailsOf(u"0"_s)})},
        {"Delete a chapter of 999 bills", LibrarySize::Every, 15, rowsAndRecord,
         changing({.act = command(chapterCommands, 103),
                   .plain = u"BEGIN;"_s + deletedBills(u"Code BETWEEN '010101' AND '010101999'"_s) +
                            u"DELETE FROM tblSYB WHERE Code='010101';COMMIT"_s,
                   .shown = u"SELECT * FROM tblBill WHERE Code LIKE '010102___' ORDER BY Code;"_s + detailsOf(u"0"_s)}),
         true},
        {"Edit a bill's name", LibrarySize::Every, 45, noticeable,
         changing({.act = rename, .plain = u"UPDATE tblBill SET Name='NEW',LastUpdate='2024-01-01' WHERE ID=1"_s}),
         true},
        {"Undo the name", LibrarySize::Every, 45, noticeable,
         changing(
             {.before = rename, .act = undo, .plain = u"BEGIN;UPDATE tblBill SET Name='NEW' WHERE ID=1;ROLLBACK"_s})},
        {"Undo deleting the chapter", LibrarySize::Every, 15, takenBack,
         changing({.before = deleteChapter, .act = undo, .plain = deletedAndNot}), true},
        {"Delete it again", LibrarySize::Every, 15, takenBack,
         changing({.before =
                       [=](EditorWindow& window) {
                           deleteChapter(window);
                           window.undo();
                       },
                   .act = [](EditorWindow& window) { window.redo(); },
                   .plain = u"BEGIN;"_s + deletedBills(u"Code BETWEEN '010101' AND '010101999'"_s) +
                            u"DELETE FROM tblSYB WHERE Code='010101';COMMIT"_s})},
        // Below the first bill of the full chapter, which has room for one more.
        {"Add a bill at the top", LibrarySize::Every, 15, renumbering,
         changing({.prepare = u"DELETE FROM tblBill WHERE Code='010101999'"_s,
                   .act = command(billCommands, 200),
                   .plain = u"BEGIN;"_s + shifted(u"002"_s, u"998"_s, 1) +
                            u"INSERT INTO tblBill (Code,LastUpdate,IsDel) VALUES ('010101002','2024-01-01',0);COMMIT"_s,
                   .shown = detailsOf(u"last_insert_rowid()"_s)}),
         true},
        {"Delete the first bill", LibrarySize::Every, 15, renumbering,
         changing({.act = command(billCommands, 201),
                   .plain = u"BEGIN;"_s + deletedBills(u"ID=1"_s) + shifted(u"002"_s, u"999"_s, -1) + u"COMMIT"_s,
                   .shown = detailsOf(u"2"_s) + u"SELECT * FROM tblContDe WHERE ContID BETWEEN 9 AND 16;"
                                                "SELECT * FROM tblSpecEnum WHERE SpecID=3"_s})},
        {"Move a bill", LibrarySize::Every, 45, renumbering,
         changing({.act = command(billCommands, 105),
                   .plain = u"BEGIN;"_s + exchanged(u"tblParm"_s, u"BillID"_s) + exchanged(u"tblCont"_s, u"BillID"_s) +
                            exchanged(u"tblBill"_s, u"ID"_s) + u"COMMIT"_s})},
        // The names count up without a gap, so counting them is enough to know the next one.
        {"Add a feature among 500 of its name", LibrarySize::Every, 45, few,
         changing({.prepare =
                       u"INSERT INTO tblBillSpec (BillID,Name,Type,LastUpdate,IsDel) SELECT ID,'新建项目特征'||"
                       "CASE ID WHEN 1 THEN '' ELSE '('||(ID-1)||')' END,0,'2024-01-01',0 FROM tblBill LIMIT 500"_s,
                   .act = command(featureCommands, 300),
                   .plain = u"INSERT INTO tblBillSpec (BillID,Name,Type,LastUpdate,IsDel) SELECT 1,"
                            "'新建项目特征('||count(*)||')',0,'2024-01-01',0 FROM tblBillSpec "
                            "WHERE Name>='新建项目特征' AND Name<'新建项目特征)'"_s,
                   .shown = u"SELECT * FROM tblSpecEnum WHERE SpecID=last_insert_rowid()"_s})},
        {"Add a work content", LibrarySize::Every, 15, few,
         changing({.before = onContent(0),
                   .act = command(billCommands, 400),
                   .plain = checkedName(u"tblCont"_s, u"Cont"_s, u"新建工作内容"_s) +
                            u"BEGIN;UPDATE tblCont SET Num=Num+1 WHERE Num>=2 AND BillID=1;"
                            "INSERT INTO tblCont (Code,Num,Cont,Prof,BillID,LastUpdate,IsDel) VALUES "
                            "('010101001',2,'新建工作内容','01',1,'2024-01-01','0');COMMIT"_s})},
        {"Add a second-level content", LibrarySize::Every, 15, few,
         changing({.before = onContent(0),
                   .act = command(billCommands, 401),
                   .plain = checkedName(u"tblContDe"_s, u"SubCont"_s, u"新建二级工作内容"_s) +
                            u"BEGIN;UPDATE tblContDe SET SubNum=SubNum+1 WHERE SubNum>=3 AND ContID=1;"
                            "INSERT INTO tblContDe (ContID,SubNum,SubCont,LastUpdate,IsDel) VALUES "
                            "(1,3,'新建二级工作内容','2024-01-01','0');COMMIT"_s})},
        {"Delete a work content", LibrarySize::Every, 15, few,
         changing({.before = onContent(0),
                   .act = command(billCommands, 403),
                   .plain = u"BEGIN;DELETE FROM tblContDe WHERE ContID=1;"
                            "UPDATE tblCont SET Num=Num-1 WHERE Num>1 AND BillID=1;"
                            "DELETE FROM tblCont WHERE ID=1;COMMIT"_s})},
        {"Delete a second-level content", LibrarySize::Every, 15, few,
         changing({.before = onContent(1),
                   .act = command(billCommands, 403),
                   .plain = u"BEGIN;DELETE FROM tblContDe WHERE ContID=1 AND SubNum=1;"
                            "UPDATE tblContDe SET SubNum=SubNum-1 WHERE SubNum>1 AND ContID=1;COMMIT"_s})},
        {"Delete a feature", LibrarySize::Every, 15, few,
         changing({.act = command(featureCommands, 301),
                   .plain = u"BEGIN;DELETE FROM tblSpecEnum WHERE SpecID=1;"
                            "DELETE FROM tblBillSpec WHERE ID=1;COMMIT"_s,
                   .shown = u"SELECT * FROM tblSpecEnum WHERE SpecID=2"_s})},
        {"Set a ration by its code", LibrarySize::Every, 45, noticeable,
         changing({.before = onContent(2),
                   .act = [=](EditorWindow& window) { window.edit(window.contents(), 2, u"cont"_s, ration); },
                   .plain = u"ATTACH '%1' AS r;UPDATE tblContDe SET (Deh,Name,Unit,DekID)=(SELECT '%2',MC,DW,'902' "
                            "FROM r.DEB WHERE DEH='%2' COLLATE NOCASE) WHERE ID=1"_s.arg(
                                GetDekFilePath(QLatin1String(largeRationLibrary)), ration)}),
         true},
    };
}
