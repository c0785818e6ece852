// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/watch/WatchSample.h"

#include "tools/qkinfo/DisplayText.h"
#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/Quantities.h"
#include "tools/qkinfo/TextRenderer.h"

#include <array>
#include <cmath>
#include <utility>

namespace qk::info {

namespace {

constexpr std::size_t kLongestHistory = 1000; // wider than terminals are

std::optional<double> percentOf(std::uint64_t part, std::uint64_t whole) {
    constexpr double kWhole = 100;
    return whole != 0 ? std::optional(kWhole * static_cast<double>(part) / static_cast<double>(whole)) : std::nullopt;
}

void remember(WatchHistory::Shares& shares, std::optional<double> share) {
    shares.push_back(share);
    if (shares.size() > kLongestHistory) {
        shares.pop_front();
    }
}

std::string volumeWords(const QKHardwareVolumeUsageData& volume) {
    const auto used = usedBytes(volume);
    const std::string name = displayLine(wellFormedUTF8(volume.name));
    return (name.empty() ? std::string("volume") : name) + " " +
           (used.has_value() ? sizeText(*used) : std::string("?")) + " of " + sizeText({volume.totalCapacity});
}

} // namespace

std::optional<double> memoryPercent(const WatchSample& sample) {
    return sample.memory.has_value() ? percentOf(sample.memory->data.usedMemory, sample.memory->installed.number)
                                     : std::nullopt;
}

std::optional<double> processorPercent(const WatchSample& sample) {
    if (!sample.processors.has_value() || !std::isfinite(sample.processors->shares.totalLoad)) {
        return std::nullopt;
    }
    return sample.processors->shares.totalLoad;
}

std::optional<double> volumePercent(const QKHardwareVolumeUsageData& volume) {
    const auto used = usedBytes(volume);
    return used.has_value() ? percentOf(used->number, volume.totalCapacity) : std::nullopt;
}

void WatchHistory::add(WatchSample sample) {
    ++samples_;
    remember(processors_, processorPercent(sample));
    remember(memory_, memoryPercent(sample));
    latest_ = std::move(sample);
}

WatchSample MachineSource::take() {
    WatchSample sample;
    sample.time = clock_.moment();
    sample.processors = load_.measure();
    sample.memory = currentMemoryUse();
    sample.volumes = QKHardwareVolumeUsage::collectVolumesUsageData();
    sample.processes = QKHardwareProcessUsage::collectProcessesUsageData();
    return sample;
}

std::string watchLine(const WatchSample& sample) {
    const std::string absent(kAbsentText);
    std::string line = localTimeText(sample.time) + "  cpu ";
    const auto load = processorPercent(sample);
    line += load.has_value() ? percentText({*load}) : absent;
    line += "  memory ";
    line += sample.memory.has_value() ? sizeText({sample.memory->data.usedMemory}) : absent;
    if (const auto share = memoryPercent(sample)) {
        line += " of " + sizeText(sample.memory->installed) + " (" + percentText({*share}) + ")";
    }
    for (const QKHardwareVolumeUsageData& volume : sample.volumes) {
        line += "  " + volumeWords(volume);
    }
    line += "  processes ";
    line += sample.processes.has_value() ? std::to_string(sample.processes->numberOfProcesses) + ", " +
                                               std::to_string(sample.processes->inactiveProcesses.size()) + " inactive"
                                         : absent;
    return line + "\n";
}

std::string watchJsonLine(const WatchSample& sample) {
    const auto bodyOf = [](const auto& data, auto facts) {
        return data.has_value() ? std::optional<Body>(facts(*data)) : std::nullopt;
    };
    const std::array sections{
        Section{"cpu", "", bodyOf(sample.processors, processorFacts)},
        Section{"memory", "", bodyOf(sample.memory, memoryFacts)},
        Section{"volumes", "", Body(volumeList(sample.volumes))},
        Section{"processes", "", bodyOf(sample.processes, processFacts)},
    };
    return renderJsonLine(sample.time, sections);
}

} // namespace qk::info
