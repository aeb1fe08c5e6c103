#include "editor/contents/RationLookup.h"

#include "app/base/Guarded.h"
#include "storage/LibraryConnection.h"
#include "storage/RationLibraries.h"

QString GetDekFilePath(const QString& dekId) {
    return guarded({"frmEditor", "GetDekFilePath"}, [&] { return rationLibraryPath(dekId); });
}

bool GetDeData(const QString& deh, const QString& path, QString& name, QString& unit) {
    return guarded({"frmEditor", "GetDeData"}, [&] {
        const auto library = openRationLibrary(path);
        Recordset ration = library->OpenRecordset(sql("SELECT * FROM DEB WHERE DEH='", deh, "' COLLATE NOCASE;"));
        if (ration.EndOfFile())
            return false;
        const QString foundName = ration.text("MC");
        const QString foundUnit = ration.text("DW");
        name = foundName;
        unit = foundUnit;
        ReleaseOrmRecordset(ration);
        library->Close();
        return true;
    });
}
