#include "ration_browser/RationLibraryList.h"

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "storage/LibraryConnection.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

std::vector<RationLibrary> readRationLibraries() {
    const auto system = openSystemDatabase();
    Recordset rows = system->OpenRecordset("SELECT DekId,DekName FROM SysBaseData ORDER BY Prof ASC;");
    std::vector<RationLibrary> libraries;
    for (; !rows.EndOfFile(); rows.MoveNext())
        libraries.push_back({rows.text("DekId"), rows.text("DekName")});
    ReleaseOrmRecordset(rows);
    return libraries;
}

QString browsedLibraryPath(const QString& dekId) {
    const auto system = openSystemDatabase();
    Recordset rows = system->OpenRecordset(sql("SELECT DekFilename FROM SysBaseData WHERE DekId='", dekId, "';"));
    QString path;
    if (!rows.EndOfFile())
        path = joinPath(dataPath + u"广东省"_s, rows.text("DekFilename"));
    ReleaseOrmRecordset(rows);
    return path;
}
