#include "FullJpeg.h"

#include "JpegHeader.h"
#include "JpegProgressive.h"
#include "JpegScan.h"
#include "runtime/ParallelRun.h"
#include "runtime/ScratchMemory.h"

#include <algorithm>
#include <atomic>
#include <cstring>

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)
#define KAVORI_AVX2 1
#include <immintrin.h>
#else
#define KAVORI_AVX2 0
#endif

// The vector helpers below are inlined into their callers; no 32-byte vector crosses a call
// between code built for different processors.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wpsabi"
#endif

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

inline __attribute__((always_inline)) Lanes clampLanes(Lanes value)
{
    const Lanes low = Lanes{}, high = Lanes{} + 255;
    value = value < low ? low : value;
    return value > high ? high : value;
}

typedef uint8_t Bytes8 __attribute__((vector_size(8)));

// Widening and narrowing between bytes and lanes: plain vector code, and the AVX2
// instructions for it, which the compiler does not find on its own.
struct PlainLoads {
    static inline __attribute__((always_inline)) Lanes bytes(const uint8_t* p)
    {
        Bytes8 bytes;
        std::memcpy(&bytes, p, sizeof bytes);
        return __builtin_convertvector(bytes, Lanes);
    }
    static inline __attribute__((always_inline)) void store(uint8_t* p, Lanes lanes)
    {
        const Bytes8 bytes = __builtin_convertvector(lanes, Bytes8);
        std::memcpy(p, &bytes, sizeof bytes);
    }
    static inline __attribute__((always_inline)) Lanes shorts(const int16_t* c)
    {
        return Lanes{c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]};
    }
    static inline __attribute__((always_inline)) Lanes words(const uint16_t* c)
    {
        return Lanes{c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]};
    }
    static inline __attribute__((always_inline)) void transpose(Lanes* m)
    {
        alignas(32) int32_t cells[8][8];
        std::memcpy(cells, m, sizeof cells);
        for (int i = 0; i < 8; ++i)
            m[i] = Lanes{cells[0][i], cells[1][i], cells[2][i], cells[3][i],
                         cells[4][i], cells[5][i], cells[6][i], cells[7][i]};
    }
};

#if KAVORI_AVX2
struct Avx2Loads {
    static inline __attribute__((always_inline, target("avx2"))) Lanes bytes(const uint8_t* p)
    {
        return Lanes(_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p))));
    }
    // Values already within 0 to 255.
    static inline __attribute__((always_inline, target("avx2"))) void store(uint8_t* p, Lanes lanes)
    {
        const __m256i v = __m256i(lanes);
        const __m128i words =
            _mm_packus_epi32(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi16(words, words));
    }
    static inline __attribute__((always_inline, target("avx2"))) Lanes shorts(const int16_t* c)
    {
        return Lanes(_mm256_cvtepi16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(c))));
    }
    static inline __attribute__((always_inline, target("avx2"))) Lanes words(const uint16_t* c)
    {
        return Lanes(_mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(c))));
    }
    static inline __attribute__((always_inline, target("avx2"))) void transpose(Lanes* m)
    {
        __m256i r[8], t[8];
        for (int i = 0; i < 8; ++i)
            r[i] = __m256i(m[i]);
        for (int i = 0; i < 8; i += 2) {
            t[i] = _mm256_unpacklo_epi32(r[i], r[i + 1]);
            t[i + 1] = _mm256_unpackhi_epi32(r[i], r[i + 1]);
        }
        for (int i = 0; i < 8; i += 4) {
            r[i] = _mm256_unpacklo_epi64(t[i], t[i + 2]);
            r[i + 1] = _mm256_unpackhi_epi64(t[i], t[i + 2]);
            r[i + 2] = _mm256_unpacklo_epi64(t[i + 1], t[i + 3]);
            r[i + 3] = _mm256_unpackhi_epi64(t[i + 1], t[i + 3]);
        }
        for (int i = 0; i < 4; ++i) {
            m[i] = Lanes(_mm256_permute2x128_si256(r[i], r[i + 4], 0x20));
            m[i + 4] = Lanes(_mm256_permute2x128_si256(r[i], r[i + 4], 0x31));
        }
    }
};
#endif

inline __attribute__((always_inline)) Lanes loadInts(const int32_t* p)
{
    Lanes lanes;
    std::memcpy(&lanes, p, sizeof lanes);
    return lanes;
}

struct Component {
    int h = 1, v = 1; // sampling factors as the scan lays blocks out
    Lanes quant[8];   // the quantisation table row by row
};

// A few block rows of one component's samples, reused as the decode moves down the picture,
// so that samples are converted while still in the cache rather than after a whole plane.
struct BandPlane {
    uint8_t* samples = nullptr;
    int width = 0;
    int lines = 0; // a multiple of the component's MCU row height
    uint8_t* row(int y) const { return samples + ptrdiff_t(y % lines) * width; }
};

// What converting one row of the picture reads.
struct RowSource {
    const BandPlane* planes;
    int width;
    int hMax, vMax; // luma sampling; chroma is 1 x 1
    int chromaWidth, chromaHeight;
};

// Room a row's conversion works in: column sums and the two chroma rows at full width.
size_t sumsRoom(const RowSource& s)
{
    return size_t(s.chromaWidth) + 24;
}
size_t chromaRoom(const RowSource& s)
{
    return size_t(s.width) + 32;
}

namespace plain {
using Loads = PlainLoads;
#include "FullJpegRows.inc"
} // namespace plain

#if KAVORI_AVX2
#pragma GCC push_options
#pragma GCC target("avx2")
namespace avx2 {
using Loads = Avx2Loads;
#include "FullJpegRows.inc"
} // namespace avx2
#pragma GCC pop_options
#endif

using TransformRow = void (*)(const JpegBlocks&, const JpegScanLayout&, const Component*, size_t,
                              const BandPlane*, int, unsigned);

// Whether the wide vector paths may be used where the processor has them (tests turn them off
// to check the plain paths, which machines without AVX2 take).
std::atomic<bool> g_wideVectors{true};

bool wideVectors()
{
#if KAVORI_AVX2
    static const bool supported = __builtin_cpu_supports("avx2");
    return supported && g_wideVectors.load(std::memory_order_relaxed);
#else
    return false;
#endif
}

TransformRow rowTransform()
{
#if KAVORI_AVX2
    if (wideVectors())
        return avx2::transformRow;
#endif
    return plain::transformRow;
}

using ConvertRow = void (*)(const RowSource&, int, int32_t*, uint8_t*, QRgb*);

ConvertRow rowConverter()
{
#if KAVORI_AVX2
    if (wideVectors())
        return avx2::convertRow;
#endif
    return plain::convertRow;
}

// Of what our decoders take, the full size takes luma at 1 x 1, 2 x 1 or 2 x 2 (its
// upsampling knows no chroma halved only down).
bool decodable(const JpegHeader& h)
{
    return OurJpegDecodersTake(h) &&
           (h.components.size() == 1 || !(h.components[0].h == 1 && h.components[0].v == 2));
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
    for (size_t ci = 0; ci < count; ++ci) {
        const JpegComponent& jc = header->components[ci];
        Component& c = components[ci];
        c.h = grey ? 1 : jc.h;
        c.v = grey ? 1 : jc.v;
        const uint16_t* q = header->quant[size_t(jc.quantTable)].data();
        for (int v = 0; v < 8; ++v)
            c.quant[v] = Lanes{q[v * 8],     q[v * 8 + 1], q[v * 8 + 2], q[v * 8 + 3],
                               q[v * 8 + 4], q[v * 8 + 5], q[v * 8 + 6], q[v * 8 + 7]};
    }
    // A progressive file's scans give the same whole blocks a baseline file's one scan does.
    constexpr JpegKeptRows kAll = 0xFF;
    const JpegBlocks values =
        header->progressive
            ? DecodeProgressiveJpeg(file, *header, *layout, {kAll, kAll, kAll, kAll})
            : DecodeJpegScan(file, *header, *layout, 8, parts);
    if (!values.data())
        return {};
    QImage image = ScratchImage(QSize(header->width, header->height),
                                grey ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
    if (image.isNull())
        return {};

    const int width = header->width;
    const int height = header->height;
    const int hMax = components[0].h;
    const int vMax = components[0].v;
    // The chroma planes as libjpeg sees them: the samples the picture covers, edges repeated.
    const int chromaWidth = (width * 1 + hMax - 1) / hMax;
    const int chromaHeight = (height * 1 + vMax - 1) / vMax;
    const int mcuRows = layout->mcusY;
    const int mcuLines = vMax * 8;
    // Luma needs its own MCU row only; smoothing chroma down needs the MCU rows on both sides.
    const int chromaRowsKept = vMax == 2 ? 3 : 1;
    size_t bandBytes = 0;
    for (size_t ci = 0; ci < count; ++ci)
        bandBytes += size_t(layout->mcusX) * size_t(components[ci].h) * 8 *
                     size_t(ci == 0 ? mcuLines : 8 * chromaRowsKept);
    uchar* const bits = image.bits(); // detached here, once, before the threads write
    const qsizetype bytesPerLine = image.bytesPerLine();
    const TransformRow transformRow = rowTransform();
    const ConvertRow convertRow = rowConverter();
    constexpr unsigned kLuma = 1, kChroma = 6;
    // A few parts a core, so that one held up by another program does not hold up the rest;
    // each part transforms one chroma MCU row more above and below than its own.
    const int rowParts = std::min(mcuRows, ParallelWidth() * 2);
    RunInParallel(rowParts, [&](int part) {
        const int first = mcuRows * part / rowParts;
        const int last = mcuRows * (part + 1) / rowParts;
        std::vector<uint8_t> room(bandBytes);
        BandPlane bands[3];
        uint8_t* next = room.data();
        for (size_t ci = 0; ci < count; ++ci) {
            bands[ci].samples = next;
            bands[ci].width = layout->mcusX * components[ci].h * 8;
            bands[ci].lines = ci == 0 ? mcuLines : 8 * chromaRowsKept;
            next += size_t(bands[ci].width) * size_t(bands[ci].lines);
        }
        const RowSource source{bands, width, hMax, vMax, chromaWidth, chromaHeight};
        std::vector<int32_t> sums(sumsRoom(source));
        std::vector<uint8_t> up(2 * chromaRoom(source));
        int chromaNext = vMax == 2 ? std::max(0, first - 1) : first;
        for (int my = first; my < last; ++my) {
            transformRow(values, *layout, components, count, bands, my, kLuma);
            const int chromaNeeded = vMax == 2 ? std::min(my + 1, mcuRows - 1) : my;
            for (; !grey && chromaNext <= chromaNeeded; ++chromaNext)
                transformRow(values, *layout, components, count, bands, chromaNext, kChroma);
            for (int y = my * mcuLines; y < std::min(height, (my + 1) * mcuLines); ++y) {
                if (grey)
                    std::memcpy(bits + y * bytesPerLine, bands[0].row(y), size_t(width));
                else
                    convertRow(source, y, sums.data(), up.data(),
                               reinterpret_cast<QRgb*>(bits + y * bytesPerLine));
            }
        }
    });
    return image;
}

void InverseDctBlock(const int16_t* coefficients, const uint16_t* quant, uint8_t* out,
                     ptrdiff_t stride)
{
#if KAVORI_AVX2
    if (wideVectors())
        return avx2::idctTableBlock(coefficients, quant, out, stride);
#endif
    plain::idctTableBlock(coefficients, quant, out, stride);
}

void UseWideVectorsForFullJpeg(bool use)
{
    g_wideVectors = use;
}

} // namespace kavori
