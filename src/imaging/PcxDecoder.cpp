#include "PcxDecoder.h"

#include <QtEndian>

#include <vector>

namespace kavori {

namespace {

constexpr int kHeaderSize = 128;
constexpr qint64 kMaxPixels = 100'000'000; // refuse sizes no real picture has

quint16 word(const uchar* p)
{
    return qFromLittleEndian<quint16>(p);
}

QRgb headerColour(const uchar* header, int index)
{
    const uchar* c = header + 16 + 3 * (index % 16);
    return qRgb(c[0], c[1], c[2]);
}

} // namespace

QImage DecodePcx(const QByteArray& data)
{
    if (data.size() < kHeaderSize)
        return {};
    const auto* header = reinterpret_cast<const uchar*>(data.constData());
    if (header[0] != 0x0A || header[2] > 1)
        return {};
    const int bpp = header[3];
    const int width = int(word(header + 8)) - int(word(header + 4)) + 1;
    const int height = int(word(header + 10)) - int(word(header + 6)) + 1;
    const int planes = header[65];
    const int bytesPerLine = word(header + 66);
    const bool rle = header[2] == 1;
    if (width <= 0 || height <= 0 || qint64(width) * height > kMaxPixels || planes < 1 ||
        planes > 4)
        return {};
    if (!(bpp == 1 || bpp == 2 || bpp == 4 || bpp == 8))
        return {};
    if (qint64(bytesPerLine) * 8 < qint64(width) * bpp)
        return {};
    const bool trueColour = bpp == 8 && planes >= 3;
    const bool planar = bpp == 1 && planes > 1;
    if (!trueColour && !planar && planes != 1)
        return {};

    // Unpack every scan line (runs may cross line ends).
    const qint64 lineBytes = qint64(bytesPerLine) * planes;
    const qint64 total = lineBytes * height;
    const uchar* in = header + kHeaderSize;
    const uchar* end = reinterpret_cast<const uchar*>(data.constData()) + data.size();
    // A header can claim any size; the data cannot unpack to more than 63 bytes per two (a
    // run), so a claim beyond that is a damaged file, refused before any memory is taken.
    const qint64 remaining = end - in;
    const qint64 mostBytes = rle ? remaining / 2 * 63 + remaining % 2 : remaining;
    if (total > mostBytes)
        return {};
    std::vector<uchar> pixels(static_cast<size_t>(total), 0);
    qint64 out = 0;
    while (out < total) {
        if (in >= end)
            return {}; // truncated
        uchar b = *in++;
        qint64 count = 1;
        if (rle && (b & 0xC0) == 0xC0) {
            count = b & 0x3F;
            if (in >= end)
                return {};
            b = *in++;
        }
        for (; count > 0 && out < total; --count)
            pixels[size_t(out++)] = b;
    }

    // The 256-colour palette: 0x0C and 768 bytes at the very end of the file.
    QVector<QRgb> palette(256);
    if (bpp == 8 && planes == 1) {
        const bool hasPalette =
            data.size() >= kHeaderSize + 769 && uchar(data[data.size() - 769]) == 0x0C;
        for (int i = 0; i < 256; ++i) {
            if (hasPalette) {
                const auto* c =
                    reinterpret_cast<const uchar*>(data.constData()) + data.size() - 768 + 3 * i;
                palette[i] = qRgb(c[0], c[1], c[2]);
            } else {
                palette[i] = qRgb(i, i, i);
            }
        }
    } else if (bpp == 1 && planes == 1) {
        palette[0] = qRgb(0, 0, 0);
        palette[1] = qRgb(255, 255, 255);
    } else {
        for (int i = 0; i < 16; ++i)
            palette[i] = headerColour(header, i);
    }

    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull())
        return {};
    for (int y = 0; y < height; ++y) {
        const uchar* line = pixels.data() + qint64(y) * lineBytes;
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            if (trueColour) {
                row[x] = qRgb(line[x], line[bytesPerLine + x], line[2 * bytesPerLine + x]);
            } else if (planar) {
                int index = 0;
                for (int p = 0; p < planes; ++p) {
                    const uchar byte = line[qint64(p) * bytesPerLine + x / 8];
                    index |= ((byte >> (7 - x % 8)) & 1) << p;
                }
                row[x] = palette[index];
            } else {
                const int bit = x * bpp;
                const uchar byte = line[bit / 8];
                const int shift = 8 - bpp - bit % 8;
                row[x] = palette[(byte >> shift) & ((1 << bpp) - 1)];
            }
        }
    }
    return image;
}

} // namespace kavori
