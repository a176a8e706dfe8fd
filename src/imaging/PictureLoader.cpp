#include "PictureLoader.h"

#include "ExifOrientation.h"
#include "FullJpeg.h"
#include "ImageTypes.h"
#include "JpegHeader.h"
#include "Metafile.h"
#include "PcxDecoder.h"
#include "ScaledJpeg.h"
#include "TgaDecoder.h"
#include "formats/BmpDecoder.h"
#include "formats/IconDecoder.h"
#include "formats/PictureReader.h"
#include "runtime/ScratchMemory.h"

#include <QBuffer>
#include <QColorSpace>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QTransform>

namespace kavori {

namespace {

// Files larger than this are not pictures we can show; reading them whole would only hurt.
constexpr qint64 kMaxFileBytes = qint64(1) << 30;

QByteArray readAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxFileBytes)
        return {};
    return file.readAll();
}

bool fitsIn(const QSize& size, const QSize& target)
{
    return !target.isValid() || target.isEmpty() ||
           (size.width() <= target.width() && size.height() <= target.height());
}

QImage shrinkToFit(const QImage& image, const QSize& target)
{
    if (image.isNull() || fitsIn(image.size(), target))
        return image;
    return image.scaled(image.size().scaled(target, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)),
                        Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage oriented(QImage image, QImageIOHandler::Transformations turn)
{
    if (turn & QImageIOHandler::TransformationMirror)
        image = image.mirrored(true, false);
    if (turn & QImageIOHandler::TransformationFlip)
        image = image.mirrored(false, true);
    if (turn & QImageIOHandler::TransformationRotate90)
        image = image.transformed(QTransform().rotate(90));
    return image;
}

QColorSpace jpegColorSpace(const QByteArray& file)
{
    const QByteArray icc = ReadJpegIccProfile(file);
    return icc.isEmpty() ? QColorSpace() : QColorSpace::fromIccProfile(icc);
}

// A JPEG decoded on all cores straight to the size that fits the target, when that is at most
// half its own; null when it needs the full decode or the usual reader.
QImage decodeJpegForTarget(const QByteArray& file, QImageReader& reader, const QSize& size,
                           const QSize& target)
{
    const QImageIOHandler::Transformations turn = reader.transformation();
    const bool quarterTurn = turn & QImageIOHandler::TransformationRotate90;
    const QSize shown = quarterTurn ? size.transposed() : size;
    const QSize wanted = shown.scaled(target, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    QImage image = DecodeJpegAtSize(file, quarterTurn ? wanted.transposed() : wanted);
    if (image.isNull())
        return image;
    // Our decoder leaves the colours as stored; the profile says what they mean.
    image.setColorSpace(jpegColorSpace(file));
    return oriented(image, turn);
}

// A JPEG at its full size on all cores; null when it needs the usual reader.
QImage decodeFullJpeg(const QByteArray& file, QImageReader& reader)
{
    QImage image = DecodeFullJpeg(file);
    if (image.isNull())
        return image;
    image.setColorSpace(jpegColorSpace(file));
    return oriented(image, reader.transformation());
}

bool isBitmapName(const QString& upper)
{
    return upper.endsWith(QLatin1String(".BMP")) || upper.endsWith(QLatin1String(".DIB")) ||
           upper.endsWith(QLatin1String(".RLE"));
}

// A picture of another type under a bitmap's name opens by its content, as the system's
// picture loader does; bitmap content never reaches the toolkit's reader.
QImage readMisnamed(QByteArray data)
{
    QBuffer buffer(&data);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    if (reader.format().isEmpty() || reader.format() == "bmp")
        return {};
    return reader.read();
}

// The turn a picture read by Qt's readers needs: the reader's own, or for the types whose
// readers ignore EXIF (PNG, WebP) the one we read from the file.
QImageIOHandler::Transformations turnOf(const QString& path, QImageReader& reader)
{
    const QImageIOHandler::Transformations own = reader.transformation();
    if (own != QImageIOHandler::TransformationNone)
        return own;
    return ExifTransformation(FileExifOrientation(path));
}

QSize orientedSize(QImageReader& reader, QImageIOHandler::Transformations turn)
{
    const QSize size = reader.size();
    return turn & QImageIOHandler::TransformationRotate90 ? size.transposed() : size;
}

// Pictures with a profile of their own are shown in sRGB, the colour space screens assume.
QImage inScreenColours(QImage image)
{
    const QColorSpace space = image.colorSpace();
    if (image.isNull() || !space.isValid() || space == QColorSpace::SRgb)
        return image;
    if (image.format() == QImage::Format_Indexed8 || image.format() == QImage::Format_Grayscale8 ||
        image.format() == QImage::Format_Grayscale16 || image.format() == QImage::Format_Mono ||
        image.format() == QImage::Format_MonoLSB)
        image = image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32
                                                              : QImage::Format_RGB32);
    image.convertToColorSpace(QColorSpace::SRgb);
    return image;
}

// A full-size picture read into the picture stock, where its pages are already mapped, by the
// readers known to write every pixel of the picture they are given (JPEG, PNG); the reader
// makes its own when the size or format it needs differs.
QImage readIntoStock(QImageReader& reader)
{
    const QByteArray format = reader.format();
    if (reader.scaledSize().isValid() || (format != "jpeg" && format != "png"))
        return reader.read();
    QImage image = ScratchImage(reader.size(), reader.imageFormat());
    if (image.isNull())
        return reader.read();
    if (!reader.read(&image))
        return {};
    return image;
}

// Today's types through Qt's plug-ins: PNG, TIFF (its first page) and WebP (its first frame;
// its decoder scales while decoding).
QImage readWithQt(const QString& path, const QSize& target)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImageIOHandler::Transformations turn = turnOf(path, reader);
    const bool turnedByReader = reader.transformation() != QImageIOHandler::TransformationNone;
    const QSize size = reader.size();
    if (size.isValid() && !fitsIn(orientedSize(reader, turn), target) &&
        reader.format() == "webp" && reader.supportsOption(QImageIOHandler::ScaledSize)) {
        const QSize stored =
            turn & QImageIOHandler::TransformationRotate90 ? target.transposed() : target;
        reader.setScaledSize(size.scaled(stored, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    }
    const QImage image = readIntoStock(reader);
    if (turnedByReader)
        return FitDecoded(image, target);
    // Scaled before turning, so the turn moves the fewest pixels.
    return oriented(FitDecoded(image, turn & QImageIOHandler::TransformationRotate90
                                          ? target.transposed()
                                          : target),
                    turn);
}

void raiseAllocationLimit()
{
    // 10,000 x 10,000 pixels at 4 bytes each is the largest picture the program edits.
    static const bool once = [] {
        QImageReader::setAllocationLimit(512);
        return true;
    }();
    Q_UNUSED(once);
}

QImage loadPicture(const QString& path, const QSize& target)
{
    if (!IsImageFile(path) || !QFileInfo(path).isFile())
        return {};
    raiseAllocationLimit();
    const QString upper = path.toUpper();
    if (upper.endsWith(QLatin1String(".WMF"))) {
        const QByteArray wmf = readAll(path);
        return RenderSvg(WmfToSvg(wmf), target, WmfSize(wmf));
    }
    if (upper.endsWith(QLatin1String(".EMF"))) {
        const QByteArray emf = readAll(path);
        return RenderSvg(EmfToSvg(emf), target, EmfSize(emf));
    }
    if (upper.endsWith(QLatin1String(".ICO")) || upper.endsWith(QLatin1String(".CUR")))
        return shrinkToFit(DecodeIcon(readAll(path)), target);
    if (isBitmapName(upper)) {
        const QByteArray data = readAll(path);
        if (LooksLikeBmp(data))
            return shrinkToFit(DecodeBmp(data, target), target);
        return shrinkToFit(readMisnamed(data), target);
    }
    if (const PictureReader* own = PictureReaderFor(path))
        return own->read(readAll(path), target);
    if (IsModernImageFile(path))
        return readWithQt(path, target);

    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    const bool scaleWhileDecoding = size.isValid() && !fitsIn(size, target) &&
                                    reader.supportsOption(QImageIOHandler::ScaledSize) &&
                                    reader.format() == "jpeg";
    if (scaleWhileDecoding) {
        const QByteArray file = readAll(path);
        const QImage decoded = decodeJpegForTarget(file, reader, size, target);
        if (!decoded.isNull())
            return decoded;
        // Wanted at more than half its size (a large screen): the full decode on every core,
        // then scaled, is quicker than the reader's full decode on one.
        const QImage full = decodeFullJpeg(file, reader);
        if (!full.isNull())
            return shrinkToFit(full, target);
        reader.setScaledSize(size.scaled(target, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    } else if (reader.format() == "jpeg") {
        const QImage decoded = decodeFullJpeg(readAll(path), reader);
        if (!decoded.isNull())
            return decoded;
    }
    return shrinkToFit(readIntoStock(reader), target);
}

} // namespace

QImage LoadPicture(const QString& path, const QSize& target)
{
    return inScreenColours(loadPicture(path, target));
}

QSize PictureSize(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return {};
    const QString upper = path.toUpper();
    QSize size;
    if (upper.endsWith(QLatin1String(".WMF")) || upper.endsWith(QLatin1String(".EMF")) ||
        upper.endsWith(QLatin1String(".ICO")) || upper.endsWith(QLatin1String(".CUR"))) {
        const QImage image = LoadPicture(path);
        size = image.isNull() ? QSize() : image.size();
    } else if (IsImportFile(path)) {
        const QImage image = ImportPicture(path);
        size = image.isNull() ? QSize() : image.size();
    } else if (isBitmapName(upper)) {
        QByteArray data = readAll(path);
        if (LooksLikeBmp(data)) {
            size = BmpSize(data);
        } else {
            QBuffer buffer(&data);
            QImageReader reader(&buffer);
            if (reader.format() != "bmp")
                size = orientedSize(reader, reader.transformation());
        }
    } else if (const PictureReader* own = PictureReaderFor(path)) {
        size = own->readHeader(readAll(path)).size;
    } else {
        QImageReader reader(path);
        size = orientedSize(reader, turnOf(path, reader));
    }
    return size.isValid() && !size.isEmpty() ? size : QSize();
}

QColorSpace PictureColorSpace(const QString& path)
{
    if (!IsImageFile(path) || !QFileInfo(path).isFile())
        return {};
    if (const PictureReader* own = PictureReaderFor(path))
        return own->readHeader(readAll(path)).colorSpace;
    const QString upper = path.toUpper();
    if (upper.endsWith(QLatin1String(".WMF")) || upper.endsWith(QLatin1String(".EMF")) ||
        upper.endsWith(QLatin1String(".ICO")) || upper.endsWith(QLatin1String(".CUR")) ||
        isBitmapName(upper))
        return {};
    QImageReader reader(path);
    if (reader.format() == "jpeg")
        return jpegColorSpace(readAll(path));
    return reader.read().colorSpace();
}

QImage ImportPicture(const QString& path)
{
    const QString upper = path.toUpper();
    if (upper.endsWith(QLatin1String(".PCX")))
        return DecodePcx(readAll(path));
    if (upper.endsWith(QLatin1String(".TGA")))
        return DecodeTga(readAll(path));
    return {};
}

} // namespace kavori
