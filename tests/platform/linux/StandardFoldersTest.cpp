// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/StandardFolders.h"

#include "QKFoundation/platform/linux/LinuxFileManager.h"
#include "QKFoundation/platform/memory/MemoryUsers.h"

#include "tests/platform/linux/TemporaryFolder.h"
#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum NSSearchPathDirectory;
using enum NSSearchPathDomainMask;

class StandardFoldersOfLinux : public testing::Test {
protected:
    StandardFoldersOfLinux() {
        users->setUserID(1000);
        users->addPasswordEntry({"anna", 1000, "/home/anna"});
        users->addPasswordEntry({"root", 0, "/root"});
    }
    [[nodiscard]] std::vector<std::string> user(NSSearchPathDirectory directory) const {
        return folders.paths(directory, NSUserDomainMask);
    }

    std::map<std::string, std::string> variables;
    tests::TemporaryFolder root;
    std::shared_ptr<memory::MemoryUsers> users = std::make_shared<memory::MemoryUsers>();
    StandardFolders folders{LinuxRoot(root.path()), users, [this](const char* name) {
                                const auto found = variables.find(name);
                                return found != variables.end() ? std::optional(found->second) : std::nullopt;
                            }};
};

TEST_F(StandardFoldersOfLinux, DownloadsAreNotListedWithoutTheUsersList) {
    EXPECT_THAT(user(NSDownloadsDirectory), IsEmpty());
}

TEST_F(StandardFoldersOfLinux, WithoutVariablesTheFoldersAreThoseOfTheConvention) {
    EXPECT_EQ(folders.home(), "/home/anna");
    EXPECT_EQ(folders.temporary(), "/tmp");
    EXPECT_THAT(user(NSApplicationSupportDirectory), ElementsAre("/home/anna/.local/share"));
    EXPECT_THAT(user(NSCachesDirectory), ElementsAre("/home/anna/.cache"));
}

TEST_F(StandardFoldersOfLinux, EverybodyHasAFolderForDataAlone) {
    EXPECT_THAT(folders.paths(NSApplicationSupportDirectory, NSSystemDomainMask), ElementsAre("/var/lib"));
    EXPECT_THAT(folders.paths(NSCachesDirectory, NSSystemDomainMask), IsEmpty());
    EXPECT_THAT(folders.paths(NSDownloadsDirectory, NSSystemDomainMask), IsEmpty());
}

TEST_F(StandardFoldersOfLinux, VariablesMoveTheFolders) {
    variables = {{"XDG_DATA_HOME", "/data//"},
                 {"XDG_CACHE_HOME", "/cache"},
                 {"XDG_CONFIG_HOME", "/config"},
                 {"TMPDIR", "/scratch/"},
                 {"HOME", "/elsewhere"}};
    root.write("config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Fetched\"\n");
    EXPECT_THAT(user(NSApplicationSupportDirectory), ElementsAre("/data"));
    EXPECT_THAT(user(NSCachesDirectory), ElementsAre("/cache"));
    EXPECT_THAT(user(NSDownloadsDirectory), ElementsAre("/home/anna/Fetched"));
    EXPECT_EQ(folders.temporary(), "/scratch");
    EXPECT_EQ(folders.home(), "/home/anna") << "the password entry comes first";
}

TEST_F(StandardFoldersOfLinux, VariablesThatAreNotAbsoluteDoNotCount) {
    variables = {{"XDG_DATA_HOME", "data"}, {"XDG_CACHE_HOME", ""}, {"TMPDIR", "~/tmp"}};
    EXPECT_THAT(user(NSApplicationSupportDirectory), ElementsAre("/home/anna/.local/share"));
    EXPECT_THAT(user(NSCachesDirectory), ElementsAre("/home/anna/.cache"));
    EXPECT_EQ(folders.temporary(), "/tmp");
}

TEST_F(StandardFoldersOfLinux, DownloadsAreThoseOfTheUsersList) {
    root.write("home/anna/.config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                                                   "XDG_DOWNLOAD_DIR=\"$HOME/Heruntergeladen\"\n");
    EXPECT_THAT(user(NSDownloadsDirectory), ElementsAre("/home/anna/Heruntergeladen"));
}

TEST_F(StandardFoldersOfLinux, SwitchedUserHasItsOwnFoldersAndNotTheEnvironment) {
    users->setUserID(0);
    variables = {{"XDG_DATA_HOME", "/root/data"},
                 {"XDG_CACHE_HOME", "/root/cache"},
                 {"HOME", "/root"},
                 {"XDG_CONFIG_HOME", "/root/config"},
                 {"TMPDIR", "/root/tmp"}};
    root.write("home/anna/.config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Fetched\"\n");
    ASSERT_TRUE(users->seteuid(1000));
    EXPECT_EQ(folders.home(), "/home/anna");
    EXPECT_EQ(folders.temporary(), "/tmp");
    EXPECT_THAT(user(NSApplicationSupportDirectory), ElementsAre("/home/anna/.local/share"));
    EXPECT_THAT(user(NSCachesDirectory), ElementsAre("/home/anna/.cache"));
    EXPECT_THAT(user(NSDownloadsDirectory), ElementsAre("/home/anna/Fetched"));
    ASSERT_TRUE(users->seteuid(0));
    EXPECT_THAT(user(NSApplicationSupportDirectory), ElementsAre("/root/data"));
}

TEST_F(StandardFoldersOfLinux, UserWithoutAnEntryHasTheHomeFolderOfTheEnvironment) {
    users->setUserID(4711);
    EXPECT_EQ(folders.home(), "/");
    EXPECT_THAT(user(NSCachesDirectory), ElementsAre("/.cache"));
    variables = {{"HOME", "/work"}};
    EXPECT_EQ(folders.home(), "/work");
    users->setUserID(0);
    ASSERT_TRUE(users->seteuid(4711));
    EXPECT_EQ(folders.home(), "/") << "the environment is another user's";
}

TEST_F(StandardFoldersOfLinux, HomeFolderThatIsNotAbsoluteIsNone) {
    users->setUserID(5);
    users->addPasswordEntry({"odd", 5, "home"});
    EXPECT_EQ(folders.home(), "/");
}

TEST_F(StandardFoldersOfLinux, NamesThatAreNotUTF8Survive) {
    variables = {{"XDG_CACHE_HOME", "/caf\xE9"}};
    const LinuxFileManager files(LinuxRoot(root.path()), folders);
    using namespace std::string_view_literals;
    EXPECT_EQ(files.searchPaths(NSCachesDirectory, NSUserDomainMask), std::vector{NSString(u"/caf\xDCE9"sv)});
}

} // namespace
} // namespace qk::platform
