#include "ShowMedia.h"

#include "CdAudioDevice.h"
#include "MciCommand.h"
#include "MediaWindows.h"
#include "MovieSequence.h"
#include "WaveChannel.h"

#include "platform/AppPaths.h"
#include "platform/StartupState.h"
#include "runtime/DoEvents.h"
#include "runtime/MsgBox.h"
#include "runtime/Random.h"
#include "settings/Settings.h"
#include "slideshow/ShowSounds.h"
#include "slideshow/SlideShow.h"

#include <QTimer>
#include <QWidget>

namespace kavori {

namespace {

// The result text keeps to the 128 characters the error buffer holds.
constexpr int kErrorTextLength = 127;

QString Quoted(const QString& file)
{
    return QStringLiteral("\"") + file + QStringLiteral("\"");
}

QTimer* MakeTimer(QWidget* owner, const char* name, int interval)
{
    auto* timer = new QTimer(owner);
    timer->setObjectName(QString::fromLatin1(name));
    timer->setInterval(interval);
    return timer;
}

// 0x0B when the sound repeats, 0x03 otherwise.
unsigned ShowWaveFlags(bool loop)
{
    return SndAsync | SndNoDefault | (loop ? unsigned(SndLoop) : 0u);
}

// The device's mode, empty when it does not answer.
QString ModeOf(const QString& alias)
{
    QString mode;
    mciSendString(QStringLiteral("status ") + alias + QStringLiteral(" mode"), &mode);
    return mode;
}

bool IsStopped(const QString& alias)
{
    return ModeOf(alias) == QLatin1String("stopped");
}

// For the play list a device that no longer answers has ended as well.
bool HasEnded(const QString& alias)
{
    const QString mode = ModeOf(alias);
    return mode.isEmpty() || mode == QLatin1String("stopped");
}

} // namespace

ShowMedia::ShowMedia(QWidget* owner, QWidget* picMovie)
    : m_picMovie(picMovie), m_loopSound(MakeTimer(owner, "TimerLoopSound", kLoopSoundMs)),
      m_loopMovie(MakeTimer(owner, "TimerLoopMovie", kLoopMovieMs)),
      m_playList(MakeTimer(owner, "TimerPlayList", kPlayListMs))
{
    // Audio through the video device asks for a window like a movie does; it gets one no one
    // sees.
    m_soundBox = new QWidget(owner);
    m_soundBox->setObjectName(QStringLiteral("picSound"));
    m_soundBox->hide();
    connect(m_loopSound, &QTimer::timeout, this, &ShowMedia::onLoopSound);
    connect(m_loopMovie, &QTimer::timeout, this, &ShowMedia::onLoopMovie);
    connect(m_playList, &QTimer::timeout, this, &ShowMedia::onPlayList);
}

ShowMedia::~ShowMedia()
{
    stopAll();
}

void ShowMedia::failure(quint32 code, const QString& message, int style, const QString& tail)
{
    const QString error = mciGetErrorString(code).left(kErrorTextLength) + NewLine2() +
                          QStringLiteral("Error code = ") + QString::number(code);
    Q_EMIT cursorNeeded();
    MsgBox(message + NewLine2() + error + tail, style, AppTitle());
}

bool ShowMedia::PlayThisSoundFile(const QString& file)
{
    return startSound(file, CurrentSettings().SoundLoop);
}

bool ShowMedia::startSound(const QString& file, bool loop)
{
    const SoundKind kind = SoundKindOf(file);
    const StartupState& devices = CurrentStartup();
    const bool haveDevice = kind == SoundKind::Midi ? devices.MidiDevices : devices.WaveDevices;
    if (kind == SoundKind::None || !haveDevice)
        return false;
    // The wave channel cuts off its own sound; the other kinds are stopped and closed first.
    if (!(m_sound == SoundKind::Wave && kind == SoundKind::Wave))
        StopPlayingSound();
    if (!m_cdOpen && m_loopSound)
        m_loopSound->stop();
    m_sound = SoundKind::None;

    switch (kind) {
    case SoundKind::Wave:
        // A wave that cannot be played stays silent, as SndNoDefault asks.
        if (!PlayWaveSound(file, ShowWaveFlags(loop)))
            return false;
        break;
    case SoundKind::MciAudio: {
        quint32 rc = mciSendString(QStringLiteral("open ") + Quoted(file) +
                                   QStringLiteral(" type MPEGVideo alias MPEGAudio"));
        const bool opened = rc == 0;
        if (rc == 0)
            rc = mciSendString(QStringLiteral("set MPEGAudio time format frames"));
        if (rc == 0)
            rc = mciSendString(QStringLiteral("window MPEGAudio handle ") +
                               QString::number(MediaWindowHandle(m_soundBox)));
        if (rc == 0)
            rc = mciSendString(QStringLiteral("play MPEGAudio from 0"));
        if (rc != 0) {
            if (opened)
                mciSendString(QStringLiteral("close MPEGAudio"));
            failure(rc,
                    QStringLiteral("Unable to play the following audio file:") + NewLine2() + file +
                        QStringLiteral("..."),
                    vbOKOnly);
            return false;
        }
        break;
    }
    case SoundKind::Midi: {
        quint32 rc = mciSendString(QStringLiteral("open ") + Quoted(file) +
                                   QStringLiteral(" type sequencer alias MIDIFile"));
        if (rc == 0) {
            rc = mciSendString(QStringLiteral("play MIDIFile"));
            if (rc != 0)
                mciSendString(QStringLiteral("close MIDIFile"));
        }
        if (rc != 0) {
            failure(rc, QStringLiteral("Unable to play MIDI file."), vbOKOnly);
            return false;
        }
        break;
    }
    case SoundKind::None:
        return false;
    }
    m_sound = kind;
    m_soundFile = file;
    m_soundLoops = loop;
    if (loop && kind != SoundKind::Wave && m_loopSound)
        m_loopSound->start();
    return true;
}

void ShowMedia::StopPlayingSound()
{
    if (!m_cdOpen && m_loopSound)
        m_loopSound->stop();
    switch (m_sound) {
    case SoundKind::Wave:
        // The silent sound takes the channel: this is what stops a looping wave.
        PlayWaveSound(PathNoCase(AppPath(), QStringLiteral("BLANK.WAV")), SndNoDefault);
        break;
    case SoundKind::MciAudio:
        if (mciSendString(QStringLiteral("stop MPEGAudio")) == 0)
            mciSendString(QStringLiteral("close MPEGAudio"));
        break;
    case SoundKind::Midi:
        if (CurrentStartup().MidiDevices && mciSendString(QStringLiteral("stop MIDIFile")) == 0)
            mciSendString(QStringLiteral("close MIDIFile"));
        break;
    case SoundKind::None:
        break;
    }
    m_sound = SoundKind::None;
}

QString ShowMedia::cdPlayCommand() const
{
    // The stop at the start of the next track makes exactly one track play.
    if (m_cdTrack <= 0)
        return QStringLiteral("play CDTrack from 1");
    return QStringLiteral("play CDTrack from %1 to %2").arg(m_cdTrack).arg(m_cdTrack + 1);
}

void ShowMedia::cdFailure(quint32 code)
{
    m_cdFailed = true;
    failure(code, QStringLiteral("Unable to play CD Audio."), vbOKOnly, QStringLiteral("..."));
}

bool ShowMedia::PlayThisCDTrack(int track)
{
    StopPlayingCD();
    m_cdTrack = track;
    const QString setting = CurrentSettings().CdRomDriveLetter;
    const QString drive = setting.isEmpty() ? FindCdDrive() : setting;
    quint32 rc = mciSendString(QStringLiteral("open ") + drive +
                               QStringLiteral(" type cdaudio alias CDTrack"));
    if (rc != 0) {
        cdFailure(rc);
        return false;
    }
    DoEvents();
    rc = mciSendString(QStringLiteral("set CDTrack time format tmsf"));
    if (rc == 0)
        rc = mciSendString(cdPlayCommand());
    if (rc != 0) {
        mciSendString(QStringLiteral("close CDTrack"));
        cdFailure(rc);
        return false;
    }
    m_cdOpen = true;
    if (CurrentSettings().SoundLoop && m_loopSound)
        m_loopSound->start();
    return true;
}

void ShowMedia::StopPlayingCD()
{
    if (!m_cdOpen)
        return;
    if (m_loopSound)
        m_loopSound->stop();
    mciSendString(QStringLiteral("stop CDTrack"));
    mciSendString(QStringLiteral("close CDTrack"));
    m_cdOpen = false;
}

QString ShowMedia::cdTrackPlaying()
{
    if (!m_cdOpen)
        return {};
    QString track;
    mciSendString(QStringLiteral("status CDTrack current track"), &track);
    return track;
}

bool ShowMedia::PlayMovie(const QString& file, const MoviePlacement& placement)
{
    StopMovie();
    const quint32 rc = StartMovie(
        file, m_picMovie, [&placement](const QSize& movie) { return MovieRect(movie, placement); });
    if (rc != 0) {
        failure(rc,
                QStringLiteral("Unable to play the following movie file:") + NewLine2() + file +
                    QStringLiteral("..."),
                vbExclamation);
        return false;
    }
    m_movieOpen = true;
    // A movie repeats for as long as its slide is shown.
    if (m_loopMovie)
        m_loopMovie->start();
    return true;
}

void ShowMedia::StopMovie()
{
    if (!m_movieOpen)
        return;
    if (m_loopMovie)
        m_loopMovie->stop();
    mciSendString(QStringLiteral("stop Movie"));
    mciSendString(QStringLiteral("close Movie"));
    if (m_picMovie)
        m_picMovie->hide();
    m_movieOpen = false;
}

bool ShowMedia::playListInUse() const
{
    return CurrentSettings().UsePlayList && !CurrentShow().PlayList.isEmpty();
}

void ShowMedia::startPlayList()
{
    m_failedEntries.clear();
    m_playListIndex = -1;
    m_playListOn = true;
    nextPlayListEntry();
    if (m_playListOn && m_playList)
        m_playList->start();
}

void ShowMedia::stopPlayList()
{
    if (m_playList)
        m_playList->stop();
    m_playListOn = false;
}

void ShowMedia::nextPlayListEntry()
{
    // The list plays round and round for as long as the show runs. An entry that cannot be
    // played is left out from then on, so its message comes once; with none left the list ends.
    const QStringList& list = CurrentShow().PlayList;
    for (;;) {
        QVector<int> left;
        for (int i = 0; i < list.size(); ++i) {
            if (!m_failedEntries.contains(i))
                left.append(i);
        }
        if (left.isEmpty()) {
            stopPlayList();
            return;
        }
        int index = left.first();
        if (CurrentSettings().PlayListRandom) {
            index = left.at(RandomBetween(0, int(left.size()) - 1));
        } else {
            for (int i : left) {
                if (i > m_playListIndex) {
                    index = i;
                    break;
                }
            }
        }
        m_playListIndex = index;
        if (startSound(list.at(index), false))
            return;
        m_failedEntries.insert(index);
    }
}

void ShowMedia::onPlayList()
{
    if (m_paused || !m_playListOn)
        return;
    bool ended = true;
    switch (m_sound) {
    case SoundKind::Wave:
        ended = !IsWavePlaying();
        break;
    case SoundKind::Midi:
        ended = HasEnded(QStringLiteral("MIDIFile"));
        break;
    case SoundKind::MciAudio:
        ended = HasEnded(QStringLiteral("MPEGAudio"));
        break;
    case SoundKind::None:
        break;
    }
    if (ended)
        nextPlayListEntry();
}

void ShowMedia::onLoopSound()
{
    if (m_paused)
        return;
    if (m_cdOpen) {
        if (!IsStopped(QStringLiteral("CDTrack")))
            return;
        if (const quint32 rc = mciSendString(cdPlayCommand())) {
            if (m_loopSound)
                m_loopSound->stop();
            cdFailure(rc);
        }
        return;
    }
    const bool midi = m_sound == SoundKind::Midi;
    if (!midi && m_sound != SoundKind::MciAudio)
        return;
    const QString alias = midi ? QStringLiteral("MIDIFile") : QStringLiteral("MPEGAudio");
    if (!IsStopped(alias))
        return;
    if (const quint32 rc =
            mciSendString(QStringLiteral("play ") + alias + QStringLiteral(" from 0"))) {
        // Said once: the sound stays off rather than failing every half second.
        if (m_loopSound)
            m_loopSound->stop();
        failure(rc,
                midi ? QStringLiteral("Unable to play MIDI file.")
                     : QStringLiteral("Unable to play the following audio file:") + NewLine2() +
                           m_soundFile + QStringLiteral("..."),
                vbOKOnly);
    }
}

void ShowMedia::onLoopMovie()
{
    if (!m_movieOpen || !IsStopped(QStringLiteral("Movie")))
        return;
    if (const quint32 rc = mciSendString(QStringLiteral("play Movie from 0"))) {
        if (m_loopMovie)
            m_loopMovie->stop();
        failure(rc, QStringLiteral("Unable to play the following movie file:"), vbExclamation);
    }
}

void ShowMedia::startShowSound()
{
    const Settings& s = CurrentSettings();
    // A show sound that did not start is not tried again when the show comes round: its
    // message has been seen.
    if (m_showSoundFailed)
        return;
    if (s.SoundMode == 1) {
        if (playListInUse())
            startPlayList();
        else
            m_showSoundFailed = !PlayThisSoundFile(s.SoundFile);
    } else if (s.SoundMode == 2) {
        m_showSoundFailed = !PlayThisCDTrack(s.CDTrack);
    }
}

void ShowMedia::stopShowSound()
{
    stopPlayList();
    StopPlayingSound();
    StopPlayingCD();
}

void ShowMedia::slideSound(const Slide& slide, bool showRestarted)
{
    const Settings& s = CurrentSettings();
    if (s.SoundMode == 3) {
        if (playListInUse()) {
            if (!m_playListOn)
                startPlayList();
            return;
        }
        // A slide without a sound lets the one playing go on; a number is a track of the CD.
        if (slide.SlideSound.isEmpty())
            return;
        if (IsCDTrackSound(slide.SlideSound)) {
            StopPlayingSound();
            PlayThisCDTrack(slide.SlideSound.trimmed().toInt());
        } else {
            if (m_cdOpen)
                StopPlayingCD();
            PlayThisSoundFile(slide.SlideSound);
        }
        return;
    }
    if ((s.SoundMode == 1 || s.SoundMode == 2) && showRestarted && !s.DontRestartSound) {
        stopShowSound();
        startShowSound();
    }
}

void ShowMedia::stopAll()
{
    m_paused = false;
    StopMovie();
    stopShowSound();
}

void ShowMedia::pauseSound(bool paused)
{
    if (!CurrentSettings().MakePauseSnd || paused == m_paused)
        return;
    m_paused = paused;
    const QString verb = paused ? QStringLiteral("pause ") : QStringLiteral("play ");
    if (m_cdOpen)
        mciSendString(verb + QStringLiteral("CDTrack"));
    switch (m_sound) {
    case SoundKind::MciAudio:
        mciSendString(verb + QStringLiteral("MPEGAudio"));
        break;
    case SoundKind::Midi:
        mciSendString(verb + QStringLiteral("MIDIFile"));
        break;
    case SoundKind::Wave:
        // Only a wave still sounding is cut off, and only that one comes back.
        if (paused) {
            m_waveHeld = IsWavePlaying();
            if (m_waveHeld)
                PlayWaveSound(PathNoCase(AppPath(), QStringLiteral("BLANK.WAV")), SndNoDefault);
        } else if (m_waveHeld) {
            PlayWaveSound(m_soundFile, ShowWaveFlags(m_soundLoops));
        }
        break;
    case SoundKind::None:
        break;
    }
}

} // namespace kavori
