// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/SystemBus.h"

#include "QKFoundation/platform/linux/BusConnection.h"

namespace qk::platform {

std::optional<std::string> readBusProperty(const BusInterface& object, const char* property,
                                           std::chrono::milliseconds limit) {
    const BusDeadline deadline = std::chrono::steady_clock::now() + limit;
    const UniqueBus bus = openSystemBus();
    if (!bus) {
        return std::nullopt;
    }
    sd_bus_message* made = nullptr;
    if (sd_bus_message_new_method_call(bus.get(), &made, object.service, object.path, "org.freedesktop.DBus.Properties",
                                       "Get") < 0) {
        return std::nullopt;
    }
    const UniqueBusMessage call(made);
    if (sd_bus_message_append(call.get(), "ss", object.interface, property) < 0) {
        return std::nullopt;
    }
    const UniqueBusMessage reply = callOnBus(bus.get(), call.get(), deadline);
    const char* text = nullptr;
    if (!reply || sd_bus_message_read(reply.get(), "v", "s", &text) < 0) {
        return std::nullopt;
    }
    return std::string(text);
}

} // namespace qk::platform
