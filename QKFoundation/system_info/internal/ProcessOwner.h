// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <cstdint>

/// Who runs a process of a given machine.
namespace qk::internal {

/// The real user id; read once for each machine.
[[nodiscard]] std::uint32_t processOwnerUID(const platform::Services& services);

/// The user at the console, 0 for nobody; asked afresh.
[[nodiscard]] std::uint32_t consoleUID(const platform::Services& services);

/// Whether those two are equal; the console is asked afresh.
[[nodiscard]] bool isProcessOwnerConsoleUser(const platform::Services& services);

/// Each is found out once for each machine.
[[nodiscard]] bool isProcessOwnerRootUser(const platform::Services& services);
[[nodiscard]] bool isProcessOwnerXcodeServerUser(const platform::Services& services);
[[nodiscard]] bool isProcessOwnerInAdminGroup(const platform::Services& services);

} // namespace qk::internal
