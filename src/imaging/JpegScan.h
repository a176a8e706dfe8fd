#pragma once

#include "JpegHeader.h"
#include "runtime/ScratchMemory.h"

#include <QByteArray>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace kavori {

// How the blocks of an interleaved baseline scan are laid out.
struct JpegScanLayout {
    int blocksPerMcu = 0;
    std::array<uint8_t, 10> blockComponent{}; // the component of each block of an MCU
    int mcusX = 0;
    int mcusY = 0;
    qint64 totalBlocks() const { return qint64(mcusX) * mcusY * blocksPerMcu; }
};

// The layout of the header's first scan; empty when it has more than 10 blocks an MCU.
std::optional<JpegScanLayout> LayoutOf(const JpegHeader& header);

// Coefficient blocks in scan order, each the kept values of its component and one spare. The
// sizes repeat with the MCU, so that a component keeping few values takes little room.
class JpegBlocks {
public:
    JpegBlocks() = default;
    // count blocks; block i has sizes[i % blocksPerMcu] values. data() is null when memory ran
    // out.
    JpegBlocks(qint64 count, const int* sizes, int blocksPerMcu);
    int16_t* data() { return values_.as<int16_t>(); }
    const int16_t* data() const { return values_.as<int16_t>(); }
    // Where block i starts, in values; for i == count(), where the blocks end.
    qint64 offset(qint64 i) const
    {
        return i / perMcu_ * mcuValues_ + starts_[size_t(i % perMcu_)];
    }
    int16_t* block(qint64 i) { return data() + offset(i); }
    const int16_t* block(qint64 i) const { return data() + offset(i); }
    qint64 count() const { return count_; }
    // The values of a block at this place in its MCU.
    int size(int phase) const { return starts_[size_t(phase) + 1] - starts_[size_t(phase)]; }

private:
    ScratchBuffer values_;
    qint64 count_ = 0;
    int perMcu_ = 1;
    int mcuValues_ = 0;
    std::array<int, 11> starts_{};
};

// Decodes the coefficients of the first scan of a baseline JPEG, keeping of each block only the
// top-left keep x keep corner (keep is 1, 2, 4 or 8), row by row, not yet dequantised, DC
// values summed up. Null data when the data is damaged or cut short.
//
// Without restart markers the entropy-coded data has no known entry points, so it is cut into
// `parts` pieces and each piece after the first is decoded from a guessed block boundary.
// Huffman codes resynchronise within a few blocks; the decoder of the piece before then runs
// on until it reaches a block boundary the guessing decoder also passed, from where the
// guessed blocks are known to be right. The DC values, which are sent as differences, are
// summed as each piece goes; a guessed piece's sums are put right by a constant per component
// as its blocks are copied into place. With restart markers the pieces start at them.
// parts 0 picks one piece per core for large scans.
JpegBlocks DecodeJpegScan(const QByteArray& file, const JpegHeader& header,
                          const JpegScanLayout& layout, int keep, int parts = 0);

// Which rows and columns of a component's blocks a decode keeps: bit r keeps row r and
// column r. keep x keep is (1 << keep) - 1. The kept values of a block are stored row by row,
// only the kept rows and within them the kept columns.
using JpegKeptRows = uint8_t;

// The same with the kept rows and columns of each component (in the header's order); every
// block is stored with room for the largest.
JpegBlocks DecodeJpegScan(const QByteArray& file, const JpegHeader& header,
                          const JpegScanLayout& layout, const std::array<JpegKeptRows, 4>& kept,
                          int parts = 0);

} // namespace kavori
