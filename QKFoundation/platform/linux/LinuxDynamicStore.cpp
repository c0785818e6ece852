// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxDynamicStore.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/NetworkProxies.h"
#include "QKFoundation/platform/linux/NetworkValues.h"
#include "QKFoundation/platform/linux/SchemaTexts.h"
#include "QKFoundation/platform/linux/WholeMatch.h"

#include <array>
#include <cstddef>
#include <string>

namespace qk::platform {
namespace {

using Entity = StoreKey::Entity;
using Subject = StoreKey::Subject;

constexpr std::u16string_view kServiceInterfaces = u"Setup:/Network/Service/.*/Interface";
constexpr std::u16string_view kServiceHead = u"Setup:/Network/Service/";
constexpr std::u16string_view kInterfaceTail = u"/Interface";

// What may stand behind the name of an interface, of a service and of the whole network.
constexpr std::array<std::u16string_view, 4> kInterfaceEntities{u"/IPv4", u"/IPv6", u"/Link", u"/AirPort"};
constexpr std::array<std::u16string_view, 5> kSetupEntities{u"", u"/Interface", u"/IPv4", u"/IPv6", u"/Proxies"};
constexpr std::array<std::u16string_view, 4> kStateEntities{u"/IPv4", u"/IPv6", u"/DNS", u"/DHCP"};
constexpr std::array<std::u16string_view, 6> kGlobalKeys{
    u"State:/Network/Global/IPv4",    u"State:/Network/Global/IPv6", u"State:/Network/Global/DNS",
    u"State:/Network/Global/Proxies", u"Setup:/Network/Global/IPv4", u"State:/Network/Interface"};

// The link that a key names; its bytes are found without a detour where they are ASCII.
const NetworkLink* linkNamed(std::u16string_view name, const NetworkSnapshot& snapshot) {
    std::array<char, 64> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
    if (name.size() > bytes.size()) {
        return nullptr; // the kernel's names have at most 15 bytes
    }
    for (std::size_t index = 0; index < name.size(); ++index) {
        if (name[index] >= 0x80) {
            const auto other = fileSystemRepresentation(NSString(name));
            return other.has_value() ? snapshot.link(*other) : nullptr;
        }
        bytes[index] = static_cast<char>(name[index]);
    }
    return snapshot.link(std::string_view(bytes.data(), name.size()));
}

const NSDictionary& methodDictionary(const NSString& method) {
    // The few that there are, each made once; `method` is one of the texts that stay.
    static const auto& all = *[] {
        const SchemaTexts& texts = schemaTexts();
        auto* const made = new std::vector<std::pair<const NSString*, NSDictionary>>;
        for (const NSString* text :
             {&texts.automatic, &texts.dhcp, &texts.linkLocal, &texts.manual, &texts.ppp, &texts.sixToFour}) {
            made->emplace_back(text, NSDictionary{{texts.configMethod, *text}});
        }
        return made;
    }();
    for (const auto& [text, dictionary] : all) {
        if (text == &method) {
            return dictionary;
        }
    }
    return all.front().second;
}

std::optional<NSDictionary> method(const NSString* text) {
    return text != nullptr ? std::optional(methodDictionary(*text)) : std::nullopt;
}

} // namespace

std::optional<Value> LinuxDynamicStore::copyValue(const NSString& key) const {
    Entry found = dictionary(key);
    return found.has_value() ? std::optional(Value(*std::move(found))) : std::nullopt;
}

LinuxDynamicStore::Entry LinuxDynamicStore::dictionary(const NSString& key) const {
    const std::optional<StoreKey> wanted = storeKey(key.units());
    if (!wanted.has_value()) {
        return std::nullopt;
    }
    const bool isSetup = wanted->domain == StoreKey::Domain::Setup;
    switch (wanted->subject) {
    case Subject::Service: {
        const NetworkService* service = services_->service(wanted->name);
        if (service == nullptr) {
            return std::nullopt;
        }
        return isSetup ? serviceSetup(*service, wanted->entity) : serviceState(*service, wanted->entity);
    }
    case Subject::Interface: return isSetup ? std::nullopt : interfaceState(*wanted);
    case Subject::Global: return isSetup ? globalSetup(wanted->entity) : globalState(wanted->entity);
    case Subject::AllInterfaces: return isSetup ? std::nullopt : allInterfaces();
    }
    return std::nullopt;
}

template <typename Make>
LinuxDynamicStore::Entry LinuxDynamicStore::ofAddresses(const NetworkLink& link, AddressFamily family,
                                                        Make make) const {
    const std::scoped_lock lock(mutex_);
    if (latest_.link != link.index || latest_.family != family) {
        latest_ = {link.index, family, values::addressValues(link, family, services_->snapshot())};
    }
    return make(latest_.values);
}

LinuxDynamicStore::Entry LinuxDynamicStore::interfaceState(const StoreKey& key) const {
    const NetworkSnapshot& snapshot = services_->snapshot();
    const NetworkLink* link = linkNamed(key.name, snapshot);
    if (link == nullptr) {
        return std::nullopt;
    }
    switch (key.entity) {
    case Entity::IPv4: return ofAddresses(*link, AddressFamily::IPv4, values::interfaceIPv4);
    case Entity::IPv6: return ofAddresses(*link, AddressFamily::IPv6, values::interfaceIPv6);
    case Entity::Link: return values::link(*link);
    case Entity::AirPort: return values::airPort(*link, snapshot);
    default: return std::nullopt;
    }
}

LinuxDynamicStore::Entry LinuxDynamicStore::serviceSetup(const NetworkService& service, Entity entity) const {
    switch (entity) {
    case Entity::None: return NSDictionary{{schemaTexts().userDefinedName, service.name}};
    case Entity::Interface: return values::interfaceSetup(service);
    case Entity::IPv4: return method(service.ipv4Method);
    case Entity::IPv6: return method(service.ipv6Method);
    case Entity::Proxies: return services_->isPrimary(service) ? environmentProxies(variables_) : std::nullopt;
    default: return std::nullopt;
    }
}

LinuxDynamicStore::Entry LinuxDynamicStore::serviceState(const NetworkService& service, Entity entity) const {
    const NetworkSnapshot& snapshot = services_->snapshot();
    if (!service.isActive || service.link == nullptr) {
        return std::nullopt;
    }
    const NetworkLink& link = *service.link;
    const auto ofFamily = [&](AddressFamily family, auto make) {
        const auto router = values::router(link, family, snapshot);
        return ofAddresses(link, family, [&](const auto& addresses) { return make(addresses, router); });
    };
    switch (entity) {
    case Entity::IPv4: return ofFamily(AddressFamily::IPv4, values::serviceIPv4);
    case Entity::IPv6: return ofFamily(AddressFamily::IPv6, values::serviceIPv6);
    case Entity::DNS: return values::dns(services_->nameServers(service));
    case Entity::DHCP: {
        const auto lease = services_->lease(service);
        return lease != nullptr ? values::dhcp(*lease) : std::nullopt;
    }
    default: return std::nullopt;
    }
}

LinuxDynamicStore::Entry LinuxDynamicStore::globalSetup(Entity entity) const {
    if (entity != Entity::IPv4 || services_->all().empty()) {
        return std::nullopt;
    }
    std::vector<Value> order;
    for (const NetworkService& service : services_->all()) {
        order.emplace_back(service.id);
    }
    return NSDictionary{{schemaTexts().serviceOrder, NSArray(std::move(order))}};
}

LinuxDynamicStore::Entry LinuxDynamicStore::globalState(Entity entity) const {
    switch (entity) {
    case Entity::IPv4: return globalRoute(AddressFamily::IPv4);
    case Entity::IPv6: return globalRoute(AddressFamily::IPv6);
    case Entity::DNS: return values::dns(services_->globalNameServers());
    case Entity::Proxies: return environmentProxies(variables_);
    default: return std::nullopt;
    }
}

LinuxDynamicStore::Entry LinuxDynamicStore::globalRoute(AddressFamily family) const {
    const NetworkSnapshot& snapshot = services_->snapshot();
    const NetworkRoute* route = snapshot.primaryRoute(family);
    const NetworkLink* link = route != nullptr ? snapshot.link(route->link) : nullptr;
    if (link == nullptr) {
        return std::nullopt;
    }
    const SchemaTexts& texts = schemaTexts();
    std::vector<NSDictionary::Entry> entries{{texts.primaryInterface, stringWithFileSystemRepresentation(link->name)}};
    if (const NetworkService* service = services_->primary(family); service != nullptr) {
        entries.emplace_back(texts.primaryService, service->id);
    }
    if (route->gateway.has_value()) {
        entries.emplace_back(texts.router, NSString::fromUTF8Lossy(route->gateway->text()));
    }
    return NSDictionary(std::move(entries));
}

LinuxDynamicStore::Entry LinuxDynamicStore::allInterfaces() const {
    std::vector<Value> names;
    for (const NetworkLink& link : services_->snapshot().kernel().links) {
        names.emplace_back(stringWithFileSystemRepresentation(link.name));
    }
    if (names.empty()) {
        return std::nullopt;
    }
    return NSDictionary{{schemaTexts().interfaces, NSArray(std::move(names))}};
}

std::vector<NSString> LinuxDynamicStore::allKeys() const {
    std::vector<NSString> keys;
    const auto add = [&](NSString key) {
        if (dictionary(key).has_value()) {
            keys.push_back(std::move(key));
        }
    };
    const auto services = services_->byLink();
    for (const NetworkService* service : services) {
        for (const std::u16string_view entity : kSetupEntities) {
            add(NSString::concatenated({kServiceHead, service->id.units(), entity}));
        }
    }
    for (const NetworkLink& link : services_->snapshot().kernel().links) {
        for (const std::u16string_view entity : kInterfaceEntities) {
            add(NSString::concatenated(
                {u"State:/Network/Interface/", stringWithFileSystemRepresentation(link.name).units(), entity}));
        }
    }
    for (const NetworkService* service : services) {
        for (const std::u16string_view entity : kStateEntities) {
            add(NSString::concatenated({u"State:/Network/Service/", service->id.units(), entity}));
        }
    }
    for (const std::u16string_view key : kGlobalKeys) {
        add(NSString(key));
    }
    return keys;
}

std::optional<std::vector<NSString>> LinuxDynamicStore::copyKeyList(const NSString& pattern) const {
    std::vector<NSString> keys;
    if (pattern.units() == kServiceInterfaces) { // asked for all the time; every service has that entry
        keys.reserve(services_->all().size());
        for (const NetworkService* service : services_->byLink()) {
            keys.push_back(NSString::concatenated({kServiceHead, service->id.units(), kInterfaceTail}));
        }
        return keys;
    }
    const std::optional<WholeMatch> match = WholeMatch::compile(pattern);
    if (!match.has_value()) {
        return std::nullopt;
    }
    for (NSString& key : allKeys()) {
        if (match->matches(key)) {
            keys.push_back(std::move(key));
        }
    }
    return keys;
}

} // namespace qk::platform
