// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareCPUUsage.h"
#include "QKFoundation/system_info/QKHardwareProcessUsage.h"
#include "QKFoundation/system_info/QKHardwareRAMUsage.h"
#include "QKFoundation/system_info/QKHardwareVolumeUsage.h"

#include "benchmarks/sampling/Register.h"

namespace qk::bench {
namespace {

// Made with the first sample: the services of the machine are kept from then on, and mounts must be set up before.
const bool kProcessors = compete("ours", Job::processors, [sampler = std::shared_ptr<QKHardwareCPUUsage>()]() mutable {
    sampler = sampler != nullptr ? sampler : QKHardwareCPUUsage::init();
    benchmark::DoNotOptimize(sampler->collectCPUUsageData());
});
const bool kMemory = compete("ours", Job::memory, [sampler = std::shared_ptr<QKHardwareRAMUsage>()]() mutable {
    sampler = sampler != nullptr ? sampler : QKHardwareRAMUsage::init();
    benchmark::DoNotOptimize(sampler->collectRAMUsageData());
});
const bool kProcesses = compete("ours", Job::processes,
                                [] { benchmark::DoNotOptimize(QKHardwareProcessUsage::collectProcessesUsageData()); });
const bool kVolumes =
    compete("ours", Job::volumes, [] { benchmark::DoNotOptimize(QKHardwareVolumeUsage::collectVolumesUsageData()); });

} // namespace
} // namespace qk::bench
