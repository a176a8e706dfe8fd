// The shared corpus (make-corpus.sh DIR, then KAVORI_CORPUS=DIR) decoded at full size, for a
// 1920 x 1080 and a 3840 x 2160 screen and as 160 x 120 thumbnails, and a progressive copy of
// one of its photos at full size, for the screen and as a thumbnail, each beside djpeg doing
// the same decoding (-scale 1/1, 1/2, 1/8) in the same run, photo by photo in turn. djpeg is
// timed as a whole process writing to /dev/null, the strictest fair reference: every one of
// its runs is a fresh process. Figures are per photo: the median of five rounds over the
// photos, and the first photo's decode (in a process of its own, bench/run-fresh.sh, a fresh
// process's figure). "ratio" is our median over djpeg's.
#include "imaging/PictureLoader.h"

#include "Corpus.h"
#include "Figures.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

constexpr int kRounds = 5;

double msOf(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

double djpegMs(const QString& file, const QString& scale)
{
    QElapsedTimer timer;
    timer.start();
    QProcess::execute(QStringLiteral("djpeg"),
                      {QStringLiteral("-scale"), scale, QStringLiteral("-outfile"),
                       QStringLiteral("/dev/null"), file});
    return msOf(timer);
}

bool haveDjpeg(benchmark::State& state, const QStringList& files)
{
    if (files.isEmpty() || QStandardPaths::findExecutable(QStringLiteral("djpeg")).isEmpty()) {
        state.SkipWithError("set KAVORI_CORPUS to a corpus folder and install djpeg");
        return false;
    }
    return true;
}

// Rounds over the files, ours and djpeg's in turn for each file.
void decodeCorpus(benchmark::State& state, const QStringList& files, const QSize& target,
                  const QString& scale)
{
    if (!haveDjpeg(state, files))
        return;
    Runs ours, theirs;
    double firstOurs = 0, firstTheirs = 0;
    for (auto _ : state) {
        for (int round = 0; round < kRounds; ++round) {
            double oursMs = 0, theirsMs = 0;
            for (const QString& file : files) {
                QElapsedTimer timer;
                timer.start();
                benchmark::DoNotOptimize(kavori::LoadPicture(file, target));
                const double ms = msOf(timer);
                const double reference = djpegMs(file, scale);
                if (round == 0 && &file == &files.front()) {
                    firstOurs = ms;
                    firstTheirs = reference;
                }
                oursMs += ms;
                theirsMs += reference;
            }
            ours.add(oursMs / double(files.size()));
            theirs.add(theirsMs / double(files.size()));
        }
    }
    state.counters["ms"] = ours.median();
    state.counters["first_ms"] = firstOurs;
    state.counters["djpeg_ms"] = theirs.median();
    state.counters["djpeg_first_ms"] = firstTheirs;
    state.counters["ratio"] = ours.median() / theirs.median();
}

QStringList firstPhotos(int count)
{
    return CorpusPhotos().mid(0, count);
}

void BM_CorpusFullDecode(benchmark::State& state)
{
    decodeCorpus(state, firstPhotos(12), QSize(), QStringLiteral("1/1"));
}

void BM_CorpusForScreen(benchmark::State& state)
{
    decodeCorpus(state, firstPhotos(12), QSize(1920, 1080), QStringLiteral("1/2"));
}

// A 3840 x 2160 screen wants 2880 x 2160 of a 4000 x 3000 photo, more than half its size: a
// full decode and a scale, beside djpeg's full decode alone.
void BM_CorpusFor4kScreen(benchmark::State& state)
{
    decodeCorpus(state, firstPhotos(12), QSize(3840, 2160), QStringLiteral("1/1"));
}

// 25 different photos, as a page of the thumbnail browser holds.
void BM_CorpusThumbnails(benchmark::State& state)
{
    decodeCorpus(state, firstPhotos(25), QSize(160, 120), QStringLiteral("1/8"));
}

// The corpus's first photo made progressive by jpegtran (the same coefficients, coded in
// spectral scans as cameras and web tools write them); empty when that cannot be done.
QString progressiveCopy(benchmark::State& state)
{
    const QStringList photos = firstPhotos(1);
    if (!haveDjpeg(state, photos))
        return {};
    static QTemporaryDir dir;
    const QString progressive = dir.path() + QStringLiteral("/progressive.jpg");
    if (!QFile::exists(progressive) &&
        QProcess::execute(QStringLiteral("jpegtran"),
                          {QStringLiteral("-progressive"), QStringLiteral("-outfile"), progressive,
                           photos.front()}) != 0) {
        state.SkipWithError("jpegtran (libjpeg-turbo-progs) is needed");
        return {};
    }
    return progressive;
}

void decodeProgressive(benchmark::State& state, const QSize& target, const QString& scale)
{
    const QString progressive = progressiveCopy(state);
    if (progressive.isEmpty())
        return;
    QStringList files;
    for (int i = 0; i < 4; ++i)
        files << progressive;
    decodeCorpus(state, files, target, scale);
}

void BM_CorpusProgressiveForScreen(benchmark::State& state)
{
    decodeProgressive(state, QSize(1920, 1080), QStringLiteral("1/2"));
}

// Every scan decoded whole, as stepping through a folder of progressive photos needs.
void BM_CorpusProgressiveFullDecode(benchmark::State& state)
{
    decodeProgressive(state, QSize(), QStringLiteral("1/1"));
}

// At 1/8 only the DC values count: every AC scan is passed over undecoded.
void BM_CorpusProgressiveThumbnail(benchmark::State& state)
{
    decodeProgressive(state, QSize(160, 120), QStringLiteral("1/8"));
}

} // namespace

BENCHMARK(BM_CorpusFullDecode)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_CorpusForScreen)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_CorpusFor4kScreen)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_CorpusThumbnails)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(BM_CorpusProgressiveForScreen)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();
BENCHMARK(BM_CorpusProgressiveFullDecode)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();
BENCHMARK(BM_CorpusProgressiveThumbnail)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->UseRealTime();
