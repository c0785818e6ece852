// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"
#include "tests/platform/values/Printing.h"

namespace qk::tests {
namespace {

class UsersContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, UsersContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(UsersContract, SilentMachineHasNobodyAtItsConsole) {
    EXPECT_FALSE(subject().silent().users->copyConsoleUser().has_value());
}

TEST_P(UsersContract, UserAndGroupThatNobodyKnowsHaveNoEntry) {
    constexpr std::uint32_t kNobody = 4294967294U;
    const auto machine = subject().described();
    EXPECT_FALSE(machine.users->getpwuid(kNobody).has_value());
    EXPECT_FALSE(machine.users->getgrnam("no such group").has_value());
    EXPECT_FALSE(machine.users->getgrnam("").has_value());
}

TEST_P(UsersContract, UserAtTheConsoleIsTold) {
    const auto user = subject().described().users->copyConsoleUser();
    ASSERT_TRUE(user.has_value());
    EXPECT_EQ(user->name, "anna");
    EXPECT_EQ(user->uid, 1000U);
}

TEST_P(UsersContract, ProcessMayBecomeWhoItIs) {
    const auto machine = subject().described();
    EXPECT_TRUE(machine.users->seteuid(machine.users->getuid()));
    EXPECT_EQ(machine.users->geteuid(), machine.users->getuid());
}

TEST_P(UsersContract, EntryIsThatOfTheID) {
    const auto machine = subject().described();
    if (const auto entry = machine.users->getpwuid(machine.users->getuid())) {
        EXPECT_EQ(entry->uid, machine.users->getuid());
        EXPECT_TRUE(entry->name.has_value());
    }
}

} // namespace
} // namespace qk::tests
