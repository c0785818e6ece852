// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/Machine.h"

#include "tools/qkinfo/CommandLine.h"
#include "tools/qkinfo/JsonRenderer.h"
#include "tools/qkinfo/TextRenderer.h"
#include "tools/qkinfo/commands/Network.h"
#include "tools/qkinfo/commands/NetworkWords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace qk::info {

namespace {

using namespace qk::platform;
using memory::MemoryNetworkService;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// A service with nothing but a name, whose interface no registry knows.
MemoryNetworkService bare(const NSString& name) {
    MemoryNetworkService service;
    service.name = "";
    service.bsdName = name;
    service.interfaceType = "";
    service.hardwareAddress = "";
    service.ipv4Addresses.clear();
    service.ipv6Addresses.clear();
    service.nameServers.clear();
    return service;
}

class Network : public testing::Test {
protected:
    static std::vector<Section> sections(const NetworkOptions& options = {}) {
        return {Section{"network", "Network", networkList(options)}};
    }
    static std::string text(const NetworkOptions& options = {}) { return renderText(sections(options), {}); }
    static json jsonOf(const NetworkOptions& options = {}) {
        return json::parse(renderJson(sections(options)))["network"];
    }
    static std::vector<std::string> names(const NetworkOptions& options) {
        std::vector<std::string> result;
        for (const json& each : jsonOf(options)) {
            result.push_back(each["name"]);
        }
        return result;
    }

    memory::Machine machine;
    memory::ScopedMachine installed{machine};
};

std::string errorOf(const std::vector<std::string>& arguments) {
    const ParsedCommandLine parsed = parseCommandLine(arguments);
    const auto* error = std::get_if<UsageError>(&parsed);
    return error != nullptr ? error->message : "(no error)";
}

} // namespace

TEST_F(Network, WithoutInterfacesThereIsASentence) {
    EXPECT_EQ(text(), "Network\n  No network interfaces.\n");
    EXPECT_EQ(text({.active = true}), "Network\n  No network interface is active.\n");
    EXPECT_EQ(text({.builtin = true}), "Network\n  No network interface is known to be built in.\n");
    EXPECT_EQ(text({.active = true, .builtin = true}), "Network\n  No built-in network interface is active.\n");
    EXPECT_EQ(jsonOf(), json::array());
}

TEST_F(Network, WhatNobodyTellsIsSaidToBeAbsent) {
    machine.systemConfiguration.setStoreValue("Setup:/Network/Service/00000000-0000-4000-8000-000000000001/Interface",
                                              Value(NSDictionary()));
    auto interface = std::make_shared<SCNetworkInterface>();
    interface->bsdName = NSString("tap0");
    auto service = std::make_shared<SCNetworkService>();
    service->enabled = 1;
    service->serviceID = NSString("00000000-0000-4000-8000-000000000001");
    service->interface = interface;
    machine.systemConfiguration.addService(service);
    EXPECT_EQ(text(), "Network\n"
                      "  tap0\n"
                      "    Display name      not reported by this system\n"
                      "    Type              not known\n"
                      "    Link              not reported by this system\n"
                      "    Speed             not reported by this system\n"
                      "    Built in          no\n"
                      "    Hardware address  not reported by this system\n"
                      "    Model             not reported by this system\n"
                      "    IPv4 addresses    none\n"
                      "    IPv6 addresses    none\n"
                      "    DNS servers       not reported by this system\n"
                      "    DNS domain        not reported by this system\n"
                      "\n"
                      "  1 interface.\n");
    const json facts = jsonOf()[0];
    for (const char* key :
         {"display_name", "link_active", "link_speed_bits_per_second", "hardware_address", "hardware_model",
          "ipv4_method", "ipv4_broadcast_addresses", "ipv4_router", "ipv4_network_signature", "ipv6_method",
          "ipv6_router", "ipv6_network_signature", "dns_servers", "dns_domain", "wifi_network", "wifi_power"}) {
        ASSERT_TRUE(facts.contains(key)) << key;
        EXPECT_TRUE(facts[key].is_null()) << key;
    }
    EXPECT_EQ(facts["ipv4_addresses"], json::array());
    EXPECT_EQ(facts["ipv6_addresses"], json::array());
    EXPECT_EQ(facts["builtin"], false);
}

TEST_F(Network, HasABlockForEachInterface) {
    machine.network.addService({.ipv6Addresses = {"2001:db8::10", "fe80::1"}, .prefixLengths = {64, 10}});
    EXPECT_EQ(text(), "Network\n"
                      "  eth0\n"
                      "    Display name        Ethernet\n"
                      "    Type                Ethernet\n"
                      "    Link                up\n"
                      "    Speed               1 Gbit/s\n"
                      "    Built in            yes\n"
                      "    Hardware address    02:00:00:00:00:01\n"
                      "    Model               Example Gigabit Network Connection\n"
                      "    IPv4 configuration  DHCP\n"
                      "    IPv4 addresses      192.0.2.10/24\n"
                      "    IPv4 broadcast      192.0.2.255\n"
                      "    IPv4 router         192.0.2.1\n"
                      "    IPv6 configuration  automatic\n"
                      "    IPv6 addresses      2001:db8::10/64\n"
                      "                        fe80::1/10\n"
                      "    IPv6 router         fe80::1\n"
                      "    DNS servers         192.0.2.53\n"
                      "    DNS domain          example.com\n"
                      "\n"
                      "  1 interface.\n");
    EXPECT_EQ(jsonOf()[0], json::parse(R"({
        "name": "eth0", "display_name": "Ethernet", "type": "Ethernet", "link_active": true,
        "link_speed_bits_per_second": 1000000000, "builtin": true, "hardware_address": "02:00:00:00:00:01",
        "hardware_model": "Example Gigabit Network Connection",
        "ipv4_method": "DHCP", "ipv4_addresses": ["192.0.2.10/24"], "ipv4_subnet_masks": ["255.255.255.0"],
        "ipv4_broadcast_addresses": ["192.0.2.255"], "ipv4_router": "192.0.2.1",
        "ipv4_network_signature": "IPv4.Router=192.0.2.1",
        "ipv6_method": "automatic", "ipv6_addresses": ["2001:db8::10/64", "fe80::1/10"], "ipv6_router": "fe80::1",
        "ipv6_network_signature": null, "dns_servers": ["192.0.2.53"], "dns_domain": "example.com",
        "wifi_network": null, "wifi_power": null})"));
}

TEST_F(Network, ModelOfBlanksAndSpeedOfNothingAreNotReported) {
    MemoryNetworkService service = bare("eth1");
    service.linkActive = false;
    service.linkSpeed = 0;
    service.vendor.reset();
    service.model.reset();
    machine.network.addService(service);
    EXPECT_TRUE(jsonOf()[0]["hardware_model"].is_null());
    EXPECT_TRUE(jsonOf()[0]["link_speed_bits_per_second"].is_null());
    EXPECT_EQ(jsonOf()[0]["link_active"], false);
    EXPECT_THAT(text(), HasSubstr("\n    Link              down\n"));
}

TEST_F(Network, WirelessOnesTellTheirNetwork) {
    MemoryNetworkService service = bare("wlan0");
    service.interfaceType = kSCNetworkInterfaceTypeIEEE80211;
    service.wirelessNetwork = NSString("Caf\u00e9 \x1b[2J");
    machine.network.addService(service);
    EXPECT_THAT(text(), HasSubstr("\n    Type              Wi-Fi\n"));
    EXPECT_THAT(text(), HasSubstr("\n    Wi-Fi network     Caf\u00e9 \\x1B[2J\n    Wi-Fi power       on\n"));
    EXPECT_EQ(jsonOf()[0]["wifi_power"], true);
    machine.systemConfiguration.setStoreValue("State:/Network/Interface/wlan0/AirPort", std::nullopt);
    EXPECT_THAT(text(), HasSubstr("\n    Wi-Fi network     not reported by this system\n"));
}

TEST_F(Network, ChoosesWhatIsAskedFor) {
    machine.network.addService({.bsdName = "eth0"});
    machine.network.addService({.bsdName = "eth1", .builtin = false});
    machine.network.addService({.bsdName = "eth2", .linkActive = false});
    machine.network.addService({.enabled = false, .bsdName = "eth3"});
    EXPECT_THAT(names({}), ElementsAre("eth0", "eth1", "eth2"));
    EXPECT_THAT(names({.active = true}), ElementsAre("eth0", "eth1"));
    EXPECT_THAT(names({.builtin = true}), ElementsAre("eth0", "eth2"));
    EXPECT_THAT(names({.active = true, .builtin = true}), ElementsAre("eth0"));
}

TEST_F(Network, TwoServicesOnOneInterfaceAreTwoBlocks) {
    machine.network.addService({.name = "Office"});
    machine.network.addService({.name = "Home"});
    EXPECT_THAT(names({}), ElementsAre("eth0", "eth0"));
    EXPECT_THAT(text(), HasSubstr("\n\n  2 interfaces.\n"));
}

TEST_F(Network, HostileTextsSteerNothingAndStayJson) {
    MemoryNetworkService service = bare(NSString(u"e\x1b]0;x\x07\n\xd800"));
    service.name = "\x01\n\"\\";
    service.nameServers = {NSString(u"\x1b\xdc00"), "  ", "a\nb"};
    machine.network.addService(service);
    EXPECT_THAT(text(), Not(HasSubstr("\x1b")));
    EXPECT_THAT(text(), HasSubstr("\n  e\\x1B]0;x\\x07 \ufffd\n"));
    EXPECT_EQ(jsonOf()[0]["display_name"], "\x01\n\"\\");
    EXPECT_EQ(jsonOf()[0]["dns_servers"], json::parse(R"(["\u001b\ufffd", "a\nb"])"));
}

TEST_F(Network, FitsIntoEightyColumns) {
    MemoryNetworkService service;
    service.model = NSString(std::u16string(100, u'x'));
    service.ipv6Addresses.clear();
    service.prefixLengths.clear();
    for (int number = 0; number < 20; ++number) {
        service.ipv6Addresses.emplace_back("2001:db8:1111:2222:3333:4444:5555:6666");
        service.prefixLengths.push_back(64);
    }
    machine.network.addService(service);
    std::istringstream lines(text());
    std::size_t addresses = 0;
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 80U) << line;
        addresses += line.ends_with("6666/64") ? 1 : 0;
    }
    EXPECT_EQ(addresses, 20U);
}

TEST_F(Network, ReportShowsTheFirstTen) {
    for (int number = 0; number < 12; ++number) {
        machine.network.addService(bare("eth" + NSString::fromInteger(number)));
    }
    const auto command = std::ranges::find(commands(), "network", &Command::name);
    const std::string report = renderText(std::vector{sectionForReport(*command, {})}, {});
    EXPECT_THAT(report, HasSubstr("\n  eth9\n"));
    EXPECT_THAT(report, Not(HasSubstr("\n  eth10\n")));
    EXPECT_THAT(report, testing::EndsWith("\n\n  and 2 more: qkinfo network\n"));
}

TEST(NetworkWords, EveryTypeHasAWord) {
    EXPECT_EQ(interfaceTypeWord(QKNetworkInterfaceTypeUnknown), "not known");
    EXPECT_EQ(interfaceTypeWord(static_cast<QKNetworkInterfaceType>(18)), "not known");
    const std::vector<std::pair<QKNetworkInterfaceType, std::string_view>> words{
        {QKNetworkInterfaceType6to4, "6to4"},
        {QKNetworkInterfaceTypeBluetooth, "Bluetooth"},
        {QKNetworkInterfaceTypeBond, "Bond"},
        {QKNetworkInterfaceTypeEthernet, "Ethernet"},
        {QKNetworkInterfaceTypeFireWire, "FireWire"},
        {QKNetworkInterfaceTypeIEEE80211, "Wi-Fi"},
        {QKNetworkInterfaceTypeIPSec, "IPsec"},
        {QKNetworkInterfaceTypeIrDA, "IrDA"},
        {QKNetworkInterfaceTypeL2TP, "L2TP"},
        {QKNetworkInterfaceTypeModem, "Modem"},
        {QKNetworkInterfaceTypePPP, "PPP"},
        {QKNetworkInterfaceTypePPTP, "PPTP"},
        {QKNetworkInterfaceTypeSerial, "Serial"},
        {QKNetworkInterfaceTypeVLAN, "VLAN"},
        {QKNetworkInterfaceTypeIPv4, "IPv4"},
        {QKNetworkInterfaceTypeBridge, "Bridge"},
        {QKNetworkInterfaceTypeWWAN, "Mobile broadband"}};
    for (const auto& [type, word] : words) {
        EXPECT_EQ(interfaceTypeWord(type), word);
    }
}

TEST_F(Network, EveryMethodHasAWord) {
    const std::vector<std::pair<NSString, std::string>> methods{
        {kSCValNetIPv4ConfigMethodManual, "manual"},        {kSCValNetIPv4ConfigMethodAutomatic, "automatic"},
        {kSCValNetIPv4ConfigMethodBOOTP, "BOOTP"},          {kSCValNetIPv4ConfigMethodPPP, "PPP"},
        {kSCValNetIPv4ConfigMethodLinkLocal, "link-local"}, {"Carrier pigeon", "Carrier pigeon"}};
    std::size_t index = 0;
    for (const auto& [method, word] : methods) {
        machine.network.addService(
            {.bsdName = "eth" + NSString::fromUnsignedInteger(index), .ipv4ConfigMethod = method});
        EXPECT_EQ(jsonOf()[index++]["ipv4_method"], word);
    }
    const std::vector<std::pair<NSString, std::string>> sixes{
        {kSCValNetIPv6ConfigMethodLinkLocal, "link-local"},
        {kSCValNetIPv6ConfigMethodManual, "manual"},
        {kSCValNetIPv6ConfigMethodRouterAdvertisement, "router advertisement"},
        {kSCValNetIPv6ConfigMethod6to4, "6to4"}};
    for (const auto& [method, word] : sixes) {
        machine.network.addService(
            {.bsdName = "eth" + NSString::fromUnsignedInteger(index), .ipv6ConfigMethod = method});
        EXPECT_EQ(jsonOf()[index++]["ipv6_method"], word);
    }
}

TEST(NetworkWords, MasksBecomePrefixes) {
    const auto text = [](const NSString& mask) { return addressesWithMasks(NSArray{"a"}, NSArray{mask}).texts.at(0); };
    EXPECT_EQ(addressesWithMasks({}, {}).texts, std::vector<std::string>());
    EXPECT_EQ(addressesWithMasks(NSArray{"a"}, {}).texts, std::vector<std::string>{"a"});
    EXPECT_EQ(text("255.255.255.255"), "a/32");
    EXPECT_EQ(text("255.255.254.0"), "a/23");
    EXPECT_EQ(text("0.0.0.0"), "a/0");
    for (const NSString& mask : std::vector<NSString>{"255.0.255.0", "255.255.255", "255.255.255.0.0", "256.0.0.0",
                                                      "255.255.255.x", "1..", ""}) {
        EXPECT_EQ(text(mask), mask.isEmpty() ? "a" : "a mask " + mask.utf8Lossy());
    }
}

TEST(NetworkWords, ListsOfOtherThingsLoseThemAndKeepTheirPairs) {
    const NSArray addresses{Value(1), "b", "c"};
    EXPECT_THAT(addressesWithPrefixes(addresses, NSArray{Value(8), Value(64), "x"}).texts, ElementsAre("b/64", "c"));
    EXPECT_THAT(addressesWithMasks(addresses, NSArray{"255.0.0.0", "255.255.0.0"}).texts, ElementsAre("b/16", "c"));
}

TEST(NetworkCommandLine, HasTwoFlags) {
    const auto parsed = parseCommandLine({"network", "--active", "--builtin", "--json"});
    const auto* invocation = std::get_if<NetworkInvocation>(&parsed);
    ASSERT_NE(invocation, nullptr);
    EXPECT_TRUE(invocation->options.active && invocation->options.builtin && invocation->json);
    const auto plain = parseCommandLine({"network", "--color=never"});
    EXPECT_FALSE(std::get<NetworkInvocation>(plain).options.active);
    EXPECT_THAT(errorOf({"os", "--active"}), HasSubstr("unexpected argument \"--active\""));
    EXPECT_THAT(errorOf({"network", "eth0"}), HasSubstr("unexpected argument \"eth0\""));
}

} // namespace qk::info
