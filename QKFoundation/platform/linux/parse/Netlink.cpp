// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/parse/Netlink.h"

#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/neighbour.h>
#include <linux/nexthop.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace qk::platform::parse {
namespace {

// Newer than the headers of some systems that the library is built on.
constexpr std::uint16_t kAddressProtocol = 11;   // IFA_PROTO
constexpr std::uint16_t kLinkParentName = 56;    // IFLA_PARENT_DEV_NAME
constexpr std::uint16_t kLinkParentBusName = 57; // IFLA_PARENT_DEV_BUS_NAME
constexpr std::uint32_t kUnusableAddress = IFA_F_TENTATIVE | IFA_F_DADFAILED;

template <typename T>
void assign(T& target, Bytes payload) noexcept {
    if (const auto value = leading<T>(payload)) {
        target = *value;
    }
}

void readHardwareAddress(std::vector<std::uint8_t>& target, Bytes payload) {
    const auto* const first = reinterpret_cast<const std::uint8_t*>(payload.data());
    target.assign(first, first + payload.size());
}

void readLinkAttribute(const NetlinkAttribute& attribute, NetworkLink& link) {
    switch (attribute.type) {
    case IFLA_IFNAME: link.name = terminatedText(attribute.payload); break;
    case IFLA_ADDRESS: readHardwareAddress(link.hardwareAddress, attribute.payload); break;
    case IFLA_MTU: assign(link.mtu, attribute.payload); break;
    case IFLA_MIN_MTU: link.minimumMTU = leading<std::uint32_t>(attribute.payload); break;
    case IFLA_MAX_MTU:
        link.maximumMTU = leading<std::uint32_t>(attribute.payload);
        if (link.maximumMTU == 0U) { // no limit is known
            link.maximumMTU.reset();
        }
        break;
    case IFLA_MASTER: assign(link.master, attribute.payload); break;
    case IFLA_LINKINFO: link.kind = terminatedText(attributePayload(attribute.payload, IFLA_INFO_KIND)); break;
    case kLinkParentName: link.parentDevice = terminatedText(attribute.payload); break;
    case kLinkParentBusName: link.parentBus = terminatedText(attribute.payload); break;
    default: break;
    }
}

// A hop of a route: where it goes and through which link.
void readHop(std::uint16_t type, Bytes payload, std::uint8_t family, NetworkRoute& route) noexcept {
    if (type == RTA_OIF) {
        assign(route.link, payload);
    } else if (type == RTA_GATEWAY) {
        route.gateway = internetAddress(family, payload);
    } else if (type == RTA_VIA) { // a router of the other protocol: its family, then its address
        const auto viaFamily = leading<std::uint16_t>(payload);
        if (viaFamily.has_value() && *viaFamily <= UINT8_MAX) {
            route.gateway = internetAddress(static_cast<std::uint8_t>(*viaFamily), payload.subspan(sizeof(*viaFamily)));
        }
    }
}

void appendHop(const NetworkRoute& route, std::vector<NetworkRoute>& routes) {
    if (route.link > 0 || route.nextHop != 0) {
        routes.push_back(route);
    }
}

// The hops of RTA_MULTIPATH: each a header with its own length, and attributes.
void appendHops(Bytes rest, std::uint8_t family, const NetworkRoute& route, std::vector<NetworkRoute>& routes) {
    for (auto hop = leading<rtnexthop>(rest);
         hop.has_value() && hop->rtnh_len >= sizeof(rtnexthop) && hop->rtnh_len <= rest.size();
         hop = leading<rtnexthop>(rest)) {
        NetworkRoute one = route;
        one.link = hop->rtnh_ifindex;
        one.gateway.reset();
        forEachAttribute(rest.first(hop->rtnh_len).subspan(sizeof(rtnexthop)), [&](const NetlinkAttribute& attribute) {
            if (attribute.type != RTA_OIF) {
                readHop(attribute.type, attribute.payload, family, one);
            }
        });
        appendHop(one, routes);
        rest = attributesBehind(rest, hop->rtnh_len);
    }
}

} // namespace

std::optional<InternetAddress> internetAddress(std::uint8_t family, Bytes bytes) noexcept {
    InternetAddress address;
    const std::size_t length = family == AF_INET ? 4 : address.bytes.size();
    if ((family != AF_INET && family != AF_INET6) || bytes.size() != length) {
        return std::nullopt;
    }
    address.family = family == AF_INET ? AddressFamily::IPv4 : AddressFamily::IPv6;
    std::memcpy(address.bytes.data(), bytes.data(), length);
    return address;
}

std::optional<NetworkLink> link(Bytes payload) {
    const auto header = leading<ifinfomsg>(payload);
    if (!header.has_value() || header->ifi_index <= 0) {
        return std::nullopt;
    }
    std::optional<NetworkLink> link(std::in_place);
    link->index = header->ifi_index;
    link->flags = header->ifi_flags;
    link->hardwareType = header->ifi_type;
    forEachAttribute(attributesBehind(payload, sizeof(ifinfomsg)),
                     [&link](const NetlinkAttribute& attribute) { readLinkAttribute(attribute, *link); });
    if (link->name.empty()) {
        link.reset();
    }
    return link;
}

std::optional<NetworkAddress> address(Bytes payload) noexcept {
    const auto header = leading<ifaddrmsg>(payload);
    if (!header.has_value() || header->ifa_index == 0 || header->ifa_index > INT32_MAX) {
        return std::nullopt;
    }
    NetworkAddress record;
    record.link = static_cast<std::int32_t>(header->ifa_index);
    record.prefixLength = header->ifa_prefixlen;
    record.scope = header->ifa_scope;
    record.flags = header->ifa_flags;
    std::optional<InternetAddress> local;
    std::optional<InternetAddress> peer; // on a link with two ends; else the address itself
    forEachAttribute(attributesBehind(payload, sizeof(ifaddrmsg)), [&](const NetlinkAttribute& attribute) {
        if (attribute.type == IFA_LOCAL) {
            local = internetAddress(header->ifa_family, attribute.payload);
        } else if (attribute.type == IFA_ADDRESS) {
            peer = internetAddress(header->ifa_family, attribute.payload);
        } else if (attribute.type == IFA_BROADCAST) {
            record.broadcast = internetAddress(header->ifa_family, attribute.payload);
        } else if (attribute.type == IFA_FLAGS) {
            assign(record.flags, attribute.payload);
        } else if (attribute.type == kAddressProtocol) {
            assign(record.protocol, attribute.payload);
        }
    });
    const auto& own = local.has_value() ? local : peer;
    if (!own.has_value() || (own->family == AddressFamily::IPv6 && (record.flags & kUnusableAddress) != 0)) {
        return std::nullopt;
    }
    record.address = *own;
    return record;
}

void appendDefaultRoutes(Bytes payload, std::vector<NetworkRoute>& routes) {
    const auto header = leading<rtmsg>(payload);
    if (!header.has_value() || header->rtm_dst_len != 0 || header->rtm_type != RTN_UNICAST ||
        (header->rtm_family != AF_INET && header->rtm_family != AF_INET6) || (header->rtm_flags & RTM_F_CLONED) != 0) {
        return;
    }
    std::uint32_t table = header->rtm_table; // one byte; the attribute has the whole number
    NetworkRoute route;
    route.family = header->rtm_family == AF_INET ? AddressFamily::IPv4 : AddressFamily::IPv6;
    route.protocol = header->rtm_protocol;
    Bytes hops;
    forEachAttribute(attributesBehind(payload, sizeof(rtmsg)), [&](const NetlinkAttribute& attribute) {
        if (attribute.type == RTA_TABLE) {
            assign(table, attribute.payload);
        } else if (attribute.type == RTA_PRIORITY) {
            assign(route.priority, attribute.payload);
        } else if (attribute.type == RTA_MULTIPATH) {
            hops = attribute.payload;
        } else if (attribute.type == RTA_NH_ID) {
            assign(route.nextHop, attribute.payload);
        } else {
            readHop(attribute.type, attribute.payload, header->rtm_family, route);
        }
    });
    if (table != RT_TABLE_MAIN) {
        return;
    }
    if (route.link > 0 || !hops.empty()) { // the kernel has spelled the object out, as it does by default
        route.nextHop = 0;
    }
    if (hops.empty()) {
        appendHop(route, routes);
    } else {
        appendHops(hops, header->rtm_family, route, routes);
    }
}

std::optional<NextHop> nextHop(Bytes payload) {
    const auto header = leading<nhmsg>(payload);
    if (!header.has_value()) {
        return std::nullopt;
    }
    NextHop hop;
    forEachAttribute(attributesBehind(payload, sizeof(nhmsg)), [&](const NetlinkAttribute& attribute) {
        if (attribute.type == NHA_OIF) {
            assign(hop.link, attribute.payload);
        } else if (attribute.type == NHA_GATEWAY) {
            hop.gateway = internetAddress(header->nh_family, attribute.payload);
        } else if (attribute.type == NHA_GROUP) {
            Bytes rest = attribute.payload;
            for (auto member = leading<nexthop_grp>(rest); member.has_value(); member = leading<nexthop_grp>(rest)) {
                hop.members.push_back(member->id);
                rest = rest.subspan(sizeof(nexthop_grp));
            }
        }
    });
    return hop;
}

std::optional<std::string> neighbourHardwareAddress(Bytes payload) {
    const auto header = leading<ndmsg>(payload);
    if (!header.has_value() || (header->ndm_state & (NUD_INCOMPLETE | NUD_FAILED | NUD_NOARP)) != 0) {
        return std::nullopt;
    }
    const Bytes bytes = attributePayload(attributesBehind(payload, sizeof(ndmsg)), NDA_LLADDR);
    const bool isTold = std::ranges::any_of(bytes, [](std::byte byte) { return byte != std::byte{0}; });
    return isTold ? std::optional(hardwareAddressText(bytes)) : std::nullopt;
}

std::string hardwareAddressText(Bytes bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    text.reserve(3 * bytes.size());
    for (const std::byte byte : bytes) {
        if (!text.empty()) {
            text.push_back(':');
        }
        text.push_back(kDigits[std::to_integer<std::size_t>(byte >> 4U)]);
        text.push_back(kDigits[std::to_integer<std::size_t>(byte & std::byte{15})]);
    }
    return text;
}

} // namespace qk::platform::parse
