#include "tests/ration_browser/RationFiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "storage/Connection.h"
#include "storage/SystemDatabase.h"

namespace {

QString systemPath() { return appPath + QStringLiteral("tessel.dat"); }
QString regionFolder() { return dataPath + QStringLiteral("广东省"); }
QString utf8(const char* text) { return QString::fromUtf8(text); }

}  // namespace

RationFiles::RationFiles() { QDir().mkpath(regionFolder()); }

RationFiles::~RationFiles() {
    QFile::remove(systemPath());
    QDir(regionFolder()).removeRecursively();
    QFile::remove(appPath + QStringLiteral("Error.log"));
}

void RationFiles::list(const std::vector<Listed>& libraries) const {
    QFile::remove(systemPath());
    Connection system;
    system.Open(systemPath(), QString::fromLatin1(systemKey), Connection::readWriteCreate);
    system.Execute("CREATE TABLE SysBaseData (DekId text, DekName text, DekFilename text, rgnName text, Prof text)");
    for (const Listed& library : libraries)
        system.Execute(sql("INSERT INTO SysBaseData VALUES('", Doubled{utf8(library.dekId)}, "','", utf8(library.name),
                           "','", utf8(library.fileName), "','广东省','", utf8(library.prof), "')"));
}

QString RationFiles::path(const char* fileName) const { return regionFolder() + QDir::separator() + utf8(fileName); }

void RationFiles::make(const char* fileName, const std::function<void(Connection&)>& fill) const {
    Connection library;
    library.Open(path(fileName), QString(), Connection::readWriteCreate);
    library.Execute("BEGIN");
    library.Execute(
        "CREATE TABLE DeSYB (sybID integer, CH integer, ZH integer, JH integer, XH integer, MH integer,"
        " BTM text, isdel integer)");
    library.Execute("CREATE TABLE DEB (ID integer primary key, sybID integer, DEH text, MC text, DW text)");
    try {
        fill(library);
    } catch (const Error& error) {
        ADD_FAILURE() << error.what();
    }
    library.Execute("COMMIT");
}

void RationFiles::makeChapters(const char* fileName, const std::vector<SqlText>& chapterValues) const {
    make(fileName, [&](Connection& library) {
        for (const SqlText& values : chapterValues)
            library.Execute(sql("INSERT INTO DeSYB VALUES(", values, ")"));
    });
}

void RationFiles::makeSmall(const char* fileName) const {
    make(fileName, [](Connection& library) {
        library.Execute(
            "INSERT INTO DeSYB VALUES(12,1,0,0,0,0,'土石方工程',0),(3,1,2,0,0,0,'机械土石方',0),"
            "(4,1,2,5,0,0,'挖运',0),(5,1,2,5,1,0,'挖掘机',0),(6,1,2,5,1,9,'反铲',0),"
            "(7,1,3,0,0,0,'作废',1),(8,2,0,0,0,0,'砌筑工程',0)");
        library.Execute(
            "INSERT INTO DEB VALUES(101,12,'A1-1','平整场地','100m2'),(102,12,'a1-2x','原土打夯',NULL),"
            "(103,6,'A1-50','挖掘机挖土','1000m3')");
    });
}
