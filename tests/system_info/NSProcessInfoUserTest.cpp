// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/system_info/NSProcessInfo+User.h"
#include "QKFoundation/system_info/QKUserUtils.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace qk {
namespace {

namespace user = NSProcessInfo_User;
using platform::ConsoleUser;
using platform::memory::Machine;
using platform::memory::ScopedMachine;

class ProcessOwner : public testing::Test {
protected:
    void logIn(std::uint32_t uid) { machine.users.setConsoleUser(ConsoleUser{"anna", uid}); }

    Machine machine;
    ScopedMachine installed{machine};
};

TEST_F(ProcessOwner, UnknownUserIsAMarkThatCallersUse) {
    EXPECT_EQ(QKUserUtils_UnknownUID, 4294967295U);
}

TEST_F(ProcessOwner, NobodyAtTheConsoleIsZero) {
    EXPECT_EQ(getConsoleUID(), 0U);
}

TEST_F(ProcessOwner, RootIsTheConsoleUserWhileNobodyIsLoggedIn) {
    machine.users.setUserID(0);
    EXPECT_TRUE(::isProcessOwnerConsoleUser());
    EXPECT_TRUE(user::isProcessOwnerConsoleUser());
    logIn(501);
    EXPECT_FALSE(::isProcessOwnerConsoleUser());
    EXPECT_FALSE(user::isProcessOwnerConsoleUser());
}

TEST_F(ProcessOwner, ConsoleIsAskedByEveryCall) {
    machine.users.setUserID(501);
    EXPECT_FALSE(::isProcessOwnerConsoleUser());
    logIn(501);
    EXPECT_EQ(getConsoleUID(), 501U);
    EXPECT_TRUE(::isProcessOwnerConsoleUser());
    EXPECT_TRUE(user::isProcessOwnerConsoleUser());
    machine.users.setConsoleUser(std::nullopt);
    EXPECT_FALSE(user::isProcessOwnerConsoleUser());
    EXPECT_EQ(machine.users.consoleRequests(), 5U);
}

TEST_F(ProcessOwner, RealUserIsReadOnceForAllOperations) {
    machine.users.setUserID(501);
    EXPECT_EQ(getProcessOwnerUID(), 501U);
    EXPECT_FALSE(::isProcessOwnerRootUser());
    EXPECT_FALSE(::isProcessOwnerConsoleUser());
    EXPECT_FALSE(user::isProcessOwnerRootUser());
    EXPECT_EQ(user::processOwnerID(), NSNumber(501));
    EXPECT_EQ(machine.users.userIDRequests(), 1U);
    machine.users.setUserID(0);
    EXPECT_EQ(getProcessOwnerUID(), 501U);
    EXPECT_FALSE(::isProcessOwnerRootUser());
    EXPECT_FALSE(user::isProcessOwnerRootUser());
    EXPECT_EQ(user::processOwnerID(), NSNumber(501));
}

TEST_F(ProcessOwner, RootIsRootWhoeverIsEffective) {
    machine.users.setUserID(0);
    ASSERT_TRUE(machine.users.seteuid(501));
    EXPECT_EQ(getProcessOwnerUID(), 0U);
    EXPECT_TRUE(::isProcessOwnerRootUser());
    EXPECT_TRUE(user::isProcessOwnerRootUser());
}

TEST_F(ProcessOwner, LargestUserIDsAreKeptUnsigned) {
    machine.users.setUserID(4294967294U);
    EXPECT_EQ(getProcessOwnerUID(), 4294967294U);
    EXPECT_EQ(user::processOwnerID().unsignedIntegerValue(), 4294967294U);
    EXPECT_EQ(user::processOwnerID().stringValue(), "4294967294");
}

TEST_F(ProcessOwner, AnotherMachineStartsWithoutTheFacts) {
    machine.users.setUserID(0);
    EXPECT_TRUE(user::isProcessOwnerRootUser());
    const Machine other;
    const ScopedMachine inner(other);
    EXPECT_FALSE(user::isProcessOwnerRootUser());
}

TEST(ProcessOwnerXcodeServer, NameDecidesByItsBeginning) {
    const struct {
        std::optional<NSString> name;
        bool answer;
    } rows[] = {
        {std::nullopt, false}, {NSString(), false}, {"_xcs", true},  {"_xcsbuildd", true}, {"xcs", false},
        {"build_xcs", false},  {"_xc", false},      {"_XCS", false}, {" _xcs", false},
    };
    for (const auto& row : rows) {
        Machine machine;
        const ScopedMachine installed(machine);
        machine.host.setUserName(row.name);
        EXPECT_EQ(user::isProcessOwnerXcodeServerUser(), row.answer);
    }
}

TEST(ProcessOwnerXcodeServer, AnswerIsKept) {
    Machine machine;
    const ScopedMachine installed(machine);
    machine.host.setUserName(NSString("_xcs"));
    EXPECT_TRUE(user::isProcessOwnerXcodeServerUser());
    machine.host.setUserName(NSString("anna"));
    EXPECT_TRUE(user::isProcessOwnerXcodeServerUser());
}

class AdminGroup : public testing::Test {
protected:
    AdminGroup() { machine.users.setUserID(501); }
    void named(const std::optional<std::string>& name) { machine.users.addPasswordEntry({name, 501, "/"}); }
    void admins(const std::vector<std::string>& members) { machine.users.addGroup({"admin", members}); }

    Machine machine;
    ScopedMachine installed{machine};
};

TEST_F(AdminGroup, UserWithoutAPasswordEntryIsNoMember) {
    admins({"anna", ""});
    EXPECT_FALSE(user::isProcessOwnerInAdminGroup());
}

TEST_F(AdminGroup, EntryWithoutANameIsNoMember) {
    named(std::nullopt);
    admins({"anna", ""});
    EXPECT_FALSE(user::isProcessOwnerInAdminGroup());
}

TEST_F(AdminGroup, WithoutTheGroupThereIsNoMember) {
    named("anna");
    machine.users.addGroup({"sudo", {"anna"}});
    machine.users.addGroup({"Admin", {"anna"}});
    EXPECT_FALSE(user::isProcessOwnerInAdminGroup());
}

TEST_F(AdminGroup, PrimaryGroupDoesNotCount) {
    named("anna");
    admins({});
    EXPECT_FALSE(user::isProcessOwnerInAdminGroup());
}

TEST_F(AdminGroup, OneOfItsMembersIsTheUserByteForByte) {
    named("anna");
    admins({"root", "Anna", "anna ", "anna"});
    EXPECT_TRUE(user::isProcessOwnerInAdminGroup());
}

TEST_F(AdminGroup, AnotherSpellingIsAnotherUser) {
    named("anna");
    admins({"root", "Anna", "annab", "ann", "anna "});
    EXPECT_FALSE(user::isProcessOwnerInAdminGroup());
}

TEST_F(AdminGroup, FirstGroupOfTheNameAndFirstEntryOfTheIDCount) {
    named("anna");
    named("bert");
    admins({"bert"});
    admins({"anna"});
    EXPECT_FALSE(user::isProcessOwnerInAdminGroup());
}

TEST_F(AdminGroup, NameThatIsNotUTF8IsComparedAsBytes) {
    named("ann\xE4");
    admins({"ann\xE4"});
    EXPECT_TRUE(user::isProcessOwnerInAdminGroup());
}

TEST_F(AdminGroup, AnswerIsKept) {
    named("anna");
    EXPECT_FALSE(user::isProcessOwnerInAdminGroup());
    admins({"anna"});
    EXPECT_FALSE(user::isProcessOwnerInAdminGroup());
}

} // namespace
} // namespace qk
