#include "storage/RationLibraries.h"

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

std::vector<RationLibrary> listed(const SqlText& query) {
    const auto system = openSystemDatabase();
    std::vector<RationLibrary> libraries;
    for (Recordset rows = system->OpenRecordset(query); !rows.EndOfFile(); rows.MoveNext())
        libraries.push_back({rows.text("DekId"), rows.text("DekName")});
    return libraries;
}

}  // namespace

std::vector<RationLibrary> rationLibrariesByName() {
    return listed("SELECT DekId,DekName FROM SysBaseData ORDER BY DekName ASC;");
}

std::vector<RationLibrary> rationLibrariesByProfession() {
    return listed("SELECT DekId,DekName FROM SysBaseData ORDER BY Prof ASC;");
}

QString defaultRationLibrary(const QString& billLibrary) {
    const auto system = openSystemDatabase();
    const Recordset found =
        system->OpenRecordset(sql("SELECT * FROM SysBaseData WHERE QdkFileName='", billLibrary, "';"));
    return found.EndOfFile() ? QString() : found.text("DekId");
}

QString rationLibraryPath(const QString& dekId) {
    const auto system = openSystemDatabase();
    const Recordset found =
        system->OpenRecordset(sql("SELECT DekFilename,rgnName FROM SysBaseData WHERE DekId='", dekId, "';"));
    return found.EndOfFile() ? QString() : joinPath(dataPath + found.text("rgnName"), found.text("DekFilename"));
}

QString browsedLibraryPath(const QString& dekId) {
    const auto system = openSystemDatabase();
    const Recordset found =
        system->OpenRecordset(sql("SELECT DekFilename FROM SysBaseData WHERE DekId='", dekId, "';"));
    return found.EndOfFile() ? QString() : joinPath(dataPath + u"广东省"_s, found.text("DekFilename"));
}

std::unique_ptr<Connection> openRationLibrary(const QString& path) {
    auto library = std::make_unique<Connection>();
    library->Open(path, QString(), Connection::readWriteCreate);
    return library;
}
