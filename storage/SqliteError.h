#pragma once

#include "app/base/Error.h"

struct sqlite3;

/// The errors of the database: SQLite's number, and a description for the user with SQLite's own words in it.

/// The last failure of `database`, or `code` when there is no database to ask.
[[nodiscard]] Error sqliteError(sqlite3* database, int code);

/// A statement that a value in it breaks at `near`.
[[nodiscard]] Error brokenValueError(const QString& near);

/// A text that is no single statement; `said` tells why.
[[nodiscard]] Error statementError(const QString& said);

/// A connection that is asked for something while it is closed.
[[nodiscard]] Error noConnectionError();

/// A file that is not there and must not be created.
[[nodiscard]] Error cannotOpenError(const QString& path);
