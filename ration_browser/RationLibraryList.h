#pragma once

#include <QString>
#include <vector>

/// A ration library as the system database lists it.
struct RationLibrary {
    QString dekId;
    QString name;
};

/// The listed ration libraries, by profession. Throws Error when the system database cannot be read.
std::vector<RationLibrary> readRationLibraries();

/// Where the browser looks for the file of the library `dekId`; empty when it is not listed. The region folder is
/// always the same one here, unlike the editor's own look-up. Throws Error when the system database cannot be read.
QString browsedLibraryPath(const QString& dekId);
