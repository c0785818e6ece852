// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Leases.h"

#include "QKFoundation/platform/linux/parse/Assignments.h"
#include "QKFoundation/platform/linux/parse/ResolvConf.h"
#include "QKFoundation/platform/linux/parse/Text.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <array>
#include <concepts>

namespace qk::platform::parse {
namespace {

enum class Kind : std::uint8_t { Addresses, Text, Number16, Number32 };

struct Option {
    std::uint8_t code; // RFC 2132
    Kind kind;
    std::string_view networkManager;
    std::string_view networkd;
};

constexpr std::uint8_t kLeaseTime = 51;
constexpr std::array kOptions{
    Option{1, Kind::Addresses, "subnet_mask", "NETMASK"},
    Option{3, Kind::Addresses, "routers", "ROUTER"},
    Option{6, Kind::Addresses, "domain_name_servers", "DNS"},
    Option{12, Kind::Text, "host_name", "HOSTNAME"},
    Option{15, Kind::Text, "domain_name", "DOMAINNAME"},
    Option{26, Kind::Number16, "interface_mtu", "MTU"},
    Option{28, Kind::Addresses, "broadcast_address", "BROADCAST"},
    Option{42, Kind::Addresses, "ntp_servers", "NTP"},
    Option{kLeaseTime, Kind::Number32, "dhcp_lease_time", "LIFETIME"},
    Option{54, Kind::Addresses, "dhcp_server_identifier", "SERVER_ADDRESS"},
};

std::optional<std::string> addresses(std::string_view text) {
    std::string bytes;
    for (const std::string_view word : words(text)) {
        const std::optional<std::string> server = serverAddress(word);
        in_addr address{};
        if (!server.has_value() || ::inet_pton(AF_INET, server->c_str(), &address) != 1) {
            return std::nullopt;
        }
        bytes.append(reinterpret_cast<const char*>(&address), sizeof(address));
    }
    return bytes.empty() ? std::nullopt : std::optional(std::move(bytes));
}

template <std::unsigned_integral Number>
std::optional<std::string> bigEndian(std::string_view text) {
    const std::optional<Number> value = number<Number>(text);
    if (!value.has_value()) {
        return std::nullopt;
    }
    std::string bytes;
    for (unsigned shift = 8 * sizeof(Number); shift > 0;) {
        shift -= 8;
        bytes.push_back(static_cast<char>((*value >> shift) & 0xFFU));
    }
    return bytes;
}

std::optional<std::string> encoded(Kind kind, std::string_view text) {
    switch (kind) {
    case Kind::Addresses: return addresses(text);
    case Kind::Number16: return bigEndian<std::uint16_t>(text);
    case Kind::Number32: return bigEndian<std::uint32_t>(text);
    case Kind::Text: break;
    }
    return text.empty() ? std::nullopt : std::optional(std::string(text));
}

void take(std::string_view Option::*name, std::string_view key, std::string_view value, DHCPLease& lease) {
    for (const Option& option : kOptions) {
        if (option.*name == key) {
            if (std::optional<std::string> bytes = encoded(option.kind, value); bytes.has_value()) {
                lease.options.insert_or_assign(option.code, *std::move(bytes));
            }
            return;
        }
    }
}

} // namespace

DHCPLease networkManagerLease(std::span<const std::pair<std::string, std::string>> options) {
    DHCPLease lease;
    std::optional<std::int64_t> expiry;
    std::optional<std::uint32_t> duration;
    for (const auto& [key, value] : options) {
        take(&Option::networkManager, key, value, lease);
        if (key == "expiry") {
            expiry = number<std::int64_t>(value);
        } else if (key == "dhcp_lease_time") {
            duration = number<std::uint32_t>(value);
        }
    }
    if (expiry.has_value() && duration.has_value() && *expiry >= *duration) {
        lease.start = *expiry - *duration;
    }
    return lease;
}

DHCPLease networkdLease(std::string_view text) {
    DHCPLease lease;
    for (const auto& [key, value] : assignments(text)) {
        take(&Option::networkd, key, value, lease);
    }
    return lease;
}

} // namespace qk::platform::parse
