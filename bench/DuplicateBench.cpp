// The duplicate file finder over the shared corpus's tree of 200,000 files (make-corpus.sh DIR,
// then KAVORI_CORPUS=DIR). The name search (walk and grouping, as the finder's worker does it)
// runs beside the standard tools doing the same grouping in the same run:
//   find DIR -type f | awk -F/ '{print toupper($NF)}' | sort | uniq -d
// (with LC_ALL=C, their fastest). "ratio" is our time over theirs. The content mode (same walk,
// then size, first 4 KiB and whole-file hashes on all cores) is timed on the same tree.
#include "fileutil/DuplicateSearch.h"

#include "Corpus.h"

#include <QElapsedTimer>
#include <QProcess>

#include <benchmark/benchmark.h>

namespace {

// The tree's files are all pictures; the finder's full list of types is used anyway.
QStringList types()
{
    return kavori::DuplicateExtensions(true, true);
}

// Seconds the shell pipeline takes, and the number of duplicate names it printed.
double toolSeconds(const QString& tree, int* groups)
{
    QElapsedTimer timer;
    timer.start();
    QProcess shell;
    shell.start(QStringLiteral("sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("LC_ALL=C find \"$0\" -type f | LC_ALL=C awk -F/ "
                                "'{print toupper($NF)}' | LC_ALL=C sort | LC_ALL=C uniq -d"),
                 tree});
    shell.waitForFinished(-1);
    const double seconds = timer.nsecsElapsed() / 1e9;
    *groups = int(shell.readAllStandardOutput().count('\n'));
    return seconds;
}

void BM_CorpusDuplicateNames(benchmark::State& state)
{
    const QString tree = CorpusTree();
    if (tree.isEmpty()) {
        state.SkipWithError("set KAVORI_CORPUS to a corpus folder made by make-corpus.sh");
        return;
    }
    kavori::SearchState warm; // one walk first, so both sides find the folders in the cache
    benchmark::DoNotOptimize(kavori::SearchSameNames({tree}, types(), warm).fileCount());
    double ours = 0;
    int groups = 0;
    int files = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        kavori::SearchState search;
        const kavori::NameGroups found = kavori::SearchSameNames({tree}, types(), search);
        ours += timer.nsecsElapsed() / 1e9;
        groups = int(found.groups().size());
        files = found.fileCount();
    }
    double theirs = 0;
    int toolGroups = 0;
    for (qint64 i = 0; i < qint64(state.iterations()); ++i)
        theirs += toolSeconds(tree, &toolGroups);
    state.counters["files"] = files;
    state.counters["groups"] = groups;
    state.counters["tool_groups"] = toolGroups;
    state.counters["tool_ms"] = theirs * 1e3 / double(state.iterations());
    state.counters["ratio"] = ours / theirs;
}

void BM_CorpusDuplicateContent(benchmark::State& state)
{
    const QString tree = CorpusTree();
    if (tree.isEmpty()) {
        state.SkipWithError("set KAVORI_CORPUS to a corpus folder made by make-corpus.sh");
        return;
    }
    int groups = 0;
    int copies = 0;
    for (auto _ : state) {
        kavori::SearchState search;
        const QStringList files = kavori::FindSearchFiles({tree}, types(), search);
        const QVector<QStringList> same = kavori::GroupSameContent(files, search);
        groups = int(same.size());
        copies = 0;
        for (const QStringList& g : same)
            copies += int(g.size());
    }
    state.counters["groups"] = groups;
    state.counters["files_in_groups"] = copies;
}

} // namespace

BENCHMARK(BM_CorpusDuplicateNames)->Unit(benchmark::kMillisecond)->Iterations(5)->UseRealTime();
BENCHMARK(BM_CorpusDuplicateContent)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();
