// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/HostStatistics.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <deque>
#include <mutex>
#include <variant>
#include <vector>

namespace qk::platform::memory {

/// A host whose counters play what was written down for them: each request takes the next answer, and the last answer
/// stays until there is another one. Before the first one was written every request is refused with `ENOENT`. Threads:
/// any, at the same time.
class QK_EXPORT MemoryHostStatistics final : public HostStatistics {
public:
    /// Ticks of one processor: user, system, idle, nice.
    using Ticks = std::array<std::uint32_t, CPU_STATE_MAX>;

    /// The next sample finds these processors, numbered from 0.
    void addProcessorTicks(const std::vector<Ticks>& processors);

    /// The next sample finds these processors, with those numbers, one per processor.
    void addProcessorTicks(const std::vector<Ticks>& processors, const std::vector<std::uint32_t>& numbers);

    /// The next request for ticks is refused with `error`.
    void refuseProcessorTicks(int error);

    /// The next request for memory counters finds these.
    void addMemoryStatistics(const VMStatistics64& statistics);

    /// The next request for memory counters is refused with `error`.
    void refuseMemoryStatistics(int error);

    [[nodiscard]] int hostProcessorInfo(ProcessorLoadInfo& info) const override;
    [[nodiscard]] int hostStatistics64(VMStatistics64& statistics) const override;

private:
    static constexpr int kNothingWritten = ENOENT;

    template <typename Result>
    struct Script {
        std::deque<std::variant<int, Result>> next;
        std::variant<int, Result> last = kNothingWritten;
        [[nodiscard]] int play(Result& result);
    };

    mutable std::mutex mutex_;
    mutable Script<ProcessorLoadInfo> ticks_;
    mutable Script<VMStatistics64> memory_;
};

} // namespace qk::platform::memory
