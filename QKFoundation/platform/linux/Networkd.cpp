// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/Networkd.h"

#include "QKFoundation/platform/linux/LinkEvidence.h"
#include "QKFoundation/platform/linux/ReadBytes.h"
#include "QKFoundation/platform/linux/SchemaTexts.h"
#include "QKFoundation/platform/linux/ServiceNames.h"
#include "QKFoundation/platform/linux/parse/NetworkKeyfile.h"
#include "QKFoundation/platform/linux/parse/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace qk::platform::networkd {
namespace {

constexpr std::string_view kLinks = "/run/systemd/netif/links";
constexpr std::string_view kLeases = "/run/systemd/netif/leases/";
constexpr std::size_t kMost = std::size_t{1} << 20U; // of a settings file

parse::NetworkSettings settings(const parse::NetworkdLink& state, const LinuxRoot& root) {
    parse::NetworkSettings result;
    const auto apply = [&](const std::string& path) {
        if (const auto bytes = readBytes(root.path(path), kMost); bytes.has_value()) {
            parse::applyNetworkFile(*bytes, result);
        }
    };
    apply(state.networkFile);
    std::ranges::for_each(state.dropIns, apply);
    return result;
}

// What is written down decides; what is not, the kernel's facts show.
const NSString* ipv4Method(const parse::NetworkSettings& wanted, const NetworkLink& link,
                           const NetworkSnapshot& snapshot) {
    const SchemaTexts& texts = schemaTexts();
    if (wanted.dhcp4) {
        return &texts.dhcp;
    }
    if (wanted.hasAddress4) {
        return &texts.manual;
    }
    return wanted.linkLocal4 ? &texts.linkLocal : evidence::ipv4Method(link, snapshot);
}

const NSString* ipv6Method(const parse::NetworkSettings& wanted, const NetworkLink& link,
                           const NetworkSnapshot& snapshot) {
    const SchemaTexts& texts = schemaTexts();
    if (wanted.dhcp6 || wanted.acceptsRouterAdvertisements == true) {
        return &texts.automatic;
    }
    return wanted.hasAddress6 ? &texts.manual : evidence::ipv6Method(link, snapshot);
}

NetworkService service(const parse::NetworkdLink& state, const NetworkLink& link, const NetworkSnapshot& snapshot,
                       ServiceNamer& namer) {
    const parse::NetworkSettings wanted = settings(state, snapshot.root());
    ServiceNames names = namer.names(link.name);
    NetworkService result;
    result.manager = NetworkService::Manager::Networkd;
    result.isEnabled = evidence::isUp(link);
    result.isActive = true;
    result.id = std::move(names.id);
    result.name = names.interfaceName;
    result.interfaceName = std::move(names.interfaceName);
    result.link = &link;
    result.type = evidence::interfaceType(link, snapshot.root());
    result.ipv4Method = ipv4Method(wanted, link, snapshot);
    result.ipv6Method = ipv6Method(wanted, link, snapshot);
    result.nameServers = {state.nameServers, state.domains};
    return result;
}

} // namespace

std::vector<NetworkService> services(const NetworkSnapshot& snapshot) {
    const std::string folder = snapshot.root().path(kLinks);
    std::vector<std::int32_t> indexes;
    for (const std::string& name : readDirectory(folder).value_or(std::vector<std::string>())) {
        if (const auto index = parse::number<std::int32_t>(name); index.has_value()) {
            indexes.push_back(*index);
        }
    }
    std::ranges::sort(indexes);
    ServiceNamer namer(snapshot.root());
    std::vector<NetworkService> result;
    for (const std::int32_t index : indexes) {
        const NetworkLink* link = snapshot.link(index);
        if (link == nullptr || evidence::isLoopback(*link)) {
            continue;
        }
        const auto bytes = readBytes(folder + '/' + std::to_string(index), kMost);
        const auto state = bytes.has_value() ? parse::networkdLink(*bytes) : std::nullopt;
        if (state.has_value()) {
            result.push_back(service(*state, *link, snapshot, namer));
        }
    }
    return result;
}

std::optional<parse::DHCPLease> lease(const NetworkLink& link, const LinuxRoot& root) {
    const auto bytes = readBytes(root.path(std::string(kLeases) + std::to_string(link.index)), kMost);
    return bytes.has_value() ? std::optional(parse::networkdLease(*bytes)) : std::nullopt;
}

} // namespace qk::platform::networkd
