// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxDynamicStore.h"

#include "QKFoundation/platform/linux/LinuxSystemConfiguration.h"
#include "QKFoundation/platform/linux/NetworkValues.h"
#include "QKFoundation/platform/linux/WholeMatch.h"
#include "QKFoundation/platform/services/SystemConfigurationSchema.h"

#include "tests/platform/linux/Environment.h"
#include "tests/platform/linux/NetworkFacts.h"
#include "tests/platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using namespace tests;
using Entity = StoreKey::Entity;
using Subject = StoreKey::Subject;

TEST(StoreKey, OtherTextsAreNone) {
    for (const NSString& key :
         {NSString(""), NSString("Setup:"), NSString("State:/Network"), NSString("State::/Network/Interface"),
          NSString("Plugin:/Network/Global/IPv4"), NSString("state:/Network/Global/IPv4"),
          NSString("State:/Network/Global/"), NSString("State:/Network/Interface/eth0/LinkQuality"),
          NSString("State:/Network/Interface/eth0/"), NSString("State:/Network/Interface/eth0/IPv4/"),
          NSString("State:/Network/Service/A/ipv4"), NSString("State:/Network/Interfaces")}) {
        EXPECT_FALSE(storeKey(key.units()).has_value()) << key.utf8Lossy();
    }
}

TEST(StoreKey, IsTakenApart) {
    EXPECT_EQ(storeKey(u"State:/Network/Interface/eth0/IPv4"),
              (StoreKey{StoreKey::Domain::State, Subject::Interface, u"eth0", Entity::IPv4}));
    EXPECT_EQ(storeKey(u"State:/Network/Interface//IPv6"),
              (StoreKey{StoreKey::Domain::State, Subject::Interface, u"", Entity::IPv6}));
    EXPECT_EQ(storeKey(u"State:/Network/Interface/eth0"),
              (StoreKey{StoreKey::Domain::State, Subject::Interface, u"eth0", Entity::None}));
    EXPECT_EQ(storeKey(u"Setup:/Network/Service/A"),
              (StoreKey{StoreKey::Domain::Setup, Subject::Service, u"A", Entity::None}));
    EXPECT_EQ(storeKey(u"Setup:/Network/Service/A/Interface"),
              (StoreKey{StoreKey::Domain::Setup, Subject::Service, u"A", Entity::Interface}));
    EXPECT_EQ(storeKey(u"State:/Network/Global/DNS"),
              (StoreKey{StoreKey::Domain::State, Subject::Global, u"", Entity::DNS}));
    EXPECT_EQ(storeKey(u"State:/Network/Interface"),
              (StoreKey{StoreKey::Domain::State, Subject::AllInterfaces, u"", Entity::None}));
}

TEST(WholeMatch, WhatIsNoExpressionMatchesNothing) {
    for (const NSString& pattern : {NSString("("), NSString("[a"), NSString("a{2,1}"),
                                    NSString(std::u16string_view(u"a\0b", 3)), NSString(u"\xD800")}) {
        EXPECT_FALSE(WholeMatch::compile(pattern).has_value());
    }
}

TEST(WholeMatch, IsOfTheWholeText) {
    const struct {
        NSString pattern;
        NSString text;
        bool matches;
    } rows[] = {{"abc", "abc", true},   {"abc", "xabc", false}, {"abc", "abcx", false},   {"a|ab", "ab", true},
                {"^abc$", "abc", true}, {"a.*", "a/b/c", true}, {"a[^/]+", "a/b", false}, {"", "", true},
                {"", "a", false},       {"ABC", "abc", false},  {"a+b{2}", "aabb", true}};
    for (const auto& row : rows) {
        const auto match = WholeMatch::compile(row.pattern);
        ASSERT_TRUE(match.has_value());
        EXPECT_EQ(match->matches(row.text), row.matches) << row.pattern.utf8Lossy() << " " << row.text.utf8Lossy();
    }
    EXPECT_FALSE(WholeMatch::compile(".*")->matches(NSString(std::u16string_view(u"a\0b", 3))));
}

networkmanager::Connection connection(std::string uuid, std::string name, std::string interface) {
    networkmanager::Connection result;
    result.uuid = std::move(uuid);
    result.name = std::move(name);
    result.type = "802-3-ethernet";
    result.interfaceName = std::move(interface);
    result.ipv4Method = "auto";
    result.ipv6Method = "disabled";
    return result;
}

constexpr const char* kOne = "0A1B2C3D-0000-4000-8000-00000000000A";
constexpr const char* kTwo = "0A1B2C3D-0000-4000-8000-00000000000B";

struct LinuxDynamicStoreTest : ::testing::Test {
    TemporaryFolder folder;
    KernelNetwork kernel;
    std::map<std::string, std::string> variables;
    std::optional<networkmanager::Facts> facts;

    LinuxDynamicStoreTest() {
        NetworkAddress first = networkAddress(2, "192.0.2.2/24");
        first.broadcast = internetAddress("192.0.2.255");
        NetworkLink down = cardLink(3, "eth1");
        down.flags = 0;
        kernel = {{loopbackLink(), cardLink(2, "eth0"), down},
                  {networkAddress(1, "127.0.0.1/8"), first, networkAddress(2, "198.51.100.9/32"),
                   networkAddress(2, "2001:db8::2/64"), networkAddress(2, "fe80::1/64")},
                  {defaultRoute(2, "192.0.2.1"), defaultRoute(2, "fe80::9")}};
        // Two services on one interface, of which the second is in use.
        networkmanager::Connection other = connection("0a1b2c3d-0000-4000-8000-00000000000b", "In use", "eth0");
        other.ipv6Method = "auto";
        parse::DHCPLease lease;
        lease.options[3] = std::string("\xC0\0\x02\x01", 4);
        lease.start = 1700000000;
        facts = networkmanager::Facts{{connection("0a1b2c3d-0000-4000-8000-00000000000a", "At rest", "eth0"), other},
                                      {{"0a1b2c3d-0000-4000-8000-00000000000b",
                                        true,
                                        "eth0",
                                        {{"192.0.2.53", "2001:db8::53"}, {"a.example", "b.example"}},
                                        std::make_shared<const parse::DHCPLease>(lease)}}};
    }

    LinuxDynamicStore store() const {
        auto snapshot = std::make_shared<NetworkSnapshot>(kernel, LinuxRoot(folder.path()));
        return {std::make_shared<NetworkServices>(snapshot, std::make_unique<ToldBus>(facts)), environment(variables)};
    }

    std::optional<Value> value(const NSString& key) const { return store().copyValue(key); }

    static NSString service(const char* domain, const char* id, const char* entity) {
        return NSString::fromUTF8Lossy(std::string(domain) + "/Network/Service/" + id + entity);
    }
};

TEST_F(LinuxDynamicStoreTest, MachineWithoutANetworkHoldsNothing) {
    kernel = {};
    facts.reset();
    for (const NSString& key : {NSString("State:/Network/Interface"), NSString("State:/Network/Interface/eth0/IPv4"),
                                NSString("State:/Network/Global/IPv4"), NSString("State:/Network/Global/DNS"),
                                NSString("Setup:/Network/Global/IPv4"), NSString("State:/Network/Global/Proxies"),
                                service("Setup:", kOne, "/Interface")}) {
        EXPECT_FALSE(value(key).has_value()) << key.utf8Lossy();
    }
    EXPECT_TRUE(store().copyKeyList(".*")->empty());
    EXPECT_TRUE(store().copyKeyList("Setup:/Network/Service/.*/Interface")->empty());
}

TEST_F(LinuxDynamicStoreTest, KeyThatNobodyKnowsHoldsNothing) {
    for (const NSString& key :
         {NSString("State::/Network/Interface"), NSString("State:/Network/Interface/eth9/IPv4"),
          NSString("State:/Network/Interface//IPv4"), NSString("State:/Network/Interface/eth0"),
          NSString("Setup:/Network/Interface/eth0/IPv4"), NSString("State:/Network/Interface/eth0/LinkQuality"),
          NSString("State:/Network/Interface/eth0/DNS"), service("State:", kTwo, ""), service("Setup:", kTwo, "/DNS"),
          service("Setup:", "0a1b2c3d-0000-4000-8000-00000000000b", "/Interface")}) {
        EXPECT_FALSE(value(key).has_value()) << key.utf8Lossy();
    }
}

TEST_F(LinuxDynamicStoreTest, InterfaceHasAllItsAddresses) {
    EXPECT_EQ(value("State:/Network/Interface/eth0/IPv4"),
              (NSDictionary{{"Addresses", NSArray{"192.0.2.2", "198.51.100.9"}},
                            {"SubnetMasks", NSArray{"255.255.255.0", "255.255.255.255"}},
                            {"BroadcastAddresses", NSArray{"192.0.2.255"}}}));
    EXPECT_EQ(value("State:/Network/Interface/eth0/IPv6"),
              (NSDictionary{{"Addresses", NSArray{"2001:db8::2", "fe80::1"}}, {"PrefixLength", NSArray{64, 64}}}));
    EXPECT_EQ(value("State:/Network/Interface/lo/IPv4"),
              (NSDictionary{{"Addresses", NSArray{"127.0.0.1"}}, {"SubnetMasks", NSArray{"255.0.0.0"}}}));
    EXPECT_FALSE(value("State:/Network/Interface/eth1/IPv4").has_value());
    EXPECT_FALSE(value("State:/Network/Interface/lo/IPv6").has_value());
}

TEST_F(LinuxDynamicStoreTest, EveryPrefixHasItsMask) {
    kernel.addresses.clear();
    for (int length = 0; length <= 32; ++length) {
        kernel.addresses.push_back(networkAddress(2, "10.0.0.1/" + std::to_string(length)));
    }
    const auto all = value("State:/Network/Interface/eth0/IPv4");
    const auto masks = *all->as<NSDictionary>()->get<NSArray>("SubnetMasks");
    EXPECT_EQ(masks[0], "0.0.0.0");
    EXPECT_EQ(masks[1], "128.0.0.0");
    EXPECT_EQ(masks[9], "255.128.0.0");
    EXPECT_EQ(masks[24], "255.255.255.0");
    EXPECT_EQ(masks[31], "255.255.255.254");
    EXPECT_EQ(masks[32], "255.255.255.255");
}

TEST_F(LinuxDynamicStoreTest, LinkIsActiveWithACarrier) {
    EXPECT_EQ(value("State:/Network/Interface/eth0/Link"), (NSDictionary{{"Active", true}}));
    EXPECT_EQ(value("State:/Network/Interface/eth1/Link"), (NSDictionary{{"Active", false}}));
}

TEST_F(LinuxDynamicStoreTest, OnlyWirelessLinksHaveAnAirPort) {
    EXPECT_FALSE(value("State:/Network/Interface/eth0/AirPort").has_value());
}

TEST_F(LinuxDynamicStoreTest, AllInterfacesAreListed) {
    EXPECT_EQ(value("State:/Network/Interface"), (NSDictionary{{"Interfaces", NSArray{"lo", "eth0", "eth1"}}}));
}

TEST_F(LinuxDynamicStoreTest, InterfaceWhoseNameIsNoTextIsFoundByItsKey) {
    kernel.links[1].name = "e\xFF";
    const auto all = value("State:/Network/Interface");
    const auto name = *(*all->as<NSDictionary>()->get<NSArray>("Interfaces"))[1].as<NSString>();
    EXPECT_TRUE(value(SCDynamicStoreKeyCreateNetworkInterfaceEntity("State:", name, "IPv4")).has_value());
    EXPECT_FALSE(value("State:/Network/Interface/eth0/IPv4").has_value());
}

TEST_F(LinuxDynamicStoreTest, SetupIsOfEveryService) {
    EXPECT_EQ(value(service("Setup:", kOne, "")), (NSDictionary{{"UserDefinedName", "At rest"}}));
    EXPECT_EQ(
        value(service("Setup:", kTwo, "/Interface")),
        (NSDictionary{
            {"DeviceName", "eth0"}, {"Hardware", "Ethernet"}, {"Type", "Ethernet"}, {"UserDefinedName", "Ethernet"}}));
    EXPECT_EQ(value(service("Setup:", kOne, "/IPv4")), (NSDictionary{{"ConfigMethod", "DHCP"}}));
    EXPECT_FALSE(value(service("Setup:", kOne, "/IPv6")).has_value()); // disabled
    EXPECT_EQ(value(service("Setup:", kTwo, "/IPv6")), (NSDictionary{{"ConfigMethod", "Automatic"}}));
}

TEST_F(LinuxDynamicStoreTest, StateIsOfTheServiceInUse) {
    EXPECT_EQ(value(service("State:", kTwo, "/IPv4")),
              (NSDictionary{{"Addresses", NSArray{"192.0.2.2", "198.51.100.9"}},
                            {"SubnetMasks", NSArray{"255.255.255.0", "255.255.255.255"}},
                            {"Router", "192.0.2.1"}}));
    EXPECT_EQ(value(service("State:", kTwo, "/IPv6")), (NSDictionary{{"Addresses", NSArray{"2001:db8::2", "fe80::1"}},
                                                                     {"PrefixLength", NSArray{64, 64}},
                                                                     {"Router", "fe80::9"}}));
    for (const char* entity : {"/IPv4", "/IPv6", "/DNS", "/DHCP"}) {
        EXPECT_FALSE(value(service("State:", kOne, entity)).has_value()) << entity;
    }
}

TEST_F(LinuxDynamicStoreTest, ServiceWithoutAddressesHasNoState) {
    kernel.addresses.clear();
    EXPECT_FALSE(value(service("State:", kTwo, "/IPv4")).has_value());
    EXPECT_FALSE(value(service("State:", kTwo, "/IPv6")).has_value());
}

TEST_F(LinuxDynamicStoreTest, RouteWithoutAGatewayHasNoRouter) {
    kernel.defaultRoutes[0].gateway.reset();
    EXPECT_EQ(value(service("State:", kTwo, "/IPv4"))->as<NSDictionary>()->objectForKey("Router"), nullptr);
}

TEST_F(LinuxDynamicStoreTest, SignatureNamesTheRouterOnceItIsKnown) {
    const NetworkSnapshot snapshot(kernel, LinuxRoot(folder.path()));
    const auto addresses4 = values::addressValues(*snapshot.link("eth0"), AddressFamily::IPv4, snapshot);
    const auto addresses6 = values::addressValues(*snapshot.link("eth0"), AddressFamily::IPv6, snapshot);
    const auto ipv4 = values::serviceIPv4(addresses4, values::Router{"192.0.2.1", "52:54:00:12:34:56"});
    EXPECT_EQ(*ipv4->get<NSString>("NetworkSignature"),
              "IPv4.Router=192.0.2.1;IPv4.RouterHardwareAddress=52:54:00:12:34:56");
    const auto ipv6 = values::serviceIPv6(addresses6, values::Router{"fe80::9", "52:54:00:12:34:56"});
    EXPECT_EQ(*ipv6->get<NSString>("NetworkSignature"),
              "IPv6.Router=fe80::9;IPv6.RouterHardwareAddress=52:54:00:12:34:56");
    EXPECT_EQ(
        values::serviceIPv4(addresses4, values::Router{"192.0.2.1", std::nullopt})->objectForKey("NetworkSignature"),
        nullptr);
}

TEST_F(LinuxDynamicStoreTest, NameServersAreOfTheServiceAndOfTheWholeNetwork) {
    const NSDictionary expected{{"ServerAddresses", NSArray{"192.0.2.53", "2001:db8::53"}},
                                {"DomainName", "a.example"},
                                {"SearchDomains", NSArray{"a.example", "b.example"}}};
    EXPECT_EQ(value(service("State:", kTwo, "/DNS")), expected);
    EXPECT_EQ(value("State:/Network/Global/DNS"), expected);
}

TEST_F(LinuxDynamicStoreTest, LeaseHoldsTheOptionsBytes) {
    EXPECT_EQ(value(service("State:", kTwo, "/DHCP")),
              (NSDictionary{{"LeaseStartTime", NSDate::dateWithTimeIntervalSince1970(1700000000)},
                            {"Option_3", NSData(std::string_view("\xC0\0\x02\x01", 4))}}));
}

TEST_F(LinuxDynamicStoreTest, GlobalEntriesAreThoseOfTheBestRoutes) {
    EXPECT_EQ(value("State:/Network/Global/IPv4"), (NSDictionary{{"PrimaryInterface", "eth0"},
                                                                 {"PrimaryService", NSString::fromUTF8Lossy(kTwo)},
                                                                 {"Router", "192.0.2.1"}}));
    EXPECT_EQ(value("State:/Network/Global/IPv6"), (NSDictionary{{"PrimaryInterface", "eth0"},
                                                                 {"PrimaryService", NSString::fromUTF8Lossy(kTwo)},
                                                                 {"Router", "fe80::9"}}));
    EXPECT_EQ(value("Setup:/Network/Global/IPv4")->as<NSDictionary>()->get<NSArray>("ServiceOrder")->count(), 3U);
    kernel.defaultRoutes.clear();
    EXPECT_FALSE(value("State:/Network/Global/IPv4").has_value());
    EXPECT_FALSE(value("State:/Network/Global/IPv6").has_value());
}

TEST_F(LinuxDynamicStoreTest, ProxiesAreThoseOfTheEnvironment) {
    EXPECT_FALSE(value("State:/Network/Global/Proxies").has_value());
    variables = {{"http_proxy", "http://proxy.example:3128/"}};
    const NSDictionary expected{{"HTTPEnable", 1}, {"HTTPProxy", "proxy.example"}, {"HTTPPort", 3128}};
    EXPECT_EQ(value("State:/Network/Global/Proxies"), expected);
    EXPECT_EQ(value(service("Setup:", kTwo, "/Proxies")), expected);
    EXPECT_FALSE(value(service("Setup:", kOne, "/Proxies")).has_value());
}

TEST_F(LinuxDynamicStoreTest, ServicesAreListedByIndexOfTheirLinks) {
    const auto keys = store().copyKeyList("Setup:/Network/Service/.*/Interface");
    ASSERT_EQ(keys->size(), 3U); // the third is the kernel's, of the card that nobody manages
    EXPECT_EQ(keys->at(0), service("Setup:", kOne, "/Interface"));
    EXPECT_EQ(keys->at(1), service("Setup:", kTwo, "/Interface"));
}

TEST_F(LinuxDynamicStoreTest, ListingIsTheSameHoweverThePatternIsWritten) {
    EXPECT_EQ(store().copyKeyList("^Setup:/Network/Service/.*/Interface$"),
              store().copyKeyList("Setup:/Network/Service/.*/Interface"));
}

TEST_F(LinuxDynamicStoreTest, EveryListedKeyHoldsSomething) {
    variables = {{"http_proxy", "proxy.example"}};
    const auto keys = store().copyKeyList(".*");
    EXPECT_GT(keys->size(), 20U);
    for (const NSString& key : *keys) {
        EXPECT_TRUE(value(key).has_value()) << key.utf8Lossy();
    }
    for (const NSString& key : {NSString("State:/Network/Interface/lo/IPv4"), NSString("State:/Network/Global/Proxies"),
                                service("State:", kTwo, "/DHCP"), service("Setup:", kOne, "")}) {
        EXPECT_NE(std::ranges::find(*keys, key), keys->end()) << key.utf8Lossy();
    }
    EXPECT_EQ(std::ranges::find(*keys, service("Setup:", kOne, "/IPv6")), keys->end());
}

TEST_F(LinuxDynamicStoreTest, PatternThatIsNoExpressionHasNoList) {
    EXPECT_FALSE(store().copyKeyList("(").has_value());
}

TEST_F(LinuxDynamicStoreTest, PatternMatchesWholeKeys) {
    EXPECT_TRUE(store().copyKeyList("Network")->empty());
    EXPECT_EQ(store().copyKeyList("State:/Network/Global/IPv[46]")->size(), 2U);
}

TEST(LinuxSystemConfigurationTest, CapturedMachineIsOpenedAndHoldsNothing) {
    const TemporaryFolder folder;
    const LinuxSystemConfiguration configuration{LinuxRoot(folder.path())};
    EXPECT_FALSE(configuration.createDynamicStore(std::nullopt)->copyValue("State:/Network/Interface").has_value());
    EXPECT_TRUE(configuration.createPreferences("test")->copyAllServices()->empty());
}

} // namespace
} // namespace qk::platform
