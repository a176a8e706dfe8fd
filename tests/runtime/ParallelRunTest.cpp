#include "runtime/ParallelRun.h"

#include <QList>
#include <QtConcurrent>

#include <gtest/gtest.h>

#include <atomic>

using namespace kavori;

// Every part runs exactly once, also when the callers themselves fill the global pool (as
// thumbnails decoded on all cores do), and no caller waits for a thread that never comes.
TEST(ParallelRunTest, EveryPartRunsOnceEvenFromABusyPool)
{
    QList<int> callers(32);
    std::atomic<int> runs[32][8] = {};
    QtConcurrent::blockingMap(callers, [&](int& caller) {
        const int index = int(&caller - callers.data());
        RunInParallel(8, [&](int part) { ++runs[index][part]; });
    });
    for (auto& caller : runs)
        for (auto& part : caller)
            EXPECT_EQ(part.load(), 1);

    int single = 0;
    RunInParallel(1, [&](int part) { single += part + 1; });
    RunInParallel(0, [&](int) { single += 100; });
    EXPECT_EQ(single, 1);
    EXPECT_GE(ParallelWidth(), 1);
}
