// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/SessionBus.h"

#include <fcntl.h>

#include <cstddef>

namespace qk::platform {
namespace {

constexpr std::size_t kLongestRule = 1024; // of the bus
constexpr const char* kPath = "/com/qkfoundation/DistributedNotificationCenter";
constexpr const char* kInterface = "com.qkfoundation.DistributedNotificationCenter";
constexpr const char* kMember = "Notify";

// As a match rule takes it: an apostrophe ends the quotes, stands behind a backslash and opens them again.
std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char byte : text) {
        result += byte == '\'' ? std::string("'\\''") : std::string(1, byte);
    }
    return result + "'";
}

std::string ruleFor(const std::string& name) {
    const std::string all = std::string("type='signal',interface='") + kInterface + "',member='" + kMember + "'";
    std::string one = all + ",arg0=" + quoted(name);
    return one.size() <= kLongestRule ? one : all;
}

UniqueBusMessage callOfBus(sd_bus* bus, const char* method) {
    sd_bus_message* call = nullptr;
    const bool isMade = sd_bus_message_new_method_call(bus, &call, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                       "org.freedesktop.DBus", method) >= 0;
    return UniqueBusMessage(isMade ? call : nullptr);
}

} // namespace

std::shared_ptr<SessionBus> SessionBus::connect(const std::string& address, std::shared_ptr<LinuxRunLoop> loop,
                                                std::chrono::milliseconds limit,
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
    const BusDeadline deadline = std::chrono::steady_clock::now() + limit;
    while (sd_bus_is_ready(bus.get()) == 0 && stepBus(bus.get(), deadline)) {
    }
    if (sd_bus_is_ready(bus.get()) <= 0) {
        return nullptr;
    }
    std::shared_ptr<SessionBus> connection(new SessionBus(std::move(bus), std::move(loop), limit, std::move(received)));
    const bool isListening = sd_bus_add_filter(connection->bus_.get(), nullptr, keepName, connection.get()) >= 0;
    return isListening && connection->serve() ? connection : nullptr;
}

bool SessionBus::serve() {
    const std::scoped_lock lock(mutex_);
    watched_.reset(::fcntl(sd_bus_get_fd(bus_.get()), F_DUPFD_CLOEXEC, 0));
    source_ = loop_->addFileDescriptor(watched_.get(), [weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->process();
        }
    });
    processSoon();
    return source_ != nullptr;
}

// What a blocking step has read ahead is not seen on the descriptor any more. One task at a time waits: the loop may
// never run.
void SessionBus::processSoon() {
    if (!std::exchange(isDueSoon_, true)) {
        loop_->perform([weak = weak_from_this()] {
            if (const auto self = weak.lock()) {
                self->process();
            }
        });
    }
}

// Handles all that has arrived. False once the connection is lost.
bool SessionBus::step() {
    int handled = 1;
    while (!isLost_ && handled > 0) {
        handled = sd_bus_process(bus_.get(), nullptr);
        isLost_ = handled < 0;
    }
    return !isLost_;
}

void SessionBus::process() {
    std::vector<std::string> arrived;
    std::unique_ptr<RunLoopSource> ended;
    {
        const std::scoped_lock lock(mutex_);
        isDueSoon_ = false;
        if (!step()) {
            ended = std::move(source_); // its descriptor stays readable for ever
        }
        arrived.swap(arrived_);
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

bool SessionBus::isAlive() {
    const std::scoped_lock lock(mutex_);
    processSoon();
    return step();
}

SessionBus::Answer SessionBus::call(sd_bus_message* call) {
    if (call != nullptr && callOnBus(bus_.get(), call, std::chrono::steady_clock::now() + limit_)) {
        return Answer::Done;
    }
    return sd_bus_is_open(bus_.get()) > 0 ? Answer::None : Answer::Lost;
}

SessionBus::Answer SessionBus::ask(const std::string& name) {
    const std::scoped_lock lock(mutex_);
    processSoon();
    if (!step()) {
        return Answer::Lost;
    }
    const UniqueBusMessage request = callOfBus(bus_.get(), "AddMatch");
    const bool isWhole = request && sd_bus_message_append(request.get(), "s", ruleFor(name).c_str()) >= 0;
    return call(isWhole ? request.get() : nullptr);
}

SessionBus::Answer SessionBus::send(const std::string& name) {
    const std::scoped_lock lock(mutex_);
    processSoon();
    if (!step() || sd_bus_emit_signal(bus_.get(), kPath, kInterface, kMember, "s", name.c_str()) < 0) {
        return Answer::Lost;
    }
    // The bus has taken it when it answers what was asked behind it.
    return call(callOfBus(bus_.get(), "GetId").get());
}

} // namespace qk::platform
