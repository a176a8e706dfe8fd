#include "browse/ThumbnailLoader.h"
#include "support/ShowTest.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

using namespace kavori;

class ThumbnailLoaderTest : public kavori::test::ShowTest {
protected:
    QString picture(const QString& name, QSize size, QColor colour, const char* format = "JPG")
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        const QString path = root() + "pics/" + name;
        QDir().mkpath(root() + "pics");
        EXPECT_TRUE(image.save(path, format));
        return path;
    }
};

TEST_F(ThumbnailLoaderTest, EachFileBecomesACellOfItsKind)
{
    Thumbnail t = MakeThumbnail(picture("big.jpg", {640, 480}, Qt::red));
    EXPECT_EQ(t.state, Thumbnail::State::Picture);
    EXPECT_EQ(t.picture.size(), QSize(160, 120));
    EXPECT_EQ(t.original, QSize(640, 480));
    EXPECT_GT(qRed(t.picture.pixel(80, 60)), 200);
    t = MakeThumbnail(picture("tall.bmp", {100, 400}, Qt::blue, "BMP"));
    EXPECT_EQ(t.picture.size(), QSize(30, 120));
    t = MakeThumbnail(picture("small.bmp", {100, 80}, Qt::green, "BMP"));
    EXPECT_EQ(t.picture.size(), QSize(100, 80));
    EXPECT_EQ(MakeThumbnail(root() + "gone.jpg").state, Thumbnail::State::Missing);
    EXPECT_EQ(MakeThumbnail(writeFile("pics/clip.avi", "RIFF")).state, Thumbnail::State::Movie);
    const Thumbnail damaged = MakeThumbnail(writeFile("pics/bad.jpg", "\xff\xd8\xff garbage"));
    EXPECT_EQ(damaged.state, Thumbnail::State::Unreadable);
    EXPECT_TRUE(damaged.picture.isNull());
}

TEST_F(ThumbnailLoaderTest, PagesFillInAndTheNextPageIsReadAhead)
{
    QStringList files;
    for (int i = 0; i < 6; ++i)
        files << picture(QString("p%1.jpg").arg(i), {320, 240}, QColor(i * 40, 0, 0));
    ThumbnailLoader loader;
    QVector<int> cells;
    QVector<QSize> sizes;
    int finished = 0;
    bool stopped = false;
    QObject::connect(&loader, &ThumbnailLoader::thumbnailReady, [&](int cell, const Thumbnail& t) {
        cells << cell;
        sizes << t.picture.size();
    });
    QObject::connect(&loader, &ThumbnailLoader::pageFinished, [&](bool s) {
        ++finished;
        stopped = s;
    });
    loader.request(files.mid(0, 3), files.mid(3, 3));
    EXPECT_TRUE(QTest::qWaitFor([&] { return finished == 1; }, 10000));
    std::sort(cells.begin(), cells.end());
    EXPECT_EQ(cells, QVector<int>({0, 1, 2}));
    EXPECT_EQ(sizes, QVector<QSize>(3, QSize(160, 120)));
    EXPECT_FALSE(stopped);
    // The files read ahead arrive in the background; the next page then comes at once.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !loader.busy(); }, 10000));
    QTest::qWait(200);
    cells.clear();
    loader.request(files.mid(3, 3), {});
    EXPECT_EQ(cells.size(), 3);
    EXPECT_EQ(finished, 2);

    // A file changed since it was read is read again.
    picture("p3.jpg", {100, 80}, Qt::white);
    sizes.clear();
    QFile::remove(files[4]);
    loader.request(files.mid(3, 2), {});
    EXPECT_TRUE(QTest::qWaitFor([&] { return finished == 3; }, 10000));
    EXPECT_TRUE(sizes.contains(QSize(100, 80)));

    // Stopping ends the page at once, whatever is still being read.
    loader.forget();
    loader.request(files, {});
    loader.stop();
    EXPECT_TRUE(stopped);
    EXPECT_FALSE(loader.busy());
}
