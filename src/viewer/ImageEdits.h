#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace kavori {

// The editing commands of the main window, as plain functions on pictures. Each returns the
// new picture, or a null picture and the message to show when the command is refused.

// The smallest and largest side the size commands make: small enough for icons, large enough
// for any photo, and still safe for memory (10000 x 10000 x 4 bytes = 400 MB at the most).
constexpr int kMinImageSide = 4;
constexpr int kMaxImageSide = 10000;

struct EditResult {
    QImage image;
    QString message;
};

QImage Rotate90Clockwise(const QImage& image);
QImage Rotate90CounterClockwise(const QImage& image);
QImage Rotate180(const QImage& image);
QImage FlipHorizontal(const QImage& image);
QImage FlipVertical(const QImage& image);

// Grows (percent > 0) or shrinks (percent < 0) both sides by the percentage, smoothly.
// Refused at the limits with "You may not make the current image any smaller/larger...".
EditResult ResizeByPercent(const QImage& image, int percent);

// An exact new size (the image size dialog); keepAspect fits height to width.
EditResult ResizeTo(const QImage& image, const QSize& size);

// Rotation by any angle. preserveSize keeps the picture's size (corners are cut);
// otherwise the picture grows to hold the whole rotated image. Uncovered parts take fill.
QImage RotateByAngle(const QImage& image, double degrees, bool clockwise, bool preserveSize,
                     const QColor& fill);

// The selected area (clipped to the picture); a selection outside it is refused.
EditResult Crop(const QImage& image, const QRect& selection);

// Puts a clipboard picture into the selected area, stretched to fill it or at its own size
// (cut at the area's edges).
QImage PasteInto(const QImage& image, const QImage& clip, const QRect& area, bool stretch);

// A new blank picture of the given size and colour (sides kept within the limits).
QImage NewImage(int width, int height, const QColor& color);

// Message texts of the commands.
QString CantMakeSmallerMessage();
QString CantMakeLargerMessage();

} // namespace kavori
