#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "storage/Sql.h"

class Connection;

/// The system database and the ration libraries in the test's program folder, gone again with this object.
class RationFiles {
public:
    RationFiles();
    ~RationFiles();
    RationFiles(const RationFiles&) = delete;
    RationFiles& operator=(const RationFiles&) = delete;

    struct Listed {
        const char* dekId;
        const char* name;
        const char* fileName;
        const char* prof;
    };
    /// Writes tessel.dat anew with these libraries, all of the region 广东省.
    void list(const std::vector<Listed>& libraries) const;

    /// Path of a ration library's file.
    QString path(const char* fileName) const;

    /// Makes a library with the two tables, filled by `fill`.
    void make(const char* fileName, const std::function<void(Connection&)>& fill) const;
    void makeChapters(const char* fileName, const std::vector<SqlText>& chapterValues) const;

    /// A library with chapters of all five levels, a dead one, and rations in two of them.
    void makeSmall(const char* fileName) const;
};
