// SPDX-License-Identifier: Apache-2.0
// What the answers of NetworkManager say.
#include "QKFoundation/platform/linux/NetworkManager.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string_view>
#include <utility>

namespace qk::platform::networkmanager {
namespace {

const BusDictionary& group(const BusDictionary& dictionary, std::string_view key) {
    static const BusDictionary& none = *new BusDictionary;
    const auto* found = find<BusDictionary>(dictionary, key);
    return found != nullptr ? *found : none;
}

std::string text(const BusDictionary& dictionary, std::string_view key) {
    return findOr<std::string>(dictionary, key, {});
}

constexpr std::string_view kActive = "org.freedesktop.NetworkManager.Connection.Active";
constexpr std::string_view kConnection = "org.freedesktop.NetworkManager.Settings.Connection";
constexpr std::string_view kDevice = "org.freedesktop.NetworkManager.Device";
constexpr std::string_view kDHCP4 = "org.freedesktop.NetworkManager.DHCP4Config";
constexpr std::string_view kIP4 = "org.freedesktop.NetworkManager.IP4Config";
constexpr std::string_view kIP6 = "org.freedesktop.NetworkManager.IP6Config";

// The interface of the object whose path is the property `key` of `properties`.
const BusDictionary& referred(const BusDictionary& objects, const BusDictionary& properties, std::string_view key,
                              std::string_view interface) {
    return group(group(objects, text(properties, key)), interface);
}

void appendNew(std::vector<std::string>& list, std::string_view text) {
    if (!text.empty() && std::ranges::find(list, text) == list.end()) {
        list.emplace_back(text);
    }
}

void takeDomains(const BusDictionary& config, std::string_view key, NameServers& nameServers) {
    if (const auto* domains = find<BusList>(config, key); domains != nullptr) {
        for (const BusValue& domain : *domains) {
            // "~" marks a domain whose names are asked for here but that is not searched in.
            if (const auto* name = domain.as<std::string>(); name != nullptr && !name->starts_with('~')) {
                appendNew(nameServers.domains, *name);
            }
        }
    }
}

// Newer versions write "NameserverData"; "Nameservers" of IPv6 holds the addresses' bytes, of IPv4 numbers as they lie
// in memory.
std::optional<std::string> serverText(const BusValue& server) {
    if (const auto* data = server.as<BusDictionary>(); data != nullptr) {
        return text(*data, "address");
    }
    InternetAddress address;
    if (const auto* bytes = server.as<std::string>(); bytes != nullptr && bytes->size() == address.bytes.size()) {
        address.family = AddressFamily::IPv6;
        std::ranges::transform(*bytes, address.bytes.begin(),
                               [](char byte) { return static_cast<std::uint8_t>(byte); });
        return address.text();
    }
    if (const auto* number = server.as<std::int64_t>(); number != nullptr) {
        const auto inMemory = std::bit_cast<std::array<std::uint8_t, 4>>(static_cast<std::uint32_t>(*number));
        std::ranges::copy(inMemory, address.bytes.begin());
        return address.text();
    }
    return std::nullopt;
}

void takeNameServers(const BusDictionary& config, NameServers& nameServers) {
    const auto* servers = find<BusList>(config, "NameserverData");
    if (servers == nullptr) {
        servers = find<BusList>(config, "Nameservers");
    }
    if (servers != nullptr) {
        for (const BusValue& server : *servers) {
            appendNew(nameServers.addresses, serverText(server).value_or(std::string()));
        }
    }
    takeDomains(config, "Domains", nameServers);
    takeDomains(config, "Searches", nameServers);
}

std::shared_ptr<const parse::DHCPLease> lease(const BusDictionary& config) {
    const BusDictionary& told = group(config, "Options");
    if (told.empty()) {
        return nullptr;
    }
    std::vector<std::pair<std::string, std::string>> options;
    for (const BusEntry& option : told) {
        if (const auto* value = option.value.as<std::string>(); value != nullptr) {
            options.emplace_back(option.key, *value);
        }
    }
    return std::make_shared<const parse::DHCPLease>(parse::networkManagerLease(options));
}

std::string interfaceOf(const BusDictionary& objects, const BusDictionary& active) {
    const auto* devices = find<BusList>(active, "Devices");
    const auto* path = devices != nullptr && !devices->empty() ? devices->front().as<std::string>() : nullptr;
    if (path == nullptr || findOr(active, "Vpn", false)) {
        return {};
    }
    const BusDictionary& device = group(group(objects, *path), kDevice);
    std::string carrier = text(device, "IpInterface");
    return carrier.empty() ? text(device, "Interface") : carrier;
}

ActiveConnection activeConnection(const BusDictionary& objects, const BusDictionary& properties) {
    constexpr std::int64_t kActivating = 1;
    constexpr std::int64_t kActivated = 2;
    const std::int64_t state = findOr<std::int64_t>(properties, "State", 0);
    ActiveConnection result;
    result.uuid = text(properties, "Uuid");
    result.isActive = state == kActivating || state == kActivated;
    result.interfaceName = interfaceOf(objects, properties);
    takeNameServers(referred(objects, properties, "Ip4Config", kIP4), result.nameServers);
    takeNameServers(referred(objects, properties, "Ip6Config", kIP6), result.nameServers);
    result.lease = lease(referred(objects, properties, "Dhcp4Config", kDHCP4));
    return result;
}

} // namespace

std::optional<Connection> connection(const BusDictionary& settings) {
    const BusDictionary& common = group(settings, "connection");
    Connection result;
    result.uuid = text(common, "uuid");
    result.type = text(common, "type");
    if (result.uuid.empty() || result.type.empty()) {
        return std::nullopt;
    }
    result.name = text(common, "id");
    result.interfaceName = text(common, "interface-name");
    result.autoconnects = findOr(common, "autoconnect", true);
    result.priority = findOr<std::int64_t>(common, "autoconnect-priority", 0);
    result.vpnService = text(group(settings, "vpn"), "service-type");
    result.ipv4Method = text(group(settings, "ipv4"), "method");
    result.ipv6Method = text(group(settings, "ipv6"), "method");
    return result;
}

std::vector<ActiveConnection> activeConnections(const BusDictionary& objects) {
    std::vector<ActiveConnection> result;
    for (const BusEntry& object : objects) {
        const auto* interfaces = object.value.as<BusDictionary>();
        const auto* properties = interfaces != nullptr ? find<BusDictionary>(*interfaces, kActive) : nullptr;
        if (properties != nullptr) {
            result.push_back(activeConnection(objects, *properties));
        }
    }
    return result;
}

std::vector<std::string> connectionPaths(const BusDictionary& objects) {
    std::vector<std::string> result;
    for (const BusEntry& object : objects) {
        const auto* interfaces = object.value.as<BusDictionary>();
        if (interfaces != nullptr && find<BusDictionary>(*interfaces, kConnection) != nullptr) {
            result.push_back(object.key);
        }
    }
    return result;
}

} // namespace qk::platform::networkmanager
