#pragma once

#include "administration/CsvFile.h"
#include "administration/RationFiles.h"

/// Reads a ration library from the CSV file of its chapters (编号, 章, 节, 小节, 项, 子项, 标题, 作废) and that of its
/// rations (章编号, 编码, 名称, 单位), in any order of their rows. Complains about chapters whose numbers are none,
/// stand twice or have no chapter above them, and about rations without a chapter or with a code that another has.
RationFile readRationLibrary(const QString& chapters, const QString& rations, Complaints& complaints);
