// transition-sheet: draws every transition from one generated picture to another at 960 x 540
// and writes, per effect, a PNG of 8 frames taken at equal steps of its run, labelled with its
// number and name, so that a person can check all of them by eye.
//   transition-sheet [output folder]   (default: ./transition-sheets)
#include "playback/TransitionCanvas.h"
#include "playback/TransitionEffects.h"
#include "playback/TransitionEngine.h"
#include "runtime/Random.h"
#include "settings/Settings.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>

#include <cstdio>

namespace {

using namespace kavori;

QImage picture(const QSize& size, const QColor& a, const QColor& b, const QString& letter)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter p(&image);
    QLinearGradient g(0, 0, size.width(), size.height());
    g.setColorAt(0, a);
    g.setColorAt(1, b);
    p.fillRect(image.rect(), g);
    p.setPen(QPen(QColor(255, 255, 255, 90), 2));
    for (int x = 0; x < size.width(); x += 60)
        p.drawLine(x, 0, x, size.height());
    for (int y = 0; y < size.height(); y += 60)
        p.drawLine(0, y, size.width(), y);
    QFont font = p.font();
    font.setPixelSize(size.height() / 2);
    font.setBold(true);
    p.setFont(font);
    p.setPen(Qt::white);
    p.drawText(image.rect(), Qt::AlignCenter, letter);
    return image;
}

// Paints like the player and keeps a copy of the screen after chosen numbers of copies.
class SnapshotCanvas final : public TransitionCanvas, public Pacer {
public:
    SnapshotCanvas(PaintingCanvas& canvas, QVector<int> at) : m_canvas(canvas), m_at(std::move(at))
    {}
    QSize size() const override { return m_canvas.size(); }
    void copy(const QRect& r) override
    {
        m_canvas.copy(r);
        step();
    }
    void copyTo(const QRect& s, const QPoint& d) override
    {
        m_canvas.copyTo(s, d);
        step();
    }
    void pump() override {}
    void pause(int) override {}
    QVector<QImage> frames;

private:
    void step()
    {
        ++m_done;
        while (!m_at.isEmpty() && m_done >= m_at.first()) {
            frames << m_canvas.destination().copy();
            m_at.removeFirst();
        }
    }
    PaintingCanvas& m_canvas;
    QVector<int> m_at;
    int m_done = 0;
};

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QString out =
        argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("transition-sheets");
    QDir().mkpath(out);
    const QSize size(960, 540);
    const QImage from =
        picture(size, QColor(20, 60, 140), QColor(40, 160, 200), QStringLiteral("A"));
    const QImage to = picture(size, QColor(200, 80, 20), QColor(250, 200, 60), QStringLiteral("B"));
    const QStringList names = TransitionNames();

    for (int n = 2; n < kTransitionCount; ++n) {
        const TransitionEntry& e = TransitionCatalogue(n);
        const int count = TransitionSizeClass(size.width(), size.height()) * e.baseDelay;
        Randomize(7u);
        RecordingCanvas record(size);
        EffectRun counting(record, record, e.a, e.b, count);
        e.routine(counting);
        const int total = record.copies();

        QVector<int> at;
        for (int k = 0; k < 8; ++k)
            at << std::max(1, int(qint64(total) * (k + 1) / 8));
        Randomize(7u);
        PaintingCanvas canvas(to, from);
        SnapshotCanvas snap(canvas, at);
        EffectRun run(snap, snap, e.a, e.b, count);
        e.routine(run);

        const int cellW = size.width() / 2, cellH = size.height() / 2, head = 40;
        QImage sheet(cellW * 4 + 50, cellH * 2 + head + 30, QImage::Format_RGB32);
        sheet.fill(QColor(40, 40, 40));
        QPainter p(&sheet);
        p.setPen(Qt::white);
        QFont font = p.font();
        font.setPixelSize(22);
        p.setFont(font);
        p.drawText(QRect(10, 0, sheet.width() - 20, head), Qt::AlignVCenter,
                   QStringLiteral("%1  %2   (%3 copies, %4 pauses of %5)")
                       .arg(n)
                       .arg(names[n])
                       .arg(total)
                       .arg(record.pauses())
                       .arg(count));
        for (int k = 0; k < snap.frames.size(); ++k) {
            const QRect cell(10 + (k % 4) * (cellW + 10), head + (k / 4) * (cellH + 10), cellW,
                             cellH);
            p.drawImage(cell, snap.frames[k].scaled(cell.size(), Qt::IgnoreAspectRatio,
                                                    Qt::SmoothTransformation));
        }
        p.end();
        const QString file =
            out + QStringLiteral("/transition_%1.png").arg(n, 2, 10, QLatin1Char('0'));
        sheet.save(file);
        std::printf("%s\n", qPrintable(file));
    }
    return 0;
}
