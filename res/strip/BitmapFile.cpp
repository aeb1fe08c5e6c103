#include "res/strip/BitmapFile.h"

#include <QDataStream>
#include <QSaveFile>

namespace {
constexpr quint32 kFileHeaderBytes = 14;
constexpr quint32 kInfoHeaderBytes = 108;  // BITMAPV4HEADER
constexpr quint32 kBytesPerPixel = 4;
constexpr quint32 kBitFields = 3;            // compression: the channels are given by masks
constexpr quint32 kPixelsPerMetre = 3780;    // 96 dpi
constexpr quint32 kSRgb = 0x73524742;        // 'sRGB'
constexpr int kEndpointsAndGammaWords = 12;  // unused with sRGB

void writeHeaders(QDataStream& out, const QImage& image) {
    const auto width = quint32(image.width());
    const auto height = quint32(image.height());
    const quint32 pixelOffset = kFileHeaderBytes + kInfoHeaderBytes;
    const quint32 pixelBytes = width * height * kBytesPerPixel;

    out << quint16(0x4d42) << (pixelOffset + pixelBytes) << quint32(0) << pixelOffset;

    out << kInfoHeaderBytes << width << height << quint16(1) << quint16(kBytesPerPixel * 8) << kBitFields << pixelBytes
        << kPixelsPerMetre << kPixelsPerMetre << quint32(0) << quint32(0);
    out << quint32(0x00ff0000) << quint32(0x0000ff00) << quint32(0x000000ff) << quint32(0xff000000) << kSRgb;
    for (int word = 0; word < kEndpointsAndGammaWords; ++word)
        out << quint32(0);
}
}  // namespace

QString writeBitmapWithAlpha(const QImage& image, const QString& path) {
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();

    QDataStream out(&file);
    out.setByteOrder(QDataStream::LittleEndian);
    writeHeaders(out, pixels);
    for (int y = pixels.height() - 1; y >= 0; --y) {
        const auto* row = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x)
            out << quint32(row[x]);
    }
    if (out.status() != QDataStream::Ok || !file.commit())
        return file.errorString();
    return {};
}
