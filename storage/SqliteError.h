#pragma once

#include "app/base/Error.h"

struct sqlite3;

/// The last failure of `database`, with SQLite's number and words; `code` when there is no database to ask.
Error sqliteError(sqlite3* database, int code);

/// The error of a statement that cannot be read at `near`.
Error syntaxError(const QString& near);

/// A file that is not there and must not be created.
Error cannotOpenError(const QString& path);
