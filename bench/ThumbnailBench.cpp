// The thumbnail browser's page on the shared corpus (KAVORI_CORPUS=DIR): 25 of its 4000 x 3000
// photos made into 160 x 120 thumbnails by the browser's loader, against two vipsthumbnail
// processes side by side (13 and 12 files) making the same 25 in the same run; "ratio" is our
// time over theirs. Then the first page of a folder of 10,000 pictures against one of 25: both
// folders are hard links to the corpus's photos, made once in the temporary folder.
#include "browse/ThumbnailLoader.h"
#include "browse/ThumbnailPages.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <unistd.h>

#include "Corpus.h"

#include <benchmark/benchmark.h>

namespace {

// Seconds until the loader has handed over every cell of the page.
double pageSeconds(const QStringList& page, const QStringList& ahead = {})
{
    kavori::ThumbnailLoader loader;
    QEventLoop loop;
    QObject::connect(&loader, &kavori::ThumbnailLoader::pageFinished, &loop, &QEventLoop::quit);
    QElapsedTimer timer;
    timer.start();
    loader.request(page, ahead);
    if (loader.busy())
        loop.exec();
    return timer.nsecsElapsed() / 1e9;
}

double vipsSeconds(const QStringList& files, const QString& out)
{
    auto start = [&](const QStringList& part) {
        auto* p = new QProcess;
        QStringList args = part;
        args << QStringLiteral("-s") << QStringLiteral("160x120") << QStringLiteral("-o")
             << out + QStringLiteral("/%s.jpg");
        p->start(QStringLiteral("vipsthumbnail"), args);
        return p;
    };
    QElapsedTimer timer;
    timer.start();
    QProcess* a = start(files.mid(0, 13));
    QProcess* b = start(files.mid(13));
    a->waitForFinished(-1);
    b->waitForFinished(-1);
    const double seconds = timer.nsecsElapsed() / 1e9;
    delete a;
    delete b;
    return seconds;
}

void BM_ThumbnailPageCorpus(benchmark::State& state)
{
    const QStringList files = CorpusPhotos().mid(0, 25);
    if (files.size() < 25 ||
        QStandardPaths::findExecutable(QStringLiteral("vipsthumbnail")).isEmpty()) {
        state.SkipWithError("set KAVORI_CORPUS to a corpus folder and install libvips-tools");
        return;
    }
    QTemporaryDir out;
    pageSeconds(files); // both sides then find the files in the page cache
    double ours = 0;
    double theirs = 0;
    for (auto _ : state) {
        ours += pageSeconds(files);
        state.PauseTiming();
        theirs += vipsSeconds(files, out.path());
        state.ResumeTiming();
    }
    state.counters["ms_page"] = ours * 1e3 / double(state.iterations());
    state.counters["vips_ms_page"] = theirs * 1e3 / double(state.iterations());
    state.counters["ratio"] = ours / theirs;
}

// A folder of count hard links to the corpus's photos, made once.
QString linkedFolder(int count)
{
    const QStringList photos = CorpusPhotos();
    const QString folder =
        QDir::tempPath() + QStringLiteral("/kavori-bench-thumbs-") + QString::number(count) + u'/';
    if (QDir(folder).exists() && QDir(folder).count() >= uint(count) + 2)
        return folder;
    QDir().mkpath(folder);
    for (int i = 0; i < count; ++i) {
        const QString link =
            folder + QStringLiteral("photo%1.jpg").arg(i + 1, 5, 10, QLatin1Char('0'));
        if (!QFile::exists(link) && ::link(QFile::encodeName(photos[i % photos.size()]).constData(),
                                           QFile::encodeName(link).constData()) != 0)
            return {};
    }
    return folder;
}

// From choosing the folder to its first page complete: listing, sorting and 25 thumbnails.
void firstPage(benchmark::State& state, int count)
{
    if (CorpusPhotos().isEmpty()) {
        state.SkipWithError("set KAVORI_CORPUS to a corpus folder");
        return;
    }
    const QString folder = linkedFolder(count);
    if (folder.isEmpty()) {
        state.SkipWithError("cannot make hard links in the temporary folder");
        return;
    }
    double listing = 0;
    double page = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        const QStringList files = kavori::ThumbnailFiles(folder);
        listing += timer.nsecsElapsed() / 1e9;
        page += pageSeconds(files.mid(0, 25), files.mid(25, 25));
    }
    state.counters["listing_ms"] = listing * 1e3 / double(state.iterations());
    state.counters["first_page_ms"] = (listing + page) * 1e3 / double(state.iterations());
}

void BM_FirstPage25Files(benchmark::State& state)
{
    firstPage(state, 25);
}

void BM_FirstPage10000Files(benchmark::State& state)
{
    firstPage(state, 10000);
}

} // namespace

BENCHMARK(BM_ThumbnailPageCorpus)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_FirstPage25Files)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_FirstPage10000Files)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
