#pragma once

#include <QImage>
#include <QSize>
#include <QString>

namespace kavori {

// Reads a picture of any type the picture loader opens (BMP, DIB, RLE, the JPEG family, GIF
// as its first frame, WMF, EMF, ICO and CUR as their largest image). With a target size the
// picture comes back no larger than fits in it, decoding no more than needed (JPEG scales
// while decoding). Safe to call from any thread. A picture that cannot be read is null.
QImage LoadPicture(const QString& path, const QSize& target = QSize());

// The pixel size of a picture without decoding it; invalid when unknown.
QSize PictureSize(const QString& path);

// Decodes a PCX or TGA file for import; null when it cannot be read.
QImage ImportPicture(const QString& path);

} // namespace kavori
