#include "viewer/PicturePrefetcher.h"
#include "support/KavoriTest.h"

#include <QFile>
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
    EXPECT_TRUE(prefetcher.take(a).isNull()); // nothing read ahead yet

    prefetcher.prefetch({a, b, root() + QStringLiteral("missing.bmp")});
    EXPECT_EQ(prefetcher.pending(), 2);
    const QImage got = prefetcher.take(a);
    ASSERT_EQ(got.size(), QSize(64, 48));
    EXPECT_EQ(QColor(got.pixel(1, 1)), QColor(Qt::red));
    EXPECT_TRUE(prefetcher.take(a).isNull()); // taken once

    // A file rewritten after it was read ahead is read again by the caller.
    prefetcher.prefetch({b});
    QThread::msleep(20);
    picture(QStringLiteral("b.bmp"), Qt::blue, QSize(65, 48));
    EXPECT_TRUE(prefetcher.take(b).isNull());

    // A new list forgets pictures no longer wanted.
    prefetcher.prefetch({a});
    prefetcher.prefetch({b});
    EXPECT_EQ(prefetcher.pending(), 1);
    EXPECT_TRUE(prefetcher.take(a).isNull());
    EXPECT_EQ(QColor(prefetcher.take(b).pixel(0, 0)), QColor(Qt::blue));
}
