#include "editor/RationLibraries.h"

#include <QStringList>

#include "app/base/Guarded.h"
#include "storage/RationLibraries.h"

QString GetDefDekID(const QString& fileName) {
    return guarded({"frmEditor", "GetDefDekID"}, [&] { return defaultRationLibrary(fileName); });
}

QString GetDekComboList() {
    return guarded({"frmEditor", "GetDekComboList"}, [] {
        QStringList entries;
        for (const RationLibrary& library : rationLibrariesByName())
            entries << u'#' + library.dekId + u';' + library.name;
        return entries.join(u'|');
    });
}
