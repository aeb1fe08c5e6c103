#pragma once

#include <QStringList>

/// What building the samples came to.
struct SampleResult {
    QStringList complaints;  ///< what is wrong with the sources; nothing was written then
    QStringList notes;       ///< what was left alone, and why
};

/// Makes the sample files from the sources in `sourceFolder`, in the program folder `programFolder`:
/// tessel.dat, the ration libraries in Data/<region>/ and the bill library with its companion file in Data/.
///
/// A bill library that has been edited since it was made is kept, with a note, unless `force` is set; all other files
/// are made anew. Throws Error when a file cannot be written.
SampleResult buildSamples(const QString& sourceFolder, const QString& programFolder, bool force);
