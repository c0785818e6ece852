// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileURLs.h"
#include "QKFoundation/platform/linux/LinuxFileManager.h"
#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/system_info/QKHardwareVolumeUsage.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

/// Volumes that are really mounted, in a name space of this program's own: nothing of it shows outside, and all of it
/// is gone when the program ends. Needs the rights of root, and says so where it has not got them.
namespace qk::platform {
namespace {

using testing::Contains;
using testing::Not;

class RealMounts : public testing::Test {
protected:
    // Before the file manager of a test opens the table of mounts, which is that of its name space.
    static void SetUpTestSuite() {
        if (::unshare(CLONE_NEWNS) != 0 || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
            refusal_ = errno;
        }
    }
    void SetUp() override {
        if (refusal_ != 0) {
            GTEST_SKIP() << "no mount name space of our own: " << std::strerror(refusal_);
        }
    }
    void TearDown() override {
        for (auto path = mounted_.rbegin(); path != mounted_.rend(); ++path) {
            ::umount2(path->c_str(), MNT_DETACH | UMOUNT_NOFOLLOW);
        }
    }

    [[nodiscard]] std::string newFolder(const std::string& name) {
        std::filesystem::create_directories(folder_.path(name));
        return folder_.path(name);
    }
    [[nodiscard]] bool mount(const std::string& source, const std::string& path, const char* type,
                             unsigned long flags = 0, const std::string& data = "") {
        const bool isMounted = ::mount(source.c_str(), path.c_str(), type, flags, data.c_str()) == 0;
        if (isMounted) {
            mounted_.push_back(path);
        }
        return isMounted;
    }
    /// Mounts an image of 64 MB that holds an ext4 with the label "QK BACKUP"; false when the system has no tools or
    /// loop devices for that.
    [[nodiscard]] bool mountImage(const std::string& path) {
        const std::string image = folder_.write("image", "");
        std::filesystem::resize_file(image, std::uintmax_t{64} << 20U);
        const std::string command = "PATH=$PATH:/sbin:/usr/sbin; mkfs.ext4 -q -F -L 'QK BACKUP' '" + image +
                                    "' && mount -n -o loop '" + image + "' '" + path + "'";
        if (std::system((command + " 2>/dev/null").c_str()) != 0) { // NOLINT(cert-env33-c): of the test's own making
            return false;
        }
        mounted_.push_back(path);
        return true;
    }
    [[nodiscard]] std::vector<NSString> urls() const {
        std::vector<NSString> found;
        for (const NSURL& url : files_.mountedVolumeURLs(true)) {
            found.push_back(url.absoluteString());
        }
        return found;
    }
    static NSString urlOf(const std::string& path) { return folderURL(path).absoluteString(); }

    LinuxFileManager files_;

private:
    static inline int refusal_ = 0;
    tests::TemporaryFolder folder_;
    std::vector<std::string> mounted_;
};

std::string outputOf(const std::string& command) {
    std::string output;
    FILE* pipe = ::popen(command.c_str(), "r"); // NOLINT(cert-env33-c): of the test's own making
    std::array<char, 256> line{};
    while (pipe != nullptr && std::fgets(line.data(), line.size(), pipe) != nullptr) {
        output += line.data();
    }
    if (pipe != nullptr) {
        ::pclose(pipe);
    }
    return output;
}

TEST_F(RealMounts, AMountedImageIsEjectableAndHasItsLabel) {
    const std::string path = newFolder("my image");
    if (!mountImage(path)) {
        GTEST_SKIP() << "no loop device, mkfs.ext4 or mount";
    }
    ASSERT_THAT(urls(), Contains(urlOf(path)));
    const auto values =
        files_.resourceValuesForKeys(folderURL(path), {NSURLVolumeNameKey, NSURLVolumeIsEjectableKey,
                                                       NSURLVolumeIsRemovableKey, NSURLVolumeURLForRemountingKey,
                                                       NSURLVolumeTotalCapacityKey, NSURLVolumeAvailableCapacityKey});
    const auto volume = QKHardwareVolumeUsageData::initWithResourceValues(values);
    ASSERT_TRUE(volume.has_value());
    EXPECT_EQ(volume->name, "QK BACKUP");
    EXPECT_TRUE(volume->isEjectable);
    EXPECT_FALSE(volume->isRemoveable || volume->isRemountable);
    EXPECT_EQ(
        outputOf("df -B1 --output=size,avail '" + path + "' | { read -r line; read -r size free; echo $size $free; }"),
        std::to_string(volume->totalCapacity) + " " + std::to_string(volume->freeCapacity) + "\n");
    EXPECT_FALSE(QKHardwareVolumeUsage::isValidVolumeUsageData(*volume));
    for (const auto& listed : QKHardwareVolumeUsage::collectVolumesUsageData()) {
        EXPECT_NE(listed.name, "QK BACKUP");
    }
}

TEST_F(RealMounts, BindMountsAndFileSystemsInMemoryAreNotListed) {
    const std::string bound = newFolder("bound");
    const std::string inMemory = newFolder("memory");
    const auto before = urls();
    if (!mount(newFolder("origin"), bound, nullptr, MS_BIND) || !mount("tmpfs", inMemory, "tmpfs")) {
        GTEST_SKIP() << "mounting is not allowed: " << std::strerror(errno);
    }
    EXPECT_EQ(urls(), before);
}

TEST_F(RealMounts, MountingAndUnmountingIsNoticed) {
    const std::string path = newFolder("image mount");
    const auto before = urls();
    EXPECT_THAT(before, Not(Contains(urlOf(path))));
    if (!mountImage(path)) {
        GTEST_SKIP() << "no loop device, mkfs.ext4 or mount";
    }
    EXPECT_THAT(urls(), Contains(urlOf(path)));
    EXPECT_TRUE(files_.resourceValuesForKeys(folderURL(path), {NSURLVolumeNameKey}).has_value());
    ASSERT_EQ(::umount2(path.c_str(), 0), 0);
    EXPECT_FALSE(files_.resourceValuesForKeys(folderURL(path), {NSURLVolumeNameKey}).has_value());
    EXPECT_EQ(urls(), before);
}

TEST_F(RealMounts, ADeadNetworkMountDoesNotHoldAnybodyUp) {
    // A file system whose server never answers: whoever touches it waits until the program ends.
    const int server = ::open("/dev/fuse", O_RDWR | O_CLOEXEC);
    const std::string path = newFolder("dead server");
    const std::string options = "fd=" + std::to_string(server) + ",rootmode=40000,user_id=0,group_id=0,subtype=sshfs";
    if (server < 0 || !mount("ada@server:/home", path, "fuse", 0, options)) {
        GTEST_SKIP() << "no FUSE: " << std::strerror(errno);
    }
    ::alarm(60);
    EXPECT_THAT(urls(), Contains(urlOf(path)));
    const auto values = files_.resourceValuesForKeys(
        folderURL(path), {NSURLVolumeNameKey, NSURLVolumeURLForRemountingKey, NSURLVolumeTotalCapacityKey});
    const auto volume = QKHardwareVolumeUsageData::initWithResourceValues(values);
    ASSERT_TRUE(volume.has_value());
    EXPECT_EQ(volume->name, "dead server");
    EXPECT_TRUE(volume->isRemountable);
    EXPECT_EQ(volume->totalCapacity, 0U);
    static_cast<void>(QKHardwareVolumeUsage::collectVolumesUsageData());
    ::alarm(0);
    ::umount2(path.c_str(), MNT_FORCE | MNT_DETACH);
    ::close(server);
}

} // namespace
} // namespace qk::platform
