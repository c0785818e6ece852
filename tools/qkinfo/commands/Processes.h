// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/system_info/QKHardwareProcessUsage.h"

#include "tools/qkinfo/Commands.h"

#include <optional>

namespace qk::info {

/// The names of the processes that are stopped or defunct; without those that have a blank name.
[[nodiscard]] Names inactiveNames(const QKHardwareProcessUsageData& processes);

[[nodiscard]] Facts processFacts(const QKHardwareProcessUsageData& processes);

/// How many processes there are, and which of them are stopped or defunct.
[[nodiscard]] std::optional<Body> processes(const Surroundings& surroundings);

} // namespace qk::info
