#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "storage/Connection.h"

/// The list of ration libraries: table SysBaseData of the system database, which is opened and closed again by each
/// call. All of it throws Error when the system database or the library cannot be read.

struct RationLibrary {
    QString dekId;
    QString name;
};

/// All ration libraries by name.
std::vector<RationLibrary> rationLibrariesByName();

/// All ration libraries by profession.
std::vector<RationLibrary> rationLibrariesByProfession();

/// Id of the first ration library whose default bill library has the bare file name `billLibrary`; empty when there is
/// none.
QString defaultRationLibrary(const QString& billLibrary);

/// The file of the ration library `dekId`, in the folder of its region; empty when it is not listed.
QString rationLibraryPath(const QString& dekId);

/// Where the ration browser looks for it: always in the folder of one region, on purpose. Empty when it is not listed.
QString browsedLibraryPath(const QString& dekId);

/// Opens the ration library at `path`, which must exist: a missing file would be made. It is only ever read.
std::unique_ptr<Connection> openRationLibrary(const QString& path);
