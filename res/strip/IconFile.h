#pragma once

#include <QImage>
#include <QString>

/// Writes `images`, the same icon in several sizes of up to 256 pixels, to the file `path` as a Windows icon (.ico).
///
/// An existing file is replaced only when the new one is complete.
/// Returns an empty text, or why the file could not be written.
QString writeIcon(const QList<QImage>& images, const QString& path);
