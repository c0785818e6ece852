// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/MemoryUse.h"

namespace qk::info {

std::optional<MemoryUse> currentMemoryUse() {
    const auto sampler = QKHardwareRAMUsage::init();
    const std::optional<QKHardwareRAMUsageData> data = sampler->collectRAMUsageData();
    return data.has_value() ? std::optional(MemoryUse{Bytes{sampler->totalRAMSize()}, *data}) : std::nullopt;
}

Facts memoryFacts(const MemoryUse& use) {
    const QKHardwareRAMUsageData& data = use.data;
    return {
        {"installed_bytes", "Installed", numberContent<Bytes>(use.installed.number)},
        {"used_bytes", "Used", Bytes{data.usedMemory}},
        {"unused_bytes", "Unused", Bytes{data.unusedMemory}},
        {"applications_bytes", "Applications", Bytes{data.appMemory}},
        {"wired_bytes", "Wired", Bytes{data.wiredMemory}},
        {"compressed_bytes", "Compressed", Bytes{data.compressedMemory}},
        {"cached_files_bytes", "Cached files", Bytes{data.chachedFiles}},
        {"free_bytes", "Free", Bytes{data.freeMemory}},
        {"swapped_out_bytes", "Swapped out so far", Bytes{data.swapUsed}},
    };
}

std::optional<Body> memoryUse(const Surroundings& /*surroundings*/) {
    const std::optional<MemoryUse> use = currentMemoryUse();
    return use.has_value() ? std::optional<Body>(memoryFacts(*use)) : std::nullopt;
}

} // namespace qk::info
