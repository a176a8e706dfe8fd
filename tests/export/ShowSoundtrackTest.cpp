#include "export/ShowSoundtrack.h"
#include "ExportTestFiles.h"
#include "export/ShowFrames.h"
#include "platform/SoundDevices.h"
#include "playback/media/FakeMedia.h"
#include "settings/Settings.h"
#include "support/PhotoLike.h"
#include "support/ShowTest.h"

#include <cmath>

using namespace kavori;
using namespace kavori::test;

namespace {

double Loudness(const QVector<qint16>& samples, qint64 from, qint64 to)
{
    double sum = 0;
    to = std::min<qint64>(to, samples.size() / 2);
    for (qint64 f = from; f < to; ++f)
        sum += double(samples[f * 2]) * samples[f * 2];
    return to > from ? std::sqrt(sum / double(to - from)) : 0;
}

} // namespace

class ShowSoundtrackTest : public ShowTest {};

TEST_F(ShowSoundtrackTest, SoundsAreReadAtTheExportRate)
{
    const QString wave = writeFile(QStringLiteral("tone.wav"), MakeWave(500, 22050, 440));
    QVector<qint16> samples;
    ASSERT_TRUE(ReadSoundSamples(wave, samples));
    // 22,050 Hz mono becomes 48,000 Hz stereo: half a second is 24,000 frames.
    EXPECT_NEAR(samples.size() / 2, 24000, 100);
    EXPECT_GT(Loudness(samples, 0, 24000), 5000);
    EXPECT_EQ(samples[1000], samples[1001]); // both channels
    ASSERT_TRUE(ReadSoundSamples(wave, samples, 4800));
    EXPECT_EQ(samples.size(), 4800 * 2);

    // Missing, damaged and empty files are no sound, not a failure of the program.
    EXPECT_FALSE(ReadSoundSamples(root() + QStringLiteral("gone.wav"), samples));
    EXPECT_TRUE(samples.isEmpty());
    EXPECT_FALSE(ReadSoundSamples(writeFile(QStringLiteral("bad.mp3"), "garbage"), samples));
    EXPECT_FALSE(ReadSoundSamples(writeFile(QStringLiteral("bad.mid"), "MThd"), samples));

    if (SoundFontPath().isEmpty())
        GTEST_SKIP() << "no SoundFont";
    // The note of the MIDI file sounds for half a second, made faster than real time.
    ASSERT_TRUE(ReadSoundSamples(writeFile(QStringLiteral("note.mid"), MakeMidi()), samples));
    EXPECT_GE(samples.size() / 2, 24000 - 1024);
    EXPECT_GT(Loudness(samples, 2400, 21600), 100);
}

TEST_F(ShowSoundtrackTest, EachSoundPlaysFromItsCueUntilTheNext)
{
    const QString a = writeFile(QStringLiteral("a.wav"), MakeWave(500, 48000, 300));
    const QString b = writeFile(QStringLiteral("b.wav"), MakeWave(300, 48000, 600));
    const QString gone = root() + QStringLiteral("gone.wav");
    // a at 0 s, a missing sound at 1 s (silence: the one before is cut off all the same), b
    // looping from 1.5 s to the end at 3 s.
    ShowSoundtrack track(
        {{0, a, false, false}, {1000000, gone, false, false}, {1500000, b, false, true}}, 3000000,
        1);
    track.prepare();
    EXPECT_EQ(track.failures(), QStringList{gone});
    EXPECT_EQ(track.frames(), 144000);
    QVector<qint16> all(144000 * 2);
    track.render(0, 144000, all.data());
    EXPECT_GT(Loudness(all, 0, 24000), 5000);      // a
    EXPECT_EQ(Loudness(all, 24000, 72000), 0);     // a has ended; then the missing sound
    EXPECT_GT(Loudness(all, 72000, 144000), 5000); // b, round and round
    EXPECT_EQ(all[(72000 + 14400 + 100) * 2], all[(72000 + 100) * 2]);

    // Pieces rendered one frame's worth at a time are the same as all at once.
    QVector<qint16> piece(4800 * 2);
    for (qint64 from = 0; from < 144000; from += 4800) {
        track.render(from, 4800, piece.data());
        ASSERT_TRUE(std::equal(piece.begin(), piece.end(), all.begin() + from * 2)) << from;
    }

    // A movie's sound adds to what plays.
    track.mixIn(96000, QVector<qint16>(4800 * 2, 1000));
    track.render(96000 - 10, 20, piece.data());
    EXPECT_EQ(piece[(10 + 2) * 2] - all[(96000 + 2) * 2], 1000);
}

TEST_F(ShowSoundtrackTest, ThePlayListGoesRoundAndLeavesOutWhatCannotPlay)
{
    const QString one = writeFile(QStringLiteral("one.wav"), MakeWave(400, 48000, 300));
    const QString two = writeFile(QStringLiteral("two.wav"), MakeWave(300, 48000, 900));
    CurrentShow().PlayList = {one, root() + QStringLiteral("gone.mp3"), two};
    ShowSoundtrack track({{0, QString(), true, false}}, 1500000, 1);
    track.prepare();
    QStringList order;
    for (const ShowSoundtrack::Piece& piece : track.pieces())
        order << QFileInfo(piece.file).fileName();
    EXPECT_EQ(order, (QStringList{QStringLiteral("one.wav"), QStringLiteral("two.wav"),
                                  QStringLiteral("one.wav"), QStringLiteral("two.wav"),
                                  QStringLiteral("one.wav")}));
    EXPECT_EQ(track.pieces().last().end, 72000);
    EXPECT_EQ(track.failures().size(), 1);

    // Shows: the walk puts the cues where the player starts sounds.
    for (int i = 0; i < 3; ++i) {
        const QString path = root() + QStringLiteral("p%1.bmp").arg(i);
        ASSERT_TRUE(PhotoLike(32, 18, i).save(path, "BMP"));
        CurrentShow().slides.append(NewSlide(path));
    }
    CurrentShow().slides[0].SlideSound = one;
    CurrentShow().slides[2].SlideSound = two;
    CurrentShow().slides[1].SlideSound = QStringLiteral("3"); // a CD track: not in a file
    Settings& s = CurrentSettings();
    s.SlideInterval = 1;
    s.SoundMode = 3;
    ShowFrames frames(QSize(32, 18), 10, 1);
    frames.walk({});
    ASSERT_EQ(frames.sounds().size(), 2);
    EXPECT_EQ(frames.sounds()[0].start, 0);
    EXPECT_EQ(frames.sounds()[1].start, 2000000);
    EXPECT_EQ(frames.sounds()[1].file, two);
    // With the play list in use it starts with the first slide and goes on.
    s.UsePlayList = true;
    frames.walk({});
    ASSERT_EQ(frames.sounds().size(), 1);
    EXPECT_TRUE(frames.sounds()[0].playList);
    // The show's own sound starts with it, looping as the settings say.
    s.UsePlayList = false;
    s.SoundMode = 1;
    s.SoundFile = one;
    s.SoundLoop = true;
    frames.walk({});
    ASSERT_EQ(frames.sounds().size(), 1);
    EXPECT_TRUE(frames.sounds()[0].loop);
    EXPECT_EQ(frames.sounds()[0].file, one);
}
