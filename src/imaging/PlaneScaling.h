#pragma once

#include "runtime/ScratchMemory.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kavori {

// One 8-bit channel of a picture (luma, chroma or grey), row after row.
// Made without clearing: whoever makes one writes every sample.
struct SamplePlane {
    int width = 0;
    int height = 0;
    ScratchBuffer samples;
    SamplePlane() = default;
    // samples.data() is null when memory ran out.
    SamplePlane(int w, int h) : width(w), height(h), samples(size_t(w) * size_t(h)) {}
    uint8_t* row(int y) { return samples.as<uint8_t>() + ptrdiff_t(y) * width; }
    const uint8_t* row(int y) const { return samples.as<uint8_t>() + ptrdiff_t(y) * width; }
};

// The weights that take a run of source samples onto `to` samples in one direction: the
// average over each target sample's area when shrinking, straight-line blending between the
// two nearest source samples when enlarging. `extent` is how many source samples the picture
// covers (a fraction where chroma covers an odd luma size); no weight falls beyond
// `available` samples.
class ScaleTaps {
public:
    ScaleTaps(double extent, int to, int available);
    int size() const { return int(first_.size()); }
    // Each target sample is the source sample of the same number.
    bool identity() const { return identity_; }
    // The last source sample any target sample reads.
    int lastSource() const { return lastSource_; }
    // Target sample t reads count(t) source samples from first(t) on, with weights(t). Where
    // the source is long enough every target reads the same number, `taps`.
    int first(int t) const { return first_[size_t(t)]; }
    int count(int t) const { return count_[size_t(t)]; }
    const int16_t* weights(int t) const { return weights_.data() + ptrdiff_t(t) * stride_; }
    int taps() const { return uniform_ ? stride_ : 0; }
    static constexpr int kBits = 14; // the weights of a target sample add up to 1 << kBits

private:
    std::vector<int> first_;
    std::vector<int> count_;
    std::vector<int16_t> weights_;
    int stride_ = 1;
    int lastSource_ = 0;
    bool identity_ = true;
    bool uniform_ = false;
};

// The scaled values below carry kFractionBits below the 8 of a sample, so that the across
// and down passes round only once, at the end.
constexpr int kFractionBits = 8;

// Scales one row across: out[t] for each of across.size() targets, with
// kFractionBits more bits than the input.
void ScaleRowAcross(const uint8_t* in, const ScaleTaps& across, uint16_t* out);

// The same for the three channels of a row, which share the taps: each target's weights are
// read once.
void ScaleRowAcross3(const uint8_t* const in[3], const ScaleTaps& across, uint16_t* const out[3]);

// Target row y, `width` samples, from rows scaled across (row r at rows + r * stride), rounded
// to 8 bits.
void ScaleRowDown(const uint16_t* rows, ptrdiff_t stride, const ScaleTaps& down, int y, int width,
                  uint8_t* out);

} // namespace kavori
