#include "TgaDecoder.h"

#include <QtEndian>

#include <vector>

namespace kavori {

namespace {

constexpr qint64 kMaxPixels = 100'000'000;

// Reads pixels of one kind from a bounded buffer.
class Source {
public:
    Source(const uchar* begin, const uchar* end) : m_p(begin), m_end(end) {}
    bool has(qint64 n) const { return m_end - m_p >= n; }
    qint64 remaining() const { return m_end - m_p; }
    const uchar* take(qint64 n)
    {
        const uchar* at = m_p;
        m_p += n;
        return at;
    }

private:
    const uchar* m_p;
    const uchar* m_end;
};

QRgb colourOf(const uchar* p, int bits)
{
    switch (bits) {
    case 15:
    case 16: {
        const quint16 v = qFromLittleEndian<quint16>(p);
        const int r = (v >> 10) & 31, g = (v >> 5) & 31, b = v & 31;
        return qRgb(r * 255 / 31, g * 255 / 31, b * 255 / 31);
    }
    case 24:
        return qRgb(p[2], p[1], p[0]);
    case 32:
        return qRgba(p[2], p[1], p[0], p[3]);
    default:
        return qRgb(0, 0, 0);
    }
}

} // namespace

QImage DecodeTga(const QByteArray& data)
{
    if (data.size() < 18)
        return {};
    const auto* h = reinterpret_cast<const uchar*>(data.constData());
    const uchar* end = h + data.size();
    const int idLength = h[0];
    const int mapType = h[1];
    const int type = h[2];
    const int mapFirst = qFromLittleEndian<quint16>(h + 3);
    const int mapLength = qFromLittleEndian<quint16>(h + 5);
    const int mapBits = h[7];
    const int width = qFromLittleEndian<quint16>(h + 12);
    const int height = qFromLittleEndian<quint16>(h + 14);
    const int depth = h[16];
    const int descriptor = h[17];
    const bool rle = type >= 9;
    const int kind = rle ? type - 8 : type; // 1 colour-mapped, 2 true-colour, 3 grey
    if (kind < 1 || kind > 3 || mapType > 1 || width == 0 || height == 0 ||
        qint64(width) * height > kMaxPixels)
        return {};

    QVector<QRgb> map;
    Source src(h + 18, end);
    if (!src.has(idLength))
        return {};
    src.take(idLength);
    if (mapType == 1) {
        if (mapBits != 15 && mapBits != 16 && mapBits != 24 && mapBits != 32)
            return {};
        const int entry = (mapBits + 7) / 8;
        if (!src.has(qint64(entry) * mapLength))
            return {};
        map.resize(mapFirst + mapLength);
        for (int i = 0; i < mapLength; ++i)
            map[mapFirst + i] = colourOf(src.take(entry), mapBits);
    }

    bool alpha = false;
    switch (kind) {
    case 1:
        if (mapType != 1 || (depth != 8 && depth != 16))
            return {};
        alpha = mapBits == 32;
        break;
    case 2:
        if (depth != 15 && depth != 16 && depth != 24 && depth != 32)
            return {};
        alpha = depth == 32 && (descriptor & 0x0F) != 0;
        break;
    case 3:
        if (depth != 8 && depth != 16)
            return {};
        alpha = depth == 16;
        break;
    }
    const int bytes = (depth + 7) / 8;

    auto decode = [&](const uchar* p) -> QRgb {
        switch (kind) {
        case 1: {
            const int index = depth == 8 ? p[0] : qFromLittleEndian<quint16>(p);
            return index < map.size() ? map[index] : qRgb(0, 0, 0);
        }
        case 2:
            return depth == 32 && !alpha ? (colourOf(p, 32) | 0xFF000000u) : colourOf(p, depth);
        default:
            return depth == 16 ? qRgba(p[0], p[0], p[0], p[1]) : qRgb(p[0], p[0], p[0]);
        }
    };

    const qint64 count = qint64(width) * height;
    // What the data left can fill at most (a run packet gives 128 pixels): a header claiming
    // more is damaged, and refused before any memory is taken.
    const qint64 remaining = src.remaining();
    const qint64 mostPixels = rle ? (remaining + bytes) / (1 + bytes) * 128 : remaining / bytes;
    if (count > mostPixels)
        return {};
    std::vector<QRgb> pixels(static_cast<size_t>(count));
    qint64 n = 0;
    while (n < count) {
        if (!rle) {
            if (!src.has(bytes))
                return {};
            pixels[size_t(n++)] = decode(src.take(bytes));
            continue;
        }
        if (!src.has(1))
            return {};
        const uchar packet = *src.take(1);
        const int length = (packet & 0x7F) + 1;
        if (packet & 0x80) {
            if (!src.has(bytes))
                return {};
            const QRgb c = decode(src.take(bytes));
            for (int i = 0; i < length && n < count; ++i)
                pixels[size_t(n++)] = c;
        } else {
            for (int i = 0; i < length && n < count; ++i) {
                if (!src.has(bytes))
                    return {};
                pixels[size_t(n++)] = decode(src.take(bytes));
            }
        }
    }

    QImage image(width, height, alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull())
        return {};
    const bool topDown = descriptor & 0x20;
    const bool rightToLeft = descriptor & 0x10;
    for (int y = 0; y < height; ++y) {
        const int row = topDown ? y : height - 1 - y;
        auto* out = reinterpret_cast<QRgb*>(image.scanLine(row));
        const QRgb* in = pixels.data() + qint64(y) * width;
        for (int x = 0; x < width; ++x)
            out[rightToLeft ? width - 1 - x : x] = in[x];
    }
    return image;
}

} // namespace kavori
