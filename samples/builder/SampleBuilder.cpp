#include "samples/builder/SampleBuilder.h"

#include <QFile>

#include "app/base/Paths.h"
#include "samples/builder/BillLibrary.h"
#include "samples/writer/RationCsv.h"
#include "storage/LibraryConnection.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

SampleResult buildSamples(const QString& sourceFolder, const QString& programFolder, bool force) {
    Complaints complaints;
    std::vector<ListedRationLibrary> listed;
    std::vector<RationFile> rationLibraries;
    KnownRations rations;
    QString billLibrary;
    for (const CsvRow& row : readCsv(sourceFolder, u"libraries.csv"_s,
                                     {{"编号", 12},
                                      {"名称", 50},
                                      {"文件名", 100},
                                      {"地区", 50},
                                      {"专业", 2},
                                      {"默认所属清单库", 100, true},
                                      {"源文件夹", 100}},
                                     complaints)) {
        listed.push_back({row[0], row[1], row[2], row[3], row[4], row[5]});
        rationLibraries.push_back(readRationLibrary(sourceFolder, row[6], complaints));
        for (const RationFile::Ration& ration : rationLibraries.back().rations)
            rations[(row[0] + u':' + ration.code).toUpper()] = ration;
        if (billLibrary.isEmpty())
            billLibrary = row[5];
    }
    const BillSources sources = readBillSources(sourceFolder, complaints);
    if (complaints.any())
        return {complaints.all(), {}};

    const QString data = joinPath(programFolder, u"Data"_s);
    const QString billPath = joinPath(data, billLibrary);
    NewDatabase bills(billPath);
    fillBillLibrary(bills.connection(), sources, rations, complaints);
    if (complaints.any())
        return {complaints.all(), {}};

    SampleResult result;
    for (std::size_t i = 0; i < listed.size(); ++i)
        writeRationLibrary(joinPath(joinPath(data, listed[i].region), listed[i].fileName), rationLibraries[i]);
    const bool keep = !force && QFile::exists(billPath) && !isAsMade(billPath);
    if (keep)
        result.notes << billPath + u": kept, it has been edited (--force replaces it)"_s;
    else
        bills.replace();
    if (!keep || !QFile::exists(companionPath(billPath))) {
        NewDatabase companion(companionPath(billPath), systemKey);
        fillCompanion(companion.connection(), sources);
        companion.replace();
    }
    // Last: it is the file by which a build sees that the samples are complete.
    writeSystemDatabase(joinPath(programFolder, u"tessel.dat"_s), listed);
    return result;
}
