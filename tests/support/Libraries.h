#pragma once

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/support/Toolkit.h"

/// The program folder that the build made, with its samples and icons.
QString builtProgramFolder();

/// Puts what the build made (icons, system database, ration libraries, sample library) into the test's program folder,
/// where it is not there yet.
void installSamples();

// Libraries made anew in the Data folder. What the build made is installed beside them.

/// A copy of the sample library, under a name that no ration library is the default of.
QString copyOfSampleLibrary(const QString& name = u"copy.bdb"_s);

/// The same, under its own name.
QString sampleCopy();

/// A few chapters and bills with what is awkward in them: apostrophes, line ends, empty and missing texts, gaps.
QString awkwardLibrary();

/// Chapters and bills at the ends of their ranges, so that the next code overflows.
QString libraryAtTheLimits();
