// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Users.h"

#include <cstdint>
#include <optional>
#include <string>

/// The databases of users and groups of the running system, whatever the name service switch puts behind them.
/// Threads: any, at the same time. May wait for a server on the network, where the system has one behind them.
namespace qk::platform::userdatabase {

/// The first entry with that id; nothing when there is none or the database cannot be read.
[[nodiscard]] std::optional<PasswordEntry> passwordEntry(std::uint32_t uid);

/// The first group of that name with its explicit members; nothing when there is none or the database cannot be read.
[[nodiscard]] std::optional<GroupEntry> groupEntry(const std::string& name);

} // namespace qk::platform::userdatabase
