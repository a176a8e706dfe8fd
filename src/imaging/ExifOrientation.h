#pragma once

#include <QByteArray>
#include <QImageIOHandler>
#include <QString>

namespace kavori {

// The Orientation tag (1 to 8) of an EXIF block (TIFF structure, with or without the "Exif\0\0"
// prefix); 1 when there is none or the block is damaged.
int ExifOrientation(const QByteArray& exif);

// The EXIF orientation a PNG (eXIf chunk) or WebP (EXIF chunk) file carries, which Qt's readers
// of those types leave to us; 1 for other files and when there is none.
int FileExifOrientation(const QString& path);

// The turn that shows a picture of that EXIF orientation upright, in Qt's terms.
QImageIOHandler::Transformations ExifTransformation(int orientation);

} // namespace kavori
