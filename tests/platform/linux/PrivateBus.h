// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/TemporaryFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <optional>
#include <stdexcept>
#include <string>

namespace qk::tests {

/// A session bus as desktops run it, for this test alone. It can be started more than once, at the same address.
class PrivateBus {
public:
    static constexpr const char* kDaemon = "/usr/bin/dbus-daemon";

    PrivateBus() {
        configuration_ =
            folder_.write("configuration", "<busconfig><type>session</type><listen>" + address() +
                                               "</listen><servicedir>" + folder_.path("services") +
                                               "</servicedir><policy context=\"default\"><allow send_destination=\"*\" "
                                               "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                                               "</policy></busconfig>");
    }

    static bool isInstalled() { return ::access(kDaemon, X_OK) == 0; }

    [[nodiscard]] std::string address() const { return "unix:path=" + folder_.path("bus"); }
    [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }

    /// Returns once it takes connections; false when it did not start.
    bool start() {
        stop();
        std::array<int, 2> ready{};
        if (::pipe(ready.data()) != 0) {
            throw std::runtime_error("pipe");
        }
        daemon_.emplace([&] {
            const std::string option = "--config-file=" + configuration_;
            const std::string report = "--print-address=" + std::to_string(ready[1]);
            ::close(ready[0]);
            ::dup2(::open("/dev/null", O_WRONLY), STDERR_FILENO); // it complains of limits that it may not raise
            ::execl(kDaemon, kDaemon, option.c_str(), report.c_str(), "--nofork", nullptr);
            ::_exit(1);
        });
        ::close(ready[1]);
        // It prints its address once it listens; the end of the pipe means that it did not start.
        char first = 0;
        const bool isReady = ::read(ready[0], &first, 1) == 1;
        ::close(ready[0]);
        return isReady;
    }

    /// Ends it, as a crash would.
    void stop() {
        daemon_.reset();
        ::unlink(folder_.path("bus").c_str());
    }

    /// It keeps its connections and does nothing, until `goOn`.
    void pause() const {
        ::kill(daemon_.value().pid(), SIGSTOP);
        static_cast<void>(daemon_.value().waitUntilStopped());
    }
    void goOn() const { ::kill(daemon_.value().pid(), SIGCONT); }

private:
    TemporaryFolder folder_;
    std::string configuration_;
    std::optional<Child> daemon_;
};

} // namespace qk::tests
