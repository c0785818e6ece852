// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterface.h"
#include "QKFoundation/platform/values/NSArray.h"

#include "tools/qkinfo/Facts.h"

#include <optional>
#include <string_view>

/// What the library says about the network, in the words that people and programs read.
namespace qk::info {

/// "Ethernet", "Wi-Fi"; "not known" for a kind that the library has no name for.
[[nodiscard]] std::string_view interfaceTypeWord(QKNetworkInterfaceType type);

/// "DHCP", "manual". A method that the library has no number for is told as the configuration writes it.
[[nodiscard]] std::optional<Content> methodContent(const QKNetworkInterfaceIPv4Configuration& configuration);
[[nodiscard]] std::optional<Content> methodContent(const QKNetworkInterfaceIPv6Configuration& configuration);

/// The texts among `values`; those that are blank are left out.
[[nodiscard]] Lines linesOf(const NSArray& values);

/// "192.0.2.10/24" for each address with its mask. A mask that is no prefix is told as it is, "192.0.2.10 mask
/// 255.0.255.0"; an address without a mask stands alone.
[[nodiscard]] Lines addressesWithMasks(const NSArray& addresses, const NSArray& masks);

/// "2001:db8::10/64" for each address with the length of its prefix; one without stands alone.
[[nodiscard]] Lines addressesWithPrefixes(const NSArray& addresses, const NSArray& lengths);

} // namespace qk::info
