#include "ExportTestFiles.h"
#include "export/MovieFrames.h"
#include "export/ShowExport.h"
#include "export/ShowFrames.h"
#include "export/ShowSoundtrack.h"
#include "settings/Settings.h"
#include "support/ShowTest.h"

using namespace kavori;
using namespace kavori::test;

namespace {

bool Near(QRgb a, QColor b)
{
    return std::abs(qRed(a) - b.red()) < 24 && std::abs(qGreen(a) - b.green()) < 24 &&
           std::abs(qBlue(a) - b.blue()) < 24;
}

} // namespace

class MovieSlidesTest : public ShowTest {
protected:
    // A movie of 64 x 36 made by the export itself: a second of red, a second of blue, and a
    // tone all through. Named .mov, a movie kind the player takes.
    QString makeMovie()
    {
        for (int i = 0; i < 2; ++i) {
            QImage picture(64, 36, QImage::Format_RGB32);
            picture.fill(i ? Qt::blue : Qt::red);
            const QString path = root() + QStringLiteral("m%1.bmp").arg(i);
            EXPECT_TRUE(picture.save(path, "BMP"));
            CurrentShow().slides.append(NewSlide(path));
        }
        Settings& s = CurrentSettings();
        s.SlideInterval = 1;
        s.SoundMode = 1;
        s.SoundFile = writeFile(QStringLiteral("tone.wav"), MakeWave(2500, 22050, 440));
        ExportOptions o;
        o.size = QSize(64, 36);
        o.fps = 10;
        o.output = root() + QStringLiteral("clip.mov");
        const ExportResult made = ExportShowToVideo(o);
        EXPECT_TRUE(made.written) << made.message.toStdString();
        ResetShow();
        ResetSettings();
        return o.output;
    }
};

TEST_F(MovieSlidesTest, AMovieSlidePlaysItsPicturesOverAndOverWithItsSound)
{
    const QString movie = makeMovie();
    const MovieInfo info = ReadMovieInfo(movie);
    EXPECT_EQ(info.size, QSize(64, 36));
    EXPECT_NEAR(double(info.duration), 2e6, 1e5);
    EXPECT_FALSE(ReadMovieInfo(writeFile(QStringLiteral("bad.mov"), "not a movie")).size.isValid());

    // A black slide, then the movie for three seconds, centred.
    QImage black(160, 90, QImage::Format_RGB32);
    black.fill(Qt::black);
    ASSERT_TRUE(black.save(root() + QStringLiteral("black.bmp"), "BMP"));
    CurrentShow().slides.append(NewSlide(root() + QStringLiteral("black.bmp")));
    Slide clip = NewSlide(movie);
    clip.SlideBackMode = 1;
    clip.SlideBackColor = 0x0000FF00; // green
    CurrentShow().slides.append(clip);
    CurrentShow().UseSlideIntervals = true;
    CurrentShow().slides[0].SlideDelay = 1;
    CurrentShow().slides[1].SlideDelay = 3;
    CurrentSettings().EnableTransitions = true;

    ShowFrames frames(QSize(160, 90), 10, 1);
    QVector<QImage> video;
    frames.walk([&video](const QImage& frame, qint64) {
        video << frame.copy();
        return true;
    });
    ASSERT_EQ(frames.spans().size(), 2);
    const SlideSpan& span = frames.spans()[1];
    EXPECT_TRUE(span.movie);
    EXPECT_EQ(span.transition, 0); // a movie comes up at once
    EXPECT_EQ(span.movieRect, QRect(48, 27, 64, 36));
    ASSERT_EQ(video.size(), 40);
    const auto at = [&](int frame) { return video[frame].pixel(80, 45); };
    EXPECT_TRUE(Near(at(15), Qt::red));
    EXPECT_TRUE(Near(at(25), Qt::blue));
    EXPECT_TRUE(Near(at(35), Qt::red));                  // round again
    EXPECT_TRUE(Near(video[25].pixel(5, 5), Qt::green)); // the background around it

    // Exported, the movie's sound plays over the silent show.
    ExportOptions o;
    o.size = QSize(160, 90);
    o.fps = 10;
    o.output = root() + QStringLiteral("with-movie.webm");
    o.format = VideoFormat::WebM;
    const ExportResult result = ExportShowToVideo(o);
    ASSERT_TRUE(result.written) << result.message.toStdString();
    QVector<qint16> sound;
    ASSERT_TRUE(ReadSoundSamples(o.output, sound));
    double before = 0, during = 0;
    for (qint64 f = 2400; f < 40000; ++f)
        before = std::max(before, std::abs(double(sound[f * 2])));
    for (qint64 f = 60000; f < 150000; ++f)
        during = std::max(during, std::abs(double(sound[f * 2])));
    EXPECT_LT(before, 300);
    EXPECT_GT(during, 6000);

    // A movie that cannot be played leaves its slide's background, and a note.
    CurrentShow().slides[1].SlideFile = writeFile(QStringLiteral("broken.mov"), "junk");
    o.output = root() + QStringLiteral("broken-movie.mp4");
    o.format = VideoFormat::Mp4;
    const ExportResult noted = ExportShowToVideo(o);
    ASSERT_TRUE(noted.written) << noted.message.toStdString();
    EXPECT_TRUE(noted.message.startsWith(QStringLiteral("These movies could not be played")))
        << noted.message.toStdString();
}
