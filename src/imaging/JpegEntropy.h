#pragma once

// The entropy-coded data's building blocks shared by the baseline and the progressive decoders:
// Huffman tables, the bit reader, and the data without its stuffed bytes.

#include "JpegHeader.h"
#include "runtime/ScratchMemory.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace kavori::jpeg {

constexpr int kFastBits = 10;
// Zero bytes after the data: a block of 63 longest codes reads at most 252 bytes, and a block
// is only started inside the data.
constexpr int kPadding = 512;

// A canonical Huffman table with a lookup of the first kFastBits bits.
struct Huffman {
    uint16_t fast[1 << kFastBits]{};  // (length << 8) | symbol; 0 for longer codes
    int32_t fastAc[1 << kFastBits]{}; // (value << 16) | (run << 8) | length with the value bits
    int32_t maxCode[18]{};
    int32_t valueOffset[18]{};
    uint8_t symbols[256]{};
};

bool buildHuffman(const JpegHuffmanCodes& codes, bool ac, Huffman& t);

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

// The reader copied for the decoding of one block and copied back after it: held in a local,
// its window and position stay in registers instead of being written to memory at every step.
struct LocalBits {
    explicit LocalBits(Bits& shared) : shared(shared), bits(shared) {}
    ~LocalBits() { shared = bits; }
    LocalBits(const LocalBits&) = delete;
    LocalBits& operator=(const LocalBits&) = delete;
    Bits& shared;
    Bits bits;
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

// The entropy-coded data without its stuffed zero bytes, then kPadding zero bytes.
struct Unstuffed {
    ScratchBuffer buffer;
    size_t size = 0;
    std::vector<uint64_t> restarts; // where each restart interval after the first starts
    bool badRestart = false;        // restart markers out of sequence
    const uint8_t* end = nullptr;   // the marker that ended the data, or the file's end
    const uint8_t* data() const { return buffer.as<uint8_t>(); }
};

// Copies the data from p, noting where each restart interval starts; stops at the first
// marker that is not a restart marker. False when memory ran out.
bool unstuff(const uint8_t* p, const uint8_t* end, Unstuffed& out);

} // namespace kavori::jpeg
