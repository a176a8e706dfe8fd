#include "viewer/ImageView.h"
#include "support/KavoriTest.h"
#include "imaging/ImageFit.h"

#include <QScrollBar>
#include <QTest>

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
