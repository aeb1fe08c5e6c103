#include "editor/contents/ContentOutline.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <random>

#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

QString line(const OutlineRow& row) {
    return QStringList{
        QString::number(row.level), row.contID, row.contDeID, row.contNum, row.subNum, row.cont, row.unit, row.dekName}
        .join(u'|');
}

QStringList loaded(const TemporaryLibrary& library, qint64 billID, const QString& prof = u"01"_s) {
    QStringList lines;
    for (const OutlineRow& row : LoadBillContent(library.connection(), billID, prof))
        lines << line(row);
    return lines;
}

/// What the statements give when each runs on the library's own table.
QStringList runOneByOne(const TemporaryLibrary& library, qint64 billID, const QString& prof = u"01"_s) {
    QStringList lines;
    Connection& connection = *library.connection();
    Recordset contents = connection.OpenRecordset(
        sql("select * from tblCont where billID='", billID, "' and prof like '%", prof, "%' ORDER BY num asc;"));
    for (; !contents.EndOfFile(); contents.MoveNext()) {
        const QString id = contents.text("id");
        lines << line({0, id, {}, contents.text("Num"), {}, contents.text("cont"), {}, {}});
        Recordset subContents = connection.OpenRecordset(
            sql("select distinct subCont,subNum from tblContDe where contID='", id, "' ORDER BY subNum;"));
        for (; !subContents.EndOfFile(); subContents.MoveNext()) {
            const QString subNum = subContents.text("subNum");
            lines << line({1, id, {}, {}, subNum, subContents.text("subCont"), {}, {}});
            if (subNum.contains(u'\''))
                continue;
            Recordset rations = connection.OpenRecordset(
                sql("select id,deh,name,unit,dekid from tblContDe where deh IS NOT NULL AND deh<>'' AND contID='", id,
                    "' and subNum='", subNum, "';"));
            for (; !rations.EndOfFile(); rations.MoveNext())
                lines << line({2,
                               id,
                               rations.text("id"),
                               {},
                               subNum,
                               u'[' + rations.text("deh").toUpper() + u"] "_s + rations.text("name"),
                               rations.text("unit"),
                               rations.text("dekid")});
        }
    }
    return lines;
}

/// Fills the two tables with whatever a file may hold.
class HostileRows {
public:
    explicit HostileRows(unsigned seed) : m_random(seed) {}

    void fill(const TemporaryLibrary& library, int contents, int rows) {
        library.run("BEGIN");
        for (int i = 0; i < contents; ++i)
            library.run(sql("INSERT INTO tblCont(Num,Cont,Prof,BillID) VALUES(", number(), ",", text(), ",",
                            pick({"NULL", "''", "'01'", "'0102'", "'02'", "'101'", "1", "'01'"}), ",",
                            pick({"1", "'1'", "2", "'x'", "1", "1"}), ")"));
        for (int i = 0; i < rows; ++i)
            library.run(sql("INSERT INTO tblContDe(ContID,SubNum,SubCont,Deh,Name,Unit,DekID) VALUES(",
                            pick({"NULL", "'x'", "1", "'2'", "3.0", "' 4 '", "'05'", "6", "7", "1.5", "2", "3"}), ",",
                            number(), ",", text(), ",", text(), ",", text(), ",", text(), ",", text(), ")"));
        library.run("COMMIT");
    }

private:
    SqlText pick(std::initializer_list<SqlText> values) {
        return *(values.begin() + std::uniform_int_distribution<std::size_t>(0, values.size() - 1)(m_random));
    }
    SqlText number() {
        return pick({"NULL", "1", "'2'", "3", "'a'", "'A'", "''", "1.5", "'1'", "-1", "'０'", "x'01'", "2", "1"});
    }
    SqlText text() {
        return pick(
            {"NULL", "''", "'a1-1'", "'A1-1'", "'回填'", "'回填 '", "5", "'5'", "x'00ff'", "char(0)", "'回填'"});
    }

    std::mt19937 m_random;
};

void expectNoTemporaryTable(const TemporaryLibrary& library) {
    EXPECT_TRUE(library.connection()->OpenRecordset("SELECT * FROM temp.sqlite_master").EndOfFile());
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
        HostileRows(seed).fill(library, 8, 60);
        const QStringList before = library.rowsInFile("SELECT * FROM tblContDe");
        for (const qint64 billID : {1, 2, 0}) {
            const QStringList lines = loaded(library, billID);
            rows += lines.size();
            EXPECT_EQ(lines, runOneByOne(library, billID));
            EXPECT_EQ(loaded(library, billID, u"02"_s), runOneByOne(library, billID, u"02"_s));
        }
        expectNoTemporaryTable(library);
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
    EXPECT_EQ(loaded(library, 7), (QStringList{u"0|1||1||first||"_s, u"1|1|||o'clock|a||"_s, u"0|2||2||second||"_s,
                                               u"1|2|||1|b||"_s, u"2|2|2||1|[Y] earth||"_s}));
    EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.LoadContentDe"_s});
    expectNoTemporaryTable(library);

    library.run("DROP TABLE tblContDe");
    EXPECT_EQ(loaded(library, 7).size(), 2) << "the contents can still be read";
    expectNoTemporaryTable(library);
    EXPECT_TRUE(LoadBillContent(nullptr, 7, u"01"_s).empty());
    EXPECT_EQ(answers.takePlaces(), QStringList(2, u"frmEditor.LoadBillContent"_s));
}
