// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkBus.h"

#include "QKFoundation/platform/linux/BusReading.h"

#include "tests/platform/linux/FakeBus.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

using namespace std::chrono_literals;
using tests::FakeBus;
using Texts = std::vector<std::string>;

bool isCall(sd_bus_message* call, std::string_view destination, std::string_view member) {
    return sd_bus_message_get_destination(call) == destination && sd_bus_message_get_member(call) == member;
}

// Two connections, one of which this user may not see, and one in use.
int answerAsNetworkManager(sd_bus* bus, sd_bus_message* call) {
    if (isCall(call, "org.freedesktop.NetworkManager", "GetSettings")) {
        if (std::string_view(sd_bus_message_get_path(call)) == "/c/2") {
            return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_ACCESS_DENIED, "not yours");
        }
        return sd_bus_reply_method_return(call, "a{sa{sv}}", 2, "connection", 4, "id", "s", "Office", "uuid", "s",
                                          "one", "type", "s", "bridge", "autoconnect", "b", 0, "ipv4", 1, "method", "s",
                                          "manual");
    }
    if (!isCall(call, "org.freedesktop.NetworkManager", "GetManagedObjects")) {
        return FakeBus::serviceUnknown(call);
    }
    sd_bus_message* reply = nullptr;
    sd_bus_message_new_method_return(call, &reply);
    const UniqueBusMessage owner(reply);
    sd_bus_message_append(reply, "a{oa{sa{sv}}}", 4, // objects, interfaces, properties
                          "/c/1", 1, "org.freedesktop.NetworkManager.Settings.Connection", 1, "Unsaved", "b", 0, //
                          "/c/2", 1, "org.freedesktop.NetworkManager.Settings.Connection", 0,                    //
                          "/d/1", 1, "org.freedesktop.NetworkManager.Device", 2, "Interface", "s", "br0", "State",
                          "(uu)", 100, 0, //
                          "/a/1", 1, "org.freedesktop.NetworkManager.Connection.Active", 4, "Uuid", "s", "one", "State",
                          "u", 2, "Devices", "ao", 1, "/d/1", "Speed", "d", 1.5);
    return sd_bus_send(bus, reply, nullptr);
}

TEST(NetworkBus, ServicesThatDoNotRunTellNothing) {
    const FakeBus bus([](sd_bus* /*bus*/, sd_bus_message* call) { return FakeBus::serviceUnknown(call); });
    const auto network = makeSystemNetworkBus();
    EXPECT_FALSE(network->networkManager().has_value());
    EXPECT_FALSE(network->resolved().has_value());
}

TEST(NetworkBus, LostConnectionTellsNothing) {
    const FakeBus bus([](sd_bus* /*bus*/, sd_bus_message* /*call*/) { return -1; });
    const auto network = makeSystemNetworkBus();
    EXPECT_FALSE(network->networkManager().has_value());
    EXPECT_FALSE(network->resolved().has_value());
}

TEST(NetworkBus, AnswerOfAnotherKindTellsNothing) {
    const FakeBus bus([](sd_bus* /*bus*/, sd_bus_message* call) { return sd_bus_reply_method_return(call, "s", "x"); });
    const auto network = makeSystemNetworkBus();
    EXPECT_FALSE(network->networkManager().has_value());
    EXPECT_FALSE(network->resolved().has_value());
}

TEST(NetworkBus, NetworkManagerIsRead) {
    const FakeBus bus(answerAsNetworkManager);
    const auto facts = makeSystemNetworkBus()->networkManager();
    ASSERT_TRUE(facts.has_value());
    ASSERT_EQ(facts->connections.size(), 1U);
    EXPECT_EQ(facts->connections[0].name, "Office");
    EXPECT_EQ(facts->connections[0].ipv4Method, "manual");
    EXPECT_FALSE(facts->connections[0].autoconnects);
    ASSERT_EQ(facts->active.size(), 1U);
    EXPECT_EQ(facts->active[0].interfaceName, "br0");
    EXPECT_TRUE(facts->active[0].isActive);
}

TEST(NetworkBus, SettingsThatNeverComeAreWaitedForOnlySoLong) {
    const FakeBus bus([](sd_bus* connection, sd_bus_message* call) {
        return isCall(call, "org.freedesktop.NetworkManager", "GetSettings") ? 0
                                                                             : answerAsNetworkManager(connection, call);
    });
    const auto network = makeSystemNetworkBus(30ms);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(network->networkManager().has_value());
    EXPECT_FALSE(network->resolved().has_value()); // the time is used up
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
}

TEST(NetworkBus, ResolverTellsServersAndDomainsByLink) {
    const FakeBus bus([](sd_bus* connection, sd_bus_message* call) {
        sd_bus_message* reply = nullptr;
        sd_bus_message_new_method_return(call, &reply);
        const UniqueBusMessage owner(reply);
        const std::array<std::uint8_t, 4> ipv4{192, 0, 2, 53};
        const std::array<std::uint8_t, 16> ipv6{0x20, 0x01, 0x0d, 0xb8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x53};
        sd_bus_message_open_container(reply, 'a', "{sv}");
        sd_bus_message_open_container(reply, 'e', "sv");
        sd_bus_message_append(reply, "s", "DNS");
        sd_bus_message_open_container(reply, 'v', "a(iiay)");
        sd_bus_message_open_container(reply, 'a', "(iiay)");
        const auto server = [reply](int link, int family, const auto& bytes) {
            sd_bus_message_open_container(reply, 'r', "iiay");
            sd_bus_message_append(reply, "ii", link, family);
            sd_bus_message_append_array(reply, 'y', bytes.data(), bytes.size());
            sd_bus_message_close_container(reply);
        };
        server(2, 2, ipv4);
        server(2, 10, ipv6);
        server(3, 2, ipv6); // damaged
        server(0, 2, ipv4); // of no link
        for (int depth = 0; depth < 3; ++depth) {
            sd_bus_message_close_container(reply);
        }
        sd_bus_message_append(reply, "{sv}", "Domains", "a(isb)", 3, 2, "a.example", 0, 2, "b.example", 1, 4,
                              "c.example", 0);
        sd_bus_message_close_container(reply);
        return sd_bus_send(connection, reply, nullptr);
    });
    const auto servers = makeSystemNetworkBus()->resolved();
    ASSERT_TRUE(servers.has_value());
    const LinkNameServers expected{{2, {{"192.0.2.53", "2001:db8::53"}, {"a.example"}}}, {4, {{}, {"c.example"}}}};
    EXPECT_EQ(*servers, expected);
}

} // namespace
} // namespace qk::platform
