#include "FakeMedia.h"

#include "playback/media/WaveChannel.h"

#include "support/KavoriTest.h"

namespace kavori::test {

namespace {

using WaveChannelTest = KavoriTest;

TEST_F(WaveChannelTest, OneChannelWhereEachSoundCutsOffTheLast)
{
    FakeMedia media;
    const QString loop = writeFile(QStringLiteral("Loop.wav"), MakeWave(400));
    const QString blank = writeFile(QStringLiteral("BLANK.WAV"), MakeWave(50));

    EXPECT_TRUE(PlayWaveSound(loop, SndAsync | SndNoDefault | SndLoop));
    EXPECT_TRUE(IsWavePlaying());
    EXPECT_TRUE(media.waveLoops);

    // The silent sound, played synchronously, takes the channel and ends: nothing plays on.
    EXPECT_TRUE(PlayWaveSound(blank, SndNoDefault));
    EXPECT_EQ(media.waveFile, blank);
    EXPECT_FALSE(media.waveLoops);
    EXPECT_FALSE(IsWavePlaying());

    // A file that cannot be played still stops the sound before it.
    ASSERT_TRUE(PlayWaveSound(loop, SndAsync | SndLoop));
    EXPECT_FALSE(PlayWaveSound(root() + QStringLiteral("missing.wav"), SndAsync | SndNoDefault));
    EXPECT_FALSE(IsWavePlaying());
    ASSERT_TRUE(PlayWaveSound(loop, SndAsync | SndLoop));
    EXPECT_TRUE(PlayWaveSound(QString(), SndAsync));
    EXPECT_FALSE(IsWavePlaying());

    // Damaged files, and a loop that would never return.
    const QString noData = writeFile(QStringLiteral("nodata.wav"), MakeWave(100).left(36));
    const QString text = writeFile(QStringLiteral("text.wav"), "RIFF but nothing more");
    EXPECT_FALSE(PlayWaveSound(noData, SndAsync | SndNoDefault));
    EXPECT_FALSE(PlayWaveSound(text, SndAsync | SndNoDefault));
    EXPECT_FALSE(PlayWaveSound(loop, SndLoop | SndNoDefault));

    const QVector<WaveCall> log = WaveSoundLog();
    ASSERT_EQ(log.size(), 9);
    EXPECT_EQ(log[0].file, loop);
    EXPECT_EQ(log[0].flags, 0x0Bu);
    EXPECT_EQ(log[1].file, blank);
    EXPECT_EQ(log[1].flags, 0x02u);
    ClearWaveSoundLog();
    EXPECT_TRUE(WaveSoundLog().isEmpty());
}

TEST_F(WaveChannelTest, ReadsThePlayingTimeFromTheHeader)
{
    EXPECT_EQ(WaveDuration(writeFile(QStringLiteral("a.wav"), MakeWave(500))), 500);
    EXPECT_EQ(WaveDuration(writeFile(QStringLiteral("b.wav"), MakeWave(0))), 0);
    // A chunk before the format, as some editors write.
    QByteArray withList = MakeWave(250);
    withList.insert(12, QByteArray("LIST\x03\x00\x00\x00"
                                   "abc\x00",
                                   12));
    EXPECT_EQ(WaveDuration(writeFile(QStringLiteral("c.wav"), withList)), 250);
    EXPECT_FALSE(WaveDuration(writeFile(QStringLiteral("d.wav"), "RIFF\0\0\0\0AVI ")));
    EXPECT_FALSE(WaveDuration(root() + QStringLiteral("none.wav")));
}

} // namespace

} // namespace kavori::test
