// SPDX-License-Identifier: Apache-2.0
// Stands in for NetworkBus.cpp in a build without libsystemd.
#include "QKFoundation/platform/linux/NetworkBus.h"

namespace qk::platform {
namespace {

class NoNetworkBus final : public NetworkBus {
public:
    [[nodiscard]] std::optional<networkmanager::Facts> networkManager() override { return std::nullopt; }
    [[nodiscard]] std::optional<LinkNameServers> resolved() override { return std::nullopt; }
};

} // namespace

std::unique_ptr<NetworkBus> makeSystemNetworkBus(std::chrono::milliseconds /*limit*/) {
    return std::make_unique<NoNetworkBus>();
}

} // namespace qk::platform
