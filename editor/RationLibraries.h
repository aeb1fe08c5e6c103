#pragma once

#include <QString>

/// What the editor reads of the list of ration libraries: table SysBaseData of the system database, which is opened
/// and closed again by each call. A missing or unreadable system database is recorded and gives an empty text.

/// DekId of the first row whose QdkFileName is `fileName` (a bare file name); empty when there is none.
QString GetDefDekID(const QString& fileName);

/// All libraries by name, as a grid's drop-down list: "#DekId;DekName|#DekId;DekName".
QString GetDekComboList();
