// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/sampling/Register.h"

#include <statgrab.h>

#include <cstddef>

namespace qk::bench {
namespace {

void begin() {
    static const sg_error result = sg_init(1);
    static_cast<void>(result);
}

// It knows the processors only all together.
const bool kProcessors = compete("libstatgrab", Job::processors, [] {
    begin();
    benchmark::DoNotOptimize(sg_get_cpu_stats(nullptr));
});
const bool kMemory = compete("libstatgrab", Job::memory, [] {
    begin();
    benchmark::DoNotOptimize(sg_get_mem_stats(nullptr));
    benchmark::DoNotOptimize(sg_get_page_stats(nullptr));
});
const bool kProcesses = compete("libstatgrab", Job::processes, [] {
    begin();
    std::size_t count = 0;
    benchmark::DoNotOptimize(sg_get_process_stats(&count));
});
const bool kVolumes = compete("libstatgrab", Job::volumes, [] {
    begin();
    std::size_t count = 0;
    benchmark::DoNotOptimize(sg_get_fs_stats(&count));
});

} // namespace
} // namespace qk::bench
