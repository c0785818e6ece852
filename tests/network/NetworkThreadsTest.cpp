// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInfo.h"
#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace qk {
namespace {

using namespace platform;

TEST(QKNetworkInfoThreads, CallsOnSeveralThreadsShareNothing) {
    memory::Machine machine;
    const memory::ScopedMachine installed(machine);
    machine.network.addService({.bsdName = "eth0"});
    machine.network.addService({.bsdName = "eth1", .builtin = false});
    constexpr int kCalls = 10;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([] {
            for (int call = 0; call < kCalls; ++call) {
                EXPECT_GE(QKNetworkInfo::networkInterfaces().size(), 2U);
                EXPECT_GE(QKNetworkInfo::activeNetworkInterfaces().size(), 2U);
                EXPECT_EQ(QKNetworkInfo::activeBuiltinNetworkInterfaces().size(), 1U);
            }
        });
    }
    for (int service = 0; service < kCalls; ++service) {
        machine.network.addService({.bsdName = "eth1", .builtin = false});
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(machine.ioRegistry.openHandles(), 0U);
}

} // namespace
} // namespace qk
