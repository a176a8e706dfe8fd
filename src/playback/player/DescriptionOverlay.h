#pragma once

#include <QPoint>
#include <QSize>

namespace kavori {

// Where a slide's description stands and how it moves. Positions and sizes are in twips, the
// player window's scale, measured from the screen's top left; the text's box is its size.

// The two moving placements; every other code stands still.
constexpr int kDescJumping = 20;
constexpr int kDescBouncing = 21;

// The player's description clock (TimerDesc), in milliseconds: twenty steps a second keep the
// bouncing text readable at the fastest speed.
constexpr int kDescriptionTickMs = 50;

// The top left of the text for a placement code. Codes without a place of their own (and the
// start of the moving ones) use the bottom centre; random places draw from the random source.
QPoint DescriptionPlace(int location, const QSize& screen, const QSize& text);

// Ticks a jumping description waits before it starts to move, by its speed (any other speed
// starts at once).
int JumpingStartTicks(int speed);

// The offset of the drop shadow: distance + 1 pixels in the direction's diagonal
// (0 up-left, 1 up-right, 2 down-left, 3 down-right).
QPoint ShadowOffset(int direction, int distance);

// The moving placements. Each tick moves the text as its placement says and reports whether
// it moved.
class DescriptionMotion {
public:
    DescriptionMotion(int location, int speed, const QSize& screen, const QSize& text);

    bool tick();

    QPoint position() const { return m_position; }
    int ticks() const { return m_ticks; }
    bool started() const { return m_started; }
    int directionX() const { return m_dirX; }
    int directionY() const { return m_dirY; }
    bool moves() const { return m_location == kDescJumping || m_location == kDescBouncing; }

private:
    bool jump();
    bool bounce();

    int m_location;
    int m_speed;
    QSize m_screen;
    QSize m_text;
    QPoint m_position;
    int m_ticks = 0;
    bool m_started = false;
    int m_dirX = 1;
    int m_dirY = 1;
    int m_phase = 0;  // a jump's step within its hop
    int m_ground = 0; // the line a jumping text lands on
};

} // namespace kavori
