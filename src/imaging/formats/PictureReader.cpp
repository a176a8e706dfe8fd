#include "PictureReader.h"

#include "AvifReader.h"
#include "HeifReader.h"
#include "JxlReader.h"
#include "runtime/ParallelRun.h"
#include "runtime/ScratchMemory.h"

#include <QPainter>

#include <QPointF>

namespace kavori {

const PictureReader* PictureReaderFor(const QString& path)
{
    static const AvifReader avif;
    static const HeifReader heif;
    static const JxlReader jxl;
    const QString upper = path.toUpper();
    if (upper.endsWith(QLatin1String(".AVIF")))
        return &avif;
    if (upper.endsWith(QLatin1String(".HEIC")) || upper.endsWith(QLatin1String(".HEIF")))
        return &heif;
    if (upper.endsWith(QLatin1String(".JXL")))
        return &jxl;
    return nullptr;
}

QColorSpace ColorSpaceFromCodePoints(int primaries, int transfer)
{
    QColorSpace::TransferFunction function;
    float gamma = 0.0f;
    switch (transfer) {
    case 2:  // unspecified
    case 13: // sRGB
    case 1:  // BT.709, BT.601 and BT.2020 cameras: shown with the sRGB curve, as browsers do
    case 6:
    case 14:
    case 15:
        function = QColorSpace::TransferFunction::SRgb;
        break;
    case 8:
        function = QColorSpace::TransferFunction::Linear;
        break;
    case 4:
        function = QColorSpace::TransferFunction::Gamma;
        gamma = 2.2f;
        break;
    case 5:
        function = QColorSpace::TransferFunction::Gamma;
        gamma = 2.8f;
        break;
    default:
        return {};
    }
    const QPointF d65(0.3127, 0.3290);
    switch (primaries) {
    case 1: // BT.709, the sRGB primaries
    case 2: // unspecified
        return QColorSpace(QColorSpace::Primaries::SRgb, function, gamma);
    case 9: // BT.2020
        return QColorSpace(d65, QPointF(0.708, 0.292), QPointF(0.170, 0.797), QPointF(0.131, 0.046),
                           function, gamma);
    case 12: // Display P3
        return QColorSpace(QColorSpace::Primaries::DciP3D65, function, gamma);
    default:
        return {};
    }
}

namespace {

bool fourBytesAPixel(QImage::Format format)
{
    return format == QImage::Format_RGBA8888 || format == QImage::Format_RGBX8888 ||
           format == QImage::Format_ARGB32 || format == QImage::Format_RGB32;
}

// Each pixel the mean of a 2 x 2 block, rows shared out to every core.
QImage halved(const QImage& in)
{
    QImage out = ScratchImage(QSize(in.width() / 2, in.height() / 2), in.format());
    if (out.isNull())
        return {};
    const uchar* from = in.constBits();
    uchar* to = out.bits(); // detached here, once, before the threads write
    const qsizetype inLine = in.bytesPerLine(), outLine = out.bytesPerLine();
    const int rows = out.height(), pixels = out.width();
    const int parts = ParallelWidth();
    RunInParallel(parts, [&](int part) {
        for (int y = rows * part / parts; y < rows * (part + 1) / parts; ++y) {
            const auto* a = reinterpret_cast<const quint32*>(from + 2 * y * inLine);
            const auto* b = reinterpret_cast<const quint32*>(from + (2 * y + 1) * inLine);
            auto* o = reinterpret_cast<quint32*>(to + y * outLine);
            // Two channels at a time in 16-bit lanes: the sum of four samples fits.
            for (int x = 0; x < pixels; ++x) {
                const quint32 p = a[2 * x], q = a[2 * x + 1], r = b[2 * x], t = b[2 * x + 1];
                const quint32 even = (p & 0x00FF00FF) + (q & 0x00FF00FF) + (r & 0x00FF00FF) +
                                     (t & 0x00FF00FF) + 0x00020002;
                const quint32 odd = ((p >> 8) & 0x00FF00FF) + ((q >> 8) & 0x00FF00FF) +
                                    ((r >> 8) & 0x00FF00FF) + ((t >> 8) & 0x00FF00FF) + 0x00020002;
                o[x] = ((even >> 2) & 0x00FF00FF) | (((odd >> 2) & 0x00FF00FF) << 8);
            }
        }
    });
    out.setColorSpace(in.colorSpace());
    return out;
}

} // namespace

QImage FitDecoded(const QImage& image, const QSize& target)
{
    if (image.isNull() || !target.isValid() || target.isEmpty() ||
        (image.width() <= target.width() && image.height() <= target.height()))
        return image;
    const QSize size = image.size().scaled(target, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    // Qt's smooth scale is an area average on one thread; halving first on every core while
    // the picture is still twice the size leaves it a quarter of the work or less.
    QImage source = image;
    while (fourBytesAPixel(source.format()) && source.width() >= 2 * size.width() &&
           source.height() >= 2 * size.height()) {
        const QImage half = halved(source);
        if (half.isNull())
            break;
        source = half;
    }
    if (source.size() == size)
        return source;
    return source.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage ScaledPicture(const QImage& image, const QSize& size, bool smooth)
{
    if (image.isNull() || size.isEmpty())
        return {};
    QImage source = image;
    while (smooth && fourBytesAPixel(source.format()) && source.width() >= 2 * size.width() &&
           source.height() >= 2 * size.height()) {
        const QImage half = halved(source);
        if (half.isNull())
            break;
        source = half;
    }
    if (source.size() == size && fourBytesAPixel(source.format()))
        return source;
    const QImage::Format format =
        source.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    QImage out = ScratchImage(size, format);
    if (out.isNull())
        return {};
    if (format != QImage::Format_RGB32)
        out.fill(Qt::transparent); // a reused block holds another picture's pixels
    QPainter painter(&out);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
    painter.drawImage(out.rect(), source);
    painter.end();
    out.setColorSpace(image.colorSpace());
    return out;
}

} // namespace kavori
