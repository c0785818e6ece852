// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxNetworkPreferences.h"

#include "QKFoundation/platform/linux/NetworkValues.h"
#include "QKFoundation/platform/linux/SchemaTexts.h"
#include "QKFoundation/platform/linux/parse/Netlink.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>

namespace qk::platform {
namespace {

constexpr std::uint8_t kTwistedPair = 0x00; // PORT_TP of ethtool
constexpr std::uint8_t kFibre = 0x03;       // PORT_FIBRE
constexpr std::uint8_t kCoaxial = 0x05;     // PORT_DA, a cable with its plugs

// The names that the platform gives to media, by speed; where it has none, one is made in the same way.
std::string mediumName(std::int64_t speed, std::uint8_t port) {
    struct Row {
        std::int64_t speed;
        std::uint8_t port;
        std::string_view name;
    };
    static constexpr std::array kRows{
        Row{10, kTwistedPair, "10baseT/UTP"},  Row{100, kTwistedPair, "100baseTX"},
        Row{1000, kTwistedPair, "1000baseT"},  Row{2500, kTwistedPair, "2500Base-T"},
        Row{5000, kTwistedPair, "5000Base-T"}, Row{10000, kTwistedPair, "10Gbase-T"},
        Row{10, kFibre, "10baseFL"},           Row{100, kFibre, "100baseFX"},
        Row{1000, kFibre, "1000baseSX"},       Row{10000, kFibre, "10GbaseSR"},
        Row{1000, kCoaxial, "1000baseCX"},     Row{10000, kCoaxial, "10Gbase-CX4"},
    };
    // A card that does not tell its port is taken for the usual kind.
    const std::uint8_t kind = port == kFibre || port == kCoaxial ? port : kTwistedPair;
    for (const Row& row : kRows) {
        if (row.speed == speed && row.port == kind) {
            return std::string(row.name);
        }
    }
    const std::string_view tail = kind == kFibre ? "baseF" : kind == kCoaxial ? "baseC" : "baseT";
    if (speed % 1000 == 0 && speed >= 10000) {
        return std::to_string(speed / 1000) + "G" + std::string(tail);
    }
    return std::to_string(speed) + std::string(tail);
}

// What a link without a device sends is what one below it sends, or it is told by nobody.
bool mayHaveMedium(const NetworkLink& link) {
    return link.parentDevice.has_value() || link.kind == "bond" || link.kind == "team" || link.kind == "vlan";
}

std::int32_t units(std::uint32_t bytes) {
    return static_cast<std::int32_t>(
        std::min<std::uint32_t>(bytes, static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())));
}

std::optional<TransferUnits> transferUnits(const NetworkLink& link) {
    if (!link.maximumMTU.has_value()) {
        return std::nullopt;
    }
    return TransferUnits{units(link.mtu), units(link.minimumMTU.value_or(0)), units(*link.maximumMTU)};
}

const NSArray& supportedProtocols() {
    static const NSArray& all = *new NSArray{kSCNetworkProtocolTypeDNS, kSCNetworkProtocolTypeIPv4,
                                             kSCNetworkProtocolTypeIPv6, kSCNetworkProtocolTypeProxies};
    return all;
}

// A dialled connection can run over what carries frames of its own.
std::optional<NSArray> supportedInterfaces(const NSString* type) {
    static const NSArray& ppp = *new NSArray{schemaTexts().typePPP};
    const bool carriesPPP = type == &schemaTexts().typeEthernet || type == &schemaTexts().typeIEEE80211;
    return carriesPPP ? std::optional(ppp) : std::nullopt;
}

SCNetworkInterface interfaceOf(const NetworkService& service, const NetworkSnapshot& snapshot) {
    SCNetworkInterface result;
    if (!service.interfaceName.isEmpty()) {
        result.bsdName = service.interfaceName;
    }
    if (NSString name = values::displayName(service); !name.isEmpty()) {
        result.localizedDisplayName = std::move(name);
    }
    if (service.type != nullptr) {
        result.interfaceType = *service.type;
    }
    result.supportedInterfaceTypes = supportedInterfaces(service.type);
    result.supportedProtocolTypes = supportedProtocols();
    if (service.link != nullptr) {
        result.hardwareAddressString = hardwareAddressText(service.link->hardwareAddress);
        result.transferUnits = transferUnits(*service.link);
        if (mayHaveMedium(*service.link)) {
            const std::optional<MediumFacts> medium = snapshot.medium(*service.link);
            result.activeMedia = medium.has_value() ? mediumDictionary(*medium) : std::nullopt;
        }
    }
    return result;
}

} // namespace

std::optional<NSDictionary> mediumDictionary(const MediumFacts& medium) {
    if (!medium.megabitsPerSecond.has_value() || *medium.megabitsPerSecond <= 0) {
        return std::nullopt;
    }
    const SchemaTexts& texts = schemaTexts();
    NSArray options;
    if (medium.fullDuplex.has_value()) {
        options = *medium.fullDuplex ? NSArray{"full-duplex"} : NSArray{"half-duplex"};
    }
    return NSDictionary{
        {texts.mediaOptions, options},
        {texts.mediaSubType, NSString::fromUTF8Lossy(mediumName(*medium.megabitsPerSecond, medium.port))}};
}

NSString hardwareAddressText(const std::vector<std::uint8_t>& address) {
    // Tunnels have the addresses of their ends in that place.
    const bool isInternet = address.size() == 4 || address.size() == 16;
    if (isInternet || std::ranges::all_of(address, [](std::uint8_t byte) { return byte == 0; })) {
        return {};
    }
    return NSString::fromUTF8Lossy(parse::hardwareAddressText(std::as_bytes(std::span(address))));
}

std::optional<std::vector<SCNetworkServiceRef>> LinuxNetworkPreferences::copyAllServices() const {
    // All records are in two blocks, which live as long as one of them is held.
    const auto& all = services_->all();
    const auto interfaces = std::make_shared<std::vector<SCNetworkInterface>>();
    const auto services = std::make_shared<std::vector<SCNetworkService>>();
    interfaces->reserve(all.size());
    services->reserve(all.size());
    std::vector<SCNetworkServiceRef> result;
    result.reserve(all.size());
    for (const NetworkService& service : all) {
        const SCNetworkInterface& interface = interfaces->emplace_back(interfaceOf(service, services_->snapshot()));
        const SCNetworkService& record =
            services->emplace_back(SCNetworkService{static_cast<std::uint8_t>(service.isEnabled ? 1 : 0), service.name,
                                                    service.id, SCNetworkInterfaceRef(interfaces, &interface)});
        result.emplace_back(services, &record);
    }
    return result;
}

} // namespace qk::platform
