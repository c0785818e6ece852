// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKNetworkInterfaceIPv4ConfigurationImpl.h"

#include "QKFoundation/network/internal/Descriptions.h"
#include "QKFoundation/network/internal/NSDictionary+DynamicStore.h"
#include "QKFoundation/network/internal/StoreTexts.h"
#include "QKFoundation/network/internal/TextTable.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

using internal::storeTexts;
using NSDictionary_DynamicStore::stringArrayValueForDynamicStoreKey;
using NSDictionary_DynamicStore::stringValueForDynamicStoreKey;

const ClassDescription& QKNetworkInterfaceIPv4ConfigurationImpl::describedClass() {
    using Self = QKNetworkInterfaceIPv4ConfigurationImpl;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKNetworkInterfaceIPv4ConfigurationImpl", NSObject::describedClass())
            .protocol(describedProtocol())
            .property("configMethod", &Self::configMethodNumber, &Self::setConfigMethodNumber)
            .property("configMethodString", &Self::configMethodString, &Self::setConfigMethodString)
            .property("adresses", &Self::adresses, &Self::setAdresses)
            .property("subnetMasks", &Self::subnetMasks, &Self::setSubnetMasks)
            .property("broadcastAddresses", &Self::broadcastAddresses, &Self::setBroadcastAddresses)
            .property("routerAddress", &Self::routerAddress, &Self::setRouterAddress)
            .property("networkSignature", &Self::networkSignature, &Self::setNetworkSignature)
            .build();
    return description;
}

const ClassDescription& QKNetworkInterfaceIPv4ConfigurationImpl::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKNetworkInterfaceIPv4ConfigurationImpl>
QKNetworkInterfaceIPv4ConfigurationImpl::initWithInterfaceIPv4State(
    const std::optional<NSDictionary>& interfaceIPv4State, const std::optional<NSDictionary>& serviceIPv4Setup,
    const std::optional<NSDictionary>& serviceIPv4State) {
    if (!interfaceIPv4State.has_value()) {
        return nullptr;
    }
    return internal::ObjectMaker::make<QKNetworkInterfaceIPv4ConfigurationImpl>(*interfaceIPv4State, serviceIPv4Setup,
                                                                                serviceIPv4State);
}

QKNetworkInterfaceIPv4ConfigurationImpl::QKNetworkInterfaceIPv4ConfigurationImpl(
    const NSDictionary& interfaceIPv4State, const std::optional<NSDictionary>& serviceIPv4Setup,
    const std::optional<NSDictionary>& serviceIPv4State)
    : adresses_(stringArrayValueForDynamicStoreKey(interfaceIPv4State, storeTexts().ipv4Addresses)),
      subnetMasks_(stringArrayValueForDynamicStoreKey(interfaceIPv4State, storeTexts().ipv4SubnetMasks)),
      broadcastAddresses_(stringArrayValueForDynamicStoreKey(interfaceIPv4State, storeTexts().ipv4BroadcastAddresses)) {
    if (!serviceIPv4Setup.has_value()) {
        return;
    }
    configMethodString_ = stringValueForDynamicStoreKey(*serviceIPv4Setup, storeTexts().ipv4ConfigMethod);
    configMethod_ = configMethodForConfigMethodString(configMethodString_);
    if (serviceIPv4State.has_value() && configMethod_ != QKNetworkInterfaceIPv4ConfigMethodUnknown) {
        adresses_ = stringArrayValueForDynamicStoreKey(*serviceIPv4State, storeTexts().ipv4Addresses);
        subnetMasks_ = stringArrayValueForDynamicStoreKey(*serviceIPv4State, storeTexts().ipv4SubnetMasks);
        networkSignature_ = stringValueForDynamicStoreKey(*serviceIPv4State, storeTexts().networkSignature);
        routerAddress_ = stringValueForDynamicStoreKey(*serviceIPv4State, storeTexts().ipv4Router);
    }
}

QKNetworkInterfaceIPv4ConfigMethod QKNetworkInterfaceIPv4ConfigurationImpl::configMethodForConfigMethodString(
    const std::optional<NSString>& string) const {
    static const internal::TextTable<Method>& methods = *new internal::TextTable<Method>{
        {platform::kSCValNetIPv4ConfigMethodAutomatic, QKNetworkInterfaceIPv4ConfigMethodAutomatic},
        {platform::kSCValNetIPv4ConfigMethodBOOTP, QKNetworkInterfaceIPv4ConfigMethodBOOTP},
        {platform::kSCValNetIPv4ConfigMethodDHCP, QKNetworkInterfaceIPv4ConfigMethodDHCP},
        {platform::kSCValNetIPv4ConfigMethodINFORM, QKNetworkInterfaceIPv4ConfigMethodINFORM},
        {platform::kSCValNetIPv4ConfigMethodLinkLocal, QKNetworkInterfaceIPv4ConfigMethodLinkLocal},
        {platform::kSCValNetIPv4ConfigMethodManual, QKNetworkInterfaceIPv4ConfigMethodManual},
        {platform::kSCValNetIPv4ConfigMethodPPP, QKNetworkInterfaceIPv4ConfigMethodPPP}};
    return internal::valueOf(methods, string, QKNetworkInterfaceIPv4ConfigMethodUnknown);
}

NSString QKNetworkInterfaceIPv4ConfigurationImpl::description() const {
    return internal::dictionaryDescription(*this, {"configMethod", "configMethodString", "adresses", "subnetMasks",
                                                   "broadcastAddresses", "networkSignature"});
}

} // namespace qk
