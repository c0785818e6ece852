// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKNetworkInterfaceAirPortConfigurationImpl.h"

#include "QKFoundation/network/internal/Descriptions.h"
#include "QKFoundation/network/internal/NSDictionary+DynamicStore.h"
#include "QKFoundation/network/internal/StoreTexts.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {

using internal::storeTexts;
using NSDictionary_DynamicStore::boolValueForDynamicStoreKey;
using NSDictionary_DynamicStore::stringValueForDynamicStoreKey;

const ClassDescription& QKNetworkInterfaceAirPortConfigurationImpl::describedClass() {
    using Self = QKNetworkInterfaceAirPortConfigurationImpl;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKNetworkInterfaceAirPortConfigurationImpl", NSObject::describedClass())
            .protocol(describedProtocol())
            .property("powerStatus", &Self::powerStatus, &Self::setPowerStatus)
            .property("airPlay", &Self::airPlay, &Self::setAirPlay)
            .property("ssid", &Self::ssid, &Self::setSsid)
            .build();
    return description;
}

const ClassDescription& QKNetworkInterfaceAirPortConfigurationImpl::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKNetworkInterfaceAirPortConfigurationImpl>
QKNetworkInterfaceAirPortConfigurationImpl::initWithInterfaceAirPortState(
    const std::optional<NSDictionary>& interfaceAirPortState) {
    using Self = QKNetworkInterfaceAirPortConfigurationImpl;
    return interfaceAirPortState.has_value() ? internal::ObjectMaker::make<Self>(*interfaceAirPortState) : nullptr;
}

QKNetworkInterfaceAirPortConfigurationImpl::QKNetworkInterfaceAirPortConfigurationImpl(
    const NSDictionary& interfaceAirPortState)
    : powerStatus_(boolValueForDynamicStoreKey(interfaceAirPortState, storeTexts().airPortPowerStatus)),
      airPlay_(boolValueForDynamicStoreKey(interfaceAirPortState, storeTexts().airPortAirPlay)),
      ssid_(stringValueForDynamicStoreKey(interfaceAirPortState, storeTexts().airPortSSID)) {}

NSString QKNetworkInterfaceAirPortConfigurationImpl::description() const {
    return internal::dictionaryDescription(*this, {"powerStatus", "airPlay", "ssid"});
}

} // namespace qk
