// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LatestPlace.h"
#include "QKFoundation/platform/linux/NetworkBus.h"
#include "QKFoundation/platform/linux/NetworkService.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"
#include "QKFoundation/platform/linux/Once.h"

#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qk::platform {

/// The configured services of the machine: NetworkManager's, then systemd-networkd's of links that the former says
/// nothing about, then, as the kernel has them, those of links that nobody says anything about. Read when they are
/// first asked for; from then on they stay as they were. Threads: any, at the same time.
class NetworkServices {
public:
    /// Asks the system bus where `snapshot` is one of this host.
    explicit NetworkServices(std::shared_ptr<const NetworkSnapshot> snapshot);
    NetworkServices(std::shared_ptr<const NetworkSnapshot> snapshot, std::unique_ptr<NetworkBus> bus);
    NetworkServices(const NetworkServices&) = delete;
    NetworkServices& operator=(const NetworkServices&) = delete;
    ~NetworkServices() = default;

    [[nodiscard]] const NetworkSnapshot& snapshot() const noexcept { return *snapshot_; }

    /// In the order of who configures them.
    [[nodiscard]] const std::vector<NetworkService>& all() const;

    /// By index of their links; those without a link last.
    [[nodiscard]] std::vector<const NetworkService*> byLink() const;

    /// Null when there is none.
    [[nodiscard]] const NetworkService* service(std::u16string_view id) const;

    /// The service in use whose link the best default route of that family takes; null without one.
    [[nodiscard]] const NetworkService* primary(AddressFamily family) const;

    /// Where names are asked for through the service's link: as its manager, else systemd-resolved, else, for the
    /// service with the default route, /etc/resolv.conf tells.
    [[nodiscard]] NameServers nameServers(const NetworkService& service) const;

    /// Where the whole machine asks for names: as the service with the default route does, else /etc/resolv.conf.
    [[nodiscard]] NameServers globalNameServers() const;

    /// Whether the best default route, of IPv4 where there is one, goes through this service.
    [[nodiscard]] bool isPrimary(const NetworkService& service) const;

    /// What a DHCP server granted; null when nobody tells of a lease.
    [[nodiscard]] std::shared_ptr<const parse::DHCPLease> lease(const NetworkService& service) const;

private:
    void read() const;
    [[nodiscard]] const NetworkRoute* primaryRoute() const;
    [[nodiscard]] const LinkNameServers& resolved() const;
    [[nodiscard]] const NameServers& resolvConf() const;

    std::shared_ptr<const NetworkSnapshot> snapshot_;
    std::unique_ptr<NetworkBus> bus_; // null: there is none to ask
    mutable Once reading_;
    mutable std::vector<NetworkService> all_;
    mutable LatestPlace latest_;
    mutable Once indexing_;
    mutable std::unordered_map<std::u16string_view, const NetworkService*> byID_;
    mutable Once askingResolved_;
    mutable LinkNameServers resolved_;
    mutable Once readingResolvConf_;
    mutable NameServers resolvConf_;
};

} // namespace qk::platform
