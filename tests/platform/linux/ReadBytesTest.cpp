// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/ReadBytes.h"

#include "QKFoundation/platform/linux/LinuxRoot.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace qk::platform {
namespace {

using testing::Optional;
using testing::UnorderedElementsAre;
using tests::TemporaryFolder;

TEST(ReadBytes, NothingForWhatIsNoReadableFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(readBytes(folder.path("missing")), std::nullopt);
    EXPECT_EQ(readBytes(folder.path()), std::nullopt);
    EXPECT_EQ(readBytes(""), std::nullopt);
}

TEST(ReadBytes, EmptyFileIsEmptyAndNotNothing) {
    const TemporaryFolder folder;
    EXPECT_EQ(readBytes(folder.write("file", "")), "");
}

TEST(ReadBytes, GivesAllBytesOfFilesOfManySizes) {
    const TemporaryFolder folder;
    for (const std::size_t size : {1U, 4095U, 4096U, 4097U, 8192U, 100'000U}) {
        const std::string content(size, 'x');
        EXPECT_EQ(readBytes(folder.write("file", content)), content) << size;
    }
}

TEST(ReadBytes, MoreThanTheLimitIsNothing) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "12345");
    EXPECT_EQ(readBytes(path, 5), "12345");
    EXPECT_EQ(readBytes(path, 4), std::nullopt);
    EXPECT_EQ(readBytes("/dev/zero", 100'000), std::nullopt);
}

TEST(ReadBytes, ReadsFilesWhoseSizeIsNotTold) {
    EXPECT_THAT(readBytes("/proc/self/stat"), Optional(testing::Not(testing::IsEmpty())));
}

TEST(ReadBytes, PipeWithoutAWriterDoesNotBlock) {
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(readBytes(path), "");
}

TEST(ReadDirectory, NothingForWhatIsNoFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(readDirectory(folder.path("missing")), std::nullopt);
    EXPECT_EQ(readDirectory(folder.write("file", "")), std::nullopt);
}

TEST(ReadDirectory, LeavesOutTheFolderItselfAndItsParent) {
    const TemporaryFolder folder;
    EXPECT_THAT(readDirectory(folder.path()), Optional(testing::IsEmpty()));
    folder.write("..name", "");
    folder.write("sub/file", "");
    EXPECT_THAT(readDirectory(folder.path()), Optional(UnorderedElementsAre("..name", "sub")));
}

TEST(LinuxRoot, PutsAbsolutePathsBelowItself) {
    EXPECT_EQ(LinuxRoot().path("/etc/os-release"), "/etc/os-release");
    EXPECT_EQ(LinuxRoot("/").path("/etc/os-release"), "/etc/os-release");
    EXPECT_EQ(LinuxRoot("/mnt//").path("/etc/os-release"), "/mnt/etc/os-release");
    EXPECT_EQ(LinuxRoot("/mnt").path("relative"), "relative");
    EXPECT_TRUE(LinuxRoot("/").isHost());
    EXPECT_FALSE(LinuxRoot("/mnt").isHost());
}

} // namespace
} // namespace qk::platform
