// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Portal.h"

#include "QKFoundation/platform/linux/BusConnection.h"

#include <fcntl.h>

#include <chrono>

namespace qk::platform {
namespace {

constexpr const char* kService = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.OpenURI";
constexpr std::chrono::milliseconds kLimitOfLife{200};
constexpr std::chrono::seconds kLimitOfOpening{5};

UniqueBus openBus(const std::string& address) {
    sd_bus* made = nullptr;
    if (sd_bus_new(&made) < 0) {
        return {};
    }
    UniqueBus bus(made);
    const bool isOpen = sd_bus_set_address(bus.get(), address.c_str()) >= 0 &&
                        sd_bus_set_bus_client(bus.get(), 1) >= 0 && sd_bus_start(bus.get()) >= 0;
    return isOpen ? std::move(bus) : UniqueBus();
}

UniqueBusMessage makeCall(sd_bus* bus, const char* interface, const char* method) {
    sd_bus_message* made = nullptr;
    return UniqueBusMessage(
        sd_bus_message_new_method_call(bus, &made, kService, kPath, interface, method) >= 0 ? made : nullptr);
}

// Whether the portal runs and answers. Nothing has been asked of it so far, so another way is still free.
bool isAlive(sd_bus* bus) {
    const UniqueBusMessage call = makeCall(bus, "org.freedesktop.DBus.Peer", "Ping");
    return call && callOnBus(bus, call.get(), std::chrono::steady_clock::now() + kLimitOfLife);
}

// Sends the request; `append` adds what is to be opened behind the window, which is none.
template <typename Append>
PortalAnswer ask(const std::string& address, const char* method, Append append) {
    const UniqueBus bus = openBus(address);
    if (!bus || !isAlive(bus.get())) {
        return PortalAnswer::Absent;
    }
    const UniqueBusMessage call = makeCall(bus.get(), kInterface, method);
    if (!call || sd_bus_message_append(call.get(), "s", "") < 0 || append(call.get()) < 0 ||
        sd_bus_message_append(call.get(), "a{sv}", 0U) < 0) {
        return PortalAnswer::Absent;
    }
    const BusDeadline deadline = std::chrono::steady_clock::now() + kLimitOfOpening;
    if (callOnBus(bus.get(), call.get(), deadline)) {
        return PortalAnswer::Opened;
    }
    // An answer that came in time was a refusal.
    return std::chrono::steady_clock::now() < deadline ? PortalAnswer::Absent : PortalAnswer::Unknown;
}

} // namespace

PortalAnswer openURLWithPortal(const std::string& address, const std::string& url) {
    return ask(address, "OpenURI",
               [&url](sd_bus_message* call) { return sd_bus_message_append(call, "s", url.c_str()); });
}

PortalAnswer openFileWithPortal(const std::string& address, const std::string& path) {
    const UniqueFD file(::open(path.c_str(), O_PATH | O_CLOEXEC));
    if (!file) {
        return PortalAnswer::Absent;
    }
    return ask(address, "OpenFile",
               [&file](sd_bus_message* call) { return sd_bus_message_append(call, "h", file.get()); });
}

} // namespace qk::platform
