#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace kavori {

// The one slide show in memory. Its show-wide playback values (SoundMode, SlideInterval,
// EnableTransitions ...) are the program-wide settings of the same names; what only a show
// has lives here: the slides, the play list, the show texts.

constexpr int kMaxSlideSlots = 30001;     // slots 0..30000
constexpr int kMaxPlayListEntries = 1001; // entries 0..1000
constexpr int kMaxDescriptionLength = 200;
constexpr int kMaxSlidePathLength = 260;

// One slide; its fields carry the names of the per-slide values.
struct Slide {
    QString SlideFile;
    QString SlideDescription;
    qint16 SlideTransition = 0;
    QString SlideSound;
    qint16 SlideLocation = 0;
    qint16 SlidePosX = 0;
    qint16 SlidePosY = 0;
    qint16 SlideEnlarge = 0;
    qint16 SlideShrink = 0;
    qint16 SlideDelay = 0;
    qint16 SlideBackMode = 0;
    qint32 SlideBackColor = 0;
    QString SlideTexture;
    QString SlideDescProps;
};

bool operator==(const Slide& a, const Slide& b);
inline bool operator!=(const Slide& a, const Slide& b)
{
    return !(a == b);
}

struct SlideShow {
    QVector<Slide> slides; // the slots in use, in order
    bool UseSlideIntervals = false;
    QString ShowInfo;
    QString ShowNote;
    QStringList PlayList;
    QString PlayListText1;
    QString PlayListText2;
    QString path;         // the show's file, empty for a new show
    bool changed = false; // the editor's changed flag
};

SlideShow& CurrentShow();
// Back to an empty show (tests, and before every read).
void ResetShow();

// A new slot: placement and interval from the current settings.
Slide NewSlide(const QString& file = QString());

// "Slide Show", or "Screen Saver" when the program runs as the screen saver.
QString ShowWord();

} // namespace kavori
