// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"

#include <string>

namespace qk::platform {

/// What /sys says of the disks that a block device lies on.
struct BlockDevice {
    bool isRemovable = false; ///< "removable" of a disk is 1
    bool isEjectable = false; ///< an optical drive, or a loop device with a file behind it
    bool isInternal = true;   ///< no disk is behind USB, FireWire, Thunderbolt or a memory-card reader
};

/// The number of the device that a file system with this number lies on. File systems over several devices have numbers
/// of their own ("0:38"), which /sys does not know; then it is that of the first one, which `source` ("/dev/sda1")
/// names.
[[nodiscard]] std::string blockDeviceNumber(const LinuxRoot& root, const std::string& number,
                                            const std::string& source);

/// The device with that number ("8:1") below /sys/dev/block: from a partition to its disk, and through the "slaves" of
/// mapped and striped devices to all of theirs.
[[nodiscard]] BlockDevice readBlockDevice(const LinuxRoot& root, const std::string& number);

} // namespace qk::platform
