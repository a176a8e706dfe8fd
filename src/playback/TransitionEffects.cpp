// The 56 animated effects. Each copies rectangles of the new picture onto the screen in the
// order its name tells, pausing after each step and returning as soon as the run says stop.
#include "TransitionEffects.h"

#include "TransitionCanvas.h"
#include "TransitionEngine.h"
#include "runtime/Numbers.h"
#include "runtime/Random.h"
#include "settings/Settings.h"

#include <QVector>

#include <algorithm>
#include <cmath>

namespace kavori {

EffectRun::EffectRun(TransitionCanvas& canvas, Pacer& pacer, int a_, int b_, int count)
    : W(canvas.size().width()), H(canvas.size().height()), a(a_), b(b_), m_canvas(canvas),
      m_pacer(pacer), m_count(count)
{}

bool EffectRun::check() const
{
    const TransitionFlags& f = Transitions();
    return !m_overflowed && !f.TransitionSkip && !f.TransitionStop;
}

bool EffectRun::copy(int x, int y, int w, int h)
{
    m_canvas.copy(QRect(x, y, w, h));
    return check();
}

bool EffectRun::copyWholeTo(int x, int y)
{
    m_canvas.copyTo(QRect(0, 0, W, H), QPoint(x, y));
    return check();
}

bool EffectRun::copyGrown(const QRect& whole, const QRect& fresh)
{
    m_canvas.copyGrown(whole, fresh);
    return check();
}

bool EffectRun::pause()
{
    const int passes = ScaledPauseCount(m_count, CurrentSettings().TransitionSpeed);
    if (passes < 0) {
        m_overflowed = true; // the 16-bit overflow ends the effect, as it always has
        return false;
    }
    m_pacer.pause(passes);
    return check();
}

namespace {

// Divisions stored as whole numbers round halves to the even neighbour.
int R(double v)
{
    return int(RoundHalfEven(v));
}

// A rounded count of strips, but never too few to reach the far edge (a picture whose size is
// not a multiple of the strip would otherwise keep a gap until the final copy).
int reaching(int extent, int strip)
{
    return std::max(R(double(extent) / strip), (extent + strip - 1) / strip);
}

// Centre out / in.

void centreOutHorizontal(EffectRun& r)
{
    const int s = r.a;
    int lower = int(Int(r.H / 2.0));
    int upper = lower;
    while (upper >= -s || lower <= r.H) {
        if (!r.copy(0, lower, r.W, s) || !r.copy(0, upper, r.W, s))
            return;
        lower += s;
        upper -= s;
        if (!r.pause())
            return;
    }
}

void centreOutVertical(EffectRun& r)
{
    const int s = r.a;
    int right = int(Int(r.W / 2.0));
    int left = right;
    while (left >= -s || right <= r.W) {
        if (!r.copy(right, 0, s, r.H) || !r.copy(left, 0, s, r.H))
            return;
        right += s;
        left -= s;
        if (!r.pause())
            return;
    }
}

void centreInHorizontal(EffectRun& r)
{
    const int s = r.a;
    int top = 0;
    int bottom = r.H; // first row not yet reached from below
    while (top < bottom) {
        if (!r.copy(0, top, r.W, s) || !r.copy(0, bottom - s, r.W, s))
            return;
        top += s;
        bottom -= s;
        if (!r.pause())
            return;
    }
}

void centreInVertical(EffectRun& r)
{
    const int s = r.a;
    int left = 0;
    int right = r.W;
    while (left < right) {
        if (!r.copy(left, 0, s, r.H) || !r.copy(right - s, 0, s, r.H))
            return;
        left += s;
        right -= s;
        if (!r.pause())
            return;
    }
}

// Slide in and diagonal slide.

template <int DX, int DY> void slideIn(EffectRun& r)
{
    const int extent = DX != 0 ? r.W : r.H;
    const int step = int(Int(extent / 16.0 + 0.5));
    for (int i = 0; i <= 16; ++i) {
        // The last step lands exactly in place whatever the rounding of the step.
        const int offset = i == 16 ? 0 : extent - step * i;
        if (!r.copyWholeTo(DX * offset, DY * offset) || !r.pause())
            return;
    }
}

template <int FromRight, int FromBottom> void diagonalSlide(EffectRun& r)
{
    const int n = r.a;
    const int dx = R(double(r.W) / n + 0.5);
    const int dy = R(double(r.H) / n + 0.5);
    for (int i = 0; i <= n; ++i) {
        int x = FromRight ? r.W - dx * i : -r.W + dx * i;
        int y = FromBottom ? r.H - dy * i : -r.H + dy * i;
        // Never past the final place.
        if (FromRight ? x < 0 : x > 0)
            x = 0;
        if (FromBottom ? y < 0 : y > 0)
            y = 0;
        if (!r.copyWholeTo(x, y) || !r.pause())
            return;
    }
}

// Wipes.

void wipeLeftToRight(EffectRun& r)
{
    const int c = r.a;
    const int n = R(double(r.W) / c);
    for (int i = 0; i <= n; ++i)
        if (!r.copy(c * i, 0, c, r.H) || !r.pause())
            return;
}

void wipeRightToLeft(EffectRun& r)
{
    const int c = r.a;
    const int n = R(double(r.W) / c);
    for (int i = 0; i <= n; ++i)
        if (!r.copy(r.W - c * (i + 1), 0, c, r.H) || !r.pause())
            return;
}

void wipeTopToBottom(EffectRun& r)
{
    const int c = r.a;
    const int n = R(double(r.H) / c);
    for (int i = 0; i <= n; ++i)
        if (!r.copy(0, c * i, r.W, c) || !r.pause())
            return;
}

void wipeBottomToTop(EffectRun& r)
{
    const int c = r.a;
    const int n = R(double(r.H) / c);
    for (int i = 0; i <= n; ++i)
        if (!r.copy(0, r.H - c * (i + 1), r.W, c) || !r.pause())
            return;
}

// Stripes.

void stripesHorizontal(EffectRun& r)
{
    const int w = r.a, h = r.b;
    const int cols = reaching(r.W, w), rows = reaching(r.H, h);
    for (int i = 0; i <= cols; ++i) {
        for (int j = 0; j <= rows; j += 2) {
            r.copy(w * i, h * j, w, h);
            r.copy(r.W - w * i, h * j + h, w, h);
            if (!r.check() || !r.pause())
                return;
        }
    }
}

void stripesVertical(EffectRun& r)
{
    const int w = r.a, h = r.b;
    const int cols = reaching(r.W, w), rows = reaching(r.H, h);
    for (int i = 0; i <= rows; ++i) {
        for (int j = 0; j <= cols; j += 2) {
            r.copy(w * j, h * i, w, h);
            r.copy(w * j + w, r.H - h * i, w, h);
            if (!r.check() || !r.pause())
                return;
        }
    }
}

// Blinds: slats opening from their middle; the 2 pass kind opens every other slat first.
template <bool Horizontal, int Passes> void blinds(EffectRun& r)
{
    const int n = r.a;
    const int extent = Horizontal ? r.H : r.W;
    const int slat = (extent + n - 1) / n;
    const int half = (slat + 1) / 2;
    const int step = std::max(1, (half + 31) / 32);
    for (int pass = 0; pass < Passes; ++pass) {
        for (int k = step;; k += step) {
            const int grown = std::min(k, half);
            for (int i = pass; i < n; i += Passes) {
                const int start = i * slat;
                const int end = std::min(start + slat, extent);
                const int middle = start + slat / 2;
                const int from = std::max(start, middle - grown);
                const int to = std::min(end, middle + grown);
                if (to <= from)
                    continue;
                if (Horizontal)
                    r.copy(0, from, r.W, to - from);
                else
                    r.copy(from, 0, to - from, r.H);
            }
            if (!r.check() || !r.pause())
                return;
            if (grown >= half)
                break;
        }
    }
}

// Venetian blinds.

// Every slat opens from its top (or left) edge, one row (or column) more per pass.
template <bool Horizontal> void venetian(EffectRun& r)
{
    const int n = r.a;
    const int extent = Horizontal ? r.H : r.W;
    const int slat = std::max(1, int(Int(double(extent) / n + 0.5)));
    const int slats = std::max(n, reaching(extent, slat) - 1);
    for (int k = 1; k <= slat; ++k) {
        for (int i = 0; i <= slats; ++i) {
            const int at = slat * i;
            const bool goOn = Horizontal
                                  ? r.copyGrown(QRect(0, at, r.W, k), QRect(0, at + k - 1, r.W, 1))
                                  : r.copyGrown(QRect(at, 0, k, r.H), QRect(at + k - 1, 0, 1, r.H));
            if (!goOn)
                return;
        }
        if (!r.pause())
            return;
    }
}

// Diagonal wipes: lines of blocks at 45 degrees from one top corner to the far corner.
// The 2 pass kind lays every other block of each line, then comes back for the rest.

template <bool Mirrored, int Passes> void diagonalWipe(EffectRun& r)
{
    const int s = r.a;
    const int dir = Mirrored ? 1 : -1; // along a line: x moves by dir * s, y by s
    auto walk = [&](int x, int y, int pass) {
        // A line runs until its blocks leave the picture at the side or the bottom.
        for (int k = 0; y <= r.H && (Mirrored ? x <= r.W - s : x >= 0); ++k) {
            if (k % Passes == pass && !r.copy(x, y, s, s))
                return false;
            x += dir * s;
            y += s;
        }
        return true;
    };
    for (int pass = 0; pass < Passes; ++pass) {
        if (!Mirrored) {
            for (int c = 0; c <= r.W - s; c += s)
                if (!walk(c, 0, pass) || !r.pause())
                    return;
            for (int row = 0; row <= r.H; row += s)
                if (!walk(r.W - s, row, pass) || !r.pause())
                    return;
        } else {
            for (int c = r.W - s; c >= 0; c -= s)
                if (!walk(c, 0, pass) || !r.pause())
                    return;
            for (int row = 0; row <= r.H; row += s)
                if (!walk(0, row, pass) || !r.pause())
                    return;
        }
    }
}

// Blocks: a snake over pairs of rows (or columns); the Variation covers each pair
// position by position, first line then second, instead of going out and back.

enum class Snake { Down, Up, Right, Left };

template <Snake Way, bool Variation> void blocks(EffectRun& r)
{
    const int s = r.a;
    const bool byRows = Way == Snake::Down || Way == Snake::Up;
    const int along = R(double(byRows ? r.W : r.H) / s); // blocks along a line
    const int lines = R(double(byRows ? r.H : r.W) / s); // lines to cover
    auto place = [&](int line, int pos) {
        // Lines count from the starting edge; Up and Left start at the far edge, flush with it.
        int x, y;
        if (byRows) {
            x = s * pos;
            y = Way == Snake::Down ? s * line : r.H - s * (line + 1);
        } else {
            y = s * pos;
            x = Way == Snake::Right ? s * line : r.W - s * (line + 1);
        }
        return r.copy(x, y, s, s) && r.pause();
    };
    for (int line = 0; line <= lines; line += 2) {
        if (!Variation) {
            for (int p = 0; p <= along; ++p)
                if (!place(line, p))
                    return;
            for (int p = along; p >= 0; --p)
                if (!place(line + 1, p))
                    return;
        } else {
            const bool forward = (line / 2) % 2 == 0;
            for (int i = 0; i <= along; ++i) {
                const int p = forward ? i : along - i;
                if (!place(line, p) || !place(line + 1, p))
                    return;
            }
        }
    }
}

// Lines: columns 16 pixels wide, in two interleaved sets.
int lineCount(const EffectRun& r)
{
    return (r.W + r.a - 1) / r.a;
}

bool line(EffectRun& r, int column)
{
    return r.copy(column * r.a, 0, r.a, r.H);
}

// Bi-directional: the even lines sweep one way while the odd lines sweep the other.
template <bool Right> void linesBidirectional(EffectRun& r)
{
    const int n = lineCount(r);
    const int lastEven = (n - 1) - (n - 1) % 2;
    const int lastOdd = n - 1 - ((n - 1) % 2 == 0 ? 1 : 0);
    for (int i = 0; 2 * i <= n; ++i) {
        const int even = Right ? 2 * i : lastEven - 2 * i;
        const int odd = Right ? lastOdd - 2 * i : 2 * i + 1;
        if (even >= 0 && even < n && !line(r, even))
            return;
        if (odd >= 0 && odd < n && !line(r, odd))
            return;
        if (!r.pause())
            return;
    }
}

// Uni-directional: every other line in the direction of travel, then the lines between.
enum class Travel { Right, Center, Left };

template <Travel T> void linesUnidirectional(EffectRun& r)
{
    const int n = lineCount(r);
    QVector<int> order; // positions in the order they are reached
    if (T == Travel::Right) {
        for (int i = 0; i < n; ++i)
            order << i;
    } else if (T == Travel::Left) {
        for (int i = n - 1; i >= 0; --i)
            order << i;
    } else {
        const int centre = n / 2;
        for (int k = 0; centre + k < n || centre - 1 - k >= 0; ++k) {
            if (centre + k < n)
                order << centre + k;
            if (centre - 1 - k >= 0)
                order << centre - 1 - k;
        }
    }
    const int perStep = T == Travel::Center ? 2 : 1;
    for (int pass = 0; pass < 2; ++pass) {
        int inStep = 0;
        for (int i = 0; i < order.size(); ++i) {
            const int distance = T == Travel::Center ? i / 2 : i;
            if (distance % 2 != pass)
                continue;
            if (!line(r, order[i]))
                return;
            if (++inStep == perStep) {
                inStep = 0;
                if (!r.pause())
                    return;
            }
        }
        if (inStep && !r.pause())
            return;
    }
}

// Spirals: blocks around the screen clockwise from the top-left corner towards the
// middle. Spiral In lays them in that order, one block a pause; Spiral Out lays the same
// spiral backwards, a whole side at a time.

QVector<QVector<QPoint>> spiralRuns(int cols, int rows)
{
    QVector<QVector<QPoint>> runs;
    int left = 0, top = 0, right = cols - 1, bottom = rows - 1;
    while (left <= right && top <= bottom) {
        QVector<QPoint> run;
        for (int x = left; x <= right; ++x)
            run << QPoint(x, top);
        runs << run;
        run.clear();
        for (int y = top + 1; y <= bottom; ++y)
            run << QPoint(right, y);
        if (!run.isEmpty())
            runs << run;
        run.clear();
        if (top < bottom) {
            for (int x = right - 1; x >= left; --x)
                run << QPoint(x, bottom);
            if (!run.isEmpty())
                runs << run;
        }
        run.clear();
        if (left < right) {
            for (int y = bottom - 1; y > top; --y)
                run << QPoint(left, y);
            if (!run.isEmpty())
                runs << run;
        }
        ++left;
        ++top;
        --right;
        --bottom;
    }
    return runs;
}

void spiralIn(EffectRun& r)
{
    const int s = r.a;
    for (const QVector<QPoint>& run : spiralRuns((r.W + s - 1) / s, (r.H + s - 1) / s))
        for (const QPoint& p : run)
            if (!r.copy(p.x() * s, p.y() * s, s, s) || !r.pause())
                return;
}

void spiralOut(EffectRun& r)
{
    const int s = r.a;
    const QVector<QVector<QPoint>> runs = spiralRuns((r.W + s - 1) / s, (r.H + s - 1) / s);
    for (auto run = runs.crbegin(); run != runs.crend(); ++run) {
        for (auto p = run->crbegin(); p != run->crend(); ++p)
            if (!r.copy(p->x() * s, p->y() * s, s, s))
                return;
        if (!r.pause())
            return;
    }
}

// Diamonds.

struct DiamondGrid {
    int cols, rows, n;
    double cx, cy;
};

DiamondGrid diamondGrid(const EffectRun& r)
{
    DiamondGrid g;
    g.cols = R(double(r.W) / r.a);
    g.rows = R(double(r.H) / r.b);
    g.n = std::max(g.cols, g.rows);
    g.cx = g.cols / 2.0;
    g.cy = g.rows / 2.0;
    return g;
}

bool diamondBlock(EffectRun& r, const DiamondGrid& g, int x, int y)
{
    return r.copy(R((g.cx + x) * r.a), R((g.cy + y) * r.b), r.a, r.b);
}

bool diamondRing(EffectRun& r, const DiamondGrid& g, int radius)
{
    const int starts[4][4] = {{0, -1, 1, 1}, {1, 0, -1, 1}, {0, 1, -1, -1}, {-1, 0, 1, -1}};
    for (const auto& run : starts) {
        int x = run[0] * radius, y = run[1] * radius;
        for (int k = 0; k < radius; ++k) {
            if (!diamondBlock(r, g, x, y))
                return false;
            x += run[2];
            y += run[3];
        }
    }
    return true;
}

void diamondOut(EffectRun& r)
{
    const DiamondGrid g = diamondGrid(r);
    if (!diamondBlock(r, g, 0, 0))
        return;
    for (int step = 1; step <= g.n; ++step)
        if (!diamondRing(r, g, step) || !r.pause())
            return;
}

void diamondIn(EffectRun& r)
{
    const DiamondGrid g = diamondGrid(r);
    int radius = 30; // fixed, whatever the screen: the final copy fills what lies outside
    for (int step = 1; step <= g.n; ++step) {
        if (radius > 0 && !diamondRing(r, g, radius))
            return;
        --radius;
        if (!r.pause())
            return;
    }
}

// Random blocks.

void randomBlocks(EffectRun& r)
{
    int s = r.a;
    int cols = R(double(r.W) / s), rows = R(double(r.H) / s);
    for (int pass = 1; pass <= 8; ++pass) {
        const double limit = 1.5 * (cols + 1) * (rows + 1);
        for (int drawn = 0; drawn <= limit; ++drawn) {
            const int x = R(Rnd() * cols);
            const int y = R(Rnd() * rows);
            if (!r.copy(s * x, s * y, s, s) || !r.pause())
                return;
        }
        s *= 2;
        cols = R(double(r.W) / s);
        rows = R(double(r.H) / s);
        if (!r.check())
            return;
    }
}

// Drop paint: paint runs down the screen in stripes, each a little further at a time at
// its own speed; the 2 pass kind lets every other stripe run first. a divides the height to
// give the number of stripes.

template <int Passes> void dropPaint(EffectRun& r)
{
    const int stripes = std::max(1, R(double(r.H) / r.a));
    const int width = (r.W + stripes - 1) / stripes;
    const int drip = std::max(1, R(r.H / 24.0));
    QVector<int> depth(stripes, 0);
    for (int pass = 0; pass < Passes; ++pass) {
        bool running = true;
        while (running) {
            running = false;
            for (int i = pass; i < stripes; i += Passes) {
                if (depth[i] >= r.H)
                    continue;
                const int grow = std::max(1, int(drip * (0.5 + Rnd())));
                if (!r.copy(i * width, depth[i], width, grow) || !r.pause())
                    return;
                depth[i] += grow;
                running = true;
            }
        }
    }
}

const TransitionEntry kCatalogue[kTransitionCount] = {
    {">> No Transition - Blank Screen <<", nullptr, 0, 0, 0},
    {">> No Transition - Don't Blank Screen <<", nullptr, 0, 0, 0},
    {"Drop Paint - Small Stripes - 1 Pass", dropPaint<1>, 20, 10, 0},
    {"Drop Paint - Small Strips - 2 Pass", dropPaint<2>, 20, 10, 0},
    {"Drop Paint - Large Stripes - 1 Pass", dropPaint<1>, 60, 20, 0},
    {"Drop Paint - Large Stripes - 2 Pass", dropPaint<2>, 40, 20, 0},
    {"Center Out - Horizontal", centreOutHorizontal, 500, 8, 0},
    {"Center Out - Vertical", centreOutVertical, 500, 8, 0},
    {"Center In - Horizontal", centreInHorizontal, 500, 8, 0},
    {"Center In - Vertical", centreInVertical, 500, 8, 0},
    {"Stripes Left and Right - Small Stripes", stripesHorizontal, 20, 16, 4},
    {"Stripes Up and Down - Small Stripes", stripesVertical, 20, 4, 16},
    {"Stripes Left and Right - Large Stripes", stripesHorizontal, 100, 32, 16},
    {"Stripes Up and Down - Large Stripes", stripesVertical, 100, 16, 32},
    {"Horizontal Blinds - 1 Pass", blinds<true, 1>, 500, 6, 0},
    {"Horizontal Blinds - 2 Pass", blinds<true, 2>, 700, 6, 0},
    {"Vertical Blinds - 1 Pass", blinds<false, 1>, 500, 8, 0},
    {"Vertical Blinds - 2 Pass", blinds<false, 2>, 800, 8, 0},
    {"Horizontal Venetian Blinds - Small Stripes", venetian<true>, 1500, 40, 0},
    {"Vertical Venetian Blinds - Small Stripes", venetian<false>, 1500, 40, 0},
    {"Horizontal Venetian Blinds - Large Stripes", venetian<true>, 1000, 15, 0},
    {"Vertical Venetian Blinds - Large Stripes", venetian<false>, 120, 15, 0},
    {"Slide Down Diagonally - Right", diagonalSlide<0, 0>, 200, 80, 0},
    {"Slide Down Diagonally - Left", diagonalSlide<1, 0>, 200, 80, 0},
    {"Slide Up Diagonally - Right", diagonalSlide<0, 1>, 200, 80, 0},
    {"Slide Up Diagonally - Left", diagonalSlide<1, 1>, 200, 80, 0},
    {"Slide From Bottom", slideIn<0, 1>, 1500, 16, 0},
    {"Slide From Top", slideIn<0, -1>, 1500, 16, 0},
    {"Slide From Left", slideIn<-1, 0>, 1500, 16, 0},
    {"Slide From Right", slideIn<1, 0>, 1500, 16, 0},
    {"Diagonal Left to Right - 1 Pass", diagonalWipe<false, 1>, 200, 16, 16},
    {"Diagonal Left to Right - 2 Pass", diagonalWipe<false, 2>, 200, 16, 16},
    {"Diagonal Right to Left - 1 Pass", diagonalWipe<true, 1>, 200, 16, 16},
    {"Diagonal Right to Left - 2 Pass", diagonalWipe<true, 2>, 200, 16, 16},
    {"Left to Right", wipeLeftToRight, 1000, 16, 0},
    {"Right to Left", wipeRightToLeft, 1000, 16, 0},
    {"Top to Bottom", wipeTopToBottom, 2000, 20, 0},
    {"Bottom to Top", wipeBottomToTop, 2000, 20, 0},
    {"Blocks Left and Right - Down", blocks<Snake::Down, false>, 40, 16, 0},
    {"Blocks Left and Right - Down - Variation", blocks<Snake::Down, true>, 40, 16, 0},
    {"Blocks Left and Right - Up", blocks<Snake::Up, false>, 40, 16, 0},
    {"Blocks Left and Right - Up - Variation", blocks<Snake::Up, true>, 40, 16, 0},
    {"Blocks Up and Down - Right", blocks<Snake::Right, false>, 40, 16, 0},
    {"Blocks Up and Down - Right - Variation", blocks<Snake::Right, true>, 40, 16, 0},
    {"Blocks Up and Down - Left", blocks<Snake::Left, false>, 40, 16, 0},
    {"Blocks Up and Down - Left - Variation", blocks<Snake::Left, true>, 40, 16, 0},
    {"Bi-directional Lines - Right", linesBidirectional<true>, 300, 16, 0},
    {"Bi-directional Lines - Left", linesBidirectional<false>, 300, 16, 0},
    {"Uni-directional Lines - Right", linesUnidirectional<Travel::Right>, 300, 16, 0},
    {"Uni-directional Lines - Center", linesUnidirectional<Travel::Center>, 300, 16, 0},
    {"Uni-directional Lines - Left", linesUnidirectional<Travel::Left>, 300, 16, 0},
    {"Spiral In", spiralIn, 40, 16, 0},
    {"Spiral Out", spiralOut, 1000, 32, 0},
    {"Diamond In", diamondIn, 500, 20, 20},
    {"Diamond Out", diamondOut, 500, 20, 20},
    {"Random Blocks - Small", randomBlocks, 20, 20, 0},
    {"Random Blocks - Medium", randomBlocks, 50, 40, 0},
    {"Random Blocks - Large", randomBlocks, 100, 60, 0},
};

} // namespace

const TransitionEntry& TransitionCatalogue(int number)
{
    return kCatalogue[std::clamp(number, 0, kTransitionCount - 1)];
}

} // namespace kavori
