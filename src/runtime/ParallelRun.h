#pragma once

#include <functional>

namespace kavori {

// Runs work(0) ... work(parts - 1) on the calling thread and the cores that are free, and
// returns when all are done. The caller takes any part no pool thread has started, so nested
// calls from pool threads never wait on a full pool.
void RunInParallel(int parts, const std::function<void(int)>& work);

// How many parts are worth making for work that parallelises well.
int ParallelWidth();

} // namespace kavori
