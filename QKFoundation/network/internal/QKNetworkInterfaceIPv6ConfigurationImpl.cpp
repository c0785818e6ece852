// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKNetworkInterfaceIPv6ConfigurationImpl.h"

#include "QKFoundation/network/internal/Descriptions.h"
#include "QKFoundation/network/internal/NSDictionary+DynamicStore.h"
#include "QKFoundation/network/internal/StoreTexts.h"
#include "QKFoundation/network/internal/TextTable.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

using internal::storeTexts;
using NSDictionary_DynamicStore::stringArrayValueForDynamicStoreKey;
using NSDictionary_DynamicStore::stringValueForDynamicStoreKey;

const ClassDescription& QKNetworkInterfaceIPv6ConfigurationImpl::describedClass() {
    using Self = QKNetworkInterfaceIPv6ConfigurationImpl;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKNetworkInterfaceIPv6ConfigurationImpl", NSObject::describedClass())
            .protocol(describedProtocol())
            .property("configMethod", &Self::configMethodNumber, &Self::setConfigMethodNumber)
            .property("configMethodString", &Self::configMethodString, &Self::setConfigMethodString)
            .property("adresses", &Self::adresses, &Self::setAdresses)
            .property("prefixLengths", &Self::prefixLengths, &Self::setPrefixLengths)
            .property("routerAddress", &Self::routerAddress, &Self::setRouterAddress)
            .property("networkSignature", &Self::networkSignature, &Self::setNetworkSignature)
            .build();
    return description;
}

const ClassDescription& QKNetworkInterfaceIPv6ConfigurationImpl::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKNetworkInterfaceIPv6ConfigurationImpl>
QKNetworkInterfaceIPv6ConfigurationImpl::initWithInterfaceIPv6State(
    const std::optional<NSDictionary>& interfaceIPv6State, const std::optional<NSDictionary>& serviceIPv6Setup,
    const std::optional<NSDictionary>& serviceIPv6State) {
    if (!interfaceIPv6State.has_value()) {
        return nullptr;
    }
    return internal::ObjectMaker::make<QKNetworkInterfaceIPv6ConfigurationImpl>(*interfaceIPv6State, serviceIPv6Setup,
                                                                                serviceIPv6State);
}

QKNetworkInterfaceIPv6ConfigurationImpl::QKNetworkInterfaceIPv6ConfigurationImpl(
    const NSDictionary& interfaceIPv6State, const std::optional<NSDictionary>& serviceIPv6Setup,
    const std::optional<NSDictionary>& serviceIPv6State)
    : adresses_(stringArrayValueForDynamicStoreKey(interfaceIPv6State, storeTexts().ipv6Addresses)),
      prefixLengths_(stringArrayValueForDynamicStoreKey(interfaceIPv6State, storeTexts().ipv6PrefixLength)) {
    if (!serviceIPv6Setup.has_value()) {
        return;
    }
    configMethodString_ = stringValueForDynamicStoreKey(*serviceIPv6Setup, storeTexts().ipv6ConfigMethod);
    configMethod_ = configMethodForConfigMethodString(configMethodString_);
    if (serviceIPv6State.has_value() && configMethod_ != QKNetworkInterfaceIPv6ConfigMethodUnknown) {
        adresses_ = stringArrayValueForDynamicStoreKey(*serviceIPv6State, storeTexts().ipv6Addresses);
        prefixLengths_ = stringArrayValueForDynamicStoreKey(*serviceIPv6State, storeTexts().ipv6PrefixLength);
        networkSignature_ = stringValueForDynamicStoreKey(*serviceIPv6State, storeTexts().networkSignature);
        routerAddress_ = stringValueForDynamicStoreKey(*serviceIPv6State, storeTexts().ipv6Router);
    }
}

QKNetworkInterfaceIPv6ConfigMethod QKNetworkInterfaceIPv6ConfigurationImpl::configMethodForConfigMethodString(
    const std::optional<NSString>& string) const {
    static const internal::TextTable<Method>& methods = *new internal::TextTable<Method>{
        {platform::kSCValNetIPv6ConfigMethodAutomatic, QKNetworkInterfaceIPv6ConfigMethodAutomatic},
        {platform::kSCValNetIPv6ConfigMethodLinkLocal, QKNetworkInterfaceIPv6ConfigMethodLinkLocal},
        {platform::kSCValNetIPv6ConfigMethodManual, QKNetworkInterfaceIPv6ConfigMethodManual},
        {platform::kSCValNetIPv6ConfigMethodRouterAdvertisement, QKNetworkInterfaceIPv6ConfigMethodRouterAdvertisement},
        {platform::kSCValNetIPv6ConfigMethod6to4, QKNetworkInterfaceIPv6ConfigMethod6to4}};
    return internal::valueOf(methods, string, QKNetworkInterfaceIPv6ConfigMethodUnknown);
}

NSString QKNetworkInterfaceIPv6ConfigurationImpl::description() const {
    return internal::dictionaryDescription(*this, {"configMethod", "configMethodString", "adresses", "prefixLengths",
                                                   "networkSignature", "routerAddress"});
}

} // namespace qk
