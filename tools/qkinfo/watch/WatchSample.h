// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/commands/MemoryUse.h"
#include "tools/qkinfo/commands/Processes.h"
#include "tools/qkinfo/commands/ProcessorLoad.h"
#include "tools/qkinfo/commands/Volumes.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace qk::info {

/// What the machine told at one moment. Nothing in the place of what it refused to tell.
struct WatchSample {
    Moment time{};
    std::optional<ProcessorLoad> processors;
    std::optional<MemoryUse> memory;
    std::vector<QKHardwareVolumeUsageData> volumes;
    std::optional<QKHardwareProcessUsageData> processes;
};

/// The share of the installed memory that is used. Nothing when one of the two is not known.
[[nodiscard]] std::optional<double> memoryPercent(const WatchSample& sample);

/// The share of the processors' time that is used. Nothing when no time has passed for them.
[[nodiscard]] std::optional<double> processorPercent(const WatchSample& sample);

/// The share of a volume that is used.
[[nodiscard]] std::optional<double> volumePercent(const QKHardwareVolumeUsageData& volume);

/// The last sample, and how the shares came to be what they are.
class WatchHistory {
public:
    using Shares = std::deque<std::optional<double>>; ///< in percent, the latest last

    void add(WatchSample sample);

    [[nodiscard]] bool isEmpty() const { return samples_ == 0; }
    [[nodiscard]] std::size_t samples() const { return samples_; }
    [[nodiscard]] const WatchSample& latest() const { return latest_; }
    [[nodiscard]] const Shares& processors() const { return processors_; }
    [[nodiscard]] const Shares& memory() const { return memory_; }

private:
    std::size_t samples_ = 0;
    WatchSample latest_;
    Shares processors_;
    Shares memory_;
};

/// Where samples come from.
class WatchSource {
public:
    WatchSource() = default;
    WatchSource(const WatchSource&) = delete;
    WatchSource& operator=(const WatchSource&) = delete;
    virtual ~WatchSource() = default;

    [[nodiscard]] virtual WatchSample take() = 0;
};

/// The machine that is installed. The first sample covers the time since this was made.
class MachineSource final : public WatchSource {
public:
    explicit MachineSource(const Clock& clock) : clock_(clock), load_(clock) {}

    [[nodiscard]] WatchSample take() override;

private:
    const Clock& clock_;
    LoadMeter load_;
};

/// One line for people: "2024-05-01 08:22:33 UTC  cpu 12.5%  memory ...".
[[nodiscard]] std::string watchLine(const WatchSample& sample);

/// One line for programs: a JSON object with the sections of the commands, and the time.
[[nodiscard]] std::string watchJsonLine(const WatchSample& sample);

} // namespace qk::info
