#pragma once

#include <QHash>
#include <QSet>

#include "administration/CsvFile.h"
#include "administration/RationFiles.h"

/// The rations that contents may name, by "library id:code" in capitals.
using KnownRations = QHash<QString, RationFile::Ration>;

/// The CSV files of a bill library and of its companion file.
struct BillSources {
    std::vector<CsvRow> chapters, bills, features, contents, explanations;
};

BillSources readBillSources(const QString& folder, Complaints& complaints);

/// Fills an empty file with the nine tables and what the sources say. Complains about what does not fit together.
void fillBillLibrary(Connection& file, const BillSources& sources, const KnownRations& rations, Complaints& complaints);

/// Fills an empty file with `tblExplain`, explanations of chapters.
void fillCompanion(Connection& file, const BillSources& sources);

/// Whether the bill library at `path` is still exactly as it was made: it carries our mark, and SQLite, which counts
/// the transactions that changed a file, knows of one only. False when the file cannot be read.
bool isAsMade(const QString& path);
