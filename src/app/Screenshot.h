#pragma once

#include <QString>

namespace kavori {

// When $KAVORI_SCREENSHOT names a PNG file, the first window the program shows is saved there
// once it has painted (a start-up question counts), and the program quits. Used to look at the
// program without a display.
// For the manual's pictures of other windows, $KAVORI_SCREENSHOT_OPEN lists commands or buttons
// by object name ("mnuSlideShow,mnuSlideProperties"): each is pressed in the window on top, in
// turn, and the window the last one opens is the one saved.
void ScreenshotFirstWindowIfAsked();

// When $KAVORI_SCREENSHOT_SHOW names a folder, a show that plays is photographed there: its
// first slide (slide-1.png), a frame in the middle of the next transition (transition.png)
// and the second slide (slide-2.png), and with $KAVORI_SCREENSHOT_SLIDES=N the slides up to N;
// then the program quits.
void ScreenshotShowIfAsked();

} // namespace kavori
