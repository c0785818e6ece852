// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinkEvidence.h"

#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/SchemaTexts.h"
#include "QKFoundation/platform/linux/parse/Mounts.h"

// The C library's header of links goes before the kernel's.
#include <linux/if_addr.h>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <net/if_arp.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace qk::platform::evidence {
namespace {

constexpr std::uint8_t kFromRouterAdvertisement = 2; // IFAPROT_KERNEL_RA, which older headers do not have

struct Row {
    std::string_view name;
    const NSString SchemaTexts::*type;
};

// IFLA_INFO_KIND, and the driver's own DEVTYPE.
constexpr std::array kKinds{
    Row{"bond", &SchemaTexts::typeBond},      Row{"bridge", &SchemaTexts::typeBridge},
    Row{"ppp", &SchemaTexts::typePPP},        Row{"sit", &SchemaTexts::type6to4},
    Row{"team", &SchemaTexts::typeBond},      Row{"vlan", &SchemaTexts::typeVLAN},
    Row{"vti", &SchemaTexts::typeIPSec},      Row{"vti6", &SchemaTexts::typeIPSec},
    Row{"wwan", &SchemaTexts::typeWWAN},      Row{"xfrm", &SchemaTexts::typeIPSec},
    Row{"wlan", &SchemaTexts::typeIEEE80211}, Row{"bluetooth", &SchemaTexts::typeBluetooth},
};

const NSString* typeOfKind(std::string_view kind) {
    const auto* row = std::ranges::find(kKinds, kind, &Row::name);
    return row != kKinds.end() ? &(schemaTexts().*(row->type)) : nullptr;
}

// DEVTYPE tells apart what has no kind: it is a device.
const NSString* typeOfDevice(const NetworkLink& link, const LinuxRoot& root) {
    const std::optional<std::string> event = readBytes(root.path("/sys/class/net/" + link.name + "/uevent"));
    return event.has_value() ? typeOfKind(parse::deviceProperty(*event, "DEVTYPE=")) : nullptr;
}

bool isOfFamily(const NetworkAddress& address, AddressFamily family) {
    return address.address.family == family;
}

bool is6to4(const NetworkAddress& address) {
    return isOfFamily(address, AddressFamily::IPv6) && address.address.bytes[0] == 0x20 &&
           address.address.bytes[1] == 0x02;
}

bool isBeyondLink(const NetworkAddress& address) {
    return address.scope < RT_SCOPE_LINK;
}

// Nobody gives an address a time to live by hand.
bool isLeased(const NetworkAddress& address) {
    return (address.flags & IFA_F_PERMANENT) == 0;
}

bool isIPv4LinkLocal(const NetworkAddress& address) {
    return address.address.bytes[0] == 169 && address.address.bytes[1] == 254;
}

} // namespace

bool isUp(const NetworkLink& link) {
    return (link.flags & IFF_UP) != 0;
}

bool isLoopback(const NetworkLink& link) {
    return (link.flags & IFF_LOOPBACK) != 0 || link.hardwareType == ARPHRD_LOOPBACK;
}

bool isService(const NetworkLink& link, const NetworkSnapshot& snapshot) {
    if (isLoopback(link)) {
        return false;
    }
    const bool isAlways = link.kind == "bond" || link.kind == "team" || link.kind == "bridge" || link.kind == "vlan";
    return link.parentDevice.has_value() || isAlways ||
           std::ranges::any_of(snapshot.addresses(link.index), isBeyondLink);
}

const NSString* interfaceType(const NetworkLink& link, const LinuxRoot& root) {
    if (!link.kind.empty()) {
        // A kind without a name here may be a device all the same, such as the port of a switch chip ("dsa").
        const NSString* type = typeOfKind(link.kind);
        if (type != nullptr || !link.parentDevice.has_value()) {
            return type;
        }
    }
    if (link.parentDevice.has_value()) {
        if (const NSString* type = typeOfDevice(link, root); type != nullptr) {
            return type;
        }
    }
    const SchemaTexts& texts = schemaTexts();
    switch (link.hardwareType) {
    case ARPHRD_ETHER: return link.parentDevice.has_value() ? &texts.typeEthernet : nullptr;
    case ARPHRD_IEEE1394: return &texts.typeFireWire;
    case ARPHRD_PPP: return &texts.typePPP;
    case ARPHRD_SIT: return &texts.type6to4;
    case ARPHRD_IRDA: return &texts.typeIrDA;
    default: return nullptr;
    }
}

const NSString* ipv4Method(const NetworkLink& link, const NetworkSnapshot& snapshot) {
    const SchemaTexts& texts = schemaTexts();
    bool hasAny = false;
    bool isDHCP = false;
    bool isLinkLocal = true;
    for (const NetworkAddress& address : snapshot.addresses(link.index)) {
        if (isOfFamily(address, AddressFamily::IPv4)) {
            hasAny = true;
            isDHCP = isDHCP || isLeased(address);
            isLinkLocal = isLinkLocal && isIPv4LinkLocal(address);
        }
    }
    if (!hasAny) {
        return nullptr;
    }
    if (link.hardwareType == ARPHRD_PPP) {
        return &texts.ppp;
    }
    const NetworkRoute* route = snapshot.defaultRoute(link.index, AddressFamily::IPv4);
    if (isDHCP || (route != nullptr && route->protocol == RTPROT_DHCP)) {
        return &texts.dhcp;
    }
    return isLinkLocal ? &texts.linkLocal : &texts.manual;
}

const NSString* ipv6Method(const NetworkLink& link, const NetworkSnapshot& snapshot) {
    const SchemaTexts& texts = schemaTexts();
    const bool isTunnel = link.hardwareType == ARPHRD_SIT || link.kind == "sit";
    bool hasAny = false;
    bool isAutomatic = false;
    bool isBeyond = false;
    for (const NetworkAddress& address : snapshot.addresses(link.index)) {
        if (!isOfFamily(address, AddressFamily::IPv6)) {
            continue;
        }
        if (isTunnel && is6to4(address)) {
            return &texts.sixToFour;
        }
        hasAny = true;
        isBeyond = isBeyond || isBeyondLink(address);
        isAutomatic =
            isAutomatic || address.protocol == kFromRouterAdvertisement || (isBeyondLink(address) && isLeased(address));
    }
    if (!hasAny) {
        return nullptr;
    }
    const NetworkRoute* route = snapshot.defaultRoute(link.index, AddressFamily::IPv6);
    if (isAutomatic || (route != nullptr && route->protocol == RTPROT_RA)) {
        return &texts.automatic;
    }
    return isBeyond ? &texts.manual : &texts.linkLocal;
}

} // namespace qk::platform::evidence
