#include "editor/RationLibraries.h"

#include <QStringList>

#include "app/base/Guarded.h"
#include "storage/LibraryConnection.h"
#include "storage/SystemDatabase.h"

QString GetDefDekID(const QString& fileName) {
    return guarded({"frmEditor", "GetDefDekID"}, [&] {
        const auto system = openSystemDatabase();
        const Recordset found =
            system->OpenRecordset(sql("SELECT * FROM SysBaseData WHERE QdkFileName='", fileName, "';"));
        return found.EndOfFile() ? QString() : found.text("DekId");
    });
}

QString GetDekComboList() {
    QStringList entries;
    guarded({"frmEditor", "GetDekComboList"}, [&] {
        const auto system = openSystemDatabase();
        Recordset rows = system->OpenRecordset("SELECT DekId,DekName FROM SysBaseData ORDER BY DekName ASC;");
        for (; !rows.EndOfFile(); rows.MoveNext())
            entries << u'#' + rows.text("DekId") + u';' + rows.text("DekName");
    });
    return entries.join(u'|');
}
