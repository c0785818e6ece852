// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/services/HostStatistics.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace qk {

/// `QKHardwareCPUUsageData`: shares of the processors' time, in percent of all ticks of all processors.
struct QKHardwareCPUUsageData {
    double systemLoad = 0; ///< in the kernel
    double userLoad = 0;   ///< in programs, without those that run nice
    double totalLoad = 0;  ///< in use: kernel, programs, nice ones included
    double idleLoad = 0;   ///< idle; with `totalLoad` it makes 100 whenever a tick has passed
};

/// `QKHardwareCPUUsage`: samples the load of all processors. It starts no timer and no thread: the caller samples at
/// its own pace, and each sample covers the time since the previous successful one of the same sampler.
///
/// Linux: /proc/stat. Interrupts count as system time, waiting for input and output as idle time; time that the host of
/// a virtual machine takes away is left out. Threads: a sampler is used by one thread at a time; different samplers are
/// independent.
class QK_EXPORT QKHardwareCPUUsage : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. A fresh sampler of the machine that is installed now. Its first sample covers the time since the machine
    /// was started.
    [[nodiscard]] static std::shared_ptr<QKHardwareCPUUsage> init();

    /// `collectCPUUsageData`. Takes a sample. Nothing when the kernel refuses; the previous sample then stays.
    ///
    /// Deliberate: when no tick has passed every share is NaN, and nothing is rounded or clamped. The counters of the
    /// first sample are read as signed 32-bit numbers, so one beyond 2^31 counts as negative. A sample of another set
    /// of processors than the previous one is taken as a first one.
    [[nodiscard]] std::optional<QKHardwareCPUUsageData> collectCPUUsageData();

    /// `previousCPUInfo`. The tick counters of the previous sample, four a processor (user, system, idle, nice); null
    /// before the first one. Valid until the next sample.
    [[nodiscard]] const std::int32_t* previousCPUInfo() const noexcept {
        return previous_.ticks.empty() ? nullptr : previous_.ticks.data();
    }

    /// `previousCPUInfoCount`. The number of those counters.
    [[nodiscard]] std::uint32_t previousCPUInfoCount() const noexcept {
        return static_cast<std::uint32_t>(previous_.ticks.size());
    }

private:
    explicit QKHardwareCPUUsage(std::shared_ptr<platform::HostStatistics> host);

    std::shared_ptr<platform::HostStatistics> host_;
    platform::ProcessorLoadInfo previous_; // empty before the first sample
    platform::ProcessorLoadInfo next_;     // where the kernel writes: its memory is used again by every second sample
};

} // namespace qk
