#pragma once

#include <QImage>
#include <QRect>
#include <QSize>

namespace kavori {

// Where the image is drawn in the viewing area.
//  stretch: an image larger than the area is shrunk to fit it, keeping its proportions;
//  enlarge: a smaller image is blown up to fit (only together with stretch).
// Without stretch the image keeps its size and the area scrolls. A drawn image smaller than
// the area is centred in it; a larger one starts at the top left (the scroll offset is 0).
QRect FitImageRect(const QSize& image, const QSize& area, bool stretch, bool enlarge);

// The size the area must scroll over to show the whole drawn image.
QSize ScrollExtent(const QRect& drawn, const QSize& area);

// How a viewing area shows pictures: its size and the stretch, enlarge and smooth settings.
struct ViewFit {
    QSize area;
    bool stretch = true;
    bool enlarge = false;
    bool smooth = false;
};

// The picture as such an area draws it, at its drawn size: the picture itself when that is its
// own size, else scaled (smoothly when fit.smooth) into the picture stock. Null for an empty
// area or when memory ran out. Safe to call from any thread.
QImage FittedPicture(const QImage& image, const ViewFit& fit);

} // namespace kavori
