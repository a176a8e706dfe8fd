// Every transition drawn without pauses at 1920x1080 and 3840x2160: the total drawing time,
// the most expensive presented frame (the drawing between two presentations, which the clock
// pacer makes at most one per 1/60 s of the effect's virtual time) and how long the effect
// lasts at speed 3.
#include "playback/TransitionCanvas.h"
#include "playback/TransitionEffects.h"
#include "playback/TransitionEngine.h"
#include "runtime/Random.h"

#include <QElapsedTimer>

#include "Figures.h"

#include <benchmark/benchmark.h>

namespace {

using namespace kavori;

// Groups the drawing into display frames by the effect's virtual clock and times each frame;
// each frame ends as the player's does, by taking the region to present.
class FrameTimer final : public Pacer {
public:
    explicit FrameTimer(PaintingCanvas& c) : canvas(c) {}
    void pump() override {}
    void pause(int passes) override
    {
        virtualUs += passes * kPassMicroseconds;
        if (virtualUs - lastFrameUs < 1e6 / 60.0)
            return;
        lastFrameUs = virtualUs;
        endFrame();
    }
    void endFrame()
    {
        canvas.takeChanged();
        const double ms = frame.nsecsElapsed() / 1e6;
        worstFrameMs = std::max(worstFrameMs, ms);
        frame.restart();
    }
    PaintingCanvas& canvas;
    QElapsedTimer frame;
    double virtualUs = 0, lastFrameUs = 0, worstFrameMs = 0;
};

void runEffect(benchmark::State& state, QSize size)
{
    const int number = int(state.range(0));
    const TransitionEntry& e = TransitionCatalogue(number);
    QImage from(size, QImage::Format_RGB32), to(size, QImage::Format_RGB32);
    from.fill(Qt::darkBlue);
    to.fill(Qt::darkYellow);
    double seconds = 0;
    Runs worst;
    for (auto _ : state) {
        Randomize(1u);
        PaintingCanvas canvas(to, from);
        FrameTimer timer(canvas);
        EffectRun run(canvas, timer, e.a, e.b,
                      TransitionSizeClass(size.width(), size.height()) * e.baseDelay);
        timer.frame.start();
        e.routine(run);
        timer.endFrame();
        worst.add(timer.worstFrameMs);
        seconds = timer.virtualUs / 1e6;
    }
    // The median over the runs of each run's worst frame, and the first run's.
    worst.report(state, "worst_frame");
    state.counters["lasts_s"] = seconds;
    state.SetLabel(TransitionNames()[number].toStdString());
}

void BM_Transition1080p(benchmark::State& state)
{
    runEffect(state, QSize(1920, 1080));
}

void BM_Transition2160p(benchmark::State& state)
{
    runEffect(state, QSize(3840, 2160));
}

} // namespace

BENCHMARK(BM_Transition1080p)->DenseRange(2, 57)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_Transition2160p)->DenseRange(2, 57)->Unit(benchmark::kMillisecond)->Iterations(5);
