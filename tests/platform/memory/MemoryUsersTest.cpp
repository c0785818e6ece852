// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include "tests/platform/values/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qk::platform::memory {
namespace {

using testing::ElementsAre;
using enum NSSearchPathDirectory;
using enum NSSearchPathDomainMask;

TEST(MemoryUsers, ProcessBelongsToNobodyKnownUntilToldOtherwise) {
    const Machine machine;
    EXPECT_EQ(machine.users.getuid(), 4294967295U);
    EXPECT_EQ(machine.users.geteuid(), 4294967295U);
    EXPECT_FALSE(machine.users.getpwuid(0).has_value());
    EXPECT_EQ(machine.fileManager.homeDirectory(), "/");
}

TEST(MemoryUsers, RootMayBecomeAnybodyAndComeBack) {
    Machine machine;
    machine.users.setUserID(0);
    EXPECT_TRUE(machine.users.seteuid(5));
    EXPECT_EQ(machine.users.geteuid(), 5U);
    EXPECT_EQ(machine.users.getuid(), 0U);
    EXPECT_TRUE(machine.users.seteuid(0));
    EXPECT_THAT(machine.users.switches(), ElementsAre(5U, 0U));
}

TEST(MemoryUsers, OthersMayOnlyBecomeThemselves) {
    Machine machine;
    machine.users.setUserID(7);
    EXPECT_FALSE(machine.users.seteuid(0));
    EXPECT_TRUE(machine.users.seteuid(7));
    EXPECT_EQ(machine.users.geteuid(), 7U);
}

TEST(MemoryUsers, RefusedSwitchChangesNothing) {
    Machine machine;
    machine.users.setUserID(0);
    machine.users.refuseSwitches();
    EXPECT_FALSE(machine.users.seteuid(5));
    EXPECT_EQ(machine.users.geteuid(), 0U);
}

TEST(MemoryFileManager, FoldersOfTheUserFollowTheEffectiveOne) {
    Machine machine;
    machine.users.setUserID(0);
    machine.users.addPasswordEntry({"anna", 5, "/home/anna/"});
    machine.fileManager.setSearchPaths(NSCachesDirectory, NSUserDomainMask, {"~", "~/c", "/c"});
    EXPECT_THAT(machine.fileManager.searchPaths(NSCachesDirectory, NSUserDomainMask),
                ElementsAre(NSString("/"), NSString("/c"), NSString("/c")));
    ASSERT_TRUE(machine.users.seteuid(5));
    EXPECT_THAT(machine.fileManager.searchPaths(NSCachesDirectory, NSUserDomainMask),
                ElementsAre(NSString("/home/anna"), NSString("/home/anna/c"), NSString("/c")));
    EXPECT_TRUE(machine.fileManager.searchPaths(NSCachesDirectory, NSSystemDomainMask).empty());
}

TEST(MemoryFileManager, FileThatIsReplacedLosesItsAttributes) {
    Machine machine;
    machine.fileManager.setExtendedAttribute("/f", "a", NSData("x"));
    EXPECT_EQ(machine.fileManager.attributesOfItemAtPath("/f"), std::nullopt) << "there is no such file";
    machine.fileManager.addFile("/f");
    machine.fileManager.setExtendedAttribute("/f", "a", NSData("x"));
    EXPECT_EQ(machine.fileManager.getxattr("/f", "a", nullptr, 0), 1U);
    machine.fileManager.addFile("/f");
    EXPECT_EQ(machine.fileManager.getxattr("/f", "a", nullptr, 0), std::nullopt);
}

} // namespace
} // namespace qk::platform::memory
