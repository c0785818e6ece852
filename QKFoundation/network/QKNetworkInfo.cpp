// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/QKNetworkInfo.h"

#include "QKFoundation/network/internal/NetworkInterfaces.h"
#include "QKFoundation/network/internal/Predicates.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceConfigurationFactory.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceImpl.h"
#include "QKFoundation/network/internal/QKSCNetworkServiceFactory.h"

#include <utility>

namespace qk {
namespace {

using platform::Services;
using platform::services;

} // namespace

internal::Interfaces internal::networkInterfaces(const Services& services) {
    const auto reading = services.systemConfiguration->beginReading();
    const auto enabled = QKSCNetworkServiceFactory::enabledNetworkServices(services);
    const auto factory = QKNetworkInterfaceConfigurationFactory::configurationFactory(services);
    Interfaces interfaces;
    interfaces.reserve(enabled.size());
    for (const auto& service : enabled) {
        if (auto interface = QKNetworkInterfaceImpl::initWithSCNetworkService(service, services, *factory)) {
            interfaces.push_back(std::move(interface));
        }
    }
    return interfaces;
}

internal::Interfaces internal::activeNetworkInterfaces(const Services& services) {
    return filteredArrayUsingPredicate(networkInterfaces(services), activePredicate());
}

internal::Interfaces internal::activeBuiltinNetworkInterfaces(const Services& services) {
    return filteredArrayUsingPredicate(networkInterfaces(services), activeBuiltinPredicate());
}

QKNetworkInfo::Interfaces QKNetworkInfo::networkInterfaces() {
    return internal::networkInterfaces(*services());
}

QKNetworkInfo::Interfaces QKNetworkInfo::activeNetworkInterfaces() {
    return internal::activeNetworkInterfaces(*services());
}

QKNetworkInfo::Interfaces QKNetworkInfo::activeBuiltinNetworkInterfaces() {
    return internal::activeBuiltinNetworkInterfaces(*services());
}

} // namespace qk
