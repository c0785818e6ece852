// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What systemd-networkd keeps below /run/systemd/netif, and its settings (systemd.network(5)).
namespace qk::platform::parse {

/// A link's file of /run/systemd/netif/links.
struct NetworkdLink {
    std::string networkFile;          ///< NETWORK_FILE, an absolute path
    std::vector<std::string> dropIns; ///< NETWORK_FILE_DROPINS, in the order in which they count
    std::vector<std::string> nameServers;
    std::vector<std::string> domains;

    [[nodiscard]] friend bool operator==(const NetworkdLink&, const NetworkdLink&) = default;
};

/// Nothing for a link that networkd does not manage: ADMIN_STATE is "unmanaged" or missing, or there is no
/// NETWORK_FILE.
[[nodiscard]] std::optional<NetworkdLink> networkdLink(std::string_view state);

/// How a .network file wants its links to come by their addresses.
struct NetworkSettings {
    bool dhcp4 = false;
    bool dhcp6 = false;
    bool linkLocal4 = false;
    bool hasAddress4 = false; ///< an address is written down
    bool hasAddress6 = false;
    std::optional<bool> acceptsRouterAdvertisements; ///< nothing: not said

    [[nodiscard]] friend bool operator==(const NetworkSettings&, const NetworkSettings&) = default;
};

/// Applies what `text`, a .network file or one of its drop-ins, says. What it does not say stays.
void applyNetworkFile(std::string_view text, NetworkSettings& settings);

} // namespace qk::platform::parse
