#pragma once

#include <QString>

class Connection;

/// Savepoints, named after the procedure that opens them. `started` is what SetSP returned: a savepoint that was never
/// opened is neither released nor rolled back. Each gives True when it executed its statement; a failure is recorded.

[[nodiscard]] bool SetSP(const QString& name, Connection* connection);
[[nodiscard]] bool ReleaseSP(const QString& name, Connection* connection, bool started);

/// Rolls back to the savepoint, which stays open.
bool RollBackSP(const QString& name, Connection* connection, bool started);
