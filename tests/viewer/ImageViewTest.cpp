#include "viewer/ImageView.h"
#include "imaging/ImageFit.h"
#include "support/KavoriTest.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QTest>
#include <QThreadPool>

using namespace kavori;

TEST(ImageFit, StretchEnlargeAndScroll)
{
    const QSize area(800, 600);
    // Large image: shrunk to fit with its proportions when stretching, else kept and scrolled.
    EXPECT_EQ(FitImageRect(QSize(1600, 800), area, true, false), QRect(0, 100, 800, 400));
    EXPECT_EQ(FitImageRect(QSize(1600, 800), area, false, false), QRect(0, 0, 1600, 800));
    EXPECT_EQ(ScrollExtent(QRect(0, 0, 1600, 800), area), QSize(800, 200));
    // Small image: centred at its size, blown up only with both switches on.
    EXPECT_EQ(FitImageRect(QSize(200, 100), area, true, false), QRect(300, 250, 200, 100));
    EXPECT_EQ(FitImageRect(QSize(200, 100), area, false, true), QRect(300, 250, 200, 100));
    EXPECT_EQ(FitImageRect(QSize(200, 100), area, true, true), QRect(0, 100, 800, 400));
    EXPECT_EQ(ScrollExtent(QRect(300, 250, 200, 100), area), QSize(0, 0));
    // Extreme shapes never vanish.
    EXPECT_EQ(FitImageRect(QSize(10000, 1), area, true, false).size(), QSize(800, 1));
    EXPECT_TRUE(FitImageRect(QSize(), area, true, false).isNull());
}

class ImageViewTest : public kavori::test::KavoriTest {};

TEST_F(ImageViewTest, ScrollBarsAndSelectionInImagePixels)
{
    ImageView view;
    view.resize(400, 300);
    view.show();
    QImage image(800, 600, QImage::Format_RGB32);
    image.fill(Qt::red);
    view.setImage(image);

    // Stretched: the whole image fits, no scrolling; a drag selects in image pixels.
    view.setFit(true, false, true);
    EXPECT_EQ(view.drawnRect(), QRect(0, 0, 400, 300));
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, QPoint(50, 50));
    QTest::mouseMove(view.viewport(), QPoint(150, 100));
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, QPoint(150, 100));
    EXPECT_EQ(view.selection(), QRect(QPoint(100, 100), QPoint(301, 201)));

    // A click without dragging clears the selection.
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(10, 10));
    EXPECT_TRUE(view.selection().isEmpty());

    // Actual size: the scroll bars cover the rest of the image.
    view.setFit(false, false, false);
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 800 - view.viewport()->width());
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 600 - view.viewport()->height());
    EXPECT_EQ(view.findChild<QScrollBar*>(QStringLiteral("hsbPict")), view.horizontalScrollBar());
    EXPECT_EQ(view.findChild<QScrollBar*>(QStringLiteral("vsbPict")), view.verticalScrollBar());

    // The painted area shows the image.
    const QImage shot = view.viewport()->grab().toImage();
    EXPECT_EQ(QColor(shot.pixel(5, 5)), QColor(Qt::red));
}

namespace {

// Left half red, right half blue, so a turn or a swap of pictures shows in any corner.
QImage Halves(QSize size, QRgb left = qRgb(255, 0, 0), QRgb right = qRgb(0, 0, 255))
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, x < size.width() / 2 ? left : right);
    return image;
}

// Lets the picture being made aside finish and its end reach the view.
void SettleScaling()
{
    QThreadPool::globalInstance()->waitForDone(5000);
    QCoreApplication::processEvents();
}

QColor At(const QImage& shot, QPoint p)
{
    return QColor(shot.pixel(p));
}

} // namespace

TEST_F(ImageViewTest, ShowsTheRightPictureThroughStepsResizesAndEdits)
{
    ImageView view;
    view.resize(400, 300);
    view.show();
    view.setFit(true, false, true);
    const QImage a = Halves(QSize(800, 600));
    view.setImage(a);
    QImage shot = view.viewport()->grab().toImage();
    EXPECT_EQ(At(shot, {20, 150}), QColor(Qt::red));
    EXPECT_EQ(At(shot, {380, 150}), QColor(Qt::blue));
    EXPECT_EQ(view.shownPicture(), FittedPicture(a, view.fit()));

    // A step with the picture made ahead at the window's size: drawn as it came, not remade.
    const QImage b = Halves(QSize(800, 400), qRgb(0, 255, 0), qRgb(255, 255, 0));
    const QImage ready = FittedPicture(b, view.fit());
    view.setImage(b, ready, view.fit());
    shot = view.viewport()->grab().toImage();
    EXPECT_EQ(view.shownPicture().cacheKey(), ready.cacheKey());
    EXPECT_EQ(view.drawnRect(), QRect(0, 50, 400, 200));
    EXPECT_EQ(At(shot, {20, 150}), QColor(Qt::green));
    EXPECT_EQ(At(shot, {380, 150}), QColor(Qt::yellow));
    EXPECT_EQ(At(shot, {200, 20}), QColor(Qt::black)); // the background above it

    // A resize draws the picture it has, stretched, until the new size is made aside; then
    // the same pixels as a picture scaled at that size from the start.
    view.resize(600, 450);
    shot = view.viewport()->grab().toImage();
    EXPECT_EQ(view.drawnRect(), QRect(0, 75, 600, 300));
    EXPECT_EQ(view.shownPicture().size(), QSize(400, 200));
    EXPECT_EQ(At(shot, {20, 225}), QColor(Qt::green));
    EXPECT_EQ(At(shot, {580, 225}), QColor(Qt::yellow));
    SettleScaling();
    EXPECT_EQ(view.shownPicture(), FittedPicture(b, view.fit()));
    shot = view.viewport()->grab().toImage();
    EXPECT_EQ(At(shot, {580, 225}), QColor(Qt::yellow));

    // Another fit of the same picture goes the same way: rough now, made aside.
    view.setFit(true, false, false);
    view.viewport()->grab();
    SettleScaling();
    EXPECT_EQ(view.shownPicture(), FittedPicture(b, view.fit()));

    // A picture given while one of the last was still being made aside never shows the
    // last one's pixels, neither at once nor when that work ends.
    view.resize(500, 400);
    view.viewport()->grab();                                      // starts making b at 500 x 400
    const QImage turned = a.transformed(QTransform().rotate(90)); // an edit: red on top
    view.setImage(turned);
    shot = view.viewport()->grab().toImage();
    SettleScaling();
    for (const QImage& s : {shot, view.viewport()->grab().toImage()}) {
        const QRect drawn = view.drawnRect();
        EXPECT_EQ(drawn, QRect(100, 0, 300, 400));
        EXPECT_EQ(At(s, drawn.center() - QPoint(0, 150)), QColor(Qt::red));
        EXPECT_EQ(At(s, drawn.center() + QPoint(0, 150)), QColor(Qt::blue));
        EXPECT_EQ(At(s, {50, 200}), QColor(Qt::black));
    }
    EXPECT_EQ(view.shownPicture(), FittedPicture(turned, view.fit()));

    // The same picture given again keeps what was made of it.
    const qint64 made = view.shownPicture().cacheKey();
    view.setImage(turned);
    view.viewport()->grab();
    EXPECT_EQ(view.shownPicture().cacheKey(), made);
}
