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

// Draws SVG on white at its own size, or fitted into target when one is given.
QImage RenderSvg(const QByteArray& svg, const QSize& target = QSize());

} // namespace kavori
