#include "playback/TransitionCanvas.h"
#include "playback/TransitionEffects.h"
#include "playback/TransitionEngine.h"
#include "runtime/Random.h"
#include "support/KavoriTest.h"

#include <QPainter>

using namespace kavori;
using Op = RecordingCanvas::Op;

namespace {

// A picture whose every pixel tells where it is and which picture it belongs to, so that a copy
// from the wrong place or picture shows.
QImage numbered(QSize size, uint32_t picture)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            line[x] = 0xFF000000u | (picture << 16) | uint32_t(y << 8) | uint32_t(x);
    }
    return image;
}

// The copies drawn one after another in the order given, as plainly as possible.
void drawPlainly(QImage& destination, const QImage& source, const Op& op)
{
    QPainter painter(&destination);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(op.to, source, op.rect);
}

} // namespace

class PaintingCanvasTest : public kavori::test::KavoriTest {};

// Every effect's copies, replayed on the painting canvas (which holds them, joins copies that
// stay in place and skips what later copies of a frame paint over), give at every frame the
// picture the copies drawn one by one give, and the region it reports as changed holds every
// pixel that changed.
TEST_F(PaintingCanvasTest, EveryFrameIsTheCopiesDrawnInOrder)
{
    const QSize size(97, 61); // odd, so strips and blocks are cut at the edges
    const QImage source = numbered(size, 1);
    const QImage start = numbered(size, 2);
    for (int number = 2; number < kTransitionCount; ++number) {
        Randomize(7u);
        RecordingCanvas recording(size);
        const TransitionEntry& e = TransitionCatalogue(number);
        EffectRun run(recording, recording, e.a, e.b,
                      TransitionSizeClass(size.width(), size.height()) * e.baseDelay);
        e.routine(run);

        PaintingCanvas canvas(source, start);
        QImage expected = start.copy();
        QImage shown = start.copy();
        int frame = 0;
        auto compareFrame = [&] {
            const QRegion changed = canvas.takeChanged();
            const QImage& drawn = canvas.destination();
            ASSERT_EQ(drawn, expected) << e.name << ", frame " << frame;
            for (int y = 0; y < size.height(); ++y) {
                for (int x = 0; x < size.width(); ++x) {
                    if (drawn.pixel(x, y) != shown.pixel(x, y)) {
                        ASSERT_TRUE(changed.contains(QPoint(x, y)))
                            << e.name << ", frame " << frame << " at " << x << "," << y;
                    }
                }
            }
            shown = drawn.copy();
            ++frame;
        };
        for (const Op& op : std::as_const(recording.ops)) {
            if (op.kind == Op::Pause) {
                compareFrame();
                if (::testing::Test::HasFatalFailure())
                    return;
                continue;
            }
            if (op.kind == Op::Copy)
                canvas.copy(op.rect);
            else
                canvas.copyTo(op.rect, op.to);
            drawPlainly(expected, source, op);
        }
        compareFrame();
    }
}
