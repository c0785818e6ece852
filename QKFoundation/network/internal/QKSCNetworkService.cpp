// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKSCNetworkService.h"

#include "QKFoundation/network/internal/Descriptions.h"
#include "QKFoundation/platform/objects/ClassDescription.h"

#include <vector>

namespace qk {

const ClassDescription& QKSCNetworkService::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKSCNetworkService>("QKSCNetworkService", NSObject::describedClass())
            .property("enabled", &QKSCNetworkService::enabled, &QKSCNetworkService::setEnabled)
            .property("name", &QKSCNetworkService::name, &QKSCNetworkService::setName)
            .property("serviceId", &QKSCNetworkService::serviceId, &QKSCNetworkService::setServiceId)
            .property("interface", &QKSCNetworkService::interface, &QKSCNetworkService::setInterface)
            .build();
    return description;
}

const ClassDescription& QKSCNetworkService::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKSCNetworkService>
QKSCNetworkService::initWithSCNetworkService(const platform::SCNetworkServiceRef& service) {
    return service != nullptr ? internal::ObjectMaker::make<QKSCNetworkService>(*service) : nullptr;
}

QKSCNetworkService::QKSCNetworkService(const platform::SCNetworkService& service)
    : enabled_(service.enabled == 1),
      name_(serviceNameForSCNetworkService(service)),
      serviceId_(serviceIdForSCNetworkService(service)),
      interface_(QKSCNetworkInterface::initWithSCNetworkInterface(service.interface)) {}

NSString QKSCNetworkService::serviceNameForSCNetworkService(const platform::SCNetworkService& service) const {
    return service.name.value_or(NSString());
}

NSString QKSCNetworkService::serviceIdForSCNetworkService(const platform::SCNetworkService& service) const {
    return service.serviceID.value_or(NSString());
}

NSString QKSCNetworkService::description() const {
    const std::vector<NSString> keys{
        "name", "enabled", "serviceId", "interface", "stateConfigurations", "setupConfigurations"};
    return internal::blockDescription(*this, dictionaryWithValuesForKeys(keys), keys);
}

} // namespace qk
