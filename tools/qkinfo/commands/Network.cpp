// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Network.h"

#include "tools/qkinfo/commands/NetworkWords.h"

#include <utility>

namespace qk::info {

namespace {

/// What does not apply is no news to people; programs find every key.
Audience shownWhen(bool applies) {
    return applies ? Audience::Everyone : Audience::Programs;
}

std::optional<Content> speedContent(std::int64_t bitsPerSecond) {
    return bitsPerSecond > 0 ? std::optional<Content>(BitsPerSecond{static_cast<std::uint64_t>(bitsPerSecond)})
                             : std::nullopt;
}

/// The library takes the link of an interface without hardware for down, but nobody has looked.
std::optional<Content> linkContent(const QKNetworkInterface& interface) {
    const bool isKnown = interface.linkActive() || interface.hardwareModel().has_value();
    return isKnown ? std::optional<Content>(Choice{interface.linkActive(), "up", "down"}) : std::nullopt;
}

void addIPv4(Facts& facts, const QKNetworkInterfaceIPv4Configuration* view) {
    const Audience audience = shownWhen(view != nullptr);
    std::optional<Content> method;
    std::optional<Content> broadcast;
    std::optional<Content> router;
    std::optional<Content> signature;
    Lines addresses;
    Lines masks;
    if (view != nullptr) {
        method = methodContent(*view);
        addresses = addressesWithMasks(view->adresses(), view->subnetMasks());
        masks = linesOf(view->subnetMasks());
        broadcast = linesOf(view->broadcastAddresses());
        router = textContent(view->routerAddress());
        signature = textContent(view->networkSignature());
    }
    facts.push_back({"ipv4_method", "IPv4 configuration", std::move(method), audience});
    facts.push_back({"ipv4_addresses", "IPv4 addresses", std::move(addresses)});
    facts.push_back({"ipv4_subnet_masks", "IPv4 subnet masks", std::move(masks), Audience::Programs});
    facts.push_back({"ipv4_broadcast_addresses", "IPv4 broadcast", std::move(broadcast), audience});
    facts.push_back({"ipv4_router", "IPv4 router", std::move(router), audience});
    facts.push_back({"ipv4_network_signature", "IPv4 network", std::move(signature), Audience::Programs});
}

void addIPv6(Facts& facts, const QKNetworkInterfaceIPv6Configuration* view) {
    const Audience audience = shownWhen(view != nullptr);
    std::optional<Content> method;
    std::optional<Content> router;
    std::optional<Content> signature;
    Lines addresses;
    if (view != nullptr) {
        method = methodContent(*view);
        addresses = addressesWithPrefixes(view->adresses(), view->prefixLengths());
        router = textContent(view->routerAddress());
        signature = textContent(view->networkSignature());
    }
    facts.push_back({"ipv6_method", "IPv6 configuration", std::move(method), audience});
    facts.push_back({"ipv6_addresses", "IPv6 addresses", std::move(addresses)});
    facts.push_back({"ipv6_router", "IPv6 router", std::move(router), audience});
    facts.push_back({"ipv6_network_signature", "IPv6 network", std::move(signature), Audience::Programs});
}

void addNames(Facts& facts, const QKNetworkInterfaceDNSConfiguration* view) {
    std::optional<Content> servers;
    std::optional<Content> domain;
    if (view != nullptr) {
        Lines lines = linesOf(view->serverAdresses());
        servers = lines.texts.empty() ? std::nullopt : std::optional<Content>(std::move(lines));
        domain = textContent(view->domainName());
    }
    facts.push_back({"dns_servers", "DNS servers", std::move(servers)});
    facts.push_back({"dns_domain", "DNS domain", std::move(domain)});
}

void addWireless(Facts& facts, const QKNetworkInterfaceAirPortConfiguration* view, bool isWireless) {
    std::optional<Content> name;
    std::optional<Content> power;
    if (view != nullptr) {
        name = textContent(view->ssid());
        power = Choice{view->powerStatus(), "on", "off"};
    }
    const Audience audience = shownWhen(isWireless || view != nullptr);
    facts.push_back({"wifi_network", "Wi-Fi network", std::move(name), audience});
    facts.push_back({"wifi_power", "Wi-Fi power", std::move(power), audience});
}

QKNetworkInfo::Interfaces interfacesOf(const NetworkOptions& options) {
    if (options.active) {
        return options.builtin ? QKNetworkInfo::activeBuiltinNetworkInterfaces()
                               : QKNetworkInfo::activeNetworkInterfaces();
    }
    QKNetworkInfo::Interfaces interfaces = QKNetworkInfo::networkInterfaces();
    if (options.builtin) {
        std::erase_if(interfaces, [](const auto& each) { return !each->builtin(); });
    }
    return interfaces;
}

std::string_view sentenceWithoutAny(const NetworkOptions& options) {
    if (options.active) {
        return options.builtin ? "No built-in network interface is active." : "No network interface is active.";
    }
    return options.builtin ? "No network interface is known to be built in." : "No network interfaces.";
}

} // namespace

Facts interfaceFacts(const QKNetworkInterface& interface) {
    const QKNetworkInterfaceType type = interface.type();
    Facts facts{
        {"name", "Name", textContent(interface.name())},
        {"display_name", "Display name", textContent(interface.displayName())},
        {"type", "Type", std::string(interfaceTypeWord(type))},
        {"link_active", "Link", linkContent(interface)},
        {"link_speed_bits_per_second", "Speed", speedContent(interface.linkSpeed())},
        {"builtin", "Built in", interface.builtin()},
        {"hardware_address", "Hardware address", textContent(interface.hardwareAddress())},
        {"hardware_model", "Model", textContent(interface.hardwareModel())},
    };
    const QKNetworkInterfaceConfiguration* views = interface.configuration().get();
    addIPv4(facts, views != nullptr ? views->ipv4Config().get() : nullptr);
    addIPv6(facts, views != nullptr ? views->ipv6Config().get() : nullptr);
    addNames(facts, views != nullptr ? views->dnsConfig().get() : nullptr);
    addWireless(facts, views != nullptr ? views->airPortConfig().get() : nullptr,
                type == QKNetworkInterfaceTypeIEEE80211);
    return facts;
}

List networkList(const NetworkOptions& options) {
    List list{{}, sentenceWithoutAny(options), "interface", "interfaces"};
    list.form = ListForm::Blocks;
    for (const auto& interface : interfacesOf(options)) {
        list.records.push_back(interfaceFacts(*interface));
    }
    return list;
}

std::optional<Body> network(const Surroundings& /*surroundings*/) {
    return networkList({});
}

} // namespace qk::info
