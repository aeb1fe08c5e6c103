#include "editor/contents/RationLookup.h"

#include "app/base/Definitions.h"
#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "storage/LibraryConnection.h"
#include "storage/SystemDatabase.h"

QString GetDekFilePath(const QString& dekId) {
    return guarded({"frmEditor", "GetDekFilePath"}, [&] {
        const std::unique_ptr<Connection> system = openSystemDatabase();
        const Recordset library =
            system->OpenRecordset(sql("SELECT DekFilename,rgnName FROM SysBaseData WHERE DekId='", dekId, "';"));
        return library.EndOfFile() ? QString()
                                   : joinPath(dataPath + library.text("rgnName"), library.text("DekFilename"));
    });
}

bool GetDeData(const QString& deh, const QString& path, QString& name, QString& unit) {
    return guarded({"frmEditor", "GetDeData"}, [&] {
        Connection library;
        library.Open(path, QString(), Connection::readWriteCreate);
        Recordset ration = library.OpenRecordset(sql("SELECT * FROM DEB WHERE DEH='", deh, "' COLLATE NOCASE;"));
        if (ration.EndOfFile())
            return false;
        const QString foundName = ration.text("MC");
        const QString foundUnit = ration.text("DW");
        name = foundName;
        unit = foundUnit;
        ReleaseOrmRecordset(ration);
        library.Close();
        return true;
    });
}
