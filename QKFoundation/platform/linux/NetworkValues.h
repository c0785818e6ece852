// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkService.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"
#include "QKFoundation/platform/values/NSArray.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <optional>
#include <string>

/// Facts of the network as the dictionaries of the dynamic store. Nothing where there would be nothing in one. Any
/// thread.
namespace qk::platform::values {

/// The way out of a link.
struct Router {
    std::string address;
    std::optional<std::string> hardwareAddress; ///< nothing while it is not known
};

/// A link's addresses of one family.
struct AddressValues {
    NSArray texts;
    NSArray lengths;    ///< beside each of them its subnet mask as a text, of IPv6 the length of its prefix
    NSArray broadcasts; ///< of those that have one
};
[[nodiscard]] AddressValues addressValues(const NetworkLink& link, AddressFamily family,
                                          const NetworkSnapshot& snapshot);

/// Addresses, SubnetMasks, and BroadcastAddresses of those addresses that have one. Nothing without addresses; so are
/// the following.
[[nodiscard]] std::optional<NSDictionary> interfaceIPv4(const AddressValues& addresses);

/// Addresses, PrefixLength.
[[nodiscard]] std::optional<NSDictionary> interfaceIPv6(const AddressValues& addresses);

/// Addresses, SubnetMasks; with a router Router and, as soon as its hardware address is known, NetworkSignature.
[[nodiscard]] std::optional<NSDictionary> serviceIPv4(const AddressValues& addresses,
                                                      const std::optional<Router>& router);

/// Likewise with PrefixLength.
[[nodiscard]] std::optional<NSDictionary> serviceIPv6(const AddressValues& addresses,
                                                      const std::optional<Router>& router);

/// The gateway of the best default route through the link; nothing without one.
[[nodiscard]] std::optional<Router> router(const NetworkLink& link, AddressFamily family,
                                           const NetworkSnapshot& snapshot);

/// Active.
[[nodiscard]] NSDictionary link(const NetworkLink& link);

/// "Power Status", SSID_STR; nothing for a link that is not wireless.
[[nodiscard]] std::optional<NSDictionary> airPort(const NetworkLink& link, const NetworkSnapshot& snapshot);

/// ServerAddresses, DomainName, SearchDomains, each where there is one.
[[nodiscard]] std::optional<NSDictionary> dns(const NameServers& nameServers);

/// "Option_<number>" with the option's bytes, LeaseStartTime.
[[nodiscard]] std::optional<NSDictionary> dhcp(const parse::DHCPLease& lease);

/// DeviceName, Type, Hardware, UserDefinedName of a service's interface, each where it is known.
[[nodiscard]] NSDictionary interfaceSetup(const NetworkService& service);

/// What people call interfaces of the service's type, else the interface's name.
[[nodiscard]] NSString displayName(const NetworkService& service);

} // namespace qk::platform::values
