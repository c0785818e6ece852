// SPDX-License-Identifier: Apache-2.0
// What a kernel has sent of the network that tests/fixtures/linux/netlink/capture makes.
#include "QKFoundation/platform/linux/NetlinkNetwork.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/parse/Netlink.h"

#include "tests/platform/linux/NetlinkBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <linux/rtnetlink.h>
#include <net/if.h>

#include <bit>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::internetAddress;

class CapturedNetlink : public testing::Test {
protected:
    void SetUp() override {
        if (std::endian::native != std::endian::little) {
            GTEST_SKIP() << "the bytes are of a little-endian machine";
        }
        forEach("links", [&](parse::Bytes payload) {
            if (auto link = parse::link(payload)) {
                network_.links.push_back(*std::move(link));
            }
        });
        forEach("addresses", [&](parse::Bytes payload) {
            if (const auto address = parse::address(payload)) {
                network_.addresses.push_back(*address);
            }
        });
        forEach("routes", [&](parse::Bytes payload) { parse::appendDefaultRoutes(payload, network_.defaultRoutes); });
        arrange(network_);
    }

    template <typename Visitor>
    static void forEach(std::string_view list, Visitor&& visit) {
        const std::string path = QK_FIXTURES_DIR "/linux/netlink/" + std::string(list) + ".bin";
        const auto bytes = readBytes(path);
        ASSERT_TRUE(bytes.has_value()) << path;
        parse::Bytes rest = std::as_bytes(std::span(*bytes));
        while (const auto message = parse::takeMessage(rest)) {
            if (message->type >= RTM_BASE) {
                visit(message->payload);
            }
        }
    }

    [[nodiscard]] const NetworkLink& link(std::string_view name) const {
        for (const NetworkLink& link : network_.links) {
            if (link.name == name) {
                return link;
            }
        }
        throw std::runtime_error(std::string(name));
    }
    [[nodiscard]] std::vector<std::string> addresses(std::string_view name) const {
        std::vector<std::string> texts;
        for (const NetworkAddress& address : network_.addresses) {
            if (address.link == link(name).index) {
                texts.push_back(address.address.text() + "/" + std::to_string(address.prefixLength));
            }
        }
        return texts;
    }
    [[nodiscard]] const KernelNetwork& network() const { return network_; }

private:
    KernelNetwork network_;
};

TEST_F(CapturedNetlink, LinksByTheirIndex) {
    std::vector<std::string> names;
    for (const NetworkLink& link : network().links) {
        names.push_back(link.name);
    }
    EXPECT_THAT(names, ElementsAre("lo", "down0", "up0", "bridge0", "second1", "second0"));
}

TEST_F(CapturedNetlink, WhatALinkIs) {
    EXPECT_EQ(link("up0").kind, "veth");
    EXPECT_EQ(link("up0").mtu, 1400U);
    EXPECT_EQ(link("up0").minimumMTU, 68U);
    EXPECT_EQ(link("up0").maximumMTU, 65535U);
    EXPECT_THAT(link("up0").hardwareAddress, ElementsAre(2, 0, 0, 0, 0, 0x10));
    EXPECT_EQ(link("up0").parentDevice, std::nullopt);
    EXPECT_EQ(link("bridge0").kind, "bridge");
    EXPECT_EQ(link("down0").master, link("bridge0").index);
    EXPECT_EQ(link("lo").kind, "");
    EXPECT_EQ(link("lo").maximumMTU, std::nullopt);
    EXPECT_NE(link("lo").flags & IFF_LOOPBACK, 0U);
}

TEST_F(CapturedNetlink, AddressesOfBothProtocolsTogether) {
    EXPECT_THAT(addresses("lo"), ElementsAre("127.0.0.1/8", "::1/128"));
    EXPECT_THAT(addresses("up0"),
                ElementsAre("192.0.2.2/24", "192.0.2.3/32", "198.51.100.1/32", "2001:db8::3/128", "2001:db8::2/64"));
    EXPECT_THAT(addresses("bridge0"), IsEmpty()) << "its own one was still tentative";
}

TEST_F(CapturedNetlink, BroadcastAddressesOnlyWhereSomebodySetOne) {
    const auto& all = network().addresses;
    const auto broadcast = [&](const char* own) {
        const auto found = std::ranges::find(all, internetAddress(own), &NetworkAddress::address);
        return found != all.end() ? found->broadcast : internetAddress("255.255.255.255");
    };
    EXPECT_EQ(broadcast("192.0.2.2"), internetAddress("192.0.2.255"));
    EXPECT_EQ(broadcast("192.0.2.3"), std::nullopt);
    EXPECT_EQ(broadcast("198.51.100.1"), std::nullopt);
    EXPECT_EQ(broadcast("203.0.113.1"), std::nullopt);
}

TEST_F(CapturedNetlink, DefaultRoutesBestFirstAndHopByHop) {
    const std::int32_t up0 = link("up0").index;
    const std::int32_t second0 = link("second0").index;
    using enum AddressFamily;
    EXPECT_THAT(network().defaultRoutes,
                ElementsAre(NetworkRoute{second0, IPv4, std::nullopt, 30, RTPROT_BOOT},
                            NetworkRoute{up0, IPv4, internetAddress("2001:db8::1"), 40, RTPROT_BOOT},
                            NetworkRoute{up0, IPv4, internetAddress("192.0.2.1"), 50, RTPROT_STATIC},
                            NetworkRoute{second0, IPv4, internetAddress("203.0.113.0"), 50, RTPROT_STATIC},
                            NetworkRoute{up0, IPv4, internetAddress("192.0.2.1"), 100, RTPROT_DHCP},
                            NetworkRoute{up0, IPv6, internetAddress("2001:db8::1"), 512, RTPROT_BOOT},
                            NetworkRoute{second0, IPv6, internetAddress("fe80::1"), 512, RTPROT_BOOT},
                            NetworkRoute{up0, IPv6, internetAddress("2001:db8::1"), 1024, RTPROT_RA}));
}

TEST_F(CapturedNetlink, ANeighbour) {
    std::optional<std::string> found;
    forEach("neighbour", [&](parse::Bytes payload) { found = parse::neighbourHardwareAddress(payload); });
    EXPECT_EQ(found, "02:00:00:00:00:01");
}

} // namespace
} // namespace qk::platform
