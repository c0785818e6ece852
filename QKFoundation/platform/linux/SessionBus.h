// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/BusConnection.h"
#include "QKFoundation/platform/linux/LinuxRunLoop.h"

#include <chrono>
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
    /// What the bus made of a request.
    enum class Answer {
        Done,
        None, ///< nothing within the time limit; it may still come to be done
        Lost, ///< the connection is gone, and the request with it
    };

    /// Connects to the bus at `address`; null when it does not answer within `limit`, which holds for each answer from
    /// then on. `received` is called on `loop` with every name that was asked for and arrives; it must not throw.
    [[nodiscard]] static std::shared_ptr<SessionBus> connect(const std::string& address,
                                                             std::shared_ptr<LinuxRunLoop> loop,
                                                             std::chrono::milliseconds limit,
                                                             std::function<void(const std::string&)> received);
    ~SessionBus() = default;
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    /// Whether the bus is still there, as far as the kernel knows.
    [[nodiscard]] bool isAlive();

    /// Asks for the notifications of that name, from now on and for as long as the connection lasts. Names that are too
    /// long for such a request bring all notifications.
    [[nodiscard]] Answer ask(const std::string& name);

    /// Sends a notification.
    [[nodiscard]] Answer send(const std::string& name);

private:
    SessionBus(UniqueBus bus, std::shared_ptr<LinuxRunLoop> loop, std::chrono::milliseconds limit,
               std::function<void(const std::string&)> received)
        : loop_(std::move(loop)), limit_(limit), received_(std::move(received)), bus_(std::move(bus)) {}

    [[nodiscard]] bool serve();
    void process();
    void processSoon();
    [[nodiscard]] bool step();
    [[nodiscard]] Answer call(sd_bus_message* call);
    static int keepName(sd_bus_message* message, void* self, sd_bus_error* error);

    const std::shared_ptr<LinuxRunLoop> loop_;
    const std::chrono::milliseconds limit_;
    const std::function<void(const std::string&)> received_;

    std::mutex mutex_; // guards what follows
    UniqueBus bus_;
    std::vector<std::string> arrived_;
    bool isLost_ = false;
    bool isDueSoon_ = false;
    UniqueFD watched_; // the connection's descriptor once more: the library closes its own when the bus goes away
    std::unique_ptr<RunLoopSource> source_;
};

} // namespace qk::platform
