#include "ExportTestFiles.h"
#include "export/ShowExport.h"
#include "export/ShowFrames.h"
#include "export/ShowSoundtrack.h"
#include "playback/FullViewFrm.h"
#include "settings/Settings.h"
#include "support/PhotoLike.h"
#include "support/ShowTest.h"

#include <QDir>

#include <cmath>

using namespace kavori;
using namespace kavori::test;

namespace {
constexpr int kFps = 10;
const QSize kSize(160, 90);
} // namespace

class VideoExportTest : public ShowTest {
protected:
    // Two photos a second each, the second coming up by a wipe with a tone of its own.
    void makeShow()
    {
        for (int i = 0; i < 2; ++i) {
            const QString path = root() + QStringLiteral("photo%1.bmp").arg(i);
            ASSERT_TRUE(PhotoLike(240, 135, i + 5).save(path, "BMP"));
            Slide slide = NewSlide(path);
            slide.SlideShrink = 1;
            CurrentShow().slides.append(slide);
        }
        CurrentShow().slides[1].SlideTransition = 14;
        CurrentShow().slides[1].SlideSound =
            writeFile(QStringLiteral("tone.wav"), MakeWave(3000, 22050, 440));
        Settings& s = CurrentSettings();
        s.EnableTransitions = true;
        s.TransitionSpeed = 5;
        s.SlideInterval = 1;
        s.SoundMode = 3;
    }

    ExportOptions options(VideoFormat format, const QString& name)
    {
        ExportOptions o;
        o.format = format;
        o.size = kSize;
        o.fps = kFps;
        o.seed = 5;
        o.output = root() + name;
        return o;
    }

    // The player's picture of each slide, at the video's size.
    QVector<QImage> playerPictures()
    {
        Settings& s = CurrentSettings();
        const bool transitions = s.EnableTransitions;
        s.EnableTransitions = false;
        FullViewFrm player;
        player.resize(kSize);
        player.show();
        player.PlayShow();
        QVector<QImage> pictures;
        for (int i = 0; i < CurrentShow().slides.size(); ++i) {
            player.SlideTimer_Timer();
            pictures << player.screenImage().copy();
        }
        player.endShow();
        s.EnableTransitions = transitions;
        return pictures;
    }
};

TEST_F(VideoExportTest, BothFormatsHoldTheShowFrameForFrameWithItsSound)
{
    makeShow();
    const QVector<QImage> player = playerPictures();
    ShowFrames plan(kSize, kFps, 5);
    plan.walk({});
    ASSERT_EQ(plan.spans().size(), 2);
    ASSERT_GT(plan.spans()[1].transition, 0);

    struct Case {
        VideoFormat format;
        const char* name;
        const char* video;
        const char* audio;
    };
    for (const Case& c : {Case{VideoFormat::Mp4, "show.mp4", "video/x-h264", "audio/mpeg"},
                          Case{VideoFormat::WebM, "show.webm", "video/x-vp9", "audio/x-opus"}}) {
        SCOPED_TRACE(c.name);
        qint64 reported = 0;
        const ExportResult result = ExportShowToVideo(
            options(c.format, QString::fromLatin1(c.name)), [&](qint64 done, qint64 total) {
                EXPECT_EQ(done, reported + 1);
                EXPECT_EQ(total, plan.frameCount());
                reported = done;
                return true;
            });
        ASSERT_TRUE(result.written) << result.message.toStdString();
        EXPECT_TRUE(result.message.isEmpty());
        EXPECT_EQ(result.frames, plan.frameCount());
        EXPECT_EQ(reported, result.frames);

        const QString file = root() + QString::fromLatin1(c.name);
        const Discovered info = Discover(file);
        ASSERT_TRUE(info.ok);
        EXPECT_TRUE(info.videoCaps.startsWith(QString::fromLatin1(c.video)))
            << info.videoCaps.toStdString();
        EXPECT_TRUE(info.audioCaps.startsWith(QString::fromLatin1(c.audio)))
            << info.audioCaps.toStdString();
        EXPECT_EQ(info.width, kSize.width());
        EXPECT_EQ(info.height, kSize.height());
        const qint64 expected = plan.spans()[0].transition + plan.spans()[0].hold +
                                plan.spans()[1].transition + plan.spans()[1].hold;
        EXPECT_LE(std::llabs(info.duration - expected), 1000000 / kFps)
            << info.duration << " " << expected;

        const QVector<QImage> frames = DecodeVideoFrames(file);
        ASSERT_EQ(frames.size(), result.frames);
        for (int i = 0; i < 2; ++i) {
            const SlideSpan& span = plan.spans()[i];
            const qint64 middle = (span.start + span.transition + span.hold / 2) * kFps / 1000000;
            EXPECT_GT(Psnr(player[i], frames[int(middle)]), 35.0) << "slide " << i;
        }

        // Silence on the first slide, the tone from the second slide's start.
        QVector<qint16> sound;
        ASSERT_TRUE(ReadSoundSamples(file, sound));
        const qint64 toneStart = SampleFrameAt(plan.spans()[1].start);
        double quiet = 0, loud = 0;
        for (qint64 f = 2400; f < toneStart - 4800; ++f)
            quiet = std::max(quiet, std::abs(double(sound[f * 2])));
        for (qint64 f = toneStart + 4800; f < toneStart + 9600; ++f)
            loud = std::max(loud, std::abs(double(sound[f * 2])));
        EXPECT_LT(quiet, 300);
        EXPECT_GT(loud, 6000);
    }

    // The same seed makes the same pictures.
    ASSERT_TRUE(ExportShowToVideo(options(VideoFormat::Mp4, QStringLiteral("again.mp4"))).written);
    EXPECT_EQ(DecodeVideoFrames(root() + QStringLiteral("again.mp4")),
              DecodeVideoFrames(root() + QStringLiteral("show.mp4")));
}

TEST_F(VideoExportTest, CancelAndFailureLeaveNoHalfWrittenFile)
{
    makeShow();
    // A file of the name from before stays as it was when the export is cancelled.
    const QString older = writeFile(QStringLiteral("show.mp4"), "older video");
    const ExportResult cancelled =
        ExportShowToVideo(options(VideoFormat::Mp4, QStringLiteral("show.mp4")),
                          [](qint64 done, qint64) { return done < 3; });
    EXPECT_TRUE(cancelled.cancelled);
    EXPECT_FALSE(cancelled.written);
    EXPECT_EQ(readFile(older), QByteArray("older video"));
    const QStringList left = QDir(root()).entryList(QDir::Files | QDir::Hidden);
    EXPECT_TRUE(left.filter(QStringLiteral(".part")).isEmpty()) << left.join(u' ').toStdString();

    // A folder that is not there: the message, and nothing written.
    const ExportResult failed =
        ExportShowToVideo(options(VideoFormat::WebM, QStringLiteral("missing/folder/show.webm")));
    EXPECT_FALSE(failed.written);
    EXPECT_TRUE(
        failed.message.startsWith(QStringLiteral("Unable to write the following video file:")))
        << failed.message.toStdString();

    // Refusals before anything is made.
    ExportOptions odd = options(VideoFormat::Mp4, QStringLiteral("odd.mp4"));
    odd.size = QSize(161, 90);
    EXPECT_EQ(CheckExportOptions(odd),
              QStringLiteral("The video's width and height must be even numbers..."));
    odd.size = kSize;
    odd.fps = 0;
    EXPECT_FALSE(CheckExportOptions(odd).isEmpty());
    odd.fps = kFps;
    odd.output = root();
    EXPECT_EQ(CheckExportOptions(odd),
              QStringLiteral("Please enter the name of a file, not a folder..."));
    ResetShow();
    const ExportResult empty =
        ExportShowToVideo(options(VideoFormat::Mp4, QStringLiteral("e.mp4")));
    EXPECT_EQ(empty.message, QStringLiteral("There are no slides in this slide show to export..."));
    EXPECT_FALSE(QFileInfo::exists(root() + QStringLiteral("e.mp4")));

    EXPECT_EQ(ParseExportSize(QStringLiteral("1920x1080")), QSize(1920, 1080));
    EXPECT_EQ(ParseExportSize(QStringLiteral(" 640 X 360 ")), QSize(640, 360));
    EXPECT_FALSE(ParseExportSize(QStringLiteral("1920by1080")).isValid());
    EXPECT_EQ(ExportTimeLeftText(10, 100, 5.0), QStringLiteral("about 0:45 left"));
    EXPECT_EQ(ExportTimeLeftText(50, 100, 130.0), QStringLiteral("about 2:10 left"));
}

TEST_F(VideoExportTest, APictureChangedInPlaceIsNotTakenForTheFrameBefore)
{
    // The writer sends a picture again when its key says it did not change; drawing into the
    // same picture changes its key, so the change reaches the video.
    const QString file = root() + QStringLiteral("inplace.webm");
    VideoWriter writer;
    ASSERT_TRUE(writer.open(file, VideoFormat::WebM, kSize, kFps)) << writer.error().toStdString();
    QImage picture(kSize, QImage::Format_RGB32);
    picture.fill(Qt::red);
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(writer.addFrame(picture));
    picture.fill(Qt::blue);
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(writer.addFrame(picture));
    const QImage copy = picture.copy(); // another picture of the same pixels
    ASSERT_TRUE(writer.addFrame(copy));
    ASSERT_TRUE(writer.finish()) << writer.error().toStdString();

    const QVector<QImage> frames = DecodeVideoFrames(file);
    ASSERT_EQ(frames.size(), 6);
    QImage red(kSize, QImage::Format_RGB32);
    red.fill(Qt::red);
    QImage blue(kSize, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    for (int i = 0; i < 6; ++i)
        EXPECT_GT(Psnr(i < 3 ? red : blue, frames[i]), 35.0) << "frame " << i;
}
