#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace kavori::test {

// Pictures of today's types made here with the libraries' own encoders (AVIF, HEIF, JPEG XL)
// and Qt's writers (PNG, TIFF, WebP), with an orientation and a colour profile when asked.
struct ModernOptions {
    int orientation = 1; // as EXIF numbers it: 1 upright, 6 turned a quarter clockwise, ...
    QByteArray icc;      // an ICC profile to embed
    // HEIF: a picture stored as the thumbnail, scaled to fit a square of thumbnailBox pixels
    QImage thumbnail;
    int thumbnailBox = 0;
};

// Each is empty when this machine's library has no encoder for the format; why says so.
QByteArray EncodeAvif(const QImage& picture, const ModernOptions& options, QString* why);
QByteArray EncodeHeif(const QImage& picture, const ModernOptions& options, QString* why);
QByteArray EncodeJxl(const QImage& picture, const ModernOptions& options, QString* why);

// PNG with an eXIf chunk, WebP with an EXIF chunk, TIFF with its orientation tag.
QByteArray EncodePng(const QImage& picture, const ModernOptions& options);
QByteArray EncodeWebp(const QImage& picture, const ModernOptions& options);
QByteArray EncodeTiff(const QImage& picture, const ModernOptions& options);

// A WebP of two frames of the same size, each shown for a tenth of a second.
QByteArray AnimatedWebp(const QImage& first, const QImage& second);

// An uncompressed RGB TIFF of two pages.
QByteArray TwoPageTiff(const QImage& first, const QImage& second);

// An EXIF block ("Exif\0\0", little-endian TIFF) holding only the orientation.
QByteArray ExifBlock(int orientation);

} // namespace kavori::test
