// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

namespace qk::bench {

/// Registers `work`, called once per iteration.
template <typename Work>
void add(const char* job, const std::string& scriptAndSize, const char* who, Work work) {
    const std::string name = std::string{job} + "/" + scriptAndSize + "/" + who;
    benchmark::RegisterBenchmark(name.c_str(), [work = std::move(work)](benchmark::State& state) mutable {
        for (auto unused : state) {
            static_cast<void>(unused);
            work();
            benchmark::ClobberMemory();
        }
    });
}

} // namespace qk::bench
