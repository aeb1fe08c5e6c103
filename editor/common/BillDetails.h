#pragma once

#include "storage/Sql.h"

class Connection;

/// Deletes all that belongs to bills, and leaves the bills themselves: parameters, contents with what is below them,
/// features with their values. `ids` says which bills, as it follows a column with the id of a bill: "='5'", or
/// " IN (SELECT …)". Throws Error.
void deleteBillDetails(Connection& connection, const SqlText& ids);
