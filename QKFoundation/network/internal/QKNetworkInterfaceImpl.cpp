// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKNetworkInterfaceImpl.h"

#include "QKFoundation/network/internal/Descriptions.h"
#include "QKFoundation/network/internal/QKIONetworkInterfaceFactory.h"
#include "QKFoundation/network/internal/TextTable.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/SystemConfigurationSchema.h"

namespace qk {

const ClassDescription& QKNetworkInterfaceImpl::describedClass() {
    using Self = QKNetworkInterfaceImpl;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKNetworkInterfaceImpl", NSObject::describedClass())
            .protocol(describedProtocol())
            .property("type", &Self::typeNumber, &Self::setTypeNumber)
            .property("name", &Self::name, &Self::setName)
            .property("displayName", &Self::displayName, &Self::setDisplayName)
            .property("builtin", &Self::builtin, &Self::setBuiltin)
            .property("linkActive", &Self::linkActive, &Self::setLinkActive)
            .property("linkSpeed", &Self::linkSpeed, &Self::setLinkSpeed)
            .property("hardwareAddress", &Self::hardwareAddress, &Self::setHardwareAddress)
            .property("hardwareModel", &Self::hardwareModel, &Self::setHardwareModel)
            .property("configuration", &Self::configuration, &Self::setConfiguration)
            .property("typeString", &Self::typeString, &Self::setTypeString)
            .build();
    return description;
}

const ClassDescription& QKNetworkInterfaceImpl::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKNetworkInterfaceImpl>
QKNetworkInterfaceImpl::initWithSCNetworkService(const std::shared_ptr<QKSCNetworkService>& service,
                                                 const platform::Services& services) {
    return initWithSCNetworkService(service, services,
                                    *QKNetworkInterfaceConfigurationFactory::configurationFactory(services));
}

std::shared_ptr<QKNetworkInterfaceImpl>
QKNetworkInterfaceImpl::initWithSCNetworkService(const std::shared_ptr<QKSCNetworkService>& service,
                                                 const platform::Services& services,
                                                 const QKNetworkInterfaceConfigurationFactory& factory) {
    if (service == nullptr || service->interface() == nullptr) {
        return nullptr;
    }
    return internal::ObjectMaker::make<QKNetworkInterfaceImpl>(*service->interface(), service->serviceId(), services,
                                                               factory);
}

QKNetworkInterfaceImpl::QKNetworkInterfaceImpl(const QKSCNetworkInterface& interface, const NSString& serviceId,
                                               const platform::Services& services,
                                               const QKNetworkInterfaceConfigurationFactory& factory)
    : type_(interfaceTypeForkSCNetworkInterfaceType(interface.type())),
      name_(interface.name()),
      displayName_(interface.displayName()),
      hardwareAddress_(interface.hardwareAddress()),
      typeString_(interface.type()) {
    if (const auto hardware = QKIONetworkInterfaceFactory::hardwareInterfaceForBSDName(name_, services)) {
        builtin_ = hardware->builtin();
        linkActive_ = hardware->linkActive();
        linkSpeed_ = hardware->linkSpeed();
        hardwareModel_ = hardware->hardwareModel();
    }
    configuration_ = factory.networkConfigurationForInterfaceName(name_, serviceId);
}

QKNetworkInterfaceType
QKNetworkInterfaceImpl::interfaceTypeForkSCNetworkInterfaceType(const std::optional<NSString>& type) const {
    static const auto& types = *new internal::TextTable<QKNetworkInterfaceType>{
        {platform::kSCNetworkInterfaceType6to4, QKNetworkInterfaceType6to4},
        {platform::kSCNetworkInterfaceTypeBluetooth, QKNetworkInterfaceTypeBluetooth},
        {platform::kSCNetworkInterfaceTypeBond, QKNetworkInterfaceTypeBond},
        {platform::kSCNetworkInterfaceTypeEthernet, QKNetworkInterfaceTypeEthernet},
        {platform::kSCNetworkInterfaceTypeFireWire, QKNetworkInterfaceTypeFireWire},
        {platform::kSCNetworkInterfaceTypeIEEE80211, QKNetworkInterfaceTypeIEEE80211},
        {platform::kSCNetworkInterfaceTypeIPSec, QKNetworkInterfaceTypeIPSec},
        {platform::kSCNetworkInterfaceTypeIrDA, QKNetworkInterfaceTypeIrDA},
        {platform::kSCNetworkInterfaceTypeL2TP, QKNetworkInterfaceTypeL2TP},
        {platform::kSCNetworkInterfaceTypeModem, QKNetworkInterfaceTypeModem},
        {platform::kSCNetworkInterfaceTypePPP, QKNetworkInterfaceTypePPP},
        {platform::kSCNetworkInterfaceTypePPTP, QKNetworkInterfaceTypePPTP},
        {platform::kSCNetworkInterfaceTypeSerial, QKNetworkInterfaceTypeSerial},
        {platform::kSCNetworkInterfaceTypeVLAN, QKNetworkInterfaceTypeVLAN},
        {platform::kSCNetworkInterfaceTypeWWAN, QKNetworkInterfaceTypeWWAN},
        {platform::kSCNetworkInterfaceTypeIPv4, QKNetworkInterfaceTypeIPv4},
        {platform::kSCNetworkInterfaceTypeBridge, QKNetworkInterfaceTypeBridge}};
    return internal::valueOf(types, type, QKNetworkInterfaceTypeUnknown);
}

NSString QKNetworkInterfaceImpl::description() const {
    return internal::blockDescription(*this, {"name", "displayName", "type", "typeString", "builtin", "linkActive",
                                              "linkSpeed", "hardwareAddress", "hardwareModel", "configuration"});
}

} // namespace qk
