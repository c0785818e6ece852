// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKSCNetworkServiceFactory.h"

#include "QKFoundation/network/internal/QKSCDynamicStore.h"
#include "QKFoundation/platform/objects/NSPredicate.h"

#include <unordered_set>
#include <utility>

namespace qk {
namespace {

// Parsed once and never destroyed: other threads may still ask while the process ends.
const NSPredicate& enabledPredicate() {
    static const auto& predicate =
        *new std::shared_ptr<const NSPredicate>(NSPredicate::predicateWithFormat("enabled = YES"));
    return *predicate;
}

} // namespace

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
    return filteredArrayUsingPredicate(networkServices(services), enabledPredicate());
}

std::vector<NSString> QKSCNetworkServiceFactory::configuredNetworkServiceIds(const platform::Services& services) {
    return QKSCDynamicStore::init(services)->configuredNetworkServiceIds();
}

} // namespace qk
