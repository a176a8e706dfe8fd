#include "FakeMedia.h"

#include "playback/media/MciCommand.h"
#include "playback/media/MediaWindows.h"
#include "playback/media/ShowMedia.h"

#include "platform/AppPaths.h"
#include "platform/StartupState.h"
#include "runtime/MsgBox.h"
#include "runtime/Random.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"

#include "support/KavoriTest.h"

#include <QTimer>
#include <QWidget>

namespace kavori::test {

namespace {

class ShowMediaTest : public KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetStartup();
        ResetShow();
        CurrentStartup().WaveDevices = true;
        CurrentStartup().MidiDevices = true;
        media = std::make_unique<FakeMedia>();
        owner = std::make_unique<QWidget>();
        owner->resize(1024, 768);
        picMovie = new QWidget(owner.get());
        picMovie->setObjectName(QStringLiteral("picMovie"));
        picMovie->hide();
        show = std::make_unique<ShowMedia>(owner.get(), picMovie);
    }
    void TearDown() override
    {
        show.reset();
        owner.reset();
        media.reset();
        ResetSettings();
        ResetStartup();
        ResetShow();
        KavoriTest::TearDown();
    }

    QTimer* timer(const char* name) const
    {
        return owner->findChild<QTimer*>(QString::fromLatin1(name));
    }
    QString soundBoxHandle() const
    {
        return QString::number(
            MediaWindowHandle(owner->findChild<QWidget*>(QStringLiteral("picSound"))));
    }
    static QString quoted(const QString& file)
    {
        return QStringLiteral("\"") + file + QStringLiteral("\"");
    }
    QStringList takeLog() const
    {
        const QStringList log = MciCommandLog();
        ClearMciCommandLog();
        return log;
    }
    QString blankWave() const { return PathNoCase(AppPath(), QStringLiteral("BLANK.WAV")); }

    std::unique_ptr<FakeMedia> media;
    std::unique_ptr<QWidget> owner;
    QWidget* picMovie = nullptr;
    std::unique_ptr<ShowMedia> show;
};

TEST_F(ShowMediaTest, TimersBelongToThePlayerWindow)
{
    for (const char* name : {"TimerLoopSound", "TimerLoopMovie", "TimerPlayList"}) {
        QTimer* t = timer(name);
        ASSERT_NE(t, nullptr) << name;
        EXPECT_FALSE(t->isActive()) << name;
        EXPECT_GT(t->interval(), 0) << name;
    }
}

TEST_F(ShowMediaTest, EachSoundKindGoesThroughItsOwnCommands)
{
    const QString mp3 = writeFile(QStringLiteral("music/Song One.mp3"), "ID3");
    const QString au = writeFile(QStringLiteral("music/bell.au"), ".snd");
    const QString aiff = writeFile(QStringLiteral("music/horn.AIFF"), "FORM");
    const QString midi = writeFile(QStringLiteral("music/tune.Mid"), MakeMidi());
    const QString wave = writeFile(QStringLiteral("music/chime.wav"), MakeWave(300));

    for (const QString& file : {mp3, au, aiff}) {
        ASSERT_TRUE(show->PlayThisSoundFile(file));
        EXPECT_EQ(show->soundPlaying(), SoundKind::MciAudio);
        EXPECT_EQ(takeLog(), QStringList({
                                 "open " + quoted(file) + " type MPEGVideo alias MPEGAudio",
                                 "set MPEGAudio time format frames",
                                 "window MPEGAudio handle " + soundBoxHandle(),
                                 "play MPEGAudio from 0",
                             }));
        show->StopPlayingSound();
        EXPECT_EQ(takeLog(), QStringList({"stop MPEGAudio", "close MPEGAudio"}));
        EXPECT_TRUE(media->last(MciDeviceType::MPEGVideo)->closed);
    }
    EXPECT_FALSE(timer("TimerLoopSound")->isActive());

    ASSERT_TRUE(show->PlayThisSoundFile(midi));
    EXPECT_EQ(takeLog(), QStringList({"open " + quoted(midi) + " type sequencer alias MIDIFile",
                                      "play MIDIFile"}));
    // A new sound stops the one before it.
    ASSERT_TRUE(show->PlayThisSoundFile(wave));
    EXPECT_EQ(takeLog(), QStringList({"stop MIDIFile", "close MIDIFile"}));
    ASSERT_EQ(WaveSoundLog().size(), 1);
    EXPECT_EQ(WaveSoundLog()[0].file, wave);
    EXPECT_EQ(WaveSoundLog()[0].flags, 0x03u);

    // Unknown kinds play nothing.
    EXPECT_FALSE(show->PlayThisSoundFile(writeFile(QStringLiteral("notes.txt"), "x")));
    EXPECT_FALSE(show->PlayThisSoundFile(QString()));
}

TEST_F(ShowMediaTest, WithoutADeviceSoundsOfThatKindAreNotStarted)
{
    const QString mp3 = writeFile(QStringLiteral("a.mp3"), "ID3");
    const QString midi = writeFile(QStringLiteral("a.mid"), MakeMidi());
    const QString wave = writeFile(QStringLiteral("a.wav"), MakeWave(100));

    CurrentStartup().WaveDevices = false;
    EXPECT_FALSE(show->PlayThisSoundFile(wave));
    EXPECT_FALSE(show->PlayThisSoundFile(mp3));
    EXPECT_TRUE(show->PlayThisSoundFile(midi));
    takeLog();

    CurrentStartup().WaveDevices = true;
    CurrentStartup().MidiDevices = false;
    // With no MIDI device the sequencer is not even asked to stop.
    show->StopPlayingSound();
    EXPECT_TRUE(takeLog().isEmpty());
    EXPECT_FALSE(show->PlayThisSoundFile(midi));
    EXPECT_TRUE(show->PlayThisSoundFile(mp3));
    EXPECT_TRUE(show->PlayThisSoundFile(wave));
    EXPECT_TRUE(prompts().calls.isEmpty());
}

TEST_F(ShowMediaTest, ALoopingWaveIsStoppedByTheBlankSound)
{
    ASSERT_TRUE(EnsureAppHome());
    CurrentSettings().SoundLoop = true;
    const QString wave = writeFile(QStringLiteral("loop.WAV"), MakeWave(300));
    ASSERT_TRUE(show->PlayThisSoundFile(wave));
    EXPECT_TRUE(media->wavePlaying);
    EXPECT_TRUE(media->waveLoops);
    // The wave loops by itself; no polling.
    EXPECT_FALSE(timer("TimerLoopSound")->isActive());

    show->StopPlayingSound();
    const QVector<WaveCall> log = WaveSoundLog();
    ASSERT_EQ(log.size(), 2);
    EXPECT_EQ(log[0].flags, 0x0Bu);
    EXPECT_EQ(log[1].file, blankWave());
    EXPECT_EQ(log[1].flags, 0x02u);
    // The program's own silent file is a wave the channel plays.
    EXPECT_EQ(media->waveFile, blankWave());
    EXPECT_FALSE(media->wavePlaying);
    EXPECT_EQ(show->soundPlaying(), SoundKind::None);
    EXPECT_TRUE(MciCommandLog().isEmpty());
}

TEST_F(ShowMediaTest, LoopingSoundsArePolledAndStartedAgainWhenStopped)
{
    CurrentSettings().SoundLoop = true;
    const QString midi = writeFile(QStringLiteral("a.rmi"), MakeMidi());
    ASSERT_TRUE(show->PlayThisSoundFile(midi));
    EXPECT_TRUE(timer("TimerLoopSound")->isActive());
    takeLog();

    show->onLoopSound();
    EXPECT_EQ(takeLog(), QStringList({"status MIDIFile mode"}));
    media->last(MciDeviceType::Sequencer)->mode = MciMode::Stopped;
    show->onLoopSound();
    EXPECT_EQ(takeLog(), QStringList({"status MIDIFile mode", "play MIDIFile from 0"}));
    EXPECT_EQ(media->last(MciDeviceType::Sequencer)->plays, 2);

    const QString mp3 = writeFile(QStringLiteral("b.snd"), ".snd");
    ASSERT_TRUE(show->PlayThisSoundFile(mp3));
    takeLog();
    media->last(MciDeviceType::MPEGVideo)->mode = MciMode::Stopped;
    show->onLoopSound();
    EXPECT_EQ(takeLog(), QStringList({"status MPEGAudio mode", "play MPEGAudio from 0"}));

    // A replay that fails is told once and the polling ends.
    media->last(MciDeviceType::MPEGVideo)->mode = MciMode::Stopped;
    media->playResult[MciDeviceType::MPEGVideo] = MCIERR_HARDWARE;
    show->onLoopSound();
    EXPECT_FALSE(timer("TimerLoopSound")->isActive());
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.startsWith(
        QStringLiteral("Unable to play the following audio file:\r\n\r\n") + mp3 +
        QStringLiteral("...")));

    // Without SoundLoop nothing is polled.
    CurrentSettings().SoundLoop = false;
    media->playResult.clear();
    ASSERT_TRUE(show->PlayThisSoundFile(midi));
    EXPECT_FALSE(timer("TimerLoopSound")->isActive());
}

TEST_F(ShowMediaTest, CdTracksPlayTheWholeDiscOrExactlyOneTrack)
{
    CurrentSettings().CdRomDriveLetter = QStringLiteral("E:");
    ASSERT_TRUE(show->PlayThisCDTrack(0));
    EXPECT_EQ(takeLog(), QStringList({"open E: type cdaudio alias CDTrack",
                                      "set CDTrack time format tmsf", "play CDTrack from 1"}));
    EXPECT_EQ(media->last(MciDeviceType::CdAudio)->element, QStringLiteral("E:"));
    EXPECT_FALSE(timer("TimerLoopSound")->isActive());
    EXPECT_EQ(show->cdTrackPlaying(), QStringLiteral("1"));
    takeLog();

    CurrentSettings().SoundLoop = true;
    ASSERT_TRUE(show->PlayThisCDTrack(5));
    EXPECT_EQ(takeLog(),
              QStringList({"stop CDTrack", "close CDTrack", "open E: type cdaudio alias CDTrack",
                           "set CDTrack time format tmsf", "play CDTrack from 5 to 6"}));
    EXPECT_TRUE(timer("TimerLoopSound")->isActive());

    show->onLoopSound();
    EXPECT_EQ(takeLog(), QStringList({"status CDTrack mode"}));
    media->last(MciDeviceType::CdAudio)->mode = MciMode::Stopped;
    show->onLoopSound();
    EXPECT_EQ(takeLog(), QStringList({"status CDTrack mode", "play CDTrack from 5 to 6"}));

    show->StopPlayingCD();
    EXPECT_EQ(takeLog(), QStringList({"stop CDTrack", "close CDTrack"}));
    EXPECT_FALSE(timer("TimerLoopSound")->isActive());
    EXPECT_FALSE(show->cdFailed());
    EXPECT_TRUE(prompts().calls.isEmpty());
}

TEST_F(ShowMediaTest, FailuresAreToldWithTheErrorTextAndCode)
{
    int cursorRequests = 0;
    QObject::connect(show.get(), &ShowMedia::cursorNeeded, [&] { ++cursorRequests; });
    const QString error275 =
        mciGetErrorString(MCIERR_FILE_NOT_FOUND) + QStringLiteral("\r\n\r\nError code = 275");

    const QString movie = root() + QStringLiteral("gone.mpg");
    EXPECT_FALSE(show->PlayMovie(movie, {QSize(800, 600)}));
    const QString audio = root() + QStringLiteral("gone.mp3");
    EXPECT_FALSE(show->PlayThisSoundFile(audio));
    EXPECT_FALSE(show->PlayThisSoundFile(root() + QStringLiteral("gone.mid")));

    // A device that fails after opening is closed again.
    media->playResult[MciDeviceType::CdAudio] = MCIERR_HARDWARE;
    EXPECT_FALSE(show->PlayThisCDTrack(2));
    EXPECT_TRUE(show->cdFailed());
    EXPECT_TRUE(media->last(MciDeviceType::CdAudio)->closed);

    ASSERT_EQ(prompts().calls.size(), 4);
    const auto& calls = prompts().calls;
    EXPECT_EQ(calls[0].text, QStringLiteral("Unable to play the following movie file:\r\n\r\n") +
                                 movie + QStringLiteral("...\r\n\r\n") + error275);
    EXPECT_EQ(calls[0].style, int(vbExclamation));
    EXPECT_EQ(calls[1].text, QStringLiteral("Unable to play the following audio file:\r\n\r\n") +
                                 audio + QStringLiteral("...\r\n\r\n") + error275);
    EXPECT_EQ(calls[2].text, QStringLiteral("Unable to play MIDI file.\r\n\r\n") + error275);
    EXPECT_EQ(calls[3].text, QStringLiteral("Unable to play CD Audio.\r\n\r\n") +
                                 mciGetErrorString(MCIERR_HARDWARE) +
                                 QStringLiteral("\r\n\r\nError code = 262..."));
    for (const auto& call : calls)
        EXPECT_EQ(call.title, QStringLiteral("Kavori"));

    // A show's CD that failed is not tried again each time the show comes round.
    CurrentSettings().SoundMode = 2;
    CurrentSettings().DontRestartSound = false;
    show->startShowSound();
    EXPECT_EQ(prompts().calls.size(), 5);
    EXPECT_EQ(cursorRequests, 5);
    const int opened = int(media->devices.size());
    show->slideSound(NewSlide(QStringLiteral("a.jpg")), true);
    show->slideSound(NewSlide(QStringLiteral("a.jpg")), true);
    EXPECT_EQ(int(media->devices.size()), opened);
    EXPECT_EQ(prompts().calls.size(), 5);
    EXPECT_FALSE(picMovie->isVisibleTo(owner.get()));
    EXPECT_FALSE(show->movieOpen());
    EXPECT_EQ(show->soundPlaying(), SoundKind::None);
}

TEST_F(ShowMediaTest, AMovieIsOpenedPlacedPlayedAndRepeated)
{
    // Lower case ".avi" is still AVIVideo.
    const QString avi = writeFile(QStringLiteral("clip.avi"), "RIFF");
    media->movieSize = QSize(320, 241);
    MoviePlacement placement;
    placement.screen = QSize(1025, 769);
    ASSERT_TRUE(show->PlayMovie(avi, placement));
    const QString handle = QString::number(MediaWindowHandle(picMovie));
    EXPECT_EQ(takeLog(), QStringList({
                             "open " + quoted(avi) + " type AVIVideo alias Movie",
                             "set Movie time format frames",
                             "window Movie handle " + handle,
                             "put Movie source",
                             "where Movie source",
                             "put Movie destination",
                             "realize Movie normal",
                             "play Movie from 0",
                         }));
    EXPECT_EQ(media->last(MciDeviceType::AVIVideo)->window, picMovie);
    EXPECT_EQ(picMovie->geometry(), QRect(352, 264, 320, 241));
    EXPECT_TRUE(picMovie->isVisibleTo(owner.get()));
    EXPECT_TRUE(timer("TimerLoopMovie")->isActive());

    show->onLoopMovie();
    EXPECT_EQ(takeLog(), QStringList({"status Movie mode"}));
    media->last(MciDeviceType::AVIVideo)->mode = MciMode::Stopped;
    show->onLoopMovie();
    EXPECT_EQ(takeLog(), QStringList({"status Movie mode", "play Movie from 0"}));

    // The next movie slide closes this one first; other kinds open as MPEGVideo.
    const QString mov = writeFile(QStringLiteral("clip.Mov"), "moov");
    placement.SlideLocation = 1;
    ASSERT_TRUE(show->PlayMovie(mov, placement));
    const QStringList log = takeLog();
    ASSERT_GE(log.size(), 3);
    EXPECT_EQ(log[0], QStringLiteral("stop Movie"));
    EXPECT_EQ(log[1], QStringLiteral("close Movie"));
    EXPECT_EQ(log[2], QStringLiteral("open ") + quoted(mov) +
                          QStringLiteral(" type MPEGVideo alias Movie"));
    EXPECT_EQ(picMovie->geometry(), QRect(0, 0, 320, 241));

    show->StopMovie();
    EXPECT_EQ(takeLog(), QStringList({"stop Movie", "close Movie"}));
    EXPECT_FALSE(picMovie->isVisibleTo(owner.get()));
    EXPECT_FALSE(timer("TimerLoopMovie")->isActive());
    show->StopMovie();
    EXPECT_TRUE(takeLog().isEmpty());
}

TEST_F(ShowMediaTest, ThePlayListAdvancesInOrderOrAtRandom)
{
    Settings& s = CurrentSettings();
    s.SoundMode = 1;
    s.UsePlayList = true;
    s.SoundLoop = true; // entries of a list never loop on their own
    const QString a = writeFile(QStringLiteral("list/a.mp3"), "ID3");
    const QString b = writeFile(QStringLiteral("list/b.mid"), MakeMidi());
    const QString c = writeFile(QStringLiteral("list/c.wav"), MakeWave(200));
    CurrentShow().PlayList = {a, b, c};
    media->holdWaves = true;

    show->startShowSound();
    EXPECT_TRUE(timer("TimerPlayList")->isActive());
    EXPECT_FALSE(timer("TimerLoopSound")->isActive());
    EXPECT_EQ(show->playListIndex(), 0);
    EXPECT_EQ(media->last(MciDeviceType::MPEGVideo)->element, a);
    takeLog();

    show->onPlayList();
    EXPECT_EQ(takeLog(), QStringList({"status MPEGAudio mode"}));
    media->last(MciDeviceType::MPEGVideo)->mode = MciMode::Stopped;
    show->onPlayList();
    EXPECT_EQ(show->playListIndex(), 1);
    EXPECT_EQ(takeLog(), QStringList({"status MPEGAudio mode", "stop MPEGAudio", "close MPEGAudio",
                                      "open " + quoted(b) + " type sequencer alias MIDIFile",
                                      "play MIDIFile"}));

    media->last(MciDeviceType::Sequencer)->mode = MciMode::Stopped;
    show->onPlayList();
    EXPECT_EQ(show->playListIndex(), 2);
    ASSERT_FALSE(WaveSoundLog().isEmpty());
    EXPECT_EQ(WaveSoundLog().last().file, c);
    EXPECT_EQ(WaveSoundLog().last().flags, 0x03u);
    show->onPlayList();
    EXPECT_EQ(show->playListIndex(), 2);
    // The wave has ended: the list starts over.
    media->wavePlaying = false;
    show->onPlayList();
    EXPECT_EQ(show->playListIndex(), 0);

    // At random: Int(3 * r) picks each next entry.
    show->stopAll();
    s.PlayListRandom = true;
    ScriptRandom({0.7, 0.1, 0.4, 0.9});
    show->startShowSound();
    EXPECT_EQ(show->playListIndex(), 2);
    media->wavePlaying = false;
    show->onPlayList();
    EXPECT_EQ(show->playListIndex(), 0);
    media->last(MciDeviceType::MPEGVideo)->mode = MciMode::Stopped;
    show->onPlayList();
    EXPECT_EQ(show->playListIndex(), 1);
    // A device that no longer answers counts as ended.
    mciSendString(QStringLiteral("close MIDIFile"));
    show->onPlayList();
    EXPECT_EQ(show->playListIndex(), 2);
    EXPECT_TRUE(prompts().calls.isEmpty());
}

TEST_F(ShowMediaTest, APlayListEntryThatFailsIsToldOnceAndLeftOut)
{
    Settings& s = CurrentSettings();
    s.SoundMode = 1;
    s.UsePlayList = true;
    const QString missing = root() + QStringLiteral("missing.mp3");
    const QString good = writeFile(QStringLiteral("good.mid"), MakeMidi());
    CurrentShow().PlayList = {missing, good};

    show->startShowSound();
    EXPECT_EQ(show->playListIndex(), 1);
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.startsWith(
        QStringLiteral("Unable to play the following audio file:")));
    for (int round = 0; round < 3; ++round) {
        media->last(MciDeviceType::Sequencer)->mode = MciMode::Stopped;
        show->onPlayList();
        EXPECT_EQ(show->playListIndex(), 1);
    }
    EXPECT_EQ(prompts().calls.size(), 1);

    // Nothing playable at all: the list ends quietly after its messages.
    show->stopAll();
    CurrentShow().PlayList = {missing, root() + QStringLiteral("x.txt")};
    prompts().clear();
    show->startShowSound();
    EXPECT_FALSE(show->playListOn());
    EXPECT_FALSE(timer("TimerPlayList")->isActive());
    EXPECT_EQ(prompts().calls.size(), 1);
}

TEST_F(ShowMediaTest, SoundModesDecideWhatPlaysAtTheStartAndOnEachSlide)
{
    Settings& s = CurrentSettings();
    const QString song = writeFile(QStringLiteral("song.mp3"), "ID3");
    const QString bell = writeFile(QStringLiteral("bell.wav"), MakeWave(100));
    Slide withSound = NewSlide(QStringLiteral("a.jpg"));
    withSound.SlideSound = bell;
    const Slide silent = NewSlide(QStringLiteral("b.jpg"));

    // 0: nothing at all.
    s.SoundMode = 0;
    s.SoundFile = song;
    show->startShowSound();
    show->slideSound(withSound, false);
    EXPECT_TRUE(MciCommandLog().isEmpty());
    EXPECT_TRUE(WaveSoundLog().isEmpty());

    // 1: the show's sound at the start; slides leave it alone; the loop round restarts it
    // unless DontRestartSound.
    s.SoundMode = 1;
    show->startShowSound();
    EXPECT_EQ(media->last(MciDeviceType::MPEGVideo)->element, song);
    takeLog();
    show->slideSound(withSound, false);
    s.DontRestartSound = true;
    show->slideSound(withSound, true);
    EXPECT_TRUE(takeLog().isEmpty());
    s.DontRestartSound = false;
    show->slideSound(silent, true);
    const QStringList restart = takeLog();
    ASSERT_EQ(restart.size(), 6);
    EXPECT_EQ(restart[0], QStringLiteral("stop MPEGAudio"));
    EXPECT_EQ(restart[1], QStringLiteral("close MPEGAudio"));
    EXPECT_EQ(restart[5], QStringLiteral("play MPEGAudio from 0"));
    EXPECT_TRUE(WaveSoundLog().isEmpty());

    // 2: the CD track.
    show->stopAll();
    takeLog();
    s.SoundMode = 2;
    s.CDTrack = 3;
    show->startShowSound();
    EXPECT_EQ(takeLog().last(), QStringLiteral("play CDTrack from 3 to 4"));

    // 3: each slide's own sound; a slide without one lets it play on.
    show->stopAll();
    takeLog();
    s.SoundMode = 3;
    show->startShowSound();
    EXPECT_TRUE(takeLog().isEmpty());
    show->slideSound(withSound, false);
    ASSERT_EQ(WaveSoundLog().size(), 1);
    EXPECT_EQ(WaveSoundLog()[0].file, bell);
    show->slideSound(silent, false);
    EXPECT_EQ(WaveSoundLog().size(), 1);
    // A slide's CD track plays that track alone; the next slide's file stops the CD.
    Slide withTrack = NewSlide(QStringLiteral("c.jpg"));
    withTrack.SlideSound = QStringLiteral("5");
    takeLog();
    show->slideSound(withTrack, false);
    EXPECT_EQ(takeLog().last(), QStringLiteral("play CDTrack from 5 to 6"));
    show->slideSound(withSound, false);
    EXPECT_EQ(takeLog(), QStringList({"stop CDTrack", "close CDTrack"}));
    EXPECT_FALSE(show->cdPlaying());
    EXPECT_EQ(WaveSoundLog().last().file, bell);

    // 3 with a play list: the list goes on instead, and is not started over by each slide.
    s.UsePlayList = true;
    CurrentShow().PlayList = {song};
    show->slideSound(withSound, false);
    EXPECT_TRUE(show->playListOn());
    const int opened = int(media->devices.size());
    show->slideSound(withSound, false);
    show->slideSound(withSound, true);
    EXPECT_EQ(int(media->devices.size()), opened);

    show->stopAll();
    EXPECT_FALSE(show->playListOn());
    EXPECT_EQ(show->soundPlaying(), SoundKind::None);
    EXPECT_FALSE(timer("TimerPlayList")->isActive());
}

TEST_F(ShowMediaTest, PausingTheShowHoldsItsSoundWhenMakePauseSndIsOn)
{
    const QString song = writeFile(QStringLiteral("song.aif"), "FORM");
    ASSERT_TRUE(show->PlayThisSoundFile(song));
    takeLog();

    CurrentSettings().MakePauseSnd = false;
    show->pauseSound(true);
    EXPECT_TRUE(takeLog().isEmpty());

    CurrentSettings().MakePauseSnd = true;
    show->pauseSound(true);
    EXPECT_EQ(takeLog(), QStringList({"pause MPEGAudio"}));
    // While paused the polling does not take the pause for an end.
    show->onLoopSound();
    show->onPlayList();
    EXPECT_TRUE(takeLog().isEmpty());
    show->pauseSound(false);
    EXPECT_EQ(takeLog(), QStringList({"play MPEGAudio"}));
    EXPECT_EQ(media->last(MciDeviceType::MPEGVideo)->mode, MciMode::Playing);

    // A wave cannot hold: it is cut off and starts again.
    CurrentSettings().SoundLoop = true;
    const QString wave = writeFile(QStringLiteral("loop.wav"), MakeWave(100));
    ASSERT_TRUE(show->PlayThisSoundFile(wave));
    ClearWaveSoundLog();
    show->pauseSound(true);
    EXPECT_FALSE(media->wavePlaying);
    show->pauseSound(false);
    EXPECT_TRUE(media->wavePlaying);
    const QVector<WaveCall> log = WaveSoundLog();
    ASSERT_EQ(log.size(), 2);
    EXPECT_EQ(log[0].file, blankWave());
    EXPECT_EQ(log[1].file, wave);
    EXPECT_EQ(log[1].flags, 0x0Bu);

    // A wave that had already ended does not come back on resume.
    CurrentSettings().SoundLoop = false;
    ASSERT_TRUE(show->PlayThisSoundFile(wave));
    ASSERT_FALSE(media->wavePlaying);
    ClearWaveSoundLog();
    show->pauseSound(true);
    show->pauseSound(false);
    EXPECT_TRUE(WaveSoundLog().isEmpty());
}

} // namespace

} // namespace kavori::test
