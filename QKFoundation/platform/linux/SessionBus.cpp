// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/SessionBus.h"

#include <poll.h>

#include <algorithm>

namespace qk::platform {
namespace {

constexpr std::chrono::milliseconds kLimit{200};
constexpr const char* kPath = "/com/qkfoundation/DistributedNotificationCenter";
constexpr const char* kInterface = "com.qkfoundation.DistributedNotificationCenter";
constexpr const char* kMember = "Notify";

BusDeadline soon() {
    return std::chrono::steady_clock::now() + kLimit;
}

// As a match rule takes it: an apostrophe ends the quotes, stands behind a backslash and opens them again.
std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char byte : text) {
        result += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
    }
    return result + "'";
}

UniqueBusMessage callOfBus(sd_bus* bus, const char* method) {
    sd_bus_message* call = nullptr;
    const bool isMade = sd_bus_message_new_method_call(bus, &call, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                       "org.freedesktop.DBus", method) >= 0;
    return UniqueBusMessage(isMade ? call : nullptr);
}

} // namespace

std::shared_ptr<SessionBus> SessionBus::connect(const std::string& address, std::shared_ptr<LinuxRunLoop> loop,
                                                std::function<void(const std::string&)> received) {
    sd_bus* made = nullptr;
    if (sd_bus_new(&made) < 0) {
        return nullptr;
    }
    UniqueBus bus(made);
    if (sd_bus_set_address(bus.get(), address.c_str()) < 0 || sd_bus_set_bus_client(bus.get(), 1) < 0 ||
        sd_bus_start(bus.get()) < 0) {
        return nullptr;
    }
    const BusDeadline deadline = soon();
    while (sd_bus_is_ready(bus.get()) == 0 && stepBus(bus.get(), deadline)) {
    }
    if (sd_bus_is_ready(bus.get()) <= 0) {
        return nullptr;
    }
    std::shared_ptr<SessionBus> connection(new SessionBus(std::move(bus), std::move(loop), std::move(received)));
    const bool isListening = sd_bus_add_filter(connection->bus_.get(), nullptr, keepName, connection.get()) >= 0;
    connection->serve();
    return isListening && connection->source_ != nullptr ? connection : nullptr;
}

SessionBus::~SessionBus() {
    source_.reset();
}

void SessionBus::serve() {
    source_ = loop_->addFileDescriptor(sd_bus_get_fd(bus_.get()), [weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->process();
        }
    });
    processSoon();
}

// What a blocking step read ahead is not seen on the descriptor any more.
void SessionBus::processSoon() {
    loop_->perform([weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->process();
        }
    });
}

void SessionBus::process() {
    std::vector<std::string> arrived;
    bool isLost = false;
    {
        const std::scoped_lock lock(mutex_);
        int handled = 1;
        while (!isLost_ && handled > 0) {
            handled = sd_bus_process(bus_.get(), nullptr);
        }
        isLost_ = isLost_ || handled < 0;
        isLost = isLost_;
        arrived.swap(arrived_);
    }
    if (isLost) {
        source_.reset(); // its descriptor stays readable for ever
    }
    for (const std::string& name : arrived) {
        received_(name);
    }
}

int SessionBus::keepName(sd_bus_message* message, void* self, sd_bus_error* /*error*/) {
    const char* name = nullptr;
    if (sd_bus_message_is_signal(message, kInterface, kMember) > 0 && sd_bus_message_read(message, "s", &name) > 0) {
        static_cast<SessionBus*>(self)->arrived_.emplace_back(name); // under the lock of who steps the bus
    }
    return 0;
}

bool SessionBus::ask(const std::string& name) {
    const std::string rule =
        std::string("type='signal',interface='") + kInterface + "',member='" + kMember + "',arg0=" + quoted(name);
    bool isAsked = false;
    {
        const std::scoped_lock lock(mutex_);
        const UniqueBusMessage call = isLost_ ? UniqueBusMessage() : callOfBus(bus_.get(), "AddMatch");
        isAsked = call && sd_bus_message_append(call.get(), "s", rule.c_str()) >= 0 &&
                  callOnBus(bus_.get(), call.get(), soon());
    }
    processSoon();
    return isAsked;
}

bool SessionBus::send(const std::string& name) {
    bool isSent = false;
    {
        const std::scoped_lock lock(mutex_);
        if (!isLost_ && sd_bus_emit_signal(bus_.get(), kPath, kInterface, kMember, "s", name.c_str()) >= 0) {
            // The bus has taken it when it answers what was asked behind it.
            const UniqueBusMessage call = callOfBus(bus_.get(), "GetId");
            isSent = call && callOnBus(bus_.get(), call.get(), soon());
        }
    }
    processSoon();
    return isSent;
}

} // namespace qk::platform
