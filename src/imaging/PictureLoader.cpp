#include "PictureLoader.h"

#include "ImageTypes.h"
#include "Metafile.h"
#include "PcxDecoder.h"
#include "ScaledJpeg.h"
#include "TgaDecoder.h"

#include <QBuffer>
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

// Icons and cursors hold several pictures: the largest one is shown.
QImage largestIcon(const QString& path)
{
    QImageReader reader(path, "ico");
    QImage best;
    const int count = qMax(1, reader.imageCount());
    for (int i = 0; i < count; ++i) {
        if (i > 0 && !reader.jumpToImage(i))
            break;
        const QImage image = reader.read();
        if (!image.isNull() &&
            qint64(image.width()) * image.height() > qint64(best.width()) * best.height())
            best = image;
    }
    return best;
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

// A JPEG decoded on all cores straight to the size that fits the target, when that is at most
// half its own; null when it needs the full decode or the usual reader.
QImage decodeJpegForTarget(const QString& path, QImageReader& reader, const QSize& size,
                           const QSize& target)
{
    const QImageIOHandler::Transformations turn = reader.transformation();
    const bool quarterTurn = turn & QImageIOHandler::TransformationRotate90;
    const QSize shown = quarterTurn ? size.transposed() : size;
    const QSize wanted = shown.scaled(target, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    const QImage image =
        DecodeJpegAtSize(readAll(path), quarterTurn ? wanted.transposed() : wanted);
    return image.isNull() ? image : oriented(image, turn);
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

} // namespace

QImage LoadPicture(const QString& path, const QSize& target)
{
    if (!IsImageFile(path) || !QFileInfo(path).isFile())
        return {};
    raiseAllocationLimit();
    const QString upper = path.toUpper();
    if (upper.endsWith(QLatin1String(".WMF")))
        return RenderSvg(WmfToSvg(readAll(path)), target);
    if (upper.endsWith(QLatin1String(".EMF")))
        return RenderSvg(EmfToSvg(readAll(path)), target);
    if (upper.endsWith(QLatin1String(".ICO")) || upper.endsWith(QLatin1String(".CUR")))
        return shrinkToFit(largestIcon(path), target);

    QImageReader reader(path);
    reader.setAutoTransform(true);
    if (upper.endsWith(QLatin1String(".DIB")) || upper.endsWith(QLatin1String(".RLE")))
        reader.setFormat("bmp");
    const QSize size = reader.size();
    const bool scaleWhileDecoding = size.isValid() && !fitsIn(size, target) &&
                                    reader.supportsOption(QImageIOHandler::ScaledSize) &&
                                    reader.format() == "jpeg";
    if (scaleWhileDecoding) {
        const QImage decoded = decodeJpegForTarget(path, reader, size, target);
        if (!decoded.isNull())
            return decoded;
        reader.setScaledSize(size.scaled(target, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    }
    return shrinkToFit(reader.read(), target);
}

QSize PictureSize(const QString& path)
{
    const QString upper = path.toUpper();
    if (upper.endsWith(QLatin1String(".WMF")) || upper.endsWith(QLatin1String(".EMF")) ||
        upper.endsWith(QLatin1String(".ICO")) || upper.endsWith(QLatin1String(".CUR")))
        return LoadPicture(path).size();
    if (IsImportFile(path))
        return ImportPicture(path).size();
    QImageReader reader(path);
    if (upper.endsWith(QLatin1String(".DIB")) || upper.endsWith(QLatin1String(".RLE")))
        reader.setFormat("bmp");
    return reader.size();
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
