#include "storage/LookupTables.h"

#include <algorithm>

#include "storage/Connection.h"

using namespace Qt::StringLiterals;

namespace {

const SqlText tableNames[LookupTables::count] = {"tblBill",     "tblCont",     "tblContDe",
                                                 "tblBillSpec", "tblSpecEnum", "tblParm"};

struct Definition {
    LookupBy by;
    std::size_t table;
    SqlText column;
    /// What SQLite makes of the column's declared type.
    const char* affinity;
    /// How keys are ordered: codes without regard to letter case, so that LIKE on a key reads no more than it must.
    SqlText collation;
    /// The beginning of the texts that are in; all when empty.
    SqlText from = "";
};

const Definition definitions[] = {
    {LookupBy::BillsByCode, 0, "Code", "TEXT", "NOCASE"},
    {LookupBy::ParametersByBill, 5, "BillID", "INT", "BINARY"},
    {LookupBy::ContentsByBill, 1, "BillID", "INT", "BINARY"},
    {LookupBy::ContentsByCode, 1, "Code", "TEXT", "NOCASE"},
    {LookupBy::SubRowsByContent, 2, "ContID", "INT", "BINARY"},
    {LookupBy::FeaturesByBill, 3, "BillID", "INT", "BINARY"},
    {LookupBy::ValuesByFeature, 4, "SpecID", "INT", "BINARY"},
    {LookupBy::ContentsByNewName, 1, "Cont", "TEXT", "BINARY", "新建工作内容"},
    {LookupBy::SubRowsByNewName, 2, "SubCont", "TEXT", "BINARY", "新建二级工作内容"},
    {LookupBy::FeaturesByNewName, 3, "Name", "TEXT", "BINARY", "新建项目特征"},
};

const Definition& definitionOf(LookupBy by) { return definitions[static_cast<std::size_t>(by)]; }

/// Within triggers a table has no schema; temporary ones are found first.
SqlText bareName(const Definition& lookup) { return sql("lookup_", tableNames[lookup.table], "_", lookup.column); }

SqlText triggerName(const Definition& lookup, const SqlText& event) { return sql(bareName(lookup), "_", event); }

/// Which values of `column`, written as it stands in a statement, are in the look-up.
SqlText isIn(const Definition& lookup, const SqlText& column) {
    if (lookup.from.isEmpty())
        return sql(column, " IS NOT NULL");
    return sql(column, ">='", lookup.from, "' AND ", column, "<'", lookup.from, ")'");
}

SqlText adding(const Definition& lookup) {
    const SqlText value = sql("NEW.", lookup.column);
    return sql("INSERT OR IGNORE INTO ", bareName(lookup), " SELECT ", value, ",NEW._rowid_ WHERE ",
               isIn(lookup, value), ";");
}

SqlText removing(const Definition& lookup) {
    return sql("DELETE FROM ", bareName(lookup), " WHERE key=OLD.", lookup.column, " AND row=OLD._rowid_;");
}

void remove(Connection& connection, const Definition& lookup) {
    for (const SqlText& event : {SqlText("inserted"), SqlText("updated"), SqlText("deleted")})
        connection.Execute(sql("DROP TRIGGER IF EXISTS temp.", triggerName(lookup, event), ";"));
    connection.Execute(sql("DROP TABLE IF EXISTS temp.", bareName(lookup), ";"));
}

void make(Connection& connection, const Definition& lookup) {
    const SqlText& table = tableNames[lookup.table];
    const SqlText type = lookup.affinity == QByteArrayView("INT") ? SqlText("INTEGER") : SqlText("TEXT");
    connection.Execute(sql("CREATE TABLE temp.", bareName(lookup), "(key ", type, " COLLATE ", lookup.collation,
                           ",row INTEGER,PRIMARY KEY(key,row)) WITHOUT ROWID;"));
    const auto trigger = [&](const SqlText& event, const SqlText& on, const SqlText& does) {
        connection.Execute(sql("CREATE TRIGGER temp.", triggerName(lookup, event), " AFTER ", on, " ON main.", table,
                               " BEGIN ", does, " END;"));
    };
    trigger("inserted", "INSERT", adding(lookup));
    trigger("updated", sql("UPDATE OF ", lookup.column), sql(removing(lookup), adding(lookup)));
    trigger("deleted", "DELETE", removing(lookup));
}

/// Whether rows of the table can be told by their ids and its texts compare byte by byte. Told from the words of its
/// statement; one that is not sure to be plain is none.
bool isPlainTable(Connection& connection, const SqlText& table) {
    const Recordset found = connection.OpenRecordset(
        sql("SELECT sql FROM main.sqlite_schema WHERE type='table' AND name='", table, "' COLLATE NOCASE;"));
    if (found.EndOfFile())
        return false;
    const QString statement = found.text("sql");
    const QString special[] = {u"collate"_s, u"without"_s, u"oid"_s, u"rowid"_s, u"virtual"_s};
    return std::none_of(std::begin(special), std::end(special),
                        [&](const QString& word) { return statement.contains(word, Qt::CaseInsensitive); });
}

bool hasColumn(Connection& connection, const Definition& lookup) {
    Recordset columns = connection.OpenRecordset(sql("PRAGMA main.table_info(", tableNames[lookup.table], ");"));
    for (; !columns.EndOfFile(); columns.MoveNext())
        if (columns.text("name").compare(lookup.column.text(), Qt::CaseInsensitive) == 0)
            return columns.text("type").contains(QLatin1String(lookup.affinity), Qt::CaseInsensitive);
    return false;
}

}  // namespace

std::size_t LookupTables::tableOf(LookupBy by) { return definitionOf(by).table; }

const SqlText& LookupTables::tableName(std::size_t table) { return tableNames[table]; }

std::vector<LookupBy> LookupTables::lookupsOf(std::size_t table) {
    std::vector<LookupBy> lookups;
    for (const Definition& lookup : definitions)
        if (lookup.table == table)
            lookups.push_back(lookup.by);
    return lookups;
}

SqlText LookupTables::nameOf(LookupBy by) { return sql("temp.", bareName(definitionOf(by))); }

bool LookupTables::make(Connection& connection, std::size_t table) {
    const std::vector<LookupBy> lookups = lookupsOf(table);
    for (const LookupBy by : lookups)
        remove(connection, definitionOf(by));
    if (!isPlainTable(connection, tableNames[table]) || !std::all_of(lookups.begin(), lookups.end(), [&](LookupBy by) {
            return hasColumn(connection, definitionOf(by));
        }))
        return false;
    for (const LookupBy by : lookups)
        ::make(connection, definitionOf(by));
    return true;
}

const SqlText& LookupTables::newName(LookupBy by) { return definitionOf(by).from; }

SqlText LookupTables::contents(LookupBy by) {
    const Definition& lookup = definitionOf(by);
    return sql("SELECT key,row FROM (SELECT ", lookup.column, " AS key,_rowid_ AS row FROM main.",
               tableNames[lookup.table], ") WHERE ", isIn(lookup, "key"));
}
