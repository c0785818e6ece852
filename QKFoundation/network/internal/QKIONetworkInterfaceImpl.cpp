// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKIONetworkInterfaceImpl.h"

#include "QKFoundation/network/internal/Descriptions.h"
#include "QKFoundation/network/internal/QKIOKitUtilities.h"
#include "QKFoundation/network/internal/RegistryObject.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

namespace qk {
namespace {

using platform::io_registry_entry_t;
using platform::IORegistry;

// Made once and never destroyed: other threads may still ask while the process ends.
struct PropertyKeys {
    NSString bsdName = "BSD Name";
    NSString builtin = "IOBuiltin";
    NSString linkSpeed = "IOLinkSpeed";
    NSString linkStatus = "IOLinkStatus";
    NSString model = "IOModel";
    NSString vendor = "IOVendor";
    NSString servicePlane = platform::kIOServicePlane;
};

const PropertyKeys& keys() {
    static const PropertyKeys& theKeys = *new PropertyKeys;
    return theKeys;
}

constexpr unsigned kLinkActiveBit = 1; // bit 0 says whether the status is valid, which nobody asks

io_registry_entry_t parentOf(io_registry_entry_t entry, const IORegistry& registry) {
    io_registry_entry_t parent = platform::IO_OBJECT_NULL;
    return registry.entryParent(entry, keys().servicePlane, parent) == platform::KERN_SUCCESS
               ? parent
               : platform::IO_OBJECT_NULL;
}

} // namespace

const ClassDescription& QKIONetworkInterfaceImpl::describedClass() {
    using Self = QKIONetworkInterfaceImpl;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKIONetworkInterfaceImpl", NSObject::describedClass())
            .protocol(describedProtocol())
            .property("name", &Self::name, &Self::setName)
            .property("builtin", &Self::builtin, &Self::setBuiltin)
            .property("linkActive", &Self::linkActive, &Self::setLinkActive)
            .property("linkSpeed", &Self::linkSpeed, &Self::setLinkSpeed)
            .property("hardwareModel", &Self::hardwareModel, &Self::setHardwareModel)
            .build();
    return description;
}

const ClassDescription& QKIONetworkInterfaceImpl::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKIONetworkInterfaceImpl>
QKIONetworkInterfaceImpl::initWithIONetworkInterface(io_registry_entry_t interface, const IORegistry& registry) {
    return internal::ObjectMaker::make<QKIONetworkInterfaceImpl>(interface, registry);
}

QKIONetworkInterfaceImpl::QKIONetworkInterfaceImpl(io_registry_entry_t interface, const IORegistry& registry)
    : name_(QKIOKitUtilities::stringPropertyForIOService(registry, interface, keys().bsdName)),
      builtin_(QKIOKitUtilities::boolPropertyForIOService(registry, interface, keys().builtin)) {
    const internal::RegistryObject controller(registry, parentOf(interface, registry));
    if (!controller) {
        return;
    }
    linkSpeed_ = QKIOKitUtilities::integerPropertyForIOService(registry, controller.get(), keys().linkSpeed);
    const std::int32_t status =
        QKIOKitUtilities::intPropertyForIOService(registry, controller.get(), keys().linkStatus);
    linkActive_ = (static_cast<std::uint32_t>(status) >> kLinkActiveBit & 1U) != 0;
    hardwareModel_ = interfaceModelForIOInterfaceController(controller.get(), registry);
}

NSString QKIONetworkInterfaceImpl::interfaceModelForIOInterfaceController(io_registry_entry_t controller,
                                                                          const IORegistry& registry) const {
    // The getter answers "" for what is missing, so the blank is always there.
    const NSString model = QKIOKitUtilities::stringPropertyForIOService(registry, controller, keys().model);
    const NSString vendor = QKIOKitUtilities::stringPropertyForIOService(registry, controller, keys().vendor);
    NSMutableString text;
    return text.append(vendor).append(u' ').append(model).copy();
}

NSString QKIONetworkInterfaceImpl::description() const {
    return internal::dictionaryDescription(*this, {"name", "hardwareModel", "linkActive", "linkSpeed"});
}

} // namespace qk
