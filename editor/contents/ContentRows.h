#pragma once

#include <QString>

/// Column keys and outline levels of the content grid.
namespace ContentRows {

inline const QString cont = QStringLiteral("cont");
inline const QString unit = QStringLiteral("Unit");
inline const QString dekName = QStringLiteral("dekName");
inline const QString contID = QStringLiteral("contID");
inline const QString contDeID = QStringLiteral("contDeID");
inline const QString contNum = QStringLiteral("contNum");
inline const QString subNum = QStringLiteral("subNum");
inline const QString contType = QStringLiteral("contType");

inline constexpr int contentLevel = 0;
inline constexpr int subContentLevel = 1;
inline constexpr int rationLevel = 2;

}  // namespace ContentRows
