#include "res/strip/IconFile.h"

#include <QBuffer>
#include <QDataStream>
#include <QSaveFile>

namespace {
constexpr quint32 kHeaderBytes = 6;
constexpr quint32 kEntryBytes = 16;
constexpr quint16 kIcon = 1;
constexpr quint16 kBitsPerPixel = 32;

QByteArray png(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}
}  // namespace

QString writeIcon(const QList<QImage>& images, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();

    QDataStream out(&file);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16(0) << kIcon << quint16(images.size());
    QByteArray pictures;
    const auto picturesAt = kHeaderBytes + kEntryBytes * quint32(images.size());
    for (const QImage& image : images) {
        const QByteArray picture = png(image);
        // A byte each; 256 is written as 0.
        out << quint8(image.width()) << quint8(image.height()) << quint8(0) << quint8(0) << quint16(1) << kBitsPerPixel
            << quint32(picture.size()) << picturesAt + quint32(pictures.size());
        pictures += picture;
    }
    out.writeRawData(pictures.constData(), int(pictures.size()));
    if (out.status() != QDataStream::Ok || !file.commit())
        return file.errorString();
    return {};
}
