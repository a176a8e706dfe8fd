#include "ScaledJpeg.h"

#include "JpegHeader.h"
#include "JpegProgressive.h"
#include "JpegScan.h"
#include "PlaneScaling.h"
#include "runtime/ParallelRun.h"
#include "runtime/ScratchMemory.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

namespace kavori {

namespace {

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
    typedef int32_t Ints __attribute__((vector_size(16)));
    typedef int16_t Shorts __attribute__((vector_size(8)));
    typedef uint16_t Steps __attribute__((vector_size(8)));
    typedef uint8_t Bytes __attribute__((vector_size(4)));

    static void fourPoint(Lanes f0, Lanes f1, Lanes f2, Lanes f3, Lanes* out)
    {
        const Lanes c4 = Lanes{} + 0.35355339f;
        const Lanes c1 = Lanes{} + 0.46193977f;
        const Lanes c3 = Lanes{} + 0.19134172f;
        const Lanes even0 = c4 * (f0 + f2), even1 = c4 * (f0 - f2);
        const Lanes odd0 = c1 * f1 + c3 * f3, odd1 = c3 * f1 - c1 * f3;
        out[0] = even0 + odd0;
        out[1] = even1 + odd1;
        out[2] = even1 - odd1;
        out[3] = even0 - odd0;
    }
    template <int A, int B, int C, int D> static Lanes shuffle(Lanes a, Lanes b)
    {
#if defined(__clang__)
        return __builtin_shufflevector(a, b, A, B, C, D);
#else
        return __builtin_shuffle(a, b, Ints{A, B, C, D});
#endif
    }
    static void transpose(Lanes* m)
    {
        const Lanes t0 = shuffle<0, 4, 1, 5>(m[0], m[1]);
        const Lanes t1 = shuffle<0, 4, 1, 5>(m[2], m[3]);
        const Lanes t2 = shuffle<2, 6, 3, 7>(m[0], m[1]);
        const Lanes t3 = shuffle<2, 6, 3, 7>(m[2], m[3]);
        m[0] = shuffle<0, 1, 4, 5>(t0, t1);
        m[1] = shuffle<2, 3, 6, 7>(t0, t1);
        m[2] = shuffle<0, 1, 4, 5>(t2, t3);
        m[3] = shuffle<2, 3, 6, 7>(t2, t3);
    }
    static void transform(const int16_t* in, const uint16_t* quant, uint8_t* out, int stride)
    {
        uint64_t words[4];
        std::memcpy(words, in, sizeof words);
        if (((words[0] & ~uint64_t(0xFFFF)) | words[1] | words[2] | words[3]) == 0) {
            const uint8_t value = clampSample(float(in[0]) * float(quant[0]) / 8);
            for (int y = 0; y < 4; ++y)
                std::memset(out + y * stride, value, 4);
            return;
        }
        Lanes rows[4]; // rows[v][u]: vertical frequency v, horizontal frequency u
        for (int v = 0; v < 4; ++v) {
            Shorts values;
            Steps steps;
            std::memcpy(&values, in + v * 4, sizeof values);
            std::memcpy(&steps, quant + v * 8, sizeof steps);
            rows[v] =
                __builtin_convertvector(values, Lanes) * __builtin_convertvector(steps, Lanes);
        }
        Lanes columns[4]; // [y][u] after the vertical pass
        fourPoint(rows[0], rows[1], rows[2], rows[3], columns);
        transpose(columns); // [u][y]
        Lanes pixels[4];    // [x][y]
        fourPoint(columns[0], columns[1], columns[2], columns[3], pixels);
        transpose(pixels); // [y][x]
        const Ints low = Ints{};
        const Ints high = Ints{} + 255;
        for (int y = 0; y < 4; ++y) {
            Ints value = __builtin_convertvector(pixels[y] + 128.5f, Ints);
            value = value < low ? low : value;
            value = value > high ? high : value;
            const Bytes bytes = __builtin_convertvector(value, Bytes);
            std::memcpy(out + y * stride, &bytes, 4);
        }
    }
};

template <int Keep>
void transformRows(const JpegBlocks& values, const JpegHeader& header, const JpegScanLayout& layout,
                   std::vector<SamplePlane>& planes)
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
                    SamplePlane& plane = planes[ci];
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

// Each plane's own scaling onto the picture's size; planes that need none are read as they are.
struct PlaneScale {
    PlaneScale(const SamplePlane& plane, double width, double height, const QSize& size)
        : source(plane), across(width, size.width(), plane.width),
          down(height, size.height(), plane.height)
    {
        if (!across.identity())
            scaledAcross = SamplePlane(size.width(), down.lastSource() + 1);
    }
    bool ready() const { return across.identity() || scaledAcross.samples.data(); }
    const SamplePlane& acrossResult() const { return across.identity() ? source : scaledAcross; }
    // Row y at the picture's size; scratch holds a row of that size.
    const uint8_t* row(int y, uint8_t* scratch) const
    {
        if (down.identity())
            return acrossResult().row(y);
        ScaleDown(acrossResult(), down, y, across.size(), scratch);
        return scratch;
    }
    const SamplePlane& source;
    ScaleTaps across;
    ScaleTaps down;
    SamplePlane scaledAcross;
};

// The picture at `size` from planes decoded at `decoded` (luma samples): chroma is brought to
// the luma grid and everything to the size asked for in one resampling.
QImage render(const std::vector<SamplePlane>& planes, const JpegHeader& header,
              const QSize& decoded, const QSize& size)
{
    const bool grey = planes.size() == 1;
    QImage image = ScratchImage(size, grey ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
    if (image.isNull())
        return {};
    int hMax = 1;
    int vMax = 1;
    for (const JpegComponent& c : header.components) {
        hMax = std::max(hMax, c.h);
        vMax = std::max(vMax, c.v);
    }
    std::vector<std::unique_ptr<PlaneScale>> scales;
    for (size_t i = 0; i < planes.size(); ++i) {
        const int h = grey ? 1 : header.components[i].h;
        const int v = grey ? 1 : header.components[i].v;
        scales.push_back(std::make_unique<PlaneScale>(planes[i], double(decoded.width()) * h / hMax,
                                                      double(decoded.height()) * v / vMax, size));
        if (!scales.back()->ready())
            return {};
    }
    const int parts = ParallelWidth() * 4;
    RunInParallel(parts, [&](int part) {
        for (auto& scale : scales) {
            const int rows = scale->scaledAcross.height;
            if (!scale->across.identity())
                ScaleAcross(scale->source, scale->across, scale->scaledAcross, rows * part / parts,
                            rows * (part + 1) / parts);
        }
    });
    const int height = size.height();
    RunInParallel(std::min(height, parts), [&](int part) {
        std::vector<uint8_t> scratch(size_t(size.width()) * scales.size());
        const int used = std::min(height, parts);
        for (int y = height * part / used; y < height * (part + 1) / used; ++y) {
            if (grey) {
                std::copy_n(scales[0]->row(y, scratch.data()), size.width(), image.scanLine(y));
                continue;
            }
            toRgb(scales[0]->row(y, scratch.data()),
                  scales[1]->row(y, scratch.data() + size.width()),
                  scales[2]->row(y, scratch.data() + 2 * size.width()), size.width(),
                  reinterpret_cast<QRgb*>(image.scanLine(y)));
        }
    });
    return image;
}

bool decodable(const JpegHeader& h)
{
    const size_t count = h.components.size();
    const bool sequential = h.baseline && h.fullSpectrum && h.scanComponents == int(count);
    if (!(sequential || h.progressive) || h.adobeRgb || h.height == 0 || (count != 1 && count != 3))
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

// Beyond these the usual reader, with its own allocation limit, decides.
constexpr qint64 kMaxValues = qint64(256) << 20;
constexpr qint64 kMaxPixels = qint64(100) << 20;

// The size libjpeg gives at keep/8 of the picture's size.
QSize scaledSize(const JpegHeader& header, int keep)
{
    return QSize((header.width * keep + 7) / 8, (header.height * keep + 7) / 8);
}

QImage decode(const QByteArray& file, const JpegHeader& header, int keep, const QSize& size,
              int parts)
{
    const std::optional<JpegScanLayout> layout = LayoutOf(header);
    if (!layout || layout->totalBlocks() * (keep * keep + 1) > kMaxValues ||
        qint64(header.width) * header.height * keep * keep / 64 > kMaxPixels ||
        qint64(size.width()) * size.height() > kMaxPixels)
        return {};
    const JpegBlocks values = header.progressive
                                  ? DecodeProgressiveJpeg(file, header, *layout, keep)
                                  : DecodeJpegScan(file, header, *layout, keep, parts);
    if (!values.data())
        return {};
    const bool single = header.components.size() == 1;
    std::vector<SamplePlane> planes;
    for (const JpegComponent& c : header.components) {
        planes.emplace_back(layout->mcusX * (single ? 1 : c.h) * keep,
                            layout->mcusY * (single ? 1 : c.v) * keep);
        if (!planes.back().samples.data())
            return {};
    }
    switch (keep) {
    case 4:
        transformRows<4>(values, header, *layout, planes);
        break;
    case 2:
        transformRows<2>(values, header, *layout, planes);
        break;
    default:
        transformRows<1>(values, header, *layout, planes);
        break;
    }
    return render(planes, header, scaledSize(header, keep), size);
}

} // namespace

QImage DecodeScaledJpeg(const QByteArray& file, int denominator, int parts)
{
    const int keep = denominator == 2 ? 4 : denominator == 4 ? 2 : denominator == 8 ? 1 : 0;
    const std::optional<JpegHeader> header = ReadJpegHeader(file);
    if (!keep || !header || !decodable(*header))
        return {};
    return decode(file, *header, keep, scaledSize(*header, keep), parts);
}

QImage DecodeJpegAtSize(const QByteArray& file, const QSize& size, int parts)
{
    const std::optional<JpegHeader> header = ReadJpegHeader(file);
    if (!header || !decodable(*header) || size.isEmpty())
        return {};
    for (const int keep : {1, 2, 4}) {
        const QSize scaled = scaledSize(*header, keep);
        if (scaled.width() >= size.width() && scaled.height() >= size.height())
            return decode(file, *header, keep, size, parts);
    }
    return {};
}

} // namespace kavori
