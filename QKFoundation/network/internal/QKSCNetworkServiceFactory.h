// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/internal/QKSCNetworkService.h"
#include "QKFoundation/platform/services/Services.h"

#include <memory>
#include <vector>

namespace qk {

/// `QKSCNetworkServiceFactory`: the network services of a machine, read afresh by every call. Threads: any.
class QKSCNetworkServiceFactory {
public:
    QKSCNetworkServiceFactory() = delete;

    using NetworkServices = std::vector<std::shared_ptr<QKSCNetworkService>>;

    /// `networkServices`. The services that both the network preferences list and the dynamic store holds as
    /// configured, in the order of the preferences; empty when either cannot be had.
    [[nodiscard]] static NetworkServices networkServices(const platform::Services& services);

    /// `enabledNetworkServices`. Those of them that are enabled.
    [[nodiscard]] static NetworkServices enabledNetworkServices(const platform::Services& services);

    /// `configuredNetworkServiceIds`. The identifiers that the dynamic store holds as configured.
    [[nodiscard]] static std::vector<NSString> configuredNetworkServiceIds(const platform::Services& services);
};

} // namespace qk
