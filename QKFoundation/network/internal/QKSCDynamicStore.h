// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <memory>
#include <optional>
#include <vector>

namespace qk {

/// `QKSCDynamicStore`: reads dictionaries of the dynamic store by what they tell about. Every read opens a connection
/// of its own, under the identifier of the main bundle, and closes it. Nothing comes back when there is no connection,
/// no value, or a value that is no dictionary. Threads: any, at the same time, but for `setDynamicStoreRef`.
class QKSCDynamicStore final : public NSObject {
public:
    using Dictionary = std::optional<NSDictionary>;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `init`. A reader of that machine's store.
    [[nodiscard]] static std::shared_ptr<QKSCDynamicStore> init(const platform::Services& services);

    /// `dynamicStoreRef`. A connection that is not owned: who sets it keeps it open for as long as it stands here. Null
    /// at first. Deliberate: no read uses it.
    [[nodiscard]] const platform::DynamicStore* dynamicStoreRef() const noexcept { return dynamicStoreRef_; }
    void setDynamicStoreRef(const platform::DynamicStore* connection) noexcept { dynamicStoreRef_ = connection; }

    // What is set up for a service.
    /// `networkServiceSetupForServiceId:`. Of the service itself.
    [[nodiscard]] Dictionary networkServiceSetupForServiceId(const NSString& serviceId) const;
    /// `networkServiceInterfaceSetupForServiceId:`.
    [[nodiscard]] Dictionary networkServiceInterfaceSetupForServiceId(const NSString& serviceId) const;
    /// `networkServiceIPv4SetupForServiceId:`.
    [[nodiscard]] Dictionary networkServiceIPv4SetupForServiceId(const NSString& serviceId) const;
    /// `networkServiceIPv6SetupForServiceId:`.
    [[nodiscard]] Dictionary networkServiceIPv6SetupForServiceId(const NSString& serviceId) const;
    /// `networkServiceProxiesSetupForServiceId:`.
    [[nodiscard]] Dictionary networkServiceProxiesSetupForServiceId(const NSString& serviceId) const;

    // The present state of a service.
    /// `networkServiceIPv4StateForServiceId:`.
    [[nodiscard]] Dictionary networkServiceIPv4StateForServiceId(const NSString& serviceId) const;
    /// `networkServiceIPv6StateForServiceId:`.
    [[nodiscard]] Dictionary networkServiceIPv6StateForServiceId(const NSString& serviceId) const;
    /// `networkServiceDHCPStateForServiceId:`.
    [[nodiscard]] Dictionary networkServiceDHCPStateForServiceId(const NSString& serviceId) const;
    /// `networkServiceDNSStateForServiceId:`.
    [[nodiscard]] Dictionary networkServiceDNSStateForServiceId(const NSString& serviceId) const;

    // The present state of an interface, by its BSD name.
    /// `networkInterfaceState`. Deliberate: the key has two colons behind the domain, which no store publishes.
    [[nodiscard]] Dictionary networkInterfaceState() const;
    /// `networkInterfaceIPv4StateForInterfaceName:`.
    [[nodiscard]] Dictionary networkInterfaceIPv4StateForInterfaceName(const NSString& interfaceName) const;
    /// `networkInterfaceIPv6StateForInterfaceName:`.
    [[nodiscard]] Dictionary networkInterfaceIPv6StateForInterfaceName(const NSString& interfaceName) const;
    /// `networkInterfaceLinkStateForInterfaceName:`.
    [[nodiscard]] Dictionary networkInterfaceLinkStateForInterfaceName(const NSString& interfaceName) const;
    /// `networkInterfaceAirPortStateForInterfaceName:`.
    [[nodiscard]] Dictionary networkInterfaceAirPortStateForInterfaceName(const NSString& interfaceName) const;
    /// `networkInterfaceLinkQualityStateForInterfaceName:`.
    [[nodiscard]] Dictionary networkInterfaceLinkQualityStateForInterfaceName(const NSString& interfaceName) const;
    /// `networkInterfaceCaptiveNetworkStateForInterfaceName:`.
    [[nodiscard]] Dictionary networkInterfaceCaptiveNetworkStateForInterfaceName(const NSString& interfaceName) const;
    /// `networkInterfaceSleepProxyServersStateForInterfaceName:`.
    [[nodiscard]] Dictionary
    networkInterfaceSleepProxyServersStateForInterfaceName(const NSString& interfaceName) const;

    // The network as a whole.
    /// `networkGlobalIPv4Setup`.
    [[nodiscard]] Dictionary networkGlobalIPv4Setup() const;
    /// `networkGlobalIPv4State`.
    [[nodiscard]] Dictionary networkGlobalIPv4State() const;
    /// `networkGlobalIPv6State`.
    [[nodiscard]] Dictionary networkGlobalIPv6State() const;
    /// `networkGlobalDNSState`.
    [[nodiscard]] Dictionary networkGlobalDNSState() const;
    /// `networkGlobalProxiesState`.
    [[nodiscard]] Dictionary networkGlobalProxiesState() const;

    /// `networkServiceDictionaryForDomain:serviceId:entityType:`. Without an entity, what is under the service's own
    /// key.
    [[nodiscard]] Dictionary networkServiceDictionaryForDomain(const NSString& domain, const NSString& serviceId,
                                                               const std::optional<NSString>& entityType) const;

    /// `networkInterfaceDictionaryForDomain:interfaceName:entityType:`.
    [[nodiscard]] Dictionary networkInterfaceDictionaryForDomain(const NSString& domain, const NSString& interfaceName,
                                                                 const NSString& entityType) const;

    /// `networkGlobalDictionaryForDomain:entityType:`.
    [[nodiscard]] Dictionary networkGlobalDictionaryForDomain(const NSString& domain, const NSString& entityType) const;

    /// `networkInterfaceDictionaryForDomain:path:`. Deliberate: of the key "<domain>:<path>", although a domain ends
    /// with a colon itself.
    [[nodiscard]] Dictionary networkInterfaceDictionaryForDomain(const NSString& domain, const NSString& path) const;

    /// `dictionaryForKey:`. The dictionary under exactly that key. The one operation that reads.
    [[nodiscard]] Dictionary dictionaryForKey(const NSString& key) const;

    /// `configuredNetworkServiceKeys`. The keys of the services' interfaces, as they are set up, in the store's order;
    /// empty when there are none, and when the store cannot be asked.
    [[nodiscard]] std::vector<NSString> configuredNetworkServiceKeys() const;

    /// `serviceUUIDFromServiceKey:`. The first identifier (a UUID in capitals) inside `key`; nothing when there is
    /// none. Deliberate: it is found inside a longer run of digits, too.
    [[nodiscard]] std::optional<NSString> serviceUUIDFromServiceKey(const NSString& key) const;

    /// `configuredNetworkServiceIds`. The identifiers in the keys of `configuredNetworkServiceKeys`, in their order,
    /// with repetitions.
    [[nodiscard]] std::vector<NSString> configuredNetworkServiceIds() const;

private:
    friend class internal::ObjectMaker;

    explicit QKSCDynamicStore(const platform::Services& services);

    [[nodiscard]] std::shared_ptr<const platform::DynamicStore> connect() const;

    std::shared_ptr<const platform::SystemConfiguration> configuration_;
    std::optional<NSString> clientName_; // the main bundle's identifier
    const platform::DynamicStore* dynamicStoreRef_ = nullptr;
};

} // namespace qk
