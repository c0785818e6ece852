// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinkEvidence.h"

#include "QKFoundation/platform/linux/SchemaTexts.h"

#include "tests/platform/linux/NetworkFacts.h"
#include "tests/platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

using namespace tests;

const LinuxRoot kNoFiles("/nonexistent");

NetworkSnapshot snapshot(NetworkLink link, std::vector<NetworkAddress> addresses,
                         std::vector<NetworkRoute> routes = {}) {
    return NetworkSnapshot(KernelNetwork{{std::move(link)}, std::move(addresses), std::move(routes)}, kNoFiles);
}

std::string text(const NSString* method) {
    return method != nullptr ? method->utf8Lossy() : "-";
}

TEST(LinkEvidence, LoopbackIsNoService) {
    const NetworkSnapshot facts = snapshot(loopbackLink(), {networkAddress(1, "192.0.2.2/24")});
    EXPECT_FALSE(evidence::isService(*facts.link("lo"), facts));
}

TEST(LinkEvidence, CardsAndWhatJoinsThemAreServices) {
    NetworkLink down = cardLink(2, "eth0");
    down.flags = 0;
    for (const NetworkLink& link :
         {cardLink(2, "eth0"), down, networkLink(2, "bond0", "bond"), networkLink(2, "team0", "team"),
          networkLink(2, "br0", "bridge"), networkLink(2, "eth0.7", "vlan")}) {
        const NetworkSnapshot facts = snapshot(link, {});
        EXPECT_TRUE(evidence::isService(*facts.link(2), facts)) << link.name;
    }
}

TEST(LinkEvidence, OtherVirtualLinkNeedsAnAddressBeyondItself) {
    for (const std::string kind : {"veth", "tun", "wireguard", "dummy", "ifb", ""}) {
        const NetworkLink link = networkLink(2, "v0", kind);
        const NetworkSnapshot bare = snapshot(link, {});
        EXPECT_FALSE(evidence::isService(*bare.link(2), bare)) << kind;
        const NetworkSnapshot local =
            snapshot(link, {networkAddress(2, "fe80::1/64"), networkAddress(2, "169.254.1.1/16")});
        EXPECT_FALSE(evidence::isService(*local.link(2), local)) << kind;
        const NetworkSnapshot reachable =
            snapshot(link, {networkAddress(2, "fe80::1/64"), networkAddress(2, "10.0.0.1/24")});
        EXPECT_TRUE(evidence::isService(*reachable.link(2), reachable)) << kind;
    }
}

TEST(LinkEvidence, PortOfABridgeWithoutAnAddressIsNoService) {
    NetworkLink port = networkLink(2, "veth0", "veth");
    port.master = 3;
    const NetworkSnapshot facts = snapshot(port, {networkAddress(2, "fe80::1/64")});
    EXPECT_FALSE(evidence::isService(*facts.link(2), facts));
}

TEST(LinkEvidence, KindNamesTheType) {
    const struct {
        std::string kind;
        std::string type;
    } rows[] = {{"vlan", "VLAN"},   {"bond", "Bond"},  {"team", "Bond"}, {"bridge", "Bridge"}, {"sit", "6to4"},
                {"ppp", "PPP"},     {"xfrm", "IPSec"}, {"vti", "IPSec"}, {"vti6", "IPSec"},    {"wwan", "WWAN"},
                {"wireguard", "-"}, {"tun", "-"},      {"veth", "-"},    {"dummy", "-"},       {"ifb", "-"}};
    for (const auto& row : rows) {
        EXPECT_EQ(text(evidence::interfaceType(networkLink(2, "x", row.kind), kNoFiles)), row.type) << row.kind;
    }
}

TEST(LinkEvidence, KindWithoutATypeMayBeADevice) {
    NetworkLink port = cardLink(2, "lan1");
    port.kind = "dsa"; // a port of a switch chip
    EXPECT_EQ(text(evidence::interfaceType(port, kNoFiles)), "Ethernet");
}

TEST(LinkEvidence, DriverTellsDevicesApart) {
    const struct {
        std::string event;
        std::string type;
    } rows[] = {{"DEVTYPE=wlan\nINTERFACE=w0\nIFINDEX=2\n", "IEEE80211"},
                {"DEVTYPE=wwan\nINTERFACE=w0\n", "WWAN"},
                {"DEVTYPE=bluetooth\n", "Bluetooth"},
                {"INTERFACE=w0\nIFINDEX=2\n", "Ethernet"},
                {"DEVTYPE=dsa\n", "Ethernet"}};
    for (const auto& row : rows) {
        const TemporaryFolder folder;
        folder.write("sys/class/net/w0/uevent", row.event);
        EXPECT_EQ(text(evidence::interfaceType(cardLink(2, "w0"), LinuxRoot(folder.path()))), row.type) << row.event;
    }
}

TEST(LinkEvidence, HardwareNamesTheTypeLast) {
    const struct {
        std::uint16_t hardware;
        std::string ofCard;
        std::string ofOther;
    } rows[] = {{ARPHRD_ETHER, "Ethernet", "-"}, {ARPHRD_IEEE1394, "FireWire", "FireWire"},
                {ARPHRD_IRDA, "IrDA", "IrDA"},   {ARPHRD_PPP, "PPP", "PPP"},
                {ARPHRD_SIT, "6to4", "6to4"},    {ARPHRD_INFINIBAND, "-", "-"}};
    for (const auto& row : rows) {
        NetworkLink card = cardLink(2, "x");
        card.hardwareType = row.hardware;
        EXPECT_EQ(text(evidence::interfaceType(card, kNoFiles)), row.ofCard) << row.hardware;
        NetworkLink other = networkLink(2, "x");
        other.hardwareType = row.hardware;
        EXPECT_EQ(text(evidence::interfaceType(other, kNoFiles)), row.ofOther) << row.hardware;
    }
}

TEST(LinkEvidence, LinkWithoutAddressesHasNoMethods) {
    const NetworkSnapshot facts = snapshot(cardLink(2, "eth0"), {}, {defaultRoute(2, "192.0.2.1", 0, RTPROT_DHCP)});
    EXPECT_EQ(evidence::ipv4Method(*facts.link(2), facts), nullptr);
    EXPECT_EQ(evidence::ipv6Method(*facts.link(2), facts), nullptr);
}

TEST(LinkEvidence, IPv4MethodIsSeenFromRoutesAndAddresses) {
    NetworkAddress leased = networkAddress(2, "192.0.2.2/24");
    leased.flags = 0;
    const NetworkAddress fixed = networkAddress(2, "192.0.2.2/24");
    const struct {
        std::vector<NetworkAddress> addresses;
        std::vector<NetworkRoute> routes;
        std::string method;
    } rows[] = {{{fixed}, {}, "Manual"},
                {{fixed}, {defaultRoute(2, "192.0.2.1")}, "Manual"},
                {{fixed}, {defaultRoute(2, "192.0.2.1", 0, RTPROT_DHCP)}, "DHCP"},
                {{fixed}, {defaultRoute(3, "192.0.2.1", 0, RTPROT_DHCP)}, "Manual"},
                {{leased}, {}, "DHCP"},
                {{networkAddress(2, "169.254.3.4/16")}, {}, "LinkLocal"},
                {{networkAddress(2, "169.254.3.4/16"), fixed}, {}, "Manual"},
                {{networkAddress(2, "2001:db8::2/64")}, {}, "-"}};
    for (const auto& row : rows) {
        const NetworkSnapshot facts = snapshot(cardLink(2, "eth0"), row.addresses, row.routes);
        EXPECT_EQ(text(evidence::ipv4Method(*facts.link(2), facts)), row.method);
    }
}

TEST(LinkEvidence, DialledLinkHasAMethodOfItsOwn) {
    NetworkLink link = networkLink(2, "ppp0", "ppp");
    link.hardwareType = ARPHRD_PPP;
    const NetworkSnapshot facts = snapshot(link, {networkAddress(2, "192.0.2.2/32")});
    EXPECT_EQ(text(evidence::ipv4Method(*facts.link(2), facts)), "PPP");
}

TEST(LinkEvidence, IPv6MethodIsSeenFromRoutesAndAddresses) {
    const NetworkAddress local = networkAddress(2, "fe80::1/64");
    const NetworkAddress fixed = networkAddress(2, "2001:db8::2/64");
    NetworkAddress advertised = fixed;
    advertised.protocol = 2;
    NetworkAddress leased = fixed;
    leased.flags = 0;
    const struct {
        std::vector<NetworkAddress> addresses;
        std::vector<NetworkRoute> routes;
        std::string method;
    } rows[] = {{{local}, {}, "LinkLocal"},
                {{local, fixed}, {}, "Manual"},
                {{local, fixed}, {defaultRoute(2, "fe80::9", 0, RTPROT_STATIC)}, "Manual"},
                {{local, fixed}, {defaultRoute(2, "fe80::9", 0, RTPROT_RA)}, "Automatic"},
                {{local, advertised}, {}, "Automatic"},
                {{local, leased}, {}, "Automatic"},
                {{networkAddress(2, "2002:c000:202::1/48")}, {}, "Manual"},
                {{networkAddress(2, "192.0.2.2/24")}, {}, "-"}};
    for (const auto& row : rows) {
        const NetworkSnapshot facts = snapshot(cardLink(2, "eth0"), row.addresses, row.routes);
        EXPECT_EQ(text(evidence::ipv6Method(*facts.link(2), facts)), row.method);
    }
}

TEST(LinkEvidence, TunnelWithAnAddressOfItsKindIs6to4) {
    NetworkLink link = networkLink(2, "tun6to4", "sit");
    link.hardwareType = ARPHRD_SIT;
    const NetworkSnapshot facts = snapshot(link, {networkAddress(2, "2002:c000:202::1/16")});
    EXPECT_EQ(text(evidence::ipv6Method(*facts.link(2), facts)), "6to4");
    const NetworkSnapshot other = snapshot(link, {networkAddress(2, "2001:db8::2/64")});
    EXPECT_EQ(text(evidence::ipv6Method(*other.link(2), other)), "Manual");
}

} // namespace
} // namespace qk::platform
