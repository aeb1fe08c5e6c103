#pragma once

#include <QString>

#include "storage/Sql.h"

class Connection;

/// The file format of a bill library: nine tables, no index, view or trigger. The statements are the file's own text.

/// The CREATE statement of the table `name`, compared exactly ("tblSyb", "tblBill", …); empty for any other name.
[[nodiscard]] SqlText GetCreateTableSQL(const QString& name);

/// Creates the nine tables inside one savepoint; tables that exist stay as they are. True when all statements ran;
/// otherwise everything is rolled back to the savepoint, which stays open.
[[nodiscard]] bool CreateAllBillDBTable(Connection* connection);
