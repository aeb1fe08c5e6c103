#include "res/strip/SvgPainter.h"

#include <QPainter>
#include <QSvgRenderer>

Painting paintStrip(const QStringList& svgFiles, int size) {
    QImage strip(size * int(svgFiles.size()), size, QImage::Format_ARGB32_Premultiplied);
    strip.fill(Qt::transparent);

    QPainter painter(&strip);
    painter.setRenderHint(QPainter::Antialiasing);
    int left = 0;
    for (const QString& svgFile : svgFiles) {
        QSvgRenderer drawing(svgFile);
        if (!drawing.isValid())
            return {{}, svgFile + QStringLiteral(": not a readable SVG drawing")};
        if (drawing.viewBoxF().width() != drawing.viewBoxF().height())
            return {{}, svgFile + QStringLiteral(": the drawing is not square")};

        const QRect square(left, 0, size, size);
        painter.setClipRect(square);
        drawing.render(&painter, square);
        left += size;
    }
    painter.end();
    return {strip, {}};
}
