// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Volumes.h"

namespace qk::info {

std::optional<Bytes> usedBytes(const QKHardwareVolumeUsageData& volume) {
    if (volume.freeCapacity > volume.totalCapacity) {
        return std::nullopt;
    }
    return Bytes{volume.totalCapacity - volume.freeCapacity};
}

List volumeList(std::span<const QKHardwareVolumeUsageData> volumes) {
    List list{{}, "No fixed volumes.", "volume", "volumes"};
    for (const QKHardwareVolumeUsageData& volume : volumes) {
        list.records.push_back({
            {"name", "Name", textContent(volume.name)},
            {"total_bytes", "Total", Bytes{volume.totalCapacity}},
            {"free_bytes", "Free", Bytes{volume.freeCapacity}},
            {"used_bytes", "Used", usedBytes(volume)},
        });
    }
    return list;
}

std::optional<Body> volumes(const Surroundings& /*surroundings*/) {
    return volumeList(QKHardwareVolumeUsage::collectVolumesUsageData());
}

} // namespace qk::info
