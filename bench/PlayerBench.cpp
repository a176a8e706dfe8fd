// The slide clock at work on a 1920 x 1080 screen with a show of 12 MP photos: the time from a
// tick of SlideTimer to the next slide's transition starting, after the viewer has looked at
// the slide before for 400 ms (as long as the player has to read the next one ahead). In order
// the next slides are read ahead; a random pick is read when it is drawn, for comparison.
#include "playback/FullViewFrm.h"
#include "playback/TransitionEngine.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "support/PhotoLike.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

using namespace kavori;

constexpr int kPhotos = 6;

QString photoFolder()
{
    static QTemporaryDir dir;
    static const bool made = [] {
        for (int i = 0; i < kPhotos; ++i)
            kavori::test::PhotoLike(4000, 3000, 40 + i)
                .save(dir.path() + QStringLiteral("/slide_%1.jpg").arg(i), "JPEG", 90);
        return true;
    }();
    Q_UNUSED(made);
    return dir.path() + u'/';
}

void runTicks(benchmark::State& state, bool random)
{
    const QString folder = photoFolder();
    qputenv("KAVORI_HOME", QFile::encodeName(folder + QStringLiteral("home")));
    ResetSettings();
    ResetShow();
    Settings& s = CurrentSettings();
    s.EnableTransitions = true;
    s.RandomSlides = random;
    s.SlideInterval = 0; // the benchmark ticks the clock itself
    for (int i = 0; i < kPhotos; ++i) {
        Slide slide = NewSlide(folder + QStringLiteral("slide_%1.jpg").arg(i));
        slide.SlideShrink = 1;
        slide.SlideTransition = 38; // left to right
        CurrentShow().slides.append(slide);
    }
    FullViewFrm player;
    player.resize(1920, 1080);
    player.show();
    player.PlayShow({});
    QElapsedTimer clock;
    double readyMs = 0;
    QObject::connect(&player, &FullViewFrm::slideReady, [&] {
        readyMs = clock.nsecsElapsed() / 1e6;
        Transitions().TransitionSkip = true; // the effect itself is not measured here
    });
    player.SlideTimer_Timer();
    std::vector<double> times;
    for (auto _ : state) {
        QTest::qWait(400); // the viewer looks at the slide
        clock.start();
        player.SlideTimer_Timer();
        times.push_back(readyMs);
        state.SetIterationTime(readyMs / 1000.0);
    }
    std::sort(times.begin(), times.end());
    state.counters["median_ms"] = times[times.size() / 2];
    state.counters["p95_ms"] = times[std::min(times.size() - 1, times.size() * 95 / 100)];
    state.counters["worst_ms"] = times.back();
    ResetShow();
}

void BM_TickToTransitionInOrder(benchmark::State& state)
{
    runTicks(state, false);
}

void BM_TickToTransitionAtRandom(benchmark::State& state)
{
    runTicks(state, true);
}

} // namespace

BENCHMARK(BM_TickToTransitionInOrder)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(40);
BENCHMARK(BM_TickToTransitionAtRandom)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);
