#pragma once

#include "slideshow/SlideShow.h"

#include <QImage>
#include <QRect>
#include <QSize>

namespace kavori {

// Where and how big a slide's picture is drawn on the screen, and the screen picture made
// from it.

// SlideLocation codes, in the order the slide properties offer them.
enum class SlidePlace : qint16 {
    Center = 0,
    TopLeft,
    Top,
    TopRight,
    Left,
    Right,
    BottomLeft,
    Bottom,
    BottomRight,
    Random,
    Custom,
};

// SlideBackMode codes: the player's black, the slide's colour, or its texture tiled.
enum class SlideBack : qint16 { Default = 0, Color = 1, Texture = 2 };

// The drawn size of a picture: shrunk to fit the screen when larger and shrink is on,
// enlarged to fit when smaller and enlarge is on, proportions kept.
QSize SlidePictureSize(const QSize& picture, const QSize& screen, bool enlarge, bool shrink);

// Where a picture of the drawn size goes. Random places draw from the random source; custom
// places are SlidePosX and SlidePosY in screen pixels.
QRect SlidePictureRect(const QSize& drawn, const QSize& screen, const Slide& slide);

// A slide's file as a path to open: names without a folder, and names whose folder is on
// another machine, are found beside the show.
QString SlidePicturePath(const QString& file, const QString& showPath);

// Reads a slide's picture at its drawn size (decoding no more than needed). Null when it
// cannot be read. Safe on any thread.
QImage DecodeSlidePicture(const QString& path, const QSize& screen, const Slide& slide);

// Paints the screen picture of a slide into screen (reused from slide to slide): the
// background, then the picture at rect. A null picture leaves only the background.
void ComposeSlide(QImage& screen, const QImage& picture, const QRect& rect, const Slide& slide,
                  const QImage& texture);

// A slide as a screen of the given size would show it, shrunk to fit a preview box (proportions
// of the screen kept): the background, and the picture at its place and size. The texture is
// the slide's texture picture at its own size (null when it has none or it is gone).
QImage SlidePreview(const Slide& slide, const QString& showPath, const QSize& screen,
                    const QSize& box, const QImage& texture);

} // namespace kavori
