// Today's phone and web pictures: a photo-like 4000 x 3000 (12 MP) HEIC and AVIF decoded at full
// size and for a 1920 x 1080 screen, beside the libraries' own command-line decoders
// (heif-convert, avifdec) decoding the same file in the same run. The files are made once per
// run by heif-enc and avifenc from the photo-like JPEG the other picture benchmarks use.
#include "imaging/PictureLoader.h"
#include "imaging/formats/PictureReader.h"
#include "support/PhotoLike.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

namespace {

QTemporaryDir& workDir()
{
    static QTemporaryDir dir;
    return dir;
}

bool run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

// The 12 MP picture in the given type, made by its library's encoder; empty when the tool is
// missing or fails.
QString photo(const QString& suffix)
{
    const QString jpeg = workDir().path() + QStringLiteral("/photo.jpg");
    if (!QFile::exists(jpeg))
        kavori::test::PhotoLike(4000, 3000, 42).save(jpeg, "JPEG", 95);
    const QString path = workDir().path() + QStringLiteral("/photo.") + suffix;
    if (QFile::exists(path))
        return path;
    // Quality settings that give about 1.5 to 2 bits per pixel, as phones write.
    const bool made =
        suffix == QLatin1String("heic")
            ? run(QStringLiteral("heif-enc"),
                  {QStringLiteral("-q"), QStringLiteral("50"), jpeg, QStringLiteral("-o"), path})
            : run(QStringLiteral("avifenc"),
                  {QStringLiteral("-s"), QStringLiteral("8"), QStringLiteral("-j"),
                   QStringLiteral("all"), QStringLiteral("--min"), QStringLiteral("10"),
                   QStringLiteral("--max"), QStringLiteral("30"), jpeg, path});
    return made ? path : QString();
}

// Seconds the library's own tool takes to decode the file, writing raw YUV (y4m) so that no
// output encoding is counted; the time includes starting the program.
double toolSeconds(const QString& tool, const QString& file)
{
    const QString out = workDir().path() + QStringLiteral("/out.y4m");
    QStringList arguments;
    if (tool == QLatin1String("avifdec"))
        arguments << QStringLiteral("-j") << QStringLiteral("all");
    else
        arguments << QStringLiteral("--quiet");
    arguments << file << out;
    QElapsedTimer timer;
    timer.start();
    run(tool, arguments);
    return timer.nsecsElapsed() / 1e9;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0.0 : values[values.size() / 2];
}

void decode(benchmark::State& state, const QString& suffix, const QString& tool,
            const QSize& target)
{
    const QString file = photo(suffix);
    if (file.isEmpty() || QStandardPaths::findExecutable(tool).isEmpty()) {
        state.SkipWithError("needs heif-enc, heif-convert, avifenc and avifdec");
        return;
    }
    const QImage first = kavori::LoadPicture(file, target); // warms the page cache
    if (first.isNull()) {
        state.SkipWithError("the picture did not decode");
        return;
    }
    // Ours and the tool take turns, so a machine busy with other work weighs on both alike.
    std::vector<double> ours;
    std::vector<double> theirs;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        benchmark::DoNotOptimize(kavori::LoadPicture(file, target));
        ours.push_back(timer.nsecsElapsed() / 1e6);
        state.PauseTiming();
        theirs.push_back(toolSeconds(tool, file) * 1e3);
        state.ResumeTiming();
    }
    state.counters["median_ms"] = median(ours);
    state.counters["tool_median_ms"] = median(theirs);
    state.counters["ratio"] = median(ours) / median(theirs);
    state.counters["file_MB"] = double(QFile(file).size()) / 1e6;
    state.counters["width"] = first.width();
}

void BM_HeicFullDecode(benchmark::State& state)
{
    decode(state, QStringLiteral("heic"), QStringLiteral("heif-convert"), QSize());
}

void BM_HeicForScreen(benchmark::State& state)
{
    decode(state, QStringLiteral("heic"), QStringLiteral("heif-convert"), QSize(1920, 1080));
}

void BM_AvifFullDecode(benchmark::State& state)
{
    decode(state, QStringLiteral("avif"), QStringLiteral("avifdec"), QSize());
}

void BM_AvifForScreen(benchmark::State& state)
{
    decode(state, QStringLiteral("avif"), QStringLiteral("avifdec"), QSize(1920, 1080));
}

// The scale to the screen alone, from the 12 MP picture as a reader hands it over.
void BM_FitDecodedForScreen(benchmark::State& state)
{
    const QImage picture =
        kavori::test::PhotoLike(4000, 3000, 42)
            .convertToFormat(state.range(0) ? QImage::Format_RGBA8888 : QImage::Format_ARGB32);
    for (auto _ : state)
        benchmark::DoNotOptimize(kavori::FitDecoded(picture, QSize(1920, 1080)));
}

} // namespace

BENCHMARK(BM_FitDecodedForScreen)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_HeicFullDecode)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_HeicForScreen)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_AvifFullDecode)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_AvifForScreen)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
