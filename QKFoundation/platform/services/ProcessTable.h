// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/services/Kernel.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace qk::platform {

/// Behind `kCtlKern`: the process table (`KERN_PROC`), an array of `kinfo_proc`.
inline constexpr int kKernProc = 14;
/// Behind `kKernProc`: every process (`KERN_PROC_ALL`).
inline constexpr int kKernProcAll = 0;

/// The states of a process.
inline constexpr char SIDL = 1;   ///< being created
inline constexpr char SRUN = 2;   ///< running, or ready to
inline constexpr char SSLEEP = 3; ///< waiting
inline constexpr char SSTOP = 4;  ///< stopped
inline constexpr char SZOMB = 5;  ///< ended, not yet waited for

/// The short name of a process has at most this many bytes before its zero byte.
inline constexpr std::size_t MAXCOMLEN = 16;

/// The part of a process record that the kernel itself keeps. Only what is named is filled in.
struct extern_proc {
    std::uint8_t reserved1[36];
    char p_stat; ///< one of the states above
    std::uint8_t reserved2[3];
    std::int32_t p_pid; ///< the process's number
    std::uint8_t reserved3[199];
    char p_comm[MAXCOMLEN + 1]; ///< the short name, cut by the kernel, with a zero byte behind it
    std::uint8_t reserved4[36];
};
static_assert(sizeof(extern_proc) == 296);
static_assert(offsetof(extern_proc, p_stat) == 36 && offsetof(extern_proc, p_pid) == 40 &&
              offsetof(extern_proc, p_comm) == 243);

/// One record of the process table.
struct kinfo_proc {
    extern_proc kp_proc;
    std::uint8_t kp_eproc[352]; ///< not filled in
};
static_assert(sizeof(kinfo_proc) == 648);

/// Facts about single processes; the table itself is a fact of `Kernel`. Threads: any, at the same time.
class QK_EXPORT ProcessTable {
public:
    ProcessTable() = default;
    ProcessTable(const ProcessTable&) = delete;
    ProcessTable& operator=(const ProcessTable&) = delete;
    virtual ~ProcessTable();

    /// `proc_pidpath`. The path of the executable that process `pid` runs, as the system's bytes; nothing for a process
    /// that has none, is gone, or may not be inspected.
    [[nodiscard]] virtual std::optional<std::string> pidPath(std::int32_t pid) const = 0;
};

} // namespace qk::platform
