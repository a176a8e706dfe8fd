#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

class TransitionCanvas;

// The run-time flags the player's handlers set while a transition runs.
struct TransitionFlags {
    bool TransitionStop = false; // the show is ending: stop where it stands
    bool TransitionSkip = false; // a key or click: show the whole new picture now
    bool Colors256 = false;      // a 256-colour display: no animation
};
TransitionFlags& Transitions();

// How pauses pass. The engine counts message-pump passes; a pacer turns them into time.
class Pacer {
public:
    virtual ~Pacer() = default;
    // Lets events run once (the dispatcher's first step).
    virtual void pump() = 0;
    // One pause of this many message-pump passes.
    virtual void pause(int passes) = 0;
};

// The pacer of the player: effects run ahead on a virtual clock of kPassMicroseconds per pass
// and the screen is presented at most once per display frame, waiting (with events running)
// whenever the effect is ahead of the clock.
// 14 microseconds makes the average effect last about 1.7 s at speed 3 on 1920 x 1080.
constexpr double kPassMicroseconds = 14.0;

// The number of passes a pause count stands for at the current TransitionSpeed, or a negative
// value when the scaled count overflows 16 bits (the effect then ends at once).
int ScaledPauseCount(int count, int speed);

// The size class of a destination: 3 for tiny, 2 for small, 1 for the rest.
int TransitionSizeClass(int width, int height);

// The list text of every number, position = number (0 to 57).
QStringList TransitionNames();
int TransitionBaseDelay(int number);
constexpr int kTransitionCount = 58;

// A number for a slide when transitions are random: 1 to 57, never 0.
qint16 RandomTransitionNumber();

// Runs transition number from the picture on the canvas to the new one, then makes the whole
// new picture shown (unless the show is stopping). Invalid numbers are reported.
void ShowTransition(qint16 number, TransitionCanvas& canvas, Pacer& pacer);

} // namespace kavori
