#pragma once

#include <vector>

#include "storage/Sql.h"

class Connection;

/// The tables of the look-ups, in a connection's temporary schema: (key, row) for every row of a library's table, key
/// being the value of one column and row the row's id. Temporary triggers on the library's tables keep them true; they
/// take part in savepoints and roll-backs like all that a statement does. Rows without a value are not in: no condition
/// finds them.

/// What rows are looked up by. The last three serve the search for an unused name and hold only names that begin like
/// the one for a new row.
enum class LookupBy {
    BillsByCode,
    ParametersByBill,
    ContentsByBill,
    ContentsByCode,
    SubRowsByContent,
    FeaturesByBill,
    ValuesByFeature,
    ContentsByNewName,
    SubRowsByNewName,
    FeaturesByNewName,
};

namespace LookupTables {

/// The library's tables that are looked up, by number.
inline constexpr std::size_t count = 6;

/// The number of the table that `by` is about.
std::size_t tableOf(LookupBy by);
const SqlText& tableName(std::size_t table);
/// The look-ups of a table.
std::vector<LookupBy> lookupsOf(std::size_t table);

/// Name of the table of `by`, with its schema.
SqlText nameOf(LookupBy by);

/// Makes the empty tables and the triggers for the library's table `table`, anew when they are there. False, and none
/// of them are there, when it is not a table as this program makes it. Throws Error. Not within a transaction: a
/// roll-back would take the tables with it.
bool make(Connection& connection, std::size_t table);

/// The name that the rows of `by` begin with; empty when there is none.
const SqlText& newName(LookupBy by);

/// A statement that gives (key, row) of all rows that are to be in the look-up; conditions on them may follow.
SqlText contents(LookupBy by);

}  // namespace LookupTables
