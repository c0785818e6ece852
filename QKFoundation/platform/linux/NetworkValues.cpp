// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkValues.h"

#include "QKFoundation/platform/linux/SchemaTexts.h"
#include "QKFoundation/platform/values/Collections.h"
#include "QKFoundation/platform/values/NSStringStorage.h"

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

using Values = qk::internal::CollectionBuilder<Value>;
using Entries = qk::internal::CollectionBuilder<NSDictionary::Entry>;

std::optional<NSDictionary> dictionary(Entries&& entries) {
    return entries.count() == 0 ? std::nullopt : std::optional(NSDictionary(std::move(entries)));
}

// ASCII alone, which needs no decoding.
NSString textOf(const InternetAddress& address) {
    InternetAddress::Room room;
    const std::string_view text = address.text(room);
    qk::internal::StorageBuilder builder(text.size());
    std::ranges::copy(text, builder.units());
    return NSString::adopting(builder.finish(text.size()));
}

// The mask of so many bits.
NSString subnetMask(std::size_t prefixLength) {
    InternetAddress mask;
    for (std::size_t bit = 0; bit < prefixLength; ++bit) {
        mask.bytes[bit / 8] = static_cast<std::uint8_t>(mask.bytes[bit / 8] | (0x80U >> (bit % 8)));
    }
    return textOf(mask);
}

// What stands beside an address with so long a prefix, as the array that it mostly is: of one. Each is made once.
const NSArray& lengthValues(AddressFamily family, std::uint8_t prefixLength) {
    static const auto& masks = *[] {
        auto* const all = new std::array<NSArray, 33>;
        for (std::size_t length = 0; length < all->size(); ++length) {
            (*all)[length] = NSArray{subnetMask(length)};
        }
        return all;
    }();
    static const auto& numbers = *[] {
        auto* const all = new std::array<NSArray, 256>;
        for (std::size_t length = 0; length < all->size(); ++length) {
            (*all)[length] = NSArray{length};
        }
        return all;
    }();
    return family == AddressFamily::IPv6 ? numbers[prefixLength]
                                         : masks[std::min<std::size_t>(prefixLength, masks.size() - 1)];
}

} // namespace

AddressValues addressValues(const NetworkLink& link, AddressFamily family, const NetworkSnapshot& snapshot) {
    const auto all = snapshot.addresses(link.index);
    const auto isWanted = [family](const NetworkAddress& each) { return each.address.family == family; };
    const auto hasBroadcast = [&](const NetworkAddress& each) { return isWanted(each) && each.broadcast.has_value(); };
    const auto count = static_cast<std::size_t>(std::ranges::count_if(all, isWanted));
    Values texts(count);
    Values lengths(count > 1 ? count : 0);
    Values broadcasts(static_cast<std::size_t>(std::ranges::count_if(all, hasBroadcast)));
    const NSArray* length = nullptr;
    for (const NetworkAddress& address : all) {
        if (!isWanted(address)) {
            continue;
        }
        texts.add(textOf(address.address));
        length = &lengthValues(family, address.prefixLength);
        if (count > 1) {
            lengths.add((*length)[0]);
        }
        if (address.broadcast.has_value()) {
            broadcasts.add(textOf(*address.broadcast));
        }
    }
    return {NSArray(texts.finish()), count == 1 ? *length : NSArray(lengths.finish()), NSArray(broadcasts.finish())};
}

namespace {

std::optional<NSDictionary> serviceState(const AddressValues& addresses, AddressFamily family,
                                         const std::optional<Router>& router) {
    const SchemaTexts& texts = schemaTexts();
    if (addresses.texts.count() == 0) {
        return std::nullopt;
    }
    const bool isIPv4 = family == AddressFamily::IPv4;
    Entries entries(router.has_value() ? 4 : 2);
    entries.add(texts.addresses, addresses.texts);
    if (router.has_value() && router->hardwareAddress.has_value()) {
        const std::string prefix = isIPv4 ? "IPv4." : "IPv6.";
        entries.add(texts.networkSignature,
                    NSString::fromUTF8Lossy(prefix + "Router=" + router->address + ";" + prefix +
                                            "RouterHardwareAddress=" + *router->hardwareAddress));
    }
    if (!isIPv4) {
        entries.add(texts.prefixLength, addresses.lengths);
    }
    if (router.has_value()) {
        entries.add(texts.router, NSString::fromUTF8Lossy(router->address));
    }
    if (isIPv4) {
        entries.add(texts.subnetMasks, addresses.lengths);
    }
    return NSDictionary(std::move(entries));
}

} // namespace

std::optional<NSDictionary> interfaceIPv4(const AddressValues& addresses) {
    const SchemaTexts& texts = schemaTexts();
    if (addresses.texts.count() == 0) {
        return std::nullopt;
    }
    Entries entries(3);
    entries.add(texts.addresses, addresses.texts);
    if (addresses.broadcasts.count() > 0) {
        entries.add(texts.broadcastAddresses, addresses.broadcasts);
    }
    entries.add(texts.subnetMasks, addresses.lengths);
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
    Entries entries(2);
    entries.add(texts.powerStatus, facts->powered);
    if (facts->ssid.has_value()) {
        entries.add(texts.ssid, NSString::fromUTF8Lossy(*facts->ssid));
    }
    return NSDictionary(std::move(entries));
}

std::optional<NSDictionary> dns(const NameServers& nameServers) {
    const SchemaTexts& texts = schemaTexts();
    const auto array = [](const std::vector<std::string>& strings) {
        Values values(strings.size());
        for (const std::string& string : strings) {
            values.add(NSString::fromUTF8Lossy(string));
        }
        return NSArray(values.finish());
    };
    if (nameServers.isEmpty()) {
        return std::nullopt;
    }
    Entries entries(3);
    if (!nameServers.domains.empty()) {
        entries.add(texts.domainName, NSString::fromUTF8Lossy(nameServers.domains.front()));
        entries.add(texts.searchDomains, array(nameServers.domains));
    }
    if (!nameServers.addresses.empty()) {
        entries.add(texts.serverAddresses, array(nameServers.addresses));
    }
    return NSDictionary(std::move(entries));
}

std::optional<NSDictionary> dhcp(const parse::DHCPLease& lease) {
    Entries entries(1 + lease.options.size());
    if (lease.start.has_value()) {
        entries.add("LeaseStartTime", NSDate::dateWithTimeIntervalSince1970(static_cast<double>(*lease.start)));
    }
    for (const auto& [code, bytes] : lease.options) {
        entries.add(NSString("Option_") + NSString::fromInteger(code), NSData(bytes));
    }
    return dictionary(std::move(entries));
}

NSDictionary interfaceSetup(const NetworkService& service) {
    const SchemaTexts& texts = schemaTexts();
    Entries entries(4);
    if (!service.interfaceName.isEmpty()) {
        entries.add(texts.deviceName, service.interfaceName);
    }
    if (service.type != nullptr) {
        // A wireless interface is an Ethernet with other hardware.
        const bool isWireless = service.type == &texts.typeIEEE80211;
        const bool isEthernet = isWireless || service.type == &texts.typeEthernet;
        if (isEthernet) {
            entries.add(texts.hardware, isWireless ? NSString(kSCEntNetAirPort) : texts.typeEthernet);
        }
        entries.add(texts.type, isEthernet ? texts.typeEthernet : *service.type);
    }
    entries.add(texts.userDefinedName, displayName(service));
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
