#pragma once

#include <QString>

/// What a library holds, short: a digest of each of its tables, of all columns but the time of the last change. Empty
/// when the file cannot be read now.
QString contentOf(const QString& path);
