// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkManager.h"
#include "QKFoundation/platform/linux/NetworkService.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

namespace qk::platform {

/// The name servers of links by their index, as systemd-resolved has them.
using LinkNameServers = std::map<std::int32_t, NameServers>;

/// What services on the system bus tell of the network; those that do not run are not started. Threads: any, at the
/// same time.
class NetworkBus {
public:
    NetworkBus() = default;
    NetworkBus(const NetworkBus&) = delete;
    NetworkBus& operator=(const NetworkBus&) = delete;
    virtual ~NetworkBus() = default;

    /// Nothing when NetworkManager does not run, or does not answer in time and as a whole.
    [[nodiscard]] virtual std::optional<networkmanager::Facts> networkManager() = 0;

    /// Nothing when systemd-resolved does not run, or does not answer in time.
    [[nodiscard]] virtual std::optional<LinkNameServers> resolved() = 0;
};

/// The system bus: one connection, made when something is asked, and `limit` for all that is asked of it. Never null;
/// in a build without libsystemd it knows nothing.
[[nodiscard]] std::unique_ptr<NetworkBus>
makeSystemNetworkBus(std::chrono::milliseconds limit = std::chrono::seconds(2));

} // namespace qk::platform
