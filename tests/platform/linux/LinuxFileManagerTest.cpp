// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFileManager.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::Optional;
using tests::TemporaryFolder;

constexpr const char kSystemVersion[] = "/System/Library/CoreServices/SystemVersion.plist";

LinuxFileManager managerOf(const std::string& fixture) {
    return LinuxFileManager(LinuxRoot(std::string(QK_FIXTURES_DIR "/linux/") + fixture));
}

NSString string(const std::string& path) {
    return NSString::fromUTF8Lossy(path);
}

TEST(LinuxFileManager, SystemWithoutReleaseFileHasNoVersionDictionary) {
    EXPECT_EQ(managerOf("no-such-machine").dictionaryWithContentsOfFile(kSystemVersion), std::nullopt);
}

TEST(LinuxFileManager, VersionDictionaryHasTheKeysThatThereAre) {
    EXPECT_EQ(managerOf("virtual-machine").dictionaryWithContentsOfFile(kSystemVersion),
              (NSDictionary{{"ProductName", "Debian GNU/Linux"},
                            {"ProductVersion", "12"},
                            {"ProductBuildVersion", "6.1.0-30-amd64"}}));
    EXPECT_EQ(managerOf("laptop").dictionaryWithContentsOfFile(kSystemVersion),
              (NSDictionary{{"ProductName", "Example Linux"},
                            {"ProductVersion", "22.04"},
                            {"ProductBuildVersion", "20240131.2"}}));
    EXPECT_EQ(managerOf("arm-board").dictionaryWithContentsOfFile(kSystemVersion),
              (NSDictionary{{"ProductName", "Rolling"}}));
}

TEST(LinuxFileManager, ReadsPropertyListsOfDictionariesOnly) {
    const TemporaryFolder folder;
    const LinuxFileManager manager;
    EXPECT_EQ(manager.dictionaryWithContentsOfFile(string(folder.path("missing.plist"))), std::nullopt);
    EXPECT_EQ(manager.dictionaryWithContentsOfFile(string(folder.path())), std::nullopt);
    const std::string list = folder.write("a.plist", "<plist version=\"1.0\"><dict><key>a</key><true/></dict></plist>");
    EXPECT_EQ(manager.dictionaryWithContentsOfFile(string(list)), (NSDictionary{{"a", true}}));
    const std::string array = folder.write("b.plist", "<plist version=\"1.0\"><array/></plist>");
    EXPECT_EQ(manager.dictionaryWithContentsOfFile(string(array)), std::nullopt);
}

TEST(LinuxFileManager, NamesThatAreNotUTF8WorkInEveryCall) {
    const TemporaryFolder folder;
    LinuxFileManager manager;
    const NSString name = string(folder.path()) + NSString(u"/caf\xDCE9"sv);
    EXPECT_TRUE(manager.createDirectoryAtPath(name, false));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path("caf\xE9")));
    EXPECT_THAT(manager.contentsOfDirectoryAtPath(string(folder.path())),
                Optional(ElementsAre(NSString(u"caf\xDCE9"sv))));
    EXPECT_THAT(manager.contentsOfDirectoryAtPath(name), Optional(testing::IsEmpty()));
}

TEST(LinuxFileManager, PathsThatTheKernelCannotHaveNameNothing) {
    LinuxFileManager manager;
    for (const NSString& path : {NSString(u"/tmp/a\0b"sv), NSString(u"/tmp/\xD800"sv), NSString()}) {
        EXPECT_FALSE(manager.createDirectoryAtPath(path, true));
        EXPECT_EQ(manager.contentsOfDirectoryAtPath(path), std::nullopt);
        EXPECT_EQ(manager.dictionaryWithContentsOfFile(path), std::nullopt);
    }
}

TEST(LinuxFileManager, LinkToAFolderCountsAsTheFolder) {
    const TemporaryFolder folder;
    LinuxFileManager manager;
    folder.write("real/file", "");
    std::filesystem::create_symlink("real", folder.path("link"));
    EXPECT_TRUE(manager.createDirectoryAtPath(string(folder.path("link")), true));
    EXPECT_TRUE(manager.createDirectoryAtPath(string(folder.path("link/new/deep")), true));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path("real/new/deep")));
    std::filesystem::create_symlink("nowhere", folder.path("broken"));
    EXPECT_FALSE(manager.createDirectoryAtPath(string(folder.path("broken")), true));
    EXPECT_FALSE(manager.createDirectoryAtPath(string(folder.path("broken/new")), true));
}

TEST(LinuxFileManager, SeveralSlashesAreOne) {
    const TemporaryFolder folder;
    LinuxFileManager manager;
    EXPECT_TRUE(manager.createDirectoryAtPath(string(folder.path() + "///a//b///"), true));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path("a/b")));
    EXPECT_TRUE(manager.createDirectoryAtPath("/", true));
    EXPECT_FALSE(manager.createDirectoryAtPath("/", false));
}

TEST(LinuxFileManager, NewFoldersFollowTheUmask) {
    const TemporaryFolder folder;
    LinuxFileManager manager;
    const mode_t before = ::umask(027);
    EXPECT_TRUE(manager.createDirectoryAtPath(string(folder.path("a")), false));
    ::umask(before);
    struct stat status {};
    ASSERT_EQ(::stat(folder.path("a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0750U);
}

} // namespace
} // namespace qk::platform
