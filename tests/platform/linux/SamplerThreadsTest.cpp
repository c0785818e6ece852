// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxFileManager.h"
#include "QKFoundation/platform/linux/LinuxHostStatistics.h"
#include "QKFoundation/platform/services/ResourceKeys.h"
#include "QKFoundation/system_info/QKHardwareCPUUsage.h"
#include "QKFoundation/system_info/QKHardwareProcessUsage.h"
#include "QKFoundation/system_info/QKHardwareRAMUsage.h"
#include "QKFoundation/system_info/QKHardwareVolumeUsage.h"

#include "tests/platform/linux/DescribedDisks.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <latch>
#include <string>
#include <thread>
#include <vector>

/// What may be sampled by several threads at once. Meant for ThreadSanitizer.
namespace qk::platform {
namespace {

constexpr int kThreads = 4;

template <typename Work>
void inAllThreads(Work work) {
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (int index = 0; index < kThreads; ++index) {
        threads.emplace_back([&, index] {
            start.arrive_and_wait();
            work(index);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(SamplerThreads, OneHostMayBeAskedByAll) {
    const LinuxHostStatistics host;
    inAllThreads([&host](int /*index*/) {
        ProcessorLoadInfo info;
        VMStatistics64 statistics;
        for (int round = 0; round < 200; ++round) {
            EXPECT_EQ(host.hostProcessorInfo(info), 0);
            EXPECT_EQ(info.ticks.size(), 4 * info.processors.size());
            EXPECT_EQ(host.hostStatistics64(statistics), 0);
            EXPECT_GT(statistics.internal_page_count, 0U);
        }
    });
}

TEST(SamplerThreads, SwapOutsAreWholeWhoeverElseReads) {
    const tests::TemporaryFolder root;
    root.write("proc/meminfo", "MemFree: 1 kB\nAnonPages: 1 kB\n");
    root.write("proc/vmstat", std::string(4091, 'x') + "\npswpout 1234567\nx 1\n");
    const LinuxHostStatistics host{LinuxRoot(root.path())};
    inAllThreads([&host](int /*index*/) {
        for (int round = 0; round < 200; ++round) {
            VMStatistics64 statistics;
            EXPECT_EQ(host.hostStatistics64(statistics), 0);
            EXPECT_EQ(statistics.swapouts, 1234567U);
        }
    });
}

TEST(SamplerThreads, OneFileManagerMayBeAskedForVolumesByAll) {
    const tests::TemporaryFolder root;
    std::filesystem::create_directories(root.path("a"));
    root.write("proc/self/mountinfo", tests::mountLine("8:1", "/", "/", "ext4", "/dev/sda1") +
                                          tests::mountLine("8:2", "/", "/a", "ext4", "/dev/sda2") +
                                          tests::mountLine("0:9", "/", "/net", "nfs", "server:/"));
    const LinuxFileManager files{LinuxRoot(root.path())};
    inAllThreads([&files](int /*index*/) {
        for (int round = 0; round < 100; ++round) {
            const auto urls = files.mountedVolumeURLs(true);
            EXPECT_EQ(urls.size(), 3U);
            for (const NSURL& url : urls) {
                const auto values = files.resourceValuesForKeys(url, {NSURLVolumeNameKey, NSURLVolumeTotalCapacityKey});
                EXPECT_TRUE(values.has_value() && values->objectForKey(NSURLVolumeNameKey) != nullptr);
            }
        }
    });
}

TEST(SamplerThreads, EveryThreadMayHaveItsOwnSampler) {
    inAllThreads([](int /*index*/) {
        const auto processors = QKHardwareCPUUsage::init();
        const auto memory = QKHardwareRAMUsage::init();
        for (int round = 0; round < 50; ++round) {
            EXPECT_TRUE(processors->collectCPUUsageData().has_value());
            EXPECT_TRUE(memory->collectRAMUsageData().has_value());
            static_cast<void>(QKHardwareVolumeUsage::collectVolumesUsageData());
        }
        EXPECT_GT(QKHardwareProcessUsage::collectProcessesUsageData()->numberOfProcesses, 0U);
    });
}

TEST(SamplerThreads, OneMemorySamplerMayBeSharedByAll) {
    const auto memory = QKHardwareRAMUsage::init();
    inAllThreads([&memory](int /*index*/) {
        for (int round = 0; round < 100; ++round) {
            EXPECT_GT(memory->collectRAMUsageData()->appMemory, 0U);
        }
    });
}

} // namespace
} // namespace qk::platform
