// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"

#include <cstdint>
#include <optional>
#include <string>

/// Facts about the machine, each read afresh from the files that the kernel shows. Nothing where the kernel does not
/// tell. Any thread.
namespace qk::platform::hardware {

/// /sys/class/dmi/id/product_name, else the device tree's model (/proc/device-tree/model).
[[nodiscard]] std::optional<std::string> model(const LinuxRoot& root);

/// "model name" of /proc/cpuinfo.
[[nodiscard]] std::optional<std::string> processorName(const LinuxRoot& root);

/// Cores of the processors that are online: distinct pairs of physical_package_id and core_id under
/// /sys/devices/system/cpu/cpuN/topology. Where the kernel shows no topology, the logical count.
[[nodiscard]] std::optional<std::uint32_t> physicalProcessors(const LinuxRoot& root);

/// /sys/devices/system/cpu/online, else the processors of /proc/cpuinfo. All that the system runs, not those that this
/// process may use.
[[nodiscard]] std::optional<std::uint32_t> logicalProcessors(const LinuxRoot& root);

/// In Hz: the largest cpuN/cpufreq/cpuinfo_max_freq. Virtual machines have none; the present clock of /proc/cpuinfo is
/// no substitute.
[[nodiscard]] std::optional<std::uint64_t> maximumFrequency(const LinuxRoot& root);

/// In bytes: the memory blocks that are online (/sys/devices/system/memory) times block_size_bytes, which is the memory
/// installed; else MemTotal of /proc/meminfo, which leaves out what the kernel took for itself.
[[nodiscard]] std::optional<std::uint64_t> memorySize(const LinuxRoot& root);

/// Whether the processor can run 64-bit programs: flag "lm" of /proc/cpuinfo. Where there are no flags, this program's
/// own width proves it or leaves it open.
[[nodiscard]] std::optional<bool> is64BitCapable(const LinuxRoot& root);

} // namespace qk::platform::hardware
