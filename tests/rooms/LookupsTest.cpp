#include "storage/Lookups.h"

#include <gtest/gtest.h>

#include <random>

#include "app/base/Guarded.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

struct Asked {
    LookupBy by;
    SqlText table, column;
};
const Asked asked[] = {
    {LookupBy::BillsByCode, "tblBill", "Code"},          {LookupBy::ParametersByBill, "tblParm", "BillID"},
    {LookupBy::ContentsByBill, "tblCont", "BillID"},     {LookupBy::ContentsByCode, "tblCont", "Code"},
    {LookupBy::SubRowsByContent, "tblContDe", "ContID"}, {LookupBy::FeaturesByBill, "tblBillSpec", "BillID"},
    {LookupBy::ValuesByFeature, "tblSpecEnum", "SpecID"}};

/// Rows of a query on the library's own connection.
QStringList rows(const TemporaryLibrary& library, const SqlText& query) {
    QStringList lines;
    for (Recordset row = library.connection()->OpenRecordset(query); !row.EndOfFile(); row.MoveNext())
        lines << row.joined(u"|"_s);
    return lines;
}

/// A user with every habit that a look-up could miss.
class Story {
public:
    explicit Story(unsigned seed) : m_random(seed) {
        m_other.Open(library.path(), QString(), Connection::readWriteCreate);
        for (Connection* connection : {&m_other, library.connection()})
            connection->OpenRecordset("PRAGMA busy_timeout=0");
    }

    void step() {
        const Asked& at = asked[m_random() % std::size(asked)];
        const SqlText row = sql(" WHERE ID%7=", m_random() % 7);
        switch (m_random() % 12) {
            case 0:
                return library.run("SAVEPOINT s");
            case 1:
            case 2:
                return run("ROLLBACK TO s", "RELEASE s");
            case 3:
                return run("RELEASE s", "");
            case 4:
                succeeds([&] { m_other.Execute(sql("UPDATE ", at.table, " SET ", at.column, "=", value(at), row)); });
                return;
            case 5:
                succeeds([&] { library.connection()->lookups().fillSlice(); });
                return;
            case 6:
                return run(sql("DELETE FROM ", at.table, row), "");
            case 7:
            case 8:
                return run(sql("UPDATE ", at.table, " SET ", at.column, "=", value(at), row), "");
            default:
                if (at.by == LookupBy::ContentsByCode)
                    return run(sql("INSERT INTO tblCont(Code,BillID) VALUES(", value(at), ",3)"), "");
                return run(sql("INSERT INTO ", at.table, "(", at.column, ") VALUES(", value(at), ")"), "");
        }
    }

    /// What a statement gives with a look-up, without and with the rows added for it, and by itself.
    void compare() {
        EXPECT_EQ(library.connection()->lookups().difference(), QString());
        for (const Asked& at : asked) {
            const bool code = at.column.text() == u"Code"_s;
            const SqlText condition =
                code ? sql(" LIKE ", pick({"'0101__'", "'0%'", "'a_'", "'%1'", "'１%'", "'01\\_'"}))
                     : sql("=", value(at));
            const SqlText plain = sql("SELECT * FROM ", at.table, " WHERE ", at.column, condition);
            Lookups& lookups = library.connection()->lookups();
            const SqlText onKey = sql("key", condition);
            EXPECT_EQ(rows(library, sql(plain, lookups.narrow(at.by, onKey))), rows(library, plain));
            EXPECT_EQ(rows(library, sql(plain, lookups.some(at.by, onKey).narrow(onKey))), rows(library, plain));
        }
    }

    TemporaryLibrary library;

private:
    SqlText pick(std::initializer_list<SqlText> values) { return *(values.begin() + m_random() % values.size()); }
    SqlText value(const Asked& at) {
        return at.column.text() == u"Code"_s
                   ? pick({"'010101'", "'0101A1'", "'aB'", "'Ab'", "x'3031'", "1", "'01_'", "''"})
                   : pick({"1", "'1'", "2", "3", "1.0", "'x'", "x'01'", "' 2 '", "-5", "'a'"});
    }
    /// What cannot be done (a savepoint that is not there, a file that is locked) is left.
    void run(const SqlText& first, const SqlText& then) {
        succeeds([&] {
            library.connection()->Execute(first);
            if (!then.isEmpty())
                library.connection()->Execute(then);
        });
    }

    std::mt19937 m_random;
    Connection m_other;
};

}  // namespace

TEST(Lookups, ChangeNothingOfWhatStatementsGive) {
    for (unsigned seed = 1; seed <= 6; ++seed) {
        Story story(seed);
        for (int step = 0; step < 250 && !HasFailure(); ++step) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << step);
            story.step();
            story.compare();
        }
    }
}

TEST(Lookups, AreFilledInSlicesWhileRowsChange) {
    const TemporaryLibrary library;
    library.run(
        "INSERT INTO tblContDe(ContID,SubCont) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE "
        "i<70000) SELECT i*7919%9000,iif(i%1000=0,'新建二级工作内容('||i||')','x') FROM n");
    Lookups& lookups = library.connection()->lookups();
    int slices = 0;
    for (bool more = true; more; ++slices) {
        more = lookups.fillSlice();
        library.run(sql("UPDATE tblContDe SET ContID=-ContID,SubCont='新建二级工作内容' WHERE ID%1009=", slices));
        library.run(sql("DELETE FROM tblContDe WHERE ID%1013=", slices));
        library.run("INSERT INTO tblContDe(ContID) VALUES(5)");
    }
    EXPECT_GT(slices, 3);
    EXPECT_TRUE(lookups.areComplete());
    EXPECT_EQ(lookups.difference(), QString());
    const SqlText key = "key=5";
    EXPECT_TRUE(rows(library, sql("EXPLAIN QUERY PLAN SELECT * FROM tblContDe WHERE ContID=5",
                                  lookups.narrow(LookupBy::SubRowsByContent, key)))
                    .filter(u"SCAN"_s)
                    .isEmpty());
    EXPECT_TRUE(library.rowsInFile("SELECT name FROM sqlite_schema WHERE type<>'table'").isEmpty());
}

TEST(Lookups, OfAClosedConnectionNarrowNothing) {
    const TemporaryLibrary library;
    while (library.connection()->lookups().fillSlice()) {
    }
    library.connection()->Close();
    Lookups& lookups = library.connection()->lookups();
    EXPECT_TRUE(lookups.narrow(LookupBy::ContentsByBill, "key=1").isEmpty());
    EXPECT_TRUE(lookups.some(LookupBy::ContentsByBill, "key=1").narrow("key=1").isEmpty());
}

TEST(Lookups, AreNotMadeForATableThatIsNone) {
    for (const SqlText& foreign :
         {SqlText("CREATE TABLE tblParm(ID Integer PRIMARY KEY,BillID text)"),
          SqlText("CREATE TABLE tblParm(ID Integer PRIMARY KEY,BillID Integer) WITHOUT ROWID"),
          SqlText("CREATE TABLE tblParm(ID Integer PRIMARY KEY,rowid,BillID Integer)"),
          SqlText("CREATE VIEW tblParm AS SELECT * FROM tblCont"), SqlText("CREATE TABLE other(ID)")}) {
        const TemporaryLibrary library;
        library.run("DROP TABLE tblParm");
        library.run(foreign);
        Lookups& lookups = library.connection()->lookups();
        while (lookups.fillSlice()) {
        }
        EXPECT_TRUE(lookups.areComplete());
        EXPECT_TRUE(lookups.narrow(LookupBy::ParametersByBill, "key=1").isEmpty()) << qPrintable(foreign.text());
        EXPECT_FALSE(lookups.narrow(LookupBy::ContentsByBill, "key=1").isEmpty());
    }
}
