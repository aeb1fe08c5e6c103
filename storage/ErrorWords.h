#pragma once

#include <QString>

/// What a failure of the database means to the user: what happened and what to do, followed by SQLite's own words in
/// brackets. `code` is SQLite's result code, extended where it is known; `said` is what SQLite says.
[[nodiscard]] QString errorWords(int code, const QString& said);

/// The same for a value that breaks out of the statement which it stands in, at `near`: at an apostrophe or a NUL.
[[nodiscard]] QString brokenValueWords(const QString& near);
