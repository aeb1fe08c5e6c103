#include "res/strip/SvgPainter.h"

#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

Painting paintStrip(const QStringList& svgFiles, int size) {
    QImage strip(size * int(svgFiles.size()), size, QImage::Format_ARGB32_Premultiplied);
    strip.fill(Qt::transparent);

    QPainter painter(&strip);
    painter.setRenderHint(QPainter::Antialiasing);
    int left = 0;
    for (const QString& svgFile : svgFiles) {
        QSvgRenderer drawing(svgFile);
        if (!drawing.isValid())
            return {{}, svgFile + u": not a readable SVG drawing"_s};
        if (drawing.viewBoxF().width() != drawing.viewBoxF().height())
            return {{}, svgFile + u": the drawing is not square"_s};

        const QRect square(left, 0, size, size);
        painter.setClipRect(square);
        drawing.render(&painter, square);
        left += size;
    }
    painter.end();
    return {strip, {}};
}
