#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace kavori {

// Windows and OS/2 bitmaps, with the 14-byte "BM" file header or bare (a DIB as the clipboard
// writes it): the OS/2 1.x header, OS/2 2.x headers of any length, the 40-, 52-, 56-, 108- and
// 124-byte info headers; 1, 2, 4, 8, 16, 24 and 32 bits; bit fields of any mask; RLE4, RLE8
// and OS/2 RLE24; JPEG and PNG inside. Sizes the data cannot hold give a null picture, and
// nothing is read outside the data. Run-length pixels the data never sets are transparent.
// With a target size, an opaque uncompressed picture comes back reduced by the largest whole
// factor that keeps it at least as large as its fit in target.
QImage DecodeBmp(const QByteArray& data, const QSize& target = QSize());

// The size DecodeBmp gives, from the headers; invalid when the data cannot be decoded.
QSize BmpSize(const QByteArray& data);

// True when the data starts as a bitmap file or a bare DIB does.
bool LooksLikeBmp(const QByteArray& data);

// The DIB of one icon or cursor picture: its header counts the colour rows and the 1-bit
// mask after them, and the mask (or, at 32 bits, the alpha bytes) says what is transparent.
QImage DecodeIconBitmap(const QByteArray& dib);

} // namespace kavori
