// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Who reads the network's interfaces how. Every source file of a competitor adds its own when the program starts.
namespace qk::bench {

/// One competitor: `read` reads everything once on a machine of so many interfaces and returns the seconds of processor
/// time that it took outside this thread, which is 0 for what runs inside.
struct Competitor {
    const char* who;
    std::function<double(std::size_t interfaces)> read;
    bool isOutside = false;
};

std::vector<Competitor>& competitors();

/// Adds a competitor whose `work` runs in this thread.
template <typename Work>
bool compete(const char* who, Work work) {
    competitors().push_back({who, [work = std::move(work)](std::size_t interfaces) mutable {
                                 work(interfaces);
                                 benchmark::ClobberMemory();
                                 return 0.0;
                             }});
    return true;
}

/// Starts a program with these ends as its standard input and output, -1 for none; its number, 0 when it cannot be
/// started.
int start(const std::vector<std::string>& words, int input, int output);

} // namespace qk::bench
