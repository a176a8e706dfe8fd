// Makes Kavori's own bonus pack under a program home folder (resources/home): tileable
// background textures in Bonus/Textures, short sounds in Bonus/Sounds and BONUSPAK.DAT, which
// names the pack. Every texture is drawn from noise and shapes whose every term repeats over the
// tile, so the pictures meet without a seam when a slide background repeats them.
// Build and run:
//   g++ -std=c++17 -O2 -fPIC make-bonus.cpp $(pkg-config --cflags --libs Qt6Gui) -o make-bonus
//   QT_QPA_PLATFORM=offscreen ./make-bonus resources/home
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <vector>

namespace {

constexpr int Size = 256;
constexpr double Tau = 2 * M_PI;
QString textures;
QString sounds;

double clamp01(double v)
{
    return std::min(1.0, std::max(0.0, v));
}

double smooth(double t)
{
    return t * t * t * (t * (t * 6 - 15) + 10);
}

double mix(double a, double b, double t)
{
    return a + (b - a) * t;
}

QRgb blend(QColor a, QColor b, double t)
{
    t = clamp01(t);
    return qRgb(int(mix(a.red(), b.red(), t) + 0.5), int(mix(a.green(), b.green(), t) + 0.5),
                int(mix(a.blue(), b.blue(), t) + 0.5));
}

// Value noise on a lattice of periodX by periodY cells that wraps around: sampled at u, v in
// [0, 1) it repeats exactly at the tile's edges.
class TileNoise {
public:
    TileNoise(int periodX, int periodY, quint32 seed) : m_px(periodX), m_py(periodY)
    {
        QRandomGenerator r(seed);
        m_v.resize(size_t(m_px * m_py));
        for (double& v : m_v)
            v = r.generateDouble();
    }
    double at(double u, double v) const
    {
        const double x = u * m_px, y = v * m_py;
        const int x0 = int(std::floor(x)), y0 = int(std::floor(y));
        const double fx = smooth(x - x0), fy = smooth(y - y0);
        return mix(mix(cell(x0, y0), cell(x0 + 1, y0), fx),
                   mix(cell(x0, y0 + 1), cell(x0 + 1, y0 + 1), fx), fy);
    }

private:
    double cell(int x, int y) const
    {
        x = ((x % m_px) + m_px) % m_px;
        y = ((y % m_py) + m_py) % m_py;
        return m_v[size_t(y * m_px + x)];
    }
    int m_px, m_py;
    std::vector<double> m_v;
};

// Octaves of tile noise, each twice as fine and half as strong; the result lies in [0, 1].
class Fractal {
public:
    Fractal(int periodX, int periodY, int octaves, quint32 seed, double falloff = 0.5)
    {
        double amp = 1;
        for (int i = 0; i < octaves; ++i) {
            m_layers.emplace_back(periodX << i, periodY << i, seed + quint32(i) * 7919);
            m_amp.push_back(amp);
            m_total += amp;
            amp *= falloff;
        }
    }
    double at(double u, double v) const
    {
        double s = 0;
        for (size_t i = 0; i < m_layers.size(); ++i)
            s += m_layers[i].at(u, v) * m_amp[i];
        return s / m_total;
    }

private:
    std::vector<TileNoise> m_layers;
    std::vector<double> m_amp;
    double m_total = 0;
};

// Distance to the nearest and second nearest of one point per cell in a wrapping grid of cells.
struct Cells {
    Cells(int cells, quint32 seed) : n(cells)
    {
        QRandomGenerator r(seed);
        for (int i = 0; i < n * n; ++i)
            points.push_back({0.15 + 0.7 * r.generateDouble(), 0.15 + 0.7 * r.generateDouble()});
    }
    void nearest(double u, double v, double& d1, double& d2, int& id) const
    {
        const double x = u * n, y = v * n;
        const int cx = int(std::floor(x)), cy = int(std::floor(y));
        d1 = d2 = 1e9;
        id = 0;
        for (int j = -1; j <= 1; ++j)
            for (int i = -1; i <= 1; ++i) {
                const int gx = cx + i, gy = cy + j;
                const int k = ((gy % n + n) % n) * n + ((gx % n + n) % n);
                const double px = gx + points[size_t(k)].first, py = gy + points[size_t(k)].second;
                const double d = std::hypot(px - x, py - y);
                if (d < d1) {
                    d2 = d1;
                    d1 = d;
                    id = k;
                } else if (d < d2) {
                    d2 = d;
                }
            }
    }
    int n;
    std::vector<std::pair<double, double>> points;
};

void save(const QImage& im, const char* name)
{
    im.save(textures + QLatin1String(name) + QStringLiteral(".jpg"), "JPEG", 88);
}

QImage paint(const std::function<QRgb(double, double)>& at)
{
    QImage im(Size, Size, QImage::Format_RGB32);
    for (int y = 0; y < Size; ++y) {
        auto* line = reinterpret_cast<QRgb*>(im.scanLine(y));
        for (int x = 0; x < Size; ++x)
            line[x] = at(double(x) / Size, double(y) / Size);
    }
    return im;
}

void paper()
{
    const Fractal cloud(4, 4, 5, 11), fibre(64, 8, 2, 12), fine(128, 128, 1, 13);
    save(paint([&](double u, double v) {
             const double t = 0.55 * cloud.at(u, v) + 0.25 * fibre.at(u, v) +
                              0.2 * fine.at(u, v);
             return blend(QColor(236, 228, 208), QColor(250, 246, 234), t);
         }),
         "Paper");
}

// Threads over and under: warp and weft as waves whose count fits the tile, each thread a
// little thicker or thinner along its length.
QImage weave(int threads, QColor dark, QColor light, quint32 seed, double slub)
{
    const Fractal warpVar(1, threads, 2, seed), weftVar(threads, 1, 2, seed + 1);
    const Fractal speck(64, 64, 2, seed + 2);
    return paint([&](double u, double v) {
        const double wx = 0.5 + 0.5 * std::cos(Tau * threads * u);
        const double wy = 0.5 + 0.5 * std::cos(Tau * threads * v);
        const int cellX = int(u * threads), cellY = int(v * threads);
        const bool warpOnTop = (cellX + cellY) % 2 == 0;
        const double warp = wx * (0.8 + slub * (warpVar.at(u, v) - 0.5));
        const double weft = wy * (0.8 + slub * (weftVar.at(u, v) - 0.5));
        double t = warpOnTop ? std::max(warp, weft * 0.75) : std::max(weft, warp * 0.75);
        t = 0.75 * t + 0.25 * speck.at(u, v);
        return blend(dark, light, t);
    });
}

void linen()
{
    save(weave(32, QColor(196, 184, 160), QColor(238, 230, 212), 21, 0.7), "Linen");
}

void canvas()
{
    save(weave(48, QColor(168, 156, 130), QColor(224, 214, 190), 31, 0.4), "Canvas");
}

void marble()
{
    const Fractal turb(4, 4, 5, 41), tint(2, 2, 3, 42);
    save(paint([&](double u, double v) {
             const double phase = Tau * (2 * u + 1 * v) + 6.0 * turb.at(u, v);
             const double vein = std::pow(std::abs(std::sin(phase)), 0.35);
             const QRgb base = blend(QColor(214, 212, 206), QColor(246, 245, 240), tint.at(u, v));
             return blend(QColor(120, 122, 128), QColor(base), vein);
         }),
         "Marble");
}

void wood()
{
    // Grain along x: a long lattice period across, a short one along, and rings as bands.
    const Fractal grain(2, 8, 4, 51), streak(2, 48, 2, 52);
    save(paint([&](double u, double v) {
             const double ring = 7 * v + 1.6 * grain.at(u, v);
             const double band = std::pow(0.5 + 0.5 * std::sin(Tau * ring), 2.5);
             const double t = 0.65 * band + 0.35 * streak.at(u, v);
             return blend(QColor(150, 96, 56), QColor(204, 150, 98), 1 - t);
         }),
         "Wood");
}

void brushedMetal()
{
    const Fractal lines(2, 256, 2, 61), sheen(1, 2, 2, 62);
    save(paint([&](double u, double v) {
             const double t = 0.6 * lines.at(u, v) + 0.4 * sheen.at(u, v);
             return blend(QColor(150, 156, 164), QColor(212, 216, 222), t);
         }),
         "BrushedMetal");
}

void sand()
{
    const Fractal ripple(4, 4, 3, 71), grain(128, 128, 1, 72), dune(2, 2, 3, 73);
    QRandomGenerator r(74);
    save(paint([&](double u, double v) {
             const double wave = 0.5 + 0.5 * std::sin(Tau * (3 * u + 5 * v) + 3 * ripple.at(u, v));
             const double t = 0.35 * wave + 0.25 * dune.at(u, v) + 0.4 * grain.at(u, v);
             QRgb c = blend(QColor(206, 178, 128), QColor(240, 220, 176), t);
             if (r.bounded(60) == 0) // a darker grain here and there
                 c = blend(QColor(c), QColor(120, 100, 80), 0.35);
             return c;
         }),
         "Sand");
}

void water()
{
    const Fractal warp(3, 3, 3, 81);
    const int waves[][2] = {{3, 1}, {-2, 3}, {1, -4}, {4, 2}, {-3, -2}};
    save(paint([&](double u, double v) {
             const double w = 1.4 * warp.at(u, v);
             double s = 0;
             for (const auto& k : waves)
                 s += std::sin(Tau * (k[0] * u + k[1] * v) + w * (k[0] + k[1]));
             s /= 5;
             const double caustic = std::pow(1 - std::abs(s), 6);
             const QRgb deep = blend(QColor(24, 92, 140), QColor(48, 140, 176), 0.5 + 0.5 * s);
             return blend(QColor(deep), QColor(200, 236, 246), caustic * 0.7);
         }),
         "Water");
}

void stone()
{
    const Cells cells(6, 91);
    const Fractal rough(8, 8, 4, 92);
    QRandomGenerator r(93);
    std::vector<int> shade(36);
    for (int& s : shade)
        s = r.bounded(40);
    save(paint([&](double u, double v) {
             double d1, d2;
             int id;
             cells.nearest(u, v, d1, d2, id);
             const double edge = clamp01((d2 - d1) * 9);
             const double t = 0.6 * rough.at(u, v) + shade[size_t(id)] / 100.0;
             const QRgb face = blend(QColor(120, 116, 110), QColor(188, 184, 176), t);
             return blend(QColor(70, 66, 62), QColor(face), edge);
         }),
         "Stone");
}

void clouds()
{
    const Fractal sky(3, 3, 6, 101);
    save(paint([&](double u, double v) {
             const double c = clamp01((sky.at(u, v) - 0.42) * 2.6);
             return blend(QColor(104, 160, 226), QColor(250, 252, 255), std::pow(c, 0.8));
         }),
         "Clouds");
}

void softChecker()
{
    const Fractal speck(64, 64, 2, 111);
    save(paint([&](double u, double v) {
             // A product of two cosines changes sign at every square; the soft step keeps the
             // edges blurred rather than hard.
             const double s = std::cos(Tau * 4 * u) * std::cos(Tau * 4 * v);
             const double t = 0.5 + 0.5 * std::tanh(6 * s);
             const QRgb c = blend(QColor(214, 226, 240), QColor(244, 236, 222), t);
             return blend(QColor(c), QColor(255, 255, 255), 0.15 * speck.at(u, v));
         }),
         "SoftChecker");
}

void cork()
{
    const Fractal base(8, 8, 3, 121), flake(96, 96, 2, 122);
    save(paint([&](double u, double v) {
             const double f = flake.at(u, v);
             const double t = 0.5 * base.at(u, v) + 0.5 * f;
             QRgb c = blend(QColor(150, 100, 58), QColor(214, 168, 112), t);
             if (f < 0.28)
                 c = blend(QColor(c), QColor(92, 58, 34), 0.6);
             return c;
         }),
         "Cork");
}

void bricks()
{
    const Fractal rough(16, 16, 3, 131);
    QRandomGenerator r(132);
    const int rows = 8, perRow = 4;
    std::vector<int> shade(size_t(rows * perRow));
    for (int& s : shade)
        s = r.bounded(50);
    save(paint([&](double u, double v) {
             const double y = v * rows;
             const int row = int(y);
             const double x = u * perRow + (row % 2 ? 0.5 : 0);
             const int col = int(x) % perRow;
             const double fx = x - std::floor(x), fy = y - row;
             const double mortar = std::min({fx * perRow * 3.2, (1 - fx) * perRow * 3.2,
                                             fy * rows * 0.8, (1 - fy) * rows * 0.8});
             const double t = 0.5 * rough.at(u, v) + shade[size_t(row * perRow + col)] / 100.0;
             const QRgb brick = blend(QColor(150, 66, 46), QColor(196, 104, 72), t);
             return blend(QColor(206, 200, 188), QColor(brick), clamp01(mortar - 0.4));
         }),
         "Bricks");
}

void leaves()
{
    const Fractal ground(4, 4, 4, 141);
    QImage im = paint([&](double u, double v) {
        return blend(QColor(34, 64, 30), QColor(58, 96, 44), ground.at(u, v));
    });
    QPainter p(&im);
    p.setRenderHint(QPainter::Antialiasing);
    QRandomGenerator r(142);
    for (int i = 0; i < 70; ++i) {
        const QPointF at(r.bounded(Size), r.bounded(Size));
        const double angle = r.bounded(360);
        const double length = 22 + r.bounded(18);
        const QColor colour = QColor::fromHsv(70 + r.bounded(50), 120 + r.bounded(90),
                                              110 + r.bounded(110));
        QPainterPath leaf;
        leaf.moveTo(0, 0);
        leaf.cubicTo(length * 0.3, -length * 0.38, length * 0.75, -length * 0.3, length, 0);
        leaf.cubicTo(length * 0.75, length * 0.3, length * 0.3, length * 0.38, 0, 0);
        // Drawn in the nine places that overlap the tile, so a leaf cut by one edge goes on at
        // the other.
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx) {
                p.save();
                p.translate(at + QPointF(dx * Size, dy * Size));
                p.rotate(angle);
                p.setPen(QPen(colour.darker(140), 1));
                p.setBrush(colour);
                p.drawPath(leaf);
                p.setPen(QPen(colour.lighter(130), 1));
                p.drawLine(QPointF(2, 0), QPointF(length - 3, 0));
                p.restore();
            }
    }
    p.end();
    save(im, "Leaves");
}

// 16-bit mono WAV at 22,050 samples a second; samples lie in [-1, 1].
constexpr int Rate = 22050;

void writeWave(const std::vector<double>& samples, const char* name)
{
    double peak = 1e-9;
    for (double s : samples)
        peak = std::max(peak, std::abs(s));
    const double gain = 0.8 / peak;
    QByteArray data;
    for (double s : samples) {
        const qint16 v = qint16(std::lround(s * gain * 32767));
        data.append(char(v & 0xff)).append(char((v >> 8) & 0xff));
    }
    QByteArray wav("RIFF");
    auto u32 = [&](quint32 v) {
        for (int i = 0; i < 4; ++i)
            wav.append(char((v >> (8 * i)) & 0xff));
    };
    auto u16 = [&](quint16 v) { wav.append(char(v & 0xff)).append(char(v >> 8)); };
    u32(quint32(36 + data.size()));
    wav.append("WAVEfmt ");
    u32(16);
    u16(1);
    u16(1);
    u32(Rate);
    u32(Rate * 2);
    u16(2);
    u16(16);
    wav.append("data");
    u32(quint32(data.size()));
    wav.append(data);
    QFile f(sounds + QLatin1String(name) + QStringLiteral(".wav"));
    f.open(QIODevice::WriteOnly);
    f.write(wav);
}

std::vector<double> silence(double seconds)
{
    return std::vector<double>(size_t(seconds * Rate), 0.0);
}

// A struck tone: partials as frequency ratios with their strengths and decay rates, a short
// attack so it does not click.
void strike(std::vector<double>& out, double start, double base,
            std::initializer_list<std::array<double, 3>> partials, double attack = 0.004)
{
    const size_t first = size_t(start * Rate);
    for (size_t i = first; i < out.size(); ++i) {
        const double t = double(i - first) / Rate;
        const double a = std::min(1.0, t / attack);
        double s = 0;
        for (const auto& p : partials)
            s += p[1] * std::exp(-p[2] * t) * std::sin(Tau * base * p[0] * t);
        out[i] += a * s;
    }
}

void fadeOut(std::vector<double>& out, double seconds)
{
    const size_t n = std::min(out.size(), size_t(seconds * Rate));
    for (size_t i = 0; i < n; ++i)
        out[out.size() - 1 - i] *= double(i) / n;
}

void chime()
{
    auto out = silence(1.6);
    const double notes[] = {1318.5, 1046.5, 1568.0};
    for (int i = 0; i < 3; ++i)
        strike(out, i * 0.18, notes[i], {{{1, 0.6, 3.5}}, {{2.76, 0.25, 6}}, {{5.4, 0.1, 9}}});
    fadeOut(out, 0.1);
    writeWave(out, "Chime");
}

void bell()
{
    auto out = silence(2.2);
    // The hum, prime, tierce, quint and nominal of a tuned bell, the upper ones dying first.
    strike(out, 0, 392,
           {{{0.5, 0.35, 1.2}},
            {{1, 0.5, 1.6}},
            {{1.2, 0.3, 2.2}},
            {{1.5, 0.2, 2.6}},
            {{2, 0.35, 2.0}},
            {{2.5, 0.1, 4}},
            {{3.0, 0.08, 5}}},
           0.002);
    fadeOut(out, 0.25);
    writeWave(out, "Bell");
}

void whoosh()
{
    auto out = silence(1.2);
    QRandomGenerator r(201);
    double low = 0, band = 0;
    for (size_t i = 0; i < out.size(); ++i) {
        const double t = double(i) / out.size();
        // A swept low-pass over white noise: the cut-off rises then falls with the loudness.
        const double envelope = std::pow(std::sin(M_PI * t), 2);
        const double cutoff = 0.02 + 0.18 * envelope;
        const double noise = r.generateDouble() * 2 - 1;
        low += cutoff * (noise - low);
        band += cutoff * (low - band);
        out[i] = envelope * band;
    }
    writeWave(out, "Whoosh");
}

void click()
{
    auto out = silence(0.12);
    QRandomGenerator r(211);
    for (size_t i = 0; i < out.size(); ++i) {
        const double t = double(i) / Rate;
        out[i] = std::exp(-t * 180) * (0.6 * std::sin(Tau * 2200 * t) +
                                       0.4 * (r.generateDouble() * 2 - 1) * std::exp(-t * 900));
    }
    writeWave(out, "Click");
}

void fanfare()
{
    // G4 C5 E5 G5 ... C6: a bright brass-like tone, its upper partials fading faster.
    const double notes[][3] = {{0.00, 392.0, 0.16}, {0.18, 523.3, 0.16}, {0.36, 659.3, 0.16},
                               {0.54, 784.0, 0.30}, {0.90, 659.3, 0.14}, {1.06, 1046.5, 0.9}};
    auto out = silence(2.1);
    for (const auto& n : notes) {
        const size_t first = size_t(n[0] * Rate), count = size_t((n[2] + 0.12) * Rate);
        for (size_t i = 0; i < count && first + i < out.size(); ++i) {
            const double t = double(i) / Rate;
            const double attack = std::min(1.0, t / 0.03);
            const double release = t > n[2] ? std::exp(-(t - n[2]) * 30) : 1.0;
            const double vibrato = 1 + 0.004 * std::sin(Tau * 5.5 * t) * std::min(1.0, t / 0.3);
            double s = 0;
            for (int h = 1; h <= 8; ++h)
                s += std::sin(Tau * n[1] * h * vibrato * t) / h * std::exp(-t * h * 0.6);
            out[first + i] += attack * release * s;
        }
    }
    fadeOut(out, 0.2);
    writeWave(out, "Fanfare");
}

void rain()
{
    auto out = silence(2.0);
    QRandomGenerator r(221);
    double hiss = 0;
    for (double& s : out) {
        hiss += 0.3 * ((r.generateDouble() * 2 - 1) - hiss);
        s = 0.08 * hiss;
    }
    // Drops: short falling tones at random places and pitches.
    for (int i = 0; i < 260; ++i) {
        const size_t first = size_t(r.generateDouble() * (out.size() - Rate / 20));
        const double pitch = 1400 + r.bounded(2600);
        const double loud = 0.1 + 0.3 * r.generateDouble();
        for (size_t k = 0; k < size_t(Rate / 25) && first + k < out.size(); ++k) {
            const double t = double(k) / Rate;
            out[first + k] += loud * std::exp(-t * 160) * std::sin(Tau * pitch * (1 - 3 * t) * t);
        }
    }
    const size_t fade = size_t(0.15 * Rate);
    for (size_t i = 0; i < fade; ++i)
        out[i] *= double(i) / fade;
    fadeOut(out, 0.3);
    writeWave(out, "Rain");
}

void dataFile(const QString& home)
{
    const QStringList lines = {QStringLiteral("\"Kavori Bonus Pack Data File\""),
                               QLatin1Char('"') + QString(34, u'-') + QLatin1Char('"'),
                               QStringLiteral("\"Kavori Bonus Pack\""),
                               QStringLiteral("\"Deluxe\"")};
    QFile f(home + QStringLiteral("BONUSPAK.DAT"));
    f.open(QIODevice::WriteOnly);
    f.write(lines.join(QStringLiteral("\r\n")).toLatin1() + "\r\n");
}

} // namespace

int main(int c, char** v)
{
    QGuiApplication a(c, v);
    QString home = c > 1 ? QString::fromLocal8Bit(v[1]) : QStringLiteral(".");
    if (!home.endsWith(u'/'))
        home += u'/';
    textures = home + QStringLiteral("Bonus/Textures/");
    sounds = home + QStringLiteral("Bonus/Sounds/");
    QDir().mkpath(textures);
    QDir().mkpath(sounds);
    paper();
    linen();
    canvas();
    marble();
    wood();
    brushedMetal();
    sand();
    water();
    stone();
    clouds();
    softChecker();
    cork();
    bricks();
    leaves();
    chime();
    bell();
    whoosh();
    click();
    fanfare();
    rain();
    dataFile(home);
}
