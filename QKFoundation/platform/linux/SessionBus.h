// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/BusConnection.h"
#include "QKFoundation/platform/linux/LinuxRunLoop.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

/// Only for builds with libsystemd.
namespace qk::platform {

/// A connection to the session bus that carries the names of notifications, served by a run loop. Held in a
/// `std::shared_ptr`. Threads: any.
class SessionBus : public std::enable_shared_from_this<SessionBus> {
public:
    /// Connects to the bus at `address`; null when it does not answer within the time limit. `received` is called on
    /// `loop` with every name that was asked for and arrives.
    [[nodiscard]] static std::shared_ptr<SessionBus> connect(const std::string& address,
                                                             std::shared_ptr<LinuxRunLoop> loop,
                                                             std::function<void(const std::string&)> received);
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Asks for the notifications of that name, from now on and for as long as the connection lasts. False when the
    /// connection is lost.
    bool ask(const std::string& name);

    /// Sends a notification. False when it did not leave within the time limit, or the connection is lost.
    bool send(const std::string& name);

private:
    SessionBus(UniqueBus bus, std::shared_ptr<LinuxRunLoop> loop, std::function<void(const std::string&)> received)
        : bus_(std::move(bus)), loop_(std::move(loop)), received_(std::move(received)) {}

    void serve();
    void processSoon();
    void process();
    static int keepName(sd_bus_message* message, void* self, sd_bus_error* error);

    std::mutex mutex_; // guards the connection and what follows it
    UniqueBus bus_;
    std::vector<std::string> arrived_;
    bool isLost_ = false;

    const std::shared_ptr<LinuxRunLoop> loop_;
    const std::function<void(const std::string&)> received_;
    std::unique_ptr<RunLoopSource> source_;
};

} // namespace qk::platform
