#pragma once

#include <QByteArray>
#include <QColorSpace>
#include <QImage>
#include <QSize>
#include <QString>

namespace kavori {

// What a picture file says about itself before its pixels are decoded.
struct PictureHeader {
    QSize size;             // as shown, orientation applied; invalid when unreadable
    QColorSpace colorSpace; // the file's own; invalid when it names none
};

// A reader of one of today's container formats (AVIF, HEIF, JPEG XL) through its library.
// Safe to call from any thread; each call stands alone.
class PictureReader {
public:
    virtual ~PictureReader() = default;
    virtual PictureHeader readHeader(const QByteArray& file) const = 0;
    // The picture turned as it is meant to be shown, no larger than target when that is valid
    // (decoded smaller where the format offers it, else scaled down once), tagged with the
    // file's colour space. Null when the file is damaged or of another kind.
    virtual QImage read(const QByteArray& file, const QSize& target) const = 0;
};

// The reader for a file name's extension, or null for a type Qt's own readers open.
const PictureReader* PictureReaderFor(const QString& path);

// A colour space from the code points of ITU-T H.273 that AVIF and HEIF name instead of an ICC
// profile; invalid for what the screen path cannot show (HDR transfers, unknown primaries).
QColorSpace ColorSpaceFromCodePoints(int primaries, int transfer);

// Pixel buffers past this many bytes are refused before they are allocated.
constexpr qint64 kMaxPictureBytes = qint64(512) << 20;

// Shrinks a decoded picture to fit target with a smooth filter; unchanged when it fits.
QImage FitDecoded(const QImage& image, const QSize& target);

// The picture at exactly `size`, its pixels in the picture stock (runtime/ScratchMemory).
// Smooth: halved by 2 x 2 means while it is twice the size or more, then filtered; otherwise
// the nearest pixels. Null when memory ran out.
QImage ScaledPicture(const QImage& image, const QSize& size, bool smooth);

} // namespace kavori
