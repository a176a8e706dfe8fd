#include "playback/media/MovieSurface.h"
#include "playback/media/VideoDevice.h"

#include "support/KavoriTest.h"

#include <QImage>
#include <QVideoFrame>
#include <QVideoFrameFormat>
#include <QVideoSink>

#include <cstring>

namespace kavori::test {

namespace {

// A frame as the decoder hands it over: the top half one colour, the bottom half another.
QVideoFrame TwoColourFrame(const QSize& size, QRgb top, QRgb bottom)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(top);
    for (int y = size.height() / 2; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, bottom);
    QVideoFrame frame(QVideoFrameFormat(size, QVideoFrameFormat::Format_BGRA8888));
    if (!frame.map(QVideoFrame::WriteOnly))
        return {};
    for (int y = 0; y < size.height(); ++y)
        std::memcpy(frame.bits(0) + y * frame.bytesPerLine(0), image.constScanLine(y),
                    size_t(size.width()) * 4);
    frame.unmap();
    return frame;
}

QRgb PixelAt(QWidget& widget, int x, int y)
{
    return widget.grab().toImage().pixel(x, y) | 0xFF000000u;
}

class MovieSurfaceTest : public KavoriTest {};

TEST_F(MovieSurfaceTest, FrameIsPaintedWholeAndCentredInItsProportions)
{
    QWidget window;
    MovieSurface surface(&window);
    surface.resize(200, 100);
    const QRgb red = qRgb(255, 0, 0);
    const QRgb blue = qRgb(0, 0, 255);
    surface.videoSink()->setVideoFrame(TwoColourFrame(QSize(40, 40), red, blue));

    // 40x40 blown up to 100x100, in the middle of 200x100; black beside it, the right way up.
    EXPECT_EQ(PixelAt(surface, 100, 20), red);
    EXPECT_EQ(PixelAt(surface, 100, 80), blue);
    EXPECT_EQ(PixelAt(surface, 55, 20), red);
    EXPECT_EQ(PixelAt(surface, 145, 80), blue);
    EXPECT_EQ(PixelAt(surface, 45, 50), qRgb(0, 0, 0));
    EXPECT_EQ(PixelAt(surface, 155, 50), qRgb(0, 0, 0));
}

TEST_F(MovieSurfaceTest, NewerFrameReplacesTheOneShown)
{
    QWidget window;
    MovieSurface surface(&window);
    surface.resize(64, 48);
    const QRgb green = qRgb(0, 255, 0);
    const QRgb white = qRgb(255, 255, 255);
    surface.videoSink()->setVideoFrame(TwoColourFrame(QSize(64, 48), green, green));
    ASSERT_EQ(PixelAt(surface, 32, 24), green);
    surface.videoSink()->setVideoFrame(TwoColourFrame(QSize(64, 48), white, white));
    EXPECT_EQ(PixelAt(surface, 32, 24), white);
}

TEST_F(MovieSurfaceTest, BlackBeforeTheFirstFrame)
{
    QWidget window;
    MovieSurface surface(&window);
    surface.resize(32, 32);
    EXPECT_EQ(PixelAt(surface, 16, 16), qRgb(0, 0, 0));
}

TEST_F(MovieSurfaceTest, VideoDeviceSurfaceFillsItsWindowAndFollowsIt)
{
    QWidget window;
    window.resize(300, 200);
    VideoDevice device;
    ASSERT_EQ(device.setWindow(&window), MCIERR_NONE);
    ASSERT_EQ(device.putDestination(), MCIERR_NONE);
    // Moved while hidden, as the player places its movie box before showing it.
    window.resize(400, 240);
    window.show();

    const QList<MovieSurface*> surfaces = window.findChildren<MovieSurface*>();
    ASSERT_EQ(surfaces.size(), 1);
    EXPECT_EQ(surfaces.first()->geometry(), QRect(0, 0, 400, 240));
    EXPECT_TRUE(surfaces.first()->isVisibleTo(&window));

    // A second "window" command replaces the surface rather than stacking another on it.
    ASSERT_EQ(device.setWindow(&window), MCIERR_NONE);
    EXPECT_EQ(window.findChildren<MovieSurface*>().size(), 1);
}

} // namespace

} // namespace kavori::test
