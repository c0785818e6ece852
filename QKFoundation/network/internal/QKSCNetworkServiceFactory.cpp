// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKSCNetworkServiceFactory.h"

#include "QKFoundation/network/internal/Predicates.h"
#include "QKFoundation/network/internal/QKSCDynamicStore.h"

#include <unordered_set>
#include <utility>

namespace qk {

QKSCNetworkServiceFactory::NetworkServices
QKSCNetworkServiceFactory::networkServices(const platform::Services& services) {
    const std::vector<NSString> configured = configuredNetworkServiceIds(services);
    const auto preferences = services.systemConfiguration->createPreferences("SCNetworkServiceFactory");
    const auto all = preferences != nullptr ? preferences->copyAllServices() : std::nullopt;
    if (!all.has_value()) {
        return {};
    }
    const std::unordered_set<NSString> isConfigured(configured.begin(), configured.end());
    NetworkServices result;
    result.reserve(all->size());
    for (const platform::SCNetworkServiceRef& each : *all) {
        auto service = QKSCNetworkService::initWithSCNetworkService(each);
        if (service != nullptr && isConfigured.contains(service->serviceId())) {
            result.push_back(std::move(service));
        }
    }
    return result;
}

QKSCNetworkServiceFactory::NetworkServices
QKSCNetworkServiceFactory::enabledNetworkServices(const platform::Services& services) {
    return filteredArrayUsingPredicate(networkServices(services), internal::enabledPredicate());
}

std::vector<NSString> QKSCNetworkServiceFactory::configuredNetworkServiceIds(const platform::Services& services) {
    return QKSCDynamicStore::init(services)->configuredNetworkServiceIds();
}

} // namespace qk
