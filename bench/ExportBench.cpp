// Exporting a show to video: 20 slides of 12 MP photos (4000 x 3000 JPEG) at 1920 x 1080,
// 30 frames a second, each slide 2 s with a transition at the show's default speed, with a
// tone as the show's sound. Reports the video's length over the time taken (real-time
// factor); the export is to keep to at least 3. Beside it (filter VideoQuality), what the
// encoders' settings cost in picture.
#include "export/ExportTestFiles.h"
#include "export/ShowExport.h"
#include "export/ShowFrames.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "support/PhotoLike.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

using namespace kavori;

constexpr int kSlides = 20;
constexpr int kDistinctPhotos = 5;

QString benchFolder()
{
    static QTemporaryDir dir;
    static const bool made = [] {
        for (int i = 0; i < kDistinctPhotos; ++i)
            kavori::test::PhotoLike(4000, 3000, 70 + i)
                .save(dir.path() + QStringLiteral("/photo_%1.jpg").arg(i), "JPEG", 90);
        return true;
    }();
    Q_UNUSED(made);
    return dir.path() + u'/';
}

void exportShow(benchmark::State& state, VideoFormat format)
{
    const QString folder = benchFolder();
    qputenv("KAVORI_HOME", QFile::encodeName(folder + QStringLiteral("home")));
    ResetSettings();
    ResetShow();
    Settings& s = CurrentSettings();
    s.EnableTransitions = true;
    s.SlideInterval = 2;
    for (int i = 0; i < kSlides; ++i) {
        // Files differ slide to slide, as in a real show: every slide is decoded.
        const QString name = folder + QStringLiteral("slide_%1.jpg").arg(i);
        if (!QFile::exists(name))
            QFile::copy(folder + QStringLiteral("photo_%1.jpg").arg(i % kDistinctPhotos), name);
        Slide slide = NewSlide(name);
        slide.SlideShrink = 1;
        slide.SlideTransition = qint16(2 + (i * 7) % 56);
        CurrentShow().slides.append(slide);
    }
    ExportOptions options;
    options.format = format;
    options.size = QSize(1920, 1080);
    options.fps = 30;
    options.output = folder + (format == VideoFormat::WebM ? QStringLiteral("bench.webm")
                                                           : QStringLiteral("bench.mp4"));
    double factor = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        const ExportResult result = ExportShowToVideo(options);
        const double seconds = clock.nsecsElapsed() / 1e9;
        if (!result.written) {
            state.SkipWithError(qPrintable(result.message));
            return;
        }
        factor = result.duration / 1e6 / seconds;
        state.counters["video_s"] = result.duration / 1e6;
        state.counters["frames"] = double(result.frames);
    }
    state.counters["x_realtime"] = factor;
}

// The picture the encoders keep: a show of four of the photos at 1080p30, every fifth frame
// decoded from the file against the frame as drawn. Reports the PSNR over all those frames,
// the lowest frame's and the file's size; the colour's 4:2:0 sets a floor near 37 dB.
void exportQuality(benchmark::State& state, VideoFormat format)
{
    constexpr int kStep = 5;
    const QString folder = benchFolder();
    qputenv("KAVORI_HOME", QFile::encodeName(folder + QStringLiteral("home")));
    ResetSettings();
    ResetShow();
    Settings& s = CurrentSettings();
    s.EnableTransitions = true;
    s.SlideInterval = 2;
    for (int i = 0; i < 4; ++i) {
        Slide slide = NewSlide(folder + QStringLiteral("photo_%1.jpg").arg(i));
        slide.SlideShrink = 1;
        slide.SlideTransition = qint16(2 + (i * 7) % 56);
        CurrentShow().slides.append(slide);
    }
    ExportOptions options;
    options.format = format;
    options.output = folder + (format == VideoFormat::WebM ? QStringLiteral("quality.webm")
                                                           : QStringLiteral("quality.mp4"));
    for (auto _ : state) {
        QVector<QImage> drawn;
        ShowFrames frames(options.size, options.fps, options.seed);
        frames.walk([&drawn](const QImage& frame, qint64 number) {
            if (number % kStep == 0)
                drawn << frame.copy();
            return true;
        });
        const ExportResult result = ExportShowToVideo(options);
        if (!result.written) {
            state.SkipWithError(qPrintable(result.message));
            return;
        }
        const QVector<QImage> decoded = kavori::test::DecodeVideoFrames(options.output, kStep);
        if (decoded.size() != drawn.size()) {
            state.SkipWithError("the file's frames are not the show's");
            return;
        }
        double error = 0;
        double lowest = 1000;
        for (int i = 0; i < drawn.size(); ++i) {
            const double psnr = kavori::test::Psnr(drawn[i], decoded[i]);
            lowest = std::min(lowest, psnr);
            error += psnr >= 1000 ? 0 : 255.0 * 255.0 / std::pow(10.0, psnr / 10);
        }
        state.counters["psnr_dB"] = 10 * std::log10(255.0 * 255.0 * drawn.size() / error);
        state.counters["lowest_dB"] = lowest;
        state.counters["file_kB"] = double(QFile(options.output).size()) / 1024;
    }
}

void BM_VideoQualityMp4(benchmark::State& state)
{
    exportQuality(state, VideoFormat::Mp4);
}
BENCHMARK(BM_VideoQualityMp4)->Unit(benchmark::kSecond)->Iterations(1);

void BM_VideoQualityWebM(benchmark::State& state)
{
    exportQuality(state, VideoFormat::WebM);
}
BENCHMARK(BM_VideoQualityWebM)->Unit(benchmark::kSecond)->Iterations(1);

void BM_ExportMp4_1080p30(benchmark::State& state)
{
    exportShow(state, VideoFormat::Mp4);
}
BENCHMARK(BM_ExportMp4_1080p30)->Unit(benchmark::kSecond)->Iterations(1);

void BM_ExportWebM_1080p30(benchmark::State& state)
{
    exportShow(state, VideoFormat::WebM);
}
BENCHMARK(BM_ExportWebM_1080p30)->Unit(benchmark::kSecond)->Iterations(1);

} // namespace
