// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKNetworkInterfaceDNSConfigurationImpl.h"

#include "QKFoundation/network/internal/Descriptions.h"
#include "QKFoundation/network/internal/NSDictionary+DynamicStore.h"
#include "QKFoundation/network/internal/StoreTexts.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

using internal::storeTexts;
using NSDictionary_DynamicStore::stringArrayValueForDynamicStoreKey;
using NSDictionary_DynamicStore::stringValueForDynamicStoreKey;

const ClassDescription& QKNetworkInterfaceDNSConfigurationImpl::describedClass() {
    using Self = QKNetworkInterfaceDNSConfigurationImpl;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKNetworkInterfaceDNSConfigurationImpl", NSObject::describedClass())
            .protocol(describedProtocol())
            .property("serverAdresses", &Self::serverAdresses, &Self::setServerAdresses)
            .property("domainName", &Self::domainName, &Self::setDomainName)
            .build();
    return description;
}

const ClassDescription& QKNetworkInterfaceDNSConfigurationImpl::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKNetworkInterfaceDNSConfigurationImpl>
QKNetworkInterfaceDNSConfigurationImpl::initWithServiceDNSState(const std::optional<NSDictionary>& serviceDNSState) {
    using Self = QKNetworkInterfaceDNSConfigurationImpl;
    return serviceDNSState.has_value() ? internal::ObjectMaker::make<Self>(*serviceDNSState) : nullptr;
}

QKNetworkInterfaceDNSConfigurationImpl::QKNetworkInterfaceDNSConfigurationImpl(const NSDictionary& serviceDNSState)
    : serverAdresses_(stringArrayValueForDynamicStoreKey(serviceDNSState, storeTexts().dnsServerAddresses)),
      domainName_(stringValueForDynamicStoreKey(serviceDNSState, storeTexts().dnsDomainName)) {}

NSString QKNetworkInterfaceDNSConfigurationImpl::description() const {
    return internal::dictionaryDescription(*this, {"domainName", "serverAdresses"});
}

} // namespace qk
