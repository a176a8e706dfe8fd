// The slide show editor on a show of 30,000 slides: moving a selection of 1,000 lines spread
// over the show (down one place, and to the top), and saving the show through the editor's
// save (names made relative to the show's folder, no copies).
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

using namespace kavori;

class NoProgress final : public Progress {
public:
    void setCaption(const QString&) override {}
    void setMaximum(int) override {}
    void setValue(int) override {}
    bool cancelled() override { return false; }
};

QTemporaryDir& folder()
{
    static QTemporaryDir dir;
    return dir;
}

void makeShow()
{
    qputenv("KAVORI_HOME", QFile::encodeName(folder().path() + QStringLiteral("/home")));
    ResetSettings();
    ResetShow();
    for (int i = 0; i < kMaxEditorSlides; ++i) {
        Slide slide = NewSlide(folder().path() + QStringLiteral("/photo_%1.jpg").arg(i));
        slide.SlideDescription = QStringLiteral("Slide number %1 of the long show").arg(i);
        slide.SlideTransition = qint16(i % 58);
        CurrentShow().slides.append(slide);
    }
}

QVector<int> spreadSelection()
{
    QVector<int> lines;
    for (int i = 0; i < 1000; ++i)
        lines << 15 + i * 29;
    return lines;
}

void BM_EditorMoveThousandDown(benchmark::State& state)
{
    makeShow();
    QVector<int> selection = spreadSelection();
    for (auto _ : state) {
        const ListResult r = MoveSlides(CurrentShow(), selection, MoveKind::Down);
        selection = r.selection;
        if (!r.message.isEmpty())
            selection = spreadSelection();
    }
}

void BM_EditorMoveThousandToTop(benchmark::State& state)
{
    makeShow();
    for (auto _ : state)
        benchmark::DoNotOptimize(MoveSlides(CurrentShow(), spreadSelection(), MoveKind::Top));
}

void BM_EditorSave30000(benchmark::State& state)
{
    makeShow();
    const QString path = folder().path() + QStringLiteral("/big.KAV");
    NoProgress progress;
    for (auto _ : state) {
        CurrentShow().changed = true;
        benchmark::DoNotOptimize(SaveSlideShow(path, &progress));
    }
}

} // namespace

BENCHMARK(BM_EditorMoveThousandDown)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_EditorMoveThousandToTop)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_EditorSave30000)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
