// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkSnapshot.h"
#include "QKFoundation/platform/linux/parse/Leases.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qk::platform {

/// Where names are asked for.
struct NameServers {
    std::vector<std::string> addresses;
    std::vector<std::string> domains; ///< to search in; the first one is the connection's own

    [[nodiscard]] bool isEmpty() const noexcept { return addresses.empty() && domains.empty(); }
    friend bool operator==(const NameServers&, const NameServers&) = default;
};

/// A configured network service, and who configures it.
struct NetworkService {
    enum class Manager : std::uint8_t { Kernel, Networkd, NetworkManager };

    Manager manager = Manager::Kernel;
    bool isEnabled = false;
    bool isActive = false; ///< it is what configures its link at the moment
    NSString id;           ///< a UUID, its letters upper-case
    NSString name;
    NSString interfaceName;               ///< "" while it is not known
    const NetworkLink* link = nullptr;    ///< of the snapshot; null while there is none
    const NSString* type = nullptr;       ///< of `schemaTexts`; null: a type without a name
    const NSString* ipv4Method = nullptr; ///< of `schemaTexts`; null: this family is not configured
    const NSString* ipv6Method = nullptr;
    NameServers nameServers;                       ///< as the manager tells them
    std::shared_ptr<const parse::DHCPLease> lease; ///< as NetworkManager tells it
};

} // namespace qk::platform
