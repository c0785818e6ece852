// SPDX-License-Identifier: Apache-2.0
// The notification centre under threads that post, add, remove and let observers die.
#include "QKFoundation/platform/objects/NSNotificationCenter.h"
#include "QKFoundation/platform/objects/NSPredicate.h"

#include "tests/platform/objects/NotificationListener.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace qk {
namespace {

constexpr int kRounds = 2000;

template <typename Work>
void inThreads(int count, Work work) {
    std::vector<std::thread> threads;
    for (int index = 0; index < count; ++index) {
        threads.emplace_back(work);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(NotificationCenterThreads, EveryPostReachesAnObserverThatStays) {
    NSNotificationCenter center;
    const auto listener = std::make_shared<NotificationListener>();
    std::atomic<int> told = 0;
    listener->onNotification = [&](const auto&) { ++told; };
    center.addObserver(*listener, "handle:", "Name", nullptr);
    inThreads(4, [&] {
        for (int round = 0; round < kRounds; ++round) {
            center.postNotificationName("Name", nullptr);
        }
    });
    EXPECT_EQ(told, 4 * kRounds);
}

TEST(NotificationCenterThreads, ObserversComeGoAndDieWhileOthersPost) {
    NSNotificationCenter center;
    std::atomic<bool> isOver = false;
    std::atomic<int> told = 0;
    std::thread poster([&] {
        while (!isOver) {
            center.postNotificationName("Name", nullptr);
        }
    });
    inThreads(2, [&] {
        for (int round = 0; round < kRounds; ++round) {
            auto listener = std::make_shared<NotificationListener>();
            listener->onNotification = [&](const auto&) { ++told; };
            center.addObserver(*listener, "handle:", "Name", nullptr);
            if (round % 2 == 0) {
                center.removeObserver(*listener);
            }
            center.postNotificationName("Other", listener);
        }
    });
    isOver = true;
    poster.join();
    const int before = told;
    center.postNotificationName("Name", nullptr);
    EXPECT_EQ(told, before) << "nobody is left";
}

TEST(NotificationCenterThreads, ObserversOfTwoThreadsMayPostToEachOther) {
    NSNotificationCenter center;
    const auto left = std::make_shared<NotificationListener>();
    const auto right = std::make_shared<NotificationListener>();
    std::atomic<int> told = 0;
    left->onNotification = [&](const auto&) { center.postNotificationName("Right", nullptr); };
    right->onNotification = [&](const auto&) { ++told; };
    center.addObserver(*left, "handle:", "Left", nullptr);
    center.addObserver(*right, "handle:", "Right", nullptr);
    inThreads(2, [&] {
        for (int round = 0; round < kRounds; ++round) {
            center.postNotificationName("Left", nullptr);
        }
    });
    EXPECT_EQ(told, 2 * kRounds);
}

TEST(PredicateThreads, OnePredicateIsEvaluatedByMany) {
    const auto predicate = NSPredicate::predicateWithFormat("a = 1 AND ANY b IN {'x', 'y'}");
    inThreads(4, [&] {
        for (int round = 0; round < kRounds; ++round) {
            EXPECT_TRUE(predicate->evaluateWithLookup(
                [](const NSString& key) { return key == "a" ? Value(1) : Value(NSArray{"x"}); }));
        }
    });
}

} // namespace
} // namespace qk
