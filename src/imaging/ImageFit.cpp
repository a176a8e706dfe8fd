#include "ImageFit.h"

#include "formats/PictureReader.h"

#include <algorithm>

namespace kavori {

QRect FitImageRect(const QSize& image, const QSize& area, bool stretch, bool enlarge)
{
    if (image.isEmpty() || area.isEmpty())
        return {};
    QSize drawn = image;
    const bool tooLarge = image.width() > area.width() || image.height() > area.height();
    if (stretch && (tooLarge || enlarge))
        drawn = image.scaled(area, Qt::KeepAspectRatio);
    drawn = drawn.expandedTo(QSize(1, 1));
    const int x = std::max(0, (area.width() - drawn.width()) / 2);
    const int y = std::max(0, (area.height() - drawn.height()) / 2);
    return QRect(QPoint(x, y), drawn);
}

QSize ScrollExtent(const QRect& drawn, const QSize& area)
{
    return QSize(std::max(0, drawn.right() + 1 - area.width()),
                 std::max(0, drawn.bottom() + 1 - area.height()));
}

QImage FittedPicture(const QImage& image, const ViewFit& fit)
{
    const QSize size = FitImageRect(image.size(), fit.area, fit.stretch, fit.enlarge).size();
    if (size.isEmpty())
        return {};
    return size == image.size() ? image : ScaledPicture(image, size, fit.smooth);
}

} // namespace kavori
