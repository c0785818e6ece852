// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <systemd/sd-bus.h>

#include <chrono>

/// What speaking to a bus with a time limit takes. Only for builds with libsystemd.
namespace qk::platform {

struct BusPolicy {
    using Handle = sd_bus*;
    static constexpr sd_bus* none() noexcept { return nullptr; }
    static void close(sd_bus* bus) noexcept { sd_bus_close_unref(bus); }
};
using UniqueBus = UniqueHandle<BusPolicy>;

struct BusMessagePolicy {
    using Handle = sd_bus_message*;
    static constexpr sd_bus_message* none() noexcept { return nullptr; }
    static void close(sd_bus_message* message) noexcept { sd_bus_message_unref(message); }
};
using UniqueBusMessage = UniqueHandle<BusMessagePolicy>;

struct BusSlotPolicy {
    using Handle = sd_bus_slot*;
    static constexpr sd_bus_slot* none() noexcept { return nullptr; }
    static void close(sd_bus_slot* slot) noexcept { sd_bus_slot_unref(slot); }
};
using UniqueBusSlot = UniqueHandle<BusSlotPolicy>;

using BusDeadline = std::chrono::steady_clock::time_point;

/// A connection to the system bus of its own; none when there is no bus.
[[nodiscard]] UniqueBus openSystemBus();

/// Handles what has arrived, or waits for something to arrive. False once `deadline` has passed or the connection is
/// lost.
[[nodiscard]] bool stepBus(sd_bus* bus, BusDeadline deadline);

/// Sends `call` to a service that runs already (it is not started for this) and waits for the answer. None for an
/// error, and when `deadline` passes first, even while the bus itself does not answer.
[[nodiscard]] UniqueBusMessage callOnBus(sd_bus* bus, sd_bus_message* call, BusDeadline deadline);

} // namespace qk::platform
