#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace kavori {

// Windows metafiles are turned into SVG by real renderers (libwmf for WMF, libemf2svg for
// EMF) and drawn with Qt SVG. Damaged data gives a null picture.

// The SVG text of a metafile, empty when it cannot be converted.
QByteArray WmfToSvg(const QByteArray& wmf);
QByteArray EmfToSvg(const QByteArray& emf);

// The size a metafile is shown at, in pixels at 96 dots per inch: a placeable WMF's bounding
// box in its own units per inch, an EMF's frame. Invalid when the header gives no size.
QSize WmfSize(const QByteArray& wmf);
QSize EmfSize(const QByteArray& emf);

// Draws SVG on white at size (its own size when that is invalid), or fitted into target when
// one is given; the drawing is scaled, not its pixels.
QImage RenderSvg(const QByteArray& svg, const QSize& target = QSize(), QSize size = QSize());

} // namespace kavori
