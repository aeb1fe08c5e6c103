#pragma once

#include <functional>

class Connection;

/// What a command does with its open savepoint when it failed. Either way the savepoint stays open.
enum class AfterFailure { RollBack, LeaveOpen };

/// Runs the writes of the procedure `command` of the editor window inside a savepoint of its name. True when `writes`
/// gave true and the savepoint is released. An error in `writes` is recorded first and dealt with as `after` says
/// then; false from `writes` and a savepoint that cannot be released are dealt with in the same way.
bool inSavepoint(const char* command, Connection* ormConn, const std::function<bool(Connection&)>& writes,
                 AfterFailure after = AfterFailure::RollBack);
