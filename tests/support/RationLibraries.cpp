#include "tests/support/RationLibraries.h"

#include <QDir>
#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "samples/writer/RationFiles.h"
#include "tests/support/OtherProgram.h"

namespace {

QString regionFolder() { return dataPath + u"广东省"_s; }
QString utf8(const char* text) { return QString::fromUtf8(text); }

}  // namespace

RationLibraries::RationLibraries() { QDir().mkpath(regionFolder()); }

RationLibraries::~RationLibraries() {
    QFile::remove(systemDatabasePath());
    QDir(regionFolder()).removeRecursively();
    QFile::remove(appPath + u"Error.log"_s);
}

QString RationLibraries::systemDatabasePath() { return appPath + u"tessel.dat"_s; }
QString RationLibraries::path(const char* fileName) { return joinPath(regionFolder(), utf8(fileName)); }

void RationLibraries::list(const std::vector<Listed>& libraries) const {
    std::vector<ListedRationLibrary> rows;
    for (const Listed& library : libraries)
        rows.push_back({utf8(library.dekId), utf8(library.name), utf8(library.fileName), utf8(library.region),
                        utf8(library.prof), utf8(library.billLibrary)});
    writeSystemDatabase(systemDatabasePath(), rows);
}

QString RationLibraries::make(const char* fileName, const std::vector<SqlText>& rations,
                              const std::vector<SqlText>& chapters) const {
    writeRationLibrary(path(fileName), {});
    OtherProgram library(path(fileName));
    for (const SqlText& values : chapters)
        library.rows(sql("INSERT INTO DeSYB VALUES(", values, ")").text());
    for (const SqlText& values : rations)
        library.rows(sql("INSERT INTO DEB VALUES(", values, ")").text());
    return path(fileName);
}

QString RationLibraries::makeDamaged(const char* fileName) const {
    overwrite(path(fileName), QByteArray(5000, 'x'));
    return path(fileName);
}
