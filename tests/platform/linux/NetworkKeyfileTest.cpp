// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/NetworkKeyfile.h"

#include "QKFoundation/platform/linux/parse/Leases.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qk::platform::parse {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using Texts = std::vector<std::string>;

TEST(NetworkdLink, LinkThatNobodyManagesIsNone) {
    for (const std::string_view state :
         {""sv, "ADMIN_STATE=unmanaged\nNETWORK_FILE=/etc/a.network\n"sv, "ADMIN_STATE=configured\n"sv,
          "NETWORK_FILE=/etc/a.network\n"sv, "ADMIN_STATE=configured\nNETWORK_FILE=a.network\n"sv}) {
        EXPECT_EQ(networkdLink(state), std::nullopt) << state;
    }
}

TEST(NetworkdLink, StateIsReadAsItIsWritten) {
    const auto link = networkdLink("# This is private data. Do not parse.\n"
                                   "ADMIN_STATE=configured\nOPER_STATE=routable\nCARRIER_STATE=carrier\n"
                                   "NETWORK_FILE=/run/systemd/network/10-eth0.network\n"
                                   "NETWORK_FILE_DROPINS=\"/etc/a.conf:/etc/b.conf\"\n"
                                   "DNS=192.0.2.53 fe80::1%2 192.0.2.54:53#dns.example nonsense\n"
                                   "NTP=\nDOMAINS=\"a.example b.example\"\nROUTE_DOMAINS=c.example\n");
    ASSERT_TRUE(link.has_value());
    EXPECT_EQ(link->networkFile, "/run/systemd/network/10-eth0.network");
    EXPECT_EQ(link->dropIns, (Texts{"/etc/a.conf", "/etc/b.conf"}));
    EXPECT_EQ(link->nameServers, (Texts{"192.0.2.53", "fe80::1%2", "192.0.2.54"}));
    EXPECT_EQ(link->domains, (Texts{"a.example", "b.example"}));
}

NetworkSettings settings(std::string_view text) {
    NetworkSettings result;
    applyNetworkFile(text, result);
    return result;
}

TEST(NetworkFile, WhatSaysNothingChangesNothing) {
    NetworkSettings all{true, true, true, true, true, true};
    const NetworkSettings before = all;
    for (const std::string_view text :
         {""sv, "[Network]\n"sv, "DHCP=no\n"sv, "[Match]\nDHCP=no\n"sv, "[Network]\n#DHCP=no\n;DHCP=no\n"sv,
          "[Network]\nDHCP=sometimes\n"sv, "[network]\nDHCP=no\n"sv, "[Network\nDHCP=no\n"sv}) {
        applyNetworkFile(text, all);
        EXPECT_EQ(all, before) << text;
    }
}

TEST(NetworkFile, DHCPSaysWhichFamilies) {
    const struct {
        std::string_view value;
        bool ipv4;
        bool ipv6;
    } rows[] = {{"yes", true, true},   {"true", true, true}, {"both", true, true},   {"ipv4", true, false},
                {"ipv6", false, true}, {"no", false, false}, {"none", false, false}, {"1", true, true}};
    for (const auto& row : rows) {
        const NetworkSettings read =
            settings("[Match]\nName=eth0\n\n[Network]\nDHCP = " + std::string(row.value) + "\n");
        EXPECT_EQ(read.dhcp4, row.ipv4) << row.value;
        EXPECT_EQ(read.dhcp6, row.ipv6) << row.value;
    }
}

TEST(NetworkFile, AddressesAreOfTheirFamilies) {
    EXPECT_TRUE(settings("[Network]\nAddress=192.0.2.2/24\n").hasAddress4);
    EXPECT_TRUE(settings("[Network]\nAddress=2001:db8::2/64\n").hasAddress6);
    EXPECT_FALSE(settings("[Network]\nAddress=2001:db8::2/64\n").hasAddress4);
    EXPECT_TRUE(settings("[Address]\nAddress=192.0.2.2/24\nPeer=192.0.2.1\n").hasAddress4);
    EXPECT_FALSE(settings("[Network]\nAddress=somewhere\n").hasAddress4);
    EXPECT_FALSE(settings("[Route]\nAddress=192.0.2.2/24\n").hasAddress4);
}

TEST(NetworkFile, EmptyAddressForgetsThoseBefore) {
    EXPECT_FALSE(settings("[Network]\nAddress=192.0.2.2/24\nAddress=\n").hasAddress4);
    EXPECT_TRUE(settings("[Network]\nAddress=\nAddress=192.0.2.2/24\n").hasAddress4);
}

TEST(NetworkFile, LineGoesOnBehindABackslash) {
    EXPECT_TRUE(settings("[Network]\nDHCP= \\\n# in between\n  ipv4\n").dhcp4);
    EXPECT_TRUE(settings("[Network]\nDHCP=ipv4 \\").dhcp4);
}

TEST(NetworkFile, OtherWaysToAddresses) {
    EXPECT_TRUE(settings("[Network]\nLinkLocalAddressing=ipv4\n").linkLocal4);
    EXPECT_TRUE(settings("[Network]\nLinkLocalAddressing=yes\n").linkLocal4);
    EXPECT_FALSE(settings("[Network]\nLinkLocalAddressing=ipv6\n").linkLocal4);
    EXPECT_EQ(settings("[Network]\n").acceptsRouterAdvertisements, std::nullopt);
    EXPECT_EQ(settings("[Network]\nIPv6AcceptRA=true\n").acceptsRouterAdvertisements, true);
    EXPECT_EQ(settings("[Network]\nIPv6AcceptRA=no\n").acceptsRouterAdvertisements, false);
}

TEST(Leases, WithoutOptionsThereAreNone) {
    EXPECT_EQ(networkdLease(""), DHCPLease());
    EXPECT_EQ(networkManagerLease({}), DHCPLease());
}

TEST(Leases, NetworkdWritesNames) {
    const DHCPLease lease =
        networkdLease("# This is private data. Do not parse.\nADDRESS=192.0.2.2\n"
                      "NETMASK=255.255.255.0\nROUTER=192.0.2.1\nSERVER_ADDRESS=192.0.2.1\nMTU=1400\n"
                      "LIFETIME=3600\nDNS=192.0.2.53 192.0.2.54\nDOMAINNAME=a.example\n");
    const std::map<std::uint8_t, std::string> expected{
        {1, "\xFF\xFF\xFF\0"s}, {3, "\xC0\0\x02\x01"s}, {6, "\xC0\0\x02\x35\xC0\0\x02\x36"s},
        {15, "a.example"},      {26, "\x05\x78"s},      {51, "\0\0\x0E\x10"s},
        {54, "\xC0\0\x02\x01"s}};
    EXPECT_EQ(lease.options, expected);
    EXPECT_EQ(lease.start, std::nullopt);
}

TEST(Leases, NetworkManagerTellsTheEnd) {
    const std::vector<std::pair<std::string, std::string>> told{
        {"dhcp_lease_time", "3600"}, {"expiry", "1700003600"}, {"host_name", "vm"},
        {"ip_address", "192.0.2.2"}, {"routers", "192.0.2.1"}, {"requested_routers", "1"}};
    const DHCPLease lease = networkManagerLease(told);
    const std::map<std::uint8_t, std::string> expected{{3, "\xC0\0\x02\x01"s}, {12, "vm"}, {51, "\0\0\x0E\x10"s}};
    EXPECT_EQ(lease.options, expected);
    EXPECT_EQ(lease.start, 1700000000);
}

TEST(Leases, ValueOfAnotherKindIsLeftOut) {
    EXPECT_EQ(networkdLease("ROUTER=nobody\nDNS=192.0.2.53 ::1\nLIFETIME=-1\nMTU=70000\nDOMAINNAME=\nNTP=\n"),
              DHCPLease());
}

} // namespace
} // namespace qk::platform::parse
