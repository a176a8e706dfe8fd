// Decoding speed: a photo-like 4000 x 3000 JPEG at full size, for a 1920 x 1080 screen, and as
// 25 thumbnails of 160 x 120, one at a time and all at once. Each decode for the screen or a
// thumbnail itself uses every core; run the program under `taskset -c 0` for one core.
#include "imaging/PictureLoader.h"
#include "support/PhotoLike.h"

#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QTemporaryDir>
#include <QtConcurrent>

#include <benchmark/benchmark.h>

namespace {

// Written once per run; codes like a 12 MP phone photo (about 2 bits per pixel at q90).
QString photoLikeJpeg(int width, int height)
{
    static QTemporaryDir dir;
    const QString path = dir.path() + QStringLiteral("/photo_%1x%2.jpg").arg(width).arg(height);
    if (!QFile::exists(path))
        kavori::test::PhotoLike(width, height, 42).save(path, "JPEG", 90);
    return path;
}

void BM_JpegFullDecode(benchmark::State& state)
{
    const QString path = photoLikeJpeg(4000, 3000);
    for (auto _ : state)
        benchmark::DoNotOptimize(kavori::LoadPicture(path));
}

void BM_JpegDecodeForScreen(benchmark::State& state)
{
    const QString path = photoLikeJpeg(4000, 3000);
    for (auto _ : state)
        benchmark::DoNotOptimize(kavori::LoadPicture(path, QSize(1920, 1080)));
}

// The same through libjpeg's own 1/2 scaling and a smooth scale (what the loader did before it
// decoded on all cores), for comparison.
void BM_JpegDecodeForScreenLibjpeg(benchmark::State& state)
{
    const QString path = photoLikeJpeg(4000, 3000);
    for (auto _ : state) {
        QImageReader reader(path);
        reader.setScaledSize(QSize(1440, 1080));
        benchmark::DoNotOptimize(reader.read());
    }
}

QStringList thumbnailSources()
{
    QStringList files;
    for (int i = 0; i < 25; ++i)
        files << photoLikeJpeg(4000, 3000);
    return files;
}

void BM_Thumbnails25OneAtATime(benchmark::State& state)
{
    const QStringList files = thumbnailSources();
    for (auto _ : state)
        for (const QString& f : files)
            benchmark::DoNotOptimize(kavori::LoadPicture(f, QSize(160, 120)));
}

void BM_Thumbnails25AllCores(benchmark::State& state)
{
    const QStringList files = thumbnailSources();
    for (auto _ : state) {
        const QList<QImage> thumbs = QtConcurrent::blockingMapped(
            files, [](const QString& f) { return kavori::LoadPicture(f, QSize(160, 120)); });
        benchmark::DoNotOptimize(thumbs);
    }
}

} // namespace

// Wall-clock time throughout: the decoders use every core.
BENCHMARK(BM_JpegFullDecode)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true)
    ->UseRealTime();
BENCHMARK(BM_JpegDecodeForScreen)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true)
    ->UseRealTime();
BENCHMARK(BM_JpegDecodeForScreenLibjpeg)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true)
    ->UseRealTime();
BENCHMARK(BM_Thumbnails25OneAtATime)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true)
    ->UseRealTime();
BENCHMARK(BM_Thumbnails25AllCores)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true)
    ->UseRealTime();
