// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+ApplicationSupportPath.h"
#include "QKFoundation/files/NSFileManager+CachesPath.h"
#include "QKFoundation/files/NSFileManager+DownloadPath.h"
#include "QKFoundation/files/NSFileManager+UserDirectoryLookup.h"
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace qk {
namespace {

using namespace NSFileManager_ApplicationSupportPath;
using NSFileManager_CachesPath::cachesPath;
using NSFileManager_DownloadPath::downloadPath;
using NSFileManager_UserDirectoryLookup::setUseTemporaryDirectoryAsUserPath;
using platform::memory::Machine;
using platform::memory::ScopedMachine;
using enum NSSearchPathDirectory;
using enum NSSearchPathDomainMask;

constexpr char kHelper[] = "/Applications/Helper.app";

class StandardPaths : public testing::Test {
protected:
    StandardPaths() {
        machine.users.addPasswordEntry({"anna", 1000, "/Users/anna"});
        machine.users.addPasswordEntry({"root", 0, "/var/root"});
        machine.users.setUserID(1000);
        machine.fileManager.setSearchPaths(NSApplicationSupportDirectory, NSUserDomainMask, {"~/Support"});
        machine.fileManager.setSearchPaths(NSCachesDirectory, NSUserDomainMask, {"~/Caches"});
        machine.fileManager.setSearchPaths(NSApplicationSupportDirectory, NSSystemDomainMask, {"/Library/Support"});
    }
    [[nodiscard]] std::shared_ptr<NSBundle> helper(const std::optional<NSDictionary>& list = std::nullopt) {
        machine.fileManager.addDirectory(kHelper);
        if (list.has_value()) {
            machine.fileManager.addPropertyList("/Applications/Helper.app/Contents/Info.plist", *list);
        }
        return NSBundle::bundleWithPath(kHelper);
    }

    Machine machine;
    ScopedMachine installed{machine};
    std::shared_ptr<NSFileManager> manager = NSFileManager::init();
};

TEST_F(StandardPaths, WithoutABundleThereIsNoName) {
    EXPECT_EQ(displayNameForBundle(*manager, nullptr), std::nullopt);
    EXPECT_EQ(applicationSupportPathWithBundle(*manager, nullptr), std::nullopt);
    EXPECT_EQ(systemApplicationSupportPathWithBundle(*manager, nullptr), std::nullopt);
}

TEST_F(StandardPaths, WithoutAMainBundleThereAreNoPathsOfIt) {
    EXPECT_EQ(applicationSupportPath(*manager), std::nullopt);
    EXPECT_EQ(systemApplicationSupportPath(*manager), std::nullopt);
    EXPECT_EQ(cachesPath(*manager), std::nullopt);
}

TEST_F(StandardPaths, BundleWithoutADisplayNameIsNamedAsItsFolderWithoutExtension) {
    EXPECT_EQ(displayNameForBundle(*manager, helper()), "Helper");
    EXPECT_EQ(displayNameForBundle(*manager, helper(NSDictionary{{"CFBundleName", "x"}})), "Helper");
}

TEST_F(StandardPaths, TheExtensionGoesFromTheNameThatIsShown) {
    machine.fileManager.setDisplayName(kHelper, "Remote Help.v2");
    EXPECT_EQ(displayNameForBundle(*manager, helper()), "Remote Help");
}

TEST_F(StandardPaths, DisplayNameOfTheInformationListComesFirst) {
    EXPECT_EQ(displayNameForBundle(*manager, helper(NSDictionary{{"CFBundleDisplayName", "Remote Help 2.0"}})),
              "Remote Help 2.0");
}

TEST_F(StandardPaths, DisplayNameIsInTheUsersLanguage) {
    machine.locale.setPreferredLanguages({"de-DE", "en"});
    machine.fileManager.addPropertyList("/Applications/Helper.app/Contents/Resources/de.lproj/InfoPlist.strings",
                                        NSDictionary{{"CFBundleDisplayName", "Fernhilfe"}});
    EXPECT_EQ(displayNameForBundle(*manager, helper(NSDictionary{{"CFBundleDisplayName", "Remote Help"}})),
              "Fernhilfe");
}

TEST_F(StandardPaths, AnEmptyDisplayNameIsUsedAndLeavesTheFolder) {
    const auto bundle = helper(NSDictionary{{"CFBundleDisplayName", ""}});
    EXPECT_EQ(displayNameForBundle(*manager, bundle), "");
    EXPECT_EQ(applicationSupportPathWithBundle(*manager, bundle), "/Users/anna/Support");
}

TEST_F(StandardPaths, DataLiesInAFolderNamedAsTheBundle) {
    EXPECT_EQ(applicationSupportPathWithBundle(*manager, helper()), "/Users/anna/Support/Helper");
    EXPECT_EQ(systemApplicationSupportPathWithBundle(*manager, helper()), "/Library/Support/Helper");
    EXPECT_FALSE(machine.fileManager.isDirectory("/Users/anna/Support")) << "nothing is made for the user";
    EXPECT_TRUE(machine.fileManager.isDirectory("/Library/Support"));
    EXPECT_FALSE(machine.fileManager.isDirectory("/Library/Support/Helper"));
}

TEST_F(StandardPaths, MainBundleIsMeantWhereNoneIsGiven) {
    machine.fileManager.addDirectory(kHelper);
    machine.processInfo.setMainBundlePath(kHelper);
    EXPECT_EQ(applicationSupportPath(*manager), "/Users/anna/Support/Helper");
    EXPECT_EQ(systemApplicationSupportPath(*manager), "/Library/Support/Helper");
    EXPECT_EQ(cachesPath(*manager), "/Users/anna/Caches/Helper");
}

TEST_F(StandardPaths, DefaultNamesAreThoseOfTheFolders) {
    machine.fileManager.addDirectory(kHelper);
    machine.processInfo.setMainBundlePath(kHelper);
    machine.fileManager.setSearchPaths(NSApplicationSupportDirectory, NSUserDomainMask, {});
    machine.fileManager.setSearchPaths(NSCachesDirectory, NSUserDomainMask, {});
    EXPECT_EQ(applicationSupportPath(*manager), "/Users/anna/Library/Application Support/Helper");
    EXPECT_EQ(cachesPath(*manager), "/Users/anna/Library/Caches/Helper");
}

TEST_F(StandardPaths, EverybodysFolderThatCannotBeMadeIsNone) {
    machine.fileManager.addFile("/Library");
    EXPECT_EQ(systemApplicationSupportPathWithBundle(*manager, helper()), std::nullopt);
    machine.fileManager.setSearchPaths(NSApplicationSupportDirectory, NSSystemDomainMask, {});
    EXPECT_EQ(systemApplicationSupportPathWithBundle(*manager, helper()), std::nullopt);
}

TEST_F(StandardPaths, WithTheFlagOfRootDataAndCachesLieInOneFolder) {
    machine.users.setUserID(0);
    machine.fileManager.addDirectory(kHelper);
    machine.processInfo.setMainBundlePath(kHelper);
    setUseTemporaryDirectoryAsUserPath(*manager, true);
    EXPECT_EQ(applicationSupportPath(*manager), "/tmp/Helper");
    EXPECT_EQ(cachesPath(*manager), "/tmp/Helper");
}

TEST_F(StandardPaths, DownloadsLieBelowTheHomeFolderUnlessListed) {
    EXPECT_EQ(downloadPath(*manager), "/Users/anna/Downloads");
    machine.fileManager.setSearchPaths(NSDownloadsDirectory, NSUserDomainMask, {"/srv/fetched", "~/x"});
    EXPECT_EQ(downloadPath(*manager), "/srv/fetched");
}

TEST_F(StandardPaths, DownloadsLookAtNeitherConsoleNorFlag) {
    machine.users.setUserID(0);
    machine.users.setConsoleUser(platform::ConsoleUser{"anna", 1000});
    setUseTemporaryDirectoryAsUserPath(*manager, true);
    EXPECT_EQ(downloadPath(*manager), "/var/root/Downloads");
    EXPECT_EQ(machine.users.consoleRequests(), 0U);
    EXPECT_TRUE(machine.users.switches().empty());
}

TEST_F(StandardPaths, DownloadsForCStayReadableUntilTheThreadAsksAgain) {
    const char* const first = qk_getDownloadPath();
    EXPECT_STREQ(first, "/Users/anna/Downloads");
    machine.fileManager.setSearchPaths(NSDownloadsDirectory, NSUserDomainMask, {"/srv/f\u00e4tched"});
    std::string other;
    std::thread([&other] { other = qk_getDownloadPath(); }).join();
    EXPECT_EQ(other, "/srv/f\u00e4tched");
    EXPECT_STREQ(first, "/Users/anna/Downloads") << "each thread has a text of its own";
    EXPECT_STREQ(qk_getDownloadPath(), "/srv/f\u00e4tched");
}

} // namespace
} // namespace qk
