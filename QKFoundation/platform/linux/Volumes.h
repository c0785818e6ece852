// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/KeptFile.h"
#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/parse/Mounts.h"
#include "QKFoundation/platform/values/NSDictionary.h"
#include "QKFoundation/platform/values/NSURL.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace qk::platform {

/// A mounted volume that people know about, and what does not change while it is mounted.
struct Volume {
    parse::Mount mount;
    NSURL url;
    NSString name;         ///< its label, else the last part of the path
    bool isRemote = false; ///< on another machine: nothing is ever asked of it, since an unreachable one never answers
    bool isInternal = false;
    bool isEjectable = false;
    bool isRemovable = false;
};

/// Volumes in the order of mounting, and their places in it by URL.
struct VolumeTable {
    std::vector<Volume> volumes;
    std::unordered_map<NSString, std::size_t> places;
};

/// The mounted volumes, from /proc/self/mountinfo.
///
/// - A volume is a file system on a block device (or of the types zfs and bcachefs), or one on another machine. Left
///   out as hidden are all others (proc, tmpfs, overlay), squashfs, bind mounts, second mounts of one device, mounts
///   under a later one, mounts behind another machine's, and mounts marked "x-gvfs-hide" in /run/mount/utab.
/// - Removable: "removable" of the disk in /sys/class/block. Ejectable: an optical drive, or a loop device with a file
///   behind it (a mounted image). Internal: not behind USB, FireWire, Thunderbolt, NVMe over fabrics or a memory-card
///   reader.
/// - Name: the file system's label (ioctl FS_IOC_GETFSLABEL, else ID_FS_LABEL of /run/udev/data), else the last part of
///   the path.
///
/// All but the capacities is read when the table of mounts has changed, of which the kernel tells: a label that is
/// changed while the file system is mounted shows at the next mounting of anything. Threads: any, at the same time.
class Volumes {
public:
    explicit Volumes(LinuxRoot root = {});

    /// All volumes now. What is handed out stays as it is when the mounts change.
    [[nodiscard]] std::shared_ptr<const VolumeTable> table() const;

    /// The values of `keys` for the volume at `url`. Nothing when there is no such volume any more, or it cannot be
    /// asked for its capacities.
    [[nodiscard]] std::optional<NSDictionary> resourceValues(const NSURL& url, const std::vector<NSString>& keys) const;

private:
    [[nodiscard]] VolumeTable readTable() const;

    LinuxRoot root_;
    mutable std::mutex mutex_;
    KeptFile mountInfo_;
    mutable std::shared_ptr<const VolumeTable> table_;
};

} // namespace qk::platform
