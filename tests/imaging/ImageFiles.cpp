#include "ImageFiles.h"

#include <QBuffer>
#include <QDataStream>
#include <QImageWriter>
#include <QtEndian>

// The files are laid out field by field, one record to a line.
// clang-format off
namespace kavori::test {

namespace {

class Bytes {
public:
    Bytes& u8(int v) { m_data.append(char(v & 0xff)); return *this; }
    Bytes& u16(int v) { u8(v); return u8(v >> 8); }
    Bytes& u32(quint32 v) { u16(int(v & 0xffff)); return u16(int(v >> 16)); }
    Bytes& raw(const QByteArray& b) { m_data.append(b); return *this; }
    QByteArray data() const { return m_data; }
    qsizetype size() const { return m_data.size(); }

private:
    QByteArray m_data;
};

// GIF image data of literal codes only (a clear code before each keeps the code size fixed).
QByteArray lzwLiterals(const QList<int>& pixels)
{
    const int clear = 4, eoi = 5, size = 3;
    QList<int> codes = {clear};
    for (int p : pixels)
        codes << p << clear;
    codes << eoi;
    QByteArray out;
    quint32 bits = 0;
    int n = 0;
    for (int c : codes) {
        bits |= quint32(c) << n;
        n += size;
        while (n >= 8) {
            out.append(char(bits & 0xff));
            bits >>= 8;
            n -= 8;
        }
    }
    if (n > 0)
        out.append(char(bits & 0xff));
    return QByteArray(1, char(2)) + char(out.size()) + out + char(0);
}

QByteArray gifFrame(const QList<int>& pixels)
{
    return QByteArray::fromHex("21f904000a000000") + QByteArray::fromHex("2c0000000002000200") + char(0) +
           lzwLiterals(pixels);
}

QByteArray iconEntryImage(int size, QRgb colour)
{
    Bytes b;
    b.u32(40).u32(quint32(size)).u32(quint32(size * 2)).u16(1).u16(32).u32(0).u32(0).u32(0).u32(0).u32(0).u32(0);
    for (int i = 0; i < size * size; ++i)
        b.u8(qBlue(colour)).u8(qGreen(colour)).u8(qRed(colour)).u8(255);
    const int maskRow = ((size + 31) / 32) * 4;
    b.raw(QByteArray(maskRow * size, 0));
    return b.data();
}

quint32 colorref(QRgb c)
{
    return quint32(qRed(c)) | quint32(qGreen(c)) << 8 | quint32(qBlue(c)) << 16;
}

// Palette index of the sample at (x, y): four colours in vertical stripes, shifted per row.
int sampleIndex(int x, int y)
{
    return (x / 2 + y) % 4;
}
const QRgb kSamplePalette[4] = {qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255), qRgb(255, 255, 255)};

QByteArray pcxRle(const QByteArray& raw)
{
    QByteArray out;
    for (qsizetype i = 0; i < raw.size();) {
        qsizetype run = 1;
        while (i + run < raw.size() && raw[i + run] == raw[i] && run < 63)
            ++run;
        const uchar v = uchar(raw[i]);
        if (run > 1 || (v & 0xC0) == 0xC0)
            out.append(char(0xC0 | run)).append(char(v));
        else
            out.append(char(v));
        i += run;
    }
    return out;
}

} // namespace

QColor SampleColour(int x, int y)
{
    return QColor(kSamplePalette[sampleIndex(x, y)]);
}

QByteArray Gif(const QByteArray& signature, bool twoFrames)
{
    QByteArray g = signature + QByteArray::fromHex("02000200800000") + QByteArray::fromHex("000000ffffff");
    if (twoFrames)
        g += QByteArray::fromHex("21ff0b") + "NETSCAPE2.0" + QByteArray::fromHex("0301000000");
    g += gifFrame({0, 1, 1, 0});
    if (twoFrames)
        g += gifFrame({1, 0, 0, 1});
    return g + ";";
}

QByteArray ColourGif(const QList<QRgb>& colours, const QList<int>& delays, int loops)
{
    QByteArray g = "GIF89a" + QByteArray::fromHex("02000200810000");
    for (int i = 0; i < 4; ++i) {
        const QRgb c = i < colours.size() ? colours[i] : qRgb(0, 0, 0);
        g += char(qRed(c));
        g += char(qGreen(c));
        g += char(qBlue(c));
    }
    if (loops >= 0)
        g += QByteArray::fromHex("21ff0b") + "NETSCAPE2.0" + QByteArray::fromHex("0301") +
             char(loops & 0xff) + char(loops >> 8) + char(0);
    for (int i = 0; i < colours.size(); ++i) {
        const int delay = i < delays.size() ? delays[i] : 0;
        g += QByteArray::fromHex("21f90400") + char(delay & 0xff) + char(delay >> 8) +
             QByteArray::fromHex("0000") + QByteArray::fromHex("2c0000000002000200") + char(0) +
             lzwLiterals({i, i, i, i});
    }
    return g + ";";
}

QByteArray IconFile(bool cursor)
{
    const QByteArray small = iconEntryImage(16, qRgb(255, 0, 0));
    const QByteArray large = iconEntryImage(32, qRgb(0, 0, 255));
    Bytes b;
    b.u16(0).u16(cursor ? 2 : 1).u16(2);
    const quint32 first = 6 + 2 * 16;
    b.u8(16).u8(16).u8(0).u8(0).u16(cursor ? 1 : 1).u16(cursor ? 1 : 32).u32(quint32(small.size())).u32(first);
    b.u8(32).u8(32).u8(0).u8(0).u16(1).u16(cursor ? 1 : 32).u32(quint32(large.size())).u32(first + quint32(small.size()));
    return b.raw(small).raw(large).data();
}

QByteArray RedWmf(int width, int height, int unitsPerInch)
{
    Bytes records;
    records.u32(5).u16(0x020B).u16(0).u16(0);   // SetWindowOrg 0,0
    records.u32(5).u16(0x020C).u16(height).u16(width); // SetWindowExt
    records.u32(7).u16(0x02FC).u16(0).u32(colorref(qRgb(255, 0, 0))).u16(0); // solid red brush
    records.u32(4).u16(0x012D).u16(0);          // select it
    records.u32(8).u16(0x02FA).u16(5).u16(0).u16(0).u32(0); // null pen
    records.u32(4).u16(0x012D).u16(1);
    records.u32(7).u16(0x041B).u16(height).u16(width).u16(0).u16(0); // Rectangle
    records.u32(3).u16(0);                       // end of file
    Bytes header;
    header.u16(1).u16(9).u16(0x0300).u32(quint32(9 + records.size() / 2)).u16(2).u32(8).u16(0);
    Bytes placeable;
    placeable.u32(0x9AC6CDD7u).u16(0).u16(0).u16(0).u16(width).u16(height).u16(unitsPerInch).u32(0);
    QByteArray p = placeable.data();
    quint16 sum = 0;
    for (int i = 0; i < 10; ++i)
        sum ^= qFromLittleEndian<quint16>(p.constData() + 2 * i);
    Bytes checksum;
    checksum.u16(sum);
    return p + checksum.data() + header.data() + records.data();
}

QByteArray RedEmf()
{
    Bytes records;
    records.u32(39).u32(24).u32(1).u32(0).u32(colorref(qRgb(255, 0, 0))).u32(0); // CreateBrushIndirect
    records.u32(37).u32(12).u32(1);                                           // SelectObject
    records.u32(37).u32(12).u32(0x80000008u);                                 // NULL_PEN
    records.u32(43).u32(24).u32(0).u32(0).u32(99).u32(49);                    // Rectangle
    records.u32(14).u32(20).u32(0).u32(16).u32(20);                           // EOF
    const quint32 headerSize = 108;
    Bytes h;
    h.u32(1).u32(headerSize);
    h.u32(0).u32(0).u32(99).u32(49);       // bounds (device units)
    h.u32(0).u32(0).u32(2645).u32(1322);   // frame (0.01 mm), 100 x 50 at 96 dpi
    h.u32(0x464D4520u).u32(0x10000u);
    h.u32(quint32(headerSize + records.size())).u32(6).u16(2).u16(0);
    h.u32(0).u32(0).u32(0);                // description, palette
    h.u32(1920).u32(1080).u32(508).u32(286); // device pixels and millimetres
    h.u32(0).u32(0).u32(0);                // pixel format, OpenGL
    h.u32(508000).u32(285750);             // micrometres
    return h.data() + records.data();
}

QByteArray Pcx(const char* kindName)
{
    const QByteArray kind(kindName);
    const int width = 8, height = 4;
    int bpp = 8, planes = 1, bytesPerLine = 8;
    QByteArray raw;
    QByteArray tail;
    if (kind == "8bit") {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                raw.append(char(sampleIndex(x, y)));
        tail = QByteArray(1, char(0x0C));
        for (int i = 0; i < 256; ++i) {
            const QRgb c = i < 4 ? kSamplePalette[i] : qRgb(i, i, i);
            tail.append(char(qRed(c))).append(char(qGreen(c))).append(char(qBlue(c)));
        }
    } else if (kind == "24bit") {
        planes = 3;
        for (int y = 0; y < height; ++y)
            for (int p = 0; p < 3; ++p)
                for (int x = 0; x < width; ++x) {
                    const QRgb c = kSamplePalette[sampleIndex(x, y)];
                    raw.append(char(p == 0 ? qRed(c) : p == 1 ? qGreen(c) : qBlue(c)));
                }
    } else if (kind == "planar16") {
        bpp = 1;
        planes = 4;
        bytesPerLine = 2; // padded to an even count
        for (int y = 0; y < height; ++y)
            for (int p = 0; p < 4; ++p) {
                int byte = 0;
                for (int x = 0; x < width; ++x)
                    byte |= ((sampleIndex(x, y) >> p) & 1) << (7 - x);
                raw.append(char(byte)).append(char(0));
            }
    } else if (kind == "cga" || kind == "packed16" || kind == "mono") {
        bpp = kind == "cga" ? 2 : kind == "packed16" ? 4 : 1;
        bytesPerLine = (width * bpp + 15) / 16 * 2;
        for (int y = 0; y < height; ++y) {
            QByteArray line(bytesPerLine, 0);
            for (int x = 0; x < width; ++x) {
                const int index = kind == "mono" ? (sampleIndex(x, y) == 3 ? 1 : 0) : sampleIndex(x, y);
                const int bit = x * bpp;
                line[bit / 8] = char(uchar(line[bit / 8]) | (index << (8 - bpp - bit % 8)));
            }
            raw += line;
        }
    }
    Bytes h;
    h.u8(0x0A).u8(5).u8(1).u8(bpp).u16(0).u16(0).u16(width - 1).u16(height - 1).u16(72).u16(72);
    QByteArray map(48, 0);
    for (int i = 0; i < 4; ++i) {
        map[3 * i] = char(qRed(kSamplePalette[i]));
        map[3 * i + 1] = char(qGreen(kSamplePalette[i]));
        map[3 * i + 2] = char(qBlue(kSamplePalette[i]));
    }
    h.raw(map).u8(0).u8(planes).u16(bytesPerLine).u16(1).u16(0).u16(0);
    QByteArray header = h.data();
    header.append(QByteArray(128 - header.size(), 0));
    return header + pcxRle(raw) + tail;
}

QByteArray Tga(const char* kindName)
{
    const QByteArray kind(kindName);
    const int width = 4, height = 3;
    int type = 2, depth = 24, descriptor = 0, mapType = 0, mapBits = 0, mapLength = 0;
    Bytes map;
    auto pixel = [&](int x, int y, Bytes& out) {
        const int i = sampleIndex(x, y);
        const QRgb c = kSamplePalette[i];
        if (kind == "mapped")
            out.u8(i);
        else if (kind == "grey")
            out.u8(qGray(c));
        else if (kind == "top16")
            out.u16((qRed(c) >> 3) << 10 | (qGreen(c) >> 3) << 5 | (qBlue(c) >> 3));
        else if (kind == "rle32")
            out.u8(qBlue(c)).u8(qGreen(c)).u8(qRed(c)).u8(255);
        else
            out.u8(qBlue(c)).u8(qGreen(c)).u8(qRed(c));
    };
    if (kind == "mapped") {
        type = 1; depth = 8; mapType = 1; mapBits = 24; mapLength = 4;
        for (QRgb c : kSamplePalette)
            map.u8(qBlue(c)).u8(qGreen(c)).u8(qRed(c));
    } else if (kind == "grey") {
        type = 3; depth = 8;
    } else if (kind == "top16") {
        depth = 16; descriptor = 0x20;
    } else if (kind == "rle24") {
        type = 10;
    } else if (kind == "rle32") {
        type = 10; depth = 32; descriptor = 0x28;
    }
    const bool topDown = descriptor & 0x20;
    Bytes data;
    for (int row = 0; row < height; ++row) {
        const int y = topDown ? row : height - 1 - row;
        if (type >= 9) {
            // One raw packet for the first pixel, one run packet per row of equal pairs.
            data.u8(0);
            pixel(0, y, data);
            data.u8(0x80 | 0);
            pixel(1, y, data);
            data.u8(0x80 | 1);
            pixel(2, y, data);
        } else {
            for (int x = 0; x < width; ++x)
                pixel(x, y, data);
        }
    }
    Bytes h;
    h.u8(3).u8(mapType).u8(type).u16(0).u16(mapLength).u8(mapBits).u16(0).u16(0).u16(width).u16(height).u8(depth).u8(descriptor);
    return h.raw("abc").raw(map.data()).raw(data.data()).data();
}

} // namespace kavori::test
// clang-format on
