// The shared corpus (make-corpus.sh DIR, then KAVORI_CORPUS=DIR): its sixty 4000 x 3000 photos
// decoded at full size, for a 1920 x 1080 screen and as 160 x 120 thumbnails, each beside djpeg
// doing the same decoding (-scale 1/1, 1/2, 1/8) in the same run. "ratio" is our time over djpeg's.
#include "imaging/PictureLoader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>

#include "Corpus.h"

#include <benchmark/benchmark.h>

namespace {

// Seconds djpeg takes for every file at the given scale, writing to nowhere (the time includes
// starting the program, about a millisecond a file).
double djpegSeconds(const QStringList& files, const QString& scale)
{
    QElapsedTimer timer;
    timer.start();
    for (const QString& file : files) {
        QProcess::execute(QStringLiteral("djpeg"),
                          {QStringLiteral("-scale"), scale, QStringLiteral("-outfile"),
                           QStringLiteral("/dev/null"), file});
    }
    return timer.nsecsElapsed() / 1e9;
}

void decodeCorpus(benchmark::State& state, const QSize& target, const QString& scale)
{
    const QStringList files = CorpusPhotos();
    if (files.isEmpty() || QStandardPaths::findExecutable(QStringLiteral("djpeg")).isEmpty()) {
        state.SkipWithError("set KAVORI_CORPUS to a corpus folder and install djpeg");
        return;
    }
    for (const QString& file : files) // read once so that both sides find it in the page cache
        benchmark::DoNotOptimize(kavori::LoadPicture(file, target));
    double ours = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        for (const QString& file : files)
            benchmark::DoNotOptimize(kavori::LoadPicture(file, target));
        ours += timer.nsecsElapsed() / 1e9;
    }
    double theirs = 0;
    for (qint64 i = 0; i < qint64(state.iterations()); ++i)
        theirs += djpegSeconds(files, scale);
    state.counters["ms_per_photo"] = ours * 1e3 / (double(files.size()) * state.iterations());
    state.counters["djpeg_ms_per_photo"] =
        theirs * 1e3 / (double(files.size()) * state.iterations());
    state.counters["ratio"] = ours / theirs;
}

void BM_CorpusFullDecode(benchmark::State& state)
{
    decodeCorpus(state, QSize(), QStringLiteral("1/1"));
}

void BM_CorpusForScreen(benchmark::State& state)
{
    decodeCorpus(state, QSize(1920, 1080), QStringLiteral("1/2"));
}

void BM_CorpusThumbnails(benchmark::State& state)
{
    decodeCorpus(state, QSize(160, 120), QStringLiteral("1/8"));
}

} // namespace

BENCHMARK(BM_CorpusFullDecode)->Unit(benchmark::kMillisecond)->Iterations(2)->UseRealTime();
BENCHMARK(BM_CorpusForScreen)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
BENCHMARK(BM_CorpusThumbnails)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
