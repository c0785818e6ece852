// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>

namespace qk::platform {

/// Facts that cannot change while a process runs, kept once read. 0: not read yet.
/// One cache belongs to one set of services, so a new machine starts without any. Threads: any, at the same time; a
/// race repeats a read.
struct FactCache {
    std::atomic<std::uint32_t> physicalProcessors{0};
    std::atomic<std::uint32_t> logicalProcessors{0};
    std::atomic<std::uint32_t> maximumFrequency{0}; ///< MHz
    std::atomic<std::uint64_t> physicalMemory{0};   ///< bytes
    std::atomic<std::uint64_t> pageSize{0};         ///< bytes
};

} // namespace qk::platform
