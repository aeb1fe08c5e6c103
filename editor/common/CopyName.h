#pragma once

#include <QString>

#include "storage/Sql.h"

class Connection;

/// `name` without surrounding blanks, or with "(1)", "(2)", … behind it: the first that no row of the whole table has
/// in `field`. Empty after a recorded error; a name with an apostrophe is one.
QString GetCopyName(Connection* ormConn, const QString& name, const SqlText& table, const SqlText& field);
