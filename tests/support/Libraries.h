#pragma once

#include <QString>

/// Libraries made anew in the Data folder. What the build made is installed beside them.

/// A copy of the sample library.
QString sampleCopy();

/// A few chapters and bills with what is awkward in them: apostrophes, line ends, empty and missing texts, gaps.
QString awkwardLibrary();

/// Chapters and bills at the ends of their ranges, so that the next code overflows.
QString libraryAtTheLimits();
