// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareCPUUsage.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/Services.h"

#include <utility>

namespace qk {
namespace {

using platform::ProcessorLoadInfo;

/// Ticks of all processors together.
struct Sums {
    double system = 0;
    double user = 0;
    double inUse = 0;
    double idle = 0;
    double all = 0;
};

// The ticks of `next` beyond those of `previous`, or all of them when there is nothing to compare with. The counters
// wrap, and the difference is that of the 32 bits; it is read as a signed number.
Sums sumsOf(const ProcessorLoadInfo& next, const ProcessorLoadInfo* previous) {
    Sums sums;
    for (std::size_t first = 0; first + platform::CPU_STATE_MAX <= next.ticks.size();
         first += platform::CPU_STATE_MAX) {
        const auto term = [&](platform::ProcessorState state) {
            const auto now = static_cast<std::uint32_t>(next.ticks[first + state]);
            const auto then = previous != nullptr ? static_cast<std::uint32_t>(previous->ticks[first + state]) : 0U;
            return static_cast<double>(static_cast<std::int32_t>(now - then));
        };
        const double system = term(platform::CPU_STATE_SYSTEM);
        const double user = term(platform::CPU_STATE_USER);
        const double nice = term(platform::CPU_STATE_NICE);
        const double idle = term(platform::CPU_STATE_IDLE);
        sums.system += system;
        sums.user += user;
        sums.inUse += system + user + nice;
        sums.idle += idle;
        sums.all += system + user + nice + idle;
    }
    return sums;
}

} // namespace

const ClassDescription& QKHardwareCPUUsage::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKHardwareCPUUsage>("QKHardwareCPUUsage", NSObject::describedClass())
            .property("previousCPUInfoCount", &QKHardwareCPUUsage::previousCPUInfoCount)
            .build();
    return description;
}

const ClassDescription& QKHardwareCPUUsage::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKHardwareCPUUsage> QKHardwareCPUUsage::init() {
    return std::shared_ptr<QKHardwareCPUUsage>(new QKHardwareCPUUsage(platform::services()->hostStatistics));
}

QKHardwareCPUUsage::QKHardwareCPUUsage(std::shared_ptr<platform::HostStatistics> host) : host_(std::move(host)) {}

std::optional<QKHardwareCPUUsageData> QKHardwareCPUUsage::collectCPUUsageData() {
    if (host_->hostProcessorInfo(next_) != 0) {
        return std::nullopt;
    }
    const bool comparable = !previous_.ticks.empty() && previous_.processors == next_.processors &&
                            previous_.ticks.size() == next_.ticks.size();
    const Sums sums = sumsOf(next_, comparable ? &previous_ : nullptr);
    std::swap(previous_, next_);
    const double factor = 100.0 / sums.all;
    return QKHardwareCPUUsageData{sums.system * factor, sums.user * factor, sums.inUse * factor, sums.idle * factor};
}

} // namespace qk
