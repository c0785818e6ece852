// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/services/internal/TimerQueue.h"

#include <gtest/gtest.h>

#include <limits>

namespace qk::internal {
namespace {

using namespace std::chrono_literals;

TEST(TimerQueue, WithoutTimersNothingIsDue) {
    TimerQueue queue;
    EXPECT_EQ(queue.next(), std::nullopt);
    EXPECT_TRUE(queue.takeDue(1h).empty());
}

TEST(TimerQueue, ATimerIsDueOnce) {
    TimerQueue queue;
    const auto timer = queue.add(10s, 1.5, false, [] {});
    EXPECT_EQ(queue.next(), 11500ms);
    EXPECT_TRUE(queue.takeDue(11499ms).empty());
    EXPECT_EQ(queue.takeDue(11500ms), std::vector{timer});
    EXPECT_EQ(queue.next(), std::nullopt);
    EXPECT_TRUE(timer->fire());
}

TEST(TimerQueue, ACancelledTimerDoesNotFire) {
    TimerQueue queue;
    bool called = false;
    const auto timer = queue.add(0s, 1, false, [&] { called = true; });
    queue.remove(*timer);
    EXPECT_EQ(queue.next(), std::nullopt);
    timer->cancel();
    EXPECT_FALSE(timer->fire());
    EXPECT_FALSE(called);
    queue.remove(*timer);
}

TEST(TimerQueue, TimersForTheSameTimeComeInTheOrderOfTheirCalls) {
    TimerQueue queue;
    const auto later = queue.add(0s, 2, false, [] {});
    const auto first = queue.add(0s, 1, false, [] {});
    const auto second = queue.add(500ms, 0.5, false, [] {});
    EXPECT_EQ(queue.takeDue(5s), (std::vector{first, second, later}));
}

TEST(TimerQueue, WhatPassedUnseenIsLeftOut) {
    TimerQueue queue;
    const auto timer = queue.add(0s, 1, true, [] {});
    EXPECT_EQ(queue.takeDue(5500ms), std::vector{timer});
    EXPECT_EQ(queue.next(), 6s);
    EXPECT_EQ(queue.takeDue(6s), std::vector{timer});
    EXPECT_EQ(queue.next(), 7s);
}

TEST(TimerQueue, DelaysOutOfRangeAreTheNearest) {
    TimerQueue queue;
    for (const double seconds :
         {-1.0, 0.0, -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        const auto timer = queue.add(3s, seconds, false, [] {});
        EXPECT_EQ(queue.next(), 3s) << seconds;
        queue.remove(*timer);
        const auto repeating = queue.add(3s, seconds, true, [] {});
        EXPECT_EQ(queue.next(), 3s + 100us) << seconds;
        queue.remove(*repeating);
    }
    for (const double seconds : {1e9, 1e300, std::numeric_limits<double>::infinity()}) {
        const auto timer = queue.add(3s, seconds, true, [] {});
        EXPECT_EQ(queue.next(), 1'000'000'003s) << seconds;
        queue.remove(*timer);
    }
}

TEST(TimerQueue, ATimerThatIsBeingCalledIsPassedOver) {
    TimerQueue queue;
    std::size_t dueInside = 1;
    const auto timer = queue.add(0s, 1, true, [&] { dueInside = queue.takeDue(10s).size(); });
    for (const auto& due : queue.takeDue(1s)) {
        EXPECT_TRUE(due->fire());
    }
    EXPECT_EQ(dueInside, 0U);
    EXPECT_EQ(queue.next(), 11s);
}

} // namespace
} // namespace qk::internal
