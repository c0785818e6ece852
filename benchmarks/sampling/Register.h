// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// Who does which job how. Every source file of a competitor adds its own when the program starts.
namespace qk::bench {

enum class Job { processors, memory, processes, volumes };

/// One competitor at one job: `sample` takes one sample and returns the seconds of processor time that it took outside
/// this thread, which is 0 for what runs inside.
struct Competitor {
    const char* who;
    Job job;
    std::function<double()> sample;
    bool isOutside = false;
};

std::vector<Competitor>& competitors();

/// Adds a competitor whose `work` runs in this thread.
template <typename Work>
bool compete(const char* who, Job job, Work work) {
    competitors().push_back({who, job, [work = std::move(work)]() mutable {
                                 work();
                                 benchmark::ClobberMemory();
                                 return 0.0;
                             }});
    return true;
}

} // namespace qk::bench
