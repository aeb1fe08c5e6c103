#pragma once

#include <QString>
#include <vector>

struct BillLibrary;
struct RationLibrary;

/// Each makes one database file anew, in one transaction beside the old file, which is replaced only by a complete
/// one. Missing folders are made. Failures throw Error.

/// The bill library: a plain file with the nine tables.
void writeBillLibrary(const BillLibrary& library, const QString& path);

/// The companion file of the bill library, protected with the system key.
void writeCompanion(const BillLibrary& library, const QString& path);

/// A ration library: a plain file with the tables DeSYB and DEB.
void writeRationLibrary(const RationLibrary& library, const QString& path);

/// The system database with the table SysBaseData, protected with the system key.
void writeSystemDatabase(const std::vector<RationLibrary>& libraries, const QString& path);

/// Whether the bill library at `path` is still exactly as writeBillLibrary left it: it carries our mark, and SQLite,
/// which counts the transactions that changed a file, knows of that one only. False when the file cannot be read.
bool isAsWritten(const QString& path);
