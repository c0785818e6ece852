// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/sampling/Register.h"

#include <array>

extern "C" {
#include <libproc2/meminfo.h>
#include <libproc2/pids.h>
#include <libproc2/stat.h>
#include <libproc2/vmstat.h>
}

namespace qk::bench {
namespace {

// Its objects are kept between samples, as its own programs keep them.
const bool kProcessors = compete("libproc2", Job::processors, [info = static_cast<stat_info*>(nullptr)]() mutable {
    static std::array items{STAT_TIC_ID, STAT_TIC_SUM_USER, STAT_TIC_SUM_SYSTEM, STAT_TIC_SUM_IDLE, STAT_TIC_NICE};
    if (info == nullptr) {
        procps_stat_new(&info);
    }
    benchmark::DoNotOptimize(procps_stat_reap(info, STAT_REAP_CPUS_ONLY, items.data(), static_cast<int>(items.size())));
});

struct MemoryInfo {
    meminfo_info* memory = nullptr;
    vmstat_info* vmstat = nullptr;
};
const bool kMemory = compete("libproc2", Job::memory, [info = MemoryInfo()]() mutable {
    static std::array items{MEMINFO_MEM_FREE,   MEMINFO_MEM_ANON,   MEMINFO_MEM_CACHED,        MEMINFO_MEM_BUFFERS,
                            MEMINFO_MEM_SHARED, MEMINFO_MEM_LOCKED, MEMINFO_MEM_SLAB_UNRECLAIM};
    static std::array swap{VMSTAT_PSWPOUT};
    if (info.memory == nullptr) {
        procps_meminfo_new(&info.memory);
        procps_vmstat_new(&info.vmstat);
    }
    benchmark::DoNotOptimize(procps_meminfo_select(info.memory, items.data(), static_cast<int>(items.size())));
    benchmark::DoNotOptimize(procps_vmstat_select(info.vmstat, swap.data(), static_cast<int>(swap.size())));
});

const bool kProcesses = compete("libproc2", Job::processes, [info = static_cast<pids_info*>(nullptr)]() mutable {
    static std::array items{PIDS_ID_PID, PIDS_STATE, PIDS_CMD};
    if (info == nullptr) {
        procps_pids_new(&info, items.data(), static_cast<int>(items.size()));
    }
    benchmark::DoNotOptimize(procps_pids_reap(info, PIDS_FETCH_TASKS_ONLY));
});

} // namespace
} // namespace qk::bench
