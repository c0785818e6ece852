// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkSnapshot.h"
#include "QKFoundation/platform/linux/parse/NetlinkMessages.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Messages of rtnetlink(7). Each function takes the payload of one message, checks every length, and gives a whole
/// record or nothing.
namespace qk::platform::parse {

/// An address of `family` (AF_INET, AF_INET6): exactly 4 or 16 bytes. Nothing for other families and lengths.
[[nodiscard]] std::optional<InternetAddress> internetAddress(std::uint8_t family, Bytes bytes) noexcept;

/// RTM_NEWLINK. Nothing for one without an index or a name.
[[nodiscard]] std::optional<NetworkLink> link(Bytes payload);

/// RTM_NEWADDR. Nothing for other protocols than the internet's, and for an IPv6 address that cannot be used: one that
/// is tentative or turned out to be taken.
[[nodiscard]] std::optional<NetworkAddress> address(Bytes payload) noexcept;

/// RTM_NEWROUTE. Adds the hops of a default route of the main table to `routes`; none for another route, for one that
/// refuses (unreachable, blackhole, ...), and for copies that the kernel made while it sent. Hops that are dead at the
/// moment are hops. A route that only refers to an object of next hops is added with its number and without a link.
void appendDefaultRoutes(Bytes payload, std::vector<NetworkRoute>& routes);

/// RTM_NEWNEXTHOP: a hop that routes refer to by its number, or a group of such hops.
struct NextHop {
    std::int32_t link = 0; ///< 0 for a group, and for one that refuses
    std::optional<InternetAddress> gateway;
    std::vector<std::uint32_t> members; ///< the numbers of a group's hops

    friend bool operator==(const NextHop&, const NextHop&) = default;
};

/// RTM_NEWNEXTHOP. Nothing for a message that is too short.
[[nodiscard]] std::optional<NextHop> nextHop(Bytes payload);

/// RTM_NEWNEIGH: the neighbour's hardware address, "52:54:00:12:34:56". Nothing while it is not resolved, and for links
/// whose neighbours have none.
[[nodiscard]] std::optional<std::string> neighbourHardwareAddress(Bytes payload);

/// "52:54:00:12:34:56": two digits a byte.
[[nodiscard]] std::string hardwareAddressText(Bytes bytes);

} // namespace qk::platform::parse
