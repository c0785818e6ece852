// SPDX-License-Identifier: Apache-2.0
// A session bus as desktops run it, with a portal of the test's own on it.
#include "QKFoundation/platform/linux/BusConnection.h"
#include "QKFoundation/platform/linux/LinuxLaunchServices.h"
#include "QKFoundation/platform/memory/MemoryTaskLauncher.h"

#include "tests/platform/linux/Environment.h"
#include "tests/platform/linux/PrivateBus.h"
#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>

namespace qk::platform {
namespace {

using tests::environment;
using tests::TemporaryFolder;

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";

// A bus that could start a portal if it were asked to: one that leaves the file "started" behind.
class BusWithPortal : public tests::PrivateBus {
public:
    BusWithPortal() {
        const std::string starter = folder().write("start", "#!/bin/sh\ntouch '" + folder().path("started") + "'\n");
        ::chmod(starter.c_str(), S_IRWXU);
        folder().write("services/portal.service",
                       std::string("[D-BUS Service]\nName=") + kPortal + "\nExec=" + starter + "\n");
    }

    [[nodiscard]] bool hasStartedAPortal() const { return std::filesystem::exists(folder().path("started")); }
};

// Takes every request that is sent to the portal's name.
class Portal {
public:
    explicit Portal(const std::string& address) : stop_(::eventfd(0, EFD_CLOEXEC)) {
        sd_bus* made = nullptr;
        sd_bus_new(&made);
        bus_.reset(made);
        sd_bus_set_address(made, address.c_str());
        sd_bus_set_bus_client(made, 1);
        sd_bus_start(made);
        sd_bus_add_filter(made, nullptr, answer, this);
        ownsName_ = sd_bus_request_name(made, kPortal, 0) >= 0;
        thread_ = std::thread([this] { serve(); });
    }
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;
    ~Portal() {
        ::eventfd_write(stop_, 1);
        thread_.join();
        ::close(stop_);
    }

    [[nodiscard]] bool ownsName() const { return ownsName_; }
    [[nodiscard]] int requests() const { return requests_; }

private:
    static int answer(sd_bus_message* message, void* self, sd_bus_error* /*error*/) {
        if (sd_bus_message_is_method_call(message, "org.freedesktop.portal.OpenURI", nullptr) <= 0) {
            return 0; // the library itself answers pings
        }
        ++static_cast<Portal*>(self)->requests_;
        return sd_bus_reply_method_return(message, "o", "/request/1");
    }

    void serve() {
        for (;;) {
            const int handled = sd_bus_process(bus_.get(), nullptr);
            if (handled < 0) {
                return;
            }
            if (handled > 0) {
                continue;
            }
            std::array<pollfd, 2> watched{
                {{sd_bus_get_fd(bus_.get()), static_cast<short>(sd_bus_get_events(bus_.get())), 0},
                 {stop_, POLLIN, 0}}};
            if (::poll(watched.data(), watched.size(), -1) < 0 || watched[1].revents != 0) {
                return;
            }
        }
    }

    UniqueBus bus_;
    int stop_;
    bool ownsName_ = false;
    std::atomic<int> requests_ = 0;
    std::thread thread_;
};

struct OnASessionBus : testing::Test {
    void SetUp() override {
        if (!tests::PrivateBus::isInstalled()) {
            GTEST_SKIP() << "there is no " << tests::PrivateBus::kDaemon;
        }
        bus.emplace();
        ASSERT_TRUE(bus->start());
    }

    [[nodiscard]] std::int32_t open(const NSURL& url) const {
        return LinuxLaunchServices(
                   launcher, environment({{"DBUS_SESSION_BUS_ADDRESS", bus->address()}, {"PATH", "/nonexistent"}}))
            .openURL(url);
    }

    std::optional<BusWithPortal> bus;
    std::shared_ptr<memory::MemoryTaskLauncher> launcher = std::make_shared<memory::MemoryTaskLauncher>();
};

TEST_F(OnASessionBus, PortalThatDoesNotRunIsNotStarted) {
    EXPECT_EQ(open(NSURL::URLWithString("http://h/").value()), LaunchServices::kLSApplicationNotFoundErr);
    EXPECT_FALSE(bus->hasStartedAPortal());
}

TEST_F(OnASessionBus, PortalThatRunsOpensURLsAndFiles) {
    const TemporaryFolder folder;
    const Portal portal(bus->address());
    ASSERT_TRUE(portal.ownsName());
    EXPECT_EQ(open(NSURL::URLWithString("http://h/").value()), LaunchServices::noErr);
    EXPECT_EQ(portal.requests(), 1);
    EXPECT_EQ(open(NSURL::fileURLWithPath(text(folder.path()), true).value()), LaunchServices::noErr);
    EXPECT_EQ(portal.requests(), 2);
}

} // namespace
} // namespace qk::platform
