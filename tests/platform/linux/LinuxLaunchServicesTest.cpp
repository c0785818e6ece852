// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxLaunchServices.h"

#include "QKFoundation/platform/linux/LinuxServices.h"
#include "QKFoundation/platform/linux/LinuxTaskLauncher.h"
#include "QKFoundation/platform/linux/ReadBytes.h"

#include "tests/platform/linux/Environment.h"
#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace qk::platform {
namespace {

using tests::environment;
using tests::TemporaryFolder;

constexpr std::int32_t kNoErr = LaunchServices::noErr;
constexpr std::int32_t kNobody = LaunchServices::kLSApplicationNotFoundErr;

// A desktop without a session bus, with the programs that a test puts there. They write their arguments to "log".
struct Desktop {
    TemporaryFolder folder;

    void addProgram(const std::string& name, int status) const {
        const std::string path =
            folder.write("bin/" + name, "#!/bin/sh\nprintf '[%s]' \"${0##*/}\" \"$@\" >>'" + folder.path("log") +
                                            "'\nexit " + std::to_string(status) + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }

    [[nodiscard]] std::int32_t open(const char* url) const {
        LinuxLaunchServices services(std::make_shared<LinuxTaskLauncher>(),
                                     environment({{"PATH", "relative::" + folder.path("bin")}}));
        return services.openURL(NSURL::URLWithString(text(url)).value());
    }

    [[nodiscard]] std::string log() const { return readBytes(folder.path("log")).value_or(""); }
};

TEST(LinuxLaunchServices, DesktopWithoutPrograms) {
    EXPECT_EQ(Desktop().open("http://h/"), kNobody);
}

TEST(LinuxLaunchServices, URLWithoutASchemeIsNobodys) {
    const Desktop desktop;
    desktop.addProgram("xdg-open", 0);
    EXPECT_EQ(desktop.open("--help"), kNobody);
    EXPECT_EQ(desktop.open("/etc/hosts"), kNobody);
    EXPECT_EQ(desktop.log(), "");
}

TEST(LinuxLaunchServices, URLIsHandedToTheDesktopsProgram) {
    const Desktop desktop;
    desktop.addProgram("xdg-open", 0);
    desktop.addProgram("gio", 0);
    EXPECT_EQ(desktop.open("http://h/a%20b?c=1&d=$(e)#f"), kNoErr);
    EXPECT_EQ(desktop.open("file:///a%20b"), kNoErr);
    EXPECT_EQ(desktop.log(), "[xdg-open][http://h/a%20b?c=1&d=$(e)#f][xdg-open][file:///a%20b]");
}

TEST(LinuxLaunchServices, OtherProgramStandsIn) {
    const Desktop desktop;
    desktop.addProgram("gio", 0);
    EXPECT_EQ(desktop.open("mailto:someone"), kNoErr);
    EXPECT_EQ(desktop.log(), "[gio][open][mailto:someone]");
}

TEST(LinuxLaunchServices, ProgramThatFailsHasNotOpenedAnything) {
    const Desktop desktop;
    desktop.addProgram("xdg-open", 3);
    desktop.addProgram("gio", 0);
    EXPECT_EQ(desktop.open("http://h/"), kNobody);
    EXPECT_EQ(desktop.log(), "[xdg-open][http://h/]") << "the other one is not asked as well";
}

TEST(LinuxLaunchServices, FileThatIsNoProgramIsPassedOver) {
    const Desktop desktop;
    desktop.folder.write("bin/xdg-open", "#!/bin/sh\nexit 0\n");
    EXPECT_EQ(desktop.open("http://h/"), kNobody);
}

TEST(LinuxLaunchServices, BusThatIsNotThereMakesNoDifference) {
    const Desktop desktop;
    desktop.addProgram("xdg-open", 0);
    for (const std::map<std::string, std::string>& variables :
         {std::map<std::string, std::string>{{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus"}},
          {{"DBUS_SESSION_BUS_ADDRESS", "unixexec:path=/bin/false"}},
          {{"DBUS_SESSION_BUS_ADDRESS", "malformed"}},
          {{"XDG_RUNTIME_DIR", "/nonexistent"}},
          {{"XDG_RUNTIME_DIR", "relative"}}}) {
        auto all = variables;
        all["PATH"] = desktop.folder.path("bin");
        LinuxLaunchServices services(std::make_shared<LinuxTaskLauncher>(), environment(all));
        EXPECT_EQ(services.openURL(NSURL::URLWithString("http://h/").value()), kNoErr);
    }
}

TEST(LinuxLaunchServices, NothingIsOpenedOnAMachineThatIsOnlyLookedAt) {
    const TemporaryFolder folder;
    const Services services = makeLinuxServices(LinuxRoot(folder.path()));
    EXPECT_EQ(services.launchServices->openURL(NSURL::URLWithString("http://h/").value()), kNobody);
}

} // namespace
} // namespace qk::platform
