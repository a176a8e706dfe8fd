#include "ImageEdits.h"

#include <QPainter>
#include <QTransform>

#include <cmath>

namespace kavori {

QString CantMakeSmallerMessage()
{
    return QStringLiteral("You may not make the current image any smaller...");
}

QString CantMakeLargerMessage()
{
    return QStringLiteral("You may not make the current image any larger...");
}

QImage Rotate90Clockwise(const QImage& image)
{
    return image.transformed(QTransform().rotate(90));
}

QImage Rotate90CounterClockwise(const QImage& image)
{
    return image.transformed(QTransform().rotate(-90));
}

QImage Rotate180(const QImage& image)
{
    return image.mirrored(true, true);
}

QImage FlipHorizontal(const QImage& image)
{
    return image.mirrored(true, false);
}

QImage FlipVertical(const QImage& image)
{
    return image.mirrored(false, true);
}

EditResult ResizeTo(const QImage& image, const QSize& size)
{
    EditResult r;
    if (size.width() < kMinImageSide || size.height() < kMinImageSide) {
        r.message = CantMakeSmallerMessage();
        return r;
    }
    if (size.width() > kMaxImageSide || size.height() > kMaxImageSide) {
        r.message = CantMakeLargerMessage();
        return r;
    }
    r.image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return r;
}

EditResult ResizeByPercent(const QImage& image, int percent)
{
    const double factor = 1.0 + percent / 100.0;
    const QSize size(int(std::lround(image.width() * factor)),
                     int(std::lround(image.height() * factor)));
    EditResult r = ResizeTo(image, size);
    // A picture already at a limit says so even when rounding would keep its size.
    if (r.message.isEmpty() && size == image.size())
        r = EditResult{QImage(), percent < 0 ? CantMakeSmallerMessage() : CantMakeLargerMessage()};
    return r;
}

QImage RotateByAngle(const QImage& image, double degrees, bool clockwise, bool preserveSize,
                     const QColor& fill)
{
    const double angle = clockwise ? degrees : -degrees;
    QTransform turn;
    turn.rotate(angle);
    const QRect bounds = turn.mapRect(QRectF(image.rect())).toAlignedRect();
    const QSize outSize = preserveSize ? image.size() : bounds.size();
    QImage out(outSize, QImage::Format_ARGB32_Premultiplied);
    out.fill(fill);
    QPainter painter(&out);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(outSize.width() / 2.0, outSize.height() / 2.0);
    painter.rotate(angle);
    painter.drawImage(QPointF(-image.width() / 2.0, -image.height() / 2.0), image);
    painter.end();
    return out.convertToFormat(QImage::Format_RGB32);
}

EditResult Crop(const QImage& image, const QRect& selection)
{
    EditResult r;
    const QRect area = selection.intersected(image.rect());
    if (area.isEmpty()) {
        r.message = QStringLiteral("Select the area of the image to crop and then try again...");
        return r;
    }
    r.image = image.copy(area);
    return r;
}

QImage PasteInto(const QImage& image, const QImage& clip, const QRect& area, bool stretch)
{
    QImage out = image.convertToFormat(QImage::Format_RGB32);
    QPainter painter(&out);
    painter.setClipRect(area);
    if (stretch) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(area, clip);
    } else {
        painter.drawImage(area.topLeft(), clip);
    }
    return out;
}

QImage NewImage(int width, int height, const QColor& color)
{
    QImage out(qBound(kMinImageSide, width, kMaxImageSide),
               qBound(kMinImageSide, height, kMaxImageSide), QImage::Format_RGB32);
    out.fill(color);
    return out;
}

} // namespace kavori
