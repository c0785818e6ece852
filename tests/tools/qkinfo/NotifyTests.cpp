// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include "tools/qkinfo/CommandLine.h"
#include "tools/qkinfo/commands/Notify.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace qk::info {

namespace {

using namespace std::chrono_literals;
using platform::memory::NotificationBus;

std::string errorOf(const std::vector<std::string>& arguments) {
    const ParsedCommandLine parsed = parseCommandLine(arguments);
    const auto* error = std::get_if<UsageError>(&parsed);
    return error != nullptr ? error->message : "(no error)";
}

NotifyOptions optionsOf(const std::vector<std::string>& arguments) {
    return std::get<NotifyInvocation>(parseCommandLine(arguments)).options;
}

class Notify : public testing::Test {
protected:
    void connect() {
        machine.distributedNotifications.connectTo(bus);
        other.distributedNotifications.connectTo(bus);
    }

    platform::memory::Machine machine;
    platform::memory::Machine other;
    platform::memory::ScopedMachine installed{machine};
    std::shared_ptr<NotificationBus> bus = std::make_shared<NotificationBus>();
    int registered = 0;
};

} // namespace

TEST_F(Notify, WithoutABusNothingIsPostedOrWaitedFor) {
    EXPECT_THROW(postNotification({"a", false, std::nullopt}), std::runtime_error);
    EXPECT_THROW(static_cast<void>(waitForNotification({"a", true, std::nullopt}, [&] { ++registered; })),
                 std::runtime_error);
    EXPECT_EQ(registered, 0);
}

TEST_F(Notify, PostsToOthers) {
    connect();
    int calls = 0;
    const auto observer = other.distributedNotifications.addObserver(
        "a", NSNotificationSuspensionBehavior::DeliverImmediately, [&] { ++calls; });
    postNotification({"a", false, std::nullopt});
    other.dispatch.drain();
    EXPECT_EQ(calls, 1);
}

TEST_F(Notify, WaitsForTheNameAndHasRegisteredBeforeItSaysSo) {
    connect();
    EXPECT_TRUE(waitForNotification({"a", true, 10s}, [&] {
        ++registered;
        other.distributedNotifications.postNotificationName("b");
        other.distributedNotifications.postNotificationName("a");
    }));
    EXPECT_EQ(registered, 1);
}

TEST_F(Notify, TheTimeIsOverWhenOnlyOtherNamesArePosted) {
    connect();
    EXPECT_FALSE(
        waitForNotification({"a", true, 100ms}, [&] { other.distributedNotifications.postNotificationName("A"); }));
}

TEST(NotifyCommandLine, NeedsAName) {
    EXPECT_EQ(errorOf({"notify"}), "NAME is required (see qkinfo --help)");
    EXPECT_EQ(errorOf({"notify", "--wait"}), "NAME is required (see qkinfo --help)");
    EXPECT_EQ(errorOf({"notify", "a", "b"}), "unexpected argument \"b\" (see qkinfo --help)");
    EXPECT_THAT(errorOf({"notify", "\xff"}), testing::HasSubstr("is not UTF-8"));
    EXPECT_EQ(errorOf({"notify", "--json", "a"}), "unexpected argument \"--json\" (see qkinfo --help)");
}

TEST(NotifyCommandLine, PostsUnlessToldToWait) {
    EXPECT_EQ(optionsOf({"notify", "a"}).name, "a");
    EXPECT_FALSE(optionsOf({"notify", "a"}).waits);
    EXPECT_TRUE(optionsOf({"notify", "--wait", "a"}).waits);
    EXPECT_EQ(optionsOf({"notify", "--wait", "a"}).timeout, std::nullopt);
    EXPECT_EQ(optionsOf({"notify", "a", "--wait", "--timeout", "2.5"}).timeout, 2500ms);
}

TEST(NotifyCommandLine, OnlyWaitingHasATimeout) {
    EXPECT_THAT(errorOf({"notify", "--timeout", "1", "a"}), testing::HasSubstr("--wait"));
    for (const std::string text : {"", "0", "-1", "3601", "1s"}) {
        EXPECT_THAT(errorOf({"notify", "--wait", "--timeout=" + text, "a"}),
                    testing::HasSubstr("is not a number from 0.1 to 3600"));
    }
}

TEST(NotifyCommandLine, NamesAreTakenAsTheyAre) {
    for (const std::string name : {"[a,b]", "it's", "", "a b", "\\", "os"}) {
        EXPECT_EQ(optionsOf({"notify", name}).name, name);
    }
    EXPECT_EQ(optionsOf({"notify", "--wait", "--", "--wait"}).name, "--wait");
}

} // namespace qk::info
