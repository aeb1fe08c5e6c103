#pragma once

#include <QImage>
#include <QString>

/// Writes `image` to the file `path` as a 32-bit BMP that keeps its transparency: a version 4 header that names an
/// alpha mask, bottom-up rows, straight (not premultiplied) alpha. Qt's own BMP writer stores 24 bits and loses the
/// alpha.
///
/// An existing file is replaced only when the new one is complete.
/// Returns an empty text, or why the file could not be written.
QString writeBitmapWithAlpha(const QImage& image, const QString& path);
