#include "ScaledJpeg.h"

#include "JpegHeader.h"
#include "JpegScan.h"
#include "PlaneScaling.h"
#include "runtime/ParallelRun.h"
#include "runtime/ScratchMemory.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

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
void transformBlock(const int16_t* in, const uint16_t* quant, uint8_t* out, int stride)
{
    ReducedIdct<Keep>::transform(in, quant, out, stride);
}

using BlockTransform = void (*)(const int16_t*, const uint16_t*, uint8_t*, int);

BlockTransform transformFor(int keep)
{
    return keep == 4 ? transformBlock<4> : keep == 2 ? transformBlock<2> : transformBlock<1>;
}

// Each component's blocks, at its own keep, into its plane.
void transformRows(const JpegBlocks& values, const JpegHeader& header, const JpegScanLayout& layout,
                   const std::array<int, 4>& keeps, std::vector<SamplePlane>& planes)
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
                    const int keep = keeps[ci];
                    const BlockTransform transform = transformFor(keep);
                    SamplePlane& plane = planes[ci];
                    const uint16_t* quant = header.quant[size_t(c.quantTable)].data();
                    for (int by = 0; by < v; ++by)
                        for (int bx = 0; bx < h; ++bx, block += blockValues) {
                            const int x = (mx * h + bx) * keep;
                            const int y = (my * v + by) * keep;
                            transform(block, quant, plane.row(y) + x, plane.width);
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

// A chroma plane's row y on the luma grid, at 16 times its value: where the plane has half the
// columns or rows of luma, each sample is 3/4 of the nearest and 1/4 of the next nearest (in
// both directions where both are halved), and the 4 extra bits keep that blend unrounded.
void chromaRow(const SamplePlane& c, int hs, int vs, int y, int width, uint16_t* out)
{
    const int nearY = y / vs;
    const int farY = vs == 1 ? nearY : std::clamp(y % 2 ? nearY + 1 : nearY - 1, 0, c.height - 1);
    const uint8_t* nearRow = c.row(nearY);
    const uint8_t* farRow = c.row(farY);
    if (hs == 1) {
        for (int x = 0; x < width; ++x)
            out[x] = uint16_t(4 * (3 * nearRow[x] + farRow[x]));
        return;
    }
    // Edges repeat the outermost column; the loop between them needs no clamping.
    const int last = c.width - 1;
    auto column = [&](int j) { return 3 * nearRow[j] + farRow[j]; };
    out[0] = uint16_t(4 * column(0));
    int x = 1;
    for (; x + 1 < width && (x + 1) / 2 <= last; x += 2) {
        const int j = x / 2;
        const int here = column(j);
        const int next = column(j + 1);
        out[x] = uint16_t(3 * here + next);
        out[x + 1] = uint16_t(3 * next + here);
    }
    for (; x < width; ++x) {
        const int j = std::min(x / 2, last);
        const int other = std::clamp(x % 2 ? j + 1 : j - 1, 0, last);
        out[x] = uint16_t(3 * column(j) + column(other));
    }
}

// YCbCr to RGB as JFIF defines it, in fixed point, chroma at 16 times its value. Each pixel is
// rounded and clamped here, as a full decode gives it, before any averaging.
void toRgb(const uint8_t* luma, const uint16_t* cb, const uint16_t* cr, int width, uint8_t* red,
           uint8_t* green, uint8_t* blue)
{
    constexpr int crToR = 91881, cbToG = -22554, crToG = -46802, cbToB = 116130; // 16.16
    constexpr int centre = 128 << 4;
    constexpr int half = 1 << 19;
    for (int x = 0; x < width; ++x) {
        const int l = luma[x];
        const int b = cb[x] - centre;
        const int r = cr[x] - centre;
        red[x] = uint8_t(clampByte(l + ((crToR * r + half) >> 20)));
        green[x] = uint8_t(clampByte(l + ((cbToG * b + crToG * r + half) >> 20)));
        blue[x] = uint8_t(clampByte(l + ((cbToB * b + half) >> 20)));
    }
}

// The picture at `size` from planes decoded at `decoded` (luma samples). Chroma is brought to
// the luma grid and converted to RGB at the decoded size, and the RGB (or grey) picture is
// averaged down by area with one rounding at the end: averaging in YCbCr and converting after
// would clamp averages rather than pixels, and rounding chroma is amplified by the conversion.
QImage render(const std::vector<SamplePlane>& planes, const QSize& decoded, const QSize& size)
{
    const bool grey = planes.size() == 1;
    const int channels = grey ? 1 : 3;
    QImage image = ScratchImage(size, grey ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
    if (image.isNull())
        return {};
    const ScaleTaps across(decoded.width(), size.width(), decoded.width());
    const ScaleTaps down(decoded.height(), size.height(), decoded.height());
    const int width = size.width();
    const int sourceWidth = across.lastSource() + 1;
    const int sourceRows = down.lastSource() + 1;
    // How many times finer luma is than each chroma plane, across and down.
    const int hs = grey ? 1 : planes[0].width / planes[1].width;
    const int vs = grey ? 1 : planes[0].height / planes[1].height;
    // Every source row scaled across, its channels one after another.
    const ptrdiff_t stride = ptrdiff_t(width) * channels;
    ScratchBuffer scaled(size_t(stride) * size_t(sourceRows) * sizeof(uint16_t));
    if (!scaled.data())
        return {};
    const int parts = ParallelWidth() * 4;
    const int usedRows = std::min(sourceRows, parts);
    RunInParallel(usedRows, [&](int part) {
        std::vector<uint16_t> chroma(grey ? 0 : size_t(sourceWidth) * 2);
        std::vector<uint8_t> rgb(grey ? 0 : size_t(sourceWidth) * 3);
        for (int y = sourceRows * part / usedRows; y < sourceRows * (part + 1) / usedRows; ++y) {
            uint16_t* out = scaled.as<uint16_t>() + ptrdiff_t(y) * stride;
            if (grey) {
                ScaleRowAcross(planes[0].row(y), across, out);
                continue;
            }
            uint16_t* cb = chroma.data();
            uint16_t* cr = cb + sourceWidth;
            chromaRow(planes[1], hs, vs, y, sourceWidth, cb);
            chromaRow(planes[2], hs, vs, y, sourceWidth, cr);
            uint8_t* red = rgb.data();
            toRgb(planes[0].row(y), cb, cr, sourceWidth, red, red + sourceWidth,
                  red + 2 * sourceWidth);
            for (int c = 0; c < 3; ++c)
                ScaleRowAcross(red + c * sourceWidth, across, out + c * width);
        }
    });
    const int height = size.height();
    const int usedTargets = std::min(height, parts);
    RunInParallel(usedTargets, [&](int part) {
        std::vector<uint8_t> line(static_cast<size_t>(stride));
        for (int y = height * part / usedTargets; y < height * (part + 1) / usedTargets; ++y) {
            if (grey) {
                ScaleRowDown(scaled.as<uint16_t>(), stride, down, y, width, image.scanLine(y));
                continue;
            }
            ScaleRowDown(scaled.as<uint16_t>(), stride, down, y, int(stride), line.data());
            auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(y));
            const uint8_t* r = line.data();
            const uint8_t* g = r + width;
            const uint8_t* b = g + width;
            for (int x = 0; x < width; ++x)
                pixels[x] = 0xFF000000u | uint32_t(r[x] << 16) | uint32_t(g[x] << 8) | b[x];
        }
    });
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
    if (!layout)
        return {};
    const bool single = header.components.size() == 1;
    int hMax = 1;
    int vMax = 1;
    for (const JpegComponent& c : header.components) {
        hMax = std::max(hMax, c.h);
        vMax = std::max(vMax, c.v);
    }
    // Chroma at half the luma's resolution both ways is decoded with twice the luma's
    // coefficients where the transform allows, so that it lands on the luma grid with its own
    // detail instead of being stretched (at 1/8 that is 2 x 2 values rather than the DC alone).
    std::array<int, 4> keeps{};
    for (size_t i = 0; i < header.components.size(); ++i) {
        const JpegComponent& c = header.components[i];
        const bool halved = !single && c.h * 2 == hMax && c.v * 2 == vMax;
        keeps[i] = halved && keep <= 2 ? keep * 2 : keep;
    }
    const int largest = *std::max_element(keeps.begin(), keeps.end());
    if (layout->totalBlocks() * (largest * largest + 1) > kMaxValues ||
        qint64(header.width) * header.height * keep * keep / 64 > kMaxPixels ||
        qint64(size.width()) * size.height() > kMaxPixels)
        return {};
    const JpegBlocks values = DecodeJpegScan(file, header, *layout, keeps, parts);
    if (!values.data())
        return {};
    std::vector<SamplePlane> planes;
    for (size_t i = 0; i < header.components.size(); ++i) {
        const JpegComponent& c = header.components[i];
        planes.emplace_back(layout->mcusX * (single ? 1 : c.h) * keeps[i],
                            layout->mcusY * (single ? 1 : c.v) * keeps[i]);
        if (!planes.back().samples.data())
            return {};
    }
    transformRows(values, header, *layout, keeps, planes);
    return render(planes, scaledSize(header, keep), size);
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
