// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKNetworkInterfaceConfigurationFactory.h"

#include "QKFoundation/network/internal/QKNetworkInterfaceAirPortConfigurationImpl.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceConfigurationImpl.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceDNSConfigurationImpl.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceIPv4ConfigurationImpl.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceIPv6ConfigurationImpl.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

#include <utility>

namespace qk {

using Factory = QKNetworkInterfaceConfigurationFactory;

const ClassDescription& Factory::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<Factory>("QKNetworkInterfaceConfigurationFactory", NSObject::describedClass())
            .property("dynamicStore", &Factory::dynamicStore)
            .build();
    return description;
}

const ClassDescription& Factory::classDescription() const {
    return describedClass();
}

std::shared_ptr<Factory> Factory::configurationFactory(const platform::Services& services) {
    return init(services);
}

std::shared_ptr<Factory> Factory::init(const platform::Services& services) {
    return internal::ObjectMaker::make<Factory>(services);
}

std::shared_ptr<QKNetworkInterfaceConfiguration>
Factory::networkConfigurationForInterfaceName(const NSString& interfaceName, const NSString& serviceId) const {
    // Each on a line of its own: the store is read in this order.
    auto ipv4Config = ipv4ConfigForInterfaceName(interfaceName, serviceId);
    auto ipv6Config = ipv6ConfigForInterfaceName(interfaceName, serviceId);
    auto dnsConfig = dnsConfigForServiceId(serviceId);
    auto airPortConfig = airPortConfigForInterfaceName(interfaceName);
    return QKNetworkInterfaceConfigurationImpl::initWithIPv4Config(std::move(ipv4Config), std::move(ipv6Config),
                                                                   std::move(dnsConfig), std::move(airPortConfig));
}

std::shared_ptr<QKNetworkInterfaceIPv4Configuration>
Factory::ipv4ConfigForInterfaceName(const NSString& interfaceName, const NSString& serviceId) const {
    const auto interfaceState = dynamicStore_->networkInterfaceIPv4StateForInterfaceName(interfaceName);
    if (!interfaceState.has_value()) {
        return nullptr;
    }
    const auto serviceSetup = dynamicStore_->networkServiceIPv4SetupForServiceId(serviceId);
    const auto serviceState = dynamicStore_->networkServiceIPv4StateForServiceId(serviceId);
    return QKNetworkInterfaceIPv4ConfigurationImpl::initWithInterfaceIPv4State(interfaceState, serviceSetup,
                                                                               serviceState);
}

std::shared_ptr<QKNetworkInterfaceIPv6Configuration>
Factory::ipv6ConfigForInterfaceName(const NSString& interfaceName, const NSString& serviceId) const {
    const auto interfaceState = dynamicStore_->networkInterfaceIPv6StateForInterfaceName(interfaceName);
    if (!interfaceState.has_value()) {
        return nullptr;
    }
    const auto serviceSetup = dynamicStore_->networkServiceIPv6SetupForServiceId(serviceId);
    const auto serviceState = dynamicStore_->networkServiceIPv6StateForServiceId(serviceId);
    return QKNetworkInterfaceIPv6ConfigurationImpl::initWithInterfaceIPv6State(interfaceState, serviceSetup,
                                                                               serviceState);
}

std::shared_ptr<QKNetworkInterfaceDNSConfiguration> Factory::dnsConfigForServiceId(const NSString& serviceId) const {
    return QKNetworkInterfaceDNSConfigurationImpl::initWithServiceDNSState(
        dynamicStore_->networkServiceDNSStateForServiceId(serviceId));
}

std::shared_ptr<QKNetworkInterfaceAirPortConfiguration>
Factory::airPortConfigForInterfaceName(const NSString& interfaceName) const {
    return QKNetworkInterfaceAirPortConfigurationImpl::initWithInterfaceAirPortState(
        dynamicStore_->networkInterfaceAirPortStateForInterfaceName(interfaceName));
}

} // namespace qk
