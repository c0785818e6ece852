// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/platform/linux/TemporaryFolder.h"

#include <systemd/sd-bus.h>

#include <functional>
#include <string>
#include <thread>

namespace qk::tests {

/// A message bus and the one service behind it, for the connections that this process opens while it lives. It runs on
/// a thread of its own.
class FakeBus {
public:
    /// Answers one method call of the service, or leaves it unanswered; returns below 0 to end the connection.
    using Service = std::function<int(sd_bus* bus, sd_bus_message* call)>;

    explicit FakeBus(Service service);
    FakeBus(const FakeBus&) = delete;
    FakeBus& operator=(const FakeBus&) = delete;
    ~FakeBus();

    /// Answers `call` as a bus does for a service that does not run.
    static int serviceUnknown(sd_bus_message* call);

    /// The name under which the service's signals arrive.
    static constexpr const char* kServiceName = ":1.5";

private:
    void serve();
    void serveConnection(int connection);
    static int handle(sd_bus_message* call, void* self, sd_bus_error* error);

    TemporaryFolder folder_;
    Service service_;
    int listener_ = -1;
    int stop_ = -1;
    std::thread thread_;
};

} // namespace qk::tests
