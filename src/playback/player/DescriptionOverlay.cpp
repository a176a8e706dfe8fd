#include "DescriptionOverlay.h"

#include "platform/Twips.h"
#include "runtime/Random.h"

#include <algorithm>
#include <cmath>

namespace kavori {

namespace {

// Codes in the order the description dialog lists them.
enum Place {
    Center,
    RandomPlace,
    Left,
    Right,
    Top,
    Bottom,
    TopLeft,
    TopRight,
    BottomLeft,
    BottomRight,
    TopLeftDown,
    TopRightDown,
    BottomLeftUp,
    BottomRightUp,
    TopLeftDiagonal,
    TopRightDiagonal,
    BottomLeftDiagonal,
    BottomRightDiagonal,
    TopToBottom,
    BottomToTop,
};

// A jump's hop: this many ticks from take-off to landing.
constexpr int kHopTicks = 16;
constexpr double kPi = 3.14159265358979323846;

} // namespace

QPoint DescriptionPlace(int location, const QSize& screen, const QSize& text)
{
    // Texts keep a margin of a twentieth of the screen's height from its edges.
    const int margin = screen.height() / 20;
    const int freeX = std::max(0, screen.width() - text.width());
    const int freeY = std::max(0, screen.height() - text.height());
    const int left = std::min(margin, freeX / 2);
    const int top = std::min(margin, freeY / 2);
    const int right = freeX - left;
    const int bottom = freeY - top;
    switch (location) {
    case Center:
        return {freeX / 2, freeY / 2};
    case RandomPlace:
        return {left + int(std::floor((right - left + 1) * Rnd())),
                top + int(std::floor((bottom - top + 1) * Rnd()))};
    case Left:
        return {left, freeY / 2};
    case Right:
        return {right, freeY / 2};
    case Top:
        return {freeX / 2, top};
    case TopLeft:
        return {left, top};
    case TopRight:
        return {right, top};
    case BottomLeft:
        return {left, bottom};
    case BottomRight:
        return {right, bottom};
    // "Down" and "Up": on the side, a quarter of the way from the named corner's edge.
    case TopLeftDown:
        return {left, freeY / 4};
    case TopRightDown:
        return {right, freeY / 4};
    case BottomLeftUp:
        return {left, freeY - freeY / 4};
    case BottomRightUp:
        return {right, freeY - freeY / 4};
    // Diagonals: a quarter of the way from the corner towards the centre.
    case TopLeftDiagonal:
        return {freeX / 4, freeY / 4};
    case TopRightDiagonal:
        return {freeX - freeX / 4, freeY / 4};
    case BottomLeftDiagonal:
        return {freeX / 4, freeY - freeY / 4};
    case BottomRightDiagonal:
        return {freeX - freeX / 4, freeY - freeY / 4};
    // Top to bottom and bottom to top: centred, on the upper or lower third line.
    case TopToBottom:
        return {freeX / 2, freeY / 3};
    case BottomToTop:
        return {freeX / 2, freeY - freeY / 3};
    case Bottom:
    default:
        return {freeX / 2, bottom};
    }
}

int JumpingStartTicks(int speed)
{
    static const int kTicks[] = {48, 38, 29, 22, 16, 11, 7, 4, 2};
    return speed >= 1 && speed <= 9 ? kTicks[speed - 1] : 0;
}

QPoint ShadowOffset(int direction, int distance)
{
    const int d = PixelsToTwips(distance + 1);
    switch (direction) {
    case 0:
        return {-d, -d};
    case 1:
        return {d, -d};
    case 2:
        return {-d, d};
    default:
        return {d, d};
    }
}

DescriptionMotion::DescriptionMotion(int location, int speed, const QSize& screen,
                                     const QSize& text)
    : m_location(location), m_speed(speed), m_screen(screen), m_text(text)
{
    m_position = DescriptionPlace(location == kDescBouncing ? Center : location, screen, text);
    m_ground = m_position.y();
}

bool DescriptionMotion::tick()
{
    if (m_location == kDescJumping)
        return jump();
    if (m_location == kDescBouncing)
        return bounce();
    return false;
}

bool DescriptionMotion::jump()
{
    // Waits for its speed's count of ticks, then hops along the bottom from left to right,
    // coming back in on the left when it has left the screen.
    ++m_ticks;
    if (!m_started) {
        if (m_ticks <= JumpingStartTicks(m_speed))
            return false;
        m_started = true;
    }
    const int step = std::max(1, m_speed) * 20;
    int x = m_position.x() + step;
    if (x > m_screen.width())
        x = -m_text.width();
    m_phase = (m_phase + 1) % kHopTicks;
    const int height = m_screen.height() / 6;
    const int y = m_ground - int(std::lround(height * std::sin(kPi * m_phase / kHopTicks)));
    m_position = {x, y};
    return true;
}

bool DescriptionMotion::bounce()
{
    const int step = m_speed * 50;
    int x = m_position.x() + m_dirX * step;
    int y = m_position.y() + m_dirY * step;
    const int maxX = m_screen.width() - m_text.width();
    const int maxY = m_screen.height() - m_text.height();
    // Turning round at an edge: the text stays on the screen and heads back.
    if (x >= maxX) {
        x = std::max(0, maxX);
        m_dirX = -1;
    } else if (x <= 0) {
        x = 0;
        m_dirX = 1;
    }
    if (y >= maxY) {
        y = std::max(0, maxY);
        m_dirY = -1;
    } else if (y <= 0) {
        y = 0;
        m_dirY = 1;
    }
    m_position = {x, y};
    return true;
}

} // namespace kavori
