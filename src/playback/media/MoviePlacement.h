#pragma once

#include <QRect>
#include <QSize>

namespace kavori {

// Where a movie slide goes: the screen and the slide's placement values.
struct MoviePlacement {
    QSize screen;
    qint16 SlideLocation = 0; // the codes of a picture's SlidePlace
    qint16 SlidePosX = 0;     // custom position, pixels
    qint16 SlidePosY = 0;
    qint16 SlideEnlarge = 0; // 1: a movie smaller than the screen grows to fit it
    qint16 SlideShrink = 0;  // 1: a movie larger than the screen shrinks to fit it
};

// The rectangle the movie's picture box takes on the screen for a movie of the given size.
// An unknown size (0 x 0, audio-only or not yet known) fills the screen.
QRect MovieRect(const QSize& movie, const MoviePlacement& placement);

} // namespace kavori
