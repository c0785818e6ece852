// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/BusConnection.h"

#include <cerrno>
#include <cstdint>

namespace qk::platform {
namespace {

std::uint64_t microsecondsUntil(BusDeadline deadline) {
    const auto left = std::chrono::ceil<std::chrono::microseconds>(deadline - std::chrono::steady_clock::now());
    return left.count() > 0 ? static_cast<std::uint64_t>(left.count()) : 0;
}

int keepAnswer(sd_bus_message* message, void* place, sd_bus_error* /*error*/) {
    static_cast<UniqueBusMessage*>(place)->reset(sd_bus_message_ref(message));
    return 0;
}

} // namespace

UniqueBus openSystemBus() {
    sd_bus* bus = nullptr;
    return UniqueBus(sd_bus_open_system(&bus) >= 0 ? bus : nullptr);
}

bool stepBus(sd_bus* bus, BusDeadline deadline) {
    const int handled = sd_bus_process(bus, nullptr);
    if (handled < 0) {
        return false;
    }
    const std::uint64_t left = microsecondsUntil(deadline);
    if (left == 0) {
        return false;
    }
    if (handled > 0) {
        return true;
    }
    const int waited = sd_bus_wait(bus, left);
    return waited >= 0 || waited == -EINTR;
}

UniqueBusMessage callOnBus(sd_bus* bus, sd_bus_message* call, BusDeadline deadline) {
    // The blocking call of the library waits without limit for a bus that accepts connections and then says nothing, so
    // the steps are made here.
    UniqueBusMessage reply;
    sd_bus_slot* pending = nullptr;
    if (sd_bus_message_set_auto_start(call, 0) < 0 ||
        sd_bus_call_async(bus, &pending, call, keepAnswer, &reply, microsecondsUntil(deadline)) < 0) {
        return {};
    }
    const UniqueBusSlot slot(pending);
    while (!reply && stepBus(bus, deadline)) {
    }
    if (reply && sd_bus_message_is_method_error(reply.get(), nullptr) > 0) {
        reply.reset();
    }
    return reply;
}

} // namespace qk::platform
