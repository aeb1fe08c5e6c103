#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

/// What painting gave: the picture, or (when `error` is not empty) why there is none.
struct Painting {
    QImage image;
    QString error;
};

/// Paints the SVG files side by side, in the order given, on a transparent ground. Each fills a square of `size`
/// pixels. Fails with the first file that is missing or no square SVG drawing. Needs no display.
Painting paintStrip(const QStringList& svgFiles, int size);
