// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxHost.h"
#include "QKFoundation/platform/linux/LinuxProcessInfo.h"
#include "QKFoundation/platform/linux/LinuxSystemConfiguration.h"
#include "QKFoundation/platform/linux/SystemBus.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <string>

namespace qk::platform {
namespace {

using tests::TemporaryFolder;
using Version = NSOperatingSystemVersion;

LinuxRoot fixture(const std::string& name) {
    return LinuxRoot(std::string(QK_FIXTURES_DIR "/linux/") + name);
}

TEST(LinuxProcessInfo, NoReleaseFileIsNoAnswer) {
    const LinuxProcessInfo info(fixture("no-such-machine"));
    EXPECT_EQ(info.operatingSystemVersion(), std::nullopt);
    EXPECT_EQ(info.gestalt(GestaltSelector::gestaltSystemVersionMajor), std::nullopt);
}

TEST(LinuxProcessInfo, ReadsTheDistributionsVersion) {
    EXPECT_EQ(LinuxProcessInfo(fixture("virtual-machine")).operatingSystemVersion(), (Version{12, 0, 0}));
    EXPECT_EQ(LinuxProcessInfo(fixture("laptop")).operatingSystemVersion(), (Version{22, 4, 0}));
    EXPECT_EQ(LinuxProcessInfo(fixture("arm-board")).operatingSystemVersion(), (Version{0, 0, 0}));
}

TEST(LinuxProcessInfo, FileOfTheAdministratorHidesTheOneOfTheVendor) {
    const TemporaryFolder folder;
    folder.write("usr/lib/os-release", "VERSION_ID=1\n");
    const LinuxProcessInfo info{LinuxRoot(folder.path())};
    EXPECT_EQ(info.operatingSystemVersion(), (Version{1, 0, 0}));
    folder.write("etc/os-release", "VERSION_ID=2\n");
    EXPECT_EQ(info.operatingSystemVersion(), (Version{2, 0, 0}));
}

TEST(LinuxProcessInfo, GestaltTellsOnePart) {
    const TemporaryFolder folder;
    folder.write("etc/os-release", "VERSION_ID=1.2.3000000000\n");
    const LinuxProcessInfo info{LinuxRoot(folder.path())};
    EXPECT_EQ(info.gestalt(GestaltSelector::gestaltSystemVersionMajor), 1);
    EXPECT_EQ(info.gestalt(GestaltSelector::gestaltSystemVersionMinor), 2);
    EXPECT_EQ(info.gestalt(GestaltSelector::gestaltSystemVersionBugFix), std::nullopt) << "more than 32 bits";
    EXPECT_EQ(info.gestalt(static_cast<GestaltSelector>(0)), std::nullopt);
}

TEST(LinuxSystemConfiguration, NameThatIsNotSetIsNone) {
    EXPECT_EQ(LinuxSystemConfiguration(fixture("no-such-machine")).copyComputerName(), std::nullopt);
    EXPECT_EQ(LinuxSystemConfiguration(fixture("laptop")).copyComputerName(), std::nullopt) << "\"(none)\"";
}

TEST(LinuxSystemConfiguration, TellsTheNodeName) {
    EXPECT_EQ(LinuxSystemConfiguration(fixture("virtual-machine")).copyComputerName(), "vm");
    utsname names{};
    ASSERT_EQ(::uname(&names), 0);
    if (std::string(names.nodename) != "(none)" && names.nodename[0] != '\0') {
        EXPECT_EQ(LinuxSystemConfiguration().copyComputerName(), NSString::fromUTF8Lossy(names.nodename));
    }
}

TEST(LinuxHost, NobodyNamedAMachineWithoutMachineInfo) {
    EXPECT_EQ(LinuxHost(fixture("no-such-machine")).localizedName(), std::nullopt);
}

TEST(LinuxHost, EmptyPrettyNameIsNone) {
    const TemporaryFolder folder;
    folder.write("etc/machine-info", "PRETTY_HOSTNAME=\"\"\n");
    EXPECT_EQ(LinuxHost(LinuxRoot(folder.path())).localizedName(), std::nullopt);
}

TEST(LinuxHost, TellsThePrettyName) {
    EXPECT_EQ(LinuxHost(fixture("laptop")).localizedName(), "Anna’s \"big\" laptop");
}

TEST(LinuxHost, UserNameIsThatOfThePasswordEntryWhateverTheEnvironmentSays) {
    const passwd* entry = ::getpwuid(::getuid());
    ASSERT_EQ(::setenv("USER", "forged", 1), 0);
    ASSERT_EQ(::setenv("LOGNAME", "forged", 1), 0);
    const std::optional<NSString> name = LinuxHost().userName();
    EXPECT_EQ(name.has_value(), entry != nullptr);
    if (entry != nullptr) {
        EXPECT_EQ(name, NSString::fromUTF8Lossy(entry->pw_name));
    }
}

TEST(SystemBus, NoBusIsNoAnswer) {
    ASSERT_EQ(::setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1), 0);
    EXPECT_EQ(readBusProperty({"org.example", "/org/example", "org.example"}, "Name", std::chrono::seconds(5)),
              std::nullopt);
}

// A bus that takes the connection and then never says a word.
TEST(SystemBus, DeadBusIsGivenUpAfterTheLimit) {
    const TemporaryFolder folder;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder.path("bus");
    ASSERT_LT(path.size(), sizeof(address.sun_path));
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_GE(listener, 0);
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    ASSERT_EQ(::listen(listener, 8), 0);
    ASSERT_EQ(::setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:path=" + path).c_str(), 1), 0);
    EXPECT_EQ(readBusProperty({"org.example", "/org/example", "org.example"}, "Name", std::chrono::milliseconds(20)),
              std::nullopt);
    ::close(listener);
}

} // namespace
} // namespace qk::platform
