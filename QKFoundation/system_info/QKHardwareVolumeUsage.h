// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace qk {

/// `QKHardwareVolumeUsageData`: a mounted volume.
struct QK_EXPORT QKHardwareVolumeUsageData {
    bool isInternal = false;         ///< on an internal device
    bool isEjectable = false;        ///< can be ejected
    bool isRemoveable = false;       ///< its medium can be removed
    bool isRemountable = false;      ///< has a URL to mount it again from, as network volumes have
    NSString name;                   ///< "" when it reports none
    std::uint64_t totalCapacity = 0; ///< bytes
    std::uint64_t freeCapacity = 0;  ///< bytes available
    /// Deliberate: never computed, stays 0; callers subtract `freeCapacity` from `totalCapacity`.
    std::uint64_t usedCapacity = 0;

    /// `initWithResourceValues:`. The volume that the values of the seven volume keys describe; what is missing is "",
    /// 0 or false. Nothing for nothing.
    [[nodiscard]] static std::optional<QKHardwareVolumeUsageData>
    initWithResourceValues(const std::optional<NSDictionary>& values);
};

/// `QKHardwareVolumeUsage`: the machine's own fixed storage.
///
/// Linux: /proc/self/mountinfo, /sys/class/block and statvfs.
/// Threads: any, at the same time. A slow volume may block the caller; volumes on a network are not touched.
class QK_EXPORT QKHardwareVolumeUsage {
public:
    QKHardwareVolumeUsage() = delete;

    /// `collectVolumesUsageData`. The mounted volumes that `isValidVolumeUsageData` keeps, in the order in which the
    /// system lists them. A volume that cannot be asked is left out.
    [[nodiscard]] static std::vector<QKHardwareVolumeUsageData> collectVolumesUsageData();

    /// `isValidVolumeUsageData:`. Whether the volume has a capacity and is neither removable nor ejectable nor
    /// remountable. Whether it is internal plays no part.
    [[nodiscard]] static bool isValidVolumeUsageData(const QKHardwareVolumeUsageData& volume);
};

} // namespace qk
