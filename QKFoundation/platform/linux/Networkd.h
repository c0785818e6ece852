// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkService.h"

#include <optional>
#include <vector>

/// The services that systemd-networkd configures, from what it writes below /run/systemd/netif. Any thread.
namespace qk::platform::networkd {

/// By index of their links. None where networkd does not run, and none for links that it leaves alone.
[[nodiscard]] std::vector<NetworkService> services(const NetworkSnapshot& snapshot);

/// What the DHCP server granted to that link; nothing when it has no lease.
[[nodiscard]] std::optional<parse::DHCPLease> lease(const NetworkLink& link, const LinuxRoot& root);

} // namespace qk::platform::networkd
