#pragma once

#include <QByteArray>
#include <QString>

/// What unlocks the SQLCipher 4 file at `path` with `password`: the derived key and its salt, ready for SQLite, or the
/// password itself while the file is too short to have a salt (a new file gets one when its first page is written).
///
/// Deriving takes long; the process remembers the key by password and salt, so a replaced file is simply another salt.
[[nodiscard]] QByteArray keyForFile(const QString& path, const QString& password);

/// Begins to derive that key on another thread, so that it is there when the file is opened. Does nothing for a file
/// that is missing or too short.
void deriveKeyAhead(const QString& path, const QString& password);

/// Whether that thread is still at it: whoever opens the file now waits for it.
[[nodiscard]] bool isKeyBeingDerived(const QString& path, const QString& password);
