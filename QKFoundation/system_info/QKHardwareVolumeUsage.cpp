// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareVolumeUsage.h"

#include "QKFoundation/foundation/NSDictionary+Accessors.h"
#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/platform/services/Services.h"

#include <utility>

namespace qk {

using namespace platform;
using NSDictionary_Accessors::boolForKey;
using NSDictionary_Accessors::unsignedIntegerForKey;

std::optional<QKHardwareVolumeUsageData>
QKHardwareVolumeUsageData::initWithResourceValues(const std::optional<NSDictionary>& values) {
    if (!values.has_value()) {
        return std::nullopt;
    }
    QKHardwareVolumeUsageData volume;
    if (const auto* name = values->get<NSString>(NSURLVolumeNameKey)) {
        volume.name = *name;
    }
    volume.isInternal = boolForKey(*values, NSURLVolumeIsInternalKey);
    volume.isEjectable = boolForKey(*values, NSURLVolumeIsEjectableKey);
    volume.isRemoveable = boolForKey(*values, NSURLVolumeIsRemovableKey);
    volume.isRemountable = values->objectForKey(NSURLVolumeURLForRemountingKey) != nullptr;
    volume.totalCapacity = unsignedIntegerForKey(*values, NSURLVolumeTotalCapacityKey);
    volume.freeCapacity = unsignedIntegerForKey(*values, NSURLVolumeAvailableCapacityKey);
    return volume;
}

std::vector<QKHardwareVolumeUsageData> QKHardwareVolumeUsage::collectVolumesUsageData() {
    static const std::vector<NSString> keys{NSURLVolumeNameKey,
                                            NSURLVolumeIsInternalKey,
                                            NSURLVolumeIsEjectableKey,
                                            NSURLVolumeIsRemovableKey,
                                            NSURLVolumeURLForRemountingKey,
                                            NSURLVolumeTotalCapacityKey,
                                            NSURLVolumeAvailableCapacityKey};
    const auto fileManager = services()->fileManager;
    std::vector<QKHardwareVolumeUsageData> volumes;
    for (const NSURL& url : fileManager->mountedVolumeURLs(true)) {
        auto volume = QKHardwareVolumeUsageData::initWithResourceValues(fileManager->resourceValuesForKeys(url, keys));
        if (volume.has_value() && isValidVolumeUsageData(*volume)) {
            volumes.push_back(*std::move(volume));
        }
    }
    return volumes;
}

bool QKHardwareVolumeUsage::isValidVolumeUsageData(const QKHardwareVolumeUsageData& volume) {
    return volume.totalCapacity != 0 && !volume.isRemoveable && !volume.isEjectable && !volume.isRemountable;
}

} // namespace qk
