#include "PictureReader.h"

#include "AvifReader.h"
#include "HeifReader.h"
#include "JxlReader.h"

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

QImage FitDecoded(const QImage& image, const QSize& target)
{
    if (image.isNull() || !target.isValid() || target.isEmpty() ||
        (image.width() <= target.width() && image.height() <= target.height()))
        return image;
    const QSize size = image.size().scaled(target, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace kavori
