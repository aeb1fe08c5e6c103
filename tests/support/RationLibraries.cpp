#include "tests/support/RationLibraries.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "samples/writer/RationFiles.h"

using namespace Qt::StringLiterals;

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
    Connection library;
    library.Open(path(fileName), QString(), Connection::readWriteCreate);
    library.Execute("BEGIN");
    createRationTables(library);
    for (const SqlText& values : chapters)
        library.Execute(sql("INSERT INTO DeSYB VALUES(", values, ")"));
    for (const SqlText& values : rations)
        library.Execute(sql("INSERT INTO DEB VALUES(", values, ")"));
    library.Execute("COMMIT");
    return path(fileName);
}

QString RationLibraries::makeDamaged(const char* fileName) const {
    QFile file(path(fileName));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    return path(fileName);
}
