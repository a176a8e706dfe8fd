// Decoding speed: a photo-like 4000 x 3000 JPEG at full size, for a 1920 x 1080 screen, and as
// 25 thumbnails of 160 x 120, one at a time and all at once. Each decode for the screen or a
// thumbnail itself uses every core; run the program under `taskset -c 0` for one core.
#include "imaging/PictureLoader.h"

#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtConcurrent>

#include <benchmark/benchmark.h>

namespace {

// Smooth gradients, soft shapes and sensor-like noise compress like a real photo does.
QString photoLikeJpeg(int width, int height)
{
    static QTemporaryDir dir;
    const QString path = dir.path() + QStringLiteral("/photo_%1x%2.jpg").arg(width).arg(height);
    if (QFile::exists(path))
        return path;
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, height);
    sky.setColorAt(0, QColor(70, 120, 200));
    sky.setColorAt(0.6, QColor(200, 210, 230));
    sky.setColorAt(1, QColor(60, 90, 40));
    painter.fillRect(image.rect(), sky);
    QRandomGenerator rng(42);
    for (int i = 0; i < 400; ++i) {
        QRadialGradient blob(rng.bounded(width), rng.bounded(height), 50 + rng.bounded(400));
        blob.setColorAt(0, QColor(rng.bounded(256), rng.bounded(256), rng.bounded(256), 120));
        blob.setColorAt(1, QColor(0, 0, 0, 0));
        painter.fillRect(image.rect(), blob);
    }
    painter.end();
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const int n = int(rng.bounded(17)) - 8;
            const QRgb c = line[x];
            line[x] = qRgb(qBound(0, qRed(c) + n, 255), qBound(0, qGreen(c) + n, 255),
                           qBound(0, qBlue(c) + n, 255));
        }
    }
    image.save(path, "JPEG", 90);
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
