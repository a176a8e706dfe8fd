#include "FullJpeg.h"

#include "JpegHeader.h"
#include "JpegScan.h"
#include "PlaneScaling.h"
#include "runtime/ParallelRun.h"
#include "runtime/ScratchMemory.h"

#include <algorithm>
#include <cstring>

namespace kavori {

namespace {

// The accurate integer inverse DCT (the Loeffler, Ligtenberg and Moschytz factorisation in
// 13-bit fixed point with two extra bits between the passes), the one libjpeg decodes with by
// default, so that our pixels are its pixels. Eight columns at once in vector lanes: the
// column pass works on whole rows, the row pass on the transposed block.
typedef int32_t Lanes __attribute__((vector_size(32)));

constexpr int kConstBits = 13;
constexpr int kPass1Bits = 2;

constexpr int32_t k0_298631336 = 2446;
constexpr int32_t k0_390180644 = 3196;
constexpr int32_t k0_541196100 = 4433;
constexpr int32_t k0_765366865 = 6270;
constexpr int32_t k0_899976223 = 7373;
constexpr int32_t k1_175875602 = 9633;
constexpr int32_t k1_501321110 = 12299;
constexpr int32_t k1_847759065 = 15137;
constexpr int32_t k1_961570560 = 16069;
constexpr int32_t k2_053119869 = 16819;
constexpr int32_t k2_562915447 = 20995;
constexpr int32_t k3_072711026 = 25172;

// One 8-point pass over eight lanes; `shift` the descaling of its outputs.
inline __attribute__((always_inline)) void idctPass(const Lanes* in, Lanes* out, int shift)
{
    Lanes z2 = in[2], z3 = in[6];
    Lanes z1 = (z2 + z3) * k0_541196100;
    Lanes tmp2 = z1 + z3 * -k1_847759065;
    Lanes tmp3 = z1 + z2 * k0_765366865;
    z2 = in[0];
    z3 = in[4];
    Lanes tmp0 = (z2 + z3) << kConstBits;
    Lanes tmp1 = (z2 - z3) << kConstBits;
    const Lanes tmp10 = tmp0 + tmp3, tmp13 = tmp0 - tmp3;
    const Lanes tmp11 = tmp1 + tmp2, tmp12 = tmp1 - tmp2;

    tmp0 = in[7];
    tmp1 = in[5];
    tmp2 = in[3];
    tmp3 = in[1];
    z1 = tmp0 + tmp3;
    z2 = tmp1 + tmp2;
    z3 = tmp0 + tmp2;
    Lanes z4 = tmp1 + tmp3;
    const Lanes z5 = (z3 + z4) * k1_175875602;
    tmp0 = tmp0 * k0_298631336;
    tmp1 = tmp1 * k2_053119869;
    tmp2 = tmp2 * k3_072711026;
    tmp3 = tmp3 * k1_501321110;
    z1 = z1 * -k0_899976223;
    z2 = z2 * -k2_562915447;
    z3 = z3 * -k1_961570560 + z5;
    z4 = z4 * -k0_390180644 + z5;
    tmp0 += z1 + z3;
    tmp1 += z2 + z4;
    tmp2 += z2 + z3;
    tmp3 += z1 + z4;

    const Lanes round = Lanes{} + (1 << (shift - 1));
    out[0] = (tmp10 + tmp3 + round) >> shift;
    out[7] = (tmp10 - tmp3 + round) >> shift;
    out[1] = (tmp11 + tmp2 + round) >> shift;
    out[6] = (tmp11 - tmp2 + round) >> shift;
    out[2] = (tmp12 + tmp1 + round) >> shift;
    out[5] = (tmp12 - tmp1 + round) >> shift;
    out[3] = (tmp13 + tmp0 + round) >> shift;
    out[4] = (tmp13 - tmp0 + round) >> shift;
}

inline __attribute__((always_inline)) void transpose(Lanes* m)
{
    alignas(32) int32_t cells[8][8];
    std::memcpy(cells, m, sizeof cells);
    for (int i = 0; i < 8; ++i)
        m[i] = Lanes{cells[0][i], cells[1][i], cells[2][i], cells[3][i],
                     cells[4][i], cells[5][i], cells[6][i], cells[7][i]};
}

// The block's 64 coefficients (natural order, not yet dequantised) to 8 x 8 samples.
inline __attribute__((always_inline)) void idctBlock(const int16_t* in, const Lanes* quant,
                                                     uint8_t* out, ptrdiff_t stride)
{
    Lanes rows[8];
    for (int v = 0; v < 8; ++v) {
        const int16_t* c = in + v * 8;
        rows[v] = Lanes{c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]} * quant[v];
    }
    Lanes columns[8];
    idctPass(rows, columns, kConstBits - kPass1Bits); // columns[y][u]
    transpose(columns);                               // [u][y]
    Lanes pixels[8];
    idctPass(columns, pixels, kConstBits + kPass1Bits + 3); // [x][y]
    const Lanes low = Lanes{}, high = Lanes{} + 255;
    alignas(32) int32_t cells[8][8];
    for (int x = 0; x < 8; ++x) {
        Lanes value = pixels[x] + 128;
        value = value < low ? low : value;
        value = value > high ? high : value;
        std::memcpy(cells[x], &value, sizeof value);
    }
    for (int y = 0; y < 8; ++y) {
        uint8_t* line = out + y * stride;
        for (int x = 0; x < 8; ++x)
            line[x] = uint8_t(cells[x][y]);
    }
}

struct Component {
    int h = 1, v = 1; // sampling factors as the scan lays blocks out
    Lanes quant[8];   // the quantisation table row by row
};

// The blocks of MCU rows [from, to) into the planes.
#if defined(__x86_64__) && defined(__linux__) && !defined(__clang__)
__attribute__((target_clones("avx2", "default")))
#endif
void transformMcuRows(const JpegBlocks& values, const JpegScanLayout& layout,
                      const Component* components, size_t count, SamplePlane* planes, int from,
                      int to)
{
    const int stride = values.stride();
    for (int my = from; my < to; ++my) {
        const int16_t* block =
            values.data() + qsizetype(my) * layout.mcusX * layout.blocksPerMcu * stride;
        for (int mx = 0; mx < layout.mcusX; ++mx)
            for (size_t ci = 0; ci < count; ++ci) {
                const Component& c = components[ci];
                SamplePlane& plane = planes[ci];
                for (int by = 0; by < c.v; ++by)
                    for (int bx = 0; bx < c.h; ++bx, block += stride)
                        idctBlock(block, c.quant,
                                  plane.row((my * c.v + by) * 8) + (mx * c.h + bx) * 8,
                                  plane.width);
            }
    }
}

inline int clampByte(int value)
{
    return std::min(std::max(value, 0), 255);
}

// libjpeg's triangle-filter upsampling of chroma to twice its width: each output sample
// three quarters of the nearer input and one quarter of the next, rounding alternately down
// and up; the edges repeat. sums are the column sums of the vertical step (each 0 to 1020,
// scaled by 4) when `vertical`, else plain samples.
void upsampleRow(const int* sums, int samples, int width, bool vertical, uint8_t* out)
{
    const int shift = vertical ? 4 : 2;
    const int even = vertical ? 8 : 1;
    const int odd = vertical ? 7 : 2;
    for (int i = 0; i < samples; ++i) {
        const int here = 3 * sums[i];
        const int before = sums[std::max(i - 1, 0)];
        const int after = sums[std::min(i + 1, samples - 1)];
        if (2 * i < width)
            out[2 * i] = uint8_t((here + before + even) >> shift);
        if (2 * i + 1 < width)
            out[2 * i + 1] = uint8_t((here + after + odd) >> shift);
    }
}

// YCbCr to RGB as libjpeg converts it, in 16.16 fixed point.
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

// Grey, or YCbCr with luma at 1 x 1, 2 x 1 or 2 x 2 and chroma at 1 x 1.
bool decodable(const JpegHeader& h)
{
    const size_t count = h.components.size();
    if (!h.baseline || !h.fullSpectrum || h.adobeRgb || h.height == 0 || h.width == 0 ||
        h.scanComponents != int(count) || (count != 1 && count != 3))
        return false;
    for (const JpegComponent& c : h.components)
        if (!h.quantDefined[size_t(c.quantTable)])
            return false;
    if (count == 1)
        return true;
    const bool rgbNames =
        h.components[0].id == 'R' && h.components[1].id == 'G' && h.components[2].id == 'B';
    const JpegComponent& luma = h.components[0];
    const bool lumaOk = (luma.h == 1 && luma.v == 1) || (luma.h == 2 && luma.v == 1) ||
                        (luma.h == 2 && luma.v == 2);
    return !rgbNames && lumaOk && h.components[1].h == 1 && h.components[1].v == 1 &&
           h.components[2].h == 1 && h.components[2].v == 1;
}

// Beyond these the usual reader, with its own allocation limit, decides.
constexpr qint64 kMaxPixels = qint64(100) << 20;

} // namespace

QImage DecodeFullJpeg(const QByteArray& file, int parts)
{
    const std::optional<JpegHeader> header = ReadJpegHeader(file);
    if (!header || !decodable(*header) || qint64(header->width) * header->height > kMaxPixels)
        return {};
    const std::optional<JpegScanLayout> layout = LayoutOf(*header);
    if (!layout)
        return {};
    const bool grey = header->components.size() == 1;
    const size_t count = header->components.size();
    Component components[3];
    std::vector<SamplePlane> planes;
    for (size_t ci = 0; ci < count; ++ci) {
        const JpegComponent& jc = header->components[ci];
        Component& c = components[ci];
        c.h = grey ? 1 : jc.h;
        c.v = grey ? 1 : jc.v;
        const uint16_t* q = header->quant[size_t(jc.quantTable)].data();
        for (int v = 0; v < 8; ++v)
            c.quant[v] = Lanes{q[v * 8],     q[v * 8 + 1], q[v * 8 + 2], q[v * 8 + 3],
                               q[v * 8 + 4], q[v * 8 + 5], q[v * 8 + 6], q[v * 8 + 7]};
        planes.emplace_back(layout->mcusX * c.h * 8, layout->mcusY * c.v * 8);
        if (!planes.back().samples.data())
            return {};
    }
    const JpegBlocks values = DecodeJpegScan(file, *header, *layout, 8, parts);
    if (!values.data())
        return {};
    QImage image = ScratchImage(QSize(header->width, header->height),
                                grey ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
    if (image.isNull())
        return {};

    const int mcuRows = layout->mcusY;
    const int rowParts = std::min(mcuRows, ParallelWidth() * 4);
    RunInParallel(rowParts, [&](int part) {
        transformMcuRows(values, *layout, components, count, planes.data(),
                         mcuRows * part / rowParts, mcuRows * (part + 1) / rowParts);
    });

    const int width = header->width;
    const int height = header->height;
    const int hMax = components[0].h;
    const int vMax = components[0].v;
    // The chroma planes as libjpeg sees them: the samples the picture covers, edges repeated.
    const int chromaWidth = (width * 1 + hMax - 1) / hMax;
    const int chromaHeight = (height * 1 + vMax - 1) / vMax;
    uchar* const bits = image.bits(); // detached here, once, before the threads write
    const qsizetype bytesPerLine = image.bytesPerLine();
    const int lineParts = std::min(height, ParallelWidth() * 4);
    RunInParallel(lineParts, [&](int part) {
        std::vector<int> sums(static_cast<size_t>(chromaWidth));
        std::vector<uint8_t> up(size_t(2) * size_t(width));
        for (int y = height * part / lineParts; y < height * (part + 1) / lineParts; ++y) {
            if (grey) {
                std::memcpy(bits + y * bytesPerLine, planes[0].row(y), size_t(width));
                continue;
            }
            const uint8_t* chroma[2];
            for (int ci = 1; ci <= 2; ++ci) {
                const SamplePlane& plane = planes[size_t(ci)];
                uint8_t* out = up.data() + (ci - 1) * width;
                if (hMax == 1 && vMax == 1) {
                    chroma[ci - 1] = plane.row(y);
                    continue;
                }
                const int row = y / vMax;
                if (vMax == 2) {
                    // The nearer chroma row three quarters, the next one over one quarter.
                    const int other = std::clamp(y % 2 ? row + 1 : row - 1, 0, chromaHeight - 1);
                    const uint8_t* near = plane.row(row);
                    const uint8_t* far = plane.row(other);
                    for (int x = 0; x < chromaWidth; ++x)
                        sums[size_t(x)] = 3 * near[x] + far[x];
                } else {
                    const uint8_t* near = plane.row(row);
                    for (int x = 0; x < chromaWidth; ++x)
                        sums[size_t(x)] = near[x];
                }
                upsampleRow(sums.data(), chromaWidth, width, vMax == 2, out);
                chroma[ci - 1] = out;
            }
            toRgb(planes[0].row(y), chroma[0], chroma[1], width,
                  reinterpret_cast<QRgb*>(bits + y * bytesPerLine));
        }
    });
    return image;
}

} // namespace kavori
