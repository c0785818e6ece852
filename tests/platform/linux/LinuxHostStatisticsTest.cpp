// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxHostStatistics.h"

#include "tests/platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <cerrno>
#include <string>

namespace qk::platform {
namespace {

using testing::ElementsAre;

class LinuxHostStatisticsTest : public testing::Test {
protected:
    static constexpr std::uint64_t kKilobytes = 1024;

    LinuxHostStatistics host() { return LinuxHostStatistics(LinuxRoot(root.path())); }
    void writeMemory(const std::string& more = "") {
        root.write("proc/meminfo", "MemFree: 6400 kB\nAnonPages: 640 kB\n" + more);
    }
    static std::uint32_t pages(std::uint64_t bytes) {
        return static_cast<std::uint32_t>(bytes / static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE)));
    }

    tests::TemporaryFolder root;
    ProcessorLoadInfo info;
    VMStatistics64 memory;
};

TEST_F(LinuxHostStatisticsTest, WithoutItsFilesEveryRequestIsRefused) {
    EXPECT_EQ(host().hostProcessorInfo(info), EBADF);
    EXPECT_EQ(host().hostStatistics64(memory), EBADF);
}

TEST_F(LinuxHostStatisticsTest, DamagedFilesAreErrors) {
    root.write("proc/stat", "cpu  1 2 3 4\ncpu0 1 2\nintr 0\n");
    root.write("proc/meminfo", "MemTotal: 1 kB\n");
    EXPECT_EQ(host().hostProcessorInfo(info), EIO);
    EXPECT_EQ(host().hostStatistics64(memory), EIO);
}

TEST_F(LinuxHostStatisticsTest, ProcessorsKeepTheirNumbersAcrossGaps) {
    root.write("proc/stat", "cpu  6 8 10 12 0 0 0 0 0 0\ncpu0 1 2 3 4 0 0 0 0 0 0\ncpu5 5 6 7 8 0 0 0 0 0 0\nintr 0\n");
    ASSERT_EQ(host().hostProcessorInfo(info), 0);
    EXPECT_THAT(info.processors, ElementsAre(0, 5));
    EXPECT_THAT(info.ticks, ElementsAre(1, 3, 4, 2, 5, 7, 8, 6));
}

TEST_F(LinuxHostStatisticsTest, ManyProcessorsAreReadWhole) {
    for (const unsigned count : {10U, 100U, 250U, 1000U, 8192U}) {
        std::string text = "cpu  1 1 1 1 1 1 1 1 1 1\n";
        for (unsigned processor = 0; processor < count; ++processor) {
            text += "cpu" + std::to_string(processor) + " " + std::to_string(processor) +
                    " 22222222 333333333 4444444444 55555555 0 6666 0 0 0\n";
        }
        text += "intr " + std::string(50'000, '7') + "\nctxt 1\n";
        root.write("proc/stat", text);
        ASSERT_EQ(host().hostProcessorInfo(info), 0) << count;
        EXPECT_EQ(info.processors.size(), count);
        EXPECT_EQ(info.ticks.size(), 4U * count);
        EXPECT_EQ(info.ticks[4U * (count - 1U)], static_cast<std::int32_t>(count - 1U));
    }
}

TEST_F(LinuxHostStatisticsTest, ManyProcessorsMayEndTheFile) {
    std::string text;
    for (unsigned processor = 0; processor < 1000; ++processor) {
        text += "cpu" + std::to_string(processor) + " 11111111 22222222 333333333 4444444444\n";
    }
    root.write("proc/stat", text);
    ASSERT_EQ(host().hostProcessorInfo(info), 0);
    EXPECT_EQ(info.processors.size(), 1000U);
}

TEST_F(LinuxHostStatisticsTest, AFileWithoutEndIsAnError) {
    std::string text;
    while (text.size() < (std::size_t{17} << 20U)) {
        text += "cpu" + std::to_string(text.size()) + " 11111111 22222222 333333333 4444444444\n";
    }
    root.write("proc/stat", text);
    EXPECT_EQ(host().hostProcessorInfo(info), EIO);
}

TEST_F(LinuxHostStatisticsTest, WithoutSwapNothingWasSwappedOut) {
    writeMemory();
    ASSERT_EQ(host().hostStatistics64(memory), 0);
    EXPECT_EQ(memory.free_count, pages(6400 * kKilobytes));
    EXPECT_EQ(memory.internal_page_count, pages(640 * kKilobytes));
    EXPECT_EQ(memory.compressor_page_count, 0U);
    EXPECT_EQ(memory.swapouts, 0U);
    root.write("proc/vmstat", "nr_free_pages 1\nnr_zone_inactive_anon 2\n");
    ASSERT_EQ(host().hostStatistics64(memory), 0);
    EXPECT_EQ(memory.swapouts, 0U);
}

TEST_F(LinuxHostStatisticsTest, SwapOutsAreFoundAcrossPages) {
    writeMemory();
    for (const std::size_t before : {0U, 4080U, 4090U, 4095U, 4096U, 9000U, 12'000U}) {
        root.write("proc/vmstat", std::string(before, 'x') + " 1\npswpin 7\npswpout 123456789012\npgfault 1\n");
        ASSERT_EQ(host().hostStatistics64(memory), 0);
        EXPECT_EQ(memory.swapouts, 123456789012U) << before;
    }
}

TEST_F(LinuxHostStatisticsTest, CompressedMemoryIsThatOfZswapAndOfSwapOnZram) {
    writeMemory("Zswap: 128 kB\n");
    root.write("sys/block/zram0/mm_stat", " 1 2 1048576 0 0 0 0 0 0\n");
    root.write("sys/block/zram12/mm_stat", "1 2 524288 0 0 0 0 0 0\n");
    root.write("sys/block/zram3/mm_stat", "1 2\n");                     // damaged
    root.write("sys/block/zram4/mm_stat", "1 2 1048576 0 0 0 0 0 0\n"); // holds files
    ASSERT_EQ(host().hostStatistics64(memory), 0);
    EXPECT_EQ(memory.compressor_page_count, pages(128 * kKilobytes));
    root.write("proc/swaps", "Filename\t\t\t\tType\t\tSize\t\tUsed\t\tPriority\n"
                             "/dev/sda3                               partition\t8388604\t\t0\t\t-2\n"
                             "/dev/zram0                              partition\t8388604\t\t0\t\t100\n"
                             "/dev/zram12                             partition\t8388604\t\t0\t\t100\n"
                             "/dev/zram3                              partition\t8388604\t\t0\t\t100\n"
                             "/dev/zram99                             partition\t8388604\t\t0\t\t100\n");
    const LinuxHostStatistics kept = host();
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(kept.hostStatistics64(memory), 0);
        EXPECT_EQ(memory.compressor_page_count, pages(128 * kKilobytes) + pages(1048576 + 524288));
    }
}

TEST_F(LinuxHostStatisticsTest, ThisMachineTellsItsCounters) {
    const LinuxHostStatistics here;
    ASSERT_EQ(here.hostProcessorInfo(info), 0);
    EXPECT_EQ(info.processors.size(), static_cast<std::size_t>(::sysconf(_SC_NPROCESSORS_ONLN)));
    ASSERT_EQ(here.hostStatistics64(memory), 0);
    EXPECT_GT(memory.internal_page_count, 0U);
    EXPECT_GT(memory.wire_count, 0U);
}

} // namespace
} // namespace qk::platform
