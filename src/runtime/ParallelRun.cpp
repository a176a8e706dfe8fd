#include "ParallelRun.h"

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <memory>
#include <vector>

namespace kavori {

namespace {

// A pool of its own: its tasks never wait on anything, so they cannot be stuck behind callers
// that block on them in the global pool.
QThreadPool& partPool()
{
    static QThreadPool pool;
    static const bool sized = [] {
        pool.setMaxThreadCount(qMax(1, QThread::idealThreadCount()));
        pool.setExpiryTimeout(30000);
        return true;
    }();
    Q_UNUSED(sized);
    return pool;
}

// Shared with the pool tasks, which may start after the caller has returned; such a task finds
// every part claimed and never touches the work function.
struct Parts {
    explicit Parts(int count, const std::function<void(int)>& work)
        : claimed(std::make_unique<std::atomic<bool>[]>(count)), work(&work), count(count)
    {
        for (int i = 0; i < count; ++i)
            claimed[i] = false;
    }
    bool runOne(int i)
    {
        if (claimed[i].exchange(true))
            return false;
        (*work)(i);
        done.release();
        return true;
    }
    std::unique_ptr<std::atomic<bool>[]> claimed;
    const std::function<void(int)>* work;
    QSemaphore done;
    int count;
};

} // namespace

int ParallelWidth()
{
    return qMax(1, QThread::idealThreadCount());
}

void RunInParallel(int parts, const std::function<void(int)>& work)
{
    if (parts <= 0)
        return;
    if (parts == 1) {
        work(0);
        return;
    }
    auto shared = std::make_shared<Parts>(parts, work);
    for (int i = 1; i < parts; ++i)
        partPool().start([shared, i] { shared->runOne(i); });
    for (int i = 0; i < parts; ++i)
        shared->runOne(i);
    shared->done.acquire(parts);
}

} // namespace kavori
