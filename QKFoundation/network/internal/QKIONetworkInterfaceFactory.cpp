// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKIONetworkInterfaceFactory.h"

#include "QKFoundation/network/internal/Predicates.h"
#include "QKFoundation/network/internal/QKIONetworkInterfaceImpl.h"
#include "QKFoundation/network/internal/RegistryObject.h"

#include <optional>

namespace qk {
namespace {

using internal::RegistryObject;
using platform::IORegistry;

// Null when there is nothing to go through. Of the result codes only the general failure counts: whatever else the
// registry answers, the iterator decides.
std::unique_ptr<platform::IOIterator> matchingEntries(const IORegistry& registry,
                                                      const std::optional<platform::IOMatching>& matching) {
    std::unique_ptr<platform::IOIterator> iterator;
    if (!matching.has_value() || registry.getMatchingServices(*matching, iterator) == platform::KERN_FAILURE) {
        return nullptr;
    }
    return iterator;
}

} // namespace

std::shared_ptr<QKIONetworkInterface>
QKIONetworkInterfaceFactory::hardwareInterfaceForBSDName(const NSString& name, const platform::Services& services) {
    const auto reading = services.systemConfiguration->beginReading();
    const IORegistry& registry = *services.ioRegistry;
    const auto entries = matchingEntries(registry, registry.bsdNameMatching(name));
    const RegistryObject first(registry, entries != nullptr ? entries->next() : platform::IO_OBJECT_NULL);
    return first ? QKIONetworkInterfaceImpl::initWithIONetworkInterface(first.get(), registry) : nullptr;
}

QKIONetworkInterfaceFactory::Interfaces
QKIONetworkInterfaceFactory::hardwareInterfaces(const platform::Services& services) {
    const auto reading = services.systemConfiguration->beginReading();
    const IORegistry& registry = *services.ioRegistry;
    Interfaces interfaces;
    const auto entries = matchingEntries(registry, registry.serviceMatching(platform::kIONetworkInterfaceClass));
    if (entries == nullptr) {
        return interfaces;
    }
    while (true) {
        const RegistryObject entry(registry, entries->next());
        if (!entry) {
            return interfaces;
        }
        interfaces.push_back(QKIONetworkInterfaceImpl::initWithIONetworkInterface(entry.get(), registry));
    }
}

QKIONetworkInterfaceFactory::Interfaces
QKIONetworkInterfaceFactory::activeHardwareInterfaces(const platform::Services& services) {
    return filteredArrayUsingPredicate(hardwareInterfaces(services), internal::activePredicate());
}

} // namespace qk
