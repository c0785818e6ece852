// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Netlink.h"

#include "tests/platform/linux/NetlinkBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <linux/if_addr.h>
#include <linux/if_arp.h>
#include <linux/neighbour.h>
#include <linux/nexthop.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <string>
#include <vector>

namespace qk::platform::parse {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::addressBytes;
using tests::attribute;
using tests::bytesOf;
using tests::ByteVector;
using tests::internetAddress;
using tests::joined;

constexpr std::uint16_t kAddressProtocol = 11; // IFA_PROTO, which older headers lack

ifinfomsg linkHeader(int index, unsigned flags = 0) {
    ifinfomsg header{};
    header.ifi_index = index;
    header.ifi_flags = flags;
    header.ifi_type = ARPHRD_ETHER;
    return header;
}

ByteVector name(const char* text) {
    return attribute(IFLA_IFNAME, bytesOf(std::string_view(text, std::string_view(text).size() + 1)));
}

TEST(NetlinkLink, OneWithoutAnIndexOrANameIsNone) {
    EXPECT_FALSE(link({}).has_value());
    EXPECT_FALSE(link(bytesOf(linkHeader(2))).has_value());
    EXPECT_FALSE(link(joined({bytesOf(linkHeader(2)), name("")})).has_value());
    EXPECT_FALSE(link(joined({bytesOf(linkHeader(0)), name("eth0")})).has_value());
    EXPECT_FALSE(link(joined({bytesOf(linkHeader(-1)), name("eth0")})).has_value());
}

TEST(NetlinkLink, WhatIsNotToldIsAbsent) {
    const auto told = link(joined({bytesOf(linkHeader(2)), name("eth0")}));
    ASSERT_TRUE(told.has_value());
    NetworkLink expected;
    expected.index = 2;
    expected.name = "eth0";
    expected.hardwareType = ARPHRD_ETHER;
    EXPECT_EQ(*told, expected);
}

TEST(NetlinkLink, EverythingThatIsTold) {
    const auto told = link(joined(
        {bytesOf(linkHeader(7, 0x11043)), name("lan0"), attribute(IFLA_MTU, bytesOf(std::uint32_t{1400})),
         attribute(IFLA_MIN_MTU, bytesOf(std::uint32_t{68})), attribute(IFLA_MAX_MTU, bytesOf(std::uint32_t{9000})),
         attribute(IFLA_MASTER, bytesOf(std::int32_t{3})), attribute(IFLA_ADDRESS, bytesOf("\x02\x11")),
         attribute(IFLA_LINKINFO | NLA_F_NESTED, attribute(IFLA_INFO_KIND, bytesOf("vlan"))),
         attribute(56, bytesOf("0000:00:03.0")), attribute(57, bytesOf("pci"))}));
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->flags, 0x11043U);
    EXPECT_EQ(told->mtu, 1400U);
    EXPECT_EQ(told->minimumMTU, 68U);
    EXPECT_EQ(told->maximumMTU, 9000U);
    EXPECT_EQ(told->master, 3);
    EXPECT_EQ(told->kind, "vlan");
    EXPECT_THAT(told->hardwareAddress, ElementsAre(2, 0x11));
    EXPECT_EQ(told->parentDevice, "0000:00:03.0");
    EXPECT_EQ(told->parentBus, "pci");
}

TEST(NetlinkLink, NoLimitOfWhatItSendsIsNothing) {
    const auto told = link(joined({bytesOf(linkHeader(2)), name("lo"), attribute(IFLA_MAX_MTU, bytesOf(0U))}));
    EXPECT_EQ(told->maximumMTU, std::nullopt);
}

TEST(NetlinkLink, NumbersThatAreTooShortAreAbsent) {
    const auto told = link(joined({bytesOf(linkHeader(2)), name("eth0"), attribute(IFLA_MTU, bytesOf("ab")),
                                   attribute(IFLA_MIN_MTU, {}), attribute(IFLA_MASTER, bytesOf("abc"))}));
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->mtu, 0U);
    EXPECT_EQ(told->minimumMTU, std::nullopt);
    EXPECT_EQ(told->master, 0);
}

ifaddrmsg addressHeader(std::uint8_t family, std::uint8_t flags = 0) {
    ifaddrmsg header{};
    header.ifa_family = family;
    header.ifa_prefixlen = 24;
    header.ifa_flags = flags;
    header.ifa_scope = RT_SCOPE_LINK;
    header.ifa_index = 2;
    return header;
}

TEST(NetlinkAddress, OneThatSaysNothingIsNone) {
    EXPECT_FALSE(address({}).has_value());
    EXPECT_FALSE(address(bytesOf(addressHeader(AF_INET))).has_value());
    ifaddrmsg nowhere = addressHeader(AF_INET);
    nowhere.ifa_index = 0;
    EXPECT_FALSE(address(joined({bytesOf(nowhere), attribute(IFA_LOCAL, addressBytes("192.0.2.1"))})).has_value());
}

TEST(NetlinkAddress, OtherProtocolsAndWrongLengthsAreNone) {
    const ByteVector ipv4 = attribute(IFA_LOCAL, addressBytes("192.0.2.1"));
    const ByteVector ipv6 = attribute(IFA_ADDRESS, addressBytes("2001:db8::1"));
    EXPECT_FALSE(address(joined({bytesOf(addressHeader(AF_PACKET)), ipv4})).has_value());
    EXPECT_FALSE(address(joined({bytesOf(addressHeader(AF_INET6)), ipv4})).has_value());
    EXPECT_FALSE(address(joined({bytesOf(addressHeader(AF_INET)), ipv6})).has_value());
    EXPECT_FALSE(address(joined({bytesOf(addressHeader(AF_INET)), attribute(IFA_LOCAL, bytesOf("abc"))})).has_value());
}

TEST(NetlinkAddress, TheOwnEndOfALinkWithTwoEndsIsTheAddress) {
    const ByteVector bytes = joined({bytesOf(addressHeader(AF_INET)), attribute(IFA_ADDRESS, addressBytes("192.0.2.9")),
                                     attribute(IFA_LOCAL, addressBytes("192.0.2.1"))});
    EXPECT_EQ(address(bytes)->address, internetAddress("192.0.2.1"));
}

TEST(NetlinkAddress, WithoutAnOwnEndTheAddressItself) {
    const auto told =
        address(joined({bytesOf(addressHeader(AF_INET6)), attribute(IFA_ADDRESS, addressBytes("2001:db8::1")),
                        attribute(kAddressProtocol, bytesOf(std::uint8_t{3}))}));
    ASSERT_TRUE(told.has_value());
    EXPECT_EQ(told->address, internetAddress("2001:db8::1"));
    EXPECT_EQ(told->protocol, 3);
    EXPECT_EQ(told->scope, RT_SCOPE_LINK);
    EXPECT_EQ(told->prefixLength, 24);
    EXPECT_EQ(told->broadcast, std::nullopt);
}

TEST(NetlinkAddress, AnIPv6AddressThatCannotBeUsedIsLeftOut) {
    const ByteVector own = attribute(IFA_ADDRESS, addressBytes("2001:db8::1"));
    EXPECT_FALSE(address(joined({bytesOf(addressHeader(AF_INET6, IFA_F_TENTATIVE)), own})).has_value());
    EXPECT_FALSE(address(joined({bytesOf(addressHeader(AF_INET6, IFA_F_DADFAILED)), own})).has_value());
    const ByteVector wide = attribute(IFA_FLAGS, bytesOf(std::uint32_t{IFA_F_PERMANENT | IFA_F_TENTATIVE}));
    EXPECT_FALSE(address(joined({bytesOf(addressHeader(AF_INET6)), own, wide})).has_value());
    EXPECT_TRUE(address(joined({bytesOf(addressHeader(AF_INET6, IFA_F_DEPRECATED)), own})).has_value());
}

TEST(NetlinkAddress, TheWiderFlagsReplaceTheNarrowOnes) {
    const auto told = address(joined(
        {bytesOf(addressHeader(AF_INET, 0x80)), attribute(IFA_LOCAL, addressBytes("192.0.2.1")),
         attribute(IFA_FLAGS, bytesOf(std::uint32_t{0x280})), attribute(IFA_BROADCAST, addressBytes("192.0.2.255"))}));
    EXPECT_EQ(told->flags, 0x280U);
    EXPECT_EQ(told->broadcast, internetAddress("192.0.2.255"));
}

rtmsg routeHeader(std::uint8_t family = AF_INET) {
    rtmsg header{};
    header.rtm_family = family;
    header.rtm_table = RT_TABLE_MAIN;
    header.rtm_type = RTN_UNICAST;
    header.rtm_protocol = RTPROT_DHCP;
    return header;
}

std::vector<NetworkRoute> routesOf(const ByteVector& payload) {
    std::vector<NetworkRoute> routes;
    appendDefaultRoutes(payload, routes);
    return routes;
}

const ByteVector kThroughTwo = attribute(RTA_OIF, bytesOf(std::int32_t{2}));

TEST(NetlinkRoute, OneThatLeadsNowhereIsNone) {
    EXPECT_THAT(routesOf({}), IsEmpty());
    EXPECT_THAT(routesOf(bytesOf(routeHeader())), IsEmpty());
    EXPECT_THAT(routesOf(joined({bytesOf(routeHeader()), attribute(RTA_OIF, bytesOf(std::int32_t{0}))})), IsEmpty());
}

TEST(NetlinkRoute, OthersThanDefaultRoutesOfTheMainTableAreNone) {
    const auto with = [](auto change) {
        rtmsg header = routeHeader();
        change(header);
        return routesOf(joined({bytesOf(header), kThroughTwo}));
    };
    EXPECT_EQ(with([](rtmsg&) {}).size(), 1U);
    EXPECT_THAT(with([](rtmsg& header) { header.rtm_dst_len = 8; }), IsEmpty());
    EXPECT_THAT(with([](rtmsg& header) { header.rtm_table = RT_TABLE_LOCAL; }), IsEmpty());
    EXPECT_THAT(with([](rtmsg& header) { header.rtm_type = RTN_UNREACHABLE; }), IsEmpty());
    EXPECT_THAT(with([](rtmsg& header) { header.rtm_type = RTN_BLACKHOLE; }), IsEmpty());
    EXPECT_THAT(with([](rtmsg& header) { header.rtm_family = AF_MPLS; }), IsEmpty());
    EXPECT_THAT(with([](rtmsg& header) { header.rtm_flags = RTM_F_CLONED; }), IsEmpty());
    EXPECT_EQ(with([](rtmsg& header) { header.rtm_flags = RTNH_F_DEAD | RTNH_F_LINKDOWN; }).size(), 1U);
}

TEST(NetlinkRoute, TheWideNumberOfTheTableCounts) {
    const ByteVector other = attribute(RTA_TABLE, bytesOf(std::uint32_t{1000 * 256U + RT_TABLE_MAIN}));
    EXPECT_THAT(routesOf(joined({bytesOf(routeHeader()), kThroughTwo, other})), IsEmpty());
}

TEST(NetlinkRoute, WithARouterOrReachedDirectly) {
    const auto direct = routesOf(joined({bytesOf(routeHeader()), kThroughTwo}));
    EXPECT_THAT(direct, ElementsAre(NetworkRoute{2, AddressFamily::IPv4, std::nullopt, 0, RTPROT_DHCP}));
    const auto routed = routesOf(joined({bytesOf(routeHeader()), attribute(RTA_GATEWAY, addressBytes("192.0.2.1")),
                                         kThroughTwo, attribute(RTA_PRIORITY, bytesOf(std::uint32_t{600}))}));
    EXPECT_THAT(routed,
                ElementsAre(NetworkRoute{2, AddressFamily::IPv4, internetAddress("192.0.2.1"), 600, RTPROT_DHCP}));
}

TEST(NetlinkRoute, ARouterOfTheOtherProtocol) {
    ByteVector via = bytesOf(std::uint16_t{AF_INET6});
    tests::add(via, addressBytes("fe80::1"));
    const auto routes = routesOf(joined({bytesOf(routeHeader()), kThroughTwo, attribute(RTA_VIA, via)}));
    EXPECT_THAT(routes, ElementsAre(NetworkRoute{2, AddressFamily::IPv4, internetAddress("fe80::1"), 0, RTPROT_DHCP}));
    via.pop_back();
    EXPECT_EQ(routesOf(joined({bytesOf(routeHeader()), kThroughTwo, attribute(RTA_VIA, via)})).front().gateway,
              std::nullopt);
    const ByteVector strange = attribute(RTA_VIA, bytesOf(std::uint16_t{0x100 + AF_INET}));
    EXPECT_EQ(routesOf(joined({bytesOf(routeHeader()), kThroughTwo, strange})).front().gateway, std::nullopt);
}

ByteVector hop(int link, const ByteVector& attributes, int lengthMore = 0) {
    rtnexthop header{};
    header.rtnh_len = static_cast<std::uint16_t>(static_cast<int>(sizeof(header) + attributes.size()) + lengthMore);
    header.rtnh_ifindex = link;
    ByteVector bytes = bytesOf(header);
    tests::add(bytes, attributes);
    return bytes;
}

TEST(NetlinkRoute, SeveralHopsAreTakenApartInTheirOrder) {
    const ByteVector hops = joined({hop(3, attribute(RTA_GATEWAY, addressBytes("192.0.2.1"))), hop(2, {}),
                                    hop(0, attribute(RTA_GATEWAY, addressBytes("192.0.2.2")))});
    const auto routes = routesOf(joined(
        {bytesOf(routeHeader()), attribute(RTA_MULTIPATH, hops), attribute(RTA_PRIORITY, bytesOf(std::uint32_t{5}))}));
    EXPECT_THAT(routes, ElementsAre(NetworkRoute{3, AddressFamily::IPv4, internetAddress("192.0.2.1"), 5, RTPROT_DHCP},
                                    NetworkRoute{2, AddressFamily::IPv4, std::nullopt, 5, RTPROT_DHCP}));
}

TEST(NetlinkRoute, AHopWithAWrongLengthEndsThem) {
    for (const int more : {-1, -8, 4, 1000}) {
        const ByteVector hops = joined({hop(3, {}), hop(4, {}, more), hop(5, {})});
        const auto routes = routesOf(joined({bytesOf(routeHeader()), attribute(RTA_MULTIPATH, hops)}));
        EXPECT_EQ(routes.front().link, 3) << more;
        EXPECT_LE(routes.size(), 2U) << more;
    }
}

TEST(NetlinkRoute, OneThatRefersToAnObjectHasItsNumberUnlessTheKernelSpellsItOut) {
    const ByteVector object = attribute(RTA_NH_ID, bytesOf(std::uint32_t{7}));
    NetworkRoute expected{0, AddressFamily::IPv4, std::nullopt, 0, RTPROT_DHCP};
    expected.nextHop = 7;
    EXPECT_THAT(routesOf(joined({bytesOf(routeHeader()), object})), ElementsAre(expected));
    expected.nextHop = 0;
    expected.link = 2;
    EXPECT_THAT(routesOf(joined({bytesOf(routeHeader()), object, kThroughTwo})), ElementsAre(expected));
    EXPECT_THAT(routesOf(joined({bytesOf(routeHeader()), attribute(RTA_MULTIPATH, hop(2, {})), object})),
                ElementsAre(expected));
}

TEST(NetlinkNextHop, OneThatIsTooShortIsNone) {
    EXPECT_EQ(nextHop({}), std::nullopt);
    EXPECT_EQ(nextHop(bytesOf(std::uint32_t{0})), std::nullopt);
}

TEST(NetlinkNextHop, WhatIsNotToldIsAbsent) {
    EXPECT_EQ(nextHop(bytesOf(nhmsg{})), NextHop());
    const ByteVector narrow = attribute(NHA_OIF, bytesOf(std::uint16_t{2}));
    EXPECT_EQ(nextHop(joined({bytesOf(nhmsg{}), narrow, attribute(NHA_BLACKHOLE, {})})), NextHop());
}

TEST(NetlinkNextHop, TellsLinkAndGatewayOrTheMembersOfAGroup) {
    nhmsg header{};
    header.nh_family = AF_INET6;
    EXPECT_EQ(nextHop(joined({bytesOf(header), attribute(NHA_OIF, bytesOf(std::uint32_t{2})),
                              attribute(NHA_GATEWAY, addressBytes("fe80::1"))})),
              (NextHop{2, internetAddress("fe80::1"), {}}));
    nexthop_grp one{};
    one.id = 5;
    nexthop_grp other{};
    other.id = 6;
    const ByteVector cut = bytesOf(std::uint32_t{9});
    EXPECT_EQ(nextHop(joined({bytesOf(nhmsg{}), attribute(NHA_GROUP, joined({bytesOf(one), bytesOf(other), cut}))})),
              (NextHop{0, std::nullopt, {5, 6}}));
}

ByteVector neighbour(std::uint16_t state, const ByteVector& hardwareAddress) {
    ndmsg header{};
    header.ndm_family = AF_INET;
    header.ndm_state = state;
    return joined({bytesOf(header), attribute(NDA_DST, addressBytes("192.0.2.1")),
                   hardwareAddress.empty() ? ByteVector() : attribute(NDA_LLADDR, hardwareAddress)});
}

TEST(NetlinkNeighbour, OneThatIsNotResolvedHasNoHardwareAddress) {
    const ByteVector known = bytesOf("\x52\x54\x01\x12\xab\x56");
    EXPECT_EQ(neighbourHardwareAddress({}), std::nullopt);
    EXPECT_EQ(neighbourHardwareAddress(neighbour(NUD_REACHABLE, {})), std::nullopt);
    EXPECT_EQ(neighbourHardwareAddress(neighbour(NUD_INCOMPLETE, known)), std::nullopt);
    EXPECT_EQ(neighbourHardwareAddress(neighbour(NUD_FAILED, known)), std::nullopt);
    EXPECT_EQ(neighbourHardwareAddress(neighbour(NUD_NOARP, known)), std::nullopt);
    EXPECT_EQ(neighbourHardwareAddress(neighbour(NUD_REACHABLE, ByteVector(6))), std::nullopt);
}

TEST(NetlinkNeighbour, OneThatIsResolvedHasOne) {
    const ByteVector known = bytesOf("\x52\x54\x01\x12\xab\x56");
    for (const int state : {NUD_REACHABLE, NUD_STALE, NUD_DELAY, NUD_PROBE, NUD_PERMANENT}) {
        EXPECT_EQ(neighbourHardwareAddress(neighbour(static_cast<std::uint16_t>(state), known)), "52:54:01:12:ab:56");
    }
}

TEST(NetlinkNeighbour, HardwareAddressesAreOfAnyLength) {
    EXPECT_EQ(hardwareAddressText({}), "");
    EXPECT_EQ(hardwareAddressText(bytesOf("\x0f")), "0f");
    EXPECT_EQ(hardwareAddressText(ByteVector(3)), "00:00:00");
}

} // namespace
} // namespace qk::platform::parse
