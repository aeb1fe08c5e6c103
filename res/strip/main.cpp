// Build-time tool: paints vector icons into the picture files the program loads.
//
//     tessel_strip SIZE OUTPUT SVG...
//
// SIZE is the edge of one icon in pixels. Several drawings become one horizontal strip. OUTPUT ends in .bmp (written
// with transparency), in .ico (the drawing in all usual sizes up to SIZE) or in any other suffix Qt writes, such as
// .png. Its folder is made when it is missing.

#include "res/strip/BitmapFile.h"
#include "res/strip/IconFile.h"
#include "res/strip/SvgPainter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageWriter>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {
int fail(const QString& message) {
    std::fprintf(stderr, "tessel_strip: %s\n", qPrintable(message));
    return 1;
}

QString save(const QImage& image, const QString& path) {
    if (path.endsWith(u".bmp"_s, Qt::CaseInsensitive))
        return writeBitmapWithAlpha(image, path);
    QImageWriter writer(path);
    return writer.write(image) ? QString() : writer.errorString();
}

QString paint(const QStringList& drawings, int size, const QString& output) {
    const bool isIcon = output.endsWith(u".ico"_s, Qt::CaseInsensitive);
    QList<QImage> images;
    for (const int edge : isIcon ? QList<int>{16, 20, 24, 32, 40, 48, 64, 128, 256} : QList<int>{size}) {
        const Painting painting = paintStrip(drawings, edge);
        if (!painting.error.isEmpty())
            return painting.error;
        if (edge <= size)
            images << painting.image;
    }
    return isIcon ? writeIcon(images, output) : save(images.constFirst(), output);
}
}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4)
        return fail(u"usage: tessel_strip SIZE OUTPUT SVG..."_s);

    const int size = arguments[1].toInt();
    if (size < 1 || size > 1024)
        return fail(u"the size must be 1 to 1024 pixels: "_s + arguments[1]);

    const QString output = arguments[2];
    if (!QDir().mkpath(QFileInfo(output).path()))
        return fail(u"cannot make the folder of "_s + output);

    const QString error = paint(arguments.mid(3), size, output);
    return error.isEmpty() ? 0 : fail(output + u": "_s + error);
}
