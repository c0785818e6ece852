// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/BusConnection.h"
#include "QKFoundation/platform/linux/BusValues.h"

#include <optional>
#include <vector>

/// Only for builds with libsystemd.
namespace qk::platform {

/// The next value of `message`, whatever its type. Nothing when the message ends there or is damaged.
[[nodiscard]] std::optional<BusValue> readBusValue(sd_bus_message* message);

/// Sends all of `calls` at once, to services that run already, and waits for their answers, which stand where the calls
/// stood: none for an error. Nothing at all when `deadline` passes before the last one has come, or the bus is lost.
[[nodiscard]] std::optional<std::vector<UniqueBusMessage>>
callAllOnBus(sd_bus* bus, const std::vector<UniqueBusMessage>& calls, BusDeadline deadline);

} // namespace qk::platform
