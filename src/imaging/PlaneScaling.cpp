#include "PlaneScaling.h"

#include <algorithm>
#include <cmath>

namespace kavori {

ScaleTaps::ScaleTaps(double extent, int to, int available)
{
    const double ratio = extent / to;
    std::vector<std::vector<std::pair<int, double>>> taps(static_cast<size_t>(to));
    for (int t = 0; t < to; ++t) {
        auto& list = taps[size_t(t)];
        if (ratio > 1) {
            const double begin = t * ratio;
            const double end = std::min(extent, (t + 1) * ratio);
            for (int s = int(std::floor(begin)); s < end; ++s) {
                const double overlap = std::min(end, s + 1.0) - std::max(begin, double(s));
                if (overlap > 1e-9)
                    list.emplace_back(std::min(s, available - 1), overlap);
            }
        } else {
            const double centre = std::clamp((t + 0.5) * ratio - 0.5, 0.0, double(available - 1));
            const int s = int(centre);
            const double fraction = centre - s;
            list.emplace_back(s, 1 - fraction);
            if (fraction > 1e-9)
                list.emplace_back(std::min(s + 1, available - 1), fraction);
        }
        stride_ = std::max(stride_, int(list.size()));
    }
    first_.resize(size_t(to));
    count_.resize(size_t(to));
    weights_.assign(size_t(to) * size_t(stride_), 0);
    for (int t = 0; t < to; ++t) {
        const auto& list = taps[size_t(t)];
        double total = 0;
        for (const auto& tap : list)
            total += tap.second;
        first_[size_t(t)] = list.front().first;
        count_[size_t(t)] = list.back().first - list.front().first + 1;
        int16_t* w = weights_.data() + ptrdiff_t(t) * stride_;
        int given = 0;
        for (const auto& tap : list) {
            const int weight = int(std::lround(tap.second / total * (1 << kBits)));
            w[tap.first - list.front().first] += int16_t(weight);
            given += weight;
        }
        w[0] += int16_t((1 << kBits) - given); // rounding left over
        identity_ = identity_ && count_[size_t(t)] == 1 && first_[size_t(t)] == t;
    }
    // The same number of taps everywhere lets the loops unroll; near the far edge the taps
    // move back, with weights of zero in front.
    uniform_ = available >= stride_;
    for (int t = 0; t < to && uniform_; ++t) {
        int16_t* w = weights_.data() + ptrdiff_t(t) * stride_;
        const int shift = std::max(0, first_[size_t(t)] + stride_ - available);
        for (int i = stride_ - 1; i >= 0; --i)
            w[i] = i >= shift ? w[i - shift] : int16_t(0);
        first_[size_t(t)] -= shift;
        count_[size_t(t)] = stride_;
    }
    for (int t = 0; t < to; ++t)
        lastSource_ = std::max(lastSource_, first_[size_t(t)] + count_[size_t(t)] - 1);
}

namespace {

// Taps 0: as many as each target sample has.
template <int Taps>
__attribute__((target_clones("avx2", "default"))) void
scaleRowAcross(const uint8_t* in, const ScaleTaps& across, uint16_t* out)
{
    constexpr int shift = ScaleTaps::kBits - kFractionBits;
    constexpr int half = 1 << (shift - 1);
    for (int x = 0; x < across.size(); ++x) {
        const int16_t* w = across.weights(x);
        const uint8_t* s = in + across.first(x);
        int sum = half;
        const int count = Taps ? Taps : across.count(x);
        for (int i = 0; i < count; ++i)
            sum += w[i] * s[i];
        out[x] = uint16_t(sum >> shift);
    }
}

template <int Taps>
__attribute__((target_clones("avx2", "default"))) void
scaleRowAcross3(const uint8_t* const in[3], const ScaleTaps& across, uint16_t* const out[3])
{
    constexpr int shift = ScaleTaps::kBits - kFractionBits;
    constexpr int half = 1 << (shift - 1);
    const uint8_t* a = in[0];
    const uint8_t* b = in[1];
    const uint8_t* c = in[2];
    for (int x = 0; x < across.size(); ++x) {
        const int16_t* w = across.weights(x);
        const int first = across.first(x);
        int sa = half, sb = half, sc = half;
        const int count = Taps ? Taps : across.count(x);
        for (int i = 0; i < count; ++i) {
            sa += w[i] * a[first + i];
            sb += w[i] * b[first + i];
            sc += w[i] * c[first + i];
        }
        out[0][x] = uint16_t(sa >> shift);
        out[1][x] = uint16_t(sb >> shift);
        out[2][x] = uint16_t(sc >> shift);
    }
}

} // namespace

void ScaleRowAcross3(const uint8_t* const in[3], const ScaleTaps& across, uint16_t* const out[3])
{
    switch (across.taps()) {
    case 2:
        return scaleRowAcross3<2>(in, across, out);
    case 3:
        return scaleRowAcross3<3>(in, across, out);
    case 4:
        return scaleRowAcross3<4>(in, across, out);
    default:
        return scaleRowAcross3<0>(in, across, out);
    }
}

void ScaleRowAcross(const uint8_t* in, const ScaleTaps& across, uint16_t* out)
{
    switch (across.taps()) {
    case 1:
        return scaleRowAcross<1>(in, across, out);
    case 2:
        return scaleRowAcross<2>(in, across, out);
    case 3:
        return scaleRowAcross<3>(in, across, out);
    case 4:
        return scaleRowAcross<4>(in, across, out);
    default:
        return scaleRowAcross<0>(in, across, out);
    }
}

// Built for AVX2 too, which multiplies eight 32-bit lanes at once.
__attribute__((target_clones("avx2", "default"))) void ScaleRowDown(const uint16_t* rows,
                                                                    ptrdiff_t stride,
                                                                    const ScaleTaps& down, int y,
                                                                    int width, uint8_t* out)
{
    // Whole rows at a time: going down each column would stride through memory. The weights
    // (14 bits) times the samples (16 bits) stay within 31 bits however many rows are summed,
    // as the weights add up to one.
    constexpr int shift = ScaleTaps::kBits + kFractionBits;
    static thread_local std::vector<int32_t> sums;
    sums.assign(size_t(width), 1 << (shift - 1));
    int32_t* total = sums.data();
    const int16_t* w = down.weights(y);
    for (int i = 0; i < down.count(y); ++i) {
        const uint16_t* source = rows + ptrdiff_t(down.first(y) + i) * stride;
        const int32_t weight = w[i];
        for (int x = 0; x < width; ++x)
            total[x] += weight * source[x];
    }
    for (int x = 0; x < width; ++x)
        out[x] = uint8_t(std::clamp(total[x] >> shift, 0, 255));
}

} // namespace kavori
