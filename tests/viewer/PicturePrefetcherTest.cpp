#include "viewer/PicturePrefetcher.h"
#include "imaging/ImageFit.h"
#include "support/KavoriTest.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>

using namespace kavori;

class PicturePrefetcherTest : public kavori::test::KavoriTest {
protected:
    QString picture(const QString& name, const QColor& colour, QSize size = QSize(64, 48))
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        const QString path = root() + name;
        image.save(path, "BMP");
        return path;
    }
};

TEST_F(PicturePrefetcherTest, ReadsAheadAndNeverServesAStalePicture)
{
    const QString a = picture(QStringLiteral("a.bmp"), Qt::red);
    const QString b = picture(QStringLiteral("b.bmp"), Qt::green);
    PicturePrefetcher prefetcher;
    EXPECT_TRUE(prefetcher.take(a).picture.isNull()); // nothing read ahead yet

    prefetcher.prefetch({a, b, root() + QStringLiteral("missing.bmp")});
    EXPECT_EQ(prefetcher.pending(), 2);
    const QImage got = prefetcher.take(a).picture;
    ASSERT_EQ(got.size(), QSize(64, 48));
    EXPECT_EQ(QColor(got.pixel(1, 1)), QColor(Qt::red));
    EXPECT_TRUE(prefetcher.take(a).picture.isNull()); // taken once

    // A file rewritten after it was read ahead is read again by the caller.
    prefetcher.prefetch({b});
    QThread::msleep(20);
    picture(QStringLiteral("b.bmp"), Qt::blue, QSize(65, 48));
    EXPECT_TRUE(prefetcher.take(b).picture.isNull());

    // A new list forgets pictures no longer wanted.
    prefetcher.prefetch({a});
    prefetcher.prefetch({b});
    EXPECT_EQ(prefetcher.pending(), 1);
    EXPECT_TRUE(prefetcher.take(a).picture.isNull());
    EXPECT_EQ(QColor(prefetcher.take(b).picture.pixel(0, 0)), QColor(Qt::blue));
}

// A picture the window showed is held as it is, and served only while its file is unchanged.
TEST_F(PicturePrefetcherTest, KeepsAPictureShownWhileItsFileIsUnchanged)
{
    const QString a = picture(QStringLiteral("a.bmp"), Qt::red);
    const QImage shown = QImage(a);
    const QFileInfo info(a);
    PicturePrefetcher prefetcher;
    prefetcher.keep(a, shown, info.size(), info.lastModified());
    const ViewFit fit{QSize(32, 32), true, false, true};
    prefetcher.prefetch({a}, fit); // still wanted: held, and made at the window's size
    const PrefetchedPicture got = prefetcher.take(a);
    EXPECT_EQ(got.picture.cacheKey(), shown.cacheKey());
    EXPECT_EQ(got.shown.size(), QSize(32, 24));

    prefetcher.keep(a, shown, info.size(), info.lastModified());
    picture(QStringLiteral("a.bmp"), Qt::blue, QSize(65, 48));
    EXPECT_TRUE(prefetcher.take(a).picture.isNull());
}

// The picture read ahead comes with the picture as the window draws it: made from that file's
// pixels, at the size the window's fit gives, and made again when the fit changed.
TEST_F(PicturePrefetcherTest, MakesThePictureAtTheWindowsSizeBesideIt)
{
    QImage halves(400, 200, QImage::Format_RGB32);
    halves.fill(Qt::red);
    for (int y = 0; y < 200; ++y)
        for (int x = 200; x < 400; ++x)
            halves.setPixel(x, y, qRgb(0, 0, 255));
    const QString wide = root() + QStringLiteral("wide.bmp");
    ASSERT_TRUE(halves.save(wide, "BMP"));
    const QString small = picture(QStringLiteral("small.bmp"), Qt::green, QSize(40, 30));

    const ViewFit fit{QSize(100, 100), true, false, true};
    PicturePrefetcher prefetcher;
    prefetcher.prefetch({wide, small}, fit);
    const PrefetchedPicture got = prefetcher.take(wide);
    ASSERT_EQ(got.picture.size(), QSize(400, 200));
    ASSERT_EQ(got.shown.size(), QSize(100, 50));
    EXPECT_TRUE(got.fit.smooth);
    EXPECT_EQ(got.fit.area, QSize(100, 100));
    // The same pixels as the window would make itself, its own halves in place.
    EXPECT_EQ(got.shown, FittedPicture(got.picture, fit));
    EXPECT_EQ(QColor(got.shown.pixel(10, 25)), QColor(Qt::red));
    EXPECT_EQ(QColor(got.shown.pixel(90, 25)), QColor(Qt::blue));
    // A picture drawn at its own size is shown as it is.
    const PrefetchedPicture own = prefetcher.take(small);
    EXPECT_EQ(own.shown.cacheKey(), own.picture.cacheKey());

    // The window grew while the picture was held: it is scaled again for the new size.
    prefetcher.prefetch({wide}, fit);
    const ViewFit larger{QSize(300, 300), true, false, false};
    prefetcher.prefetch({wide}, larger);
    const PrefetchedPicture again = prefetcher.take(wide);
    ASSERT_EQ(again.shown.size(), QSize(300, 150));
    EXPECT_FALSE(again.fit.smooth);
    EXPECT_EQ(again.shown, FittedPicture(again.picture, larger));

    // Without a window's size nothing but the picture is made.
    prefetcher.prefetch({wide});
    const PrefetchedPicture plain = prefetcher.take(wide);
    EXPECT_FALSE(plain.picture.isNull());
    EXPECT_TRUE(plain.shown.isNull());
}
