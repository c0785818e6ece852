// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include "tests/platform/linux/DescribedLinks.h"
#include "tests/platform/linux/NetlinkBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <net/if.h>

#include <array>
#include <string>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::internetAddress;
using tests::virtualLink;

NetworkAddress address(std::int32_t link, const char* text) {
    NetworkAddress record;
    record.link = link;
    record.address = internetAddress(text);
    return record;
}

NetworkRoute route(std::int32_t link, AddressFamily family, std::uint32_t priority) {
    NetworkRoute record;
    record.link = link;
    record.family = family;
    record.priority = priority;
    return record;
}

std::vector<std::string> texts(std::span<const NetworkAddress> addresses) {
    std::vector<std::string> texts;
    for (const NetworkAddress& address : addresses) {
        texts.push_back(address.address.text());
    }
    return texts;
}

TEST(NetworkSnapshot, AMachineWithoutNetworkHasNothing) {
    const NetworkSnapshot network(KernelNetwork{}, LinuxRoot());
    EXPECT_EQ(network.link("eth0"), nullptr);
    EXPECT_EQ(network.link(1), nullptr);
    EXPECT_THAT(texts(network.addresses(1)), IsEmpty());
    EXPECT_EQ(network.defaultRoute(1, AddressFamily::IPv4), nullptr);
    EXPECT_EQ(network.primaryRoute(AddressFamily::IPv6), nullptr);
}

TEST(NetworkSnapshot, TheKernelIsNotAskedForCapturedFiles) {
    const tests::DescribedLinks files;
    const NetworkSnapshot network(files.root());
    EXPECT_THAT(network.kernel().links, IsEmpty());
    EXPECT_EQ(network.neighbour(1, internetAddress("127.0.0.1")), std::nullopt);
    EXPECT_EQ(network.medium(virtualLink("lo", 1)), std::nullopt);
}

TEST(NetworkSnapshot, LinksAreFoundByNameAndByIndex) {
    const NetworkSnapshot network({{virtualLink("b", 7), virtualLink("a", 2), virtualLink("c", 2)}, {}, {}},
                                  LinuxRoot());
    ASSERT_EQ(network.kernel().links.size(), 2U) << "one for each index";
    EXPECT_EQ(network.kernel().links.front().name, "a");
    ASSERT_NE(network.link("b"), nullptr);
    EXPECT_EQ(network.link("b")->index, 7);
    ASSERT_NE(network.link(2), nullptr);
    EXPECT_EQ(network.link(2)->name, "a");
    EXPECT_EQ(network.link(3), nullptr);
    EXPECT_EQ(network.link("c"), nullptr);
    EXPECT_EQ(network.link(""), nullptr);
}

TEST(NetworkSnapshot, AddressesOfALinkKeepTheKernelsOrder) {
    const NetworkSnapshot network({{},
                                   {address(1, "127.0.0.1"), address(3, "192.0.2.9"), address(3, "192.0.2.1"),
                                    address(1, "::1"), address(3, "2001:db8::2"), address(3, "2001:db8::1")},
                                   {}},
                                  LinuxRoot());
    EXPECT_THAT(texts(network.addresses(1)), ElementsAre("127.0.0.1", "::1"));
    EXPECT_THAT(texts(network.addresses(3)), ElementsAre("192.0.2.9", "192.0.2.1", "2001:db8::2", "2001:db8::1"));
    EXPECT_THAT(texts(network.addresses(2)), IsEmpty());
}

TEST(NetworkSnapshot, AddressesInNoOrderAtAllAreFoundAsWell) {
    std::vector<NetworkAddress> addresses;
    std::vector<std::string> expected;
    for (int round = 0; round < 400; ++round) {
        for (const std::int32_t link : {5, 2, 9}) {
            addresses.push_back(
                address(link, ("10.0." + std::to_string(round / 250) + "." + std::to_string(round % 250)).c_str()));
        }
        expected.push_back(addresses.back().address.text());
    }
    const NetworkSnapshot network({{}, addresses, {}}, LinuxRoot());
    EXPECT_EQ(texts(network.addresses(2)), expected);
    EXPECT_EQ(texts(network.addresses(9)), expected);
}

RC_GTEST_PROP(NetworkSnapshot, WhatWasAskedBeforeChangesNoAnswer, ()) {
    KernelNetwork kernel;
    for (std::int32_t index = 1; index <= 30; index += 2) {
        kernel.links.push_back(virtualLink("n" + std::to_string(index), index));
        for (std::int32_t count = *rc::gen::inRange(0, 12); count > 0; --count) {
            kernel.addresses.push_back(address(index, ("10.0.0." + std::to_string(count)).c_str()));
        }
    }
    const NetworkSnapshot network(kernel, LinuxRoot());
    for (const std::int32_t index : *rc::gen::container<std::vector<std::int32_t>>(rc::gen::inRange(0, 33))) {
        const bool isThere = index % 2 == 1 && index <= 30;
        const NetworkLink* link = network.link(index);
        RC_ASSERT((link != nullptr) == isThere);
        RC_ASSERT(network.link("n" + std::to_string(index)) == link);
        std::vector<std::string> expected;
        for (const NetworkAddress& each : kernel.addresses) {
            if (each.link == index) {
                expected.push_back(each.address.text());
            }
        }
        RC_ASSERT(texts(network.addresses(index)) == expected);
    }
}

TEST(NetworkSnapshot, TheBestDefaultRouteHasTheLowestPriorityAndComesFirst) {
    using enum AddressFamily;
    const NetworkSnapshot network(
        {{},
         {},
         {route(2, IPv4, 600), route(3, IPv4, 100), route(4, IPv4, 100), route(2, IPv6, 50), route(2, IPv4, 50)}},
        LinuxRoot());
    EXPECT_EQ(network.primaryRoute(IPv4)->link, 2);
    EXPECT_EQ(network.primaryRoute(IPv4)->priority, 50U);
    EXPECT_EQ(network.primaryRoute(IPv6)->priority, 50U);
    EXPECT_EQ(network.defaultRoute(2, IPv4)->priority, 50U);
    EXPECT_EQ(network.defaultRoute(4, IPv4)->priority, 100U);
    EXPECT_EQ(network.defaultRoute(4, IPv6), nullptr);
    EXPECT_THAT(network.kernel().defaultRoutes, ElementsAre(route(2, IPv6, 50), route(2, IPv4, 50), route(3, IPv4, 100),
                                                            route(4, IPv4, 100), route(2, IPv4, 600)));
}

TEST(NetworkSnapshot, OnlyALinkWithARadioIsWireless) {
    const tests::DescribedLinks files;
    const NetworkSnapshot network(KernelNetwork{}, files.root());
    files.addDevice("pci0000:00/0000:00:03.0", "pci");
    NetworkLink link = files.addLink("wlan0", "pci0000:00/0000:00:03.0");
    link.flags = IFF_UP;
    EXPECT_EQ(network.wireless(link), std::nullopt);
    files.writeFile("sys/class/net/veth0/phy80211/name", "phy0\n");
    EXPECT_EQ(network.wireless(virtualLink("veth0", 3)), std::nullopt) << "known without a look at files";
}

TEST(NetworkSnapshot, ARadioIsPoweredWhileItsLinkIsUpAndNoSwitchOfItIsOff) {
    const tests::DescribedLinks files;
    files.addDevice("pci0000:00/0000:00:03.0", "pci");
    NetworkLink link = files.addLink("wlan0", "pci0000:00/0000:00:03.0");
    const std::string phy = "sys/class/net/wlan0/phy80211/";
    files.writeFile(phy + "name", "phy0\n");
    const auto powered = [&] { return NetworkSnapshot(KernelNetwork{}, files.root()).wireless(link)->powered; };
    EXPECT_FALSE(powered());
    link.flags = IFF_UP;
    EXPECT_TRUE(powered());
    files.writeFile(phy + "rfkill3/soft", "0\n");
    files.writeFile(phy + "rfkill3/hard", "0\n");
    EXPECT_TRUE(powered());
    files.writeFile(phy + "rfkill3/soft", "1\n");
    EXPECT_FALSE(powered());
    files.writeFile(phy + "rfkill3/soft", "0\n");
    files.writeFile(phy + "rfkill3/hard", "1\n");
    EXPECT_FALSE(powered());
}

TEST(NetworkSnapshot, WhatWasReadOnceStaysAsItWas) {
    const tests::DescribedLinks files;
    files.addDevice("pci0000:00/0000:00:03.0", "pci");
    const NetworkLink link = files.addLink("eth0", "pci0000:00/0000:00:03.0");
    files.writeFile("run/udev/data/n2", "E:ID_MODEL_FROM_DATABASE=I225-V\n");
    const NetworkSnapshot network(KernelNetwork{}, files.root());
    EXPECT_EQ(network.hardware(link).model, "I225-V");
    files.writeFile("run/udev/data/n2", "E:ID_MODEL_FROM_DATABASE=X\n");
    EXPECT_EQ(network.hardware(link).model, "I225-V");
    EXPECT_EQ(NetworkSnapshot(KernelNetwork{}, files.root()).hardware(link).model, "X");
}

TEST(NetworkMedium, CapturedFilesTellSpeedAndDuplex) {
    const tests::DescribedLinks files;
    const NetworkSnapshot network(KernelNetwork{}, files.root());
    const NetworkLink link = virtualLink("eth0", 2);
    const auto medium = [&](const char* speed, const char* duplex) {
        files.writeFile("sys/class/net/eth0/speed", speed);
        files.writeFile("sys/class/net/eth0/duplex", duplex);
        return network.medium(link).value();
    };
    EXPECT_EQ(network.medium(link), std::nullopt);
    EXPECT_EQ(medium("2500\n", "full\n").megabitsPerSecond, 2500);
    EXPECT_EQ(medium("2500\n", "full\n").fullDuplex, true);
    EXPECT_EQ(medium("10\n", "half\n").fullDuplex, false);
    for (const char* const unknown : {"-1\n", "4294967295\n", "0\n", ""}) {
        EXPECT_EQ(medium(unknown, "unknown\n"), MediumFacts()) << unknown;
    }
}

TEST(InternetAddressText, OfTheOlderProtocol) {
    for (const char* const text : {"0.0.0.0", "127.0.0.1", "10.20.100.255", "255.255.255.255"}) {
        EXPECT_EQ(internetAddress(text).text(), text);
    }
}

TEST(InternetAddressText, LeavesTheLongestRunOfZerosOut) {
    for (const char* const text :
         {"::", "::1", "1::", "fe80::1", "2001:db8::2:1", "2001:db8:0:1:1:1:1:1", "2001:0:0:1::1", "2001::1:0:0:1",
          "1:2:3:4:5:6:7:8", "::ffff:192.0.2.1", "::192.0.2.1", "::1:0:0", "::ffff:0:0:1", "64:ff9b::c000:201",
          "1:2:3:4:5:6::", "0:1:2:3:4:5:6:7", "::2:3:4:5:6:7"}) {
        const InternetAddress address = internetAddress(text);
        std::array<char, INET6_ADDRSTRLEN> expected{};
        ASSERT_NE(::inet_ntop(AF_INET6, address.bytes.data(), expected.data(), expected.size()), nullptr);
        EXPECT_EQ(address.text(), expected.data()) << text;
    }
}

RC_GTEST_PROP(InternetAddressText, IsThatOfTheCLibrary, ()) {
    InternetAddress address;
    address.family = *rc::gen::element(AddressFamily::IPv4, AddressFamily::IPv6);
    const bool isIPv4 = address.family == AddressFamily::IPv4;
    for (std::size_t index = 0; index < (isIPv4 ? 4U : 16U); ++index) { // with many zeros and ones
        address.bytes[index] =
            *rc::gen::weightedElement<std::uint8_t>({{6, 0}, {2, 0xFF}, {1, 1}, {1, 0x10}, {1, 0xAB}});
    }
    std::array<char, INET6_ADDRSTRLEN> expected{};
    RC_ASSERT(::inet_ntop(isIPv4 ? AF_INET : AF_INET6, address.bytes.data(), expected.data(), expected.size()) !=
              nullptr);
    RC_ASSERT(address.text() == std::string(expected.data()));
}

} // namespace
} // namespace qk::platform
