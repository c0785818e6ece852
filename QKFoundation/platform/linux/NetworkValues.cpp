// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkValues.h"

#include "QKFoundation/platform/linux/SchemaTexts.h"

#include <linux/if.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace qk::platform::values {
namespace {

using Entries = std::vector<NSDictionary::Entry>;

std::optional<NSDictionary> dictionary(Entries entries) {
    return entries.empty() ? std::nullopt : std::optional(NSDictionary(std::move(entries)));
}

// ASCII alone, which needs no decoding.
NSString textOf(const InternetAddress& address) {
    const std::string text = address.text();
    std::array<char16_t, 64> units; // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
    const auto end = std::copy_n(text.begin(), std::min(text.size(), units.size()), units.begin());
    return NSString(std::u16string_view(units.begin(), end));
}

// The mask of so many bits, each made once.
const NSString& subnetMask(std::uint8_t prefixLength) {
    static const std::array<NSString, 33>& masks = *[] {
        auto* const all = new std::array<NSString, 33>;
        for (unsigned length = 0; length < all->size(); ++length) {
            InternetAddress mask;
            for (unsigned bit = 0; bit < length; ++bit) {
                mask.bytes[bit / 8] = static_cast<std::uint8_t>(mask.bytes[bit / 8] | (0x80U >> (bit % 8)));
            }
            (*all)[length] = textOf(mask);
        }
        return all;
    }();
    return masks[prefixLength < masks.size() ? prefixLength : masks.size() - 1];
}

} // namespace

AddressValues addressValues(const NetworkLink& link, AddressFamily family, const NetworkSnapshot& snapshot) {
    std::vector<Value> texts;
    std::vector<Value> lengths;
    std::vector<Value> broadcasts;
    for (const NetworkAddress& address : snapshot.addresses(link.index)) {
        if (address.address.family != family) {
            continue;
        }
        texts.emplace_back(textOf(address.address));
        if (family == AddressFamily::IPv4) {
            lengths.emplace_back(subnetMask(address.prefixLength));
        } else {
            lengths.emplace_back(NSNumber(address.prefixLength));
        }
        if (address.broadcast.has_value()) {
            broadcasts.emplace_back(textOf(*address.broadcast));
        }
    }
    return {NSArray(std::move(texts)), NSArray(std::move(lengths)), NSArray(std::move(broadcasts))};
}

namespace {

std::optional<NSDictionary> serviceState(const AddressValues& addresses, AddressFamily family,
                                         const std::optional<Router>& router) {
    const SchemaTexts& texts = schemaTexts();
    if (addresses.texts.count() == 0) {
        return std::nullopt;
    }
    const bool isIPv4 = family == AddressFamily::IPv4;
    Entries entries;
    entries.reserve(4);
    entries.emplace_back(texts.addresses, addresses.texts);
    if (router.has_value() && router->hardwareAddress.has_value()) {
        const std::string prefix = isIPv4 ? "IPv4." : "IPv6.";
        entries.emplace_back(texts.networkSignature,
                             NSString::fromUTF8Lossy(prefix + "Router=" + router->address + ";" + prefix +
                                                     "RouterHardwareAddress=" + *router->hardwareAddress));
    }
    if (!isIPv4) {
        entries.emplace_back(texts.prefixLength, addresses.lengths);
    }
    if (router.has_value()) {
        entries.emplace_back(texts.router, NSString::fromUTF8Lossy(router->address));
    }
    if (isIPv4) {
        entries.emplace_back(texts.subnetMasks, addresses.lengths);
    }
    return NSDictionary(std::move(entries));
}

} // namespace

std::optional<NSDictionary> interfaceIPv4(const AddressValues& addresses) {
    const SchemaTexts& texts = schemaTexts();
    if (addresses.texts.count() == 0) {
        return std::nullopt;
    }
    Entries entries;
    entries.reserve(3);
    entries.emplace_back(texts.addresses, addresses.texts);
    if (addresses.broadcasts.count() > 0) {
        entries.emplace_back(texts.broadcastAddresses, addresses.broadcasts);
    }
    entries.emplace_back(texts.subnetMasks, addresses.lengths);
    return NSDictionary(std::move(entries));
}

std::optional<NSDictionary> interfaceIPv6(const AddressValues& addresses) {
    return serviceState(addresses, AddressFamily::IPv6, std::nullopt);
}

std::optional<NSDictionary> serviceIPv4(const AddressValues& addresses, const std::optional<Router>& router) {
    return serviceState(addresses, AddressFamily::IPv4, router);
}

std::optional<NSDictionary> serviceIPv6(const AddressValues& addresses, const std::optional<Router>& router) {
    return serviceState(addresses, AddressFamily::IPv6, router);
}

std::optional<Router> router(const NetworkLink& link, AddressFamily family, const NetworkSnapshot& snapshot) {
    const NetworkRoute* route = snapshot.defaultRoute(link.index, family);
    if (route == nullptr || !route->gateway.has_value()) {
        return std::nullopt;
    }
    return Router{route->gateway->text(), snapshot.neighbour(link.index, *route->gateway)};
}

NSDictionary link(const NetworkLink& link) {
    static const NSDictionary& isActive = *new NSDictionary{{schemaTexts().active, true}};
    static const NSDictionary& isNot = *new NSDictionary{{schemaTexts().active, false}};
    return (link.flags & IFF_LOWER_UP) != 0 ? isActive : isNot;
}

std::optional<NSDictionary> airPort(const NetworkLink& link, const NetworkSnapshot& snapshot) {
    const std::optional<WirelessFacts> facts = snapshot.wireless(link);
    if (!facts.has_value()) {
        return std::nullopt;
    }
    const SchemaTexts& texts = schemaTexts();
    Entries entries{{texts.powerStatus, facts->powered}};
    if (facts->ssid.has_value()) {
        entries.emplace_back(texts.ssid, NSString::fromUTF8Lossy(*facts->ssid));
    }
    return NSDictionary(std::move(entries));
}

std::optional<NSDictionary> dns(const NameServers& nameServers) {
    const SchemaTexts& texts = schemaTexts();
    const auto array = [](const std::vector<std::string>& strings) {
        std::vector<Value> values;
        values.reserve(strings.size());
        for (const std::string& string : strings) {
            values.emplace_back(NSString::fromUTF8Lossy(string));
        }
        return NSArray(std::move(values));
    };
    Entries entries;
    if (!nameServers.domains.empty()) {
        entries.emplace_back(texts.domainName, NSString::fromUTF8Lossy(nameServers.domains.front()));
        entries.emplace_back(texts.searchDomains, array(nameServers.domains));
    }
    if (!nameServers.addresses.empty()) {
        entries.emplace_back(texts.serverAddresses, array(nameServers.addresses));
    }
    return dictionary(std::move(entries));
}

std::optional<NSDictionary> dhcp(const parse::DHCPLease& lease) {
    Entries entries;
    if (lease.start.has_value()) {
        entries.emplace_back("LeaseStartTime",
                             NSDate::dateWithTimeIntervalSince1970(static_cast<double>(*lease.start)));
    }
    for (const auto& [code, bytes] : lease.options) {
        entries.emplace_back(NSString("Option_") + NSString::fromInteger(code), NSData(bytes));
    }
    return dictionary(std::move(entries));
}

NSDictionary interfaceSetup(const NetworkService& service) {
    const SchemaTexts& texts = schemaTexts();
    Entries entries;
    if (!service.interfaceName.isEmpty()) {
        entries.emplace_back(texts.deviceName, service.interfaceName);
    }
    if (service.type != nullptr) {
        // A wireless interface is an Ethernet with other hardware.
        const bool isWireless = service.type == &texts.typeIEEE80211;
        const bool isEthernet = isWireless || service.type == &texts.typeEthernet;
        if (isEthernet) {
            entries.emplace_back(texts.hardware, isWireless ? NSString(kSCEntNetAirPort) : texts.typeEthernet);
        }
        entries.emplace_back(texts.type, isEthernet ? texts.typeEthernet : *service.type);
    }
    entries.emplace_back(texts.userDefinedName, displayName(service));
    return NSDictionary(std::move(entries));
}

NSString displayName(const NetworkService& service) {
    if (service.type == nullptr) {
        return service.interfaceName;
    }
    static const NSString& wireless = *new NSString("Wi-Fi");
    return service.type == &schemaTexts().typeIEEE80211 ? wireless : *service.type;
}

} // namespace qk::platform::values
