#include "MoviePlacement.h"

#include "playback/player/SlideLayout.h"

namespace kavori {

QRect MovieRect(const QSize& movie, const MoviePlacement& p)
{
    if (movie.isEmpty())
        return QRect(QPoint(0, 0), p.screen);
    // A movie is placed and fitted as a picture is: without SlideShrink a movie larger than the
    // screen keeps its size and its edges fall off the screen.
    Slide slide;
    slide.SlideLocation = p.SlideLocation;
    slide.SlidePosX = p.SlidePosX;
    slide.SlidePosY = p.SlidePosY;
    const QSize size = SlidePictureSize(movie, p.screen, p.SlideEnlarge == 1, p.SlideShrink == 1);
    return SlidePictureRect(size, p.screen, slide);
}

} // namespace kavori
