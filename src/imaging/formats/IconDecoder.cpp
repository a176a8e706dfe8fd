#include "IconDecoder.h"

#include "BmpDecoder.h"

#include <QtEndian>

namespace kavori {

namespace {

constexpr qint64 kDirectorySize = 6;
constexpr qint64 kEntrySize = 16;

bool isPng(const QByteArray& bytes)
{
    return bytes.startsWith("\x89PNG\r\n\x1a\n");
}

} // namespace

QImage DecodeIcon(const QByteArray& data)
{
    if (data.size() < kDirectorySize)
        return {};
    const auto* p = reinterpret_cast<const uchar*>(data.constData());
    const quint16 type = qFromLittleEndian<quint16>(p + 2);
    if (qFromLittleEndian<quint16>(p) != 0 || (type != 1 && type != 2))
        return {};
    const qint64 count = qMin<qint64>(qFromLittleEndian<quint16>(p + 4),
                                      (data.size() - kDirectorySize) / kEntrySize);
    QImage best;
    int bestBits = 0;
    for (qint64 i = 0; i < count; ++i) {
        const uchar* entry = p + kDirectorySize + i * kEntrySize;
        const quint32 offset = qFromLittleEndian<quint32>(entry + 12);
        if (offset >= quint32(data.size()))
            continue;
        // The entry's byte count is not trusted either: the picture's own headers bound it.
        const QByteArray picture =
            QByteArray::fromRawData(data.constData() + offset, data.size() - offset);
        const bool png = isPng(picture);
        const QImage image = png ? QImage::fromData(picture, "PNG") : DecodeIconBitmap(picture);
        if (image.isNull())
            continue;
        const int bits =
            png || picture.size() < 16 ? 32 : qFromLittleEndian<quint16>(picture.constData() + 14);
        const qint64 area = qint64(image.width()) * image.height();
        const qint64 bestArea = qint64(best.width()) * best.height();
        if (area > bestArea || (area == bestArea && bits > bestBits)) {
            best = image;
            bestBits = bits;
        }
    }
    return best;
}

} // namespace kavori
