#include "storage/Lookups.h"

#include "app/base/Guarded.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

const struct {
    LookupBy by;
    SqlText table, column;
} asked[] = {{LookupBy::BillsByCode, "tblBill", "Code"},          {LookupBy::ParametersByBill, "tblParm", "BillID"},
             {LookupBy::ContentsByBill, "tblCont", "BillID"},     {LookupBy::ContentsByCode, "tblCont", "Code"},
             {LookupBy::SubRowsByContent, "tblContDe", "ContID"}, {LookupBy::FeaturesByBill, "tblBillSpec", "BillID"},
             {LookupBy::ValuesByFeature, "tblSpecEnum", "SpecID"}};

/// What takes the place of tblParm: a table of which nobody can be sure that a look-up is right, or none.
const SqlText foreign[] = {"CREATE TABLE tblParm(ID Integer PRIMARY KEY,BillID text)",
                           "CREATE TABLE tblParm(ID Integer PRIMARY KEY,BillID Integer) WITHOUT ROWID",
                           "CREATE TABLE tblParm(ID Integer PRIMARY KEY,rowid,BillID Integer)",
                           "CREATE VIEW tblParm AS SELECT * FROM tblCont", "CREATE TABLE other(ID)"};

/// Rows of a query on the library's own connection, or that it fails.
QStringList rows(const TemporaryLibrary& library, const SqlText& query) {
    QStringList lines;
    const bool read = succeeds([&] {
        for (Recordset row = library.connection()->OpenRecordset(query); !row.EndOfFile(); row.MoveNext())
            lines << row.joined(u"|"_s);
    });
    return read ? lines : QStringList{u"failed"_s};
}

}  // namespace

// Whatever is written, undone, written by others: a statement gives the same with a look-up, without and with the rows
// added for it.
TEST(Lookups, ChangeNothingOfWhatStatementsGive) {
    for (unsigned seed = 1; seed <= 1 + std::size(foreign); ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&](std::initializer_list<SqlText> from) { return *(from.begin() + random() % from.size()); };
        const TemporaryLibrary library;
        if (seed > 1) {
            library.run("DROP TABLE tblParm");
            library.run(foreign[seed - 2]);
        }
        OtherProgram other(library.path());
        library.connection()->OpenRecordset("PRAGMA busy_timeout=0");
        Lookups& lookups = library.connection()->lookups();
        // Some are first asked for within a transaction.
        if (seed % 2 == 0)
            library.run("SAVEPOINT s");
        for (int step = 0; step < 250 && !HasFailure(); ++step) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << step);
            const auto value = [&](bool code) {
                return code ? pick({"'010101'", "'0101A1'", "'aB'", "'Ab'", "x'3031'", "1", "'01_'", "''"})
                            : pick({"1", "'1'", "2", "3", "1.0", "'x'", "x'01'", "' 2 '", "-5", "'a'"});
            };
            const auto& in = asked[random() % std::size(asked)];
            const SqlText set = value(in.column.text() == u"Code"_s), where = sql(" WHERE ID%7=", random() % 7);
            const SqlText insert = sql("INSERT INTO ", in.table, "(", in.column, ") VALUES(", set, ")");
            const SqlText update = sql("UPDATE ", in.table, " SET ", in.column, "=", set, where);
            const SqlText change = pick({insert, insert, insert, update, update, sql("DELETE FROM ", in.table, where),
                                         "SAVEPOINT s", "ROLLBACK TO s", "RELEASE s", "RELEASE s"});
            // What cannot be done (a savepoint that is not there, a file that is locked) is left.
            const unsigned deed = random() % 8;
            succeeds([&] {
                if (deed == 0)
                    other.tryScript(update.text().toUtf8());
                else if (deed == 1)
                    lookups.fillSlice();
                else
                    library.run(change);
            });
            EXPECT_EQ(lookups.difference(), QString());
            for (const auto& [by, table, column] : asked) {
                const SqlText condition =
                    column.text() == u"Code"_s
                        ? sql(" LIKE ", pick({"'0101__'", "'0%'", "'a_'", "'%1'", "'１%'", "'01\\_'"}))
                        : sql("=", value(false));
                const SqlText plain = sql("SELECT * FROM ", table, " WHERE ", column, condition);
                const SqlText onKey = sql("key", condition);
                EXPECT_EQ(rows(library, sql(plain, lookups.narrow(by, onKey))), rows(library, plain));
                EXPECT_EQ(rows(library, sql(plain, lookups.some(by, onKey).narrow(onKey))), rows(library, plain));
            }
        }
        succeeds([&] { library.run("COMMIT"); });
        while (lookups.fillSlice()) {
        }
        EXPECT_TRUE(lookups.areComplete());
        EXPECT_EQ(lookups.narrow(LookupBy::ParametersByBill, "key=1").isEmpty(), seed > 1);
        EXPECT_FALSE(lookups.narrow(LookupBy::ContentsByBill, "key=1").isEmpty());
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
    EXPECT_EQ(lookups.difference(), QString());
    const SqlText narrowed = lookups.narrow(LookupBy::SubRowsByContent, "key=5");
    const QStringList plan = rows(library, sql("EXPLAIN QUERY PLAN SELECT * FROM tblContDe WHERE ContID=5", narrowed));
    EXPECT_EQ(plan.filter(u"SCAN"_s), QStringList());
}
