#include "ExifOrientation.h"

#include <QFile>
#include <QtEndian>

namespace kavori {

namespace {

// Chunks are skipped by their stated lengths; a file is never read whole for its EXIF.
constexpr qint64 kMaxExifBytes = 1 << 20;

quint32 word32(const QByteArray& data, qsizetype at, bool bigEndian)
{
    const auto* p = reinterpret_cast<const uchar*>(data.constData()) + at;
    return bigEndian ? qFromBigEndian<quint32>(p) : qFromLittleEndian<quint32>(p);
}

quint16 word16(const QByteArray& data, qsizetype at, bool bigEndian)
{
    const auto* p = reinterpret_cast<const uchar*>(data.constData()) + at;
    return bigEndian ? qFromBigEndian<quint16>(p) : qFromLittleEndian<quint16>(p);
}

QByteArray pngExif(QFile& file)
{
    if (file.read(8) != QByteArray("\x89PNG\r\n\x1a\n", 8))
        return {};
    for (;;) {
        const QByteArray head = file.read(8);
        if (head.size() != 8)
            return {};
        const quint32 length = word32(head, 0, true);
        const QByteArray type = head.mid(4);
        if (type == "eXIf")
            return length <= kMaxExifBytes ? file.read(length) : QByteArray();
        if (type == "IEND" || !file.seek(file.pos() + qint64(length) + 4))
            return {};
    }
}

QByteArray webpExif(QFile& file)
{
    const QByteArray riff = file.read(12);
    if (riff.size() != 12 || !riff.startsWith("RIFF") || riff.mid(8) != "WEBP")
        return {};
    for (;;) {
        const QByteArray head = file.read(8);
        if (head.size() != 8)
            return {};
        const quint32 length = word32(head, 4, false);
        if (head.startsWith("EXIF"))
            return length <= kMaxExifBytes ? file.read(length) : QByteArray();
        // Chunks are padded to an even length.
        if (!file.seek(file.pos() + qint64(length) + (length & 1)))
            return {};
    }
}

} // namespace

int ExifOrientation(const QByteArray& block)
{
    const QByteArray exif = block.startsWith(QByteArray("Exif\0\0", 6)) ? block.mid(6) : block;
    if (exif.size() < 8)
        return 1;
    const bool big = exif.startsWith("MM");
    if (!big && !exif.startsWith("II"))
        return 1;
    const quint32 ifd = word32(exif, 4, big);
    if (ifd < 8 || qint64(ifd) + 2 > exif.size())
        return 1;
    const int entries = word16(exif, ifd, big);
    for (int i = 0; i < entries; ++i) {
        const qsizetype at = qsizetype(ifd) + 2 + qsizetype(i) * 12;
        if (at + 12 > exif.size())
            return 1;
        if (word16(exif, at, big) == 0x0112) {
            const int value = word16(exif, at + 8, big);
            return value >= 1 && value <= 8 ? value : 1;
        }
    }
    return 1;
}

int FileExifOrientation(const QString& path)
{
    const QString upper = path.toUpper();
    const bool png = upper.endsWith(QLatin1String(".PNG"));
    if (!png && !upper.endsWith(QLatin1String(".WEBP")))
        return 1;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    return ExifOrientation(png ? pngExif(file) : webpExif(file));
}

QImageIOHandler::Transformations ExifTransformation(int orientation)
{
    switch (orientation) {
    case 2:
        return QImageIOHandler::TransformationMirror;
    case 3:
        return QImageIOHandler::TransformationRotate180;
    case 4:
        return QImageIOHandler::TransformationFlip;
    case 5:
        return QImageIOHandler::TransformationFlipAndRotate90;
    case 6:
        return QImageIOHandler::TransformationRotate90;
    case 7:
        return QImageIOHandler::TransformationMirrorAndRotate90;
    case 8:
        return QImageIOHandler::TransformationRotate270;
    default:
        return QImageIOHandler::TransformationNone;
    }
}

} // namespace kavori
