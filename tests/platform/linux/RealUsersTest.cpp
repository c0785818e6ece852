// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/internal/StandardPaths.h"
#include "QKFoundation/platform/linux/LinuxServices.h"
#include "QKFoundation/platform/linux/LinuxUsers.h"
#include "QKFoundation/system_info/internal/ProcessOwner.h"

#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <thread>

/// Users that really are in the databases of the system, which are this program's own in a mount name space of its own,
/// and switches to them. Needs the rights of root, and says so where it has not got them.
namespace qk::platform {
namespace {

constexpr std::uint32_t kThrowAway = 54321;
constexpr int kMembers = 20'000; // far more than the first buffer holds

class RealUsers : public testing::Test {
protected:
    static void SetUpTestSuite() {
        std::string members;
        for (int member = 0; member < kMembers; ++member) {
            members += "member" + std::to_string(member) + ",";
        }
        if (::unshare(CLONE_NEWNS) != 0 || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            !cover("/etc/passwd", "root:x:0:0:root:/root:/bin/sh\nqkanna:x:54321:54321::/home/qkanna:/bin/sh\n") ||
            !cover("/etc/group", "root:x:0:\nadmin:x:54320:" + members + "qkanna\nempty:x:54322:\n") ||
            !cover("/etc/nsswitch.conf", "passwd: files\ngroup: files\n")) {
            refusal_ = errno;
        }
    }
    void SetUp() override {
        if (refusal_ != 0) {
            GTEST_SKIP() << "no mount name space of our own: " << std::strerror(refusal_);
        }
    }
    /// Runs `work` in a process of its own, since a switch is one of the whole process; true when it returns true.
    template <typename Work>
    static bool inChild(Work work) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::_exit(work() ? 0 : 1);
        }
        int status = 0;
        while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        return child > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

private:
    static bool cover(const char* path, const std::string& content) {
        if (::access(path, F_OK) != 0) {
            return true; // a system without that file has the answer built in
        }
        static const tests::TemporaryFolder folder;
        const std::string file = folder.write(path + 1, content);
        return ::mount(file.c_str(), path, nullptr, MS_BIND, nullptr) == 0;
    }
    static inline int refusal_ = 0;
};

TEST_F(RealUsers, EntryIsThatOfTheDatabase) {
    const auto entry = LinuxUsers().getpwuid(kThrowAway);
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->name, "qkanna");
    EXPECT_EQ(entry->uid, kThrowAway);
    EXPECT_EQ(entry->homeDirectory, "/home/qkanna");
    EXPECT_FALSE(LinuxUsers().getpwuid(kThrowAway + 1).has_value());
}

TEST_F(RealUsers, GroupWithThousandsOfMembersIsReadWhole) {
    const auto group = LinuxUsers().getgrnam("admin");
    ASSERT_TRUE(group.has_value());
    ASSERT_EQ(group->members.size(), static_cast<std::size_t>(kMembers) + 1);
    EXPECT_EQ(group->members.front(), "member0");
    EXPECT_EQ(group->members.back(), "qkanna");
    EXPECT_TRUE(LinuxUsers().getgrnam("empty")->members.empty());
}

TEST_F(RealUsers, SwitchIsOneOfTheWholeProcessAndBackAgain) {
    EXPECT_TRUE(inChild([] {
        LinuxUsers users;
        bool otherThread = false;
        const bool there = users.seteuid(kThrowAway) && ::geteuid() == kThrowAway && users.getuid() == 0;
        std::thread([&otherThread] { otherThread = ::geteuid() == kThrowAway; }).join();
        return there && otherThread && users.seteuid(0) && ::geteuid() == 0;
    }));
}

TEST_F(RealUsers, UserWithoutTheRightIsRefused) {
    EXPECT_TRUE(inChild([] {
        LinuxUsers users;
        return ::setuid(kThrowAway) == 0 && !users.seteuid(0) && users.geteuid() == kThrowAway;
    }));
}

class RealLookUp : public RealUsers {
protected:
    RealLookUp() {
        root.write("run/systemd/seats/seat0", "ACTIVE=c1\nACTIVE_UID=54321\n");
        root.write("run/systemd/users/54321", "NAME=qkanna\n");
        root.write("home/qkanna/.config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Fetched\"\n");
        ::chmod(root.path().c_str(), 0755); // the switched user reads below it
    }
    [[nodiscard]] NSString lookUp(NSSearchPathDirectory directory) const {
        return internal::userPathForDirectory(services, *manager, directory, "Library/X");
    }

    tests::TemporaryFolder root;
    Services services = makeLinuxServices(LinuxRoot(root.path()));
    std::shared_ptr<NSFileManager> manager = NSFileManager::init();
};

TEST_F(RealLookUp, RootFindsTheFoldersOfTheUserAtTheConsoleAndIsRootAgain) {
    EXPECT_TRUE(inChild([this] {
        ::setenv("XDG_CACHE_HOME", "/root/cache", 1);
        using enum NSSearchPathDirectory;
        return lookUp(NSCachesDirectory) == "/home/qkanna/.cache" &&
               lookUp(NSDownloadsDirectory) == "/home/qkanna/Fetched" &&
               lookUp(NSApplicationSupportDirectory) == "/home/qkanna/.local/share" && ::geteuid() == 0 &&
               ::getuid() == 0;
    }));
}

TEST_F(RealLookUp, OwnerIsTheRealUserDuringASwitchToo) {
    EXPECT_TRUE(inChild([this] {
        return ::seteuid(kThrowAway) == 0 && internal::processOwnerUID(services) == 0 && ::seteuid(0) == 0 &&
               internal::isProcessOwnerRootUser(services);
    }));
}

TEST_F(RealLookUp, AnotherUserThanRootFindsItsOwnFolders) {
    EXPECT_TRUE(inChild([this] {
        ::unsetenv("XDG_CACHE_HOME");
        return ::setuid(kThrowAway) == 0 && lookUp(NSSearchPathDirectory::NSCachesDirectory) == "/home/qkanna/.cache" &&
               internal::isProcessOwnerConsoleUser(services) && internal::isProcessOwnerInAdminGroup(services);
    }));
}

} // namespace
} // namespace qk::platform
