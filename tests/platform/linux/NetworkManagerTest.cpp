// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkManager.h"

#include "tests/platform/linux/NetworkFacts.h"

#include <gtest/gtest.h>

#include <bit>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qk::platform::networkmanager {
namespace {

using namespace tests;
using Texts = std::vector<std::string>;

constexpr std::string_view kActive = "org.freedesktop.NetworkManager.Connection.Active";

BusDictionary settings(BusDictionary common, const std::string& ipv4 = "", const std::string& ipv6 = "") {
    BusDictionary result{{"connection", busDictionary(std::move(common))}};
    if (!ipv4.empty()) {
        result.push_back({"ipv4", busDictionary({{"method", busText(ipv4)}})});
    }
    if (!ipv6.empty()) {
        result.push_back({"ipv6", busDictionary({{"method", busText(ipv6)}})});
    }
    return result;
}

TEST(NetworkManagerConnection, WithoutUUIDOrTypeIsNone) {
    EXPECT_FALSE(connection({}).has_value());
    EXPECT_FALSE(connection({{"connection", busText("x")}}).has_value());
    EXPECT_FALSE(connection(settings({{"uuid", busText("u")}})).has_value());
    EXPECT_FALSE(connection(settings({{"type", busText("bridge")}})).has_value());
    EXPECT_FALSE(connection(settings({{"uuid", busNumber(1)}, {"type", busText("bridge")}})).has_value());
}

TEST(NetworkManagerConnection, WhatIsLeftOutHasItsDefault) {
    const auto read = connection(settings({{"uuid", busText("u")}, {"type", busText("bridge")}}));
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->name, "");
    EXPECT_EQ(read->interfaceName, "");
    EXPECT_EQ(read->ipv4Method, "");
    EXPECT_EQ(read->ipv6Method, "");
    EXPECT_TRUE(read->autoconnects);
    EXPECT_EQ(read->priority, 0);
}

TEST(NetworkManagerConnection, SettingsAreRead) {
    BusDictionary told = settings({{"id", busText("Office")},
                                   {"uuid", busText("u")},
                                   {"type", busText("vpn")},
                                   {"interface-name", busText("eth0")},
                                   {"autoconnect", busBoolean(false)},
                                   {"autoconnect-priority", busNumber(-5)}},
                                  "manual", "auto");
    told.push_back({"vpn", busDictionary({{"service-type", busText("org.freedesktop.NetworkManager.l2tp")}})});
    const auto read = connection(told);
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->name, "Office");
    EXPECT_EQ(read->interfaceName, "eth0");
    EXPECT_EQ(read->vpnService, "org.freedesktop.NetworkManager.l2tp");
    EXPECT_EQ(read->ipv4Method, "manual");
    EXPECT_EQ(read->ipv6Method, "auto");
    EXPECT_FALSE(read->autoconnects);
    EXPECT_EQ(read->priority, -5);
}

// As NetworkManager 1.42 tells them, less what nobody asks for.
BusDictionary objects() {
    const BusValue server4 = busDictionary({{"address", busText("192.0.2.53")}});
    const std::string bytes6("\x20\x01\x0d\xb8\0\0\0\0\0\0\0\0\0\0\0\x53", 16);
    const auto object = [](std::string path, std::string_view interface, BusDictionary properties) {
        return BusEntry{std::move(path),
                        busDictionary({{std::string(interface), busDictionary(std::move(properties))}})};
    };
    return {
        object("/Settings/1", "org.freedesktop.NetworkManager.Settings.Connection", {{"Flags", busNumber(0)}}),
        object("/Settings/2", "org.freedesktop.NetworkManager.Settings.Connection", {}),
        object("/Devices/3", "org.freedesktop.NetworkManager.Device",
               {{"Interface", busText("eth0")}, {"IpInterface", busText("eth0")}}),
        object("/Devices/4", "org.freedesktop.NetworkManager.Device",
               {{"Interface", busText("ttyUSB0")}, {"IpInterface", busText("ppp0")}}),
        object("/Devices/5", "org.freedesktop.NetworkManager.Device",
               {{"Interface", busText("eth1")}, {"IpInterface", busText("")}}),
        object("/IP4Config/3", "org.freedesktop.NetworkManager.IP4Config",
               {{"NameserverData", busList({server4})},
                {"Nameservers", busList({busNumber(889323712)})},
                {"Domains", busList({busText("a.example")})},
                {"Searches", busList({busText("a.example"), busText("~b.example"), busText("c.example")})}}),
        object("/IP6Config/3", "org.freedesktop.NetworkManager.IP6Config",
               {{"Nameservers", busList({busText(bytes6), busText("short")})}}),
        object("/DHCP4Config/1", "org.freedesktop.NetworkManager.DHCP4Config",
               {{"Options", busDictionary({{"routers", busText("192.0.2.1")}, {"private", busNumber(1)}})}}),
        object("/Active/1", kActive,
               {{"Uuid", busText("one")},
                {"State", busNumber(2)},
                {"Devices", busList({busText("/Devices/3")})},
                {"Ip4Config", busText("/IP4Config/3")},
                {"Ip6Config", busText("/IP6Config/3")},
                {"Dhcp4Config", busText("/DHCP4Config/1")},
                {"Vpn", busBoolean(false)}}),
        object("/Active/2", kActive,
               {{"Uuid", busText("two")}, {"State", busNumber(1)}, {"Devices", busList({busText("/Devices/4")})}}),
        object("/Active/3", kActive,
               {{"Uuid", busText("three")},
                {"State", busNumber(2)},
                {"Vpn", busBoolean(true)},
                {"Devices", busList({busText("/Devices/3")})}}),
        object("/Active/4", kActive,
               {{"Uuid", busText("four")}, {"State", busNumber(3)}, {"Devices", busList({busText("/Devices/5")})}}),
        object("/Active/5", kActive, {{"Devices", busList({})}, {"Ip4Config", busText("/")}}),
    };
}

TEST(NetworkManagerActive, WithoutObjectsThereAreNone) {
    EXPECT_TRUE(activeConnections({}).empty());
    EXPECT_TRUE(activeConnections({{"/a", busText("x")}, {"/b", busDictionary({{std::string(kActive), busText("x")}})}})
                    .empty());
    EXPECT_TRUE(connectionPaths({}).empty());
}

TEST(NetworkManagerActive, ConnectionsAreFoundAmongTheObjects) {
    EXPECT_EQ(connectionPaths(objects()), (Texts{"/Settings/1", "/Settings/2"}));
}

TEST(NetworkManagerActive, DeviceAndItsConfigurationAreFollowed) {
    const auto active = activeConnections(objects());
    ASSERT_EQ(active.size(), 5U);
    EXPECT_EQ(active[0].uuid, "one");
    EXPECT_TRUE(active[0].isActive);
    EXPECT_EQ(active[0].interfaceName, "eth0");
    EXPECT_EQ(active[0].nameServers.addresses, (Texts{"192.0.2.53", "2001:db8::53"}));
    EXPECT_EQ(active[0].nameServers.domains, (Texts{"a.example", "c.example"}));
    ASSERT_NE(active[0].lease, nullptr);
    EXPECT_EQ(active[0].lease->options.size(), 1U);
}

TEST(NetworkManagerActive, AddressesMayBeOnAnotherInterfaceThanTheDevice) {
    const auto active = activeConnections(objects());
    EXPECT_EQ(active[1].interfaceName, "ppp0");
    EXPECT_TRUE(active[1].isActive); // on its way up
    EXPECT_EQ(active[1].lease, nullptr);
    EXPECT_EQ(active[2].interfaceName, ""); // the device is the one below the VPN
    EXPECT_EQ(active[3].interfaceName, "eth1");
    EXPECT_FALSE(active[3].isActive);       // on its way down
    EXPECT_EQ(active[4].interfaceName, ""); // nothing said
    EXPECT_FALSE(active[4].isActive);
}

TEST(NetworkManagerActive, OlderNumbersOfServersAreRead) {
    const auto inMemory = std::bit_cast<std::uint32_t>(std::array<std::uint8_t, 4>{192, 0, 2, 53});
    const BusDictionary told{
        {"/c", busDictionary({{"org.freedesktop.NetworkManager.IP4Config",
                               busDictionary({{"Nameservers", busList({busNumber(inMemory)})}})}})},
        {"/a", busDictionary({{std::string(kActive), busDictionary({{"Ip4Config", busText("/c")}})}})}};
    EXPECT_EQ(activeConnections(told).at(0).nameServers.addresses, Texts{"192.0.2.53"});
}

Connection made(std::string uuid, std::string name, std::string type = "802-3-ethernet", std::string interface = "") {
    Connection result;
    result.uuid = std::move(uuid);
    result.name = std::move(name);
    result.type = std::move(type);
    result.interfaceName = std::move(interface);
    return result;
}

std::string text(const NSString* string) {
    return string != nullptr ? string->utf8Lossy() : "-";
}

struct NetworkManagerServices : ::testing::Test {
    NetworkSnapshot snapshot{KernelNetwork{{loopbackLink(), cardLink(2, "eth0"), networkLink(3, "br0", "bridge")},
                                           {networkAddress(2, "fe80::1/64")},
                                           {}},
                             LinuxRoot("/nonexistent")};
};

TEST_F(NetworkManagerServices, WithoutConnectionsThereAreNone) {
    EXPECT_TRUE(services({}, snapshot).empty());
}

TEST_F(NetworkManagerServices, OrderIsByPriorityThenByName) {
    Facts facts{{made("1", "b"), made("2", "c"), made("3", "a"), made("4", "d")}, {}};
    facts.connections[3].priority = 7;
    facts.connections[2].priority = -1;
    Texts names;
    for (const NetworkService& service : services(facts, snapshot)) {
        names.push_back(service.name.utf8Lossy());
    }
    EXPECT_EQ(names, (Texts{"d", "b", "c", "a"}));
}

TEST_F(NetworkManagerServices, IdentifierIsUpperCase) {
    const auto all = services({{made("0a1b2c3d-0000-4000-8000-00000000000a", "x")}, {}}, snapshot);
    EXPECT_EQ(all.at(0).id, "0A1B2C3D-0000-4000-8000-00000000000A");
    EXPECT_EQ(all.at(0).manager, NetworkService::Manager::NetworkManager);
}

TEST_F(NetworkManagerServices, AutoconnectMeansEnabled) {
    Facts facts{{made("1", "a"), made("2", "b")}, {}};
    facts.connections[1].autoconnects = false;
    const auto all = services(facts, snapshot);
    EXPECT_TRUE(all.at(0).isEnabled);
    EXPECT_FALSE(all.at(1).isEnabled);
}

TEST_F(NetworkManagerServices, InterfaceIsThatInUseElseTheOneWrittenDown) {
    Facts facts{
        {made("1", "a"), made("2", "b", "bridge", "br0"), made("3", "c"), made("4", "d", "802-3-ethernet", "eth9")},
        {}};
    facts.active.push_back({"1", true, "eth0", {}, nullptr});
    const auto all = services(facts, snapshot);
    EXPECT_EQ(all.at(0).interfaceName, "eth0");
    EXPECT_EQ(all.at(0).link, snapshot.link("eth0"));
    EXPECT_TRUE(all.at(0).isActive);
    EXPECT_EQ(all.at(1).interfaceName, "br0");
    EXPECT_EQ(all.at(1).link, snapshot.link("br0"));
    EXPECT_FALSE(all.at(1).isActive);
    EXPECT_EQ(all.at(2).interfaceName, "");
    EXPECT_EQ(all.at(2).link, nullptr);
    EXPECT_EQ(all.at(3).interfaceName, "eth9");
    EXPECT_EQ(all.at(3).link, nullptr);
}

TEST_F(NetworkManagerServices, UseThatLastsGoesBeforeOneThatEnds) {
    Facts facts{{made("1", "a")}, {{"1", false, "br0", {}, nullptr}, {"1", true, "eth0", {}, nullptr}}};
    EXPECT_EQ(services(facts, snapshot).at(0).interfaceName, "eth0");
}

TEST_F(NetworkManagerServices, LoopbackIsLeftOut) {
    Facts facts{{made("1", "lo", "loopback", "lo"), made("2", "other", "generic", "lo")}, {}};
    EXPECT_TRUE(services(facts, snapshot).empty());
}

TEST_F(NetworkManagerServices, MethodsAreTheStoresOwn) {
    const struct {
        std::string method;
        std::string ipv4;
        std::string ipv6;
    } rows[] = {{"auto", "DHCP", "Automatic"},
                {"manual", "Manual", "Manual"},
                {"link-local", "LinkLocal", "LinkLocal"},
                {"shared", "Manual", "Manual"},
                {"disabled", "-", "-"},
                {"dhcp", "-", "Automatic"},
                {"ignore", "-", "LinkLocal"},
                {"", "-", "-"}};
    for (const auto& row : rows) {
        Facts facts{{made("1", "a", "802-3-ethernet", "eth0")}, {}};
        facts.connections[0].ipv4Method = facts.connections[0].ipv6Method = row.method;
        const auto all = services(facts, snapshot);
        EXPECT_EQ(text(all.at(0).ipv4Method), row.ipv4) << row.method;
        EXPECT_EQ(text(all.at(0).ipv6Method), row.ipv6) << row.method;
    }
}

TEST_F(NetworkManagerServices, DialledConnectionGetsItsAddressInAnotherWay) {
    Facts facts{{made("1", "a", "pppoe")}, {}};
    facts.connections[0].ipv4Method = "auto";
    EXPECT_EQ(text(services(facts, snapshot).at(0).ipv4Method), "PPP");
    facts.connections[0].ipv4Method = "manual";
    EXPECT_EQ(text(services(facts, snapshot).at(0).ipv4Method), "Manual");
}

TEST_F(NetworkManagerServices, LinkSaysItsTypeElseTheConnectionDoes) {
    const struct {
        std::string type;
        std::string interface;
        std::string expected;
    } rows[] = {{"802-3-ethernet", "br0", "Bridge"},
                {"bridge", "", "Bridge"},
                {"802-3-ethernet", "", "Ethernet"},
                {"802-11-wireless", "", "IEEE80211"},
                {"bond", "", "Bond"},
                {"team", "", "Bond"},
                {"vlan", "", "VLAN"},
                {"bluetooth", "", "Bluetooth"},
                {"gsm", "", "WWAN"},
                {"cdma", "", "WWAN"},
                {"pppoe", "", "PPP"},
                {"wireguard", "", "-"},
                {"tun", "", "-"}};
    for (const auto& row : rows) {
        const auto all = services({{made("1", "a", row.type, row.interface)}, {}}, snapshot);
        EXPECT_EQ(text(all.at(0).type), row.expected) << row.type;
    }
}

TEST_F(NetworkManagerServices, DaemonOfAVPNTellsItsType) {
    const struct {
        std::string service;
        std::string expected;
    } rows[] = {{"org.freedesktop.NetworkManager.pptp", "PPTP"},
                {"org.freedesktop.NetworkManager.l2tp", "L2TP"},
                {"org.freedesktop.NetworkManager.strongswan", "IPSec"},
                {"org.freedesktop.NetworkManager.openvpn", "VPN"},
                {"pptp", "PPTP"},
                {"", "VPN"}};
    for (const auto& row : rows) {
        Facts facts{{made("1", "a", "vpn")}, {}};
        facts.connections[0].vpnService = row.service;
        EXPECT_EQ(text(services(facts, snapshot).at(0).type), row.expected) << row.service;
    }
}

TEST_F(NetworkManagerServices, NameServersAreOfTheConnectionInUse) {
    Facts facts{{made("1", "a"), made("2", "b")}, {}};
    facts.active = {{"1", true, "eth0", {{"192.0.2.53"}, {}}, nullptr},
                    {"2", false, "br0", {{"192.0.2.54"}, {}}, nullptr}};
    const auto all = services(facts, snapshot);
    EXPECT_EQ(all.at(0).nameServers.addresses, Texts{"192.0.2.53"});
    EXPECT_TRUE(all.at(1).nameServers.isEmpty());
}

} // namespace
} // namespace qk::platform::networkmanager
