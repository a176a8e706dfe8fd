#pragma once

#include <QString>

namespace kavori {

// When $KAVORI_SCREENSHOT names a PNG file, the first window the program shows is saved there
// once it has painted (a start-up question counts), and the program quits. Used to look at the
// program without a display.
void ScreenshotFirstWindowIfAsked();

} // namespace kavori
