// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/HostStatistics.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace qk::platform::parse {

/// The lines "cpuN" at the head of /proc/stat, into `info`, whose memory is used again. Columns: user, nice, system,
/// idle, iowait, irq, softirq; system is system, irq and softirq together, idle is idle and iowait. Time of guests is
/// inside user and nice already; steal is left out. False when there is no such line, or one that is damaged.
[[nodiscard]] bool processorTicks(std::string_view stat, ProcessorLoadInfo& info);

/// Whether `stat`, the head of /proc/stat, holds all "cpu" lines it begins with: some other line begins behind them.
[[nodiscard]] bool holdsAllProcessors(std::string_view stat);

/// The counts that /proc/meminfo tells, in pages of `pageSize` bytes; `swapouts` stays 0. Of what it does not name
/// nothing is counted. Nothing when "MemFree" or "AnonPages" is missing.
[[nodiscard]] std::optional<VMStatistics64> memoryStatistics(std::string_view meminfo, std::uint64_t pageSize);

/// "pswpout" of /proc/vmstat: pages written to swap since the start. Nothing when its whole line is not in `vmstat`.
[[nodiscard]] std::optional<std::uint64_t> swapOuts(std::string_view vmstat);

/// The third number of /sys/block/zramN/mm_stat: bytes that the compressed pages occupy.
[[nodiscard]] std::optional<std::uint64_t> compressedBytes(std::string_view memoryStatistics);

/// The numbers N of the devices "/dev/zramN" in /proc/swaps.
[[nodiscard]] std::vector<std::uint32_t> compressedSwaps(std::string_view swaps);

} // namespace qk::platform::parse
