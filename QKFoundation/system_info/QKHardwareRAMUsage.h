// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/services/HostStatistics.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace qk {

/// `QKHardwareRAMUsageData`: what the memory is used for, in bytes.
struct QKHardwareRAMUsageData {
    std::uint64_t usedMemory = 0;       ///< applications, wired and compressed together
    std::uint64_t unusedMemory = 0;     ///< the rest of the installed memory
    std::uint64_t appMemory = 0;        ///< anonymous memory of programs
    std::uint64_t wiredMemory = 0;      ///< the kernel's own, and what may not be paged out
    std::uint64_t compressedMemory = 0; ///< occupied by compressed pages
    std::uint64_t chachedFiles = 0;     ///< contents of files
    std::uint64_t swapUsed = 0;         ///< all that was ever written to swap since the start
    std::uint64_t freeMemory = 0;       ///< free pages
};

/// `QKHardwareRAMUsage`: snapshots of the memory's use. No timer, no history.
///
/// Linux: /proc/meminfo, "pswpout" of /proc/vmstat, and mm_stat of the zram devices that are swap (/proc/swaps).
/// Threads: any, at the same time.
class QK_EXPORT QKHardwareRAMUsage : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. Takes the sizes of the memory and of a page, once, from the machine that is installed now.
    [[nodiscard]] static std::shared_ptr<QKHardwareRAMUsage> init();

    /// `collectRAMUsageData`. A new snapshot; nothing when the kernel refuses.
    ///
    /// Deliberate: all figures are unsigned 64-bit numbers, and `unusedMemory` wraps when more memory is used than is
    /// installed. `swapUsed` is a cumulative volume, not the present size of the swap. A page size of 0 makes every
    /// figure 0 but `unusedMemory`.
    [[nodiscard]] std::optional<QKHardwareRAMUsageData> collectRAMUsageData() const;

    /// `totalRAMSize`. The installed memory in bytes.
    [[nodiscard]] std::uint64_t totalRAMSize() const noexcept { return totalRAMSize_; }
    void setTotalRAMSize(std::uint64_t bytes) noexcept { totalRAMSize_ = bytes; }

    /// `totalRAMPageSize`. The size of a page in bytes.
    [[nodiscard]] std::uint64_t totalRAMPageSize() const noexcept { return totalRAMPageSize_; }
    void setTotalRAMPageSize(std::uint64_t bytes) noexcept { totalRAMPageSize_ = bytes; }

private:
    QKHardwareRAMUsage(std::shared_ptr<platform::HostStatistics> host, std::uint64_t size, std::uint64_t pageSize);

    std::shared_ptr<platform::HostStatistics> host_;
    std::uint64_t totalRAMSize_;
    std::uint64_t totalRAMPageSize_;
};

} // namespace qk
