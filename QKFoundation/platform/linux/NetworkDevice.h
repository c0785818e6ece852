// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include <string>
#include <vector>

namespace qk::platform {

/// A device of /sys/devices.
struct DeviceFolder {
    std::string path;      ///< where its files are
    std::string subsystem; ///< its bus or class: "pci", "usb", "virtio"; empty for one without
};

/// The device behind a network link and those that it hangs on, the nearest first. Empty for a virtual link, and where
/// /sys does not tell.
[[nodiscard]] std::vector<DeviceFolder> deviceFolders(const LinuxRoot& root, const NetworkLink& link);

/// Whether the device behind a link is a part of the machine: the firmware marks it as on board, or nothing marks it as
/// removable and it is on a bus inside of the machine. On USB only a device whose port is marked "fixed" is. False for
/// a virtual link.
[[nodiscard]] bool isBuiltIn(const LinuxRoot& root, const NetworkLink& link);

/// Vendor and model of the device behind a link: from udev's record of it; else what a USB device says of itself; else
/// its numbers, or those of the PCI or USB device that it hangs on, in the lists of hardware of this system. Nothing
/// where none of them knows it.
[[nodiscard]] HardwareNames readHardwareNames(const LinuxRoot& root, const NetworkLink& link);

} // namespace qk::platform
