#pragma once

#include "MediaKinds.h"
#include "MoviePlacement.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>

class QTimer;
class QWidget;

namespace kavori {

struct Slide;

// The sound and movies of a running slide show: the show-wide sound, per-slide sounds, the play
// list, CD tracks and movie slides, and the three timers that watch them. The player window
// owns one (not as its Qt child) and calls it; failures are told through MsgBox and the show
// goes on without the sound or movie.
class ShowMedia : public QObject {
    Q_OBJECT
public:
    // How often the timers ask the devices how they are doing. A movie's last frame should not
    // stand long before it starts over; a sound's gap of half a second goes unnoticed, and
    // every poll is a command to the device.
    static constexpr int kLoopSoundMs = 500;
    static constexpr int kLoopMovieMs = 250;
    static constexpr int kPlayListMs = 500;

    // The timers are made as children of owner (TimerLoopSound, TimerLoopMovie, TimerPlayList),
    // with a hidden box for audio that asks for a window; picMovie shows the movies.
    ShowMedia(QWidget* owner, QWidget* picMovie);
    ~ShowMedia() override;

    // Plays a sound by its kind, looping when SoundLoop is on; stops the sound playing before.
    // False when it did not start (no device for its kind, unknown kind, failure).
    bool PlayThisSoundFile(const QString& file);
    // Track 0 is the whole disc, any other track plays alone. Sets the CD-failed flag on failure.
    bool PlayThisCDTrack(int track);
    void StopPlayingSound();
    void StopPlayingCD();
    // Opens, places and starts a movie slide in picMovie; it repeats until StopMovie.
    bool PlayMovie(const QString& file, const MoviePlacement& placement);
    // "stop Movie", "close Movie" when a movie is open; picMovie is hidden.
    void StopMovie();

    // At the start of a show: SoundMode 1 (the sound file or the play list) or 2 (a CD track).
    void startShowSound();
    // When a slide is shown: SoundMode 3 plays the slide's sound, or keeps the play list going;
    // SoundMode 1 and 2 start over when the show has looped round, unless DontRestartSound.
    void slideSound(const Slide& slide, bool showRestarted);
    // At the end of the show: everything stops and closes.
    void stopAll();
    // The player's pause key. With MakePauseSnd on, the show's sound holds while the show is
    // paused and goes on on resume (a wave, which cannot hold, stops and starts again); with it
    // off the sound plays on. Movies are the slide itself and are not paused.
    void pauseSound(bool paused);

    // The timers' work, public so the player and tests can run it at will.
    void onLoopSound();
    void onLoopMovie();
    void onPlayList();

    bool cdFailed() const { return m_cdFailed; }
    SoundKind soundPlaying() const { return m_sound; }
    bool cdPlaying() const { return m_cdOpen; }
    bool movieOpen() const { return m_movieOpen; }
    bool playListOn() const { return m_playListOn; }
    int playListIndex() const { return m_playListIndex; }
    // The track the CD is playing, for the information display; empty when none.
    QString cdTrackPlaying();

Q_SIGNALS:
    // A failure message is about to be shown: the player makes the mouse pointer visible.
    void cursorNeeded();

private:
    bool startSound(const QString& file, bool loop);
    bool playListInUse() const;
    void startPlayList();
    void stopPlayList();
    void nextPlayListEntry();
    void stopShowSound();
    QString cdPlayCommand() const;
    void cdFailure(quint32 code);
    // The message, then the error's text and number, then the tail.
    void failure(quint32 code, const QString& message, int style, const QString& tail = {});

    QPointer<QWidget> m_picMovie;
    QPointer<QWidget> m_soundBox;
    QPointer<QTimer> m_loopSound;
    QPointer<QTimer> m_loopMovie;
    QPointer<QTimer> m_playList;

    SoundKind m_sound = SoundKind::None;
    QString m_soundFile;
    bool m_soundLoops = false;
    bool m_cdOpen = false;
    int m_cdTrack = 0;
    bool m_cdFailed = false;
    bool m_showSoundFailed = false;
    bool m_movieOpen = false;
    bool m_playListOn = false;
    int m_playListIndex = -1;
    QSet<int> m_failedEntries;
    bool m_paused = false;
    bool m_waveHeld = false; // a wave was cut off by the pause and plays again on resume
};

} // namespace kavori
