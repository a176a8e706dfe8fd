#include "JpegScan.h"

#include "runtime/ParallelRun.h"

#include <algorithm>
#include <cstring>

namespace kavori {

namespace {

constexpr int kFastBits = 10;
// Zero bytes after the data: a block of 63 longest codes reads at most 252 bytes, and a block
// is only started inside the data.
constexpr int kPadding = 512;
// Pieces smaller than this are not worth a thread.
constexpr qsizetype kMinPieceBytes = 96 * 1024;

// A canonical Huffman table with a lookup of the first kFastBits bits.
struct Huffman {
    uint16_t fast[1 << kFastBits]{};  // (length << 8) | symbol; 0 for longer codes
    int32_t fastAc[1 << kFastBits]{}; // (value << 16) | (run << 8) | length with the value bits
    int32_t maxCode[18]{};
    int32_t valueOffset[18]{};
    uint8_t symbols[256]{};
};

bool buildHuffman(const JpegHuffmanCodes& codes, bool ac, Huffman& t)
{
    if (!codes.defined)
        return false;
    std::copy(codes.symbols.begin(), codes.symbols.end(), t.symbols);
    int code = 0;
    int k = 0;
    for (int length = 1; length <= 16; ++length) {
        const int count = codes.counts[length - 1];
        t.valueOffset[length] = k - code;
        for (int i = 0; i < count; ++i, ++code, ++k) {
            if (code >= (1 << length))
                return false; // more codes than the length can hold
            if (length <= kFastBits) {
                const int shift = kFastBits - length;
                for (int fill = 0; fill < (1 << shift); ++fill)
                    t.fast[(code << shift) | fill] = uint16_t((length << 8) | codes.symbols[k]);
            }
        }
        t.maxCode[length] = count ? code - 1 : -1;
        code <<= 1;
    }
    t.maxCode[17] = INT32_MAX;
    if (!ac)
        return true;
    for (int bits = 0; bits < (1 << kFastBits); ++bits) {
        const int entry = t.fast[bits];
        const int length = entry >> 8;
        const int run = (entry & 255) >> 4;
        const int size = entry & 15;
        if (!entry || !size || length + size > kFastBits)
            continue;
        int value = (bits >> (kFastBits - length - size)) & ((1 << size) - 1);
        if (value < (1 << (size - 1)))
            value -= (1 << size) - 1;
        t.fastAc[bits] = int32_t(uint32_t(value) << 16) | (run << 8) | (length + size);
    }
    return true;
}

// Reads the unstuffed data through a 64-bit window kept in a register.
class Bits {
public:
    Bits(const uint8_t* data, uint64_t pos) : data_(data) { seek(pos); }
    uint64_t pos() const { return pos_; }
    void seek(uint64_t pos)
    {
        pos_ = pos;
        fill();
    }
    // Afterwards the window holds at least 32 bits: a code and the bits of its value.
    void ensure()
    {
        if (available_ < 32)
            fill();
    }
    uint64_t window() const { return window_; }
    void skip(int count)
    {
        window_ <<= count;
        available_ -= count;
        pos_ += uint64_t(count);
    }

private:
    void fill()
    {
        uint64_t word;
        std::memcpy(&word, data_ + (pos_ >> 3), 8);
        window_ = __builtin_bswap64(word) << (pos_ & 7);
        available_ = 64 - int(pos_ & 7);
    }
    const uint8_t* data_;
    uint64_t pos_ = 0;
    uint64_t window_ = 0;
    int available_ = 0;
};

// Call after Bits::ensure().
inline int decodeSymbol(const Huffman& t, Bits& b)
{
    const uint64_t window = b.window();
    const unsigned entry = t.fast[window >> (64 - kFastBits)];
    if (entry) {
        b.skip(int(entry >> 8));
        return int(entry & 255);
    }
    const auto top = int32_t(window >> 48);
    for (int length = kFastBits + 1; length <= 16; ++length) {
        const int32_t code = top >> (16 - length);
        if (code <= t.maxCode[length]) {
            b.skip(length);
            return t.symbols[(code + t.valueOffset[length]) & 255];
        }
    }
    return -1;
}

// The value of the next `size` bits (at most 16, still in the window).
inline int receiveExtend(Bits& b, int size)
{
    if (size == 0)
        return 0;
    const auto value = int(b.window() >> (64 - size));
    b.skip(size);
    return value < (1 << (size - 1)) ? value - (1 << size) + 1 : value;
}

struct Scan {
    const uint8_t* data = nullptr; // unstuffed, followed by kPadding zero bytes
    uint64_t dataBits = 0;
    int blocksPerMcu = 1;
    int sizes[10]{}; // each block's kept values and one spare
    const Huffman* dc[10]{};
    const Huffman* ac[10]{};
    // For each block of an MCU, zigzag position -> index among the kept values; the spare for
    // the others, so that every value is stored without a branch.
    int8_t outIndex[10][64]{};

    // Decodes the block of the given MCU position starting at b.pos into out (the DC value as
    // the difference it is sent as). False for a code no table holds or a run past the block's end;
    // b.pos then still moves on deterministically, which the guessing decoders rely on.
    bool block(Bits& b, int phase, int16_t* out) const
    {
        std::fill_n(out, sizes[phase], int16_t(0));
        b.ensure();
        const int dcSize = decodeSymbol(*dc[phase], b);
        if (dcSize < 0 || dcSize > 11)
            return false;
        out[0] = int16_t(receiveExtend(b, dcSize));
        const Huffman& table = *ac[phase];
        const int8_t* index = outIndex[phase];
        for (int k = 1; k < 64;) {
            b.ensure();
            const int32_t fast = table.fastAc[b.window() >> (64 - kFastBits)];
            int value;
            if (fast) {
                k += (fast >> 8) & 15;
                b.skip(fast & 255);
                value = fast >> 16;
            } else {
                const int symbol = decodeSymbol(table, b);
                if (symbol < 0)
                    return false;
                const int run = symbol >> 4;
                const int size = symbol & 15;
                if (size == 0) {
                    if (run != 15)
                        break; // end of block
                    k += 16;
                    continue;
                }
                k += run;
                value = receiveExtend(b, size);
            }
            if (k > 63)
                return false;
            out[index[k]] = int16_t(value);
            ++k;
        }
        return true;
    }
};

// The blocks one decoder went through: their values, where each started, which failed.
struct Piece {
    JpegBlocks values;
    ScratchBuffer starts; // uint64_t (bit << 4) | phase of each block
    qint64 blocks = 0;
    std::vector<qint64> failures;
    uint64_t endBit = 0;
    int endPhase = 0;
};

// The first piece starts at a known boundary; only the guessing ones note where blocks start.
void decodePiece(const Scan& scan, uint64_t bit, uint64_t stopBit, qint64 capacity, bool guessed,
                 Piece& piece)
{
    piece.values = JpegBlocks(capacity, scan.sizes, scan.blocksPerMcu);
    if (guessed)
        piece.starts = ScratchBuffer(size_t(capacity) * sizeof(uint64_t));
    if (!piece.values.data() || (guessed && !piece.starts.data()))
        return;
    auto* starts = piece.starts.as<uint64_t>();
    Bits b(scan.data, bit);
    int phase = 0;
    qint64 blocks = 0;
    int16_t* out = piece.values.data();
    while (b.pos() < stopBit && b.pos() < scan.dataBits && blocks < capacity) {
        if (guessed)
            starts[blocks] = (b.pos() << 4) | uint64_t(phase);
        const uint64_t before = b.pos();
        int16_t* values = out;
        out += scan.sizes[phase];
        if (!scan.block(b, phase, values)) {
            piece.failures.push_back(blocks);
            if (b.pos() == before)
                b.seek(before + 1); // a guessing decoder always moves on
        }
        ++blocks;
        phase = phase + 1 == scan.blocksPerMcu ? 0 : phase + 1;
    }
    piece.blocks = blocks;
    piece.endBit = b.pos();
    piece.endPhase = phase;
}

bool anyFailureIn(const Piece& piece, qint64 from, qint64 to)
{
    const auto it = std::lower_bound(piece.failures.begin(), piece.failures.end(), from);
    return it != piece.failures.end() && *it < to;
}

// Joins pieces decoded from guessed starts to the first piece, decoding on from the end of
// each correct run until it meets a block start the next piece went through.
JpegBlocks joinPieces(const Scan& scan, std::vector<Piece>& pieces, qint64 totalBlocks)
{
    Piece& first = pieces[0];
    if (!first.failures.empty() || !first.values.data())
        return {};
    JpegBlocks out = std::move(first.values);
    qint64 blocks = first.blocks;
    Bits b(scan.data, first.endBit);
    int phase = first.endPhase;
    size_t next = 1;
    qint64 index = 0;
    while (blocks < totalBlocks) {
        if (next < pieces.size()) {
            const Piece& piece = pieces[next];
            const auto* starts = piece.starts.as<uint64_t>();
            while (index < piece.blocks && (starts[index] >> 4) < b.pos())
                ++index;
            if (index == piece.blocks) {
                ++next; // that piece never fell in step; its successor may
                index = 0;
                continue;
            }
            if (starts[index] == ((b.pos() << 4) | uint64_t(phase))) {
                const qint64 take = std::min(piece.blocks - index, totalBlocks - blocks);
                if (anyFailureIn(piece, index, index + take))
                    return {};
                // The same places in the MCU, so the same layout from here on.
                std::memcpy(out.block(blocks), piece.values.block(index),
                            size_t(piece.values.offset(index + take) - piece.values.offset(index)) *
                                sizeof(int16_t));
                blocks += take;
                if (index + take < piece.blocks) {
                    b.seek(starts[index + take] >> 4);
                    phase = int(starts[index + take] & 15);
                } else {
                    b.seek(piece.endBit);
                    phase = piece.endPhase;
                }
                ++next;
                index = 0;
                continue;
            }
        }
        if (b.pos() >= scan.dataBits || !scan.block(b, phase, out.block(blocks)))
            return {};
        phase = phase + 1 == scan.blocksPerMcu ? 0 : phase + 1;
        ++blocks;
    }
    if (b.pos() > scan.dataBits)
        return {}; // the last blocks ran into the end of the file
    return out;
}

// Copies the entropy-coded data without its stuffed zero bytes; notes where each restart
// interval starts. Stops at the first marker that is not a restart marker.
// The entropy-coded data without its stuffed zero bytes, then kPadding zero bytes.
struct Unstuffed {
    ScratchBuffer buffer;
    size_t size = 0;
    std::vector<uint64_t> restarts; // where each restart interval after the first starts
    bool badRestart = false;        // restart markers out of sequence
    const uint8_t* data() const { return buffer.as<uint8_t>(); }
};

// Stops at the first marker that is not a restart marker.
bool unstuff(const uint8_t* p, const uint8_t* end, Unstuffed& out)
{
    out.buffer = ScratchBuffer(size_t(end - p) + kPadding);
    auto* to = out.buffer.as<uint8_t>();
    if (!to)
        return false;
    uint8_t* const start = to;
    int expected = 0;
    while (p < end) {
        const auto* ff = static_cast<const uint8_t*>(std::memchr(p, 0xFF, size_t(end - p)));
        if (!ff) {
            to = std::copy(p, end, to);
            break;
        }
        to = std::copy(p, ff, to);
        const uint8_t* q = ff + 1;
        while (q < end && *q == 0xFF)
            ++q;
        if (q == end)
            break;
        if (*q == 0x00) {
            *to++ = 0xFF;
        } else if (*q >= 0xD0 && *q <= 0xD7) {
            out.badRestart = out.badRestart || (*q & 7) != expected;
            expected = (expected + 1) & 7;
            out.restarts.push_back(uint64_t(to - start));
        } else {
            break;
        }
        p = q + 1;
    }
    out.size = size_t(to - start);
    std::memset(to, 0, kPadding);
    return true;
}

// Turns DC differences into DC values, starting again at each restart interval.
void sumDc(JpegBlocks& values, const JpegScanLayout& layout, int restartInterval)
{
    int prediction[4] = {};
    const qint64 mcus = qint64(layout.mcusX) * layout.mcusY;

    int16_t* block = values.data();
    for (qint64 mcu = 0; mcu < mcus; ++mcu) {
        if (restartInterval > 0 && mcu % restartInterval == 0)
            std::fill(std::begin(prediction), std::end(prediction), 0);
        for (int i = 0; i < layout.blocksPerMcu; block += values.size(i), ++i) {
            int& p = prediction[layout.blockComponent[size_t(i)]];
            p = std::clamp(p + block[0], -32768, 32767);
            block[0] = int16_t(p);
        }
    }
}

JpegBlocks decodeWithRestarts(const Scan& scan, const JpegScanLayout& layout,
                              const std::vector<uint64_t>& restarts, int interval, int parts)
{
    const qint64 mcus = qint64(layout.mcusX) * layout.mcusY;
    const qint64 intervals = (mcus + interval - 1) / interval;
    if (qint64(restarts.size()) < intervals - 1)
        return {};
    std::vector<uint64_t> startBits{0};
    for (qint64 i = 0; i + 1 < intervals; ++i)
        startBits.push_back(restarts[size_t(i)] * 8);
    startBits.push_back(scan.dataBits);
    JpegBlocks out(layout.totalBlocks(), scan.sizes, layout.blocksPerMcu);
    if (!out.data())
        return {};
    std::atomic<bool> ok{true};
    const int used = int(std::clamp<qint64>(parts, 1, intervals));
    RunInParallel(used, [&](int part) {
        for (qint64 i = intervals * part / used; i < intervals * (part + 1) / used && ok; ++i) {
            Bits b(scan.data, startBits[size_t(i)]);
            const qint64 firstBlock = i * interval * layout.blocksPerMcu;
            const qint64 blocks =
                std::min<qint64>(interval, mcus - i * interval) * layout.blocksPerMcu;
            int16_t* values = out.block(firstBlock); // the first of an MCU
            for (qint64 k = 0; k < blocks; ++k) {
                const int phase = int(k % layout.blocksPerMcu);
                int16_t* here = values;
                values += scan.sizes[phase];
                if (!scan.block(b, phase, here) || b.pos() > startBits[size_t(i) + 1]) {
                    ok = false;
                    return;
                }
            }
        }
    });
    if (!ok)
        return {};
    return out;
}

} // namespace

std::optional<JpegScanLayout> LayoutOf(const JpegHeader& header)
{
    JpegScanLayout layout;
    if (header.components.size() == 1) {
        layout.blocksPerMcu = 1;
        layout.mcusX = (header.width + 7) / 8;
        layout.mcusY = (header.height + 7) / 8;
        return layout;
    }
    int hMax = 1;
    int vMax = 1;
    for (const JpegComponent& c : header.components) {
        hMax = std::max(hMax, c.h);
        vMax = std::max(vMax, c.v);
    }
    for (size_t i = 0; i < header.components.size(); ++i) {
        const JpegComponent& c = header.components[i];
        for (int n = 0; n < c.h * c.v; ++n) {
            if (layout.blocksPerMcu == 10)
                return std::nullopt;
            layout.blockComponent[size_t(layout.blocksPerMcu++)] = uint8_t(i);
        }
    }
    layout.mcusX = (header.width + 8 * hMax - 1) / (8 * hMax);
    layout.mcusY = (header.height + 8 * vMax - 1) / (8 * vMax);
    return layout;
}

JpegBlocks::JpegBlocks(qint64 count, const int* sizes, int blocksPerMcu)
    : count_(count), perMcu_(blocksPerMcu)
{
    for (int i = 0; i < blocksPerMcu; ++i)
        starts_[size_t(i) + 1] = starts_[size_t(i)] + sizes[i];
    mcuValues_ = starts_[size_t(blocksPerMcu)];
    const qint64 mcus = (count + blocksPerMcu - 1) / blocksPerMcu;
    values_ = ScratchBuffer(size_t(mcus) * size_t(mcuValues_) * sizeof(int16_t));
}

JpegBlocks DecodeJpegScan(const QByteArray& file, const JpegHeader& header,
                          const JpegScanLayout& layout, int keep, int parts)
{
    if (keep != 1 && keep != 2 && keep != 4 && keep != 8)
        return {};
    std::array<JpegKeptRows, 4> kept;
    kept.fill(JpegKeptRows((1 << keep) - 1));
    return DecodeJpegScan(file, header, layout, kept, parts);
}

JpegBlocks DecodeJpegScan(const QByteArray& file, const JpegHeader& header,
                          const JpegScanLayout& layout, const std::array<JpegKeptRows, 4>& kept,
                          int parts)
{
    if (!header.baseline || !header.fullSpectrum || header.height == 0 ||
        header.scanComponents != int(header.components.size()) || layout.blocksPerMcu == 0 ||
        header.components.size() > kept.size())
        return {};
    for (size_t i = 0; i < header.components.size(); ++i)
        if (kept[i] == 0)
            return {};
    Huffman tables[8];
    bool built[8] = {};
    Scan scan;
    for (int i = 0; i < layout.blocksPerMcu; ++i) {
        const JpegComponent& c = header.components[layout.blockComponent[size_t(i)]];
        const int kinds[2] = {c.dcTable, 4 + c.acTable}; // DC tables 0-3, AC tables 4-7
        for (const int slot : kinds) {
            if (!built[slot] &&
                !buildHuffman(slot < 4 ? header.dc[size_t(slot)] : header.ac[size_t(slot - 4)],
                              slot >= 4, tables[slot]))
                return {};
            built[slot] = true;
        }
        scan.dc[i] = &tables[kinds[0]];
        scan.ac[i] = &tables[kinds[1]];
        const unsigned rows = kept[layout.blockComponent[size_t(i)]];
        const int count = __builtin_popcount(rows);
        scan.sizes[i] = count * count + 1;
        // Where row or column r lands among the kept ones.
        auto rank = [rows](int r) { return __builtin_popcount(rows & ((1u << r) - 1)); };
        for (int k = 0; k < 64; ++k) {
            const int row = kJpegZigzag[size_t(k)] / 8;
            const int column = kJpegZigzag[size_t(k)] % 8;
            const bool keptHere = (rows >> row & 1) && (rows >> column & 1);
            scan.outIndex[i][k] =
                int8_t(keptHere ? rank(row) * count + rank(column) : count * count);
        }
    }
    scan.blocksPerMcu = layout.blocksPerMcu;

    const auto* begin = reinterpret_cast<const uint8_t*>(file.constData());
    Unstuffed data;
    if (header.scanData > file.size() ||
        !unstuff(begin + header.scanData, begin + file.size(), data))
        return {};
    scan.data = data.data();
    scan.dataBits = uint64_t(data.size) * 8;
    const qint64 totalBlocks = layout.totalBlocks();
    const auto bytes = qsizetype(data.size);
    // Every block takes at least two bits (a DC code and an AC code); a header promising more
    // blocks than the data can hold is damaged, and is not worth the buffers it would take.
    if (totalBlocks > qint64(scan.dataBits / 2) + 1)
        return {};
    if (parts <= 0)
        parts = int(std::clamp<qsizetype>(bytes / kMinPieceBytes, 1, ParallelWidth()));

    JpegBlocks values;
    if (header.restartInterval > 0) {
        if (data.badRestart)
            return {};
        values = decodeWithRestarts(scan, layout, data.restarts, header.restartInterval, parts);
    } else {
        // The first piece holds every block in the end. The others get room for four times
        // their share: a piece of plain sky holds far more blocks than its share of the bits,
        // and one that runs out of room stops early, leaving the rest to the joining decoder.
        std::vector<Piece> pieces(size_t(std::max(1, parts)));
        const uint64_t pieceBits = scan.dataBits / pieces.size();
        const qint64 room = std::min(totalBlocks, 4 * totalBlocks / qint64(pieces.size()) + 1024);
        RunInParallel(int(pieces.size()), [&](int i) {
            const uint64_t start = (pieceBits * uint64_t(i)) & ~uint64_t(7);
            const uint64_t stop =
                i + 1 == int(pieces.size()) ? scan.dataBits : pieceBits * uint64_t(i + 1);
            decodePiece(scan, start, stop, i == 0 ? totalBlocks : room, i > 0, pieces[size_t(i)]);
        });
        values = joinPieces(scan, pieces, totalBlocks);
    }
    if (values.data())
        sumDc(values, layout, header.restartInterval);
    return values;
}

} // namespace kavori
