#include "ScaledJpeg.h"

#include "FullJpeg.h"
#include "JpegHeader.h"
#include "JpegProgressive.h"
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

// Each block's samples at 1, 2, 4 or 8 per side. The picture is compared with, and should
// look like, the full decode averaged down; which reduced transform comes closest was measured
// (bench/QualityBench.cpp) rather than assumed:
// - 2 x 2 (chroma at 1/8, luma at 1/4): the full 8-point transform averaged over 4 samples.
//   Averaged over its box each frequency u is a fixed weight, those of 2, 4 and 6 zero, so the
//   two outputs of a direction take frequencies 0, 1, 3, 5 and 7. The lowest 2 x 2 frequencies
//   with the 2-point basis instead lose the high ones the average still holds and overweigh
//   frequency 1 by a tenth: 0.7 dB worse on thumbnails.
// - 4 x 4: see LowestFour.
// - 8 x 8 (chroma at 1/2): the full decode's own transform.

// weight(u): the first of the 2 outputs' weight of frequency u; the second has the odd ones
// negated.
struct BoxWeights {
    float two[8];
};

BoxWeights makeBoxWeights()
{
    BoxWeights w{};
    const double pi = 3.14159265358979323846;
    for (int u = 0; u < 8; ++u) {
        double sum = 0;
        for (int i = 0; i < 4; ++i)
            sum += std::cos((2 * i + 1) * u * pi / 16);
        w.two[u] = float(0.5 * (u == 0 ? std::sqrt(0.5) : 1.0) * sum / 4);
    }
    return w;
}

const BoxWeights kBox = makeBoxWeights();

inline uint8_t clampSample(float value)
{
    return uint8_t(std::clamp(int(value + 128.5f), 0, 255));
}

// The rows and columns each output size reads (see JpegKeptRows).
constexpr JpegKeptRows kRowsForSize1 = 0x01;
// For 2 x 2 the odd frequencies above 3 weigh little (0.07 against 0.32 for 1) and are rarely
// left by quantisation; without them a block takes 9 values instead of 25.
constexpr int kRowForSize2[] = {0, 1, 3, 5, 7};
constexpr int kRowsKeptForSize2 = 5;
constexpr JpegKeptRows kRowsForSize2 = 0xAB;
constexpr JpegKeptRows kRowsForSize4 = 0x0F;
constexpr JpegKeptRows kRowsForSize8 = 0xFF;

JpegKeptRows rowsForSize(int size)
{
    return size == 8   ? kRowsForSize8
           : size == 4 ? kRowsForSize4
           : size == 2 ? kRowsForSize2
                       : kRowsForSize1;
}

// Whether a block's values after the first (of `count`) are all zero.
inline bool onlyMean(const int16_t* in, int count)
{
    int16_t any = 0;
    for (int i = 1; i < count; ++i)
        any |= in[i];
    return any == 0;
}

// One sample: the block's mean.
// The mean is the dequantised DC / 8, an exact half for an eighth of all blocks at odd quantiser
// steps (a quarter at steps of 2 mod 4). Blocks with detail, nearly all of a photo's, average in
// the full decode to the unrounded mean, so halves round to even: rounded up, they lifted
// thumbnails by 1/16 of a level against it (0.13 dB). A plain block's full decode rounds its
// half up and is one level off here half the time, but whether a block is plain is not known
// without reading the detail this size skips.
void transform1(const int16_t* in, const uint16_t* quant, uint8_t* out, int)
{
    const int eighths = in[0] * quant[0] + 128 * 8;
    int value = (eighths + 4) >> 3;
    if ((eighths & 15) == 4) // x.5 with x even
        --value;
    out[0] = uint8_t(std::clamp(value, 0, 255));
}

// 2 x 2 from the values of the rows and columns of kRowsForSize2. The two outputs of a
// direction share the even part and differ in the odd ones' sign.
void transform2(const int16_t* in, const uint16_t* quant, uint8_t* out, int stride)
{
    constexpr int n = kRowsKeptForSize2;
    if (onlyMean(in, n * n)) {
        const uint8_t value = clampSample(float(in[0]) * float(quant[0]) / 8);
        out[0] = out[1] = out[stride] = out[stride + 1] = value;
        return;
    }
    const float* a = kBox.two;
    // The vertical pass, row by row of frequencies; rows left empty by quantisation (most, in
    // chroma) cost nothing.
    float top[n], bottom[n];
    for (int c = 0; c < n; ++c)
        top[c] = bottom[c] = a[0] * float(in[c]) * float(quant[kRowForSize2[c]]);
    for (int r = 1; r < n; ++r) {
        const int16_t* row = in + r * n;
        int16_t any = 0;
        for (int c = 0; c < n; ++c)
            any |= row[c];
        if (!any)
            continue;
        const uint16_t* steps = quant + kRowForSize2[r] * 8;
        const float weight = a[kRowForSize2[r]];
        for (int c = 0; c < n; ++c) {
            const float value = weight * float(row[c]) * float(steps[kRowForSize2[c]]);
            top[c] += value;
            bottom[c] -= value;
        }
    }
    for (int y = 0; y < 2; ++y) {
        const float* t = y ? bottom : top;
        float odd = 0;
        for (int c = 1; c < n; ++c)
            odd += a[kRowForSize2[c]] * t[c];
        out[y * stride] = clampSample(a[0] * t[0] + odd);
        out[y * stride + 1] = clampSample(a[0] * t[0] - odd);
    }
}

// 4 x 4 from the lowest 4 x 4 frequencies, with the 4-point basis at the same scale
// (0.5 C(u) cos((2x + 1) u pi / 8)), written out as butterflies. Measured against the averaged
// full decode after the area average down to the screen, this beats the box-average transform
// for luma by 1.5 dB on photos: the box average followed by the area average smooths twice.
struct LowestFour {
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

// 8 x 8: the full-size decode's own transform, so that chroma decoded at the luma's grid is the
// full decode's chroma.
void transform8(const int16_t* in, const uint16_t* quant, uint8_t* out, int stride)
{
    // A plain block (common in chroma) is its mean, rounded as the transform rounds it.
    if (onlyMean(in, 64)) {
        const auto value = uint8_t(std::clamp(((in[0] * quant[0] + 4) >> 3) + 128, 0, 255));
        for (int y = 0; y < 8; ++y)
            std::memset(out + y * stride, value, 8);
        return;
    }
    InverseDctBlock(in, quant, out, stride);
}

using BlockTransform = void (*)(const int16_t*, const uint16_t*, uint8_t*, int);

BlockTransform transformFor(int size)
{
    return size == 8   ? transform8
           : size == 4 ? LowestFour::transform
           : size == 2 ? transform2
                       : transform1;
}

// Each component's blocks, at its own output size, into its plane.
void transformRows(const JpegBlocks& values, const JpegHeader& header, const JpegScanLayout& layout,
                   const std::array<int, 4>& sizes, std::vector<SamplePlane>& planes)
{
    const bool single = header.components.size() == 1;
    const int rows = layout.mcusY;
    const int parts = std::min(rows, ParallelWidth() * 4);
    RunInParallel(parts, [&](int part) {
        for (int my = rows * part / parts; my < rows * (part + 1) / parts; ++my) {
            const int16_t* block = values.block(qint64(my) * layout.mcusX * layout.blocksPerMcu);
            for (int mx = 0; mx < layout.mcusX; ++mx) {
                int phase = 0; // the block's place in its MCU
                for (size_t ci = 0; ci < header.components.size(); ++ci) {
                    const JpegComponent& c = header.components[ci];
                    const int h = single ? 1 : c.h;
                    const int v = single ? 1 : c.v;
                    const int blockSize = sizes[ci];
                    const BlockTransform transform = transformFor(blockSize);
                    SamplePlane& plane = planes[ci];
                    const uint16_t* quant = header.quant[size_t(c.quantTable)].data();
                    for (int by = 0; by < v; ++by)
                        for (int bx = 0; bx < h; ++bx, block += values.size(phase++)) {
                            const int x = (mx * h + bx) * blockSize;
                            const int y = (my * v + by) * blockSize;
                            transform(block, quant, plane.row(y) + x, plane.width);
                        }
                }
            }
        }
    });
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

// YCbCr to RGB as JFIF defines it, in fixed point; chroma as bytes (on the luma grid) or at 16
// times its value (brought to it). Each pixel is rounded and clamped here, as a full decode
// gives it, before any averaging: the full decode's pixels are whole numbers, alike over plain
// areas, and keeping fractions here would move away from them there. Eight pixels at a time in
// vector lanes; built for AVX2 too, which multiplies eight at once.
template <typename Chroma>
__attribute__((target_clones("avx2", "default"))) void
toRgb(const uint8_t* luma, const Chroma* cb, const Chroma* cr, int width, uint8_t* red,
      uint8_t* green, uint8_t* blue)
{
    typedef int32_t Lanes __attribute__((vector_size(32)));
    typedef uint8_t Bytes __attribute__((vector_size(8)));
    typedef Chroma Samples __attribute__((vector_size(8 * sizeof(Chroma))));
    constexpr int crToR = 91881, cbToG = -22554, crToG = -46802, cbToB = 116130; // 16.16
    constexpr int extra = sizeof(Chroma) == 1 ? 0 : 4;
    constexpr int centre = 128 << extra;
    constexpr int shift = 16 + extra;
    constexpr int half = 1 << (shift - 1);
    const Lanes low = Lanes{}, high = Lanes{} + 255;
    int x = 0;
    for (; x + 8 <= width; x += 8) {
        Bytes l8;
        Samples b8, r8;
        std::memcpy(&l8, luma + x, sizeof l8);
        std::memcpy(&b8, cb + x, sizeof b8);
        std::memcpy(&r8, cr + x, sizeof r8);
        const Lanes l = __builtin_convertvector(l8, Lanes);
        const Lanes b = __builtin_convertvector(b8, Lanes) - centre;
        const Lanes r = __builtin_convertvector(r8, Lanes) - centre;
        Lanes rgb[3] = {l + ((crToR * r + half) >> shift),
                        l + ((cbToG * b + crToG * r + half) >> shift),
                        l + ((cbToB * b + half) >> shift)};
        uint8_t* outs[3] = {red, green, blue};
        for (int c = 0; c < 3; ++c) {
            Lanes v = rgb[c];
            v = v < low ? low : v;
            v = v > high ? high : v;
            const Bytes bytes = __builtin_convertvector(v, Bytes);
            std::memcpy(outs[c] + x, &bytes, sizeof bytes);
        }
    }
    for (; x < width; ++x) {
        const int l = luma[x];
        const int b = cb[x] - centre;
        const int r = cr[x] - centre;
        red[x] = uint8_t(std::clamp(l + ((crToR * r + half) >> shift), 0, 255));
        green[x] = uint8_t(std::clamp(l + ((cbToG * b + crToG * r + half) >> shift), 0, 255));
        blue[x] = uint8_t(std::clamp(l + ((cbToB * b + half) >> shift), 0, 255));
    }
}

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
            uint8_t* red = rgb.data();
            if (hs == 1 && vs == 1) {
                toRgb(planes[0].row(y), planes[1].row(y), planes[2].row(y), sourceWidth, red,
                      red + sourceWidth, red + 2 * sourceWidth);
            } else {
                chromaRow(planes[1], hs, vs, y, sourceWidth, cb);
                chromaRow(planes[2], hs, vs, y, sourceWidth, cr);
                toRgb(planes[0].row(y), cb, cr, sourceWidth, red, red + sourceWidth,
                      red + 2 * sourceWidth);
            }
            const uint8_t* const channels[3] = {red, red + sourceWidth, red + 2 * sourceWidth};
            uint16_t* const scaledChannels[3] = {out, out + width, out + 2 * width};
            ScaleRowAcross3(channels, across, scaledChannels);
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
    // Chroma at half the luma's resolution both ways is decoded at twice the luma's output
    // size per block, so that it lands on the luma grid with its own detail instead of being
    // stretched (at 1/2 that is the full 8 x 8 transform, at 1/8 2 x 2 samples).
    std::array<int, 4> sizes{};
    std::array<JpegKeptRows, 4> kept{};
    int largest = 1;
    for (size_t i = 0; i < header.components.size(); ++i) {
        const JpegComponent& c = header.components[i];
        const bool halved = !single && c.h * 2 == hMax && c.v * 2 == vMax;
        sizes[i] = halved ? keep * 2 : keep;
        kept[i] = rowsForSize(sizes[i]);
        largest = std::max(largest, __builtin_popcount(kept[i]));
    }
    if (layout->totalBlocks() * (largest * largest + 1) > kMaxValues ||
        qint64(header.width) * header.height * keep * keep / 64 > kMaxPixels ||
        qint64(size.width()) * size.height() > kMaxPixels)
        return {};
    const JpegBlocks values = header.progressive
                                  ? DecodeProgressiveJpeg(file, header, *layout, kept)
                                  : DecodeJpegScan(file, header, *layout, kept, parts);
    if (!values.data())
        return {};
    std::vector<SamplePlane> planes;
    for (size_t i = 0; i < header.components.size(); ++i) {
        const JpegComponent& c = header.components[i];
        planes.emplace_back(layout->mcusX * (single ? 1 : c.h) * sizes[i],
                            layout->mcusY * (single ? 1 : c.v) * sizes[i]);
        if (!planes.back().samples.data())
            return {};
    }
    transformRows(values, header, *layout, sizes, planes);
    return render(planes, scaledSize(header, keep), size);
}

} // namespace

QImage DecodeScaledJpeg(const QByteArray& file, int denominator, int parts)
{
    const int keep = denominator == 2 ? 4 : denominator == 4 ? 2 : denominator == 8 ? 1 : 0;
    const std::optional<JpegHeader> header = ReadJpegHeader(file);
    if (!keep || !header || !OurJpegDecodersTake(*header))
        return {};
    return decode(file, *header, keep, scaledSize(*header, keep), parts);
}

QImage DecodeJpegAtSize(const QByteArray& file, const QSize& size, int parts)
{
    const std::optional<JpegHeader> header = ReadJpegHeader(file);
    if (!header || !OurJpegDecodersTake(*header) || size.isEmpty())
        return {};
    for (const int keep : {1, 2, 4}) {
        const QSize scaled = scaledSize(*header, keep);
        if (scaled.width() >= size.width() && scaled.height() >= size.height())
            return decode(file, *header, keep, size, parts);
    }
    return {};
}

} // namespace kavori
