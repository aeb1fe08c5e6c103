#include "tests/support/RationLibraries.h"

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "samples/writer/RationFiles.h"
#include "tests/support/OtherProgram.h"

QString RationLibraries::path(const char* fileName) {
    return joinPath(dataPath + u"广东省"_s, QString::fromUtf8(fileName));
}

void RationLibraries::list(const std::vector<Listed>& libraries) {
    std::vector<ListedRationLibrary> rows;
    for (const auto& [id, name, fileName, prof, region, billLibrary] : libraries)
        rows.push_back({id.toString(), name.toString(), fileName.toString(), region.toString(), prof.toString(),
                        billLibrary.toString()});
    writeSystemDatabase(appPath + u"tessel.dat"_s, rows);
}

QString RationLibraries::make(const char* fileName, const std::vector<SqlText>& rations,
                              const std::vector<SqlText>& chapters) {
    writeRationLibrary(path(fileName), {});
    OtherProgram library(path(fileName));
    for (const SqlText& values : chapters)
        library.run(sql("INSERT INTO DeSYB VALUES(", values, ")"));
    for (const SqlText& values : rations)
        library.run(sql("INSERT INTO DEB VALUES(", values, ")"));
    return path(fileName);
}
