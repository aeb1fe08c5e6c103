#pragma once

#include <vector>

#include "tests/damage/BadFile.h"

/// One way in which a file can be bad.
struct DamageKind {
    const char* name;
    /// Does it to the file. Throws Error when this file cannot be damaged so.
    void (*apply)(BadFile& file);
};

/// All of them: bytes that changed, files of another kind, schemas and contents that no library has.
const std::vector<DamageKind>& damageKinds();

/// Gives the table with the most rows a tree of pages that lead to the same pages over and over: its rows never end.
void leadPagesBack(BadFile& file);
