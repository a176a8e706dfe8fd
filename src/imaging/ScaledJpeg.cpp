#include "ScaledJpeg.h"

#include "JpegHeader.h"
#include "JpegScan.h"
#include "runtime/ParallelRun.h"

#include <algorithm>
#include <cmath>

namespace kavori {

namespace {

// A picture plane of one component at the decoded scale, padded to whole blocks.
struct Plane {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> samples;
    uint8_t* row(int y) { return samples.data() + qsizetype(y) * width; }
    const uint8_t* row(int y) const { return samples.data() + qsizetype(y) * width; }
};

inline uint8_t clampSample(float value)
{
    return uint8_t(std::clamp(int(value + 128.5f), 0, 255));
}

// The reduced inverse DCT: the keep x keep lowest frequencies of the 8 x 8 block, transformed
// with the keep-point cosine basis at the same scale (0.5 C(u) cos((2x + 1) u pi / 2 keep)),
// give the block at keep/8 of its size. Written out as butterflies for keep 2 and 4.
template <int Keep> struct ReducedIdct;

template <> struct ReducedIdct<1> {
    static void transform(const int16_t* in, const uint16_t* quant, uint8_t* out, int)
    {
        out[0] = clampSample(float(in[0]) * float(quant[0]) / 8);
    }
};

template <> struct ReducedIdct<2> {
    static void transform(const int16_t* in, const uint16_t* quant, uint8_t* out, int stride)
    {
        constexpr float c = 0.35355339f;
        const float f00 = float(in[0]) * quant[0], f01 = float(in[1]) * quant[1];
        const float f10 = float(in[2]) * quant[8], f11 = float(in[3]) * quant[9];
        const float top0 = c * (f00 + f01), top1 = c * (f00 - f01);
        const float bottom0 = c * (f10 + f11), bottom1 = c * (f10 - f11);
        out[0] = clampSample(c * (top0 + bottom0));
        out[1] = clampSample(c * (top1 + bottom1));
        out[stride] = clampSample(c * (top0 - bottom0));
        out[stride + 1] = clampSample(c * (top1 - bottom1));
    }
};

template <> struct ReducedIdct<4> {
    // Four lanes: one 4-point transform for each of four rows or columns at once.
    typedef float Lanes __attribute__((vector_size(16)));
    typedef int32_t IntLanes __attribute__((vector_size(16)));

    static void fourPoint(Lanes f0, Lanes f1, Lanes f2, Lanes f3, Lanes* out)
    {
        const Lanes c4 = {0.35355339f, 0.35355339f, 0.35355339f, 0.35355339f};
        const Lanes c1 = {0.46193977f, 0.46193977f, 0.46193977f, 0.46193977f};
        const Lanes c3 = {0.19134172f, 0.19134172f, 0.19134172f, 0.19134172f};
        const Lanes even0 = c4 * (f0 + f2), even1 = c4 * (f0 - f2);
        const Lanes odd0 = c1 * f1 + c3 * f3, odd1 = c3 * f1 - c1 * f3;
        out[0] = even0 + odd0;
        out[1] = even1 + odd1;
        out[2] = even1 - odd1;
        out[3] = even0 - odd0;
    }
    static void transpose(Lanes* m)
    {
        Lanes t[4];
        for (int i = 0; i < 4; ++i)
            t[i] = Lanes{m[0][i], m[1][i], m[2][i], m[3][i]};
        std::copy_n(t, 4, m);
    }
    static void transform(const int16_t* in, const uint16_t* quant, uint8_t* out, int stride)
    {
        bool flat = true;
        for (int i = 1; i < 16 && flat; ++i)
            flat = in[i] == 0;
        if (flat) {
            const uint8_t value = clampSample(float(in[0]) * float(quant[0]) / 8);
            for (int y = 0; y < 4; ++y)
                std::fill_n(out + y * stride, 4, value);
            return;
        }
        Lanes rows[4] = {}; // rows[v][u]: vertical frequency v, horizontal frequency u
        for (int v = 0; v < 4; ++v)
            for (int u = 0; u < 4; ++u)
                rows[v][u] = float(in[v * 4 + u]) * float(quant[v * 8 + u]);
        Lanes columns[4]; // columns[y][u] after the vertical pass
        fourPoint(rows[0], rows[1], rows[2], rows[3], columns);
        transpose(columns); // [u][y]
        Lanes pixels[4];    // [x][y]
        fourPoint(columns[0], columns[1], columns[2], columns[3], pixels);
        transpose(pixels); // [y][x]
        const Lanes offset = {128.5f, 128.5f, 128.5f, 128.5f};
        const IntLanes low = {0, 0, 0, 0};
        const IntLanes high = {255, 255, 255, 255};
        for (int y = 0; y < 4; ++y) {
            IntLanes value = __builtin_convertvector(pixels[y] + offset, IntLanes);
            value = value < low ? low : value;
            value = value > high ? high : value;
            uint8_t* row = out + y * stride;
            for (int x = 0; x < 4; ++x)
                row[x] = uint8_t(value[x]);
        }
    }
};

template <int Keep>
void transformRows(const JpegBlocks& values, const JpegHeader& header, const JpegScanLayout& layout,
                   std::vector<Plane>& planes)
{
    const int blockValues = values.stride();
    const bool single = header.components.size() == 1;
    const int rows = layout.mcusY;
    const int parts = std::min(rows, ParallelWidth() * 4);
    RunInParallel(parts, [&](int part) {
        for (int my = rows * part / parts; my < rows * (part + 1) / parts; ++my) {
            const int16_t* block =
                values.data() + qsizetype(my) * layout.mcusX * layout.blocksPerMcu * blockValues;
            for (int mx = 0; mx < layout.mcusX; ++mx) {
                for (size_t ci = 0; ci < header.components.size(); ++ci) {
                    const JpegComponent& c = header.components[ci];
                    const int h = single ? 1 : c.h;
                    const int v = single ? 1 : c.v;
                    Plane& plane = planes[ci];
                    const uint16_t* quant = header.quant[size_t(c.quantTable)].data();
                    for (int by = 0; by < v; ++by)
                        for (int bx = 0; bx < h; ++bx, block += blockValues) {
                            const int x = (mx * h + bx) * Keep;
                            const int y = (my * v + by) * Keep;
                            ReducedIdct<Keep>::transform(block, quant, plane.row(y) + x,
                                                         plane.width);
                        }
                }
            }
        }
    });
}

// Chroma brought up to the luma grid with libjpeg's "fancy" triangle filter: each output
// sample takes 3/4 of the nearest stored sample and 1/4 of the next one beyond it.
class ChromaRow {
public:
    ChromaRow(const Plane& plane, int factorX, int factorY, int width)
        : plane_(plane), factorX_(factorX), factorY_(factorY), width_(width),
          columns_(size_t(plane.width) + 2), out_(size_t(width) + 1)
    {}
    const uint8_t* at(int y)
    {
        // columns[-1] and columns[width] repeat the edge samples, so the loops need no tests.
        int* columns = columns_.data() + 1;
        const int count = plane_.width;
        if (factorY_ == 1) {
            const uint8_t* row = plane_.row(std::min(y, plane_.height - 1));
            for (int i = 0; i < count; ++i)
                columns[i] = row[i] * 4;
        } else {
            const int nearY = std::min(y / 2, plane_.height - 1);
            const int farY = std::clamp(y % 2 ? nearY + 1 : nearY - 1, 0, plane_.height - 1);
            const uint8_t* nearRow = plane_.row(nearY);
            const uint8_t* farRow = plane_.row(farY);
            for (int i = 0; i < count; ++i)
                columns[i] = nearRow[i] * 3 + farRow[i];
        }
        columns[-1] = columns[0];
        columns[count] = columns[count - 1];
        uint8_t* out = out_.data();
        if (factorX_ == 1) {
            for (int x = 0; x < width_; ++x)
                out[x] = uint8_t((columns[x] * 4 + 8) >> 4);
            return out;
        }
        for (int i = 0; i < (width_ + 1) / 2; ++i) {
            const int near = columns[i] * 3 + 8;
            out[2 * i] = uint8_t((near + columns[i - 1]) >> 4);
            out[2 * i + 1] = uint8_t((near + columns[i + 1]) >> 4);
        }
        return out;
    }

private:
    const Plane& plane_;
    int factorX_, factorY_, width_;
    std::vector<int> columns_;
    std::vector<uint8_t> out_;
};

inline int clampByte(int value)
{
    return std::min(std::max(value, 0), 255);
}

// YCbCr to RGB as JFIF defines it, in 16.16 fixed point.
void toRgb(const uint8_t* luma, const uint8_t* cb, const uint8_t* cr, int width, QRgb* line)
{
    constexpr int crToR = 91881, cbToG = -22554, crToG = -46802, cbToB = 116130;
    constexpr int half = 1 << 15;
    for (int x = 0; x < width; ++x) {
        const int l = luma[x];
        const int blue = cb[x] - 128;
        const int red = cr[x] - 128;
        const int r = l + ((crToR * red + half) >> 16);
        const int g = l + ((cbToG * blue + crToG * red + half) >> 16);
        const int b = l + ((cbToB * blue + half) >> 16);
        line[x] = 0xFF000000u | uint32_t(clampByte(r) << 16) | uint32_t(clampByte(g) << 8) |
                  uint32_t(clampByte(b));
    }
}

QImage toColour(const std::vector<Plane>& planes, const JpegHeader& header, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull())
        return {};
    int hMax = 1;
    int vMax = 1;
    for (const JpegComponent& c : header.components) {
        hMax = std::max(hMax, c.h);
        vMax = std::max(vMax, c.v);
    }
    const int parts = std::min(height, ParallelWidth() * 4);
    RunInParallel(parts, [&](int part) {
        ChromaRow blue(planes[1], hMax / header.components[1].h, vMax / header.components[1].v,
                       width);
        ChromaRow red(planes[2], hMax / header.components[2].h, vMax / header.components[2].v,
                      width);
        for (int y = height * part / parts; y < height * (part + 1) / parts; ++y)
            toRgb(planes[0].row(y), blue.at(y), red.at(y), width,
                  reinterpret_cast<QRgb*>(image.scanLine(y)));
    });
    return image;
}

QImage toGrey(const Plane& plane, int width, int height)
{
    QImage image(width, height, QImage::Format_Grayscale8);
    if (image.isNull())
        return {};
    for (int y = 0; y < height; ++y)
        std::copy_n(plane.row(y), width, image.scanLine(y));
    return image;
}

bool decodable(const JpegHeader& h)
{
    const size_t count = h.components.size();
    if (!h.baseline || !h.fullSpectrum || h.adobeRgb || h.height == 0 ||
        h.scanComponents != int(count) || (count != 1 && count != 3))
        return false;
    for (const JpegComponent& c : h.components)
        if (!h.quantDefined[size_t(c.quantTable)])
            return false;
    if (count == 1)
        return true;
    // The usual samplings: chroma at full, half or quarter of luma, never finer than luma.
    const bool rgbNames =
        h.components[0].id == 'R' && h.components[1].id == 'G' && h.components[2].id == 'B';
    const JpegComponent& luma = h.components[0];
    return !rgbNames && luma.h <= 2 && luma.v <= 2 && h.components[1].h == 1 &&
           h.components[1].v == 1 && h.components[2].h == 1 && h.components[2].v == 1;
}

} // namespace

QImage DecodeScaledJpeg(const QByteArray& file, int denominator, int parts)
{
    // Beyond these the usual reader, with its own allocation limit, decides.
    constexpr qint64 kMaxValues = qint64(256) << 20;
    constexpr qint64 kMaxPixels = qint64(100) << 20;
    const int keep = denominator == 2 ? 4 : denominator == 4 ? 2 : denominator == 8 ? 1 : 0;
    const std::optional<JpegHeader> header = ReadJpegHeader(file);
    if (!keep || !header || !decodable(*header))
        return {};
    const std::optional<JpegScanLayout> layout = LayoutOf(*header);
    if (!layout || layout->totalBlocks() * (keep * keep + 1) > kMaxValues ||
        qint64(header->width) * header->height * keep * keep / 64 > kMaxPixels)
        return {};
    const JpegBlocks values = DecodeJpegScan(file, *header, *layout, keep, parts);
    if (!values.data())
        return {};

    const bool single = header->components.size() == 1;
    std::vector<Plane> planes(header->components.size());
    for (size_t i = 0; i < planes.size(); ++i) {
        const JpegComponent& c = header->components[i];
        planes[i].width = layout->mcusX * (single ? 1 : c.h) * keep;
        planes[i].height = layout->mcusY * (single ? 1 : c.v) * keep;
        planes[i].samples.resize(size_t(planes[i].width) * size_t(planes[i].height));
    }
    switch (keep) {
    case 4:
        transformRows<4>(values, *header, *layout, planes);
        break;
    case 2:
        transformRows<2>(values, *header, *layout, planes);
        break;
    default:
        transformRows<1>(values, *header, *layout, planes);
        break;
    }
    const int width = (header->width * keep + 7) / 8;
    const int height = (header->height * keep + 7) / 8;
    return single ? toGrey(planes[0], width, height) : toColour(planes, *header, width, height);
}

} // namespace kavori
