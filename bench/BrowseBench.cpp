// Stepping through a folder of 4000 x 3000 photos in the main window: the time the window is
// busy when the user presses Next after looking at a picture for 300 ms, up to the new picture
// painted at the window's size, with the neighbours read ahead (as the window does) and, for
// comparison, decoded only when asked. Median of the steps and the first step.
#include "imaging/PictureLoader.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include "Figures.h"

#include <benchmark/benchmark.h>

namespace {

using namespace kavori;

QString photoFolder()
{
    static QTemporaryDir dir;
    static const bool made = [] {
        QImage image(4000, 3000, QImage::Format_RGB32);
        QRandomGenerator rng(5);
        for (int y = 0; y < 3000; ++y) {
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < 4000; ++x)
                line[x] = qRgb((x / 16 + int(rng.bounded(12))) & 0xff,
                               (y / 12 + int(rng.bounded(12))) & 0xff, 120);
        }
        for (int i = 0; i < 8; ++i)
            image.save(dir.path() + QStringLiteral("/photo_%1.jpg").arg(i), "JPEG", 90);
        return true;
    }();
    Q_UNUSED(made);
    return dir.path() + u'/';
}

void BM_BrowseNextWithReadAhead(benchmark::State& state)
{
    const QString folder = photoFolder();
    qputenv("KAVORI_HOME", QFile::encodeName(folder + QStringLiteral("home")));
    ResetSettings();
    CurrentSettings().AutosizeWindow = false;
    MainViewFrm window;
    window.resize(1280, 800);
    window.show();
    window.openImage(folder + QStringLiteral("photo_0.jpg"));
    QAction* next = window.menus().action(QStringLiteral("mnuBrowseNext"));
    QAction* first = window.menus().action(QStringLiteral("mnuBrowseFirst"));
    Runs steps;
    for (auto _ : state) {
        state.PauseTiming();
        if (window.document().currentFile().endsWith(QLatin1String("photo_7.jpg")))
            first->trigger();
        QTest::qWait(300); // the user looks at the picture
        state.ResumeTiming();
        QElapsedTimer timer;
        timer.start();
        next->trigger();
        window.repaint(); // the new picture scaled to the window and drawn
        steps.add(double(timer.nsecsElapsed()) / 1e6);
    }
    steps.report(state, "busy");
}

void BM_DecodeWhenAsked(benchmark::State& state)
{
    const QString folder = photoFolder();
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(LoadPicture(folder + QStringLiteral("photo_%1.jpg").arg(i++ % 8)));
}

} // namespace

BENCHMARK(BM_BrowseNextWithReadAhead)->Unit(benchmark::kMillisecond)->Iterations(14);
BENCHMARK(BM_DecodeWhenAsked)->Unit(benchmark::kMillisecond)->Iterations(8);
