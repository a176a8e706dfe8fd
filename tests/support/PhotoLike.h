#pragma once

#include <QImage>

namespace kavori::test {

// A picture that codes like a photo: a sky-to-ground gradient, 400 soft coloured shapes and
// per-pixel grain, the same for the same seed. With flatTop the upper half is one plain
// colour, so a JPEG of it spreads its coded data unevenly over the picture. Used by the tests
// and the benchmarks.
QImage PhotoLike(int width, int height, int seed, bool flatTop = false);

} // namespace kavori::test
