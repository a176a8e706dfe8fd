#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

// The times of one piece of work over several runs. The first run is kept apart: run alone
// (bench/run-fresh.sh gives each benchmark its own process) it is the figure of a fresh
// process, which pays for every page and cache the later runs find ready.
class Runs {
public:
    void add(double ms) { ms_.push_back(ms); }
    bool empty() const { return ms_.empty(); }
    double first() const { return ms_.empty() ? 0 : ms_.front(); }
    double median() const
    {
        if (ms_.empty())
            return 0;
        std::vector<double> sorted = ms_;
        std::sort(sorted.begin(), sorted.end());
        const size_t n = sorted.size();
        return n % 2 ? sorted[n / 2] : (sorted[n / 2 - 1] + sorted[n / 2]) / 2;
    }
    // Counters name_ms (the median) and name_first_ms.
    void report(benchmark::State& state, const std::string& name) const
    {
        state.counters[name + "_ms"] = median();
        state.counters[name + "_first_ms"] = first();
    }

private:
    std::vector<double> ms_;
};
