// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Portal.h"

#include "QKFoundation/platform/linux/LinuxLaunchServices.h"
#include "QKFoundation/platform/memory/MemoryTaskLauncher.h"

#include "tests/platform/linux/Environment.h"
#include "tests/platform/linux/FakeBus.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <mutex>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

using tests::environment;
using tests::FakeBus;
using tests::TemporaryFolder;

std::string addressOfBus() {
    return std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
}

std::string inodeOf(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 ? std::to_string(status.st_ino) : "none";
}

std::string inodeOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? std::to_string(status.st_ino) : "none";
}

// A portal that remembers what it was asked.
class FakePortal {
public:
    enum class Opening { Taken, Refused };

    explicit FakePortal(Opening opening = Opening::Taken)
        : bus_([this, opening](sd_bus* /*bus*/, sd_bus_message* call) {
              if (sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Peer", "Ping") > 0) {
                  return sd_bus_reply_method_return(call, "");
              }
              remember(call);
              return opening == Opening::Taken ? sd_bus_reply_method_return(call, "o", "/request/1")
                                               : sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_METHOD, "no");
          }) {}

    [[nodiscard]] std::string asked() const {
        const std::scoped_lock lock(mutex_);
        return asked_;
    }

private:
    void remember(sd_bus_message* call) {
        const char* window = nullptr;
        std::string opened;
        const std::string member = sd_bus_message_get_member(call);
        if (member == "OpenFile") {
            int file = -1;
            sd_bus_message_read(call, "sh", &window, &file);
            opened = inodeOf(file);
        } else {
            const char* url = nullptr;
            sd_bus_message_read(call, "ss", &window, &url);
            opened = url != nullptr ? url : "none";
        }
        const std::scoped_lock lock(mutex_);
        asked_ += std::string(sd_bus_message_get_destination(call)) + " " + sd_bus_message_get_path(call) + " " +
                  sd_bus_message_get_interface(call) + " " + member + "(" + sd_bus_message_get_signature(call, 1) +
                  ") '" + (window != nullptr ? window : "none") + "' " + opened;
    }

    mutable std::mutex mutex_;
    std::string asked_;
    FakeBus bus_;
};

constexpr std::string_view kPortal =
    "org.freedesktop.portal.Desktop /org/freedesktop/portal/desktop org.freedesktop.portal.OpenURI ";

TEST(Portal, NoBusIsNoPortal) {
    EXPECT_EQ(openURLWithPortal("unix:path=/nonexistent/bus", "http://h/"), PortalAnswer::Absent);
    EXPECT_EQ(openURLWithPortal("malformed", "http://h/"), PortalAnswer::Absent);
    EXPECT_EQ(openFileWithPortal("unix:path=/nonexistent/bus", "/"), PortalAnswer::Absent);
}

TEST(Portal, PortalThatDoesNotRunIsNotStarted) {
    int autoStart = -1;
    const FakeBus bus([&autoStart](sd_bus* /*bus*/, sd_bus_message* call) {
        autoStart = sd_bus_message_get_auto_start(call);
        return FakeBus::serviceUnknown(call);
    });
    EXPECT_EQ(openURLWithPortal(addressOfBus(), "http://h/"), PortalAnswer::Absent);
    EXPECT_EQ(autoStart, 0);
}

TEST(Portal, PortalThatNeverAnswersIsGivenUp) {
    const FakeBus bus([](sd_bus* /*bus*/, sd_bus_message* /*call*/) { return 0; });
    EXPECT_EQ(openURLWithPortal(addressOfBus(), "http://h/"), PortalAnswer::Absent);
}

TEST(Portal, TakesAURL) {
    const FakePortal portal;
    EXPECT_EQ(openURLWithPortal(addressOfBus(), "http://h/a%20b"), PortalAnswer::Opened);
    EXPECT_EQ(portal.asked(), std::string(kPortal) + "OpenURI(ssa{sv}) '' http://h/a%20b");
}

TEST(Portal, TakesAnOpenFile) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a file", "content");
    const FakePortal portal;
    EXPECT_EQ(openFileWithPortal(addressOfBus(), path), PortalAnswer::Opened);
    EXPECT_EQ(portal.asked(), std::string(kPortal) + "OpenFile(sha{sv}) '' " + inodeOf(path));
}

TEST(Portal, FileThatIsNotThereIsNotAskedFor) {
    const FakePortal portal;
    EXPECT_EQ(openFileWithPortal(addressOfBus(), "/nonexistent"), PortalAnswer::Absent);
    EXPECT_EQ(portal.asked(), "");
}

TEST(Portal, RefusalLeavesTheOtherWays) {
    const FakePortal portal(FakePortal::Opening::Refused);
    EXPECT_EQ(openURLWithPortal(addressOfBus(), "http://h/"), PortalAnswer::Absent);
}

struct PortalFirst : testing::Test {
    TemporaryFolder folder;
    std::shared_ptr<memory::MemoryTaskLauncher> launcher = std::make_shared<memory::MemoryTaskLauncher>();

    PortalFirst() {
        const std::string program = folder.write("xdg-open", "");
        ::chmod(program.c_str(), S_IRWXU);
        launcher->addProgram(text(program), NSData());
    }

    [[nodiscard]] std::int32_t open(const NSURL& url) const {
        return LinuxLaunchServices(launcher,
                                   environment({{"DBUS_SESSION_BUS_ADDRESS", addressOfBus()}, {"PATH", folder.path()}}))
            .openURL(url);
    }
};

TEST_F(PortalFirst, PortalThatRunsIsAskedAlone) {
    const FakePortal portal;
    EXPECT_EQ(open(NSURL::URLWithString("http://h/").value()), LaunchServices::noErr);
    EXPECT_NE(portal.asked().find("http://h/"), std::string::npos);
    EXPECT_TRUE(launcher->requests().empty());
}

TEST_F(PortalFirst, FileURLsAreHandedOverAsFiles) {
    const std::string path = folder.write("\u00E9 file", "content");
    const FakePortal portal;
    EXPECT_EQ(open(NSURL::fileURLWithPath(text(path)).value()), LaunchServices::noErr);
    EXPECT_NE(portal.asked().find(inodeOf(path)), std::string::npos);
    EXPECT_TRUE(launcher->requests().empty());
}

TEST_F(PortalFirst, PortalThatRefusesLeavesItToTheProgram) {
    const FakePortal portal(FakePortal::Opening::Refused);
    EXPECT_EQ(open(NSURL::URLWithString("http://h/").value()), LaunchServices::noErr);
    ASSERT_EQ(launcher->requests().size(), 1U);
    EXPECT_EQ(launcher->requests()[0].arguments, std::vector<NSString>{"http://h/"});
}

} // namespace
} // namespace qk::platform
