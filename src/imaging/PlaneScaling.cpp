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
void scaleRowsAcross(const SamplePlane& in, const ScaleTaps& across, SamplePlane& out, int from,
                     int to)
{
    constexpr int half = 1 << (ScaleTaps::kBits - 1);
    for (int y = from; y < to; ++y) {
        const uint8_t* source = in.row(y);
        uint8_t* target = out.row(y);
        for (int x = 0; x < across.size(); ++x) {
            const int16_t* w = across.weights(x);
            const uint8_t* s = source + across.first(x);
            int sum = half;
            const int count = Taps ? Taps : across.count(x);
            for (int i = 0; i < count; ++i)
                sum += w[i] * s[i];
            target[x] = uint8_t(sum >> ScaleTaps::kBits);
        }
    }
}

} // namespace

void ScaleAcross(const SamplePlane& in, const ScaleTaps& across, SamplePlane& out, int from, int to)
{
    switch (across.taps()) {
    case 1:
        return scaleRowsAcross<1>(in, across, out, from, to);
    case 2:
        return scaleRowsAcross<2>(in, across, out, from, to);
    case 3:
        return scaleRowsAcross<3>(in, across, out, from, to);
    case 4:
        return scaleRowsAcross<4>(in, across, out, from, to);
    default:
        return scaleRowsAcross<0>(in, across, out, from, to);
    }
}

void ScaleDown(const SamplePlane& in, const ScaleTaps& down, int y, int width, uint8_t* out)
{
    // Whole rows at a time: going down each column would stride through memory.
    static thread_local std::vector<int> sums;
    width = std::min(width, in.width);
    sums.assign(size_t(width), 1 << (ScaleTaps::kBits - 1));
    int* total = sums.data();
    const int16_t* w = down.weights(y);
    for (int i = 0; i < down.count(y); ++i) {
        const uint8_t* source = in.row(down.first(y) + i);
        const int weight = w[i];
        for (int x = 0; x < width; ++x)
            total[x] += weight * source[x];
    }
    for (int x = 0; x < width; ++x)
        out[x] = uint8_t(total[x] >> ScaleTaps::kBits);
}

} // namespace kavori
