// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/FileResources.h"

#include "QKFoundation/platform/linux/LinuxFileManager.h"
#include "QKFoundation/platform/services/ResourceKeys.h"

#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>

namespace qk::platform {
namespace {

using tests::TemporaryFolder;

bool is(const NSString& key, const std::string& path) {
    const auto values = fileresources::read(LinuxRoot(), path, {key});
    const auto* number = values.has_value() ? values->get<NSNumber>(key) : nullptr;
    EXPECT_NE(number, nullptr) << key.utf8Lossy() << " of " << path;
    return number != nullptr && number->boolValue();
}

TEST(FileResources, WhatIsNotThereHasNone) {
    EXPECT_EQ(fileresources::read(LinuxRoot(), "/nonexistent/file", {NSURLIsRegularFileKey}), std::nullopt);
    EXPECT_EQ(fileresources::read(LinuxRoot(), "", {NSURLIsRegularFileKey}), std::nullopt);
}

TEST(FileResources, DatesAreThoseOfTheFileWithTheirFractions) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "");
    const std::array times{timespec{1'700'000'000, 500'000'000}, timespec{1'600'000'000, 250'000'000}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times.data(), 0), 0);
    EXPECT_EQ(
        fileresources::read(LinuxRoot(), path, {NSURLContentAccessDateKey, NSURLContentModificationDateKey}),
        (NSDictionary{{NSURLContentAccessDateKey, NSDate::dateWithTimeIntervalSince1970(1'700'000'000.5)},
                      {NSURLContentModificationDateKey, NSDate::dateWithTimeIntervalSince1970(1'600'000'000.25)}}));
}

TEST(FileResources, DatesOfALinkAreItsOwn) {
    const TemporaryFolder folder;
    folder.write("file", "");
    const std::string link = folder.path("link");
    std::filesystem::create_symlink("file", link);
    const std::array times{timespec{1'000'000, 0}, timespec{2'000'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, link.c_str(), times.data(), AT_SYMLINK_NOFOLLOW), 0);
    EXPECT_EQ(fileresources::read(LinuxRoot(), link, {NSURLContentModificationDateKey}),
              (NSDictionary{{NSURLContentModificationDateKey, NSDate::dateWithTimeIntervalSince1970(2'000'000)}}));
}

TEST(FileResources, RightsFollowThePermissions) {
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "");
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    EXPECT_FALSE(is(NSURLIsExecutableKey, path));
    if (::geteuid() != 0) { // who may read and write everything
        EXPECT_FALSE(is(NSURLIsReadableKey, path));
        EXPECT_FALSE(is(NSURLIsWritableKey, path));
    }
    ASSERT_EQ(::chmod(path.c_str(), 0700), 0);
    EXPECT_TRUE(is(NSURLIsReadableKey, path));
    EXPECT_TRUE(is(NSURLIsWritableKey, path));
    EXPECT_TRUE(is(NSURLIsExecutableKey, path));
}

TEST(FileResources, PipesAndDevicesAreOfNoKind) {
    const TemporaryFolder folder;
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const auto& path : {pipe, std::string("/dev/null")}) {
        EXPECT_FALSE(is(NSURLIsRegularFileKey, path));
        EXPECT_FALSE(is(NSURLIsSymbolicLinkKey, path));
        EXPECT_FALSE(is(NSURLIsDirectoryKey, path));
        EXPECT_FALSE(is(NSURLIsVolumeKey, path));
    }
}

TEST(FileResources, RootOfAMountIsAVolume) {
    EXPECT_TRUE(is(NSURLIsVolumeKey, "/"));
    EXPECT_TRUE(is(NSURLIsVolumeKey, "/proc"));
    EXPECT_FALSE(is(NSURLIsVolumeKey, "/proc/self/fd"));
    EXPECT_FALSE(is(NSURLIsVolumeKey, "/proc/stat"));
}

TEST(FileResources, CanonicalPathStaysBelowTheRootOfCapturedFiles) {
    const TemporaryFolder folder;
    folder.write("real/file", "");
    std::filesystem::create_symlink("real", folder.path("link"));
    EXPECT_EQ(fileresources::read(LinuxRoot(folder.path()), "/link/file", {NSURLCanonicalPathKey}),
              (NSDictionary{{NSURLCanonicalPathKey, "/real/file"}}));
    EXPECT_EQ(fileresources::read(LinuxRoot(folder.path()), "/", {NSURLCanonicalPathKey}),
              (NSDictionary{{NSURLCanonicalPathKey, "/"}}));
}

TEST(FileResources, EnumerationLeavesOutNamesThatNoURLHolds) {
    const TemporaryFolder folder;
    folder.write("caf\xE9", "");
    folder.write("plain", "");
    const NSURL url = NSURL::fileURLWithPath(NSString::fromUTF8Lossy(folder.path())).value();
    const auto items = LinuxFileManager().enumeratorAtURL(url, {}, 0);
    ASSERT_EQ(items.size(), 1U);
    EXPECT_EQ(items[0].url.path().value().lastPathComponent(), "plain");
}

} // namespace
} // namespace qk::platform
