// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/ProcessTable.h"

#include <optional>
#include <string_view>

namespace qk::platform::parse {

/// What /proc/PID/stat says of a process, as far as a record of the process table holds it.
struct ProcessStat {
    char state = 0; ///< of the table's states, such as `SRUN`
    bool isKernelThread = false;
    std::string_view command; ///< between the outermost parentheses; part of the text that was parsed
};

/// Nothing for a damaged line, and for a process that is just gone (state X).
/// The name may hold blanks, parentheses and line feeds: it ends at the last ")".
[[nodiscard]] std::optional<ProcessStat> processStat(std::string_view stat);

/// The number of all tasks in /proc/loadavg ("0.20 0.18 0.12 1/80 11206" has 80): no fewer than there are processes.
[[nodiscard]] std::optional<std::uint64_t> taskCount(std::string_view loadAverage);

} // namespace qk::platform::parse
