#include "samples/builder/SampleBuilder.h"

#include <QFile>

#include "samples/builder/BillLibrary.h"
#include "storage/LibraryConnection.h"
#include "storage/RationLibraries.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

KnownRations listedRations() {
    KnownRations rations;
    for (const RationLibrary& listed : rationLibrariesByName()) {
        const auto library = openRationLibrary(rationLibraryPath(listed.dekId));
        for (Recordset rows = library->OpenRecordset("SELECT * FROM DEB;"); !rows.EndOfFile(); rows.MoveNext()) {
            const RationFile::Ration ration{rows.number("sybID"), rows.text("DEH"), rows.text("MC"), rows.text("DW")};
            rations[(listed.dekId + u':' + ration.code).toUpper()] = ration;
        }
    }
    return rations;
}

}  // namespace

SampleResult buildSamples(const QString& sourceFolder, const QString& path, bool force) {
    Complaints complaints;
    const BillSources sources = readBillSources(sourceFolder, complaints);
    if (complaints.any())
        return {complaints.all(), {}};
    NewDatabase bills(path);
    fillBillLibrary(bills.connection(), sources, listedRations(), complaints);
    if (complaints.any())
        return {complaints.all(), {}};

    SampleResult result;
    const bool keep = !force && QFile::exists(path) && !isAsMade(path);
    if (keep)
        result.notes << u"%1：已经修改过，保留（--force 重新制作）"_s.arg(path);
    else
        bills.replace();
    if (!keep || !QFile::exists(companionPath(path))) {
        NewDatabase companion(companionPath(path), systemKey);
        fillCompanion(companion.connection(), sources);
        companion.replace();
    }
    return result;
}
