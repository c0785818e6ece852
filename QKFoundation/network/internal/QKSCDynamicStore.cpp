// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/network/internal/QKSCDynamicStore.h"

#include "QKFoundation/network/internal/StoreTexts.h"
#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/NSBundle.h"
#include "QKFoundation/platform/services/SystemConfigurationSchema.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace qk {
namespace {

using internal::storeTexts;
using Dictionary = QKSCDynamicStore::Dictionary;

std::optional<NSString> mainBundleIdentifier(const platform::Services& services) {
    static const NSString& key = *new NSString("CFBundleIdentifier");
    const auto bundle = NSBundle::mainBundle(services);
    const NSString* identifier = bundle != nullptr ? bundle->infoDictionary().get<NSString>(key) : nullptr;
    return identifier != nullptr ? std::optional(*identifier) : std::nullopt;
}

// A UUID in capitals; 0 stands for a digit.
constexpr std::u16string_view kUUIDForm = u"00000000-0000-0000-0000-000000000000";

bool isUUID(std::u16string_view text) {
    for (std::size_t index = 0; index < kUUIDForm.size(); ++index) {
        const char16_t unit = text[index];
        const bool isDigit = (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'F');
        if (kUUIDForm[index] == u'-' ? unit != u'-' : !isDigit) {
            return false;
        }
    }
    return true;
}

} // namespace

const ClassDescription& QKSCDynamicStore::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<QKSCDynamicStore>("QKSCDynamicStore", NSObject::describedClass())
            .method("dictionaryForKey:", &QKSCDynamicStore::dictionaryForKey)
            .method("configuredNetworkServiceKeys", &QKSCDynamicStore::configuredNetworkServiceKeys)
            .method("serviceUUIDFromServiceKey:", &QKSCDynamicStore::serviceUUIDFromServiceKey)
            .method("configuredNetworkServiceIds", &QKSCDynamicStore::configuredNetworkServiceIds)
            .build();
    return description;
}

const ClassDescription& QKSCDynamicStore::classDescription() const {
    return describedClass();
}

QKSCDynamicStore::QKSCDynamicStore(const platform::Services& services)
    : configuration_(services.systemConfiguration), clientName_(mainBundleIdentifier(services)) {}

std::shared_ptr<QKSCDynamicStore> QKSCDynamicStore::init(const platform::Services& services) {
    return internal::ObjectMaker::make<QKSCDynamicStore>(services);
}

std::shared_ptr<const platform::DynamicStore> QKSCDynamicStore::connect() const {
    return configuration_->createDynamicStore(clientName_);
}

Dictionary QKSCDynamicStore::networkServiceSetupForServiceId(const NSString& serviceId) const {
    return networkServiceDictionaryForDomain(storeTexts().setup, serviceId, std::nullopt);
}

Dictionary QKSCDynamicStore::networkServiceInterfaceSetupForServiceId(const NSString& serviceId) const {
    return networkServiceDictionaryForDomain(storeTexts().setup, serviceId, storeTexts().interface);
}

Dictionary QKSCDynamicStore::networkServiceIPv4SetupForServiceId(const NSString& serviceId) const {
    return networkServiceDictionaryForDomain(storeTexts().setup, serviceId, storeTexts().ipv4);
}

Dictionary QKSCDynamicStore::networkServiceIPv6SetupForServiceId(const NSString& serviceId) const {
    return networkServiceDictionaryForDomain(storeTexts().setup, serviceId, storeTexts().ipv6);
}

Dictionary QKSCDynamicStore::networkServiceProxiesSetupForServiceId(const NSString& serviceId) const {
    return networkServiceDictionaryForDomain(storeTexts().setup, serviceId, storeTexts().proxies);
}

Dictionary QKSCDynamicStore::networkServiceIPv4StateForServiceId(const NSString& serviceId) const {
    return networkServiceDictionaryForDomain(storeTexts().state, serviceId, storeTexts().ipv4);
}

Dictionary QKSCDynamicStore::networkServiceIPv6StateForServiceId(const NSString& serviceId) const {
    return networkServiceDictionaryForDomain(storeTexts().state, serviceId, storeTexts().ipv6);
}

Dictionary QKSCDynamicStore::networkServiceDHCPStateForServiceId(const NSString& serviceId) const {
    return networkServiceDictionaryForDomain(storeTexts().state, serviceId, storeTexts().dhcp);
}

Dictionary QKSCDynamicStore::networkServiceDNSStateForServiceId(const NSString& serviceId) const {
    return networkServiceDictionaryForDomain(storeTexts().state, serviceId, storeTexts().dns);
}

Dictionary QKSCDynamicStore::networkInterfaceState() const {
    return networkInterfaceDictionaryForDomain(storeTexts().state, "/Network/Interface");
}

Dictionary QKSCDynamicStore::networkInterfaceIPv4StateForInterfaceName(const NSString& interfaceName) const {
    return networkInterfaceDictionaryForDomain(storeTexts().state, interfaceName, storeTexts().ipv4);
}

Dictionary QKSCDynamicStore::networkInterfaceIPv6StateForInterfaceName(const NSString& interfaceName) const {
    return networkInterfaceDictionaryForDomain(storeTexts().state, interfaceName, storeTexts().ipv6);
}

Dictionary QKSCDynamicStore::networkInterfaceLinkStateForInterfaceName(const NSString& interfaceName) const {
    return networkInterfaceDictionaryForDomain(storeTexts().state, interfaceName, storeTexts().link);
}

Dictionary QKSCDynamicStore::networkInterfaceAirPortStateForInterfaceName(const NSString& interfaceName) const {
    return networkInterfaceDictionaryForDomain(storeTexts().state, interfaceName, storeTexts().airPort);
}

Dictionary QKSCDynamicStore::networkInterfaceLinkQualityStateForInterfaceName(const NSString& interfaceName) const {
    return networkInterfaceDictionaryForDomain(storeTexts().state, interfaceName, storeTexts().linkQuality);
}

Dictionary QKSCDynamicStore::networkInterfaceCaptiveNetworkStateForInterfaceName(const NSString& interfaceName) const {
    return networkInterfaceDictionaryForDomain(storeTexts().state, interfaceName, storeTexts().captiveNetwork);
}

Dictionary
QKSCDynamicStore::networkInterfaceSleepProxyServersStateForInterfaceName(const NSString& interfaceName) const {
    return networkInterfaceDictionaryForDomain(storeTexts().state, interfaceName, storeTexts().sleepProxyServers);
}

Dictionary QKSCDynamicStore::networkGlobalIPv4Setup() const {
    return networkGlobalDictionaryForDomain(storeTexts().setup, storeTexts().ipv4);
}

Dictionary QKSCDynamicStore::networkGlobalIPv4State() const {
    return networkGlobalDictionaryForDomain(storeTexts().state, storeTexts().ipv4);
}

Dictionary QKSCDynamicStore::networkGlobalIPv6State() const {
    return networkGlobalDictionaryForDomain(storeTexts().state, storeTexts().ipv6);
}

Dictionary QKSCDynamicStore::networkGlobalDNSState() const {
    return networkGlobalDictionaryForDomain(storeTexts().state, storeTexts().dns);
}

Dictionary QKSCDynamicStore::networkGlobalProxiesState() const {
    return networkGlobalDictionaryForDomain(storeTexts().state, storeTexts().proxies);
}

Dictionary QKSCDynamicStore::networkServiceDictionaryForDomain(const NSString& domain, const NSString& serviceId,
                                                               const std::optional<NSString>& entityType) const {
    return dictionaryForKey(platform::SCDynamicStoreKeyCreateNetworkServiceEntity(domain, serviceId, entityType));
}

Dictionary QKSCDynamicStore::networkInterfaceDictionaryForDomain(const NSString& domain, const NSString& interfaceName,
                                                                 const NSString& entityType) const {
    return dictionaryForKey(platform::SCDynamicStoreKeyCreateNetworkInterfaceEntity(domain, interfaceName, entityType));
}

Dictionary QKSCDynamicStore::networkGlobalDictionaryForDomain(const NSString& domain,
                                                              const NSString& entityType) const {
    return dictionaryForKey(platform::SCDynamicStoreKeyCreateNetworkGlobalEntity(domain, entityType));
}

Dictionary QKSCDynamicStore::networkInterfaceDictionaryForDomain(const NSString& domain, const NSString& path) const {
    return dictionaryForKey(domain + ":" + path);
}

Dictionary QKSCDynamicStore::dictionaryForKey(const NSString& key) const {
    const auto store = connect();
    if (store == nullptr) {
        return std::nullopt;
    }
    std::optional<Value> value = store->copyValue(key);
    return value.has_value() ? std::move(*value).take<NSDictionary>() : std::nullopt;
}

std::vector<NSString> QKSCDynamicStore::configuredNetworkServiceKeys() const {
    const auto store = connect();
    if (store == nullptr) {
        return {};
    }
    return store->copyKeyList("Setup:/Network/Service/.*/Interface").value_or(std::vector<NSString>());
}

std::optional<NSString> QKSCDynamicStore::serviceUUIDFromServiceKey(const NSString& key) const {
    const std::u16string_view units = key.units();
    for (std::size_t start = 0; start + kUUIDForm.size() <= units.size(); ++start) {
        const bool mayBe = units[start + kUUIDForm.find(u'-')] == u'-'; // rules out most places
        if (mayBe && isUUID(units.substr(start))) {
            return key.substring(start, kUUIDForm.size());
        }
    }
    return std::nullopt;
}

std::vector<NSString> QKSCDynamicStore::configuredNetworkServiceIds() const {
    std::vector<NSString> identifiers;
    for (const NSString& key : configuredNetworkServiceKeys()) {
        if (auto identifier = serviceUUIDFromServiceKey(key)) {
            identifiers.push_back(*std::move(identifier));
        }
    }
    return identifiers;
}

} // namespace qk
