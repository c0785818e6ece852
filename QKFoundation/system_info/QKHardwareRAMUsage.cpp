// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareRAMUsage.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/system_info/internal/HardwareFacts.h"

#include <utility>

namespace qk {

const ClassDescription& QKHardwareRAMUsage::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKHardwareRAMUsage>("QKHardwareRAMUsage", NSObject::describedClass())
            .property("totalRAMSize", &QKHardwareRAMUsage::totalRAMSize, &QKHardwareRAMUsage::setTotalRAMSize)
            .property("totalRAMPageSize", &QKHardwareRAMUsage::totalRAMPageSize,
                      &QKHardwareRAMUsage::setTotalRAMPageSize)
            .build();
    return description;
}

const ClassDescription& QKHardwareRAMUsage::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKHardwareRAMUsage> QKHardwareRAMUsage::init() {
    const auto services = platform::services();
    return std::shared_ptr<QKHardwareRAMUsage>(new QKHardwareRAMUsage(services->hostStatistics,
                                                                      internal::getPhysicalMemorySize(*services),
                                                                      internal::getPhysicalMemoryPageSize(*services)));
}

QKHardwareRAMUsage::QKHardwareRAMUsage(std::shared_ptr<platform::HostStatistics> host, std::uint64_t size,
                                       std::uint64_t pageSize)
    : host_(std::move(host)), totalRAMSize_(size), totalRAMPageSize_(pageSize) {}

std::optional<QKHardwareRAMUsageData> QKHardwareRAMUsage::collectRAMUsageData() const {
    platform::VMStatistics64 statistics;
    if (host_->hostStatistics64(statistics) != 0) {
        return std::nullopt;
    }
    QKHardwareRAMUsageData data;
    data.appMemory = statistics.internal_page_count * totalRAMPageSize_;
    data.wiredMemory = statistics.wire_count * totalRAMPageSize_;
    data.compressedMemory = statistics.compressor_page_count * totalRAMPageSize_;
    data.usedMemory = data.appMemory + data.wiredMemory + data.compressedMemory;
    data.unusedMemory = totalRAMSize_ - data.usedMemory;
    data.chachedFiles = statistics.external_page_count * totalRAMPageSize_;
    data.swapUsed = statistics.swapouts * totalRAMPageSize_;
    data.freeMemory = statistics.free_count * totalRAMPageSize_;
    return data;
}

} // namespace qk
