// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInfo.h"

#include "QKFoundation/network/internal/NetworkInterfaces.h"
#include "QKFoundation/platform/memory/Machine.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace qk {
namespace {

using namespace platform;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> names(const QKNetworkInfo::Interfaces& interfaces) {
    std::vector<std::string> result;
    for (const auto& interface : interfaces) {
        result.push_back(interface->name().utf8Lossy());
    }
    return result;
}

class QKNetworkInfoTest : public testing::Test {
protected:
    memory::Machine machine;
    memory::ScopedMachine installed{machine};
};

TEST_F(QKNetworkInfoTest, AMachineWithoutServicesGivesThreeEmptyLists) {
    EXPECT_THAT(QKNetworkInfo::networkInterfaces(), IsEmpty());
    EXPECT_THAT(QKNetworkInfo::activeNetworkInterfaces(), IsEmpty());
    EXPECT_THAT(QKNetworkInfo::activeBuiltinNetworkInterfaces(), IsEmpty());
}

TEST_F(QKNetworkInfoTest, AMachineWithoutEnabledServicesGivesThreeEmptyLists) {
    machine.network.addService({.enabled = false});
    EXPECT_THAT(QKNetworkInfo::networkInterfaces(), IsEmpty());
    EXPECT_THAT(QKNetworkInfo::activeNetworkInterfaces(), IsEmpty());
    EXPECT_THAT(QKNetworkInfo::activeBuiltinNetworkInterfaces(), IsEmpty());
}

TEST_F(QKNetworkInfoTest, AnythingThatIsRefusedShortensTheLists) {
    machine.network.addService();
    machine.systemConfiguration.refusePreferences(true);
    EXPECT_THAT(QKNetworkInfo::networkInterfaces(), IsEmpty());
    machine.systemConfiguration.refusePreferences(false);
    machine.systemConfiguration.refuseConnections(true);
    EXPECT_THAT(QKNetworkInfo::networkInterfaces(), IsEmpty());
    machine.systemConfiguration.refuseConnections(false);
    machine.ioRegistry.refuseMatching(true);
    EXPECT_THAT(names(QKNetworkInfo::networkInterfaces()), ElementsAre("eth0"));
    EXPECT_THAT(QKNetworkInfo::activeNetworkInterfaces(), IsEmpty());
}

TEST_F(QKNetworkInfoTest, AnInterfaceTellsWhatAllSourcesKnow) {
    machine.network.addService({.name = "Office", .wirelessNetwork = NSString("Example Net")});
    const auto interfaces = QKNetworkInfo::networkInterfaces();
    ASSERT_EQ(interfaces.size(), 1U);
    const QKNetworkInterface& interface = *interfaces[0];
    EXPECT_EQ(interface.type(), QKNetworkInterfaceTypeEthernet);
    EXPECT_EQ(interface.name(), "eth0");
    EXPECT_EQ(interface.displayName(), "Office");
    EXPECT_TRUE(interface.builtin());
    EXPECT_TRUE(interface.linkActive());
    EXPECT_EQ(interface.linkSpeed(), 1'000'000'000);
    EXPECT_EQ(interface.hardwareAddress(), "02:00:00:00:00:01");
    EXPECT_EQ(interface.hardwareModel(), "Example Gigabit Network Connection");
    const auto& configuration = *interface.configuration();
    EXPECT_EQ(configuration.ipv4Config()->configMethod(), QKNetworkInterfaceIPv4ConfigMethodDHCP);
    EXPECT_EQ(configuration.ipv4Config()->adresses(), NSArray{"192.0.2.10"});
    EXPECT_EQ(configuration.ipv4Config()->subnetMasks(), NSArray{"255.255.255.0"});
    EXPECT_EQ(configuration.ipv4Config()->broadcastAddresses(), NSArray{"192.0.2.255"});
    EXPECT_EQ(configuration.ipv4Config()->routerAddress(), "192.0.2.1");
    EXPECT_EQ(configuration.ipv6Config()->configMethod(), QKNetworkInterfaceIPv6ConfigMethodAutomatic);
    EXPECT_EQ(configuration.ipv6Config()->adresses(), NSArray{"2001:db8::10"});
    EXPECT_EQ(configuration.ipv6Config()->prefixLengths(), NSArray{64});
    EXPECT_EQ(configuration.ipv6Config()->routerAddress(), "fe80::1");
    EXPECT_EQ(configuration.dnsConfig()->serverAdresses(), NSArray{"192.0.2.53"});
    EXPECT_EQ(configuration.dnsConfig()->domainName(), "example.com");
    EXPECT_EQ(configuration.airPortConfig()->ssid(), "Example Net");
    EXPECT_TRUE(configuration.airPortConfig()->powerStatus());
}

TEST_F(QKNetworkInfoTest, ServiceWithoutInterfaceIsSkipped) {
    const NSString serviceID = machine.network.addService({.bsdName = "eth1"});
    machine.systemConfiguration.setServices(
        {{std::make_shared<SCNetworkService>(SCNetworkService{1, NSString("bare"), serviceID, nullptr})}});
    EXPECT_THAT(QKNetworkInfo::networkInterfaces(), IsEmpty());
    machine.network.addService({.bsdName = "eth0"});
    EXPECT_THAT(names(QKNetworkInfo::networkInterfaces()), ElementsAre("eth0"));
}

TEST_F(QKNetworkInfoTest, AnInterfaceWithoutIPv4StateIsThereWithoutThatView) {
    machine.network.addService({.ipv4Addresses = {}});
    const auto interfaces = QKNetworkInfo::networkInterfaces();
    ASSERT_EQ(interfaces.size(), 1U);
    EXPECT_EQ(interfaces[0]->configuration()->ipv4Config(), nullptr);
    EXPECT_NE(interfaces[0]->configuration()->ipv6Config(), nullptr);
}

TEST_F(QKNetworkInfoTest, ListsAreFilteredByLinkAndPlace) {
    machine.network.addService({.bsdName = "eth0"});
    machine.network.addService({.bsdName = "down0", .linkActive = false});
    machine.network.addService({.bsdName = "usb0", .builtin = false});
    machine.network.addService({.bsdName = "eth1"});
    machine.network.addService({.bsdName = "usb1", .builtin = false, .linkActive = false});
    EXPECT_THAT(names(QKNetworkInfo::networkInterfaces()), ElementsAre("eth0", "down0", "usb0", "eth1", "usb1"));
    EXPECT_THAT(names(QKNetworkInfo::activeNetworkInterfaces()), ElementsAre("eth0", "usb0", "eth1"));
    EXPECT_THAT(names(QKNetworkInfo::activeBuiltinNetworkInterfaces()), ElementsAre("eth0", "eth1"));
}

TEST_F(QKNetworkInfoTest, TwoServicesOnOneInterfaceAreTwoEntries) {
    machine.network.addService({.name = "a", .ipv4ConfigMethod = "Manual", .nameServers = {"192.0.2.1"}});
    machine.network.addService({.name = "b", .ipv4ConfigMethod = "DHCP", .nameServers = {"192.0.2.2"}});
    for (const auto& interfaces : {QKNetworkInfo::networkInterfaces(), QKNetworkInfo::activeNetworkInterfaces(),
                                   QKNetworkInfo::activeBuiltinNetworkInterfaces()}) {
        ASSERT_THAT(names(interfaces), ElementsAre("eth0", "eth0"));
        EXPECT_EQ(interfaces[0]->displayName(), "a");
        EXPECT_EQ(interfaces[1]->displayName(), "b");
        EXPECT_EQ(interfaces[0]->configuration()->dnsConfig()->serverAdresses(), NSArray{"192.0.2.1"});
        EXPECT_EQ(interfaces[1]->configuration()->dnsConfig()->serverAdresses(), NSArray{"192.0.2.2"});
        EXPECT_EQ(interfaces[0]->configuration()->ipv4Config()->configMethodString(), "Manual");
        EXPECT_EQ(interfaces[1]->configuration()->ipv4Config()->configMethodString(), "DHCP");
        EXPECT_NE(interfaces[0], interfaces[1]);
    }
}

TEST_F(QKNetworkInfoTest, EveryCallAsksAnewAndIsOneReading) {
    machine.network.addService({.bsdName = "eth0"});
    const auto before = QKNetworkInfo::networkInterfaces();
    machine.network.addService({.bsdName = "eth1"});
    EXPECT_THAT(names(before), ElementsAre("eth0")) << "what was handed out stays";
    machine.systemConfiguration.forgetRequests();
    EXPECT_THAT(names(QKNetworkInfo::networkInterfaces()), ElementsAre("eth0", "eth1"));
    EXPECT_EQ(machine.systemConfiguration.readingsBegun(), 1U);
    // One listing, and per interface three reads for IPv4, three for IPv6, DNS and the radio.
    EXPECT_EQ(machine.systemConfiguration.keysRead().size(), 16U);
    EXPECT_EQ(machine.systemConfiguration.connectionNames().size(), 17U);
    EXPECT_EQ(QKNetworkInfo::activeNetworkInterfaces().size(), 2U);
    EXPECT_EQ(QKNetworkInfo::activeBuiltinNetworkInterfaces().size(), 2U);
    EXPECT_EQ(machine.systemConfiguration.connectionNames().size(), 51U) << "filtered forms ask anew as well";
    EXPECT_EQ(machine.systemConfiguration.openReadings(), 0U);
    EXPECT_EQ(machine.ioRegistry.openHandles(), 0U);
}

TEST_F(QKNetworkInfoTest, AnotherMachineCanBeAskedWithoutBeingInstalled) {
    memory::Machine other;
    other.network.addService({.bsdName = "other0"});
    EXPECT_THAT(names(qk::internal::networkInterfaces(*other.services())), ElementsAre("other0"));
    EXPECT_THAT(names(qk::internal::activeNetworkInterfaces(*other.services())), ElementsAre("other0"));
    EXPECT_THAT(names(qk::internal::activeBuiltinNetworkInterfaces(*other.services())), ElementsAre("other0"));
    EXPECT_THAT(QKNetworkInfo::networkInterfaces(), IsEmpty());
}

} // namespace
} // namespace qk
