// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKNetworkInterfaceAirPortConfigurationImpl.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceConfigurationFactory.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceConfigurationImpl.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceDNSConfigurationImpl.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceIPv4ConfigurationImpl.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceIPv6ConfigurationImpl.h"
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gmock/gmock.h>

#include <optional>
#include <vector>

namespace qk {
namespace {

using namespace platform;

using IPv4 = QKNetworkInterfaceIPv4ConfigurationImpl;
using IPv6 = QKNetworkInterfaceIPv6ConfigurationImpl;
using DNS = QKNetworkInterfaceDNSConfigurationImpl;
using AirPort = QKNetworkInterfaceAirPortConfigurationImpl;

const NSDictionary kIPv4Interface{{"Addresses", NSArray{"192.0.2.1"}},
                                  {"SubnetMasks", NSArray{"255.255.255.0"}},
                                  {"BroadcastAddresses", NSArray{"192.0.2.255"}}};
const NSDictionary kIPv4Service{{"Addresses", NSArray{"198.51.100.1"}},
                                {"SubnetMasks", NSArray{"255.255.0.0"}},
                                {"BroadcastAddresses", NSArray{"198.51.255.255"}},
                                {"Router", "198.51.100.254"},
                                {"NetworkSignature", "signature"}};
const NSDictionary kIPv6Interface{{"Addresses", NSArray{"fe80::2"}}, {"PrefixLength", NSArray{64}}};
const NSDictionary kIPv6Service{{"Addresses", NSArray{"2001:db8::1"}},
                                {"PrefixLength", NSArray{48}},
                                {"Router", "fe80::1"},
                                {"NetworkSignature", "signature"}};

template <typename... Texts>
auto elementsAreTexts(const Texts&... texts) {
    return testing::ElementsAreArray(std::vector<NSString>{NSString(texts)...});
}

std::optional<NSDictionary> method(const NSString& name) {
    return NSDictionary{{"ConfigMethod", name}};
}

NSString textBehindAddress(const NSObject& object) {
    const NSString root = object.NSObject::description();
    const NSString text = object.description();
    EXPECT_TRUE(text.hasPrefix(root)) << text.utf8Lossy();
    return text.substringFromIndex(root.length());
}

TEST(QKNetworkInterfaceIPv4Configuration, WithoutAnInterfaceStateThereIsNone) {
    EXPECT_EQ(IPv4::initWithInterfaceIPv4State(std::nullopt, std::nullopt, std::nullopt), nullptr);
    EXPECT_EQ(IPv4::initWithInterfaceIPv4State(std::nullopt, method("DHCP"), kIPv4Service), nullptr);
}

TEST(QKNetworkInterfaceIPv4Configuration, AnEmptyStateGivesEmptyLists) {
    const auto config = IPv4::initWithInterfaceIPv4State(NSDictionary(), std::nullopt, std::nullopt);
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->adresses(), NSArray());
    EXPECT_EQ(config->subnetMasks(), NSArray());
    EXPECT_EQ(config->broadcastAddresses(), NSArray());
}

TEST(QKNetworkInterfaceIPv4Configuration, WithoutASetupTheServicesStateIsIgnoredAndTheMethodIsNothing) {
    const auto config = IPv4::initWithInterfaceIPv4State(kIPv4Interface, std::nullopt, kIPv4Service);
    EXPECT_EQ(config->configMethod(), QKNetworkInterfaceIPv4ConfigMethodUnknown);
    EXPECT_EQ(config->configMethodString(), std::nullopt);
    EXPECT_EQ(config->adresses(), NSArray{"192.0.2.1"});
    EXPECT_EQ(config->subnetMasks(), NSArray{"255.255.255.0"});
    EXPECT_EQ(config->broadcastAddresses(), NSArray{"192.0.2.255"});
    EXPECT_EQ(config->routerAddress(), std::nullopt);
    EXPECT_EQ(config->networkSignature(), std::nullopt);
}

TEST(QKNetworkInterfaceIPv4Configuration, AnUnknownMethodIsKeptAsATextAndTheServicesStateIsIgnored) {
    const std::vector<std::pair<std::optional<NSDictionary>, NSString>> setups{{NSDictionary(), ""},
                                                                               {method("dhcp"), "dhcp"},
                                                                               {method("Failover"), "Failover"},
                                                                               {NSDictionary{{"ConfigMethod", 3}}, ""}};
    for (const auto& [setup, text] : setups) {
        const auto config = IPv4::initWithInterfaceIPv4State(kIPv4Interface, setup, kIPv4Service);
        EXPECT_EQ(config->configMethod(), QKNetworkInterfaceIPv4ConfigMethodUnknown);
        EXPECT_EQ(config->configMethodString(), text);
        EXPECT_EQ(config->adresses(), NSArray{"192.0.2.1"});
        EXPECT_EQ(config->routerAddress(), std::nullopt);
        EXPECT_EQ(config->networkSignature(), std::nullopt);
    }
}

TEST(QKNetworkInterfaceIPv4Configuration, WithAKnownMethodTheServicesAddressesReplaceThoseOfTheInterface) {
    const auto config = IPv4::initWithInterfaceIPv4State(kIPv4Interface, method("DHCP"), kIPv4Service);
    EXPECT_EQ(config->configMethod(), QKNetworkInterfaceIPv4ConfigMethodDHCP);
    EXPECT_EQ(config->configMethodString(), "DHCP");
    EXPECT_EQ(config->adresses(), NSArray{"198.51.100.1"});
    EXPECT_EQ(config->subnetMasks(), NSArray{"255.255.0.0"});
    EXPECT_EQ(config->broadcastAddresses(), NSArray{"192.0.2.255"}) << "stays the interface's";
    EXPECT_EQ(config->routerAddress(), "198.51.100.254");
    EXPECT_EQ(config->networkSignature(), "signature");
}

TEST(QKNetworkInterfaceIPv4Configuration, AServiceStateWithoutAddressesEmptiesThem) {
    const auto config = IPv4::initWithInterfaceIPv4State(kIPv4Interface, method("Manual"),
                                                         NSDictionary{{"Addresses", "no array"}, {"Router", 5}});
    EXPECT_EQ(config->adresses(), NSArray());
    EXPECT_EQ(config->subnetMasks(), NSArray());
    EXPECT_EQ(config->routerAddress(), "");
    EXPECT_EQ(config->networkSignature(), "");
}

TEST(QKNetworkInterfaceIPv4Configuration, WithoutAServiceStateTheInterfacesAddressesStay) {
    const auto config = IPv4::initWithInterfaceIPv4State(kIPv4Interface, method("DHCP"), std::nullopt);
    EXPECT_EQ(config->configMethod(), QKNetworkInterfaceIPv4ConfigMethodDHCP);
    EXPECT_EQ(config->adresses(), NSArray{"192.0.2.1"});
    EXPECT_EQ(config->routerAddress(), std::nullopt);
}

TEST(QKNetworkInterfaceIPv4Configuration, MethodsHaveTheirNumbers) {
    const auto config = IPv4::initWithInterfaceIPv4State(NSDictionary(), std::nullopt, std::nullopt);
    const std::vector<std::pair<std::optional<NSString>, std::uint64_t>> table{
        {std::nullopt, 0},       {NSString(""), 0},       {NSString("manual"), 0},    {NSString("Manual "), 0},
        {NSString("6to4"), 0},   {NSString("Manual"), 1}, {NSString("Automatic"), 2}, {NSString("DHCP"), 3},
        {NSString("INFORM"), 4}, {NSString("BOOTP"), 5},  {NSString("PPP"), 6},       {NSString("LinkLocal"), 7}};
    for (const auto& [text, number] : table) {
        EXPECT_EQ(config->configMethodForConfigMethodString(text), number) << text.value_or("nothing").utf8Lossy();
    }
}

TEST(QKNetworkInterfaceIPv4Configuration, DescriptionLeavesOutTheRouter) {
    const auto config = IPv4::initWithInterfaceIPv4State(kIPv4Interface, method("DHCP"), kIPv4Service);
    EXPECT_EQ(textBehindAddress(*config), "{\n"
                                          "    adresses =     (\n        \"198.51.100.1\"\n    );\n"
                                          "    broadcastAddresses =     (\n        \"192.0.2.255\"\n    );\n"
                                          "    configMethod = 3;\n"
                                          "    configMethodString = DHCP;\n"
                                          "    networkSignature = signature;\n"
                                          "    subnetMasks =     (\n        \"255.255.0.0\"\n    );\n"
                                          "}");
}

TEST(QKNetworkInterfaceIPv4Configuration, EveryFieldCanBeLookedUpAndSetByName) {
    const auto config = IPv4::initWithInterfaceIPv4State(kIPv4Interface, std::nullopt, std::nullopt);
    EXPECT_TRUE(config->conformsToProtocol("QKNetworkInterfaceIPv4Configuration"));
    EXPECT_EQ(config->valueForKey("routerAddress"), std::nullopt);
    config->setValueForKey(Value(5), "configMethod");
    EXPECT_EQ(config->configMethod(), QKNetworkInterfaceIPv4ConfigMethodBOOTP);
    EXPECT_EQ(config->valueForKey("configMethod"), Value(5));
    for (const NSString& key :
         {NSString("configMethodString"), NSString("routerAddress"), NSString("networkSignature")}) {
        config->setValueForKey(Value("x"), key);
        EXPECT_EQ(config->valueForKey(key), Value("x"));
    }
    for (const NSString& key : {NSString("adresses"), NSString("subnetMasks"), NSString("broadcastAddresses")}) {
        config->setValueForKey(Value(NSArray{"x"}), key);
        EXPECT_EQ(config->valueForKey(key), Value(NSArray{"x"}));
    }
    EXPECT_THROW((void)config->valueForKey("addresses"), NSUndefinedKeyException);
}

TEST(QKNetworkInterfaceIPv6Configuration, WithoutAnInterfaceStateThereIsNone) {
    EXPECT_EQ(IPv6::initWithInterfaceIPv6State(std::nullopt, method("Automatic"), kIPv6Service), nullptr);
}

TEST(QKNetworkInterfaceIPv6Configuration, WithoutAKnownMethodTheServicesStateIsIgnored) {
    const auto bare = IPv6::initWithInterfaceIPv6State(kIPv6Interface, std::nullopt, kIPv6Service);
    EXPECT_EQ(bare->configMethodString(), std::nullopt);
    EXPECT_EQ(bare->configMethod(), QKNetworkInterfaceIPv6ConfigMethodUnknown);
    EXPECT_EQ(bare->adresses(), NSArray{"fe80::2"});
    EXPECT_EQ(bare->prefixLengths(), NSArray{64});
    const auto unknown = IPv6::initWithInterfaceIPv6State(kIPv6Interface, method("DHCP"), kIPv6Service);
    EXPECT_EQ(unknown->configMethodString(), "DHCP");
    EXPECT_EQ(unknown->configMethod(), QKNetworkInterfaceIPv6ConfigMethodUnknown);
    EXPECT_EQ(unknown->adresses(), NSArray{"fe80::2"});
    EXPECT_EQ(unknown->routerAddress(), std::nullopt);
    EXPECT_EQ(unknown->networkSignature(), std::nullopt);
}

TEST(QKNetworkInterfaceIPv6Configuration, WithAKnownMethodTheServicesStateReplaces) {
    const auto config = IPv6::initWithInterfaceIPv6State(kIPv6Interface, method("Automatic"), kIPv6Service);
    EXPECT_EQ(config->configMethod(), QKNetworkInterfaceIPv6ConfigMethodAutomatic);
    EXPECT_EQ(config->adresses(), NSArray{"2001:db8::1"});
    EXPECT_EQ(config->prefixLengths(), NSArray{48});
    EXPECT_EQ(config->routerAddress(), "fe80::1");
    EXPECT_EQ(config->networkSignature(), "signature");
    const auto emptied = IPv6::initWithInterfaceIPv6State(kIPv6Interface, method("Automatic"), NSDictionary());
    EXPECT_EQ(emptied->adresses(), NSArray());
    EXPECT_EQ(emptied->prefixLengths(), NSArray());
    EXPECT_EQ(emptied->routerAddress(), "");
    EXPECT_EQ(emptied->networkSignature(), "");
    const auto without = IPv6::initWithInterfaceIPv6State(kIPv6Interface, method("Automatic"), std::nullopt);
    EXPECT_EQ(without->adresses(), NSArray{"fe80::2"});
    EXPECT_EQ(without->routerAddress(), std::nullopt);
}

TEST(QKNetworkInterfaceIPv6Configuration, MethodsHaveTheirNumbers) {
    const auto config = IPv6::initWithInterfaceIPv6State(NSDictionary(), std::nullopt, std::nullopt);
    const std::vector<std::pair<std::optional<NSString>, std::uint64_t>> table{
        {std::nullopt, 0},          {NSString(""), 0},
        {NSString("DHCP"), 0},      {NSString("automatic"), 0},
        {NSString("Automatic"), 1}, {NSString("LinkLocal"), 2},
        {NSString("Manual"), 3},    {NSString("RouterAdvertisement"), 4},
        {NSString("6to4"), 5}};
    for (const auto& [text, number] : table) {
        EXPECT_EQ(config->configMethodForConfigMethodString(text), number) << text.value_or("nothing").utf8Lossy();
    }
}

TEST(QKNetworkInterfaceIPv6Configuration, DescriptionHasTheRouter) {
    const auto config = IPv6::initWithInterfaceIPv6State(kIPv6Interface, std::nullopt, std::nullopt);
    EXPECT_EQ(textBehindAddress(*config), "{\n"
                                          "    adresses =     (\n        \"fe80::2\"\n    );\n"
                                          "    configMethod = 0;\n"
                                          "    configMethodString = \"<null>\";\n"
                                          "    networkSignature = \"<null>\";\n"
                                          "    prefixLengths =     (\n        64\n    );\n"
                                          "    routerAddress = \"<null>\";\n"
                                          "}");
}

TEST(QKNetworkInterfaceIPv6Configuration, EveryFieldCanBeLookedUpAndSetByName) {
    const auto config = IPv6::initWithInterfaceIPv6State(kIPv6Interface, std::nullopt, std::nullopt);
    EXPECT_TRUE(config->conformsToProtocol("QKNetworkInterfaceIPv6Configuration"));
    config->setValueForKey(Value(4), "configMethod");
    EXPECT_EQ(config->configMethod(), QKNetworkInterfaceIPv6ConfigMethodRouterAdvertisement);
    EXPECT_EQ(config->valueForKey("configMethod"), Value(4));
    for (const NSString& key :
         {NSString("configMethodString"), NSString("routerAddress"), NSString("networkSignature")}) {
        config->setValueForKey(Value("x"), key);
        EXPECT_EQ(config->valueForKey(key), Value("x"));
    }
    for (const NSString& key : {NSString("adresses"), NSString("prefixLengths")}) {
        config->setValueForKey(Value(NSArray{1}), key);
        EXPECT_EQ(config->valueForKey(key), Value(NSArray{1}));
    }
}

TEST(QKNetworkInterfaceDNSConfiguration, WithoutAStateThereIsNone) {
    EXPECT_EQ(DNS::initWithServiceDNSState(std::nullopt), nullptr);
}

TEST(QKNetworkInterfaceDNSConfiguration, WhatIsMissingIsEmpty) {
    const auto config = DNS::initWithServiceDNSState(NSDictionary{{"ServerAdresses", NSArray{"x"}}});
    EXPECT_EQ(config->domainName(), "");
    EXPECT_EQ(config->serverAdresses(), NSArray());
}

TEST(QKNetworkInterfaceDNSConfiguration, HasServersAndDomain) {
    const auto config = DNS::initWithServiceDNSState(
        NSDictionary{{"ServerAddresses", NSArray{"192.0.2.53", "::1"}}, {"DomainName", "example.com"}});
    EXPECT_EQ(config->domainName(), "example.com");
    EXPECT_EQ(config->serverAdresses(), (NSArray{"192.0.2.53", "::1"}));
    EXPECT_TRUE(config->conformsToProtocol("QKNetworkInterfaceDNSConfiguration"));
    EXPECT_EQ(textBehindAddress(*config), "{\n    domainName = \"example.com\";\n    serverAdresses =     (\n"
                                          "        \"192.0.2.53\",\n        \"::1\"\n    );\n}");
    config->setValueForKey(Value("x"), "domainName");
    config->setValueForKey(Value(NSArray()), "serverAdresses");
    EXPECT_EQ(config->valueForKey("domainName"), Value("x"));
    EXPECT_EQ(config->valueForKey("serverAdresses"), Value(NSArray()));
}

TEST(QKNetworkInterfaceAirPortConfiguration, WithoutAStateThereIsNone) {
    EXPECT_EQ(AirPort::initWithInterfaceAirPortState(std::nullopt), nullptr);
}

TEST(QKNetworkInterfaceAirPortConfiguration, WhatIsMissingIsOffOrEmpty) {
    const auto config = AirPort::initWithInterfaceAirPortState(NSDictionary{{"PowerStatus", true}, {"SSID", "x"}});
    EXPECT_FALSE(config->powerStatus());
    EXPECT_FALSE(config->airPlay());
    EXPECT_EQ(config->ssid(), "");
}

TEST(QKNetworkInterfaceAirPortConfiguration, ThePowerMayBeANumberButNoText) {
    const auto power = [](const Value& value) {
        return AirPort::initWithInterfaceAirPortState(NSDictionary{{"Power Status", value}})->powerStatus();
    };
    EXPECT_TRUE(power(true));
    EXPECT_TRUE(power(1));
    EXPECT_TRUE(power(2));
    EXPECT_FALSE(power(0));
    EXPECT_FALSE(power("1"));
    EXPECT_FALSE(power("YES"));
}

TEST(QKNetworkInterfaceAirPortConfiguration, HasPowerAirPlayAndNetwork) {
    const auto config = AirPort::initWithInterfaceAirPortState(
        NSDictionary{{"Power Status", true}, {"AirPlay", true}, {"SSID_STR", "Example Net"}});
    EXPECT_TRUE(config->powerStatus());
    EXPECT_TRUE(config->airPlay());
    EXPECT_EQ(config->ssid(), "Example Net");
    EXPECT_TRUE(config->conformsToProtocol("QKNetworkInterfaceAirPortConfiguration"));
    EXPECT_EQ(textBehindAddress(*config), "{\n    airPlay = 1;\n    powerStatus = 1;\n    ssid = \"Example Net\";\n}");
    config->setValueForKey(Value(false), "powerStatus");
    config->setValueForKey(Value(false), "airPlay");
    config->setValueForKey(Value("x"), "ssid");
    EXPECT_EQ(config->valueForKey("powerStatus"), Value(false));
    EXPECT_EQ(config->valueForKey("airPlay"), Value(false));
    EXPECT_EQ(config->valueForKey("ssid"), Value("x"));
}

// The factory, on a store that remembers what it was asked.
class QKNetworkInterfaceConfigurationFactoryTest : public testing::Test {
protected:
    void set(const NSString& key, const NSDictionary& value) { machine.systemConfiguration.setStoreValue(key, value); }
    [[nodiscard]] std::shared_ptr<QKNetworkInterfaceConfiguration> configuration() const {
        return QKNetworkInterfaceConfigurationFactory::configurationFactory(*machine.services())
            ->networkConfigurationForInterfaceName("eth0", "S");
    }
    [[nodiscard]] std::vector<NSString> keysRead() const { return machine.systemConfiguration.keysRead(); }

    memory::Machine machine;
};

TEST_F(QKNetworkInterfaceConfigurationFactoryTest, AnEmptyStoreGivesAConfigurationWithoutViewsAfterFourReads) {
    const auto config = configuration();
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->ipv4Config(), nullptr);
    EXPECT_EQ(config->ipv6Config(), nullptr);
    EXPECT_EQ(config->dnsConfig(), nullptr);
    EXPECT_EQ(config->airPortConfig(), nullptr);
    EXPECT_THAT(keysRead(), elementsAreTexts("State:/Network/Interface/eth0/IPv4", "State:/Network/Interface/eth0/IPv6",
                                             "State:/Network/Service/S/DNS", "State:/Network/Interface/eth0/AirPort"));
}

TEST_F(QKNetworkInterfaceConfigurationFactoryTest, AFullStoreIsReadEightTimesInOrder) {
    set("State:/Network/Interface/eth0/IPv4", kIPv4Interface);
    set("State:/Network/Interface/eth0/IPv6", kIPv6Interface);
    set("Setup:/Network/Service/S/IPv4", *method("Manual"));
    set("State:/Network/Service/S/IPv4", kIPv4Service);
    set("Setup:/Network/Service/S/IPv6", *method("Manual"));
    set("State:/Network/Service/S/IPv6", kIPv6Service);
    set("State:/Network/Service/S/DNS", NSDictionary{{"DomainName", "example.com"}});
    set("State:/Network/Interface/eth0/AirPort", NSDictionary{{"SSID_STR", "net"}});
    const auto config = configuration();
    EXPECT_EQ(config->ipv4Config()->routerAddress(), "198.51.100.254");
    EXPECT_EQ(config->ipv6Config()->routerAddress(), "fe80::1");
    EXPECT_EQ(config->dnsConfig()->domainName(), "example.com");
    EXPECT_EQ(config->airPortConfig()->ssid(), "net");
    EXPECT_THAT(keysRead(), elementsAreTexts("State:/Network/Interface/eth0/IPv4", "Setup:/Network/Service/S/IPv4",
                                             "State:/Network/Service/S/IPv4", "State:/Network/Interface/eth0/IPv6",
                                             "Setup:/Network/Service/S/IPv6", "State:/Network/Service/S/IPv6",
                                             "State:/Network/Service/S/DNS", "State:/Network/Interface/eth0/AirPort"));
    EXPECT_EQ(machine.systemConfiguration.connectionNames().size(), 8U);
}

TEST_F(QKNetworkInterfaceConfigurationFactoryTest, TheServiceIsAskedOnlyForWhatTheInterfaceHas) {
    set("State:/Network/Interface/eth0/IPv6", NSDictionary());
    set("Setup:/Network/Service/S/IPv4", *method("Manual"));
    set("State:/Network/Service/S/IPv4", kIPv4Service);
    const auto config = configuration();
    EXPECT_EQ(config->ipv4Config(), nullptr) << "though the service has a setup";
    EXPECT_NE(config->ipv6Config(), nullptr);
    EXPECT_THAT(keysRead(), elementsAreTexts("State:/Network/Interface/eth0/IPv4", "State:/Network/Interface/eth0/IPv6",
                                             "Setup:/Network/Service/S/IPv6", "State:/Network/Service/S/IPv6",
                                             "State:/Network/Service/S/DNS", "State:/Network/Interface/eth0/AirPort"));
}

TEST_F(QKNetworkInterfaceConfigurationFactoryTest, ABrokenStateOfTheInterfaceIsNone) {
    machine.systemConfiguration.setStoreValue("State:/Network/Interface/eth0/IPv4", NSArray{"192.0.2.1"});
    EXPECT_EQ(configuration()->ipv4Config(), nullptr);
}

TEST_F(QKNetworkInterfaceConfigurationFactoryTest, ARefusedStoreGivesAConfigurationWithoutViews) {
    set("State:/Network/Interface/eth0/IPv4", kIPv4Interface);
    machine.systemConfiguration.refuseConnections(true);
    const auto config = configuration();
    ASSERT_NE(config, nullptr);
    EXPECT_EQ(config->ipv4Config(), nullptr);
    EXPECT_EQ(machine.systemConfiguration.connectionNames().size(), 4U);
}

TEST_F(QKNetworkInterfaceConfigurationFactoryTest, EachFactoryIsNewAndHasAStoreOfItsOwn) {
    const auto first = QKNetworkInterfaceConfigurationFactory::configurationFactory(*machine.services());
    const auto second = QKNetworkInterfaceConfigurationFactory::configurationFactory(*machine.services());
    EXPECT_NE(first, second);
    ASSERT_NE(first->dynamicStore(), nullptr);
    EXPECT_NE(first->dynamicStore(), second->dynamicStore());
    EXPECT_EQ(first->valueForKey("dynamicStore"), Value(first->dynamicStore()));
    EXPECT_THROW(first->setValueForKey(std::nullopt, "dynamicStore"), NSUndefinedKeyException);
}

TEST(QKNetworkInterfaceConfigurationImpl, KeepsWhatItIsGivenAndDescribesItInLines) {
    const auto dns = DNS::initWithServiceDNSState(NSDictionary());
    const auto config = QKNetworkInterfaceConfigurationImpl::initWithIPv4Config(nullptr, nullptr, dns, nullptr);
    EXPECT_EQ(config->dnsConfig(), dns);
    EXPECT_TRUE(config->conformsToProtocol("QKNetworkInterfaceConfiguration"));
    const NSString text = textBehindAddress(*config);
    EXPECT_TRUE(text.hasPrefix("{\n")) << text.utf8Lossy();
    EXPECT_TRUE(text.hasSuffix("\n}")) << text.utf8Lossy();
    EXPECT_TRUE(text.contains(u"\nipv4Config = <null>\n")) << text.utf8Lossy();
    EXPECT_TRUE(text.contains(u"\nipv6Config = <null>\n")) << text.utf8Lossy();
    EXPECT_TRUE(text.contains(u"\nairPortConfig = <null>\n") || text.hasPrefix("{\nairPortConfig = <null>\n"));
    EXPECT_TRUE(text.contains(("dnsConfig = " + dns->description() + "\n").units())) << text.utf8Lossy();
}

TEST(QKNetworkInterfaceConfigurationImpl, EveryFieldCanBeLookedUpAndSetByName) {
    const auto config = QKNetworkInterfaceConfigurationImpl::initWithIPv4Config(nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(config->valueForKey("ipv4Config"), std::nullopt);
    const auto ipv4 = IPv4::initWithInterfaceIPv4State(NSDictionary(), std::nullopt, std::nullopt);
    const auto ipv6 = IPv6::initWithInterfaceIPv6State(NSDictionary(), std::nullopt, std::nullopt);
    config->setValueForKey(Value(ipv4), "ipv4Config");
    config->setValueForKey(Value(ipv6), "ipv6Config");
    config->setValueForKey(Value(DNS::initWithServiceDNSState(NSDictionary())), "dnsConfig");
    config->setValueForKey(Value(AirPort::initWithInterfaceAirPortState(NSDictionary())), "airPortConfig");
    EXPECT_EQ(config->ipv4Config(), ipv4);
    EXPECT_EQ(config->valueForKey("ipv6Config"), Value(ipv6));
    EXPECT_NE(config->dnsConfig(), nullptr);
    EXPECT_NE(config->airPortConfig(), nullptr);
    EXPECT_THROW(config->setValueForKey(Value(ipv4), "ipv6Config"), NSInvalidArgumentException);
}

} // namespace
} // namespace qk
