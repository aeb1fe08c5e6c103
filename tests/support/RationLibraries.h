#pragma once

#include <QString>
#include <vector>

#include "storage/Sql.h"

/// A tessel.dat and ration libraries in the program folder of the test; gone again with this object.
class RationLibraries {
public:
    RationLibraries();
    ~RationLibraries();
    RationLibraries(const RationLibraries&) = delete;
    RationLibraries& operator=(const RationLibraries&) = delete;

    struct Listed {
        const char* dekId;
        const char* name;
        const char* fileName;
        const char* prof = "";
        const char* region = "广东省";
        const char* billLibrary = "";  ///< file name of the bill library whose default it is
    };
    /// Writes tessel.dat anew with these libraries; their files need not exist.
    void list(const std::vector<Listed>& libraries) const;

    /// Makes the file of a library of the region 广东省 with its two tables, filled with the values of `rations`
    /// (ID, sybID, DEH, MC, DW) and `chapters` (sybID, CH, ZH, JH, XH, MH, BTM, isdel); gives its path.
    QString make(const char* fileName, const std::vector<SqlText>& rations,
                 const std::vector<SqlText>& chapters = {}) const;

    /// Makes a file that is no database; gives its path.
    QString makeDamaged(const char* fileName) const;

    /// Path of a library's file in the region 广东省.
    static QString path(const char* fileName);
    static QString systemDatabasePath();
};
