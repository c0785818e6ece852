// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/BusValues.h"
#include "QKFoundation/platform/linux/NetworkBus.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include <arpa/inet.h>
#include <linux/if.h>
#include <linux/if_addr.h>
#include <linux/rtnetlink.h>
#include <net/if_arp.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Facts of a network as the kernel and the bus tell them, written short.
namespace qk::tests {

inline platform::InternetAddress internetAddress(const std::string& text) {
    platform::InternetAddress result;
    const bool isIPv6 = text.find(':') != std::string::npos;
    result.family = isIPv6 ? platform::AddressFamily::IPv6 : platform::AddressFamily::IPv4;
    if (::inet_pton(isIPv6 ? AF_INET6 : AF_INET, text.c_str(), result.bytes.data()) != 1) {
        throw std::invalid_argument(text);
    }
    return result;
}

/// A link that is up and has a carrier.
inline platform::NetworkLink networkLink(std::int32_t index, const std::string& name, const std::string& kind = "") {
    platform::NetworkLink result;
    result.index = index;
    result.name = name;
    result.kind = kind;
    result.flags = IFF_UP | IFF_LOWER_UP;
    result.hardwareType = ARPHRD_ETHER;
    result.hardwareAddress = {0x52, 0x54, 0, 0x12, 0x34, static_cast<std::uint8_t>(index)};
    result.mtu = 1500;
    result.minimumMTU = 68;
    result.maximumMTU = 9000;
    return result;
}

/// As `networkLink`, of a card.
inline platform::NetworkLink cardLink(std::int32_t index, const std::string& name) {
    platform::NetworkLink result = networkLink(index, name);
    result.parentDevice = "0000:00:03.0";
    result.parentBus = "pci";
    return result;
}

inline platform::NetworkLink loopbackLink() {
    platform::NetworkLink result = networkLink(1, "lo");
    result.flags |= IFF_LOOPBACK;
    result.hardwareType = ARPHRD_LOOPBACK;
    result.hardwareAddress = std::vector<std::uint8_t>(6);
    return result;
}

/// An address that stays, "192.0.2.2/24"; one of the link alone where its beginning says so.
inline platform::NetworkAddress networkAddress(std::int32_t link, const std::string& text) {
    const std::size_t slash = text.find('/');
    platform::NetworkAddress result;
    result.link = link;
    result.address = internetAddress(text.substr(0, slash));
    result.prefixLength = static_cast<std::uint8_t>(std::stoi(text.substr(slash + 1)));
    result.flags = IFA_F_PERMANENT;
    result.scope = text.starts_with("fe80:") || text.starts_with("169.254.") ? RT_SCOPE_LINK : RT_SCOPE_UNIVERSE;
    return result;
}

inline platform::NetworkRoute defaultRoute(std::int32_t link, const std::string& gateway, std::uint32_t priority = 0,
                                           std::uint8_t protocol = RTPROT_STATIC) {
    platform::NetworkRoute result;
    result.link = link;
    result.gateway = internetAddress(gateway);
    result.family = result.gateway->family;
    result.priority = priority;
    result.protocol = protocol;
    return result;
}

inline platform::BusValue busText(std::string text) {
    return {std::move(text)};
}
inline platform::BusValue busNumber(std::int64_t number) {
    return {number};
}
inline platform::BusValue busBoolean(bool boolean) {
    return {boolean};
}
inline platform::BusValue busList(platform::BusList list) {
    return {std::move(list)};
}
inline platform::BusValue busDictionary(platform::BusDictionary dictionary) {
    return {std::move(dictionary)};
}

/// A bus whose services tell what a test puts there.
class ToldBus final : public platform::NetworkBus {
public:
    explicit ToldBus(std::optional<platform::networkmanager::Facts> facts,
                     std::optional<platform::LinkNameServers> servers = std::nullopt)
        : facts_(std::move(facts)), servers_(std::move(servers)) {}

    [[nodiscard]] std::optional<platform::networkmanager::Facts> networkManager() override { return facts_; }
    [[nodiscard]] std::optional<platform::LinkNameServers> resolved() override { return servers_; }

private:
    std::optional<platform::networkmanager::Facts> facts_;
    std::optional<platform::LinkNameServers> servers_;
};

} // namespace qk::tests
