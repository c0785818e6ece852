// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxUsers.h"

#include "QKFoundation/platform/linux/LinuxProcessInfo.h"

#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace qk::platform {
namespace {

using tests::TemporaryFolder;

class ConsoleUserOfLinux : public testing::Test {
protected:
    void seat(const std::string& lines) { root_.write("run/systemd/seats/seat0", lines); }
    void session(const std::string& id, const std::string& lines) { root_.write("run/systemd/sessions/" + id, lines); }
    void user(const std::string& uid, const std::string& lines) { root_.write("run/systemd/users/" + uid, lines); }
    /// A terminal in front with that owner; only root may make one of another owner.
    [[nodiscard]] bool terminal(uid_t owner) {
        root_.write("sys/class/tty/tty0/active", "tty7\n");
        return ::chown(root_.write("dev/tty7", "").c_str(), owner, static_cast<gid_t>(-1)) == 0;
    }
    [[nodiscard]] std::optional<ConsoleUser> consoleUser() const {
        return LinuxUsers(LinuxRoot(root_.path())).copyConsoleUser();
    }

    TemporaryFolder root_;
};

TEST_F(ConsoleUserOfLinux, MachineWithoutAConsoleHasNobodyAtIt) {
    EXPECT_FALSE(consoleUser().has_value());
}

TEST_F(ConsoleUserOfLinux, SeatWithoutASessionHasNobodyWhoeverOwnsTheTerminal) {
    seat("IS_SEAT0=1\n");
    static_cast<void>(terminal(1));
    EXPECT_FALSE(consoleUser().has_value());
}

TEST_F(ConsoleUserOfLinux, UserOfTheActiveSessionIsNamedByTheUsersFile) {
    seat("ACTIVE=c3\nACTIVE_UID=4242\n");
    session("c3", "CLASS=user\nREMOTE=0\n");
    user("4242", "NAME=anna\n");
    ASSERT_TRUE(consoleUser().has_value());
    EXPECT_EQ(consoleUser()->uid, 4242U);
    EXPECT_EQ(consoleUser()->name, "anna");
}

TEST_F(ConsoleUserOfLinux, SessionThatTellsNothingCounts) {
    seat("ACTIVE=c3\nACTIVE_UID=4242\n");
    user("4242", "NAME=anna\n");
    EXPECT_TRUE(consoleUser().has_value());
}

TEST_F(ConsoleUserOfLinux, LogInScreenIsNobody) {
    seat("ACTIVE=c1\nACTIVE_UID=120\n");
    session("c1", "UID=120\nUSER=gdm\nCLASS=greeter\n");
    user("120", "NAME=gdm\n");
    EXPECT_FALSE(consoleUser().has_value());
}

TEST_F(ConsoleUserOfLinux, RootInASessionIsAUser) {
    seat("ACTIVE=1\nACTIVE_UID=0\n");
    session("1", "CLASS=user\n");
    ASSERT_TRUE(consoleUser().has_value()) << "named by the password database";
    EXPECT_EQ(consoleUser()->uid, 0U);
    EXPECT_EQ(consoleUser()->name, NSString::fromUTF8Lossy(::getpwuid(0)->pw_name));
}

TEST_F(ConsoleUserOfLinux, UserWithoutAnyNameIsNobody) {
    seat("ACTIVE=c3\nACTIVE_UID=4294967294\n");
    EXPECT_FALSE(consoleUser().has_value());
}

TEST_F(ConsoleUserOfLinux, WithoutSeatsTheOwnerOfTheTerminalInFrontIsAtTheConsole) {
    const passwd* daemon = ::getpwnam("daemon");
    if (daemon == nullptr || !terminal(daemon->pw_uid)) {
        GTEST_SKIP() << "no other user to give a file to, or not root";
    }
    ASSERT_TRUE(consoleUser().has_value());
    EXPECT_EQ(consoleUser()->uid, daemon->pw_uid);
    EXPECT_EQ(consoleUser()->name, "daemon");
}

TEST_F(ConsoleUserOfLinux, TerminalOfRootIsOneWhereNobodyIsLoggedIn) {
    if (!terminal(0)) {
        GTEST_SKIP() << "not root";
    }
    EXPECT_FALSE(consoleUser().has_value());
}

TEST_F(ConsoleUserOfLinux, TerminalThatIsGoneIsNobodys) {
    root_.write("sys/class/tty/tty0/active", "tty7\n");
    EXPECT_FALSE(consoleUser().has_value());
}

TEST(LinuxUsers, TellsTheIDsOfTheProcess) {
    const LinuxUsers users;
    EXPECT_EQ(users.getuid(), ::getuid());
    EXPECT_EQ(users.geteuid(), ::geteuid());
}

TEST(LinuxUsers, TellsTheSystemsEntries) {
    const LinuxUsers users;
    const auto root = users.getpwuid(0);
    ASSERT_TRUE(root.has_value());
    EXPECT_EQ(root->name, ::getpwuid(0)->pw_name);
    EXPECT_EQ(root->homeDirectory, NSString::fromUTF8Lossy(::getpwuid(0)->pw_dir));
    const group* first = ::getgrgid(0);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(users.getgrnam(first->gr_name)->name, first->gr_name);
}

TEST(LinuxProcessInfo, ProgramLiesInTheFolderOfItsExecutable) {
    const NSString self =
        NSString::fromUTF8Lossy(std::filesystem::read_symlink("/proc/self/exe").parent_path().string());
    EXPECT_EQ(LinuxProcessInfo().mainBundlePath(), self);
    EXPECT_EQ(LinuxProcessInfo().bundlePathForClass("WebView"), std::nullopt);
}

TEST(LinuxProcessInfo, FolderOfAProgramThatWasReplacedIsKnown) {
    const TemporaryFolder root;
    EXPECT_EQ(LinuxProcessInfo(LinuxRoot(root.path())).mainBundlePath(), "");
    std::filesystem::create_directories(root.path("proc/self"));
    std::filesystem::create_symlink("/opt/app/bin/program (deleted)", root.path("proc/self/exe"));
    EXPECT_EQ(LinuxProcessInfo(LinuxRoot(root.path())).mainBundlePath(), "/opt/app/bin");
}

} // namespace
} // namespace qk::platform
