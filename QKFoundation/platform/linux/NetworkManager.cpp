// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkManager.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/LinkEvidence.h"
#include "QKFoundation/platform/linux/SchemaTexts.h"

#include <net/if_arp.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace qk::platform::networkmanager {
namespace {

struct Row {
    std::string_view text;
    const NSString SchemaTexts::*value;
};

constexpr std::array kTypes{
    Row{"802-3-ethernet", &SchemaTexts::typeEthernet},
    Row{"802-11-wireless", &SchemaTexts::typeIEEE80211},
    Row{"adsl", &SchemaTexts::typePPP},
    Row{"bluetooth", &SchemaTexts::typeBluetooth},
    Row{"bond", &SchemaTexts::typeBond},
    Row{"bridge", &SchemaTexts::typeBridge},
    Row{"cdma", &SchemaTexts::typeWWAN},
    Row{"gsm", &SchemaTexts::typeWWAN},
    Row{"pppoe", &SchemaTexts::typePPP},
    Row{"team", &SchemaTexts::typeBond},
    Row{"vlan", &SchemaTexts::typeVLAN},
};

// The last word of a VPN's service.
constexpr std::array kVPNs{
    Row{"l2tp", &SchemaTexts::typeL2TP},        Row{"libreswan", &SchemaTexts::typeIPSec},
    Row{"openswan", &SchemaTexts::typeIPSec},   Row{"pptp", &SchemaTexts::typePPTP},
    Row{"strongswan", &SchemaTexts::typeIPSec}, Row{"vpnc", &SchemaTexts::typeIPSec},
};

// What is not among them ("disabled") is not configured. Shared connections have an address of their own choice.
constexpr std::array kIPv4Methods{
    Row{"auto", &SchemaTexts::dhcp},
    Row{"link-local", &SchemaTexts::linkLocal},
    Row{"manual", &SchemaTexts::manual},
    Row{"shared", &SchemaTexts::manual},
};
constexpr std::array kIPv6Methods{
    Row{"auto", &SchemaTexts::automatic},       Row{"dhcp", &SchemaTexts::automatic},
    Row{"link-local", &SchemaTexts::linkLocal}, Row{"manual", &SchemaTexts::manual},
    Row{"shared", &SchemaTexts::manual},
};

template <std::size_t N>
const NSString* valueOf(const std::array<Row, N>& rows, std::string_view text) {
    const auto* row = std::ranges::find(rows, text, &Row::text);
    return row != rows.end() ? &(schemaTexts().*(row->value)) : nullptr;
}

std::string upperCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](char unit) {
        return unit >= 'a' && unit <= 'z' ? static_cast<char>(unit - 'a' + 'A') : unit;
    });
    return text;
}

// The network's own type of an interface that is there counts; of a VPN only its daemon knows.
const NSString* typeOf(const Connection& connection, const NetworkLink* link, const LinuxRoot& root) {
    if (connection.type == "vpn") {
        const std::string_view service = connection.vpnService;
        const NSString* type = valueOf(kVPNs, service.substr(service.rfind('.') + 1));
        return type != nullptr ? type : &schemaTexts().typeVPN;
    }
    return link != nullptr ? evidence::interfaceType(*link, root) : valueOf(kTypes, connection.type);
}

const NSString* ipv4MethodOf(const Connection& connection, const NetworkLink* link) {
    const NSString* method = valueOf(kIPv4Methods, connection.ipv4Method);
    const bool isPPP = connection.type == "pppoe" || connection.type == "adsl" ||
                       (link != nullptr && link->hardwareType == ARPHRD_PPP);
    return method == &schemaTexts().dhcp && isPPP ? &schemaTexts().ppp : method;
}

// "ignore" leaves this family to the kernel, which does as it does without a manager.
const NSString* ipv6MethodOf(const Connection& connection, const NetworkLink* link, const NetworkSnapshot& snapshot) {
    if (connection.ipv6Method == "ignore") {
        return link != nullptr ? evidence::ipv6Method(*link, snapshot) : nullptr;
    }
    return valueOf(kIPv6Methods, connection.ipv6Method);
}

// Of several uses of one connection the first that is not on its way down.
const ActiveConnection* useOf(const Connection& connection, const std::vector<ActiveConnection>& active) {
    const ActiveConnection* found = nullptr;
    for (const ActiveConnection& use : active) {
        if (use.uuid == connection.uuid && (found == nullptr || (!found->isActive && use.isActive))) {
            found = &use;
        }
    }
    return found;
}

NetworkService service(const Connection& connection, const ActiveConnection* use, const NetworkSnapshot& snapshot) {
    std::string interfaceName = use != nullptr ? use->interfaceName : std::string();
    if (interfaceName.empty()) {
        interfaceName = connection.interfaceName;
    }
    NetworkService result;
    result.manager = NetworkService::Manager::NetworkManager;
    result.id = NSString::fromUTF8Lossy(upperCase(connection.uuid));
    result.name = NSString::fromUTF8Lossy(connection.name);
    result.isEnabled = connection.autoconnects;
    result.isActive = use != nullptr && use->isActive;
    result.interfaceName = stringWithFileSystemRepresentation(interfaceName);
    result.link = interfaceName.empty() ? nullptr : snapshot.link(interfaceName);
    result.type = typeOf(connection, result.link, snapshot.root());
    result.ipv4Method = ipv4MethodOf(connection, result.link);
    result.ipv6Method = ipv6MethodOf(connection, result.link, snapshot);
    if (use != nullptr && use->isActive) {
        result.nameServers = use->nameServers;
        result.lease = use->lease;
    }
    return result;
}

} // namespace

std::vector<NetworkService> services(const Facts& facts, const NetworkSnapshot& snapshot) {
    std::vector<const Connection*> ordered;
    for (const Connection& connection : facts.connections) {
        if (connection.type != "loopback") {
            ordered.push_back(&connection);
        }
    }
    std::ranges::stable_sort(ordered, [](const Connection* left, const Connection* right) {
        return std::pair(right->priority, std::string_view(left->name)) <
               std::pair(left->priority, std::string_view(right->name));
    });
    std::vector<NetworkService> result;
    for (const Connection* connection : ordered) {
        NetworkService made = service(*connection, useOf(*connection, facts.active), snapshot);
        if (made.link == nullptr || !evidence::isLoopback(*made.link)) {
            result.push_back(std::move(made));
        }
    }
    return result;
}

} // namespace qk::platform::networkmanager
