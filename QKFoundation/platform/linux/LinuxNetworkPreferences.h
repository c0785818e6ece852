// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkServices.h"
#include "QKFoundation/platform/services/SystemConfiguration.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace qk::platform {

/// The network preferences over one look at the network. Threads: any, at the same time.
class LinuxNetworkPreferences final : public NetworkPreferences {
public:
    explicit LinuxNetworkPreferences(std::shared_ptr<const NetworkServices> services)
        : services_(std::move(services)) {}

    [[nodiscard]] std::optional<std::vector<SCNetworkServiceRef>> copyAllServices() const override;

private:
    std::shared_ptr<const NetworkServices> services_;
};

/// The active medium as the platform writes it: "1000baseT" with "full-duplex". Nothing while no speed is known.
[[nodiscard]] std::optional<NSDictionary> mediumDictionary(const MediumFacts& medium);

/// "52:54:00:12:34:56"; "" for no address, for one that is all zero, and for the internet address that a tunnel has
/// instead.
[[nodiscard]] NSString hardwareAddressText(const std::vector<std::uint8_t>& address);

} // namespace qk::platform
