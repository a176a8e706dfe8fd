#include "JpegScan.h"

#include "JpegEntropy.h"
#include "runtime/ParallelRun.h"

#include <algorithm>
#include <cstring>

namespace kavori {

namespace {

using namespace jpeg;

// Pieces smaller than this are not worth a thread.
constexpr qsizetype kMinPieceBytes = 96 * 1024;

struct Scan {
    const uint8_t* data = nullptr; // unstuffed, followed by kPadding zero bytes
    uint64_t dataBits = 0;
    int blocksPerMcu = 1;
    int sizes[10]{}; // each block's kept values and one spare
    const Huffman* dc[10]{};
    const Huffman* ac[10]{};
    uint8_t component[10]{};
    // For each block of an MCU, zigzag position -> index among the kept values; the spare for
    // the others, so that every value is stored without a branch.
    int8_t outIndex[10][64]{};

    // Decodes the block of the given MCU position starting at b.pos into out. The DC value,
    // sent as a difference, is added to its component's prediction, which out[0] then holds
    // (sums wrap around in 16 bits, so a decoder started at a guessed place can be put right
    // later by adding a constant). False for a code no table holds or a run past the block's
    // end; b.pos then still moves on deterministically, which the guessing decoders rely on.
    bool block(Bits& shared, int phase, int16_t* out, uint16_t* prediction) const
    {
        LocalBits local(shared);
        Bits& b = local.bits;
        std::fill_n(out, sizes[phase], int16_t(0));
        b.ensure();
        uint16_t& dcValue = prediction[component[phase]];
        const int dcSize = decodeSymbol(*dc[phase], b);
        if (dcSize < 0 || dcSize > 11) {
            out[0] = int16_t(dcValue);
            return false;
        }
        dcValue = uint16_t(dcValue + uint16_t(receiveExtend(b, dcSize)));
        out[0] = int16_t(dcValue);
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
    uint16_t prediction[4] = {}; // the DC predictions after the last block, from 0 at the start
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
    uint16_t prediction[4] = {};
    while (b.pos() < stopBit && b.pos() < scan.dataBits && blocks < capacity) {
        if (guessed)
            starts[blocks] = (b.pos() << 4) | uint64_t(phase);
        const uint64_t before = b.pos();
        int16_t* values = out;
        out += scan.sizes[phase];
        if (!scan.block(b, phase, values, prediction)) {
            piece.failures.push_back(blocks);
            if (b.pos() == before)
                b.seek(before + 1); // a guessing decoder always moves on
        }
        ++blocks;
        phase = phase + 1 == scan.blocksPerMcu ? 0 : phase + 1;
    }
    std::copy_n(prediction, 4, piece.prediction);
    piece.blocks = blocks;
    piece.endBit = b.pos();
    piece.endPhase = phase;
}

bool anyFailureIn(const Piece& piece, qint64 from, qint64 to)
{
    const auto it = std::lower_bound(piece.failures.begin(), piece.failures.end(), from);
    return it != piece.failures.end() && *it < to;
}

// The DC predictions a piece had reached before its block `index`: each component's value in
// its last block before there, 0 where the piece had none yet.
void predictionBefore(const Scan& scan, const Piece& piece, qint64 index, uint16_t* prediction)
{
    std::fill_n(prediction, 4, uint16_t(0));
    bool found[4] = {};
    for (qint64 j = index - 1; j >= 0 && j >= index - scan.blocksPerMcu; --j) {
        const int component = scan.component[j % scan.blocksPerMcu];
        if (!found[component])
            prediction[component] = uint16_t(piece.values.block(j)[0]);
        found[component] = true;
    }
}

// Copies `count` blocks of a guessing piece, from its block `fromIndex`, into place at block
// `toIndex` (the same place in the MCU), adding to each DC value the difference between the
// true prediction and the one the piece started from.
void adoptBlocks(const Scan& scan, const JpegBlocks& from, qint64 fromIndex, JpegBlocks& to,
                 qint64 toIndex, qint64 count, const uint16_t* offset)
{
    constexpr qint64 kChunk = 4096;
    const int parts = int(std::clamp<qint64>((count + kChunk - 1) / kChunk, 1, ParallelWidth()));
    RunInParallel(parts, [&](int part) {
        const qint64 first = count * part / parts;
        const qint64 last = count * (part + 1) / parts;
        int16_t* block = to.block(toIndex + first);
        std::memcpy(block, from.block(fromIndex + first),
                    size_t(from.offset(fromIndex + last) - from.offset(fromIndex + first)) *
                        sizeof(int16_t));
        int p = int((toIndex + first) % scan.blocksPerMcu);
        for (qint64 k = first; k < last; ++k) {
            block[0] = int16_t(uint16_t(block[0]) + offset[scan.component[p]]);
            block += scan.sizes[p];
            p = p + 1 == scan.blocksPerMcu ? 0 : p + 1;
        }
    });
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
    uint16_t prediction[4];
    std::copy_n(first.prediction, 4, prediction);
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
                uint16_t offset[4];
                predictionBefore(scan, piece, index, offset);
                for (int c = 0; c < 4; ++c) {
                    offset[c] = uint16_t(prediction[c] - offset[c]);
                    prediction[c] = uint16_t(piece.prediction[c] + offset[c]);
                }
                adoptBlocks(scan, piece.values, index, out, blocks, take, offset);
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
        if (b.pos() >= scan.dataBits || !scan.block(b, phase, out.block(blocks), prediction))
            return {};
        phase = phase + 1 == scan.blocksPerMcu ? 0 : phase + 1;
        ++blocks;
    }
    if (b.pos() > scan.dataBits)
        return {}; // the last blocks ran into the end of the file
    return out;
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
            uint16_t prediction[4] = {}; // each interval starts again from 0
            const qint64 firstBlock = i * interval * layout.blocksPerMcu;
            const qint64 blocks =
                std::min<qint64>(interval, mcus - i * interval) * layout.blocksPerMcu;
            int16_t* values = out.block(firstBlock); // the first of an MCU
            for (qint64 k = 0; k < blocks; ++k) {
                const int phase = int(k % layout.blocksPerMcu);
                int16_t* here = values;
                values += scan.sizes[phase];
                if (!scan.block(b, phase, here, prediction) || b.pos() > startBits[size_t(i) + 1]) {
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
        scan.component[i] = layout.blockComponent[size_t(i)];
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
    return values;
}

} // namespace kavori
