// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Counters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qk::platform::parse {
namespace {

using testing::ElementsAre;

TEST(ProcessorTicks, TextsWithoutProcessorsAreRefused) {
    ProcessorLoadInfo info;
    for (const std::string_view text : {"", "\n", "cpu  1 2 3 4\n", "intr 1\ncpu0 1 2 3 4\n", "cpux 1 2 3 4\n"}) {
        EXPECT_FALSE(processorTicks(text, info)) << text;
    }
}

TEST(ProcessorTicks, OneDamagedLineRefusesAll) {
    ProcessorLoadInfo info;
    for (const std::string_view text : {"cpu0 1 2 3\n", "cpu0\n", "cpu0 a b c d\n", "cpu0 1 2 3 4\ncpu1 1 2\n",
                                        "cpu0 1 2 -3 4\n", "cpu4294967296 1 2 3 4\n"}) {
        EXPECT_FALSE(processorTicks(text, info)) << text;
    }
}

TEST(ProcessorTicks, ColumnsBecomeTheFourStates) {
    ProcessorLoadInfo info;
    // user nice system idle iowait irq softirq steal guest guest_nice
    ASSERT_TRUE(
        processorTicks("cpu  9 9 9 9 9 9 9 9 9 9\ncpu0 1 20 300 4000 50000 600000 7000000 8 9 10\nintr 5\n", info));
    EXPECT_THAT(info.ticks, ElementsAre(1, 7600300, 54000, 20));
    EXPECT_THAT(info.processors, ElementsAre(0));
}

TEST(ProcessorTicks, OlderKernelsPrintFourColumns) {
    ProcessorLoadInfo info;
    ASSERT_TRUE(processorTicks("cpu0 1 2 3 4", info));
    EXPECT_THAT(info.ticks, ElementsAre(1, 3, 4, 2));
}

TEST(ProcessorTicks, ProcessorsKeepTheirNumbers) {
    ProcessorLoadInfo info;
    ASSERT_TRUE(processorTicks("cpu  1 2 3 4\ncpu0 1 2 3 4\ncpu3 5 6 7 8\nctxt 1\n", info));
    EXPECT_THAT(info.processors, ElementsAre(0, 3));
    EXPECT_EQ(info.ticks.size(), 8U);
}

TEST(ProcessorTicks, CountersAreCutTo32Bits) {
    ProcessorLoadInfo info;
    ASSERT_TRUE(processorTicks("cpu0 4294967297 2147483648 4294967295 18446744073709551615\n", info));
    EXPECT_THAT(info.ticks, ElementsAre(1, -1, -1, INT32_MIN));
}

TEST(ProcessorTicks, NumbersBeyond64BitsDoNoHarm) {
    ProcessorLoadInfo info;
    EXPECT_TRUE(processorTicks("cpu0 999999999999999999999999 1 1 1\n", info));
}

TEST(ProcessorTicks, ASecondReadingReplacesTheFirst) {
    ProcessorLoadInfo info;
    ASSERT_TRUE(processorTicks("cpu0 1 2 3 4\ncpu1 1 2 3 4\n", info));
    ASSERT_TRUE(processorTicks("cpu0 5 6 7 8\n", info));
    EXPECT_EQ(info.processors.size(), 1U);
}

TEST(HoldsAllProcessors, NeedsTheBeginningOfAnotherLine) {
    EXPECT_FALSE(holdsAllProcessors(""));
    EXPECT_FALSE(holdsAllProcessors("cpu  1 2 3 4\ncpu0 1 2 3"));
    EXPECT_FALSE(holdsAllProcessors("cpu  1 2 3 4\ncpu0 1 2 3 4\n"));
    EXPECT_FALSE(holdsAllProcessors("cpu  1 2 3 4\ncpu0 1 2 3 4\nc"));
    EXPECT_FALSE(holdsAllProcessors("cpu  1 2 3 4\ncpu0 1 2 3 4\ncp"));
    EXPECT_FALSE(holdsAllProcessors("cpu  1 2 3 4\ncpu0 1 2 3 4\ncpu"));
    EXPECT_TRUE(holdsAllProcessors("cpu  1 2 3 4\ncpu0 1 2 3 4\nct"));
    EXPECT_TRUE(holdsAllProcessors("cpu  1 2 3 4\ncpu0 1 2 3 4\ni"));
}

TEST(MemoryStatistics, TextsWithoutTheMainFieldsAreRefused) {
    EXPECT_FALSE(memoryStatistics("", 4096).has_value());
    EXPECT_FALSE(memoryStatistics("MemFree: 4 kB\n", 4096).has_value());
    EXPECT_FALSE(memoryStatistics("AnonPages: 4 kB\n", 4096).has_value());
    EXPECT_FALSE(memoryStatistics("MemFree: 4 kB\nAnonPages: 4 kB\n", 0).has_value());
}

TEST(MemoryStatistics, FieldsBecomePages) {
    const auto statistics = memoryStatistics("MemTotal:       1000000 kB\n"
                                             "MemFree:            400 kB\n"
                                             "Buffers:            100 kB\n"
                                             "Cached:            1000 kB\n"
                                             "SwapCached:        9999 kB\n"
                                             "Mlocked:              4 kB\n"
                                             "Zswap:               40 kB\n"
                                             "Zswapped:          9999 kB\n"
                                             "AnonPages:          800 kB\n"
                                             "Shmem:               80 kB\n"
                                             "SUnreclaim:           8 kB\n"
                                             "KernelStack:         12 kB\n"
                                             "PageTables:          16 kB\n"
                                             "VmallocUsed:         20 kB\n"
                                             "Percpu:              24 kB\n"
                                             "HugePages_Total:       2\n"
                                             "Hugepagesize:      2048 kB\n",
                                             4096);
    ASSERT_TRUE(statistics.has_value());
    EXPECT_EQ(statistics->free_count, 100U);
    EXPECT_EQ(statistics->internal_page_count, 220U);
    EXPECT_EQ(statistics->external_page_count, 255U);
    EXPECT_EQ(statistics->compressor_page_count, 10U);
    EXPECT_EQ(statistics->wire_count, (4U + 8U + 12U + 16U + 20U + 24U + 2U * 2048U) / 4U);
    EXPECT_EQ(statistics->swapouts, 0U);
}

TEST(MemoryStatistics, FieldsMayComeInAnyOrderAndTheFirstCounts) {
    const auto statistics = memoryStatistics("AnonPages: 8 kB\nMemFree: 4 kB\nMemFree: 400 kB\n", 4096);
    ASSERT_TRUE(statistics.has_value());
    EXPECT_EQ(statistics->free_count, 1U);
    EXPECT_EQ(statistics->internal_page_count, 2U);
}

TEST(MemoryStatistics, MoreSharedThanCachedIsNoFilePages) {
    const auto statistics = memoryStatistics("MemFree: 4 kB\nCached: 4 kB\nAnonPages: 4 kB\nShmem: 8 kB\n", 4096);
    EXPECT_EQ(statistics->external_page_count, 0U);
}

TEST(SwapOuts, NeedsItsWholeLine) {
    EXPECT_EQ(swapOuts(""), std::nullopt);
    EXPECT_EQ(swapOuts("nr_free 1\npswpout 12"), std::nullopt);
    EXPECT_EQ(swapOuts("pswpout 12\n"), std::nullopt); // it is never the first line
    EXPECT_EQ(swapOuts("pswpin 3\npswpout \n"), std::nullopt);
    EXPECT_EQ(swapOuts("pswpin 3\npswpout 12\nx"), 12U);
}

TEST(CompressedBytes, IsTheThirdNumber) {
    EXPECT_EQ(compressedBytes(""), std::nullopt);
    EXPECT_EQ(compressedBytes("1 2\n"), std::nullopt);
    EXPECT_EQ(compressedBytes("  4096       74    12288        0    12288        0        0        0\n"), 12288U);
}

TEST(CompressedSwaps, AreTheZramDevices) {
    EXPECT_THAT(compressedSwaps(""), testing::IsEmpty());
    EXPECT_THAT(compressedSwaps("Filename Type\n/dev/zram0 partition\n/dev/sda2 partition\n/dev/zram10\tpartition\n"
                                "/dev/zramx partition\n/dev/zram partition\n/mnt/dev/zram7 file\n/dev/zram2"),
                ElementsAre(0, 10, 2));
}

} // namespace
} // namespace qk::platform::parse
