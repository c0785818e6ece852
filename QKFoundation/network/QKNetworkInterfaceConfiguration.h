// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterfaceAirPortConfiguration.h"
#include "QKFoundation/network/QKNetworkInterfaceDNSConfiguration.h"
#include "QKFoundation/network/QKNetworkInterfaceIPv4Configuration.h"
#include "QKFoundation/network/QKNetworkInterfaceIPv6Configuration.h"
#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"

#include <memory>

namespace qk {

/// The protocol `QKNetworkInterfaceConfiguration`: how an interface is configured, a view per protocol. Threads: may be
/// read anywhere.
class QK_EXPORT QKNetworkInterfaceConfiguration : public NSObject {
public:
    ~QKNetworkInterfaceConfiguration() override;

    /// What the protocol declares, by name.
    [[nodiscard]] static const ProtocolDescription& describedProtocol();

    /// `ipv4Config`. Null when the interface has no IPv4 state.
    [[nodiscard]] virtual const std::shared_ptr<QKNetworkInterfaceIPv4Configuration>& ipv4Config() const = 0;

    /// `ipv6Config`. Null when the interface has no IPv6 state.
    [[nodiscard]] virtual const std::shared_ptr<QKNetworkInterfaceIPv6Configuration>& ipv6Config() const = 0;

    /// `dnsConfig`. Null when the service has no name servers of its own.
    [[nodiscard]] virtual const std::shared_ptr<QKNetworkInterfaceDNSConfiguration>& dnsConfig() const = 0;

    /// `airPortConfig`. Null when the interface is not wireless.
    [[nodiscard]] virtual const std::shared_ptr<QKNetworkInterfaceAirPortConfiguration>& airPortConfig() const = 0;
};

} // namespace qk
