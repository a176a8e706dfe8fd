#include "export/ShowFrames.h"
#include "ExportTestFiles.h"
#include "imaging/ImageFiles.h"
#include "playback/FullViewFrm.h"
#include "playback/TransitionCanvas.h"
#include "playback/TransitionEffects.h"
#include "playback/TransitionEngine.h"
#include "playback/player/DescriptionOverlay.h"
#include "settings/Settings.h"
#include "slideshow/DescriptionFile.h"
#include "support/PhotoLike.h"
#include "support/ShowTest.h"

#include <QCryptographicHash>

using namespace kavori;
using namespace kavori::test;

namespace {
constexpr int kFps = 10;
const QSize kSize(160, 90);
} // namespace

class ShowFramesTest : public ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        Transitions() = {};
    }

    // Three slides: a photo larger than the screen (shrunk, centred), a small one in the top
    // left corner on a coloured background with a framed description, and one at the bottom
    // right on black.
    void makeShow()
    {
        const QSize sizes[] = {{320, 200}, {60, 40}, {90, 70}};
        const qint16 places[] = {0, 1, 8};
        for (int i = 0; i < 3; ++i) {
            const QString path = root() + QStringLiteral("photo%1.bmp").arg(i);
            ASSERT_TRUE(PhotoLike(sizes[i].width(), sizes[i].height(), i + 1).save(path, "BMP"));
            Slide slide = NewSlide(path);
            slide.SlideShrink = 1;
            slide.SlideEnlarge = 0;
            slide.SlideLocation = places[i];
            slide.SlideTransition = qint16(6 + i);
            CurrentShow().slides.append(slide);
        }
        Slide& second = CurrentShow().slides[1];
        second.SlideBackMode = 1;
        second.SlideBackColor = 0x00A06020; // a blue-green in BGR
        second.SlideDescription = QStringLiteral("A small one");
        CurrentSettings().EnableTransitions = true;
        CurrentSettings().ShowDescription = true;
        CurrentSettings().SlideInterval = 2;
    }

    static QVector<QImage> walkAll(ShowFrames& frames)
    {
        QVector<QImage> out;
        frames.walk([&out](const QImage& frame, qint64 number) {
            EXPECT_EQ(number, out.size());
            out.append(frame.copy());
            return true;
        });
        return out;
    }

    static qint64 frameAt(qint64 microseconds) { return (microseconds * kFps + 999999) / 1000000; }
};

TEST_F(ShowFramesTest, AMidSlideFrameIsWhatThePlayerShows)
{
    makeShow();
    ShowFrames frames(kSize, kFps, 1);
    const QVector<QImage> video = walkAll(frames);
    ASSERT_EQ(frames.spans().size(), 3);
    ASSERT_EQ(video.size(), frames.frameCount());

    // The player, without transitions so each slide comes up at once, on a screen of the
    // video's size; its window's picture includes the description's labels.
    CurrentSettings().EnableTransitions = false;
    FullViewFrm player;
    player.resize(kSize);
    player.show();
    player.PlayShow();
    for (int i = 0; i < 3; ++i) {
        player.SlideTimer_Timer();
        ASSERT_EQ(player.currentSlide(), i);
        const SlideSpan& span = frames.spans().at(i);
        const qint64 middle = frameAt(span.start + span.transition + span.hold / 2);
        const QImage shown = player.grab().toImage().convertToFormat(QImage::Format_RGB32);
        EXPECT_GT(Psnr(shown, video.at(int(middle))), 35.0) << "slide " << i;
    }
    player.endShow();

    // A frame inside a transition is neither the slide before nor the slide after.
    const SlideSpan& second = frames.spans().at(1);
    ASSERT_GT(second.transition, 2 * 1000000 / kFps);
    const QImage& during = video.at(int(frameAt(second.start + second.transition / 2)));
    EXPECT_NE(during, video.at(int(frameAt(second.start)) - 1));
    EXPECT_NE(during, video.at(int(frameAt(second.end())) - 1));
}

TEST_F(ShowFramesTest, LengthIsTheIntervalsAndTransitionsAtTheShowsSpeed)
{
    makeShow();
    SlideShow& show = CurrentShow();
    show.UseSlideIntervals = true;
    show.slides[0].SlideDelay = 1;
    show.slides[1].SlideDelay = 0; // waits for the user: the video holds it a while
    show.slides[2].SlideDelay = 3;
    show.slides[2].SlideTransition = 0;
    // A slide whose picture cannot be read is left out, as the player goes on past it.
    Slide broken = NewSlide(root() + QStringLiteral("broken.jpg"));
    writeFile(QStringLiteral("broken.jpg"), "not a picture");
    show.slides.insert(1, broken);
    CurrentSettings().TransitionSpeed = 5;

    ShowFrames frames(kSize, kFps, 3);
    frames.walk({});
    ASSERT_EQ(frames.spans().size(), 3);
    EXPECT_EQ(frames.unreadable(), QStringList{root() + QStringLiteral("broken.jpg")});

    // Each effect lasts its passes at 14 microseconds, counted by the recording canvas.
    const auto effectLength = [](int number) {
        const TransitionEntry& entry = TransitionCatalogue(number);
        RecordingCanvas record(kSize);
        EffectRun run(record, record, entry.a, entry.b,
                      TransitionSizeClass(kSize.width(), kSize.height()) * entry.baseDelay);
        entry.routine(run);
        return qint64(std::llround(record.passes() * kPassMicroseconds));
    };
    const QVector<SlideSpan>& spans = frames.spans();
    EXPECT_EQ(spans[0].transition, effectLength(6));
    EXPECT_EQ(spans[1].transition, effectLength(7));
    EXPECT_EQ(spans[2].transition, 0);
    EXPECT_EQ(spans[0].hold, 1000000);
    EXPECT_EQ(spans[1].hold, qint64(kWaitingSlideSeconds) * 1000000);
    EXPECT_EQ(spans[2].hold, 3000000);
    qint64 sum = 0;
    for (const SlideSpan& span : spans) {
        EXPECT_EQ(span.start, sum);
        sum += span.transition + span.hold;
    }
    EXPECT_EQ(frames.duration(), sum);
    EXPECT_EQ(frames.frameCount(), frameAt(sum));

    // A faster speed makes shorter effects.
    CurrentSettings().TransitionSpeed = 6;
    ShowFrames faster(kSize, kFps, 3);
    faster.walk({});
    EXPECT_LT(faster.spans()[0].transition, spans[0].transition);
}

TEST_F(ShowFramesTest, TheSameSeedGivesTheSameFrames)
{
    makeShow();
    for (Slide& slide : CurrentShow().slides) {
        slide.SlideLocation = 9; // anywhere
        slide.SlideDescription = QStringLiteral("Moving");
        slide.SlideDescProps.clear();
    }
    Settings& s = CurrentSettings();
    s.RandomSlides = true;
    s.RandomTransitions = true;
    DescriptionLook look = DefaultDescriptionLook();
    look.location = kDescBouncing;
    SetDefaultDescriptionLook(look);

    const auto digest = [](const QVector<QImage>& video) {
        QCryptographicHash hash(QCryptographicHash::Sha1);
        for (const QImage& frame : video)
            hash.addData(QByteArrayView(reinterpret_cast<const char*>(frame.constBits()),
                                        frame.sizeInBytes()));
        return hash.result();
    };
    ShowFrames first(kSize, kFps, 42);
    const QVector<QImage> a = walkAll(first);
    ShowFrames second(kSize, kFps, 42);
    const QVector<QImage> b = walkAll(second);
    EXPECT_EQ(digest(a), digest(b));
    // The plan, made without drawing, has the same slides at the same times.
    ShowFrames plan(kSize, kFps, 42);
    plan.walk({});
    ASSERT_EQ(plan.spans().size(), first.spans().size());
    for (int i = 0; i < plan.spans().size(); ++i) {
        EXPECT_EQ(plan.spans()[i].index, first.spans()[i].index);
        EXPECT_EQ(plan.spans()[i].start, first.spans()[i].start);
    }
    EXPECT_EQ(plan.frameCount(), first.frameCount());

    ShowFrames other(kSize, kFps, 43);
    EXPECT_NE(digest(walkAll(other)), digest(a));

    // A bouncing description moves while its slide stands.
    for (const SlideSpan& span : first.spans()) {
        const qint64 up = frameAt(span.start + span.transition) + 1;
        EXPECT_NE(a.at(int(up)), a.at(int(up + 3)));
    }

    // The sink can stop the walk.
    ShowFrames stopped(kSize, kFps, 42);
    int seen = 0;
    EXPECT_FALSE(stopped.walk([&seen](const QImage&, qint64) { return ++seen < 4; }));
    EXPECT_EQ(seen, 4);
    EXPECT_FALSE(Transitions().TransitionStop);
}

TEST_F(ShowFramesTest, AStandingFrameKeepsItsKeySoTheWriterSendsItAgain)
{
    makeShow();
    CurrentSettings().ShowFilenames = true; // a line drawn over every frame
    for (bool bouncing : {false, true}) {
        SCOPED_TRACE(bouncing ? "bouncing description" : "standing description");
        DescriptionLook look = DefaultDescriptionLook();
        look.location = bouncing ? kDescBouncing : DefaultDescriptionLook().location;
        SetDefaultDescriptionLook(look);
        ShowFrames frames(kSize, kFps, 7);
        QImage before;
        qint64 beforeKey = 0;
        int kept = 0;
        int changed = 0;
        frames.walk([&](const QImage& frame, qint64 number) {
            if (number > 0 && frame.cacheKey() == beforeKey) {
                ++kept;
                EXPECT_EQ(frame, before) << "frame " << number;
            } else if (number > 0 && frame != before) {
                ++changed;
            }
            before = frame.copy();
            beforeKey = frame.cacheKey();
            return true;
        });
        // Slides stand most of the time; a bouncing description moves on every tick of its
        // slide and still the other slides' frames repeat.
        EXPECT_GT(kept, 0);
        EXPECT_GT(changed, 0);
        if (bouncing)
            EXPECT_LT(kept, frames.frameCount() * 3 / 4);
        else
            EXPECT_GT(kept, frames.frameCount() / 2);
    }
}

// An animated picture moves in the video as the player animates it: each picture for its
// delay, round again as the file says, or still when animation is off.
TEST_F(ShowFramesTest, AnAnimatedPictureMovesForItsDelaysAndLoops)
{
    const QList<QRgb> colours = {qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255)};
    const QString forEver =
        writeFile(QStringLiteral("round.gif"), ColourGif(colours, {50, 50, 50}, 0));
    const QString once = writeFile(QStringLiteral("once.gif"), ColourGif(colours, {50, 50, 50}, -1));
    CurrentSettings().EnableTransitions = false;
    CurrentSettings().SlideInterval = 3;
    const auto centreColours = [&](const QString& gif, bool animate) {
        ResetShow();
        Slide slide = NewSlide(gif);
        slide.SlideEnlarge = 1;
        CurrentShow().slides.append(slide);
        CurrentSettings().AnimateGIF89 = animate;
        ShowFrames frames(kSize, kFps, 1);
        const QVector<QImage> video = walkAll(frames);
        EXPECT_EQ(frames.spans().size(), 1);
        QList<QRgb> seen;
        if (frames.spans().isEmpty())
            return seen;
        const SlideSpan& span = frames.spans().front();
        for (const qint64 at : {250000, 750000, 1250000, 1750000, 2750000}) {
            const QImage& frame = video.at(int(frameAt(span.start + span.transition + at)));
            seen << (frame.pixel(kSize.width() / 2, kSize.height() / 2) & 0xFFFFFF);
        }
        return seen;
    };
    const QRgb red = 0xFF0000, green = 0x00FF00, blue = 0x0000FF;
    EXPECT_EQ(centreColours(forEver, true), QList<QRgb>({red, green, blue, red, blue}));
    EXPECT_EQ(centreColours(once, true), QList<QRgb>({red, green, blue, blue, blue}));
    EXPECT_EQ(centreColours(forEver, false), QList<QRgb>({red, red, red, red, red}));
}
