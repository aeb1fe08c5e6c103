#pragma once

#include <QString>
#include <vector>

#include "storage/Sql.h"

/// A tessel.dat and ration libraries of the region 广东省 in the program folder of the test, in place of the samples.
struct RationLibraries {
    struct Listed {
        QAnyStringView dekId;
        QAnyStringView name;
        QAnyStringView fileName;
        QAnyStringView prof = "";
        QAnyStringView region = u"广东省";
        QAnyStringView billLibrary = "";  ///< file name of the bill library whose default it is
    };
    /// Writes tessel.dat anew with these libraries; their files need not exist.
    static void list(const std::vector<Listed>& libraries);

    /// Makes the file of a library with its two tables, filled with the values of `rations` (ID, sybID, DEH, MC, DW)
    /// and `chapters` (sybID, CH, ZH, JH, XH, MH, BTM, isdel); gives its path.
    static QString make(const char* fileName, const std::vector<SqlText>& rations,
                        const std::vector<SqlText>& chapters = {});

    /// Path of a library's file.
    static QString path(const char* fileName);
};
