#include "tests/contents/RationLibraries.h"

#include <QDir>
#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "storage/Connection.h"
#include "storage/SystemDatabase.h"

namespace {

void withSystemDatabase(const SqlText& statement) {
    Connection system;
    system.Open(RationLibraries::systemDatabasePath(), QString::fromLatin1(systemKey), Connection::readWriteCreate);
    system.Execute(statement);
}

}  // namespace

RationLibraries::RationLibraries() {
    QFile::remove(systemDatabasePath());
    withSystemDatabase(
        "CREATE TABLE SysBaseData (DekId text,DekName text,DekFilename text,rgnName text,Prof text,"
        "QdkFileName text)");
}

RationLibraries::~RationLibraries() {
    QFile::remove(systemDatabasePath());
    QDir(dataPath).removeRecursively();
    QDir().mkdir(dataPath);
}

QString RationLibraries::systemDatabasePath() { return appPath + QLatin1String("tessel.dat"); }

void RationLibraries::list(const QString& dekId, const QString& region, const QString& fileName) {
    withSystemDatabase(sql("INSERT INTO SysBaseData(DekId,DekName,DekFilename,rgnName) VALUES('", dekId, "','", dekId,
                           "','", fileName, "','", region, "')"));
}

QString RationLibraries::add(const QString& dekId, const QString& region, const QString& fileName,
                             const std::vector<Row>& rations) {
    list(dekId, region, fileName);
    QDir(dataPath).mkdir(region);
    const QString path = joinPath(joinPath(dataPath, region), fileName);
    Connection library;
    library.Open(path, QString(), Connection::readWriteCreate);
    library.Execute("CREATE TABLE DEB (ID Integer PRIMARY KEY,sybID Integer,DEH text,MC text,DW text)");
    library.Execute("BEGIN");
    for (const Row& ration : rations)
        library.Execute(sql("INSERT INTO DEB(sybID,DEH,MC,DW) VALUES(1,'", Doubled{ration.deh}, "','",
                            Doubled{ration.name}, "','", Doubled{ration.unit}, "')"));
    library.Execute("COMMIT");
    return path;
}
