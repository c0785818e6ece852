// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKNetworkInterfaceConfigurationImpl.h"

#include "QKFoundation/network/internal/Descriptions.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

const ClassDescription& QKNetworkInterfaceConfigurationImpl::describedClass() {
    using Self = QKNetworkInterfaceConfigurationImpl;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKNetworkInterfaceConfigurationImpl", NSObject::describedClass())
            .protocol(describedProtocol())
            .property("ipv4Config", &Self::ipv4Config, &Self::setIpv4Config)
            .property("ipv6Config", &Self::ipv6Config, &Self::setIpv6Config)
            .property("dnsConfig", &Self::dnsConfig, &Self::setDnsConfig)
            .property("airPortConfig", &Self::airPortConfig, &Self::setAirPortConfig)
            .build();
    return description;
}

const ClassDescription& QKNetworkInterfaceConfigurationImpl::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKNetworkInterfaceConfigurationImpl>
QKNetworkInterfaceConfigurationImpl::initWithIPv4Config(IPv4 ipv4Config, IPv6 ipv6Config, DNS dnsConfig,
                                                        AirPort airPortConfig) {
    return internal::ObjectMaker::make<QKNetworkInterfaceConfigurationImpl>(
        std::move(ipv4Config), std::move(ipv6Config), std::move(dnsConfig), std::move(airPortConfig));
}

NSString QKNetworkInterfaceConfigurationImpl::description() const {
    return internal::blockDescription(*this, {"ipv4Config", "ipv6Config", "dnsConfig", "airPortConfig"});
}

} // namespace qk
