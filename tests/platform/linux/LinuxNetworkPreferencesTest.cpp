// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxNetworkPreferences.h"

#include "QKFoundation/platform/linux/NetworkProxies.h"

#include "tests/platform/linux/Environment.h"
#include "tests/platform/linux/NetworkFacts.h"
#include "tests/platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using namespace tests;

TEST(HardwareAddressText, NoAddressIsEmpty) {
    EXPECT_EQ(hardwareAddressText({}), "");
    EXPECT_EQ(hardwareAddressText(std::vector<std::uint8_t>(6)), "");
    EXPECT_EQ(hardwareAddressText({192, 0, 2, 1}), ""); // of a tunnel
}

TEST(HardwareAddressText, IsLowerCaseWithColons) {
    EXPECT_EQ(hardwareAddressText({0x52, 0x54, 0x00, 0xAB, 0xCD, 0xEF}), "52:54:00:ab:cd:ef");
    EXPECT_EQ(hardwareAddressText({0, 0, 0, 0, 0, 1}), "00:00:00:00:00:01");
}

TEST(MediumDictionary, UnknownSpeedIsNone) {
    EXPECT_FALSE(mediumDictionary({}).has_value());
    EXPECT_FALSE(mediumDictionary({-1, true, 0}).has_value());
    EXPECT_FALSE(mediumDictionary({0, true, 0}).has_value());
}

TEST(MediumDictionary, NamesTheMedium) {
    const struct {
        std::int64_t speed;
        std::uint8_t port;
        NSString name;
    } rows[] = {{10, 0, "10baseT/UTP"},  {100, 0, "100baseTX"},   {1000, 0, "1000baseT"},    {2500, 0, "2500Base-T"},
                {5000, 0, "5000Base-T"}, {10000, 0, "10Gbase-T"}, {1000, 0xFF, "1000baseT"}, {1000, 0xEF, "1000baseT"},
                {1000, 3, "1000baseSX"}, {10000, 3, "10GbaseSR"}, {40000, 3, "40GbaseF"},    {25000, 0, "25GbaseT"},
                {866, 0xFF, "866baseT"}};
    for (const auto& row : rows) {
        const auto medium = mediumDictionary({row.speed, std::nullopt, row.port});
        EXPECT_EQ(*medium, (NSDictionary{{"MediaSubType", row.name}, {"MediaOptions", NSArray()}})) << row.speed;
    }
}

TEST(MediumDictionary, OptionsTellTheDirections) {
    EXPECT_EQ(*mediumDictionary({1000, true, 0})->get<NSArray>("MediaOptions"), NSArray{"full-duplex"});
    EXPECT_EQ(*mediumDictionary({10, false, 0})->get<NSArray>("MediaOptions"), NSArray{"half-duplex"});
}

struct LinuxNetworkPreferencesTest : ::testing::Test {
    TemporaryFolder folder;
    KernelNetwork kernel;

    std::vector<SCNetworkServiceRef> all(std::optional<networkmanager::Facts> facts = std::nullopt) const {
        auto snapshot = std::make_shared<NetworkSnapshot>(kernel, LinuxRoot(folder.path()));
        const LinuxNetworkPreferences preferences(
            std::make_shared<NetworkServices>(snapshot, std::make_unique<ToldBus>(std::move(facts))));
        return preferences.copyAllServices().value();
    }
};

TEST_F(LinuxNetworkPreferencesTest, MachineWithoutANetworkHasAnEmptyList) {
    EXPECT_TRUE(all().empty());
}

TEST_F(LinuxNetworkPreferencesTest, CardIsDescribed) {
    folder.write("sys/class/net/eth0/speed", "1000\n");
    folder.write("sys/class/net/eth0/duplex", "full\n");
    kernel.links = {cardLink(2, "eth0")};
    const SCNetworkServiceRef service = all().at(0);
    EXPECT_EQ(service->enabled, 1);
    EXPECT_EQ(service->name, "eth0");
    EXPECT_EQ(service->serviceID->length(), 36U);
    const SCNetworkInterface& interface = *service->interface;
    EXPECT_EQ(interface.bsdName, "eth0");
    EXPECT_EQ(interface.localizedDisplayName, "Ethernet");
    EXPECT_EQ(interface.interfaceType, "Ethernet");
    EXPECT_EQ(interface.hardwareAddressString, "52:54:00:12:34:02");
    EXPECT_EQ(interface.supportedInterfaceTypes, NSArray{"PPP"});
    EXPECT_EQ(interface.supportedProtocolTypes, (NSArray{"DNS", "IPv4", "IPv6", "Proxies"}));
    ASSERT_TRUE(interface.transferUnits.has_value());
    EXPECT_EQ(interface.transferUnits->current, 1500);
    EXPECT_EQ(interface.transferUnits->minimum, 68);
    EXPECT_EQ(interface.transferUnits->maximum, 9000);
    ASSERT_TRUE(interface.activeMedia.has_value());
    EXPECT_EQ(*interface.activeMedia->get<NSString>("MediaSubType"), "1000baseT");
    EXPECT_EQ(*interface.activeMedia->get<NSArray>("MediaOptions"), NSArray{"full-duplex"});
}

TEST_F(LinuxNetworkPreferencesTest, WhatIsNotKnownIsNothing) {
    kernel.links = {networkLink(2, "br0", "bridge"), networkLink(3, "wg0", "wireguard")};
    kernel.links[0].maximumMTU.reset();
    kernel.links[1].hardwareAddress.clear();
    kernel.addresses = {networkAddress(3, "10.0.0.1/24")};
    const auto services = all();
    EXPECT_EQ(services.at(0)->interface->localizedDisplayName, "Bridge");
    EXPECT_FALSE(services.at(0)->interface->supportedInterfaceTypes.has_value());
    EXPECT_FALSE(services.at(0)->interface->transferUnits.has_value());
    EXPECT_FALSE(services.at(0)->interface->activeMedia.has_value());
    EXPECT_EQ(services.at(1)->interface->localizedDisplayName, "wg0");
    EXPECT_FALSE(services.at(1)->interface->interfaceType.has_value());
    EXPECT_EQ(services.at(1)->interface->hardwareAddressString, "");
}

TEST_F(LinuxNetworkPreferencesTest, WirelessCardHasAnotherName) {
    folder.write("sys/class/net/wlan0/uevent", "DEVTYPE=wlan\n");
    kernel.links = {cardLink(2, "wlan0")};
    const auto services = all();
    EXPECT_EQ(services.at(0)->interface->localizedDisplayName, "Wi-Fi");
    EXPECT_EQ(services.at(0)->interface->interfaceType, "IEEE80211");
    EXPECT_EQ(services.at(0)->interface->supportedInterfaceTypes, NSArray{"PPP"});
}

TEST_F(LinuxNetworkPreferencesTest, ConnectionAtRestMayHaveNoInterfaceName) {
    networkmanager::Connection connection;
    connection.uuid = "0a1b2c3d-0000-4000-8000-00000000000a";
    connection.name = "Office";
    connection.type = "802-11-wireless";
    connection.autoconnects = false;
    const auto services = all(networkmanager::Facts{{connection}, {}});
    EXPECT_EQ(services.at(0)->enabled, 0);
    EXPECT_EQ(services.at(0)->name, "Office");
    EXPECT_EQ(services.at(0)->serviceID, "0A1B2C3D-0000-4000-8000-00000000000A");
    EXPECT_FALSE(services.at(0)->interface->bsdName.has_value());
    EXPECT_EQ(services.at(0)->interface->localizedDisplayName, "Wi-Fi");
    EXPECT_FALSE(services.at(0)->interface->hardwareAddressString.has_value());
    EXPECT_FALSE(services.at(0)->interface->transferUnits.has_value());
}

TEST(NetworkProxies, WithoutVariablesThereAreNone) {
    EXPECT_FALSE(environmentProxies(environment({})).has_value());
    EXPECT_FALSE(environmentProxies(environment({{"no_proxy", "localhost"}})).has_value());
    EXPECT_FALSE(environmentProxies(environment({{"http_proxy", ""}})).has_value());
}

TEST(NetworkProxies, AddressIsTakenOutOfItsURL) {
    const struct {
        std::string_view value;
        std::optional<ProxyAddress> address;
    } rows[] = {{"http://proxy.example:3128/", ProxyAddress{"http", "proxy.example", 3128}},
                {"HTTP://proxy.example", ProxyAddress{"http", "proxy.example", std::nullopt}},
                {"proxy.example:8080", ProxyAddress{"", "proxy.example", 8080}},
                {" http://anna:se@cret@proxy.example:1?x#y", ProxyAddress{"http", "proxy.example", 1}},
                {"http://[2001:db8::1]:3128", ProxyAddress{"http", "2001:db8::1", 3128}},
                {"http://proxy.example:port", ProxyAddress{"http", "proxy.example", std::nullopt}},
                {"http://", std::nullopt},
                {"http://:3128", std::nullopt},
                {"http://[2001:db8::1", std::nullopt},
                {"", std::nullopt}};
    for (const auto& row : rows) {
        EXPECT_EQ(proxyAddress(row.value), row.address) << row.value;
    }
}

TEST(NetworkProxies, EachProtocolHasItsOwn) {
    const auto proxies = environmentProxies(environment({{"http_proxy", "http://a.example:1"},
                                                         {"HTTPS_PROXY", "http://b.example:2"},
                                                         {"no_proxy", "localhost, .example.org,,"}}));
    EXPECT_EQ(*proxies, (NSDictionary{{"HTTPEnable", 1},
                                      {"HTTPProxy", "a.example"},
                                      {"HTTPPort", 1},
                                      {"HTTPSEnable", 1},
                                      {"HTTPSProxy", "b.example"},
                                      {"HTTPSPort", 2},
                                      {"ExceptionsList", NSArray{"localhost", ".example.org"}}}));
}

TEST(NetworkProxies, CapitalLettersAreNotTrustedForWebPages) {
    EXPECT_FALSE(environmentProxies(environment({{"HTTP_PROXY", "http://a.example"}})).has_value());
}

TEST(NetworkProxies, OneForAllStandsInForThoseThatAreMissing) {
    const auto all = environmentProxies(environment({{"all_proxy", "a.example"}, {"ftp_proxy", "b.example"}}));
    EXPECT_EQ(*all->get<NSString>("HTTPProxy"), "a.example");
    EXPECT_EQ(*all->get<NSString>("HTTPSProxy"), "a.example");
    EXPECT_EQ(*all->get<NSString>("FTPProxy"), "b.example");
    EXPECT_EQ(all->objectForKey("SOCKSProxy"), nullptr);
    const auto socks = environmentProxies(environment({{"all_proxy", "socks5h://a.example:1080"}}));
    EXPECT_EQ(*socks, (NSDictionary{{"SOCKSEnable", 1}, {"SOCKSProxy", "a.example"}, {"SOCKSPort", 1080}}));
}

} // namespace
} // namespace qk::platform
