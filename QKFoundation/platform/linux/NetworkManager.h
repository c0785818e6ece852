// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/BusValues.h"
#include "QKFoundation/platform/linux/NetworkService.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What NetworkManager's answers mean; who asks it is `NetworkBus`. Any thread.
namespace qk::platform::networkmanager {

/// A connection's settings. Texts that they leave out are "".
struct Connection {
    std::string uuid;
    std::string name; ///< "id"
    std::string type; ///< "802-3-ethernet", "bridge", ...
    std::string interfaceName;
    std::string vpnService; ///< "service-type" of a VPN
    std::string ipv4Method; ///< "auto", "manual", ...
    std::string ipv6Method;
    bool autoconnects = true;
    std::int64_t priority = 0; ///< "autoconnect-priority"
};

/// A connection that is in use.
struct ActiveConnection {
    std::string uuid;
    bool isActive = false;     ///< it is being set up or has been; not on its way down
    std::string interfaceName; ///< that carries its addresses; "" for a VPN, whose devices are those below it
    NameServers nameServers;
    std::shared_ptr<const parse::DHCPLease> lease; ///< null when its addresses come from elsewhere
};

struct Facts {
    std::vector<Connection> connections;
    std::vector<ActiveConnection> active;
};

/// The connection that GetSettings describes: settings by the name of their group. Nothing without a UUID and a type.
[[nodiscard]] std::optional<Connection> connection(const BusDictionary& settings);

/// The connections in use among the objects that GetManagedObjects tells: by path, then by interface, then by property.
[[nodiscard]] std::vector<ActiveConnection> activeConnections(const BusDictionary& objects);

/// The paths of all connections among those objects.
[[nodiscard]] std::vector<std::string> connectionPaths(const BusDictionary& objects);

/// The services that the connections are: by falling priority, then by name. The loopback interface is none.
[[nodiscard]] std::vector<NetworkService> services(const Facts& facts, const NetworkSnapshot& snapshot);

} // namespace qk::platform::networkmanager
