// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/KeptFile.h"
#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/HostStatistics.h"

#include <mutex>
#include <optional>
#include <vector>

namespace qk::platform {

/// Counters of the host from the files under `LinuxRoot`:
///
/// - ticks of 1/100 s: /proc/stat, lines "cpuN". user: user; system: system, irq and softirq; idle: idle and iowait;
///   nice: nice. Time of guests is inside user and nice already, stolen time is left out.
/// - memory: /proc/meminfo. free: MemFree; wired: SUnreclaim, KernelStack, PageTables, Percpu, VmallocUsed, Mlocked,
///   huge pages; compressed: Zswap and the memory of the zram devices that are swap (/proc/swaps, mm_stat in
///   /sys/block/zramN); file-backed: Cached and Buffers
///   without Shmem; anonymous: AnonPages and Shmem. Locked anonymous pages count in both.
/// - swapped out: "pswpout" of /proc/vmstat; 0 where the kernel has no swap.
class LinuxHostStatistics final : public HostStatistics {
public:
    explicit LinuxHostStatistics(const LinuxRoot& root = {});

    [[nodiscard]] int hostProcessorInfo(ProcessorLoadInfo& info) const override;
    [[nodiscard]] int hostStatistics64(VMStatistics64& statistics) const override;

private:
    [[nodiscard]] std::uint64_t bytesCompressedByZram() const;

    LinuxRoot root_;
    KeptFile stat_;
    KeptFile meminfo_;
    mutable std::mutex mutex_; // over what is below
    KeptFile vmstat_;
    KeptFile swaps_;
    mutable std::optional<std::vector<KeptFile>> zram_; // mm_stat of the devices that are swap
};

} // namespace qk::platform
