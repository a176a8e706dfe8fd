#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace kavori {

// Decodes a baseline or progressive JPEG (grey or YCbCr, the usual samplings) at 1/2, 1/4 or
// 1/8 of its size, using every core: the size libjpeg gives at that scale, rounded up. Null when
// the file is of another kind (arithmetic coded, 12-bit, CMYK, RGB) or damaged; the caller then
// reads it the usual way. parts as for DecodeJpegScan (baseline files only). A progressive file
// cut short or damaged inside its data gives what came before the damage.
QImage DecodeScaledJpeg(const QByteArray& file, int denominator, int parts = 0);

// The same picture at any size up to half of its own: decoded at the smallest of those scales
// that covers the size, then averaged down to it. Null also when the size needs the full
// decode.
QImage DecodeJpegAtSize(const QByteArray& file, const QSize& size, int parts = 0);

} // namespace kavori
