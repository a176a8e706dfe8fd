// Exporting a show to video: 20 slides of 12 MP photos (4000 x 3000 JPEG) at 1920 x 1080,
// 30 frames a second, each slide 2 s with a transition at the show's default speed, with a
// tone as the show's sound. Reports the video's length over the time taken (real-time
// factor); the export is to keep to at least 3.
#include "export/ShowExport.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "support/PhotoLike.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

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
