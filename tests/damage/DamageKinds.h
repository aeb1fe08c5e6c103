#pragma once

#include "tests/support/OtherProgram.h"

/// A good file of the program that is about to be damaged, and the dice by which that is done: the same seed always
/// does the same damage.
struct Victim {
    QString path;
    QByteArray key;  ///< empty for a plain file
    std::mt19937 dice;

    int upTo(qsizetype count) { return static_cast<int>(dice() % static_cast<unsigned>(qMax(count, qsizetype(1)))); }
    template <typename List>
    const auto& oneOf(const List& list) {
        return list[static_cast<std::size_t>(upTo(static_cast<qsizetype>(std::size(list))))];
    }
    QByteArray noise(int count) {
        QByteArray noise(count, '\0');
        std::generate(noise.begin(), noise.end(), [this] { return static_cast<char>(upTo(256)); });
        return noise;
    }
    /// Runs a script on the file as a database; $t in it is a table, $c and $d are columns, $n is a number. False when
    /// it fails.
    bool run(QByteArray script) {
        OtherProgram file(path, key.constData());
        // One that the window shows.
        const QString table =
            oneOf(file.run("SELECT name FROM sqlite_schema WHERE name NOT LIKE 'sqlite%' "
                           "AND name NOT IN ('tblParm','tblImage','tblDekInfo')"));
        const QStringList columns = file.run("SELECT '['||name||']' FROM pragma_table_info(?)", {table});
        script.replace("$t", table.toUtf8())
            .replace("$c", oneOf(columns).toUtf8())
            .replace("$d", oneOf(columns).toUtf8());
        script.replace("$n", QByteArray::number(upTo(10'000)));
        return file.tryScript("PRAGMA synchronous=OFF;PRAGMA journal_mode=MEMORY;" + script);
    }
};

/// One way in which a file can be bad; false when this file cannot be so.
struct DamageKind {
    const char* name;
    std::function<bool(Victim&)> apply;
};

inline int pageSize(const QByteArray& bytes) {
    const int size = bytes.size() < 18 ? 0 : static_cast<uchar>(bytes[16]) << 8 | static_cast<uchar>(bytes[17]);
    return size < 512 || size > bytes.size() ? 512 : size;
}

/// Changes what the file's bytes are.
inline DamageKind bytes(const char* name, const std::function<void(QByteArray&, Victim&)>& change) {
    return {name, [change](Victim& file) {
                const QByteArray before = bytesOf(file.path);
                QByteArray after = before;
                change(after, file);
                overwrite(file.path, after);
                return after != before;
            }};
}

inline DamageKind bitsFlipped(const char* name, int from, int to) {
    return bytes(name, [=](QByteArray& all, Victim& file) {
        for (int flips = 1 + file.upTo(20); flips > 0; --flips) {
            const qsizetype at = from + file.upTo((to > 0 ? qMin(qsizetype(to), all.size()) : all.size()) - from);
            all[at] = static_cast<char>(all[at] ^ (1 << file.upTo(8)));
        }
    });
}

/// Runs one of the statements.
inline DamageKind sql(const char* name, const std::vector<QByteArray>& statements) {
    return {name, [=](Victim& file) { return file.run(file.oneOf(statements)); }};
}

/// The same on a table that takes any value, even several rows with one id.
inline DamageKind loose(const char* name, std::vector<QByteArray> statements) {
    for (QByteArray& statement : statements)
        statement.prepend("CREATE TABLE l AS SELECT * FROM $t; DROP TABLE $t; ALTER TABLE l RENAME TO $t;");
    return sql(name, statements);
}

/// All of them: bytes that changed, files of another kind, schemas and contents that no library has.
inline const std::vector<DamageKind>& damageKinds() {
    static const QByteArray views = "ALTER TABLE $t RENAME TO hidden; CREATE VIEW $t AS ";
    static const QByteArray endless = "WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM r) SELECT ";
    static const QByteArray schema = "PRAGMA writable_schema=ON; UPDATE sqlite_schema SET ";
    const auto trigger = [](const QByteArray& action) {
        const QByteArray body = " ON $t BEGIN " + action + "; END;";
        return "CREATE TRIGGER t1 BEFORE INSERT" + body + "CREATE TRIGGER t2 AFTER UPDATE" + body +
               "CREATE TRIGGER t3 BEFORE DELETE" + body;
    };
    const auto many = [](const QByteArray& table, const QByteArray& row) {
        return "INSERT INTO " + table +
               " WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM r WHERE n<100000)" + " SELECT " + row +
               " FROM r";
    };
    const auto replaced = [](const QByteArray& key) {
        return [key](Victim& file) {
            QFile::remove(file.path);
            OtherProgram(file.path, key.constData()).run("CREATE TABLE t(a)");
            return true;
        };
    };
    static const std::vector<DamageKind> kinds{
        bitsFlipped("bits flipped", 16, 0),
        bitsFlipped("bits flipped in the file header", 0, 100),
        bitsFlipped("bits flipped in the schema", 100, 1024),
        bytes("runs overwritten",
              [](QByteArray& all, Victim& file) {
                  const int length = 1 + file.upTo(3000);
                  const QByteArray fills[] = {QByteArray(length, '\0'), file.noise(length), all.right(length)};
                  all.replace(file.upTo(all.size() - length), length, file.oneOf(fills));
              }),
        bytes("truncated", [](QByteArray& all, Victim& file) { all.truncate(file.upTo(all.size())); }),
        bytes("empty", [](QByteArray& all, Victim&) { all.clear(); }),
        bytes("pages shuffled",
              [](QByteArray& all, Victim& file) {
                  const int size = pageSize(all);
                  const auto pages = all.size() / size;
                  for (int moves = 1 + file.upTo(6); moves > 0; --moves)
                      all.replace((1 + file.upTo(pages - 1)) * size, size, all.mid(file.upTo(pages) * size, size));
              }),
        {"a folder", [](Victim& file) { return QFile::remove(file.path) && QDir().mkpath(file.path); }},
        {"another key", replaced("wrong")},
        {"no key", replaced("")},
        {"a journal left",
         [](Victim& file) {
             overwrite(file.path + u"-journal"_s, QByteArray::fromHex("d9d505f920a163d7") + file.noise(6000));
             return true;
         }},
        {"a write-ahead log left",
         [](Victim& file) {
             overwrite(file.path + u"-wal"_s, QByteArray::fromHex("377f0682002de218") + file.noise(6000));
             return !file.key.isEmpty() || file.run("PRAGMA journal_mode=WAL");
         }},
        sql("a table missing", {"DROP TABLE $t"}),
        sql("a table renamed", {"ALTER TABLE $t RENAME TO other"}),
        loose("a column missing", {"ALTER TABLE $t DROP COLUMN $c"}),
        sql("a column renamed", {"ALTER TABLE $t RENAME COLUMN $c TO other"}),
        sql("more columns", {"ALTER TABLE $t ADD COLUMN other AS (hex(zeroblob(400000000)))",
                             "ALTER TABLE $t ADD COLUMN other AS (1/0 || abs(-9223372036854775807-1))",
                             "ALTER TABLE $t ADD COLUMN other TEXT COLLATE RTRIM CHECK(length(other)>$n)"}),
        sql("a view for a table", {views + "SELECT * FROM hidden", views + endless + "h.* FROM r,hidden h",
                                   views + endless + "n AS $c FROM r", views + "SELECT * FROM $t"}),
        sql("triggers", {trigger("SELECT count(*) FROM $t a,$t b,$t c,$t d,$t e,$t f,$t g,$t h,$t i,$t j,$t k"),
                         trigger("SELECT RAISE(ROLLBACK,'no')"), trigger("SELECT RAISE(IGNORE)"),
                         trigger("DELETE FROM $t"), trigger("UPDATE $t SET $c=NULL")}),
        sql("the schema rewritten",
            {schema + "sql='CREATE VIRTUAL TABLE $t USING fts5($c,$d)',rootpage=0 WHERE name='$t'",
             schema + "sql='CREATE TABLE $t($c PRIMARY KEY,$d) WITHOUT ROWID' WHERE name='$t'",
             schema + "sql='CREATE TABLE $t(ID INTEGER PRIMARY KEY,$c COLLATE nothing)' WHERE name='$t'",
             schema + "sql='CREATE TABLE' WHERE name='$t'", schema + "sql=NULL WHERE name='$t'",
             schema + "rootpage=$n WHERE name='$t'", schema + "rootpage=1 WHERE name='$t'",
             schema + "rootpage=(SELECT max(rootpage) FROM sqlite_schema)", schema + "type='index' WHERE name='$t'"}),
        loose("nulls", {"UPDATE $t SET $c=NULL WHERE (rowid*7919+$n)%3>0"}),
        loose("odd types", {"UPDATE $t SET $c=CASE (rowid*7919+$n)%9 WHEN 0 THEN zeroblob(1000) WHEN 1 THEN x'ff00fe' "
                            "WHEN 2 THEN 1e308 WHEN 3 THEN -0.5 WHEN 4 THEN -9223372036854775808 WHEN 5 THEN "
                            "CAST(x'fffe41eda0bdf8' AS TEXT) "
                            "WHEN 6 THEN 'a'||char(0)||'b' WHEN 7 THEN 9e999 ELSE $c END"}),
        loose("odd codes",
              {"UPDATE $t SET $c=CASE (rowid*7919+$n)%10 WHEN 0 THEN '' WHEN 1 THEN '1' WHEN 2 THEN '011' WHEN 3 THEN "
               "'010101' WHEN 4 THEN '章节' WHEN 5 THEN '%____' WHEN 6 THEN ' 01 ' WHEN 7 THEN '99999999999999999999' "
               "WHEN 8 THEN substr($c,1,2) ELSE $c END"}),
        loose("numbers at their limits", {"UPDATE $t SET $c=9223372036854775807-rowid", "UPDATE $t SET $c=-rowid",
                                          "UPDATE $t SET $c=rowid%2", "UPDATE $t SET $c='9223372036854775808'"}),
        loose("broken links", {"DELETE FROM $t WHERE (rowid*7919+$n)%3>0", "INSERT INTO $t SELECT * FROM $t",
                               "UPDATE $t SET $c=(SELECT b.$c FROM $t b WHERE b.rowid=($t.rowid*7919+$n)%7)"}),
        sql("many bills", {many("tblBill(Code,Name)", "'010101001','清单'||n")}),
        sql("many chapters", {many("tblSYB(Code,Name)", "printf('02%04d',n%10000),'章'")}),
        sql("many features", {many("tblBillSpec(BillID,Name,Type)", "1,'特征'||n,2")}),
        sql("many values", {many("tblSpecEnum(SpecID,EigenValue)", "1,'值'||n")}),
        sql("many contents", {many("tblCont(Code,Num,Cont,Prof,BillID)", "'010101001',n,'内容'||n,'01',1")}),
        sql("many rations",
            {many("tblContDe(ContID,SubNum,SubCont,Deh,Name,DekID)", "n%5+1,n%3,'细目'||n%3,'A'||n,'定额','GONE'")}),
        loose("huge texts", {"UPDATE $t SET $c=hex(zeroblob(5000000)) WHERE rowid=1+$n%5",
                             "UPDATE $t SET $c=replace(hex(zeroblob(500000)),'00','长'||char(10)) WHERE rowid=1+$n%5"}),
    };
    return kinds;
}
