// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/Services.h"

#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/system_info/QKHardwareFunctions.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace qk::platform {
namespace {

using memory::Machine;
using memory::ScopedMachine;

TEST(Services, TheHostsOwnMachineIsMadeOnce) {
    const auto host = services();
    ASSERT_NE(host, nullptr);
    EXPECT_NE(host->kernel, nullptr);
    EXPECT_NE(host->processInfo, nullptr);
    EXPECT_NE(host->host, nullptr);
    EXPECT_NE(host->systemConfiguration, nullptr);
    EXPECT_NE(host->taskLauncher, nullptr);
    EXPECT_NE(host->fileManager, nullptr);
    EXPECT_NE(host->facts, nullptr);
    EXPECT_EQ(services(), host);
}

TEST(Services, ScopesNest) {
    const auto host = services();
    const Machine outer;
    const Machine inner;
    {
        const ScopedMachine outerScope(outer);
        EXPECT_EQ(services(), outer.services());
        {
            const ScopedMachine innerScope(inner);
            EXPECT_EQ(services(), inner.services());
        }
        EXPECT_EQ(services(), outer.services());
    }
    EXPECT_EQ(services(), host);
}

TEST(Services, ASnapshotOutlivesItsMachine) {
    std::shared_ptr<const Services> snapshot;
    {
        Machine machine;
        machine.kernel.setSysctl("hw.pagesize", 4096);
        const ScopedMachine installed(machine);
        snapshot = services();
    }
    std::size_t size = 0;
    EXPECT_EQ(snapshot->kernel->sysctlbyname("hw.pagesize", nullptr, &size), 0);
    EXPECT_EQ(size, sizeof(int));
}

TEST(Services, CanBeReplacedWhileOtherThreadsAsk) {
    Machine first;
    Machine second;
    first.kernel.setSysctl("hw.memsize", std::uint64_t{1});
    second.kernel.setSysctl("hw.memsize", std::uint64_t{2});
    const ScopedMachine installed(first);
    std::atomic<bool> stop{false};
    std::atomic<int> wrong{0};
    std::vector<std::thread> askers;
    askers.reserve(3);
    for (int asker = 0; asker < 3; ++asker) {
        askers.emplace_back([&] {
            while (!stop) {
                const std::uint64_t size = getPhysicalMemorySize();
                wrong += size == 1 || size == 2 ? 0 : 1;
            }
        });
    }
    for (int round = 0; round < 500; ++round) {
        const ScopedMachine other(second);
        EXPECT_EQ(services(), second.services());
    }
    stop = true;
    for (std::thread& asker : askers) {
        asker.join();
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace qk::platform
