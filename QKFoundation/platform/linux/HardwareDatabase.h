// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include <cstdint>

namespace qk::platform {

/// The numbers that a device on a bus bears.
struct HardwareNumbers {
    bool isPCI = false; ///< else USB
    std::uint16_t vendor = 0;
    std::uint16_t device = 0;
};

/// The names in "pci.ids" or "usb.ids" of the system; nothing where neither list is installed.
[[nodiscard]] HardwareNames findInHardwareLists(const LinuxRoot& root, const HardwareNumbers& numbers);

/// The names in the running system's own index of hardware (sd-hwdb(3)); nothing where there is none, and in a build
/// without libsystemd.
[[nodiscard]] HardwareNames findInHardwareIndex(const HardwareNumbers& numbers);

} // namespace qk::platform
