// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"

#include <array>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qk::platform {

enum class AddressFamily : std::uint8_t { IPv4, IPv6 };

/// An address of the internet protocols, in the order of the network; IPv4 uses the first four bytes.
struct InternetAddress {
    AddressFamily family = AddressFamily::IPv4;
    std::array<std::uint8_t, 16> bytes{};

    /// As inet_ntop(3) writes it.
    [[nodiscard]] std::string text() const;

    /// The same, written to `room`.
    using Room = std::array<char, 48>;
    [[nodiscard]] std::string_view text(Room& room) const;

    friend bool operator==(const InternetAddress&, const InternetAddress&) = default;
};

/// A link (RTM_NEWLINK).
struct NetworkLink {
    std::int32_t index = 0;
    std::string name;                          ///< IFLA_IFNAME
    std::uint32_t flags = 0;                   ///< ifi_flags: IFF_UP, IFF_LOWER_UP, ...
    std::uint16_t hardwareType = 0;            ///< ifi_type: ARPHRD_...
    std::string kind;                          ///< IFLA_INFO_KIND: "bridge", "vlan", ...; "" for a device
    std::vector<std::uint8_t> hardwareAddress; ///< IFLA_ADDRESS
    std::optional<std::uint32_t> minimumMTU;   ///< IFLA_MIN_MTU
    std::optional<std::uint32_t> maximumMTU;   ///< IFLA_MAX_MTU; 0 of the kernel, no limit known, is nothing
    std::uint32_t mtu = 0;                     ///< IFLA_MTU
    std::int32_t master = 0;                   ///< IFLA_MASTER: the bridge or bond that it is a port of; 0: none
    std::optional<std::string> parentDevice;   ///< IFLA_PARENT_DEV_NAME, or the name that <if>/device leads to
    std::optional<std::string> parentBus;      ///< IFLA_PARENT_DEV_BUS_NAME, or <if>/device/subsystem

    friend bool operator==(const NetworkLink&, const NetworkLink&) = default;
};

/// An address of a link (RTM_NEWADDR): IFA_LOCAL where there is one, else IFA_ADDRESS.
struct NetworkAddress {
    std::int32_t link = 0;
    InternetAddress address;
    std::uint8_t prefixLength = 0;
    std::uint8_t scope = 0;                   ///< RT_SCOPE_...
    std::uint32_t flags = 0;                  ///< IFA_F_...
    std::uint8_t protocol = 0;                ///< IFA_PROTO: 1 loopback, 2 router advertisement, 3 link-local; else 0
    std::optional<InternetAddress> broadcast; ///< IFA_BROADCAST

    friend bool operator==(const NetworkAddress&, const NetworkAddress&) = default;
};

/// One hop of a default route of the main table (RTM_NEWROUTE, multi-path routes taken apart).
struct NetworkRoute {
    std::int32_t link = 0;
    AddressFamily family = AddressFamily::IPv4;
    std::optional<InternetAddress> gateway; ///< nothing: reached directly
    std::uint32_t priority = 0;             ///< RTA_PRIORITY; the lowest is the best
    std::uint8_t protocol = 0;              ///< RTPROT_...
    std::uint32_t nextHop = 0;              ///< RTA_NH_ID while that object, not the route, tells link and gateway

    friend bool operator==(const NetworkRoute&, const NetworkRoute&) = default;
};

/// What the kernel tells of the network.
struct KernelNetwork {
    std::vector<NetworkLink> links;          ///< ascending by index
    std::vector<NetworkAddress> addresses;   ///< of links ascending; those of one link in the kernel's order, without
                                             ///< IPv6 addresses that are tentative or turned out to be taken
    std::vector<NetworkRoute> defaultRoutes; ///< best first
};

/// What a wireless link tells (nl80211).
struct WirelessFacts {
    bool powered = false;                ///< up, and no rfkill switch of its radio blocks
    std::optional<std::string> ssid;     ///< bytes; nothing while it is not associated
    std::optional<std::int64_t> bitRate; ///< of the present station, bits per second
};

/// What ethtool tells of a link's medium.
struct MediumFacts {
    std::optional<std::int64_t> megabitsPerSecond;
    std::optional<bool> fullDuplex;
    std::uint8_t port = 0xFF; ///< PORT_TP, PORT_FIBRE, ...

    friend bool operator==(const MediumFacts&, const MediumFacts&) = default;
};

/// What people call the device behind a link. What is not known is nothing.
struct HardwareNames {
    std::optional<std::string> vendor;
    std::optional<std::string> model;

    friend bool operator==(const HardwareNames&, const HardwareNames&) = default;
};

/// One look at the network: each kind of facts is read when it is first asked for, and stays as it was. Threads: any,
/// at the same time.
class NetworkSnapshot {
public:
    explicit NetworkSnapshot(LinuxRoot root = {});
    /// A look that has been taken already: of captured facts.
    NetworkSnapshot(KernelNetwork kernel, LinuxRoot root);
    NetworkSnapshot(const NetworkSnapshot&) = delete;
    NetworkSnapshot& operator=(const NetworkSnapshot&) = delete;
    ~NetworkSnapshot();

    /// Links, addresses and routes (rtnetlink). Empty where the kernel cannot be asked, and for captured files.
    [[nodiscard]] const KernelNetwork& kernel() const;

    /// Null when there is none.
    [[nodiscard]] const NetworkLink* link(std::string_view name) const;
    [[nodiscard]] const NetworkLink* link(std::int32_t index) const;

    /// The addresses of a link, both families, in the order of `kernel`.
    [[nodiscard]] std::span<const NetworkAddress> addresses(std::int32_t link) const;

    /// The best default route through a link; null when there is none.
    [[nodiscard]] const NetworkRoute* defaultRoute(std::int32_t link, AddressFamily family) const;

    /// The best default route of all; null when there is none.
    [[nodiscard]] const NetworkRoute* primaryRoute(AddressFamily family) const;

    /// The hardware address of a neighbour, "52:54:00:12:34:56" (RTM_GETNEIGH, NDA_LLADDR); nothing while it is not
    /// resolved.
    [[nodiscard]] std::optional<std::string> neighbour(std::int32_t link, const InternetAddress& address) const;

    /// Nothing for a link that is not wireless.
    [[nodiscard]] std::optional<WirelessFacts> wireless(const NetworkLink& link) const;

    /// Nothing for a link that has no settings to tell. Asked anew each time.
    [[nodiscard]] std::optional<MediumFacts> medium(const NetworkLink& link) const;

    /// Vendor and model of the device behind the link ("NetworkDevice.h"); for a virtual link nothing, without a look
    /// at files.
    [[nodiscard]] HardwareNames hardware(const NetworkLink& link) const;

    [[nodiscard]] const LinuxRoot& root() const noexcept { return root_; }

private:
    struct Lazy;
    LinuxRoot root_;
    std::unique_ptr<Lazy> lazy_;
};

} // namespace qk::platform
