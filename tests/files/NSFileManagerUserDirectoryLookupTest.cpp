// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+UserDirectoryLookup.h"
#include "QKFoundation/files/internal/StandardPaths.h"
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/files/ForwardingFileManager.h"
#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace qk {
namespace {

using namespace NSFileManager_UserDirectoryLookup;
using platform::memory::Machine;
using platform::memory::ScopedMachine;
using testing::ElementsAre;
using testing::IsEmpty;
using enum NSSearchPathDirectory;
using enum NSSearchPathDomainMask;

constexpr std::uint32_t kRoot = 0;
constexpr std::uint32_t kAnna = 1000;
constexpr char kCaches[] = "Library/Caches";

class UserDirectoryLookup : public testing::Test {
protected:
    UserDirectoryLookup() {
        machine.users.addPasswordEntry({"root", kRoot, "/var/root"});
        machine.users.addPasswordEntry({"anna", kAnna, "/Users/anna"});
    }
    void listCaches() { machine.fileManager.setSearchPaths(NSCachesDirectory, NSUserDomainMask, {"~/C", "~/other"}); }
    void logIn(const NSString& name, std::uint32_t uid) {
        machine.users.setConsoleUser(platform::ConsoleUser{name, uid});
    }
    [[nodiscard]] NSString caches() const { return userPathForDirectory(*manager, NSCachesDirectory, kCaches); }

    Machine machine;
    ScopedMachine installed{machine};
    std::shared_ptr<NSFileManager> manager = NSFileManager::init();
};

TEST_F(UserDirectoryLookup, WithoutAListedFolderItIsTheDefaultNameBelowTheHomeFolder) {
    machine.users.setUserID(kAnna);
    EXPECT_EQ(caches(), "/Users/anna/Library/Caches");
}

TEST_F(UserDirectoryLookup, AnUnknownUsersHomeFolderIsTheRoot) {
    EXPECT_EQ(caches(), "/Library/Caches");
}

TEST_F(UserDirectoryLookup, TheFirstListedFolderIsTaken) {
    listCaches();
    machine.users.setUserID(kAnna);
    EXPECT_EQ(caches(), "/Users/anna/C");
}

TEST_F(UserDirectoryLookup, AProcessOfAnotherUserThanRootAsksForNeitherConsoleNorFlag) {
    listCaches();
    machine.users.setUserID(kAnna);
    logIn("root", kRoot);
    setUseTemporaryDirectoryAsUserPath(*manager, true);
    EXPECT_EQ(caches(), "/Users/anna/C");
    EXPECT_EQ(machine.users.consoleRequests(), 0U);
    EXPECT_THAT(machine.users.switches(), IsEmpty());
}

TEST_F(UserDirectoryLookup, RootWithTheFlagGetsTheTemporaryFolderItself) {
    listCaches();
    machine.users.setUserID(kRoot);
    logIn("anna", kAnna);
    machine.fileManager.setTemporaryDirectory("/var/folders/T");
    setUseTemporaryDirectoryAsUserPath(*manager, true);
    EXPECT_EQ(caches(), "/var/folders/T");
    EXPECT_EQ(machine.users.consoleRequests(), 0U);
    EXPECT_THAT(machine.users.switches(), IsEmpty());
}

TEST_F(UserDirectoryLookup, TheFlagIsOffUntilItIsSetAndBelongsToOneManager) {
    const auto other = NSFileManager::init();
    EXPECT_FALSE(useTemporaryDirectoryAsUserPath(*manager));
    setUseTemporaryDirectoryAsUserPath(*manager, true);
    EXPECT_TRUE(useTemporaryDirectoryAsUserPath(*manager));
    EXPECT_FALSE(useTemporaryDirectoryAsUserPath(*other));
    EXPECT_FALSE(useTemporaryDirectoryAsUserPath(*NSFileManager::defaultManager()));
    setUseTemporaryDirectoryAsUserPath(*manager, false);
    EXPECT_FALSE(useTemporaryDirectoryAsUserPath(*manager));
}

TEST_F(UserDirectoryLookup, RootWithNobodyAtTheConsoleGetsItsOwnFolder) {
    listCaches();
    machine.users.setUserID(kRoot);
    EXPECT_EQ(caches(), "/var/root/C");
    EXPECT_THAT(machine.users.switches(), IsEmpty());
}

TEST_F(UserDirectoryLookup, RootGetsTheFolderOfTheUserAtTheConsoleAndIsRootAgain) {
    listCaches();
    machine.users.setUserID(kRoot);
    logIn("anna", kAnna);
    EXPECT_EQ(caches(), "/Users/anna/C");
    EXPECT_THAT(machine.users.switches(), ElementsAre(kAnna, kRoot));
    EXPECT_EQ(machine.users.geteuid(), kRoot);
}

TEST_F(UserDirectoryLookup, TheHomeFolderIsThatOfTheUserAtTheConsoleToo) {
    machine.users.setUserID(kRoot);
    logIn("anna", kAnna);
    EXPECT_EQ(caches(), "/Users/anna/Library/Caches");
}

TEST_F(UserDirectoryLookup, ARefusedSwitchNamesTheFolderWithoutASearch) {
    listCaches();
    machine.users.setUserID(kRoot);
    machine.users.refuseSwitches();
    logIn("anna %@", kAnna);
    EXPECT_EQ(caches(), "/Users/anna %@/Library/Caches");
    EXPECT_THAT(machine.users.switches(), ElementsAre(kAnna)) << "nothing to switch back";
}

TEST_F(UserDirectoryLookup, RootAtTheConsoleIsAUserLikeAnyOther) {
    listCaches();
    machine.users.setUserID(kRoot);
    logIn("root", kRoot);
    EXPECT_EQ(caches(), "/var/root/C");
    EXPECT_THAT(machine.users.switches(), ElementsAre(kRoot, kRoot));
}

TEST_F(UserDirectoryLookup, TheOwnerIsTheRealUserWhoeverIsEffective) {
    listCaches();
    machine.users.setUserID(kRoot);
    ASSERT_TRUE(machine.users.seteuid(kAnna));
    logIn("anna", kAnna);
    EXPECT_EQ(caches(), "/Users/anna/C");
    EXPECT_EQ(machine.users.geteuid(), kRoot) << "back to the owner, as the look-up ends";
}

TEST_F(UserDirectoryLookup, ASearchThatRaisesLeavesTheOwnersRights) {
    class Raising final : public tests::ForwardingFileManager {
    public:
        using ForwardingFileManager::ForwardingFileManager;
        [[nodiscard]] std::vector<NSString> searchPaths(NSSearchPathDirectory, NSSearchPathDomainMask) const override {
            throw std::runtime_error("no search");
        }
    };
    machine.users.setUserID(kRoot);
    logIn("anna", kAnna);
    platform::Services services = *machine.services();
    services.fileManager = std::make_shared<Raising>(services.fileManager);
    for (int time = 0; time < 2; ++time) { // the second one also finds the lock free
        EXPECT_THROW((void)internal::userPathForDirectory(services, *manager, NSCachesDirectory, kCaches),
                     std::runtime_error);
        EXPECT_EQ(machine.users.geteuid(), kRoot);
    }
    EXPECT_THAT(machine.users.switches(), ElementsAre(kAnna, kRoot, kAnna, kRoot));
}

} // namespace
} // namespace qk
