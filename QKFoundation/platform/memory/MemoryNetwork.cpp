// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/memory/MemoryNetwork.h"

#include "QKFoundation/platform/values/NSDictionary.h"

#include <array>
#include <cstdio>
#include <memory>
#include <string_view>
#include <utility>

namespace qk::platform::memory {
namespace {

using Entries = std::vector<NSDictionary::Entry>;

void add(Entries& entries, const NSString& key, const std::optional<NSString>& text) {
    if (text.has_value()) {
        entries.emplace_back(key, *text);
    }
}

NSArray arrayOf(const std::vector<std::int32_t>& numbers) {
    return NSArray(std::vector<Value>(numbers.begin(), numbers.end()));
}

NSDictionary ipv4State(const MemoryNetworkService& service, bool isOfInterface) {
    Entries entries{{kSCPropNetIPv4Addresses, NSArray(service.ipv4Addresses)},
                    {kSCPropNetIPv4SubnetMasks, NSArray(service.subnetMasks)}};
    if (isOfInterface) {
        entries.emplace_back(kSCPropNetIPv4BroadcastAddresses, NSArray(service.broadcastAddresses));
    } else {
        add(entries, kSCPropNetIPv4Router, service.ipv4Router);
        if (service.ipv4Router.has_value()) {
            entries.emplace_back(kStoreKeyNetworkSignature, NSString("IPv4.Router=") + *service.ipv4Router);
        }
    }
    return NSDictionary(std::move(entries));
}

NSDictionary ipv6State(const MemoryNetworkService& service, bool isOfInterface) {
    Entries entries{{kSCPropNetIPv6Addresses, NSArray(service.ipv6Addresses)},
                    {kSCPropNetIPv6PrefixLength, arrayOf(service.prefixLengths)}};
    if (!isOfInterface) {
        add(entries, kSCPropNetIPv6Router, service.ipv6Router);
    }
    return NSDictionary(std::move(entries));
}

NSString identifierOfNumber(std::size_t number) {
    std::array<char, 37> text{};
    std::snprintf(text.data(), text.size(), "00000000-0000-4000-8000-%012zX", number);
    return NSString::fromUTF8Lossy(text.data());
}

} // namespace

NSString MemoryNetwork::addService(const MemoryNetworkService& service) {
    const std::scoped_lock lock(mutex_);
    NSString serviceID = service.serviceID.has_value() ? *service.serviceID : identifierOfNumber(++count_);
    addToStore(service, serviceID);
    addToPreferences(service, serviceID);
    if (!ioRegistry_.hasEntry(service.bsdName)) {
        addToRegistry(service);
    }
    return serviceID;
}

void MemoryNetwork::addToStore(const MemoryNetworkService& service, const NSString& serviceID) {
    const auto setService = [&](const NSString& domain, const std::optional<NSString>& entity, const Value& value) {
        systemConfiguration_.setStoreValue(SCDynamicStoreKeyCreateNetworkServiceEntity(domain, serviceID, entity),
                                           value);
    };
    const auto setInterface = [&](const NSString& entity, const Value& value) {
        systemConfiguration_.setStoreValue(
            SCDynamicStoreKeyCreateNetworkInterfaceEntity(kSCDynamicStoreDomainState, service.bsdName, entity), value);
    };
    const NSString setup = kSCDynamicStoreDomainSetup;
    const NSString state = kSCDynamicStoreDomainState;
    setService(setup, std::nullopt, NSDictionary{{kSCPropUserDefinedName, service.name}});
    setService(setup, NSString(kSCEntNetInterface),
               NSDictionary{{kSCPropNetInterfaceDeviceName, service.bsdName},
                            {kSCPropNetInterfaceType, service.interfaceType},
                            {kSCPropUserDefinedName, service.name}});
    setInterface(kSCEntNetLink, NSDictionary{{kSCPropNetLinkActive, service.linkActive}});
    if (!service.ipv4Addresses.empty()) {
        setService(setup, NSString(kSCEntNetIPv4),
                   NSDictionary{{kSCPropNetIPv4ConfigMethod, service.ipv4ConfigMethod}});
        setInterface(kSCEntNetIPv4, ipv4State(service, true));
        setService(state, NSString(kSCEntNetIPv4), ipv4State(service, false));
    }
    if (!service.ipv6Addresses.empty()) {
        setService(setup, NSString(kSCEntNetIPv6),
                   NSDictionary{{kSCPropNetIPv6ConfigMethod, service.ipv6ConfigMethod}});
        setInterface(kSCEntNetIPv6, ipv6State(service, true));
        setService(state, NSString(kSCEntNetIPv6), ipv6State(service, false));
    }
    if (!service.nameServers.empty()) {
        Entries dns{{kSCPropNetDNSServerAddresses, NSArray(service.nameServers)}};
        add(dns, kSCPropNetDNSDomainName, service.domainName);
        setService(state, NSString(kSCEntNetDNS), NSDictionary(std::move(dns)));
    }
    if (service.wirelessNetwork.has_value()) {
        setInterface(kSCEntNetAirPort, NSDictionary{{"Power Status", true}, {"SSID_STR", *service.wirelessNetwork}});
    }
}

void MemoryNetwork::addToPreferences(const MemoryNetworkService& service, const NSString& serviceID) {
    auto interface = std::make_shared<SCNetworkInterface>();
    interface->bsdName = service.bsdName;
    interface->localizedDisplayName = service.name;
    interface->interfaceType = service.interfaceType;
    interface->hardwareAddressString = service.hardwareAddress;
    interface->supportedProtocolTypes = NSArray{kSCNetworkProtocolTypeDNS, kSCNetworkProtocolTypeIPv4,
                                                kSCNetworkProtocolTypeIPv6, kSCNetworkProtocolTypeProxies};
    interface->transferUnits = service.transferUnits;
    auto entry = std::make_shared<SCNetworkService>();
    entry->enabled = service.enabled ? 1 : 0;
    entry->name = service.name;
    entry->serviceID = serviceID;
    entry->interface = std::move(interface);
    systemConfiguration_.addService(std::move(entry));
}

void MemoryNetwork::addToRegistry(const MemoryNetworkService& service) {
    constexpr std::int32_t kLinkValid = 1;
    constexpr std::int32_t kLinkActive = 2;
    Entries controller{{"IOLinkSpeed", service.linkSpeed},
                       {"IOLinkStatus", service.linkActive ? kLinkValid + kLinkActive : kLinkValid}};
    add(controller, "IOVendor", service.vendor);
    add(controller, "IOModel", service.model);
    MemoryRegistryEntry entry;
    entry.properties = NSDictionary{{"BSD Name", service.bsdName}, {"IOBuiltin", service.builtin}};
    entry.parent = NSDictionary(std::move(controller));
    ioRegistry_.addEntry(entry);
}

} // namespace qk::platform::memory
