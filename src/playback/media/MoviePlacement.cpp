#include "MoviePlacement.h"

#include "runtime/Random.h"

namespace kavori {

namespace {

// The movie's size after SlideEnlarge and SlideShrink. Both scale to fit the screen with the
// movie's shape kept. Without SlideShrink a movie larger than the screen keeps its own size and
// its edges fall off the screen, as a large picture's do; the player sets SlideShrink for
// movies it wants whole.
QSize FittedSize(const QSize& movie, const MoviePlacement& p)
{
    const bool larger = movie.width() > p.screen.width() || movie.height() > p.screen.height();
    const bool smaller = movie.width() < p.screen.width() && movie.height() < p.screen.height();
    if ((larger && p.SlideShrink == 1) || (smaller && p.SlideEnlarge == 1))
        return movie.scaled(p.screen, Qt::KeepAspectRatio);
    return movie;
}

} // namespace

QRect MovieRect(const QSize& movie, const MoviePlacement& p)
{
    if (movie.isEmpty())
        return QRect(QPoint(0, 0), p.screen);
    const QSize size = FittedSize(movie, p);
    const int right = p.screen.width() - size.width();
    const int bottom = p.screen.height() - size.height();
    // Whole pixels, truncated as an integer division does.
    const int midX = right / 2;
    const int midY = bottom / 2;
    QPoint at(midX, midY);
    switch (static_cast<SlideLocation>(p.SlideLocation)) {
    case SlideLocation::Centre:
        break;
    case SlideLocation::TopLeft:
        at = {0, 0};
        break;
    case SlideLocation::Top:
        at = {midX, 0};
        break;
    case SlideLocation::TopRight:
        at = {right, 0};
        break;
    case SlideLocation::Left:
        at = {0, midY};
        break;
    case SlideLocation::Right:
        at = {right, midY};
        break;
    case SlideLocation::BottomLeft:
        at = {0, bottom};
        break;
    case SlideLocation::Bottom:
        at = {midX, bottom};
        break;
    case SlideLocation::BottomRight:
        at = {right, bottom};
        break;
    case SlideLocation::Random:
        // Anywhere the whole movie is on the screen; a movie wider than it stays centred.
        at = {right > 0 ? RandomBetween(0, right) : midX,
              bottom > 0 ? RandomBetween(0, bottom) : midY};
        break;
    case SlideLocation::Custom:
        at = {p.SlidePosX, p.SlidePosY};
        break;
    }
    return QRect(at, size);
}

} // namespace kavori
