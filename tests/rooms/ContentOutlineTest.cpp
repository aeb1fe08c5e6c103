#include "editor/contents/ContentOutline.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <random>

#include "storage/Lookups.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

QString line(const OutlineRow& row) {
    return QStringList{
        QString::number(row.level), row.contID, row.contDeID, row.contNum, row.subNum, row.cont, row.unit, row.dekName}
        .join(u'|');
}

QStringList loaded(const TemporaryLibrary& library, qint64 billID, const QString& prof) {
    QStringList lines;
    for (const OutlineRow& row : LoadBillContent(library.connection(), billID, prof))
        lines << line(row);
    return lines;
}

/// What the statements give when each runs on the library's own table.
QStringList runOneByOne(const TemporaryLibrary& library, qint64 billID, const QString& prof) {
    QStringList lines;
    const auto each = [&](const SqlText& query, const std::function<void(const Recordset&)>& act) {
        for (Recordset rows = library.connection()->OpenRecordset(query); !rows.EndOfFile(); rows.MoveNext())
            act(rows);
    };
    each(sql("select * from tblCont where billID='", billID, "' and prof like '%", prof, "%' ORDER BY num asc;"),
         [&](const Recordset& content) {
             const QString id = content.text("id");
             lines << line({0, id, {}, content.text("Num"), {}, content.text("cont"), {}, {}});
             each(sql("select distinct subCont,subNum from tblContDe where contID='", id, "' ORDER BY subNum;"),
                  [&](const Recordset& sub) {
                      const QString subNum = sub.text("subNum");
                      lines << line({1, id, {}, {}, subNum, sub.text("subCont"), {}, {}});
                      each(sql("select id,deh,name,unit,dekid from tblContDe where deh IS NOT NULL AND deh<>'' AND "
                               "contID='",
                               id, "' and subNum='", subNum, "';"),
                           [&](const Recordset& row) {
                               const QString text = u'[' + row.text("deh").toUpper() + u"] "_s + row.text("name");
                               lines << line(
                                   {2, id, row.text("id"), {}, subNum, text, row.text("unit"), row.text("dekid")});
                           });
                  });
         });
    return lines;
}

/// Fills the two tables with whatever a file may hold.
void fillWithHostileRows(const TemporaryLibrary& library, unsigned seed) {
    std::mt19937 random(seed);
    const auto pick = [&](std::initializer_list<SqlText> values) {
        return *(values.begin() + random() % values.size());
    };
    const auto number = [&] {
        return pick({"NULL", "1", "'2'", "3", "'a'", "'A'", "''", "1.5", "'1'", "-1", "'０'", "x'01'", "2", "1"});
    };
    const auto text = [&] {
        return pick(
            {"NULL", "''", "'a1-1'", "'A1-1'", "'回填'", "'回填 '", "5", "'5'", "x'00ff'", "char(0)", "'回填'"});
    };
    library.run("BEGIN");
    for (int i = 0; i < 8; ++i)
        library.run(sql("INSERT INTO tblCont(Num,Cont,Prof,BillID) VALUES(", number(), ",", text(), ",",
                        pick({"NULL", "''", "'01'", "'0102'", "'02'", "'101'", "1", "'01'"}), ",",
                        pick({"1", "'1'", "2", "'x'", "1", "1"}), ")"));
    for (int i = 0; i < 60; ++i)
        library.run(sql("INSERT INTO tblContDe(ContID,SubNum,SubCont,Deh,Name,Unit,DekID) VALUES(",
                        pick({"NULL", "'x'", "1", "'2'", "3.0", "' 4 '", "'05'", "6", "7", "1.5", "2", "3"}), ",",
                        number(), ",", text(), ",", text(), ",", text(), ",", text(), ",", text(), ")"));
    library.run("COMMIT");
}

}  // namespace

TEST(ContentOutline, EqualsTheStatementsRunOneByOneOnAnyRows) {
    qsizetype rows = 0;
    for (unsigned seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE(seed);
        const TemporaryLibrary library;
        if (seed % 4 == 0) {
            // A foreign file may declare other types, and have an index.
            library.run("DROP TABLE tblContDe");
            library.run(
                "CREATE TABLE tblContDe(ID Integer PRIMARY KEY,ContID text,SubNum text,SubCont,Deh Integer,"
                "Name,Unit real,DekID)");
            library.run("CREATE INDEX foreign_index ON tblContDe(SubNum)");
        }
        fillWithHostileRows(library, seed);
        const QStringList before = library.rowsInFile("SELECT * FROM tblContDe");
        // By passes, while the look-ups are filled, and by them.
        for (const qint64 billID : {1, 2, 0, 1, 2}) {
            for (const QString& prof : {u"01"_s, u"02"_s}) {
                const QStringList lines = loaded(library, billID, prof);
                rows += lines.size();
                EXPECT_EQ(lines, runOneByOne(library, billID, prof));
            }
            if (billID == 0)
                while (library.connection()->lookups().fillSlice()) {
                }
        }
        EXPECT_EQ(library.rowsInFile("SELECT * FROM tblContDe"), before);
    }
    EXPECT_GT(rows, 300) << "the comparison has something to compare";
}

TEST(ContentOutline, ErrorsAreRecordedAndTheRestIsShown) {
    const TemporaryLibrary library;
    library.run("INSERT INTO tblCont(ID,Num,Cont,Prof,BillID) VALUES(1,1,'first','01',7),(2,2,'second','01',7)");
    library.run(
        "INSERT INTO tblContDe(ID,ContID,SubNum,SubCont,Deh,Name) VALUES(1,1,'o''clock','a','x',''),"
        "(2,2,1,'b','y','earth')");
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(loaded(library, 7, u"01"_s),
              (QStringList{u"0|1||1||first||"_s, u"1|1|||o'clock|a||"_s, u"0|2||2||second||"_s, u"1|2|||1|b||"_s,
                           u"2|2|2||1|[Y] earth||"_s}));
    EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.LoadContentDe"_s});

    library.run("DROP TABLE tblContDe");
    EXPECT_EQ(loaded(library, 7, u"01"_s).size(), 2) << "the contents can still be read";
    EXPECT_TRUE(LoadBillContent(nullptr, 7, u"01"_s).empty());
    EXPECT_EQ(answers.takePlaces(), QStringList(2, u"frmEditor.LoadBillContent"_s));
}
