// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/system_info/QKHardwareVolumeUsage.h"

#include "tools/qkinfo/Commands.h"

#include <optional>
#include <span>

namespace qk::info {

/// What is in use on `volume`. Nothing when it says that more is free than there is.
[[nodiscard]] std::optional<Bytes> usedBytes(const QKHardwareVolumeUsageData& volume);

[[nodiscard]] List volumeList(std::span<const QKHardwareVolumeUsageData> volumes);

/// The machine's own fixed volumes.
[[nodiscard]] std::optional<Body> volumes(const Surroundings& surroundings);

} // namespace qk::info
