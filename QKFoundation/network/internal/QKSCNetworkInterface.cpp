// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKSCNetworkInterface.h"

#include "QKFoundation/network/internal/Descriptions.h"
#include "QKFoundation/network/internal/StoreTexts.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {
namespace {

NSString orEmpty(const std::optional<NSString>& text) {
    return text.has_value() ? *text : NSString();
}

template <typename T>
std::optional<T> value(const NSDictionary& dictionary, const NSString& key) {
    const T* found = dictionary.get<T>(key);
    return found != nullptr ? std::optional(*found) : std::nullopt;
}

} // namespace

const ClassDescription& QKSCNetworkInterface::describedClass() {
    using Self = QKSCNetworkInterface;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKSCNetworkInterface", NSObject::describedClass())
            .property("minimalTransferUnit", &Self::minimalTransferUnit, &Self::setMinimalTransferUnit)
            .property("maximalTransferUnit", &Self::maximalTransferUnit, &Self::setMaximalTransferUnit)
            .property("name", &Self::name, &Self::setName)
            .property("displayName", &Self::displayName, &Self::setDisplayName)
            .property("type", &Self::type, &Self::setType)
            .property("hardwareAddress", &Self::hardwareAddress, &Self::setHardwareAddress)
            .property("supportedInterfaceTypes", &Self::supportedInterfaceTypes, &Self::setSupportedInterfaceTypes)
            .property("supportedProtocolTypes", &Self::supportedProtocolTypes, &Self::setSupportedProtocolTypes)
            .property("activeMediumType", &Self::activeMediumType, &Self::setActiveMediumType)
            .property("activeMediumOptions", &Self::activeMediumOptions, &Self::setActiveMediumOptions)
            .build();
    return description;
}

const ClassDescription& QKSCNetworkInterface::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKSCNetworkInterface>
QKSCNetworkInterface::initWithSCNetworkInterface(const platform::SCNetworkInterfaceRef& interface) {
    return interface != nullptr ? internal::ObjectMaker::make<QKSCNetworkInterface>(*interface) : nullptr;
}

QKSCNetworkInterface::QKSCNetworkInterface(const Interface& interface)
    : name_(interfaceBSDNameForSCNetworkInterface(interface)),
      displayName_(interfaceDisplayNameForSCNetworkInterface(interface)),
      type_(interfaceTypeForSCNetworkInterface(interface)),
      hardwareAddress_(interfaceHardwareAddressForSCNetworkInterface(interface)),
      supportedInterfaceTypes_(interface.supportedInterfaceTypes),
      supportedProtocolTypes_(interface.supportedProtocolTypes) {
    if (interface.transferUnits.has_value()) {
        minimalTransferUnit_ = interface.transferUnits->minimum;
        maximalTransferUnit_ = interface.transferUnits->maximum;
    }
    if (interface.activeMedia.has_value()) {
        activeMediumType_ = value<NSString>(*interface.activeMedia, internal::storeTexts().mediaSubType);
        activeMediumOptions_ = value<NSArray>(*interface.activeMedia, internal::storeTexts().mediaOptions);
    }
}

NSString QKSCNetworkInterface::description() const {
    return internal::dictionaryDescription(
        *this, {"name", "displayName", "type", "hardwareAddress", "minimalTransferUnit", "maximalTransferUnit",
                "supportedInterfaceTypes", "supportedProtocolTypes", "activeMediumType", "activeMediumOptions"});
}

NSString QKSCNetworkInterface::interfaceBSDNameForSCNetworkInterface(const Interface& interface) const {
    return orEmpty(interface.bsdName);
}

NSString QKSCNetworkInterface::interfaceDisplayNameForSCNetworkInterface(const Interface& interface) const {
    return orEmpty(interface.localizedDisplayName);
}

NSString QKSCNetworkInterface::interfaceTypeForSCNetworkInterface(const Interface& interface) const {
    return orEmpty(interface.interfaceType);
}

NSString QKSCNetworkInterface::interfaceHardwareAddressForSCNetworkInterface(const Interface& interface) const {
    return orEmpty(interface.hardwareAddressString);
}

} // namespace qk
