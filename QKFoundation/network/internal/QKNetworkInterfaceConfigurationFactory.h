// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterfaceConfiguration.h"
#include "QKFoundation/network/internal/QKSCDynamicStore.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/services/Services.h"

#include <memory>

namespace qk {

/// `QKNetworkInterfaceConfigurationFactory`: reads configurations from the dynamic store. Threads: any, at the same
/// time.
class QKNetworkInterfaceConfigurationFactory final : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `configurationFactory`. A new factory each time.
    [[nodiscard]] static std::shared_ptr<QKNetworkInterfaceConfigurationFactory>
    configurationFactory(const platform::Services& services);

    /// `init`. With a reader of the store of its own.
    [[nodiscard]] static std::shared_ptr<QKNetworkInterfaceConfigurationFactory>
    init(const platform::Services& services);

    /// `networkConfigurationForInterfaceName:serviceId:`. The four views, those that there are; never null.
    [[nodiscard]] std::shared_ptr<QKNetworkInterfaceConfiguration>
    networkConfigurationForInterfaceName(const NSString& interfaceName, const NSString& serviceId) const;

    /// `ipv4ConfigForInterfaceName:serviceId:`. Null when the interface has no IPv4 state; the service is not asked
    /// then.
    [[nodiscard]] std::shared_ptr<QKNetworkInterfaceIPv4Configuration>
    ipv4ConfigForInterfaceName(const NSString& interfaceName, const NSString& serviceId) const;

    /// `ipv6ConfigForInterfaceName:serviceId:`. As above, of IPv6.
    [[nodiscard]] std::shared_ptr<QKNetworkInterfaceIPv6Configuration>
    ipv6ConfigForInterfaceName(const NSString& interfaceName, const NSString& serviceId) const;

    /// `dnsConfigForServiceId:`. Null when the service has no DNS state.
    [[nodiscard]] std::shared_ptr<QKNetworkInterfaceDNSConfiguration>
    dnsConfigForServiceId(const NSString& serviceId) const;

    /// `airPortConfigForInterfaceName:`. Null when the interface has no AirPort state.
    [[nodiscard]] std::shared_ptr<QKNetworkInterfaceAirPortConfiguration>
    airPortConfigForInterfaceName(const NSString& interfaceName) const;

    /// `dynamicStore`. Never null.
    [[nodiscard]] const std::shared_ptr<QKSCDynamicStore>& dynamicStore() const noexcept { return dynamicStore_; }

private:
    friend class internal::ObjectMaker;

    explicit QKNetworkInterfaceConfigurationFactory(const platform::Services& services)
        : dynamicStore_(QKSCDynamicStore::init(services)) {}

    std::shared_ptr<QKSCDynamicStore> dynamicStore_;
};

} // namespace qk
