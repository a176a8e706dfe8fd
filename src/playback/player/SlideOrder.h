#pragma once

#include <QtGlobal>

namespace kavori {

// Which slide the player shows next. Slides are numbered from 0; count is the number of slides
// in the show.

// The highest slot a show may use; an index past it wraps to 0.
constexpr int kLastSlideSlot = 30000;

struct NextSlide {
    int index = 0;
    bool ended = false; // the list ran out and the show is not to go on
};

// One tick's choice: a random slide (a slide may come twice in a row) or the one after
// current. Running off the end starts again at 0, and ends the show unless it loops or the
// keep-running override is set.
NextSlide ChooseNextSlide(int current, int count, bool random, bool loop, bool keepRunning);

// The index a tick must start from so that it lands on target (a tick adds one in order).
int IndexBefore(int target);

// Navigation targets, clamped to the show.
int PreviousSlideIndex(int current, int count);
int SlideIndexMovedBy(int current, int step, int count);

} // namespace kavori
