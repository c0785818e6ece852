// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareRAMUsage.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <limits>

namespace qk {
namespace {

class QKHardwareRAMUsageTest : public testing::Test {
protected:
    void setSizes(std::uint64_t memory, std::uint64_t page) {
        machine.kernel.setSysctl("hw.memsize", memory);
        machine.kernel.setSysctl("hw.pagesize", page);
    }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
};

TEST_F(QKHardwareRAMUsageTest, AKernelThatRefusesGivesNothing) {
    const auto usage = QKHardwareRAMUsage::init();
    EXPECT_EQ(usage->totalRAMSize(), 0U);
    EXPECT_EQ(usage->totalRAMPageSize(), 0U);
    EXPECT_FALSE(usage->collectRAMUsageData().has_value());
}

TEST_F(QKHardwareRAMUsageTest, PagesBecomeBytes) {
    setSizes(std::uint64_t{1} << 30U, 4096);
    machine.hostStatistics.addMemoryStatistics({.free_count = 10,
                                                .wire_count = 500,
                                                .compressor_page_count = 250,
                                                .external_page_count = 20,
                                                .internal_page_count = 1000,
                                                .swapouts = 30});
    const auto data = QKHardwareRAMUsage::init()->collectRAMUsageData().value();
    EXPECT_EQ(data.appMemory, 4'096'000U);
    EXPECT_EQ(data.wiredMemory, 2'048'000U);
    EXPECT_EQ(data.compressedMemory, 1'024'000U);
    EXPECT_EQ(data.usedMemory, 7'168'000U);
    EXPECT_EQ(data.unusedMemory, (1U << 30U) - 7'168'000U);
    EXPECT_EQ(data.chachedFiles, 81'920U);
    EXPECT_EQ(data.swapUsed, 122'880U);
    EXPECT_EQ(data.freeMemory, 40'960U);
}

TEST_F(QKHardwareRAMUsageTest, CountsAreWidenedBeforeTheyAreMultiplied) {
    setSizes(std::numeric_limits<std::uint64_t>::max(), 65'536);
    machine.hostStatistics.addMemoryStatistics({.internal_page_count = 0xFFFFFFFFU});
    EXPECT_EQ(QKHardwareRAMUsage::init()->collectRAMUsageData()->appMemory, 0xFFFFFFFFULL * 65'536U);
}

TEST_F(QKHardwareRAMUsageTest, MoreUsedThanInstalledWraps) {
    setSizes(4096, 4096);
    machine.hostStatistics.addMemoryStatistics({.internal_page_count = 2});
    EXPECT_EQ(QKHardwareRAMUsage::init()->collectRAMUsageData()->unusedMemory,
              std::numeric_limits<std::uint64_t>::max() - 4095);
}

TEST_F(QKHardwareRAMUsageTest, SwapIsACumulativeVolumeThatMayWrap) {
    setSizes(4096, 4096);
    machine.hostStatistics.addMemoryStatistics({.swapouts = (std::uint64_t{1} << 52U) + 3});
    EXPECT_EQ(QKHardwareRAMUsage::init()->collectRAMUsageData()->swapUsed, 3U * 4096U);
}

TEST_F(QKHardwareRAMUsageTest, SwapGrowsWhileTheMachineRuns) {
    setSizes(4096, 4096);
    machine.hostStatistics.addMemoryStatistics({.swapouts = 5});
    machine.hostStatistics.addMemoryStatistics({.swapouts = 9});
    const auto usage = QKHardwareRAMUsage::init();
    EXPECT_EQ(usage->collectRAMUsageData()->swapUsed, 5U * 4096U);
    EXPECT_EQ(usage->collectRAMUsageData()->swapUsed, 9U * 4096U);
}

TEST_F(QKHardwareRAMUsageTest, FreeAndCachedPagesAreNotUsed) {
    setSizes(1U << 20U, 4096);
    machine.hostStatistics.addMemoryStatistics({.free_count = 100, .external_page_count = 100});
    const auto data = QKHardwareRAMUsage::init()->collectRAMUsageData().value();
    EXPECT_EQ(data.usedMemory, 0U);
    EXPECT_EQ(data.unusedMemory, 1U << 20U);
}

TEST_F(QKHardwareRAMUsageTest, AnUnknownPageSizeMakesEveryFigureZero) {
    machine.kernel.setSysctl("hw.memsize", std::uint64_t{12'345});
    machine.hostStatistics.addMemoryStatistics({.free_count = 1,
                                                .wire_count = 1,
                                                .compressor_page_count = 1,
                                                .external_page_count = 1,
                                                .internal_page_count = 1,
                                                .swapouts = 1});
    const auto data = QKHardwareRAMUsage::init()->collectRAMUsageData().value();
    EXPECT_EQ(data.usedMemory + data.appMemory + data.wiredMemory + data.compressedMemory, 0U);
    EXPECT_EQ(data.chachedFiles + data.swapUsed + data.freeMemory, 0U);
    EXPECT_EQ(data.unusedMemory, 12'345U);
}

TEST_F(QKHardwareRAMUsageTest, TheSizesAreTakenOnce) {
    setSizes(1000, 10);
    const auto usage = QKHardwareRAMUsage::init();
    setSizes(2000, 20);
    machine.hostStatistics.addMemoryStatistics({.free_count = 1});
    EXPECT_EQ(usage->totalRAMSize(), 1000U);
    EXPECT_EQ(usage->collectRAMUsageData()->freeMemory, 10U);
    EXPECT_EQ(usage->valueForKey("totalRAMPageSize"), Value(10));
}

TEST_F(QKHardwareRAMUsageTest, TheSizesCanBeSet) {
    const auto usage = QKHardwareRAMUsage::init();
    usage->setTotalRAMSize(100);
    usage->setTotalRAMPageSize(7);
    machine.hostStatistics.addMemoryStatistics({.internal_page_count = 3});
    EXPECT_EQ(usage->collectRAMUsageData()->unusedMemory, 79U);
}

} // namespace
} // namespace qk
