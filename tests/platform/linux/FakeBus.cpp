// SPDX-License-Identifier: Apache-2.0
#include "tests/platform/linux/FakeBus.h"

#include "QKFoundation/platform/linux/BusConnection.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace qk::tests {

FakeBus::FakeBus(Service service) : service_(std::move(service)), stop_(::eventfd(0, EFD_CLOEXEC)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder_.path("bus");
    if (path.size() >= sizeof(address.sun_path)) {
        throw std::runtime_error("too long for a socket: " + path);
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        ::listen(listener_, 8) != 0 || ::setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:path=" + path).c_str(), 1) != 0) {
        throw std::runtime_error("no socket at " + path);
    }
    thread_ = std::thread([this] { serve(); });
}

FakeBus::~FakeBus() {
    const std::uint64_t one = 1;
    static_cast<void>(!::write(stop_, &one, sizeof(one)));
    thread_.join();
    ::close(listener_);
    ::close(stop_);
    ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
}

int FakeBus::serviceUnknown(sd_bus_message* call) {
    return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_SERVICE_UNKNOWN, "it does not run");
}

void FakeBus::serve() {
    for (;;) {
        std::array<pollfd, 2> watched{{{listener_, POLLIN, 0}, {stop_, POLLIN, 0}}};
        if (::poll(watched.data(), watched.size(), -1) < 0 || watched[1].revents != 0) {
            return;
        }
        serveConnection(::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    }
}

// Until the other side leaves or this bus ends.
void FakeBus::serveConnection(int connection) {
    sd_bus* made = nullptr;
    sd_bus_new(&made);
    const platform::UniqueBus bus(made);
    sd_bus_set_fd(bus.get(), connection, connection);
    sd_bus_set_server(bus.get(), 1, SD_ID128_NULL);
    sd_bus_set_anonymous(bus.get(), 1);
    sd_bus_add_filter(bus.get(), nullptr, handle, this);
    if (sd_bus_start(bus.get()) < 0) {
        return;
    }
    for (;;) {
        const int handled = sd_bus_process(bus.get(), nullptr);
        if (handled < 0) {
            return;
        }
        if (handled > 0) {
            continue;
        }
        std::array<pollfd, 2> watched{
            {{connection, static_cast<short>(sd_bus_get_events(bus.get())), 0}, {stop_, POLLIN, 0}}};
        if (::poll(watched.data(), watched.size(), -1) < 0 || watched[1].revents != 0) {
            return;
        }
    }
}

int FakeBus::handle(sd_bus_message* call, void* self, sd_bus_error* /*error*/) {
    if (sd_bus_message_is_method_call(call, nullptr, nullptr) <= 0) {
        return 0;
    }
    const char* destination = sd_bus_message_get_destination(call);
    if (destination != nullptr && std::string_view(destination) == "org.freedesktop.DBus") {
        const bool hello = sd_bus_message_is_method_call(call, nullptr, "Hello") > 0;
        return hello ? sd_bus_reply_method_return(call, "s", ":1.1") : sd_bus_reply_method_return(call, "");
    }
    const int answered = static_cast<FakeBus*>(self)->service_(sd_bus_message_get_bus(call), call);
    return answered < 0 ? answered : 1;
}

} // namespace qk::tests
