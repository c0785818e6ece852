// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/services/ProcessTable.h"

#include <cstddef>
#include <optional>

namespace qk::platform {

/// The process table, made from /proc: the processes in ascending order of their numbers. Threads of the kernel are
/// left out (one task stands for all of them elsewhere), and so are processes that end while the table is made.
/// `p_stat` and `p_comm` come from /proc/PID/stat, where the kernel cuts names to 15 bytes.
namespace processes {

/// Bytes that hold the table now, some records to spare. The number of tasks of the whole system in /proc/loadavg
/// bounds it, which costs no look at any process. Nothing when /proc is not there.
[[nodiscard]] std::optional<std::size_t> tableSize(const LinuxRoot& root);

/// Writes the table to `buffer`, which has `*size` bytes, and sets `*size` to those written. 0, or an error number:
/// `ENOMEM` when it does not fit.
[[nodiscard]] int readTable(const LinuxRoot& root, void* buffer, std::size_t* size);

} // namespace processes
} // namespace qk::platform
