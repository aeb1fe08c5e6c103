#pragma once

#include <QString>

using namespace Qt::StringLiterals;

/// The program folder that the build made, with its samples and icons.
QString builtProgramFolder();

/// Puts what the build made (icons, system database, ration libraries, sample library) into the test's program folder,
/// once.
void installSamples();

/// A fresh copy of the sample library in the Data folder, under `name`.
QString copyOfSampleLibrary(const QString& name = u"copy.bdb"_s);
