#include "BmpDecoder.h"

#include <QBuffer>
#include <QImageReader>
#include <QVector>
#include <QtEndian>

#include <algorithm>
#include <optional>
#include <vector>

namespace kavori {

namespace {

constexpr qint64 kFileHeaderSize = 14;
constexpr qint64 kMaxPixels = 100'000'000; // refuse sizes no real picture has
constexpr qint64 kMaxSide = 1'000'000;
// A run-length picture may leave most pixels unset, but not this many per byte of data:
// beyond it the header is damaged, and the memory is not taken.
constexpr qint64 kRlePixelsPerByte = 32768;
constexpr qint64 kRleFreePixels = qint64(1) << 20;

enum class Coding { Rgb, BitFields, Rle8, Rle4, Rle24, Jpeg, Png };

// One colour channel of a bit-field pixel, scaled exactly to 0..255.
struct Channel {
    quint32 mask = 0;
    int shift = 0;
    quint64 max = 0;

    explicit Channel(quint32 m = 0) : mask(m)
    {
        if (mask == 0)
            return;
        while (!((mask >> shift) & 1u))
            ++shift;
        max = mask >> shift;
    }
    int operator()(quint32 pixel) const
    {
        return max ? int((quint64((pixel & mask) >> shift) * 255 + max / 2) / max) : 0;
    }
};

struct Layout {
    qint64 width = 0;
    qint64 height = 0;
    bool topDown = false;
    int bpp = 0;
    Coding coding = Coding::Rgb;
    quint32 masks[4] = {}; // red, green, blue, alpha
    QVector<QRgb> palette;
    qint64 pixelsAt = 0; // where the pixel data starts
    qint64 stride = 0;   // bytes per row of uncompressed data
};

quint16 u16(const uchar* p)
{
    return qFromLittleEndian<quint16>(p);
}

quint32 u32(const uchar* p)
{
    return qFromLittleEndian<quint32>(p);
}

bool knownHeaderSize(quint32 size)
{
    return size == 12 || (size >= 16 && size <= 64) || size == 108 || size == 124;
}

// Reads the headers, palette and masks, checking every size against the data. For icons the
// height counts the colour rows and the mask rows.
std::optional<Layout> parse(const QByteArray& data, bool icon)
{
    const auto* p = reinterpret_cast<const uchar*>(data.constData());
    const qint64 n = data.size();
    qint64 dib = 0;
    std::optional<qint64> fileOffset;
    if (!icon && n >= 2 && p[0] == 'B' && p[1] == 'M') {
        dib = kFileHeaderSize;
        if (n >= kFileHeaderSize)
            fileOffset = u32(p + 10);
    }
    if (n - dib < 16)
        return std::nullopt;
    const uchar* h = p + dib;
    const quint32 headerSize = u32(h);
    if (!knownHeaderSize(headerSize) || headerSize > n - dib)
        return std::nullopt;
    const bool core = headerSize == 12;
    const bool windows = headerSize == 40 || headerSize == 52 || headerSize == 56 ||
                         headerSize == 108 || headerSize == 124;

    Layout l;
    quint32 compression = 0;
    quint32 coloursUsed = 0;
    if (core) {
        l.width = u16(h + 4);
        l.height = u16(h + 6);
        l.bpp = u16(h + 10);
    } else {
        // Short OS/2 2.x headers end early; the fields they leave out are zero.
        l.width = qint32(u32(h + 4));
        l.height = qint32(u32(h + 8));
        l.bpp = u16(h + 14);
        if (headerSize >= 20)
            compression = u32(h + 16);
        if (headerSize >= 36)
            coloursUsed = u32(h + 32);
    }
    if (l.height < 0) {
        l.topDown = true;
        l.height = -l.height;
    }
    if (icon)
        l.height /= 2;
    if (l.width <= 0 || l.height <= 0 || l.width > kMaxSide || l.height > kMaxSide ||
        l.width * l.height > kMaxPixels)
        return std::nullopt;

    switch (compression) {
    case 0:
        l.coding = Coding::Rgb;
        break;
    case 1:
        l.coding = Coding::Rle8;
        break;
    case 2:
        l.coding = Coding::Rle4;
        break;
    case 3:
        if (!windows)
            return std::nullopt; // OS/2 Huffman 1D, a fax coding no one writes
        l.coding = Coding::BitFields;
        break;
    case 4:
        l.coding = windows ? Coding::Jpeg : Coding::Rle24;
        break;
    case 5:
        l.coding = Coding::Png;
        break;
    case 6: // bit fields with an alpha mask
        l.coding = Coding::BitFields;
        break;
    default:
        return std::nullopt;
    }
    const bool embedded = l.coding == Coding::Jpeg || l.coding == Coding::Png;
    if (icon && embedded)
        return std::nullopt;
    switch (l.coding) {
    case Coding::Rgb:
        if (l.bpp != 1 && l.bpp != 2 && l.bpp != 4 && l.bpp != 8 && l.bpp != 16 && l.bpp != 24 &&
            l.bpp != 32)
            return std::nullopt;
        break;
    case Coding::BitFields:
        if (l.bpp != 16 && l.bpp != 24 && l.bpp != 32)
            return std::nullopt;
        break;
    case Coding::Rle8:
        if (l.bpp != 8)
            return std::nullopt;
        break;
    case Coding::Rle4:
        if (l.bpp != 4)
            return std::nullopt;
        break;
    case Coding::Rle24:
        if (l.bpp != 24)
            return std::nullopt;
        break;
    default:
        break;
    }

    // Masks: inside headers of 52 bytes and more, else just after the 40-byte header.
    qint64 at = dib + headerSize;
    if (l.coding == Coding::BitFields) {
        const int count = compression == 6 ? 4 : 3;
        if (headerSize >= 52) {
            for (int i = 0; i < 3; ++i)
                l.masks[i] = u32(h + 40 + 4 * i);
            if (headerSize >= 56)
                l.masks[3] = u32(h + 52);
        } else {
            if (n - at < 4 * count)
                return std::nullopt;
            for (int i = 0; i < count; ++i)
                l.masks[i] = u32(p + at + 4 * i);
            at += 4 * count;
        }
    } else if (l.bpp == 16) {
        l.masks[0] = 0x7C00;
        l.masks[1] = 0x03E0;
        l.masks[2] = 0x001F;
    } else if (l.bpp == 32) {
        l.masks[0] = 0xFF0000;
        l.masks[1] = 0xFF00;
        l.masks[2] = 0xFF;
    }
    if (windows && l.coding == Coding::Rgb && headerSize >= 56 && (l.bpp == 16 || l.bpp == 32))
        l.masks[3] = u32(h + 52);
    if (icon && l.bpp == 32 && l.coding == Coding::Rgb)
        l.masks[3] = 0xFF000000u;

    // The palette runs up to the pixel data when the file says where that is, so a short
    // OS/2 palette or a long one does not shift the pixels.
    const qint64 entrySize = core ? 3 : 4;
    const bool offsetUsable = fileOffset && *fileOffset >= at && *fileOffset < n;
    const qint64 declared = l.bpp <= 8 && !embedded
                                ? (coloursUsed ? qint64(coloursUsed) : qint64(1) << l.bpp)
                                : qint64(coloursUsed);
    qint64 entries = declared;
    if (offsetUsable) {
        entries = qMin(entries, (*fileOffset - at) / entrySize);
        l.pixelsAt = *fileOffset;
    } else {
        if (declared > (n - at) / entrySize)
            return std::nullopt;
        l.pixelsAt = at + declared * entrySize;
    }
    if (l.bpp <= 8 && !embedded) {
        const qint64 used = qMin(entries, qint64(1) << l.bpp);
        l.palette.reserve(int(used));
        for (qint64 i = 0; i < used; ++i) {
            const uchar* c = p + at + i * entrySize;
            l.palette.append(qRgb(c[2], c[1], c[0]));
        }
    }

    const qint64 available = n - l.pixelsAt;
    if (available <= 0)
        return std::nullopt;
    switch (l.coding) {
    case Coding::Rgb:
    case Coding::BitFields: {
        // The last row may lack its padding; any other shortfall means a damaged header.
        l.stride = (l.width * l.bpp + 31) / 32 * 4;
        if (l.stride * (l.height - 1) + (l.width * l.bpp + 7) / 8 > available)
            return std::nullopt;
        break;
    }
    case Coding::Rle8:
    case Coding::Rle4:
    case Coding::Rle24:
        if (l.width * l.height > qMax(kRleFreePixels, available * kRlePixelsPerByte))
            return std::nullopt;
        break;
    default:
        break;
    }
    return l;
}

QRgb paletteColour(const Layout& l, uint index)
{
    return index < uint(l.palette.size()) ? l.palette[int(index)] : qRgb(0, 0, 0);
}

// Decodes uncompressed rows one at a time.
class RowDecoder {
public:
    explicit RowDecoder(const Layout& l)
        : m_l(l), m_red(l.masks[0]), m_green(l.masks[1]), m_blue(l.masks[2]), m_alpha(l.masks[3]),
          m_direct(l.bpp > 8 && !(l.bpp == 24 && l.coding == Coding::Rgb))
    {}

    // The picture line that the row'th row of the data is.
    int lineOf(qint64 row) const { return int(m_l.topDown ? row : m_l.height - 1 - row); }

    // Returns whether the row's alpha held anything.
    bool decode(const uchar* src, QRgb* out) const
    {
        bool anyAlpha = false;
        for (qint64 x = 0; x < m_l.width; ++x) {
            if (m_l.bpp <= 8) {
                const qint64 bit = x * m_l.bpp;
                const uint index =
                    (src[bit / 8] >> (8 - m_l.bpp - bit % 8)) & ((1u << m_l.bpp) - 1);
                out[x] = paletteColour(m_l, index);
            } else if (!m_direct) {
                const uchar* c = src + 3 * x;
                out[x] = qRgb(c[2], c[1], c[0]);
            } else {
                quint32 v = 0;
                const uchar* c = src + x * (m_l.bpp / 8);
                if (m_l.bpp == 16)
                    v = u16(c);
                else if (m_l.bpp == 24)
                    v = quint32(c[0]) | quint32(c[1]) << 8 | quint32(c[2]) << 16;
                else
                    v = u32(c);
                const int a = m_l.masks[3] ? m_alpha(v) : 255;
                anyAlpha = anyAlpha || (m_l.masks[3] && a != 0);
                out[x] = qRgba(m_red(v), m_green(v), m_blue(v), a);
            }
        }
        return anyAlpha;
    }

private:
    const Layout& m_l;
    Channel m_red, m_green, m_blue, m_alpha;
    bool m_direct;
};

// Uncompressed rows. Returns whether an alpha channel held anything.
bool decodeRows(const Layout& l, const uchar* pixels, QImage& image)
{
    const RowDecoder rows(l);
    bool anyAlpha = false;
    for (qint64 row = 0; row < l.height; ++row)
        anyAlpha |= rows.decode(pixels + row * l.stride,
                                reinterpret_cast<QRgb*>(image.scanLine(rows.lineOf(row))));
    return anyAlpha;
}

// An opaque uncompressed picture averaged over blocks of factor x factor pixels as it is
// decoded, so a large picture shown small never exists at full size. Edge blocks may be
// partial.
QImage decodeReduced(const Layout& l, const uchar* pixels, qint64 factor)
{
    const qint64 outWidth = (l.width + factor - 1) / factor;
    const qint64 outHeight = (l.height + factor - 1) / factor;
    QImage image(int(outWidth), int(outHeight), QImage::Format_RGB32);
    if (image.isNull())
        return {};
    const RowDecoder rows(l);
    std::vector<QRgb> line(size_t(l.width));
    std::vector<quint64> sums(size_t(outWidth) * 3);
    for (qint64 oy = 0; oy < outHeight; ++oy) {
        std::fill(sums.begin(), sums.end(), 0);
        const qint64 top = oy * factor, bottom = qMin(l.height, top + factor);
        for (qint64 y = top; y < bottom; ++y) {
            const qint64 row = l.topDown ? y : l.height - 1 - y;
            rows.decode(pixels + row * l.stride, line.data());
            for (qint64 x = 0; x < l.width; ++x) {
                quint64* sum = &sums[size_t(x / factor) * 3];
                sum[0] += quint64(qRed(line[size_t(x)]));
                sum[1] += quint64(qGreen(line[size_t(x)]));
                sum[2] += quint64(qBlue(line[size_t(x)]));
            }
        }
        auto* out = reinterpret_cast<QRgb*>(image.scanLine(int(oy)));
        for (qint64 ox = 0; ox < outWidth; ++ox) {
            const quint64 n =
                quint64((bottom - top) * (qMin(l.width, (ox + 1) * factor) - ox * factor));
            const quint64* sum = &sums[size_t(ox) * 3];
            out[ox] = qRgb(int((sum[0] + n / 2) / n), int((sum[1] + n / 2) / n),
                           int((sum[2] + n / 2) / n));
        }
    }
    return image;
}

// RLE8, RLE4 and RLE24: runs, absolute stretches padded to words, end of line, end of picture
// and deltas. The picture starts transparent, so what the data skips or never reaches is the
// same on every decode.
void decodeRuns(const Layout& l, const uchar* s, const uchar* end, QImage& image)
{
    image.fill(0);
    qint64 x = 0, row = 0;
    auto put = [&](QRgb c) {
        if (x < l.width && row < l.height)
            reinterpret_cast<QRgb*>(image.scanLine(int(l.topDown ? row : l.height - 1 - row)))[x] =
                c;
        ++x;
    };
    const int pixelBytes = l.coding == Coding::Rle24 ? 3 : 1;
    while (row < l.height && end - s >= 2) {
        const int count = s[0];
        if (count > 0) {
            if (end - s < 1 + pixelBytes)
                return;
            const uchar* v = s + 1;
            s += 1 + pixelBytes;
            if (x >= l.width)
                continue;
            for (int i = 0; i < count; ++i) {
                if (l.coding == Coding::Rle24)
                    put(qRgb(v[2], v[1], v[0]));
                else if (l.coding == Coding::Rle4)
                    put(paletteColour(l, (i & 1) ? (v[0] & 15u) : uint(v[0] >> 4)));
                else
                    put(paletteColour(l, v[0]));
            }
            continue;
        }
        const int code = s[1];
        s += 2;
        if (code == 0) {
            x = 0;
            ++row;
        } else if (code == 1) {
            return;
        } else if (code == 2) {
            if (end - s < 2)
                return;
            x += s[0];
            row += s[1];
            s += 2;
        } else {
            const qint64 bytes = l.coding == Coding::Rle4    ? (code + 1) / 2
                                 : l.coding == Coding::Rle24 ? 3 * code
                                                             : code;
            const qint64 have = qMin<qint64>(bytes, end - s);
            for (int i = 0; i < code; ++i) {
                if (l.coding == Coding::Rle4) {
                    if (i / 2 >= have)
                        break;
                    put(paletteColour(l, (i & 1) ? (s[i / 2] & 15u) : uint(s[i / 2] >> 4)));
                } else if (l.coding == Coding::Rle24) {
                    if (3 * i + 2 >= have)
                        break;
                    put(qRgb(s[3 * i + 2], s[3 * i + 1], s[3 * i]));
                } else {
                    if (i >= have)
                        break;
                    put(paletteColour(l, s[i]));
                }
            }
            if (have < bytes)
                return;
            s += bytes + (bytes & 1);
        }
    }
}

QImage decodeEmbedded(const QByteArray& data, const Layout& l)
{
    return QImage::fromData(data.mid(l.pixelsAt), l.coding == Coding::Jpeg ? "JPEG" : "PNG");
}

bool allOpaque(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(line[x]) != 255)
                return false;
    }
    return true;
}

void makeOpaque(QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] |= 0xFF000000u;
    }
}

// Applies the 1-bit mask after an icon's colour rows: set bits are transparent.
void applyIconMask(const Layout& l, const QByteArray& dib, QImage& image)
{
    const qint64 maskStride = (l.width + 31) / 32 * 4;
    const qint64 maskAt = l.pixelsAt + l.stride * l.height;
    if (maskStride * (l.height - 1) + (l.width + 7) / 8 > dib.size() - maskAt)
        return; // no mask: the picture is opaque
    const auto* mask = reinterpret_cast<const uchar*>(dib.constData()) + maskAt;
    for (qint64 row = 0; row < l.height; ++row) {
        const uchar* bits = mask + row * maskStride;
        auto* out =
            reinterpret_cast<QRgb*>(image.scanLine(int(l.topDown ? row : l.height - 1 - row)));
        for (qint64 x = 0; x < l.width; ++x)
            if ((bits[x / 8] >> (7 - x % 8)) & 1)
                out[x] = 0;
    }
}

// The whole factor by which an opaque uncompressed picture can shrink on the way to fitting
// in target; 1 when it needs no shrinking or cannot shrink while decoding.
qint64 reduction(const Layout& l, const QSize& target)
{
    if (!target.isValid() || target.isEmpty() || l.masks[3] ||
        (l.coding != Coding::Rgb && l.coding != Coding::BitFields) ||
        (l.width <= target.width() && l.height <= target.height()))
        return 1;
    const QSize fitted =
        QSize(int(l.width), int(l.height)).scaled(target, Qt::KeepAspectRatio).expandedTo({1, 1});
    return qMin(l.width / fitted.width(), l.height / fitted.height());
}

QImage decode(const QByteArray& data, bool icon, const QSize& target = QSize())
{
    const std::optional<Layout> l = parse(data, icon);
    if (!l)
        return {};
    if (l->coding == Coding::Jpeg || l->coding == Coding::Png)
        return decodeEmbedded(data, *l);
    if (const qint64 factor = reduction(*l, target); factor >= 2)
        return decodeReduced(*l, reinterpret_cast<const uchar*>(data.constData()) + l->pixelsAt,
                             factor);
    QImage image(int(l->width), int(l->height), QImage::Format_ARGB32);
    if (image.isNull())
        return {};
    const auto* p = reinterpret_cast<const uchar*>(data.constData());
    if (l->coding == Coding::Rle8 || l->coding == Coding::Rle4 || l->coding == Coding::Rle24) {
        decodeRuns(*l, p + l->pixelsAt, p + data.size(), image);
    } else {
        const bool anyAlpha = decodeRows(*l, p + l->pixelsAt, image);
        // An alpha mask over all-zero alpha is a writer's habit, not an invisible picture.
        if (l->masks[3] && !anyAlpha)
            makeOpaque(image);
        if (icon && !anyAlpha)
            applyIconMask(*l, data, image);
    }
    if (allOpaque(image))
        image.reinterpretAsFormat(QImage::Format_RGB32);
    return image;
}

} // namespace

QImage DecodeBmp(const QByteArray& data, const QSize& target)
{
    return decode(data, false, target);
}

QImage DecodeIconBitmap(const QByteArray& dib)
{
    return decode(dib, true);
}

QSize BmpSize(const QByteArray& data)
{
    const std::optional<Layout> l = parse(data, false);
    if (!l)
        return {};
    if (l->coding == Coding::Jpeg || l->coding == Coding::Png) {
        QByteArray bytes = data.mid(l->pixelsAt);
        QBuffer buffer(&bytes);
        QImageReader reader(&buffer, l->coding == Coding::Jpeg ? "jpeg" : "png");
        return reader.size();
    }
    return QSize(int(l->width), int(l->height));
}

bool LooksLikeBmp(const QByteArray& data)
{
    if (data.startsWith("BM"))
        return true;
    return data.size() >= 4 &&
           knownHeaderSize(u32(reinterpret_cast<const uchar*>(data.constData())));
}

} // namespace kavori
