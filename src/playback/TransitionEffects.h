#pragma once

#include <QRect>
#include <QString>

namespace kavori {

class TransitionCanvas;
class Pacer;

// One running effect: the canvas, the picture size, the shape parameters of its number and
// its pause count. Effects copy and pause through it; every step answers whether to go on.
class EffectRun {
public:
    EffectRun(TransitionCanvas& canvas, Pacer& pacer, int a, int b, int count);

    int W = 0;
    int H = 0;
    int a = 0; // shape parameters, as the catalogue gives them
    int b = 0;

    // The skip and stop flags are clear and no pause has overflowed.
    bool check() const;
    bool copy(int x, int y, int w, int h);
    bool copyWholeTo(int x, int y);
    // A copy that grows from the previous step's by the fresh rectangle.
    bool copyGrown(const QRect& whole, const QRect& fresh);
    bool pause();

private:
    TransitionCanvas& m_canvas;
    Pacer& m_pacer;
    int m_count = 0;
    bool m_overflowed = false;
};

using EffectRoutine = void (*)(EffectRun&);

struct TransitionEntry {
    const char* name;
    EffectRoutine routine; // null for the two "no transition" entries
    int baseDelay;
    int a; // shape parameters; for drop paint a divisor of the height
    int b;
};

// The catalogue, position = number.
const TransitionEntry& TransitionCatalogue(int number);

} // namespace kavori
