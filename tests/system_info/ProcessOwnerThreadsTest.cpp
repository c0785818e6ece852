// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/system_info/NSProcessInfo+User.h"
#include "QKFoundation/system_info/QKUserUtils.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace qk {
namespace {

TEST(ProcessOwnerThreads, FactsAreReadOnceWhoeverAsksFirst) {
    for (int round = 0; round < 50; ++round) {
        platform::memory::Machine machine;
        machine.users.setUserID(0);
        machine.users.addPasswordEntry({"_xcsroot", 0, "/"});
        machine.users.addGroup({"admin", {"_xcsroot"}});
        machine.host.setUserName(NSString("_xcsroot"));
        const platform::memory::ScopedMachine installed(machine);
        std::atomic<int> wrong = 0;
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&wrong] {
                const bool right = getProcessOwnerUID() == 0 && isProcessOwnerConsoleUser() &&
                                   NSProcessInfo_User::isProcessOwnerRootUser() &&
                                   NSProcessInfo_User::isProcessOwnerXcodeServerUser() &&
                                   NSProcessInfo_User::isProcessOwnerInAdminGroup();
                wrong += right ? 0 : 1;
            });
        }
        threads.clear();
        EXPECT_EQ(wrong, 0);
        EXPECT_EQ(machine.users.userIDRequests(), 1U);
    }
}

} // namespace
} // namespace qk
