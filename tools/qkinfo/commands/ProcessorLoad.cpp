// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/ProcessorLoad.h"

#include <utility>

namespace qk::info {

LoadMeter::LoadMeter(const Clock& clock) : clock_(clock), sampler_(QKHardwareCPUUsage::init()) {
    static_cast<void>(measure());
}

std::optional<ProcessorLoad> LoadMeter::measure() {
    const std::optional<QKHardwareCPUUsageData> shares = sampler_->collectCPUUsageData();
    if (!shares.has_value()) {
        return std::nullopt;
    }
    const std::chrono::nanoseconds now = clock_.elapsed();
    const auto start = std::exchange(start_, now);
    if (!start.has_value()) {
        return std::nullopt;
    }
    const auto covered = std::chrono::round<std::chrono::milliseconds>(now - *start);
    return ProcessorLoad{Milliseconds{static_cast<std::uint64_t>(covered.count())}, *shares};
}

Facts processorFacts(const ProcessorLoad& load) {
    return {
        {"interval_ms", "Measured over", load.covered},
        {"total_percent", "In use", percentContent(load.shares.totalLoad)},
        {"user_percent", "User", percentContent(load.shares.userLoad)},
        {"system_percent", "System", percentContent(load.shares.systemLoad)},
        {"idle_percent", "Idle", percentContent(load.shares.idleLoad)},
    };
}

std::optional<Body> processorLoad(const Surroundings& surroundings) {
    LoadMeter meter(*surroundings.clock);
    surroundings.clock->wait(kShortestMeasurement);
    const std::optional<ProcessorLoad> load = meter.measure();
    return load.has_value() ? std::optional<Body>(processorFacts(*load)) : std::nullopt;
}

} // namespace qk::info
