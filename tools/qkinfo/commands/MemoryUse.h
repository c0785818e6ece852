// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/system_info/QKHardwareRAMUsage.h"

#include "tools/qkinfo/Commands.h"

#include <optional>

namespace qk::info {

/// What the memory is used for, and how much there is.
struct MemoryUse {
    Bytes installed{}; ///< 0 when the machine does not tell
    QKHardwareRAMUsageData data;
};

/// Nothing when the machine tells none.
[[nodiscard]] std::optional<MemoryUse> currentMemoryUse();

/// The numbers as the library has them: one that wrapped is shown as it is.
[[nodiscard]] Facts memoryFacts(const MemoryUse& use);

/// What the memory is used for.
[[nodiscard]] std::optional<Body> memoryUse(const Surroundings& surroundings);

} // namespace qk::info
