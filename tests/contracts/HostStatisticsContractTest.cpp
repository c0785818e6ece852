// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace qk::tests {
namespace {

using platform::ProcessorLoadInfo;
using platform::VMStatistics64;
using testing::ElementsAre;

class HostStatisticsContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, HostStatisticsContract, testing::ValuesIn(adapters()), adapterName);

std::uint64_t pageSize(const platform::Services& machine) {
    std::uint64_t bytes = 0;
    std::size_t size = sizeof bytes;
    EXPECT_EQ(machine.kernel->sysctlbyname("hw.pagesize", &bytes, &size), 0);
    return bytes;
}

TEST_P(HostStatisticsContract, AHostThatTellsNothingRefuses) {
    const auto machine = subject().silent();
    ProcessorLoadInfo info;
    EXPECT_GT(machine.hostStatistics->hostProcessorInfo(info), 0);
    VMStatistics64 statistics;
    EXPECT_GT(machine.hostStatistics->hostStatistics64(statistics), 0);
}

TEST_P(HostStatisticsContract, ProcessorsHaveFourCountersAndTheirNumbers) {
    const auto machine = subject().described();
    ProcessorLoadInfo info;
    ASSERT_EQ(machine.hostStatistics->hostProcessorInfo(info), 0);
    EXPECT_THAT(info.processors, ElementsAre(0, 2));
    EXPECT_THAT(info.ticks, ElementsAre(1, 2, 3, 4, 10, 20, 30, 40));
}

TEST_P(HostStatisticsContract, WhatTheCallerHadBeforeIsReplaced) {
    const auto machine = subject().described();
    ProcessorLoadInfo info{{9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9}, {7, 8, 9}};
    ASSERT_EQ(machine.hostStatistics->hostProcessorInfo(info), 0);
    EXPECT_EQ(info.ticks.size(), 8U);
    EXPECT_EQ(info.processors.size(), 2U);
    VMStatistics64 statistics{9, 9, 9, 9, 9, 9};
    ASSERT_EQ(machine.hostStatistics->hostStatistics64(statistics), 0);
    EXPECT_EQ(statistics.swapouts, 77U);
}

TEST_P(HostStatisticsContract, MemoryIsCountedInPages) {
    const auto machine = subject().described();
    const std::uint64_t page = pageSize(machine);
    VMStatistics64 statistics;
    ASSERT_EQ(machine.hostStatistics->hostStatistics64(statistics), 0);
    EXPECT_EQ(statistics.free_count * page, 640U * 1024U);
    EXPECT_EQ(statistics.wire_count * page, 1280U * 1024U);
    EXPECT_EQ(statistics.compressor_page_count * page, 1920U * 1024U);
    EXPECT_EQ(statistics.external_page_count * page, 2560U * 1024U);
    EXPECT_EQ(statistics.internal_page_count * page, 3200U * 1024U);
    EXPECT_EQ(statistics.swapouts, 77U);
}

TEST_P(HostStatisticsContract, EveryRequestIsAnswered) {
    const auto machine = subject().described();
    for (int round = 0; round < 3; ++round) {
        ProcessorLoadInfo info;
        EXPECT_EQ(machine.hostStatistics->hostProcessorInfo(info), 0);
        VMStatistics64 statistics;
        EXPECT_EQ(machine.hostStatistics->hostStatistics64(statistics), 0);
    }
}

} // namespace
} // namespace qk::tests
