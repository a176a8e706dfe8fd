#pragma once

#include <QColorSpace>
#include <QImage>
#include <QSize>
#include <QString>

namespace kavori {

// Reads a picture of any type the picture loader opens (BMP, DIB, RLE, the JPEG family, GIF
// as its first frame, WMF, EMF, ICO and CUR as their largest image; PNG, TIFF as its first
// page, WebP as its first frame, AVIF, HEIF and JPEG XL). With a target size the picture comes
// back no larger than fits in it, decoding no more than needed (JPEG and WebP scale while
// decoding, HEIF uses a stored thumbnail that is large enough). The picture is turned upright
// by its EXIF or container orientation, and one with a colour profile of its own is converted
// to sRGB. Safe to call from any thread. A picture that cannot be read is null.
QImage LoadPicture(const QString& path, const QSize& target = QSize());

// The pixel size of a picture without decoding it; invalid when unknown.
QSize PictureSize(const QString& path);

// The colour space the picture file declares (an embedded ICC profile, or the code points of
// AVIF and HEIF); invalid when it declares none.
QColorSpace PictureColorSpace(const QString& path);

// Decodes a PCX or TGA file for import; null when it cannot be read.
QImage ImportPicture(const QString& path);

} // namespace kavori
