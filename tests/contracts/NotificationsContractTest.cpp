// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <memory>
#include <thread>

namespace qk::tests {
namespace {

using platform::NotificationRegistration;

constexpr auto kAtOnce = NSNotificationSuspensionBehavior::DeliverImmediately;

/// Machines without a way to other processes.
class NotificationsContract : public Contract {
protected:
    std::unique_ptr<NotificationRegistration> counting(const NSString& name) {
        return center_->addObserver(name, kAtOnce, [this] {
            EXPECT_TRUE(services_.dispatch->isMainThread());
            ++calls_;
        });
    }
    void drain() {
        while (services_.dispatch->mainRunLoop()->drain()) {
        }
    }

    const platform::Services services_ = subject().silent();
    const std::shared_ptr<platform::DistributedNotificationCenter> center_ = services_.distributedNotifications;
    int calls_ = 0;
};
INSTANTIATE_TEST_SUITE_P(Of, NotificationsContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(NotificationsContract, WhatNobodyWaitsForIsNoFailure) {
    EXPECT_FALSE(center_->isConnected());
    EXPECT_FALSE(center_->postNotificationName("a"));
    drain();
}

TEST_P(NotificationsContract, OwnPostsArriveOnceTheLoopRuns) {
    const auto observer = counting("a");
    ASSERT_NE(observer, nullptr);
    EXPECT_FALSE(center_->postNotificationName("a"));
    EXPECT_FALSE(center_->postNotificationName("b"));
    EXPECT_EQ(calls_, 0);
    drain();
    EXPECT_EQ(calls_, 1);
}

TEST_P(NotificationsContract, NamesAreComparedUnitByUnit) {
    const NSString decomposed(u"e\u0301");
    const NSString alone(std::u16string_view(u"\xD800"));
    const auto composed = counting("\u00E9");
    const auto lone = counting(alone);
    center_->postNotificationName(decomposed);
    center_->postNotificationName("A");
    drain();
    EXPECT_EQ(calls_, 0);
    center_->postNotificationName(alone);
    drain();
    EXPECT_EQ(calls_, 1);
}

TEST_P(NotificationsContract, EachPostCallsEachObserver) {
    const auto one = counting("a");
    const auto two = counting("a");
    center_->postNotificationName("a");
    center_->postNotificationName("a");
    drain();
    EXPECT_EQ(calls_, 4);
}

TEST_P(NotificationsContract, AnObserverThatIsGoneIsNotCalledForAnEarlierPost) {
    auto observer = counting("a");
    center_->postNotificationName("a");
    observer.reset();
    drain();
    EXPECT_EQ(calls_, 0);
}

TEST_P(NotificationsContract, AnObserverThatComesLaterIsNotCalled) {
    center_->postNotificationName("a");
    const auto observer = counting("a");
    drain();
    EXPECT_EQ(calls_, 0);
}

TEST_P(NotificationsContract, AnObserverGoesInItsOwnCall) {
    std::unique_ptr<NotificationRegistration> observer;
    observer = center_->addObserver("a", kAtOnce, [&] {
        observer.reset();
        ++calls_;
    });
    center_->postNotificationName("a");
    center_->postNotificationName("a");
    drain();
    EXPECT_EQ(calls_, 1);
}

TEST_P(NotificationsContract, APostOfAnotherThreadCallsOnTheMainThread) {
    const auto observer = counting("a");
    std::thread([&] { center_->postNotificationName("a"); }).join();
    drain();
    EXPECT_EQ(calls_, 1);
}

} // namespace
} // namespace qk::tests
