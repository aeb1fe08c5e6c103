#pragma once

#include <QString>

using namespace Qt::StringLiterals;

/// Column keys and outline levels of the content grid.
namespace ContentRows {

inline const QString cont = u"cont"_s;
inline const QString unit = u"Unit"_s;
inline const QString dekName = u"dekName"_s;
inline const QString contID = u"contID"_s;
inline const QString contDeID = u"contDeID"_s;
inline const QString contNum = u"contNum"_s;
inline const QString subNum = u"subNum"_s;
inline const QString contType = u"contType"_s;

inline constexpr int contentLevel = 0;
inline constexpr int subContentLevel = 1;
inline constexpr int rationLevel = 2;

/// What a ration's row shows in the column cont.
inline QString rationText(const QString& deh, const QString& name) { return u'[' + deh + u"] "_s + name; }

}  // namespace ContentRows
