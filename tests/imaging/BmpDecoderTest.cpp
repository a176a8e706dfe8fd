#include "imaging/formats/BmpDecoder.h"
#include "imaging/PictureLoader.h"
#include "support/KavoriTest.h"

#include <QBuffer>
#include <QtEndian>

#include <cmath>

#include <functional>

using namespace kavori;
using namespace kavori::test;

namespace {

using Picture = std::function<QRgb(int x, int y)>;

class Bytes {
public:
    Bytes& u8(int v)
    {
        m_data.append(char(v & 0xff));
        return *this;
    }
    Bytes& u16(int v) { return u8(v).u8(v >> 8); }
    Bytes& u32(quint32 v) { return u16(int(v & 0xffff)).u16(int(v >> 16)); }
    Bytes& raw(const QByteArray& b)
    {
        m_data.append(b);
        return *this;
    }
    QByteArray data() const { return m_data; }

private:
    QByteArray m_data;
};

// A DIB laid out field by field as a writer of that header version would.
struct Dib {
    int headerSize = 40; // 12 is OS/2 1.x; other sizes under 40, and 64, are OS/2 2.x
    int width = 0;
    int height = 0; // negative: top-down
    int bpp = 24;
    int compression = 0;
    quint32 coloursUsed = 0;
    QList<QRgb> palette;
    QList<quint32> masks; // after a 40-byte header, or inside longer ones
    QByteArray pixels;

    QByteArray header() const
    {
        Bytes h;
        if (headerSize == 12) {
            h.u32(12).u16(width).u16(height).u16(1).u16(bpp);
            return h.data();
        }
        h.u32(quint32(headerSize)).u32(quint32(width)).u32(quint32(height)).u16(1).u16(bpp);
        h.u32(quint32(compression)).u32(quint32(pixels.size())).u32(2835).u32(2835);
        h.u32(coloursUsed).u32(0);
        QByteArray bytes = h.data();
        bytes.resize(headerSize, 0); // short OS/2 headers simply end
        const bool windows = headerSize >= 52 && headerSize != 64;
        if (windows)
            for (int i = 0; i < masks.size() && 40 + 4 * i + 4 <= headerSize; ++i)
                qToLittleEndian<quint32>(masks[i], bytes.data() + 40 + 4 * i);
        return bytes;
    }
    QByteArray colourTable() const
    {
        Bytes b;
        if (headerSize == 40)
            for (quint32 m : masks)
                b.u32(m);
        for (QRgb c : palette) {
            b.u8(qBlue(c)).u8(qGreen(c)).u8(qRed(c));
            if (headerSize != 12)
                b.u8(0);
        }
        return b.data();
    }
    QByteArray bare() const { return header() + colourTable() + pixels; }
    QByteArray file() const
    {
        const QByteArray front = header() + colourTable();
        Bytes b;
        b.raw("BM").u32(quint32(14 + front.size() + pixels.size())).u16(0).u16(0);
        b.u32(quint32(14 + front.size()));
        return b.raw(front).raw(pixels).data();
    }
};

Dib makeDib(int width, int height, int bpp, int compression = 0, int headerSize = 40)
{
    Dib d;
    d.headerSize = headerSize;
    d.width = width;
    d.height = height;
    d.bpp = bpp;
    d.compression = compression;
    return d;
}

// Rows bottom-up (or top-down), each padded to four bytes; pack(x, y) appends one pixel's bits.
QByteArray packRows(int width, int height, int bpp, bool topDown,
                    const std::function<quint32(int, int)>& value)
{
    QByteArray out;
    const int stride = (width * bpp + 31) / 32 * 4;
    for (int row = 0; row < height; ++row) {
        const int y = topDown ? row : height - 1 - row;
        QByteArray line(stride, 0);
        for (int x = 0; x < width; ++x) {
            const quint32 v = value(x, y);
            if (bpp < 8) {
                const int bit = x * bpp;
                line[bit / 8] = char(uchar(line[bit / 8]) | (v << (8 - bpp - bit % 8)));
            } else {
                for (int k = 0; k < bpp / 8; ++k)
                    line[x * (bpp / 8) + k] = char((v >> (8 * k)) & 0xff);
            }
        }
        out += line;
    }
    return out;
}

QList<QRgb> rampPalette(int count)
{
    QList<QRgb> palette;
    for (int i = 0; i < count; ++i)
        palette << qRgb((i * 37) & 0xff, (i * 91 + 13) & 0xff, 255 - i);
    return palette;
}

// Index of a sample pixel for a palette of count entries.
quint32 sampleIndex(int x, int y, int count)
{
    return quint32(x * 3 + y * 5 + x * y) % quint32(count);
}

// Compares every pixel and reports the first difference.
void expectPicture(const QImage& image, int width, int height, const Picture& expected,
                   const std::string& what)
{
    ASSERT_EQ(image.size(), QSize(width, height)) << what;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (image.pixel(x, y) != expected(x, y)) {
                ADD_FAILURE() << what << ": pixel " << x << "," << y << " is " << std::hex
                              << image.pixel(x, y) << ", expected " << expected(x, y);
                return;
            }
}

// A channel of v under mask, scaled to 8 bits as exactly as the arithmetic allows.
int scaled(quint32 v, quint32 mask)
{
    if (mask == 0)
        return 0;
    int shift = 0;
    while (!((mask >> shift) & 1u))
        ++shift;
    const double max = double(mask >> shift);
    return int(std::floor(double((v & mask) >> shift) * 255.0 / max + 0.5));
}

} // namespace

class BmpDecoderTest : public KavoriTest {};

TEST_F(BmpDecoderTest, EveryHeaderVersionAndDepth)
{
    const int width = 7, height = 3; // odd sizes exercise partial bytes and row padding
    for (int headerSize : {12, 16, 24, 40, 52, 56, 64, 108, 124}) {
        for (int bpp : {1, 2, 4, 8, 16, 24, 32}) {
            for (bool topDown : {false, true}) {
                if (topDown && headerSize == 12)
                    continue; // the OS/2 1.x height is unsigned
                Dib d = makeDib(width, topDown ? -height : height, bpp, 0, headerSize);
                Picture expected;
                if (bpp <= 8) {
                    const int count = 1 << bpp;
                    d.palette = rampPalette(count);
                    const QList<QRgb> palette = d.palette;
                    d.pixels = packRows(width, height, bpp, topDown,
                                        [&](int x, int y) { return sampleIndex(x, y, count); });
                    expected = [palette, count](int x, int y) {
                        return palette[int(sampleIndex(x, y, count))];
                    };
                } else if (bpp == 16) {
                    // 5-5-5 by default; white must come out as 255, not 248.
                    auto v = [](int x, int y) { return quint32(x * 4 + y * 9 + (x == 0) * 31); };
                    d.pixels = packRows(width, height, 16, topDown, [&](int x, int y) {
                        return v(x, y) << 10 | (31 - v(x, y) % 32) << 5 | quint32(y * 10);
                    });
                    expected = [v](int x, int y) {
                        const int r = int(v(x, y) % 32), g = 31 - r, b = y * 10;
                        return qRgb((r * 255 + 15) / 31, (g * 255 + 15) / 31, (b * 255 + 15) / 31);
                    };
                } else {
                    auto c = [](int x, int y) { return qRgb(x * 36, y * 120, 255 - x * y * 11); };
                    d.pixels = packRows(width, height, bpp, topDown, [&](int x, int y) {
                        // The fourth byte of a 32-bit pixel is not alpha without a mask.
                        return (c(x, y) & 0xffffff) | (bpp == 32 ? 0x5A000000u : 0u);
                    });
                    expected = c;
                }
                const std::string what = "header " + std::to_string(headerSize) + ", " +
                                         std::to_string(bpp) + " bits" +
                                         (topDown ? ", top-down" : "");
                expectPicture(DecodeBmp(d.file()), width, height, expected, what);
                expectPicture(DecodeBmp(d.bare()), width, height, expected, what + ", bare");
                EXPECT_EQ(BmpSize(d.file()), QSize(width, height)) << what;
            }
        }
    }
}

TEST_F(BmpDecoderTest, BitFieldsOfAnyMaskAndAlpha)
{
    struct Layout {
        const char* name;
        int bpp;
        quint32 r, g, b, a;
        bool alphaCompression; // the 40-byte header's compression 6
    };
    const QList<Layout> layouts = {
        {"5-6-5", 16, 0xF800, 0x07E0, 0x001F, 0, false},
        {"5-5-5", 16, 0x7C00, 0x03E0, 0x001F, 0, false},
        {"2-3-1", 16, 0x0030, 0x000E, 0x0001, 0, false},
        {"4-4-4-4", 16, 0x0F00, 0x00F0, 0x000F, 0xF000, false},
        {"1-5-5-5", 16, 0x7C00, 0x03E0, 0x001F, 0x8000, true},
        {"11-11-10", 32, 0xFFE00000u, 0x001FFC00, 0x000003FF, 0, false},
        {"10-10-10-2", 32, 0x3FF00000, 0x000FFC00, 0x000003FF, 0xC0000000u, false},
        {"8-8-8-8 BGRA", 32, 0x0000FF00, 0x00FF0000, 0xFF000000u, 0x000000FF, true},
        {"12-bit blue", 32, 0, 0x000FF000, 0x00000FFF, 0, false},
        {"8-8-8 in 24", 24, 0x0000FF, 0x00FF00, 0xFF0000, 0, false},
    };
    const int width = 5, height = 4;
    for (const Layout& l : layouts) {
        const quint32 all = l.r | l.g | l.b | l.a;
        // Pixel values spread over every bit, including the all-ones and all-zero values.
        auto value = [&](int x, int y) {
            if (x == 0)
                return y == 0 ? all : 0u;
            return quint32(quint64(0x9E3779B1u) * quint32(x * 7 + y * 13 + 1) >> 3) & all;
        };
        Picture expected = [&](int x, int y) {
            const quint32 v = value(x, y);
            return qRgba(scaled(v, l.r), scaled(v, l.g), scaled(v, l.b),
                         l.a ? scaled(v, l.a) : 255);
        };
        for (int headerSize : {40, 52, 56, 108, 124}) {
            if (l.a && headerSize < 56 && !(headerSize == 40 && l.alphaCompression))
                continue; // these headers cannot give an alpha mask
            Dib d = makeDib(width, height, l.bpp, headerSize == 40 && l.alphaCompression ? 6 : 3,
                            headerSize);
            d.masks = {l.r, l.g, l.b};
            if (l.a)
                d.masks << l.a;
            d.pixels = packRows(width, height, l.bpp, false, value);
            const std::string what = std::string(l.name) + ", header " + std::to_string(headerSize);
            expectPicture(DecodeBmp(d.file()), width, height, expected, what);
            expectPicture(DecodeBmp(d.bare()), width, height, expected, what + ", bare");
        }
    }

    // Exact scaling: full channels are 255, and 5-bit 16 is 132 (16 * 255 / 31 rounded).
    Dib d = makeDib(2, 1, 16, 3);
    d.masks = {0xF800, 0x07E0, 0x001F};
    d.pixels = packRows(2, 1, 16, false, [](int x, int) { return x ? 0xFFFFu : 16u << 11; });
    const QImage exact = DecodeBmp(d.file());
    EXPECT_EQ(exact.pixel(1, 0), qRgb(255, 255, 255));
    EXPECT_EQ(qRed(exact.pixel(0, 0)), 132);

    // A 32-bit alpha mask over alpha bytes that are all zero is an opaque picture; a V5 BI_RGB
    // picture with an alpha mask keeps its alpha.
    Dib zero = makeDib(2, 2, 32, 3, 124);
    zero.masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000u};
    zero.pixels = packRows(2, 2, 32, false, [](int x, int y) { return quint32(x * 100 + y); });
    expectPicture(
        DecodeBmp(zero.file()), 2, 2, [](int x, int y) { return qRgb(0, 0, x * 100 + y); },
        "zero alpha");
    zero.compression = 0;
    zero.pixels = packRows(2, 2, 32, false, [](int x, int) { return x ? 0x80FF0000u : 0u; });
    expectPicture(
        DecodeBmp(zero.file()), 2, 2,
        [](int x, int) { return x ? qRgba(255, 0, 0, 128) : qRgba(0, 0, 0, 0); }, "V5 RGB alpha");
}

TEST_F(BmpDecoderTest, PalettesShorterOrLongerThanTheDepth)
{
    const int width = 6, height = 2;
    const QList<QRgb> four = {qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255), qRgb(9, 9, 9)};
    auto index = [](int x, int y) { return quint32(x + y) % 4; };
    const Picture expected = [&](int x, int y) { return four[int(index(x, y))]; };

    // OS/2 1.x and short OS/2 2.x headers have no colour count: the file's data offset
    // tells where a four-entry palette ends, and the pixels are not looked for further on.
    for (int headerSize : {12, 16, 40}) {
        Dib d = makeDib(width, height, 8, 0, headerSize);
        d.palette = four;
        d.pixels = packRows(width, height, 8, false, index);
        expectPicture(DecodeBmp(d.file()), width, height, expected,
                      "short palette, header " + std::to_string(headerSize));
        d.coloursUsed = 4; // a bare DIB needs the count
        if (headerSize == 40)
            expectPicture(DecodeBmp(d.bare()), width, height, expected, "counted, bare");
    }

    // A palette of 300 entries for 8 bits, and of 20 for 4 bits: the extra entries are skipped.
    for (int bpp : {8, 4}) {
        Dib d = makeDib(width, height, bpp);
        d.palette = four + rampPalette(bpp == 8 ? 296 : 16);
        d.coloursUsed = quint32(d.palette.size());
        d.pixels = packRows(width, height, bpp, false, index);
        const std::string what = "long palette, " + std::to_string(bpp) + " bits";
        expectPicture(DecodeBmp(d.file()), width, height, expected, what);
        expectPicture(DecodeBmp(d.bare()), width, height, expected, what + ", bare");
    }

    // Indices past a short palette are black.
    Dib d = makeDib(2, 1, 8);
    d.palette = four;
    d.coloursUsed = 4;
    d.pixels = packRows(2, 1, 8, false, [](int x, int) { return x ? 200u : 1u; });
    expectPicture(
        DecodeBmp(d.file()), 2, 1, [](int x, int) { return x ? qRgb(0, 0, 0) : qRgb(0, 255, 0); },
        "index past the palette");
}

TEST_F(BmpDecoderTest, RunLengthPicturesWithDeltasAndGaps)
{
    const QList<QRgb> palette = {qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255),
                                 qRgb(255, 255, 255)};
    const QRgb unset = 0; // transparent
    auto expect = [&](const QList<QList<int>>& rows) {
        return [rows, palette, unset](int x, int y) {
            const int i = rows[y][x];
            return i < 0 ? unset : palette[i];
        };
    };
    // 6 x 4, bottom-up: a run, an odd absolute stretch and its pad byte, end of line, a delta
    // that skips the rest of one row and the start of the next, and end of picture early.
    const QByteArray rle8 = QByteArray::fromHex("0301"
                                                "0003020300"
                                                "00"
                                                "0000"
                                                "0202"
                                                "00020201"
                                                "0203"
                                                "0000"
                                                "000400010203"
                                                "0001");
    const Picture rle8Picture = expect(
        {{0, 1, 2, 3, -1, -1}, {-1, -1, -1, -1, 3, 3}, {2, 2, -1, -1, -1, -1}, {1, 1, 1, 2, 3, 0}});
    // RLE4: runs alternate their two nibbles, absolute stretches of 5 nibbles pad to a word.
    const QByteArray rle4 = QByteArray::fromHex("0512"
                                                "0130"
                                                "0000"
                                                "0222"
                                                "00020201"
                                                "0233"
                                                "0000"
                                                "0005012300"
                                                "00"
                                                "0001");
    const Picture rle4Picture = expect(
        {{0, 1, 2, 3, 0, -1}, {-1, -1, -1, -1, 3, 3}, {2, 2, -1, -1, -1, -1}, {1, 2, 1, 2, 1, 3}});
    for (bool four : {false, true}) {
        Dib d = makeDib(6, 4, four ? 4 : 8, four ? 2 : 1);
        d.palette = palette;
        d.coloursUsed = 4;
        d.pixels = four ? rle4 : rle8;
        const Picture& expected = four ? rle4Picture : rle8Picture;
        const std::string what = four ? "RLE4" : "RLE8";
        expectPicture(DecodeBmp(d.file()), 6, 4, expected, what);
        expectPicture(DecodeBmp(d.bare()), 6, 4, expected, what + ", bare");

        // Data that ends early, or runs past the row: what is set stays, the rest is clear.
        d.pixels = four ? rle4.left(4) : rle8.left(7);
        const Picture firstRow = [&](int x, int y) { return y == 3 ? expected(x, y) : unset; };
        expectPicture(DecodeBmp(d.file()), 6, 4, firstRow, what + " cut short");
        d.pixels = QByteArray::fromHex(four ? "ff12" : "ff01") + QByteArray::fromHex("0000");
        const QImage clipped = DecodeBmp(d.file());
        ASSERT_EQ(clipped.size(), QSize(6, 4));
        EXPECT_EQ(clipped.pixel(5, 3), palette[four ? 2 : 1]) << what;
        EXPECT_EQ(clipped.pixel(0, 2), unset) << what << ": a run does not wrap";
    }

    // OS/2 RLE24 (the 64-byte header's compression 4): runs and absolute stretches of colours.
    Dib d = makeDib(3, 2, 24, 4, 64);
    d.pixels = QByteArray::fromHex("020000ff"
                                   "01ff0000"
                                   "0000"
                                   "000300ff00ffffff00000000"
                                   "0001");
    expectPicture(
        DecodeBmp(d.file()), 3, 2,
        [](int x, int y) {
            static const QRgb rows[2][3] = {{qRgb(0, 255, 0), qRgb(255, 255, 255), qRgb(0, 0, 0)},
                                            {qRgb(255, 0, 0), qRgb(255, 0, 0), qRgb(0, 0, 255)}};
            return rows[y][x];
        },
        "RLE24");

    // A picture every pixel of which is set comes back opaque.
    Dib full = makeDib(4, 1, 8, 1);
    full.palette = palette;
    full.pixels = QByteArray::fromHex("04020001");
    EXPECT_FALSE(DecodeBmp(full.file()).hasAlphaChannel());
}

TEST_F(BmpDecoderTest, JpegAndPngInside)
{
    // The bytes inside are handed to the toolkit's own decoders, so they give its picture.
    QImage source(9, 5, QImage::Format_RGB32);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 9; ++x)
            source.setPixel(x, y, qRgb(x * 28, y * 60, 128));
    for (const char* format : {"PNG", "JPEG"}) {
        QByteArray encoded;
        QBuffer buffer(&encoded);
        buffer.open(QIODevice::WriteOnly);
        source.save(&buffer, format, 90);
        const QImage reference = QImage::fromData(encoded, format);
        Dib d = makeDib(9, 5, 0, QByteArray(format) == "PNG" ? 5 : 4);
        d.pixels = encoded;
        for (const QByteArray& bytes : {d.file(), d.bare()}) {
            EXPECT_EQ(BmpSize(bytes), QSize(9, 5)) << format;
            expectPicture(
                DecodeBmp(bytes), 9, 5, [&](int x, int y) { return reference.pixel(x, y); },
                format);
        }
    }
}

TEST_F(BmpDecoderTest, ImpossibleSizesAreRefused)
{
    Dib good = makeDib(5, 3, 24);
    good.pixels = packRows(5, 3, 24, false, [](int x, int y) { return quint32(x + y); });
    ASSERT_FALSE(DecodeBmp(good.file()).isNull());

    // The last row may lack its padding, but not a byte of pixels.
    EXPECT_FALSE(DecodeBmp(good.file().chopped(1)).isNull());
    EXPECT_TRUE(DecodeBmp(good.file().chopped(2)).isNull());

    auto refused = [](Dib d, const char* what) {
        EXPECT_TRUE(DecodeBmp(d.file()).isNull()) << what;
        EXPECT_TRUE(DecodeBmp(d.bare()).isNull()) << what;
        EXPECT_FALSE(BmpSize(d.file()).isValid()) << what;
    };
    const struct {
        const char* what;
        std::function<void(Dib&)> change;
    } impossible[] = {
        {"huge width", [](Dib& d) { d.width = 0x7FFFFFFF; }},
        {"more pixels than the file holds", [](Dib& d) { d.width = 9000, d.height = -9000; }},
        {"no rows", [](Dib& d) { d.height = 0; }},
        {"negative width", [](Dib& d) { d.width = -5; }},
        {"7 bits", [](Dib& d) { d.bpp = 7; }},
        {"unknown compression", [](Dib& d) { d.compression = 9; }},
        {"RLE8 at 24 bits", [](Dib& d) { d.compression = 1; }},
        {"OS/2 Huffman", [](Dib& d) { d.headerSize = 64, d.compression = 3; }},
        {"unknown header size", [](Dib& d) { d.headerSize = 70; }},
    };
    for (const auto& c : impossible) {
        Dib d = good;
        c.change(d);
        refused(d, c.what);
    }

    // A run-length picture of 9,000 x 9,000 from a few bytes would take 300 MB for nothing.
    Dib rle = makeDib(9000, 9000, 8, 1);
    rle.palette = {qRgb(1, 2, 3)};
    rle.coloursUsed = 1;
    rle.pixels = QByteArray::fromHex("01000001");
    refused(rle, "huge run-length picture");

    // A bare DIB whose palette count runs past the data.
    Dib counted = makeDib(2, 2, 8);
    counted.coloursUsed = 0x40000000;
    counted.palette = {qRgb(1, 2, 3)};
    counted.pixels = QByteArray(8, 0);
    EXPECT_TRUE(DecodeBmp(counted.bare()).isNull());
    EXPECT_TRUE(DecodeBmp(QByteArray()).isNull());
    EXPECT_TRUE(DecodeBmp("BM").isNull());
}

// Every cut and many flipped bytes of files of each kind: no crash, nothing read outside the
// data, and a damaged run-length file gives the same picture every time.
TEST_F(BmpDecoderTest, DamagedFilesNeverCrashAndDecodeAlike)
{
    QList<QByteArray> files;
    Dib d = makeDib(6, 4, 8, 1);
    d.palette = rampPalette(4);
    d.pixels = QByteArray::fromHex("0301000302030000000002020002020102030000000400010203"
                                   "0001");
    files << d.file() << d.bare();
    d.bpp = 4;
    d.compression = 2;
    d.pixels = QByteArray::fromHex("05120130000002220002020102330000000501230000000001");
    files << d.file();
    Dib os2 = makeDib(5, 3, 4, 0, 12);
    os2.palette = rampPalette(3);
    os2.pixels = packRows(5, 3, 4, false, [](int x, int y) { return quint32(x + y) % 3; });
    files << os2.file();
    Dib fields = makeDib(3, -3, 32, 3, 124);
    fields.masks = {0x3FF00000, 0x000FFC00, 0x000003FF, 0xC0000000u};
    fields.pixels = packRows(3, 3, 32, true, [](int x, int y) { return quint32(x * 999 + y); });
    files << fields.file();

    for (const QByteArray& file : files) {
        for (qsizetype cut = 0; cut <= file.size(); ++cut) {
            const QByteArray part = file.left(cut);
            const QImage first = DecodeBmp(part);
            EXPECT_EQ(DecodeBmp(part), first) << "cut at " << cut;
            EXPECT_EQ(BmpSize(part).isValid(), !first.isNull()) << "cut at " << cut;
        }
        for (int seed = 1; seed <= 300; ++seed) {
            QByteArray flipped = file;
            for (int k = 0; k < 2; ++k) {
                const qsizetype at = (seed * 7919 + k * 104729) % flipped.size();
                flipped[at] = char(flipped[at] ^ (1 << ((seed + k) % 8)));
            }
            const QImage first = DecodeBmp(flipped);
            EXPECT_EQ(DecodeBmp(flipped), first) << "seed " << seed;
        }
    }
}

TEST_F(BmpDecoderTest, BitmapFilesOpenByTheirNames)
{
    // A bare DIB as the clipboard writes it, under each bitmap name.
    Dib d = makeDib(3, -2, 24);
    d.pixels = packRows(3, 2, 24, true, [](int x, int y) { return quint32(x * 80 + y * 0x5000); });
    for (const char* name : {"bare.dib", "bare.BMP", "bare.rle"}) {
        const QString path = writeFile(QString::fromLatin1(name), d.bare());
        expectPicture(
            LoadPicture(path), 3, 2, [](int x, int y) { return qRgb(0, y * 0x50, x * 80); }, name);
        EXPECT_EQ(PictureSize(path), QSize(3, 2)) << name << ": top-down height is positive";
    }
    d.width = 400;
    d.height = -300;
    d.pixels = packRows(400, 300, 24, true, [](int, int) { return 0x336699u; });
    const QString big = writeFile(QStringLiteral("big.bmp"), d.file());
    const QImage fitted = LoadPicture(big, QSize(100, 100));
    EXPECT_EQ(fitted.size(), QSize(100, 75));
    EXPECT_EQ(fitted.pixel(50, 40), qRgb(0x33, 0x66, 0x99));

    // Shrinking while decoding averages whole blocks: 4 x 4 blocks of one colour keep it, and
    // a partial block at the edge averages the pixels it has.
    Dib blocks = makeDib(40, 20, 24);
    auto block = [](int x, int y) { return qRgb(x / 4 * 25, y / 4 * 50, 200); };
    blocks.pixels = packRows(40, 20, 24, false, [&](int x, int y) { return block(x, y); });
    expectPicture(
        DecodeBmp(blocks.file(), QSize(10, 10)), 10, 5,
        [&](int x, int y) { return block(4 * x, 4 * y); }, "blocks of 4");
    Dib nine = makeDib(9, -9, 8);
    nine.palette = rampPalette(0);
    for (int i = 0; i < 9; ++i)
        nine.palette << qRgb(i * 20, 0, 0);
    nine.pixels = packRows(9, 9, 8, true, [](int x, int) { return quint32(x); });
    expectPicture(
        DecodeBmp(nine.file(), QSize(2, 2)), 3, 3,
        [](int x, int) {
            return qRgb(x == 0 ? 30 : x == 1 ? 110 : 160, 0, 0);
        },
        "partial blocks");
    EXPECT_EQ(LoadPicture(writeFile(QStringLiteral("nine.bmp"), nine.file()), QSize(2, 2)).size(),
              QSize(2, 2));

    // A PNG named .bmp opens by its content; junk does not open and has no size.
    QImage png(4, 3, QImage::Format_RGB32);
    png.fill(Qt::yellow);
    const QString misnamed = root() + QStringLiteral("png.bmp");
    png.save(misnamed, "PNG");
    EXPECT_EQ(LoadPicture(misnamed).size(), QSize(4, 3));
    EXPECT_EQ(PictureSize(misnamed), QSize(4, 3));
    const QString junk = writeFile(QStringLiteral("junk.bmp"), "not a picture at all");
    EXPECT_TRUE(LoadPicture(junk).isNull());
    EXPECT_FALSE(PictureSize(junk).isValid());
    EXPECT_FALSE(PictureSize(root() + QStringLiteral("missing.dib")).isValid());
}
