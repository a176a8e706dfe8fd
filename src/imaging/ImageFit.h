#pragma once

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

} // namespace kavori
