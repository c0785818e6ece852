/* SPDX-License-Identifier: Apache-2.0 */
#pragma once

#include "QKFoundation/platform/Export.h"

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// One fact each about this machine's hardware, for callers in C. A fact that cannot be read is null, 0 or false.
///
/// Texts are UTF-8 in memory that the caller releases with `free`. Numbers other than 0 are kept for the life of the
/// process once read; a fact that reads as 0 is read again by every call. Threads: any, at the same time.

/// `getHardwareModel`. The model's name as the manufacturer gave it, or null.
/// Linux: /sys/class/dmi/id/product_name, else /proc/device-tree/model.
QK_EXPORT char* getHardwareModel(void);

/// `getProcessorTypeName`. The processor's brand, or null. Linux: "model name" of /proc/cpuinfo.
QK_EXPORT char* getProcessorTypeName(void);

/// `getNumberOfPhysicalProcessors`. Processor cores in use by the system. Linux: distinct pairs of physical_package_id
/// and core_id below /sys/devices/system/cpu/cpu*/topology of the processors that are online.
QK_EXPORT uint32_t getNumberOfPhysicalProcessors(void);

/// `getNumberOfLogicalProcessors`. Hardware threads in use by the system. Linux: /sys/devices/system/cpu/online.
QK_EXPORT uint32_t getNumberOfLogicalProcessors(void);

/// `getMaximumFrequencyOfProcessors`. The highest clock in MHz, rounded down. Linux: the largest
/// cpufreq/cpuinfo_max_freq below /sys/devices/system/cpu/cpu*; virtual machines have none.
QK_EXPORT uint32_t getMaximumFrequencyOfProcessors(void);

/// `getPhysicalMemorySize`. Installed memory in bytes. Linux: memory blocks that are online
/// (/sys/devices/system/memory), else MemTotal of /proc/meminfo.
QK_EXPORT uint64_t getPhysicalMemorySize(void);

/// `getPhysicalMemoryPageSize`. The size of a memory page in bytes.
QK_EXPORT uint64_t getPhysicalMemoryPageSize(void);

/// `isProcessor64bit`. Whether the processor can run 64-bit programs. Linux: the flag "lm" of /proc/cpuinfo on x86.
QK_EXPORT bool isProcessor64bit(void);

#ifdef __cplusplus
} // extern "C"
#endif
