#include "tests/damage/DamageKinds.h"

#include <QDir>
#include <QFile>

#include "app/base/Error.h"

using namespace Qt::StringLiterals;

namespace {

// --- Bytes -------------------------------------------------------------------------------------------------------

void flipBits(BadFile& file, int from, int to) {
    QByteArray bytes = file.bytes();
    to = qMin(to, static_cast<int>(bytes.size()));
    for (int flips = 1 + file.upTo(20); flips > 0; --flips) {
        char& byte = bytes[from + file.upTo(to - from)];
        byte = static_cast<char>(byte ^ (1 << file.upTo(8)));
    }
    file.write(bytes);
}

void flipAnywhere(BadFile& file) { flipBits(file, 16, INT_MAX); }
void flipInHeader(BadFile& file) { flipBits(file, 0, 100); }
void flipInSchema(BadFile& file) { flipBits(file, 100, BadFile::pageSize(file.bytes())); }

/// What the pages say of themselves: their kind, how many cells they have and where.
void damagePageHeaders(BadFile& file) {
    QByteArray bytes = file.bytes();
    const int size = BadFile::pageSize(bytes);
    const int pages = static_cast<int>(bytes.size()) / size;
    for (int changes = 1 + file.upTo(12); changes > 0; --changes) {
        const int page = file.upTo(pages);
        bytes[page * size + (page == 0 ? 100 : 0) + file.upTo(24)] = static_cast<char>(file.upTo(256));
    }
    file.write(bytes);
}

void overwriteRuns(BadFile& file) {
    QByteArray bytes = file.bytes();
    for (int runs = 1 + file.upTo(4); runs > 0; --runs) {
        const int length = qMin(1 + file.upTo(3000), static_cast<int>(bytes.size()) / 2);
        const int at = file.upTo(static_cast<int>(bytes.size()) - length);
        const QByteArray fills[] = {QByteArray(length, '\0'), QByteArray(length, '\xff'), file.randomBytes(length),
                                    bytes.mid(file.upTo(static_cast<int>(bytes.size()) - length), length)};
        bytes.replace(at, length, file.oneOf(fills));
    }
    file.write(bytes);
}

void truncate(BadFile& file) {
    const QByteArray bytes = file.bytes();
    file.write(bytes.left(file.upTo(static_cast<int>(bytes.size()))));
}

void makeEmpty(BadFile& file) { file.write({}); }

void extend(BadFile& file) { file.write(file.bytes() + file.randomBytes(1 + file.upTo(20'000))); }

void shufflePages(BadFile& file) {
    const QByteArray bytes = file.bytes();
    QByteArray shuffled = bytes;
    const qsizetype size = BadFile::pageSize(bytes);
    const int pages = static_cast<int>(bytes.size() / size);
    for (int moves = 1 + file.upTo(6); moves > 0; --moves) {
        // The first one mostly stays: without it there would be no database at all.
        const int to = file.chance(90) ? 1 + file.upTo(pages - 1) : 0;
        shuffled.replace(to * size, size, bytes.mid(file.upTo(pages) * size, size));
    }
    file.write(shuffled);
}

void beSomethingElse(BadFile& file) {
    const QByteArray contents[] = {
        QByteArray("\x89PNG\r\n\x1a\n") + file.randomBytes(9000),
        QByteArray("清单库").repeated(2000),
        QByteArray(8192, '\0'),
        QByteArray("SQLite format 3") + QByteArray(8192, '\0'),
        QByteArray("SQLite format 3") + '\0' + file.randomBytes(8192),
    };
    file.write(file.oneOf(contents));
}

void beAFolder(BadFile& file) {
    QFile::remove(file.path());
    QDir().mkpath(file.path());
}

void haveAnotherKey(BadFile& file) { file.replaceByNew(u"wrong"_s); }
void haveNoKey(BadFile& file) { file.replaceByNew({}); }

/// What a program that was killed might have left beside the file.
void leaveSideFiles(BadFile& file) {
    const char* const journals[] = {"-journal", "-wal"};
    const QByteArray beginnings[] = {QByteArray::fromHex("d9d505f920a163d7"), QByteArray::fromHex("377f0682002de218")};
    const int which = file.upTo(2);
    BadFile side(file.path() + QLatin1String(journals[which]), {}, static_cast<unsigned>(file.upTo(INT_MAX)));
    QByteArray bytes = file.bytes();
    side.write(beginnings[which] + side.randomBytes(side.upTo(6000)));
    if (which == 1 && file.isPlain()) {
        bytes[18] = bytes[19] = 2;
        file.write(bytes);
    }
}

// --- Schemas -----------------------------------------------------------------------------------------------------

/// `statement` on a table and columns of the file: $t is the table, $c and $d are columns, $n is a number.
QString filled(BadFile& file, const QByteArray& statement, const QString& table, const QString& column,
               const QString& other = {}) {
    return QString::fromUtf8(statement)
        .replace(u"$t"_s, table)
        .replace(u"$c"_s, column)
        .replace(u"$d"_s, other)
        .replace(u"$n"_s, QString::number(file.upTo(10'000)));
}

void change(BadFile& file, const QByteArray& statement) {
    PlainDatabase database = file.open();
    const QString table = file.table(database);
    database.run(filled(file, statement, table, file.column(database, table), file.column(database, table)));
}

void dropTable(BadFile& file) { change(file, "DROP TABLE $t"); }
void renameTable(BadFile& file) { change(file, "ALTER TABLE $t RENAME TO other"); }
void dropColumn(BadFile& file) { change(file, "ALTER TABLE $t DROP COLUMN $c"); }
void renameColumn(BadFile& file) { change(file, "ALTER TABLE $t RENAME COLUMN $c TO other"); }

void addColumns(BadFile& file) {
    const char* const statements[] = {
        "ALTER TABLE $t ADD COLUMN other TEXT DEFAULT '外'",
        "ALTER TABLE $t ADD COLUMN other AS (hex(zeroblob($n)))",
        "ALTER TABLE $t ADD COLUMN other AS (hex(zeroblob(400000000)))",
        "ALTER TABLE $t ADD COLUMN other AS (1/0 || abs(-9223372036854775807-1))",
        "ALTER TABLE $t ADD COLUMN other TEXT COLLATE RTRIM CHECK(length(other)>$n)",
    };
    change(file, file.oneOf(statements));
}

void putViewInPlace(BadFile& file) {
    const char* const views[] = {
        "SELECT * FROM hidden",
        "WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM r) SELECT h.* FROM r,hidden h",
        "WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM r) SELECT n AS $c,'x' AS $d FROM r",
        "SELECT * FROM $t",
    };
    change(file, (QByteArray("ALTER TABLE $t RENAME TO hidden; CREATE VIEW $t AS ") + file.oneOf(views)));
}

void addTriggers(BadFile& file) {
    const char* const actions[] = {
        "SELECT count(*) FROM $t a,$t b,$t c,$t d,$t e,$t f,$t g,$t h,$t i,$t j,$t k",
        "SELECT RAISE(ABORT,'no')",
        "SELECT RAISE(ROLLBACK,'no')",
        "SELECT RAISE(IGNORE)",
        "DELETE FROM $t",
        "UPDATE $t SET $c=NULL",
        "INSERT INTO $t($c) SELECT $d FROM $t",
    };
    const QByteArray body = QByteArray(" ON $t BEGIN ") + file.oneOf(actions) + "; END;";
    change(file, "CREATE TRIGGER t1 BEFORE INSERT" + body + "CREATE TRIGGER t2 AFTER UPDATE" + body +
                     "CREATE TRIGGER t3 BEFORE DELETE" + body);
}

void rewriteSchema(BadFile& file) {
    const char* const changes[] = {
        "sql='CREATE VIRTUAL TABLE $t USING fts5($c,$d)',rootpage=0 WHERE name='$t'",
        "sql='CREATE VIRTUAL TABLE $t USING json_each',rootpage=0 WHERE name='$t'",
        "sql='CREATE TABLE $t($c,$d)' WHERE name='$t'",
        "sql='CREATE TABLE $t($c PRIMARY KEY,$d) WITHOUT ROWID' WHERE name='$t'",
        "sql='CREATE TABLE $t(ID INTEGER PRIMARY KEY,$c COLLATE nothing)' WHERE name='$t'",
        "sql='CREATE TABLE' WHERE name='$t'",
        "sql=NULL WHERE name='$t'",
        "sql=zeroblob($n) WHERE name='$t'",
        "rootpage=$n WHERE name='$t'",
        "rootpage=1 WHERE name='$t'",
        "rootpage=(SELECT max(rootpage) FROM sqlite_schema)",
        "type='index' WHERE name='$t'",
        "name='sqlite_'||name,tbl_name='' WHERE name='$t'",
    };
    change(file, (QByteArray("PRAGMA writable_schema=ON; UPDATE sqlite_schema SET ") + file.oneOf(changes)));
}

// --- Contents ----------------------------------------------------------------------------------------------------

/// As `change`, on a table that takes any value in any column, even several rows with one id.
void changeValues(BadFile& file, const QByteArray& statement) {
    PlainDatabase database = file.open();
    const QString table = file.table(database);
    database.run(filled(file, "CREATE TABLE loose AS SELECT * FROM $t; DROP TABLE $t; ALTER TABLE loose RENAME TO $t",
                        table, {}));
    const QStringList columns = BadFile::columns(database, table);
    const QString chosen = file.chance(30) ? columns[0] : file.oneOf(columns);
    for (const QString& column : file.chance(40) ? columns : QStringList{chosen})
        database.run(filled(file, statement, table, column));
}

void putNulls(BadFile& file) { changeValues(file, "UPDATE $t SET $c=NULL WHERE (rowid*7919+$n)%3>0"); }

void putOddTypes(BadFile& file) {
    changeValues(
        file,
        "UPDATE $t SET $c=CASE (rowid*7919+$n)%12 WHEN 0 THEN zeroblob(1000) WHEN 1 THEN x'ff00fe' WHEN 2 THEN "
        "1e308 WHEN 3 THEN -0.5 WHEN 4 THEN 9223372036854775807 WHEN 5 THEN -9223372036854775808 WHEN 6 THEN "
        "CAST(x'fffe41eda0bdf8' AS TEXT) WHEN 7 THEN 'a'||char(0)||'b' WHEN 8 THEN char(55296,57343,1114111) "
        "WHEN 9 THEN 9e999 WHEN 10 THEN '''; DROP TABLE tblBill; --' ELSE $c END");
}

void putOddCodes(BadFile& file) {
    changeValues(
        file,
        "UPDATE $t SET $c=CASE (rowid*7919+$n)%14 WHEN 0 THEN '' WHEN 1 THEN '1' WHEN 2 THEN '011' WHEN 3 THEN "
        "'010101' WHEN 4 THEN '章节' WHEN 5 THEN 'abcdef' WHEN 6 THEN '%____' WHEN 7 THEN ' 01 ' WHEN 8 THEN "
        "'99999999999999999999' WHEN 9 THEN '-1' WHEN 10 THEN '０１' WHEN 11 THEN substr($c,1,2) ELSE $c END");
}

void putLimits(BadFile& file) {
    const char* const values[] = {"9223372036854775807-rowid",
                                  "-9223372036854775807+rowid",
                                  "2147483647+rowid%3",
                                  "-rowid",
                                  "0",
                                  "rowid%2",
                                  "65536*rowid",
                                  "'9223372036854775808'",
                                  "'1e3'"};
    changeValues(file, (QByteArray("UPDATE $t SET $c=") + file.oneOf(values) + " WHERE $n<9000 OR rowid%2"));
}

/// Numbers and codes that name one another: chapters without parents, levels that are left out, everything twice.
void breakLinks(BadFile& file) {
    const char* const statements[] = {
        "DELETE FROM $t WHERE (rowid*7919+$n)%3>0",
        "INSERT INTO $t SELECT * FROM $t",
        "UPDATE $t SET $c=(SELECT b.$c FROM $t b WHERE b.rowid=($t.rowid*7919+$n)%7)",
        "UPDATE $t SET $c=substr($c,3)||substr($c,1,2)",
    };
    changeValues(file, file.oneOf(statements));
}

void putHugeText(BadFile& file) {
    changeValues(file, file.chance(50)
                           ? "UPDATE $t SET $c=hex(zeroblob(5000000)) WHERE rowid=1+$n%5"
                           : "UPDATE $t SET $c=replace(hex(zeroblob(500000)),'00','长'||char(10)) WHERE rowid=1+$n%5");
}

void putManyRows(BadFile& file) {
    changeValues(
        file,
        "INSERT INTO $t SELECT h.* FROM (SELECT * FROM $t LIMIT 20) h, (WITH RECURSIVE r(n) AS (SELECT 1 UNION "
        "ALL SELECT n+1 FROM r WHERE n<400+$n%200) SELECT n FROM r)");
}

}  // namespace

void leadPagesBack(BadFile& file) {
    constexpr int depth = 10;
    constexpr int children = 40;
    if (!file.isPlain())
        throw Error(5, u"only the pages of plain files can be put together"_s);
    int root = 0;
    {
        PlainDatabase database = file.open();
        PlainStatement found =
            database.prepare(u"SELECT rootpage FROM sqlite_schema WHERE name='%1'"_s.arg(file.table(database)));
        found.step();
        root = static_cast<int>(found.number(0));
    }
    QByteArray bytes = file.bytes();
    const qsizetype size = BadFile::pageSize(bytes);
    const auto number = [](qsizetype value, int width) {
        QByteArray text;
        for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
            text += static_cast<char>(value >> shift);
        return text;
    };
    // The old root comes last; above it stand pages of which each names the next one many times.
    const qsizetype first = bytes.size() / size + 1;
    const QByteArray oldRoot = bytes.mid((root - 1) * size, size);
    const auto interior = [&](qsizetype child) {
        QByteArray cells;
        QByteArray pointers;
        for (int i = 0; i < children; ++i) {
            cells += number(child, 4) + number(i + 1, 1);
            pointers += number(size - 5 * children + 5 * i, 2);
        }
        const QByteArray page = QByteArray(1, '\x05') + number(0, 2) + number(children, 2) +
                                number(size - cells.size(), 2) + number(0, 1) + number(child, 4) + pointers;
        return page.leftJustified(size - cells.size(), '\0') + cells;
    };
    bytes.replace((root - 1) * size, size, interior(first));
    for (int level = 1; level < depth; ++level)
        bytes += interior(first + level);
    bytes += oldRoot;
    bytes.replace(28, 4, number(bytes.size() / size, 4));
    file.write(bytes);
}

const std::vector<DamageKind>& damageKinds() {
    static const std::vector<DamageKind> kinds{
        {"bits flipped", flipAnywhere},
        {"bits flipped in the file header", flipInHeader},
        {"bits flipped in the schema", flipInSchema},
        {"page headers damaged", damagePageHeaders},
        {"runs overwritten", overwriteRuns},
        {"truncated", truncate},
        {"empty", makeEmpty},
        {"extended", extend},
        {"pages shuffled", shufflePages},
        {"something else", beSomethingElse},
        {"a folder", beAFolder},
        {"another key", haveAnotherKey},
        {"no key", haveNoKey},
        {"side files left", leaveSideFiles},
        {"a table missing", dropTable},
        {"a table renamed", renameTable},
        {"a column missing", dropColumn},
        {"a column renamed", renameColumn},
        {"more columns", addColumns},
        {"a view for a table", putViewInPlace},
        {"triggers", addTriggers},
        {"the schema rewritten", rewriteSchema},
        {"nulls", putNulls},
        {"odd types", putOddTypes},
        {"odd codes", putOddCodes},
        {"numbers at their limits", putLimits},
        {"broken links", breakLinks},
        {"huge texts", putHugeText},
        {"many rows", putManyRows},
    };
    return kinds;
}
