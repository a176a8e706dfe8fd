// Reading and writing a slide show of 30,000 slides.
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"

#include <QTemporaryDir>

#include "Figures.h"

#include <QElapsedTimer>

#include <benchmark/benchmark.h>

namespace {

QString bigShow()
{
    static QTemporaryDir dir;
    static const QString path = [] {
        qputenv("KAVORI_HOME", QFile::encodeName(dir.path() + QStringLiteral("/home")));
        kavori::ResetShow();
        kavori::SlideShow& show = kavori::CurrentShow();
        for (int i = 0; i < 30000; ++i) {
            kavori::Slide slide =
                kavori::NewSlide(QStringLiteral("/pictures/holiday/photo_%1.jpg").arg(i));
            slide.SlideDescription = QStringLiteral("Slide number %1 of the long show").arg(i);
            slide.SlideTransition = qint16(i % 58);
            show.slides.append(slide);
        }
        const QString p = dir.path() + QStringLiteral("/big.kav");
        kavori::WriteSlideShow(p);
        return p;
    }();
    return path;
}

void BM_ReadSlideShow30000(benchmark::State& state)
{
    const QString path = bigShow();
    Runs reads;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        kavori::ReadSlideShow(path);
        benchmark::DoNotOptimize(kavori::CurrentShow().slides.size());
        reads.add(double(timer.nsecsElapsed()) / 1e6);
    }
    reads.report(state, "read");
    // A read that stopped early would look fast: the count shows it read them all.
    state.counters["slides"] = double(kavori::CurrentShow().slides.size());
}

void BM_WriteSlideShow30000(benchmark::State& state)
{
    const QString path = bigShow();
    kavori::ReadSlideShow(path);
    const QString out = path + QStringLiteral(".out");
    Runs writes;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        benchmark::DoNotOptimize(kavori::WriteSlideShow(out));
        writes.add(double(timer.nsecsElapsed()) / 1e6);
    }
    writes.report(state, "write");
}

} // namespace

BENCHMARK(BM_ReadSlideShow30000)->Unit(benchmark::kMillisecond)->Iterations(7);
BENCHMARK(BM_WriteSlideShow30000)->Unit(benchmark::kMillisecond)->Iterations(7);
