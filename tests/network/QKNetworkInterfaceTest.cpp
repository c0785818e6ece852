// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKNetworkInterfaceImpl.h"
#include "QKFoundation/platform/memory/Machine.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace qk {
namespace {

using namespace platform;
using testing::UnorderedElementsAre;

template <typename... Texts>
auto elementsAreTexts(const Texts&... texts) {
    return testing::ElementsAreArray(std::vector<NSString>{NSString(texts)...});
}

class QKNetworkInterfaceTest : public testing::Test {
protected:
    static std::shared_ptr<QKSCNetworkService> serviceOn(const SCNetworkInterface& interface) {
        return QKSCNetworkService::initWithSCNetworkService(std::make_shared<SCNetworkService>(
            SCNetworkService{1, NSString("Office"), NSString("S"), std::make_shared<SCNetworkInterface>(interface)}));
    }
    static SCNetworkInterface ethernet() {
        SCNetworkInterface interface;
        interface.bsdName = "eth0";
        interface.localizedDisplayName = "Ethernet";
        interface.interfaceType = "Ethernet";
        interface.hardwareAddressString = "02:00:00:00:00:01";
        return interface;
    }
    [[nodiscard]] std::shared_ptr<QKNetworkInterfaceImpl> make(const SCNetworkInterface& interface) const {
        return QKNetworkInterfaceImpl::initWithSCNetworkService(serviceOn(interface), *machine.services());
    }

    memory::Machine machine;
};

TEST_F(QKNetworkInterfaceTest, WithoutAServiceOrItsInterfaceThereIsNone) {
    EXPECT_EQ(QKNetworkInterfaceImpl::initWithSCNetworkService(nullptr, *machine.services()), nullptr);
    const auto bare = QKSCNetworkService::initWithSCNetworkService(std::make_shared<SCNetworkService>());
    EXPECT_EQ(QKNetworkInterfaceImpl::initWithSCNetworkService(bare, *machine.services()), nullptr);
}

TEST_F(QKNetworkInterfaceTest, WhatTheRegistryDoesNotKnowIsNotBuiltInAndInactive) {
    const auto interface = make(ethernet());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->name(), "eth0");
    EXPECT_EQ(interface->displayName(), "Ethernet");
    EXPECT_EQ(interface->type(), QKNetworkInterfaceTypeEthernet);
    EXPECT_EQ(interface->typeString(), "Ethernet");
    EXPECT_EQ(interface->hardwareAddress(), "02:00:00:00:00:01");
    EXPECT_FALSE(interface->builtin());
    EXPECT_FALSE(interface->linkActive());
    EXPECT_EQ(interface->linkSpeed(), 0);
    EXPECT_EQ(interface->hardwareModel(), std::nullopt);
    EXPECT_NE(interface->configuration(), nullptr);
}

TEST_F(QKNetworkInterfaceTest, HardwareFactsAreTheRegistrys) {
    memory::MemoryRegistryEntry entry;
    entry.properties = NSDictionary{{"BSD Name", "eth0"}, {"IOBuiltin", true}};
    entry.parent = NSDictionary{{"IOLinkStatus", 3}, {"IOLinkSpeed", 100}, {"IOVendor", "V"}, {"IOModel", "M"}};
    machine.ioRegistry.addEntry(entry);
    const auto interface = make(ethernet());
    EXPECT_TRUE(interface->builtin());
    EXPECT_TRUE(interface->linkActive());
    EXPECT_EQ(interface->linkSpeed(), 100);
    EXPECT_EQ(interface->hardwareModel(), "V M");
    EXPECT_EQ(interface->hardwareAddress(), "02:00:00:00:00:01") << "is that of the preferences";
}

TEST_F(QKNetworkInterfaceTest, AnInterfaceWithoutANameIsAskedForUnderTheEmptyOne) {
    const auto interface = make({});
    EXPECT_EQ(interface->name(), "");
    EXPECT_EQ(interface->type(), QKNetworkInterfaceTypeUnknown);
    EXPECT_EQ(interface->typeString(), "");
    EXPECT_THAT(machine.systemConfiguration.keysRead(),
                elementsAreTexts("State:/Network/Interface//IPv4", "State:/Network/Interface//IPv6",
                                 "State:/Network/Service/S/DNS", "State:/Network/Interface//AirPort"));
}

TEST_F(QKNetworkInterfaceTest, TypesHaveTheirNumbers) {
    const auto interface = make({});
    const std::vector<std::pair<std::optional<NSString>, std::uint64_t>> table{
        {std::nullopt, 0},         {NSString(""), 0},         {NSString("ethernet"), 0}, {NSString("BRIDGE"), 0},
        {NSString("Loopback"), 0}, {NSString("VPN"), 0},      {NSString("6to4"), 1},     {NSString("Bluetooth"), 2},
        {NSString("Bond"), 3},     {NSString("Ethernet"), 4}, {NSString("FireWire"), 5}, {NSString("IEEE80211"), 6},
        {NSString("IPSec"), 7},    {NSString("IrDA"), 8},     {NSString("L2TP"), 9},     {NSString("Modem"), 10},
        {NSString("PPP"), 11},     {NSString("PPTP"), 12},    {NSString("Serial"), 13},  {NSString("VLAN"), 14},
        {NSString("WWAN"), 15},    {NSString("IPv4"), 16},    {NSString("Bridge"), 17}};
    for (const auto& [text, number] : table) {
        EXPECT_EQ(interface->interfaceTypeForkSCNetworkInterfaceType(text), number)
            << text.value_or("nothing").utf8Lossy();
    }
}

TEST_F(QKNetworkInterfaceTest, TheConfigurationAloneCanBeSetThroughTheProtocol) {
    const std::shared_ptr<QKNetworkInterface> interface = make(ethernet());
    EXPECT_TRUE(interface->conformsToProtocol("QKNetworkInterface"));
    interface->setConfiguration(nullptr);
    EXPECT_EQ(interface->configuration(), nullptr);
    EXPECT_EQ(interface->valueForKey("configuration"), std::nullopt);
}

TEST_F(QKNetworkInterfaceTest, EveryFieldCanBeLookedUpAndSetByName) {
    const auto interface = make({});
    for (const NSString& key : {NSString("name"), NSString("displayName"), NSString("hardwareAddress"),
                                NSString("hardwareModel"), NSString("typeString")}) {
        interface->setValueForKey(Value("x"), key);
        EXPECT_EQ(interface->valueForKey(key), Value("x"));
    }
    for (const NSString& key : {NSString("builtin"), NSString("linkActive")}) {
        interface->setValueForKey(Value(true), key);
        EXPECT_EQ(interface->valueForKey(key), Value(true));
    }
    interface->setValueForKey(Value(17), "type");
    EXPECT_EQ(interface->type(), QKNetworkInterfaceTypeBridge);
    EXPECT_EQ(interface->valueForKey("type"), Value(17));
    interface->setValueForKey(Value(7), "linkSpeed");
    EXPECT_EQ(interface->valueForKey("linkSpeed"), Value(7));
    interface->setValueForKey(std::nullopt, "configuration");
    EXPECT_EQ(interface->configuration(), nullptr);
    EXPECT_THROW((void)interface->valueForKey("serviceId"), NSUndefinedKeyException);
}

TEST_F(QKNetworkInterfaceTest, DescriptionHasALineForEachProperty) {
    const auto interface = make(ethernet());
    interface->setConfiguration(nullptr);
    const NSString root = interface->NSObject::description();
    const NSString text = interface->description();
    ASSERT_TRUE(text.hasPrefix(root + "{\n")) << text.utf8Lossy();
    std::vector<std::string> lines;
    for (const NSString& line : text.substringFromIndex(root.length() + 2).componentsSeparatedByString("\n")) {
        lines.push_back(line.utf8Lossy());
    }
    ASSERT_EQ(lines.back(), "}");
    lines.pop_back();
    EXPECT_THAT(lines, UnorderedElementsAre("name = eth0", "displayName = Ethernet", "type = 4",
                                            "typeString = Ethernet", "builtin = 0", "linkActive = 0", "linkSpeed = 0",
                                            "hardwareAddress = 02:00:00:00:00:01", "hardwareModel = <null>",
                                            "configuration = <null>"));
}

TEST(QKNetworkInterfaceProtocols, DeclareTheirPropertiesInOrder) {
    using Names = std::vector<NSString>;
    EXPECT_EQ(QKNetworkInterface::describedProtocol().properties(),
              (Names{"type", "name", "displayName", "builtin", "linkActive", "linkSpeed", "hardwareAddress",
                     "hardwareModel", "configuration"}));
    EXPECT_EQ(QKNetworkInterfaceConfiguration::describedProtocol().properties(),
              (Names{"ipv4Config", "ipv6Config", "dnsConfig", "airPortConfig"}));
    EXPECT_EQ(QKNetworkInterfaceIPv4Configuration::describedProtocol().properties(),
              (Names{"configMethod", "configMethodString", "adresses", "subnetMasks", "broadcastAddresses",
                     "routerAddress", "networkSignature"}));
    EXPECT_EQ(QKNetworkInterfaceIPv6Configuration::describedProtocol().properties(),
              (Names{"configMethod", "configMethodString", "adresses", "prefixLengths", "routerAddress",
                     "networkSignature"}));
    EXPECT_EQ(QKNetworkInterfaceDNSConfiguration::describedProtocol().properties(),
              (Names{"serverAdresses", "domainName"}));
    EXPECT_EQ(QKNetworkInterfaceAirPortConfiguration::describedProtocol().properties(),
              (Names{"powerStatus", "airPlay", "ssid"}));
    const auto& methods = QKNetworkInterface::describedProtocol().methods();
    EXPECT_EQ(std::count_if(methods.begin(), methods.end(),
                            [](const ProtocolDescription::Method& each) { return each.selector.hasSuffix(":"); }),
              1)
        << "one property can be set";
}

} // namespace
} // namespace qk
