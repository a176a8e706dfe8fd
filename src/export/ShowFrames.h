#pragma once

#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideShow.h"

#include <QImage>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

namespace kavori {

class DescriptionMotion;
class MovingPicture;
class SlideDecoder;

// How long a slide that waits for the user (no interval) stays in a video.
constexpr int kWaitingSlideSeconds = 5;

// One slide as the video shows it. Times are in microseconds from the video's start.
struct SlideSpan {
    int index = 0;         // in the show
    QString file;          // the slide's file as found on this machine
    qint64 start = 0;      // the slide comes up: its transition begins
    qint64 transition = 0; // how long its transition runs
    qint64 hold = 0;       // how long it stands after its transition
    bool movie = false;
    QRect movieRect; // where a movie slide plays, in video pixels
    qint64 end() const { return start + transition + hold; }
};

// A sound the player would start when a slide comes up. Each cue cuts off the one before, as
// the player's one sound channel does.
struct SoundCue {
    qint64 start = 0;      // microseconds
    QString file;          // empty for the play list
    bool playList = false; // the show's play list goes round from here on
    bool loop = false;     // the sound repeats until the next cue
};

// Walks the show in memory with the current settings as the player plays it once through, in
// virtual time: every slide with its placement, background, transition (drawn by the player's
// engine and canvas at the show's speed), file-name line and description, each frame at
// number / fps seconds. Random order, places and transitions draw from the random source,
// seeded with seed at the start of every walk, so two walks give the same frames.
class ShowFrames {
public:
    // The frame and its number; false stops the walk.
    using Sink = std::function<bool(const QImage& frame, qint64 number)>;

    ShowFrames(const QSize& size, int fps, quint32 seed);
    ~ShowFrames();

    // Draws every frame into one picture and hands it to sink. Without a sink nothing is drawn
    // or read: the walk only makes the plan (spans, sounds, frame count). False when the sink
    // stopped it.
    bool walk(const Sink& sink);

    const QVector<SlideSpan>& spans() const { return m_spans; }
    const QVector<SoundCue>& sounds() const { return m_sounds; }
    // Slides left out because their file could not be read.
    const QStringList& unreadable() const { return m_unreadable; }
    // Movie slides whose pictures could not be read (their slides show the background).
    const QStringList& unplayable() const { return m_unplayable; }
    qint64 frameCount() const { return m_frame; }
    qint64 duration() const { return m_time; }
    QSize size() const { return m_size; }
    int fps() const { return m_fps; }

    // The microsecond at which frame number starts.
    qint64 frameTime(qint64 number) const { return number * 1000000 / m_fps; }

private:
    class Pacer;
    void reset();
    void showSlide(int index);
    void present(qint16 number, bool useEngine);
    // Frames up to (not including) time end, showing what is on the screen now.
    bool emitUntil(qint64 end);
    const QImage& drawFrame(const QImage& base, qint64 time);
    void cueSound(const Slide& slide);
    // Lets moving pictures play in rect from now, over the screen, until the slide ends.
    void play(std::unique_ptr<MovingPicture> moving, const QRect& rect);

    QSize m_size;
    int m_fps;
    quint32 m_seed;
    const Sink* m_sink = nullptr;
    bool m_stopped = false;
    bool m_drawing = false;

    qint64 m_time = 0;
    qint64 m_frame = 0;
    QImage m_screen;  // what the player's screen shows
    QImage m_compose; // the next slide, reused from slide to slide
    QImage m_frame_;  // the screen with the lines over it, reused from frame to frame
    // What m_frame_ was drawn from: the screen's key, the lines and where the description stood.
    bool m_drawnValid = false;
    qint64 m_drawnBase = 0;
    QString m_drawnInfo;
    QString m_drawnDescription;
    QPoint m_drawnAt;
    const QImage* m_base =
        nullptr; // the picture the next frames show (the canvas's during an effect)
    std::unique_ptr<SlideDecoder> m_decoder;
    QString m_texturePath;
    QImage m_texture;

    QString m_infoLine;
    QString m_description;
    DescriptionLook m_look;
    QSize m_descSize;
    std::unique_ptr<DescriptionMotion> m_motion;
    qint64 m_descStart = 0;
    int m_descTicks = 0;

    int m_nextRandom = -1;
    bool m_playListOn = false;
    QVector<SlideSpan> m_spans;
    QVector<SoundCue> m_sounds;
    QStringList m_unreadable;
    QStringList m_unplayable;
    // The movie or animated picture of the slide standing now, where it plays, since when.
    std::unique_ptr<MovingPicture> m_moving;
    QRect m_movingRect;
    qint64 m_movingStart = 0;
};

} // namespace kavori
