#include "viewer/ImageEdits.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using namespace kavori;

namespace {
// A 40 x 20 picture: red top-left pixel, blue top-right, the rest white.
QImage sample()
{
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setPixel(0, 0, qRgb(255, 0, 0));
    image.setPixel(39, 0, qRgb(0, 0, 255));
    return image;
}
QColor at(const QImage& image, int x, int y)
{
    return QColor(image.pixel(x, y));
}
} // namespace

TEST(ImageEdits, RotationsAndFlipsMoveCornersWhereExpected)
{
    const QImage image = sample();
    const QImage cw = Rotate90Clockwise(image);
    EXPECT_EQ(cw.size(), QSize(20, 40));
    EXPECT_EQ(at(cw, 19, 0), QColor(Qt::red));
    EXPECT_EQ(at(cw, 19, 39), QColor(Qt::blue));
    const QImage ccw = Rotate90CounterClockwise(image);
    EXPECT_EQ(at(ccw, 0, 39), QColor(Qt::red));
    EXPECT_EQ(at(ccw, 0, 0), QColor(Qt::blue));
    const QImage half = Rotate180(image);
    EXPECT_EQ(at(half, 39, 19), QColor(Qt::red));
    const QImage h = FlipHorizontal(image);
    EXPECT_EQ(at(h, 39, 0), QColor(Qt::red));
    EXPECT_EQ(at(h, 0, 0), QColor(Qt::blue));
    const QImage v = FlipVertical(image);
    EXPECT_EQ(at(v, 0, 19), QColor(Qt::red));
    // Four quarter turns give the picture back.
    EXPECT_EQ(Rotate90Clockwise(Rotate90Clockwise(Rotate90Clockwise(cw))), image);

    // Any angle: kept size or grown to hold it, the uncovered corners filled.
    const QImage kept = RotateByAngle(image, 45, true, true, Qt::black);
    EXPECT_EQ(kept.size(), image.size());
    EXPECT_EQ(at(kept, 0, 19), QColor(Qt::black));
    const QImage grown = RotateByAngle(image, 90, true, false, Qt::black);
    EXPECT_EQ(grown.size(), QSize(20, 40));
    EXPECT_EQ(RotateByAngle(image, 30, false, false, Qt::black).width(), 45); // 40cos30+20sin30
}

TEST(ImageEdits, SizeCommandsStopAtTheirLimits)
{
    const QImage image = sample();
    EXPECT_EQ(ResizeByPercent(image, 25).image.size(), QSize(50, 25));
    EXPECT_EQ(ResizeByPercent(image, -50).image.size(), QSize(20, 10));
    EXPECT_EQ(ResizeByPercent(image, 50).image.size(), QSize(60, 30));

    QImage tiny(5, 5, QImage::Format_RGB32);
    const EditResult smaller = ResizeByPercent(tiny, -50);
    EXPECT_TRUE(smaller.image.isNull());
    EXPECT_EQ(smaller.message, "You may not make the current image any smaller...");
    // 4 x 4 shrunk by a quarter would be 3 x 3: refused; grown it is fine.
    QImage four(4, 4, QImage::Format_RGB32);
    EXPECT_EQ(ResizeByPercent(four, -25).message, CantMakeSmallerMessage());
    EXPECT_EQ(ResizeByPercent(four, 25).image.size(), QSize(5, 5));

    QImage wide(9000, 10, QImage::Format_RGB32);
    EXPECT_EQ(ResizeByPercent(wide, 25).message,
              "You may not make the current image any larger...");
    EXPECT_EQ(ResizeTo(image, QSize(3, 100)).message, CantMakeSmallerMessage());
    EXPECT_EQ(ResizeTo(image, QSize(100, 10001)).message, CantMakeLargerMessage());
    EXPECT_EQ(ResizeTo(image, QSize(7, 9)).image.size(), QSize(7, 9));
}

TEST(ImageEdits, CropPasteAndNewImage)
{
    const QImage image = sample();
    const EditResult cropped = Crop(image, QRect(-5, -5, 10, 10));
    EXPECT_EQ(cropped.image.size(), QSize(5, 5));
    EXPECT_EQ(at(cropped.image, 0, 0), QColor(Qt::red));
    EXPECT_TRUE(Crop(image, QRect(100, 100, 5, 5)).image.isNull());
    EXPECT_FALSE(Crop(image, QRect(100, 100, 5, 5)).message.isEmpty());

    QImage clip(4, 4, QImage::Format_RGB32);
    clip.fill(Qt::green);
    const QImage stretched = PasteInto(image, clip, QRect(10, 5, 20, 10), true);
    EXPECT_EQ(at(stretched, 29, 14), QColor(Qt::green));
    EXPECT_EQ(at(stretched, 30, 14), QColor(Qt::white));
    const QImage placed = PasteInto(image, clip, QRect(10, 5, 20, 10), false);
    EXPECT_EQ(at(placed, 13, 8), QColor(Qt::green));
    EXPECT_EQ(at(placed, 14, 8), QColor(Qt::white));
    const QImage cut = PasteInto(image, clip, QRect(10, 5, 2, 2), false);
    EXPECT_EQ(at(cut, 12, 5), QColor(Qt::white));

    const QImage blank = NewImage(640, 480, QColor(10, 20, 30));
    EXPECT_EQ(blank.size(), QSize(640, 480));
    EXPECT_EQ(at(blank, 639, 479), QColor(10, 20, 30));
    EXPECT_EQ(NewImage(1, 20000, Qt::white).size(), QSize(4, 10000));
}
