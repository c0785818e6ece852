// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/SystemBus.h"

#include "QKFoundation/platform/linux/LinuxHost.h"

#include "tests/platform/linux/FakeBus.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace qk::platform {
namespace {

using tests::FakeBus;
using namespace std::chrono_literals;

constexpr BusInterface kObject{"org.example.Service", "/org/example/object", "org.example.Interface"};

TEST(SystemBus, ServiceThatDoesNotRunIsNoAnswerAndIsNotStarted) {
    int autoStart = -1;
    const FakeBus bus([&autoStart](sd_bus* /*bus*/, sd_bus_message* call) {
        autoStart = sd_bus_message_get_auto_start(call);
        return FakeBus::serviceUnknown(call);
    });
    EXPECT_EQ(readBusProperty(kObject, "Name", 5s), std::nullopt);
    EXPECT_EQ(autoStart, 0);
}

TEST(SystemBus, TextPropertyIsRead) {
    std::string asked;
    const FakeBus bus([&asked](sd_bus* /*bus*/, sd_bus_message* call) {
        const char* interface = nullptr;
        const char* property = nullptr;
        sd_bus_message_read(call, "ss", &interface, &property);
        asked = std::string(sd_bus_message_get_destination(call)) + " " + sd_bus_message_get_path(call) + " " +
                sd_bus_message_get_member(call) + " " + interface + " " + property;
        return sd_bus_reply_method_return(call, "v", "s", "Anna’s laptop");
    });
    EXPECT_EQ(readBusProperty(kObject, "Name", 5s), "Anna’s laptop");
    EXPECT_EQ(asked, "org.example.Service /org/example/object Get org.example.Interface Name");
}

TEST(SystemBus, PropertyOfAnotherKindIsNoAnswer) {
    const FakeBus bus(
        [](sd_bus* /*bus*/, sd_bus_message* call) { return sd_bus_reply_method_return(call, "v", "u", 7U); });
    EXPECT_EQ(readBusProperty(kObject, "Name", 5s), std::nullopt);
}

TEST(SystemBus, ServiceThatNeverAnswersIsGivenUp) {
    const FakeBus bus([](sd_bus* /*bus*/, sd_bus_message* /*call*/) { return 0; });
    EXPECT_EQ(readBusProperty(kObject, "Name", 20ms), std::nullopt);
}

TEST(SystemBus, LostConnectionIsNoAnswer) {
    const FakeBus bus([](sd_bus* /*bus*/, sd_bus_message* /*call*/) { return -1; });
    EXPECT_EQ(readBusProperty(kObject, "Name", 5s), std::nullopt);
}

} // namespace
} // namespace qk::platform
