// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKDistributedNotificationHandler.h"

#include "QKFoundation/platform/memory/Machine.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace {

using qk::NSNotificationSuspensionBehavior;
using qk::NSString;
using qk::QKDistributedNotificationHandler;
using qk::platform::memory::Machine;
using qk::platform::memory::NotificationBus;
using qk::platform::memory::ScopedMachine;

constexpr auto kAtOnce = NSNotificationSuspensionBehavior::DeliverImmediately;

class NotificationHandler : public testing::Test {
protected:
    std::shared_ptr<QKDistributedNotificationHandler> handlerFor(const NSString& name) {
        return QKDistributedNotificationHandler::initWithNotificationName(
            name, [this] { ++calls; }, kAtOnce);
    }
    void post(const NSString& name) {
        machine.distributedNotifications.postNotificationName(name);
        machine.dispatch.drain();
    }

    Machine machine;
    ScopedMachine installed{machine};
    int calls = 0;
};

TEST_F(NotificationHandler, OtherNamesCallNothing) {
    const auto handler = handlerFor("a");
    post("b");
    post("");
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(handler->name(), "a");
}

TEST_F(NotificationHandler, HandlerWithoutACallbackDoesNothing) {
    const auto handler = QKDistributedNotificationHandler::initWithNotificationName("a", {}, kAtOnce);
    ASSERT_NE(handler, nullptr);
    post("a");
    EXPECT_FALSE(handler->callback());
}

TEST_F(NotificationHandler, NotificationOfTheNameCallsBackOnTheMainThread) {
    const auto handler = handlerFor("a");
    machine.distributedNotifications.postNotificationName("a");
    EXPECT_EQ(calls, 0);
    machine.dispatch.drain();
    EXPECT_EQ(calls, 1);
}

TEST_F(NotificationHandler, HandlerThatIsGoneIsNotCalled) {
    auto handler = handlerFor("a");
    machine.distributedNotifications.postNotificationName("a");
    handler.reset();
    machine.dispatch.drain();
    post("a");
    EXPECT_EQ(calls, 0);
}

TEST_F(NotificationHandler, CallbackMayLetGoOfItsHandler) {
    std::shared_ptr<QKDistributedNotificationHandler> handler;
    handler = QKDistributedNotificationHandler::initWithNotificationName(
        "a",
        [&] {
            ++calls;
            handler.reset();
        },
        kAtOnce);
    post("a");
    post("a");
    EXPECT_EQ(calls, 1);
}

TEST_F(NotificationHandler, HandleNotificationCallsTheCallback) {
    const auto handler = handlerFor("a");
    handler->handleNotification(std::nullopt);
    handler->performSelector("handleNotification:", std::array<std::optional<qk::Value>, 1>{"a"});
    EXPECT_EQ(calls, 2);
}

TEST_F(NotificationHandler, SuspensionBehaviorIsHandedOn) {
    const std::vector<NSNotificationSuspensionBehavior> all = {NSNotificationSuspensionBehavior::Drop,
                                                               NSNotificationSuspensionBehavior::Coalesce,
                                                               NSNotificationSuspensionBehavior::Hold, kAtOnce};
    for (const NSNotificationSuspensionBehavior behavior : all) {
        static_cast<void>(QKDistributedNotificationHandler::initWithNotificationName("a", {}, behavior));
    }
    EXPECT_EQ(machine.distributedNotifications.suspensionBehaviors(), all);
}

TEST_F(NotificationHandler, NotificationsReachOtherMachinesOnTheBus) {
    const auto bus = std::make_shared<NotificationBus>();
    Machine other;
    other.distributedNotifications.connectTo(bus);
    const auto handler = handlerFor("a");
    EXPECT_TRUE(other.distributedNotifications.postNotificationName("a"));
    machine.dispatch.drain();
    EXPECT_EQ(calls, 0);
    machine.distributedNotifications.connectTo(bus);
    EXPECT_TRUE(other.distributedNotifications.postNotificationName("a"));
    machine.dispatch.drain();
    EXPECT_EQ(calls, 1);
}

} // namespace
