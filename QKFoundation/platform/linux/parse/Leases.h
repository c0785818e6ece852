// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace qk::platform::parse {

/// What a DHCP server has granted: the options of its answer as they went over the network, by their numbers.
struct DHCPLease {
    std::map<std::uint8_t, std::string> options; ///< bytes
    std::optional<std::int64_t> start;           ///< seconds since 1970; nothing where nobody wrote it down

    [[nodiscard]] friend bool operator==(const DHCPLease&, const DHCPLease&) = default;
};

/// A lease as NetworkManager tells it, by the options' long names ("routers"). What it has no number for, and values
/// that are not of their option's kind, are left out.
[[nodiscard]] DHCPLease networkManagerLease(std::span<const std::pair<std::string, std::string>> options);

/// A lease as systemd-networkd writes it (/run/systemd/netif/leases); likewise.
[[nodiscard]] DHCPLease networkdLease(std::string_view text);

} // namespace qk::platform::parse
