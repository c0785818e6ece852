// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/ProcessTable.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace qk {

/// `QKHardwareProcessUsageData`: the processes of the machine.
struct QKHardwareProcessUsageData {
    std::uint64_t numberOfProcesses = 0;
    std::vector<NSString>
        inactiveProcesses; ///< names of those that are stopped or defunct, in the kernel's order, duplicates kept
};

/// `QKHardwareProcessUsage`: snapshots of the process table.
///
/// Linux: /proc/PID/stat and /proc/PID/exe. Threads of the kernel are left out, as are processes that end while the
/// table is read. Threads: any, at the same time.
class QK_EXPORT QKHardwareProcessUsage {
public:
    QKHardwareProcessUsage() = delete;

    /// `collectProcessesUsageData`. A new snapshot; nothing when the kernel does not hand the table out. A table that
    /// grows while it is read is read again. An inactive process whose name cannot be told is counted, but not named.
    [[nodiscard]] static std::optional<QKHardwareProcessUsageData> collectProcessesUsageData();

    /// `isInactiveProcessForProcessState:`. Whether the state is stopped (4) or zombie (5).
    [[nodiscard]] static bool isInactiveProcessForProcessState(char state);

    /// `processNameForProc:`. The process's short name, which the kernel cuts, or the name of its executable when that
    /// is longer. Nothing when the short name is not UTF-8 and there is no longer one.
    ///
    /// Deliberate: the executable's name need not begin with the short one; the longer of the two counts.
    [[nodiscard]] static std::optional<NSString> processNameForProc(const platform::extern_proc& process);

    /// `pathForPID:`. The path of the executable that process `pid` runs; nothing for a process that has none (a
    /// zombie), is gone, or may not be inspected, and for a path that is not UTF-8.
    [[nodiscard]] static std::optional<NSString> pathForPID(std::int32_t pid);
};

} // namespace qk
