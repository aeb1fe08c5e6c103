#pragma once

#include <QStringList>

/// What building the samples came to.
struct SampleResult {
    QStringList complaints;  ///< what is wrong with the sources; nothing was written then
    QStringList notes;       ///< what was left alone, and why
};

/// Makes the sample bill library at `path`, and its companion file beside it, from the sources in `sourceFolder` and
/// the ration libraries that tessel.dat lists.
///
/// A bill library that has been edited since it was made is kept, with a note, unless `force` is set. Throws Error when
/// a file cannot be read or written.
SampleResult buildSamples(const QString& sourceFolder, const QString& path, bool force);
