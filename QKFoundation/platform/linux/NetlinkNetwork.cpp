// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetlinkNetwork.h"

#include "QKFoundation/platform/linux/NetlinkSocket.h"
#include "QKFoundation/platform/linux/parse/Netlink.h"

#include <linux/neighbour.h>
#include <linux/netlink.h>
#include <linux/nexthop.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::size_t kExpectedLinks = 32;

void readLinks(NetlinkSocket& socket, std::vector<NetworkLink>& links) {
    NetlinkRequest request(RTM_GETLINK, NLM_F_DUMP, ifinfomsg{});
    request.append(IFLA_EXT_MASK, std::uint32_t{RTEXT_FILTER_SKIP_STATS});
    const bool isWhole = socket.dump(
        request,
        [&links] {
            links.clear();
            links.reserve(kExpectedLinks);
        },
        [&links](const parse::NetlinkMessage& message) {
            if (message.type != RTM_NEWLINK) {
                return;
            }
            if (std::optional<NetworkLink> link = parse::link(message.payload)) {
                links.push_back(*std::move(link));
            }
        });
    if (!isWhole) {
        links.clear();
    }
}

void readAddresses(NetlinkSocket& socket, std::vector<NetworkAddress>& addresses) {
    const bool isWhole = socket.dump(
        NetlinkRequest(RTM_GETADDR, NLM_F_DUMP, ifaddrmsg{}),
        [&addresses] {
            addresses.clear();
            addresses.reserve(2 * kExpectedLinks);
        },
        [&addresses](const parse::NetlinkMessage& message) {
            if (message.type != RTM_NEWADDR) {
                return;
            }
            if (const auto address = parse::address(message.payload)) {
                addresses.push_back(*address);
            }
        });
    if (!isWhole) {
        addresses.clear();
    }
}

std::optional<parse::NextHop> readNextHop(NetlinkSocket& socket, std::uint32_t number) {
    NetlinkRequest request(RTM_GETNEXTHOP, 0, nhmsg{});
    request.append(NHA_ID, number);
    std::optional<parse::NextHop> hop;
    const bool isAnswered = socket.ask(request, [&hop](const parse::NetlinkMessage& message) {
        if (message.type == RTM_NEWNEXTHOP) {
            hop = parse::nextHop(message.payload);
        }
    });
    return isAnswered ? hop : std::nullopt;
}

// Takes the place of routes that refer to objects of next hops, which a kernel sends alone when it is told to
// (net.ipv4.nexthop_compat_mode). Groups do not nest.
void resolveNextHops(NetlinkSocket& socket, std::vector<NetworkRoute>& routes) {
    if (std::ranges::all_of(routes, [](const NetworkRoute& route) { return route.nextHop == 0; })) {
        return;
    }
    std::vector<NetworkRoute> resolved;
    const auto append = [&resolved](NetworkRoute route, const std::optional<parse::NextHop>& hop) {
        if (hop.has_value() && hop->link > 0) {
            route.nextHop = 0;
            route.link = hop->link;
            route.gateway = hop->gateway;
            resolved.push_back(route);
        }
    };
    for (const NetworkRoute& route : routes) {
        if (route.nextHop == 0) {
            resolved.push_back(route);
            continue;
        }
        const auto hop = readNextHop(socket, route.nextHop);
        append(route, hop);
        for (const std::uint32_t member : hop.has_value() ? hop->members : std::vector<std::uint32_t>()) {
            append(route, readNextHop(socket, member));
        }
    }
    routes = std::move(resolved);
}

void readDefaultRoutes(NetlinkSocket& socket, std::vector<NetworkRoute>& routes) {
    rtmsg filter{};
    filter.rtm_table = RT_TABLE_MAIN;
    filter.rtm_type = RTN_UNICAST;
    const bool isWhole = socket.dump(
        NetlinkRequest(RTM_GETROUTE, NLM_F_DUMP, filter), [&routes] { routes.clear(); },
        [&routes](const parse::NetlinkMessage& message) {
            if (message.type == RTM_NEWROUTE) {
                parse::appendDefaultRoutes(message.payload, routes);
            }
        });
    if (!isWhole) {
        routes.clear();
    }
    resolveNextHops(socket, routes);
}

// The kernel lists one protocol behind the other, each ascending by link as a rule.
void arrangeAddresses(std::vector<NetworkAddress>& addresses) {
    const auto middle = std::ranges::is_sorted_until(addresses, {}, &NetworkAddress::link);
    if (std::ranges::is_sorted(middle, addresses.end(), {}, &NetworkAddress::link)) {
        std::ranges::inplace_merge(addresses, middle, {}, &NetworkAddress::link);
    } else {
        std::ranges::stable_sort(addresses, {}, &NetworkAddress::link);
    }
}

std::string linkTarget(const std::string& path) {
    std::array<char, 4096> target{};
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    return {target.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

std::optional<std::string> lastComponent(const std::string& path) {
    return path.empty() ? std::nullopt : std::optional(path.substr(path.rfind('/') + 1));
}

} // namespace

KernelNetwork readKernelNetwork(NetlinkSocket& socket) {
    KernelNetwork network;
    if (socket.isOpen()) {
        readLinks(socket, network.links);
        readAddresses(socket, network.addresses);
        readDefaultRoutes(socket, network.defaultRoutes);
        arrange(network);
    }
    return network;
}

void arrange(KernelNetwork& network) {
    if (!std::ranges::is_sorted(network.links, std::ranges::less_equal(), &NetworkLink::index)) {
        std::ranges::stable_sort(network.links, {}, &NetworkLink::index);
        const auto hasSameIndex = [](const NetworkLink& one, const NetworkLink& other) {
            return one.index == other.index;
        };
        network.links.erase(std::unique(network.links.begin(), network.links.end(), hasSameIndex), network.links.end());
    }
    arrangeAddresses(network.addresses);
    std::ranges::stable_sort(network.defaultRoutes, {}, &NetworkRoute::priority);
}

void addParentDevices(const LinuxRoot& root, KernelNetwork& network) {
    for (NetworkLink& link : network.links) {
        if (!link.parentDevice.has_value()) {
            const std::string device = root.path("/sys/class/net/") + link.name + "/device";
            link.parentDevice = lastComponent(linkTarget(device));
            link.parentBus =
                link.parentDevice.has_value() ? lastComponent(linkTarget(device + "/subsystem")) : std::nullopt;
        }
    }
}

std::optional<std::string> readNeighbour(NetlinkSocket& socket, std::int32_t link, const InternetAddress& address) {
    const bool isIPv4 = address.family == AddressFamily::IPv4;
    ndmsg which{};
    which.ndm_family = isIPv4 ? AF_INET : AF_INET6;
    which.ndm_ifindex = link;
    NetlinkRequest request(RTM_GETNEIGH, 0, which);
    request.append(NDA_DST, std::as_bytes(std::span(address.bytes)).first(isIPv4 ? 4 : address.bytes.size()));
    std::optional<std::string> text;
    const bool isAnswered = socket.ask(request, [&text](const parse::NetlinkMessage& message) {
        if (message.type == RTM_NEWNEIGH) {
            text = parse::neighbourHardwareAddress(message.payload);
        }
    });
    return isAnswered ? text : std::nullopt;
}

} // namespace qk::platform
