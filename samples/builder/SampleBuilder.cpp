#include "samples/builder/SampleBuilder.h"

#include <QFile>

#include "app/base/Paths.h"
#include "samples/builder/BillSource.h"
#include "samples/builder/RationSource.h"
#include "samples/builder/SourceFile.h"
#include "samples/builder/Writers.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

SampleResult buildSamples(const QString& sourceFolder, const QString& programFolder, bool force) {
    Complaints complaints;
    const std::vector<RationLibrary> rationLibraries = readRationLibraries(sourceFolder, complaints);
    const BillLibrary billLibrary = readBillLibrary(sourceFolder, rationLibraries, complaints);
    if (complaints.any())
        return {complaints.all(), {}};

    SampleResult result;
    const QString data = joinPath(programFolder, u"Data"_s);
    for (const RationLibrary& library : rationLibraries)
        writeRationLibrary(library, joinPath(joinPath(data, library.region), library.fileName));

    const QString billPath = joinPath(data, billLibrary.fileName);
    const bool keep = !force && QFile::exists(billPath) && !isAsWritten(billPath);
    if (keep)
        result.notes << billPath + u": kept, it has been edited (--force replaces it)"_s;
    else
        writeBillLibrary(billLibrary, billPath);
    if (!keep || !QFile::exists(companionPath(billPath)))
        writeCompanion(billLibrary, companionPath(billPath));

    // Last: it is the file by which a build sees that the samples are complete.
    writeSystemDatabase(rationLibraries, joinPath(programFolder, u"tessel.dat"_s));
    return result;
}
