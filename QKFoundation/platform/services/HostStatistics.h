// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qk::platform {

/// The places of a processor's four tick counters.
enum ProcessorState : std::size_t { CPU_STATE_USER, CPU_STATE_SYSTEM, CPU_STATE_IDLE, CPU_STATE_NICE, CPU_STATE_MAX };

/// The cumulative tick counters of all processors that are online.
struct ProcessorLoadInfo {
    /// Four counters a processor, in the order of `ProcessorState`; unsigned, cut to 32 bits, handed out as signed
    /// ones.
    std::vector<std::int32_t> ticks;
    /// The processors' own numbers, one per four counters. Two samples can be compared only when these are equal.
    std::vector<std::uint32_t> processors;
};

/// The counters of the virtual-memory system that are asked for, in pages.
struct VMStatistics64 {
    std::uint32_t free_count = 0;            ///< free
    std::uint32_t wire_count = 0;            ///< wired down
    std::uint32_t compressor_page_count = 0; ///< occupied by the compressor
    std::uint32_t external_page_count = 0;   ///< backed by files
    std::uint32_t internal_page_count = 0;   ///< anonymous
    std::uint64_t swapouts = 0;              ///< swapped out since the start, cumulative
};

/// Counters of the host as a whole. Threads: any, at the same time.
class QK_EXPORT HostStatistics {
public:
    HostStatistics() = default;
    HostStatistics(const HostStatistics&) = delete;
    HostStatistics& operator=(const HostStatistics&) = delete;
    virtual ~HostStatistics();

    /// `host_processor_info` with the flavor `PROCESSOR_CPU_LOAD_INFO`. Fills `info`, whose memory is used again, and
    /// answers 0, or leaves it in no particular state and answers an error number of <cerrno>.
    [[nodiscard]] virtual int hostProcessorInfo(ProcessorLoadInfo& info) const = 0;

    /// `host_statistics64` with the flavor `HOST_VM_INFO64`. Fills `statistics` and answers 0, or an error number of
    /// <cerrno>.
    [[nodiscard]] virtual int hostStatistics64(VMStatistics64& statistics) const = 0;
};

} // namespace qk::platform
