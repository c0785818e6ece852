// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/system_info/QKHardwareCPUUsage.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>

namespace qk {
namespace {

class QKHardwareCPUUsageTest : public testing::Test {
protected:
    QKHardwareCPUUsageTest() : sampler(QKHardwareCPUUsage::init()) {}

    QKHardwareCPUUsageData sample() { return sampler->collectCPUUsageData().value(); }

    platform::memory::Machine machine;
    platform::memory::ScopedMachine installed{machine};
    std::shared_ptr<QKHardwareCPUUsage> sampler;
};

TEST_F(QKHardwareCPUUsageTest, AKernelThatRefusesGivesNothing) {
    EXPECT_EQ(sampler->collectCPUUsageData().has_value(), false);
    EXPECT_EQ(sampler->previousCPUInfo(), nullptr);
    EXPECT_EQ(sampler->previousCPUInfoCount(), 0U);
}

TEST_F(QKHardwareCPUUsageTest, TheFirstSampleCoversTheTimeSinceTheStart) {
    machine.hostStatistics.addProcessorTicks({{10, 20, 60, 10}});
    const auto data = sample();
    EXPECT_DOUBLE_EQ(data.userLoad, 10);
    EXPECT_DOUBLE_EQ(data.systemLoad, 20);
    EXPECT_DOUBLE_EQ(data.totalLoad, 40);
    EXPECT_DOUBLE_EQ(data.idleLoad, 60);
}

TEST_F(QKHardwareCPUUsageTest, TheSampleIsKeptForTheNextOne) {
    machine.hostStatistics.addProcessorTicks({{1, 2, 3, 4}, {5, 6, 7, 8}});
    (void)sample();
    ASSERT_EQ(sampler->previousCPUInfoCount(), 8U);
    EXPECT_EQ(sampler->previousCPUInfo()[0], 1);
    EXPECT_EQ(sampler->previousCPUInfo()[7], 8);
    EXPECT_EQ(sampler->valueForKey("previousCPUInfoCount"), Value(8));
}

TEST_F(QKHardwareCPUUsageTest, ALaterSampleCoversTheTimeSinceThePreviousOne) {
    machine.hostStatistics.addProcessorTicks({{100, 200, 300, 400}, {1, 2, 3, 4}});
    machine.hostStatistics.addProcessorTicks({{110, 205, 380, 405}, {1, 2, 103, 4}});
    (void)sample();
    const auto data = sample();
    EXPECT_EQ(data.systemLoad, 2.5);
    EXPECT_EQ(data.userLoad, 5);
    EXPECT_EQ(data.totalLoad, 10);
    EXPECT_EQ(data.idleLoad, 90);
}

TEST_F(QKHardwareCPUUsageTest, WhenNoTickHasPassedEveryShareIsNaN) {
    machine.hostStatistics.addProcessorTicks({{1, 2, 3, 4}});
    (void)sample();
    const auto data = sample();
    EXPECT_TRUE(std::isnan(data.systemLoad));
    EXPECT_TRUE(std::isnan(data.userLoad));
    EXPECT_TRUE(std::isnan(data.totalLoad));
    EXPECT_TRUE(std::isnan(data.idleLoad));
}

TEST_F(QKHardwareCPUUsageTest, PartsThatCancelGiveInfiniteShares) {
    machine.hostStatistics.addProcessorTicks({{10, 0, 10, 0}});
    machine.hostStatistics.addProcessorTicks({{15, 0, 5, 0}});
    (void)sample();
    const auto data = sample();
    EXPECT_TRUE(std::isinf(data.userLoad) && data.userLoad > 0);
    EXPECT_TRUE(std::isinf(data.idleLoad) && data.idleLoad < 0);
    EXPECT_TRUE(std::isnan(data.systemLoad));
}

TEST_F(QKHardwareCPUUsageTest, ACounterThatWrappedContributesItsSmallDifference) {
    machine.hostStatistics.addProcessorTicks({{0xFFFFFFF6U, 0, 0, 0}});
    machine.hostStatistics.addProcessorTicks({{20, 0, 90, 0}});
    (void)sample();
    const auto data = sample();
    EXPECT_EQ(data.userLoad, 30 * (100.0 / 120));
    EXPECT_EQ(data.idleLoad, 90 * (100.0 / 120));
}

TEST_F(QKHardwareCPUUsageTest, ACounterThatWentBackContributesANegativeDifference) {
    machine.hostStatistics.addProcessorTicks({{0, 0, 50, 0}});
    machine.hostStatistics.addProcessorTicks({{20, 0, 40, 0}});
    (void)sample();
    const auto data = sample();
    EXPECT_EQ(data.userLoad, 200);
    EXPECT_EQ(data.idleLoad, -100);
}

TEST_F(QKHardwareCPUUsageTest, TheFirstSampleReadsItsCountersSigned) {
    machine.hostStatistics.addProcessorTicks({{100, 0, 0xFFFFFFCEU, 0}}); // idle reads as -50
    const auto data = sample();
    EXPECT_EQ(data.userLoad, 200);
    EXPECT_EQ(data.idleLoad, -100);
}

TEST_F(QKHardwareCPUUsageTest, TheTermsAreAddedAsDoubles) {
    machine.hostStatistics.addProcessorTicks({{0x7FFFFFFFU, 0x7FFFFFFFU, 0, 0x7FFFFFFFU}});
    const auto data = sample();
    EXPECT_EQ(data.totalLoad, 3.0 * 2147483647.0 * (100.0 / (3.0 * 2147483647.0)));
}

TEST_F(QKHardwareCPUUsageTest, TheFactorIsComputedOnce) {
    machine.hostStatistics.addProcessorTicks({{1, 2, 4, 0}});
    const auto data = sample();
    const double factor = 100.0 / 7.0;
    EXPECT_EQ(data.userLoad, 1 * factor);
    EXPECT_EQ(data.systemLoad, 2 * factor);
    EXPECT_EQ(data.totalLoad, 3 * factor);
    EXPECT_EQ(data.idleLoad, 4 * factor);
}

TEST_F(QKHardwareCPUUsageTest, UsedAndIdleMakeTheWhole) {
    for (std::uint32_t seed = 1; seed < 200; ++seed) {
        machine.hostStatistics.addProcessorTicks({{seed * 7919, seed * 104729, seed * 15485863, seed}});
        const auto data = sample();
        EXPECT_NEAR(data.totalLoad + data.idleLoad, 100, 1e-9) << seed;
    }
}

TEST_F(QKHardwareCPUUsageTest, ARefusedSampleKeepsThePreviousOne) {
    machine.hostStatistics.addProcessorTicks({{0, 0, 0, 0}});
    machine.hostStatistics.refuseProcessorTicks(EPERM);
    machine.hostStatistics.addProcessorTicks({{25, 0, 75, 0}});
    (void)sample();
    EXPECT_FALSE(sampler->collectCPUUsageData().has_value());
    EXPECT_EQ(sampler->previousCPUInfoCount(), 4U);
    EXPECT_EQ(sample().userLoad, 25);
}

TEST_F(QKHardwareCPUUsageTest, AnotherSetOfProcessorsStartsAfresh) {
    machine.hostStatistics.addProcessorTicks({{10, 0, 90, 0}, {10, 0, 90, 0}});
    machine.hostStatistics.addProcessorTicks({{20, 0, 80, 0}});
    machine.hostStatistics.addProcessorTicks({{30, 0, 70, 0}, {30, 0, 70, 0}});
    (void)sample();
    EXPECT_EQ(sample().userLoad, 20);
    EXPECT_EQ(sample().userLoad, 30);
}

TEST_F(QKHardwareCPUUsageTest, AsManyProcessorsWithOtherNumbersStartAfresh) {
    machine.hostStatistics.addProcessorTicks({{10, 0, 90, 0}, {10, 0, 90, 0}}, {0, 1});
    machine.hostStatistics.addProcessorTicks({{20, 0, 80, 0}, {20, 0, 80, 0}}, {0, 3});
    (void)sample();
    EXPECT_EQ(sample().userLoad, 20);
}

TEST_F(QKHardwareCPUUsageTest, SamplersAreIndependent) {
    machine.hostStatistics.addProcessorTicks({{10, 0, 90, 0}});
    machine.hostStatistics.addProcessorTicks({{30, 0, 70, 0}});
    (void)sample();
    EXPECT_EQ(QKHardwareCPUUsage::init()->collectCPUUsageData()->userLoad, 30);
}

} // namespace
} // namespace qk
