// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qk::platform::parse {

/// What /run/udev/data has of a device: ID_VENDOR_FROM_DATABASE, ID_MODEL_FROM_DATABASE. What is missing or empty is
/// nothing.
[[nodiscard]] HardwareNames databaseNames(std::string_view record);

/// Looks for one device in a list of hardware ("pci.ids", "usb.ids") that comes in parts of any size:
///
///     8086  Intel Corporation
///     	15f3  Ethernet Controller I225-V
///     		1028 0abc  a subsystem, which is passed over
///
/// Damaged lines and those of more than 4096 bytes are passed over. A vendor that is listed twice counts where it comes
/// first. Threads: one at a time.
class HardwareSearch {
public:
    HardwareSearch(std::uint16_t vendor, std::uint16_t device) noexcept : vendor_(vendor), device_(device) {}

    /// Reads on. False once nothing that follows can add to the answer.
    bool feed(std::string_view part);

    /// What was found when the list is at its end.
    [[nodiscard]] HardwareNames finish();

private:
    void visit(std::string_view line);

    std::uint16_t vendor_;
    std::uint16_t device_;
    bool isDone_ = false;
    std::string begun_; // a line whose end has not come yet
    HardwareNames names_;
};

} // namespace qk::platform::parse
