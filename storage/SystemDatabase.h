#pragma once

#include <memory>

#include "storage/Connection.h"

/// The key of the system database and of companion files.
inline constexpr char systemKey[] = "830547";

/// Opens tessel.dat in the program folder. Throws Error when it is missing (it is never created) or unreadable.
std::unique_ptr<Connection> openSystemDatabase();

/// Begins, on another thread, the slow part of opening tessel.dat for the first time, so that nobody waits for it
/// later.
void prepareSystemDatabase();

/// Whether that is still going on: opening it now would wait.
[[nodiscard]] bool isSystemDatabaseBeingPrepared();
