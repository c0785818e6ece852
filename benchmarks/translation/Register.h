// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "benchmarks/translation/Catalogue.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace qk::bench {

/// Registers `lookUp`, called once per iteration: with one key again and again, and with all in turn.
template <typename Key, typename LookUp>
void add(const std::string& job, const std::string& who, const std::vector<Key>& keys, LookUp lookUp) {
    const auto work = [&keys, lookUp](benchmark::State& state, std::size_t count) {
        std::size_t index = 0;
        for (auto unused : state) {
            static_cast<void>(unused);
            benchmark::DoNotOptimize(lookUp(keys[index]));
            index = index + 1 < count ? index + 1 : 0;
        }
    };
    benchmark::RegisterBenchmark((job + "/one key/" + who).c_str(), work, std::size_t{1});
    benchmark::RegisterBenchmark((job + "/all keys/" + who).c_str(), work, keys.size());
}

/// Both keep what they refer to for the life of the process.
void registerOurs(const Catalogue& catalogue);
void registerGettext(const Catalogue& catalogue);

} // namespace qk::bench
