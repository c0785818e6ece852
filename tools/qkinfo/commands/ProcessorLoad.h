// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/system_info/QKHardwareCPUUsage.h"

#include "tools/qkinfo/Commands.h"

#include <chrono>
#include <memory>
#include <optional>

namespace qk::info {

/// How long a load is measured when nothing else says so: long enough for a good number of ticks of each processor.
inline constexpr std::chrono::milliseconds kShortestMeasurement{250};

/// The shares of the processors' time, and the time that they are shares of.
struct ProcessorLoad {
    Milliseconds covered{};
    QKHardwareCPUUsageData shares;
};

/// Measures the load from one call to the next, the first time from its own beginning.
class LoadMeter {
public:
    explicit LoadMeter(const Clock& clock);

    /// The load since the previous one that was told. Nothing when the machine tells none. The first time that it tells
    /// one after it had told none at the beginning counts as the beginning: nothing as well.
    [[nodiscard]] std::optional<ProcessorLoad> measure();

private:
    const Clock& clock_;
    std::shared_ptr<QKHardwareCPUUsage> sampler_;
    std::optional<std::chrono::nanoseconds> start_; // of the time that the next load covers
};

[[nodiscard]] Facts processorFacts(const ProcessorLoad& load);

/// The load of all processors, over `kShortestMeasurement`.
[[nodiscard]] std::optional<Body> processorLoad(const Surroundings& surroundings);

} // namespace qk::info
