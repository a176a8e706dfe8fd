#include "JpegEntropy.h"

#include <algorithm>

namespace kavori::jpeg {

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

bool unstuff(const uint8_t* p, const uint8_t* end, Unstuffed& out)
{
    out.buffer = ScratchBuffer(size_t(end - p) + kPadding);
    auto* to = out.buffer.as<uint8_t>();
    if (!to)
        return false;
    uint8_t* const start = to;
    int expected = 0;
    out.end = end;
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
            out.end = ff;
            break;
        }
        p = q + 1;
    }
    out.size = size_t(to - start);
    std::memset(to, 0, kPadding);
    return true;
}

} // namespace kavori::jpeg
