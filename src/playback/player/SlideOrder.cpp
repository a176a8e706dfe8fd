#include "SlideOrder.h"

#include "runtime/Random.h"

#include <algorithm>
#include <cmath>

namespace kavori {

NextSlide ChooseNextSlide(int current, int count, bool random, bool loop, bool keepRunning)
{
    NextSlide next;
    if (random) {
        // The source is seeded from the clock when the program starts, so every tick draws
        // afresh without reseeding.
        next.index = int(std::floor(double(count) * Rnd()));
    } else {
        next.index = current + 1;
        if (next.index > kLastSlideSlot)
            next.index = 0;
    }
    if (next.index >= count) { // the empty slot after the last slide
        next.index = 0;
        next.ended = !loop && !keepRunning;
    }
    return next;
}

int IndexBefore(int target)
{
    return target - 1;
}

int PreviousSlideIndex(int current, int count)
{
    if (count <= 0)
        return 0;
    // Going back from the first slide goes round to the last, as going on from the last does.
    return current <= 0 ? count - 1 : std::min(current - 1, count - 1);
}

int SlideIndexMovedBy(int current, int step, int count)
{
    if (count <= 0)
        return 0;
    return std::clamp(current + step, 0, count - 1);
}

} // namespace kavori
