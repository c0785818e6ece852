// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkServices.h"

#include "QKFoundation/platform/linux/LinkEvidence.h"
#include "QKFoundation/platform/linux/Networkd.h"
#include "QKFoundation/platform/linux/RememberedFile.h"
#include "QKFoundation/platform/linux/ServiceNames.h"
#include "QKFoundation/platform/linux/parse/ResolvConf.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::size_t kMostOfResolvConf = std::size_t{1} << 20U;

NetworkService kernelService(const NetworkLink& link, const NetworkSnapshot& snapshot, ServiceNamer& namer) {
    ServiceNames names = namer.names(link.name);
    NetworkService service;
    service.isEnabled = evidence::isUp(link);
    service.isActive = true;
    service.id = std::move(names.id);
    service.name = names.interfaceName;
    service.interfaceName = std::move(names.interfaceName);
    service.link = &link;
    service.type = evidence::interfaceType(link, snapshot.root());
    service.ipv4Method = evidence::ipv4Method(link, snapshot);
    service.ipv6Method = evidence::ipv6Method(link, snapshot);
    return service;
}

std::unordered_set<const NetworkLink*> linksOf(const std::vector<NetworkService>& services) {
    std::unordered_set<const NetworkLink*> links;
    for (const NetworkService& service : services) {
        links.insert(service.link);
    }
    return links;
}

// NetworkManager is often installed beside networkd and leaves the links to it.
void appendNetworkdServices(const NetworkSnapshot& snapshot, std::vector<NetworkService>& services) {
    const std::unordered_set<const NetworkLink*> taken = linksOf(services);
    for (NetworkService& service : networkd::services(snapshot)) {
        if (!taken.contains(service.link)) {
            services.push_back(std::move(service));
        }
    }
}

void appendKernelServices(const NetworkSnapshot& snapshot, std::vector<NetworkService>& services) {
    const std::unordered_set<const NetworkLink*> taken = linksOf(services);
    ServiceNamer namer(snapshot.root());
    for (const NetworkLink& link : snapshot.kernel().links) {
        if ((taken.empty() || !taken.contains(&link)) && evidence::isService(link, snapshot)) {
            services.push_back(kernelService(link, snapshot, namer));
        }
    }
}

struct ResolvConfFiles {
    explicit ResolvConfFiles(const LinuxRoot& root)
        : own(root.path("/etc/resolv.conf"), kMostOfResolvConf, parse::resolvConf),
          upstream(root.path("/run/systemd/resolve/resolv.conf"), kMostOfResolvConf, parse::resolvConf) {}

    RememberedFile<parse::ResolvConf> own;
    RememberedFile<parse::ResolvConf> upstream; // where systemd-resolved writes whom it asks itself
};

NameServers readResolvConf(ResolvConfFiles& files) {
    auto configuration = files.own.read();
    if (configuration != nullptr && parse::namesOnlyLocalStub(*configuration)) {
        if (auto upstream = files.upstream.read(); upstream != nullptr && !upstream->nameServers.empty()) {
            configuration = std::move(upstream);
        }
    }
    return configuration != nullptr ? NameServers{configuration->nameServers, configuration->searchDomains}
                                    : NameServers();
}

// This host's are looked at each time, but seldom have to be read.
NameServers readResolvConf(const LinuxRoot& root) {
    if (root.isHost()) {
        static auto& files = *new ResolvConfFiles(root);
        return readResolvConf(files);
    }
    ResolvConfFiles captured(root);
    return readResolvConf(captured);
}

// Blocks of memory are compared faster than units one by one.
bool isSame(std::u16string_view one, std::u16string_view other) {
    return one.size() == other.size() && std::memcmp(one.data(), other.data(), one.size() * sizeof(char16_t)) == 0;
}

std::unique_ptr<NetworkBus> busFor(const LinuxRoot& root) {
    return root.isHost() ? makeSystemNetworkBus() : nullptr;
}

} // namespace

NetworkServices::NetworkServices(std::shared_ptr<const NetworkSnapshot> snapshot)
    : snapshot_(std::move(snapshot)), bus_(busFor(snapshot_->root())) {}

NetworkServices::NetworkServices(std::shared_ptr<const NetworkSnapshot> snapshot, std::unique_ptr<NetworkBus> bus)
    : snapshot_(std::move(snapshot)), bus_(std::move(bus)) {}

void NetworkServices::read() const {
    // The managers first: what they have just configured is then among the kernel's facts.
    const auto managed = bus_ != nullptr ? bus_->networkManager() : std::nullopt;
    all_ = managed.has_value() ? networkmanager::services(*managed, *snapshot_) : std::vector<NetworkService>();
    appendNetworkdServices(*snapshot_, all_);
    appendKernelServices(*snapshot_, all_);
}

const std::vector<NetworkService>& NetworkServices::all() const {
    reading_.run([this] { read(); });
    return all_;
}

std::vector<const NetworkService*> NetworkServices::byLink() const {
    std::vector<const NetworkService*> result;
    result.reserve(all().size());
    for (const NetworkService& service : all()) {
        result.push_back(&service);
    }
    std::ranges::stable_sort(result, {}, [](const NetworkService* service) {
        return service->link != nullptr ? service->link->index : std::numeric_limits<std::int32_t>::max();
    });
    return result;
}

const NetworkService* NetworkServices::service(std::u16string_view id) const {
    const auto hasID = [id](const NetworkService& service) { return isSame(service.id.units(), id); };
    if (const NetworkService* latest = latest_.find(all(), hasID); latest != nullptr) {
        return latest;
    }
    indexing_.run([this] {
        byID_.reserve(all_.size());
        for (const NetworkService& service : all_) {
            byID_.emplace(service.id.units(), &service);
        }
    });
    const auto found = byID_.find(id);
    return latest_.remember(all_, found != byID_.end() ? found->second : nullptr);
}

const NetworkService* NetworkServices::primary(AddressFamily family) const {
    const NetworkRoute* route = snapshot_->primaryRoute(family);
    if (route == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find_if(all(), [route](const NetworkService& service) {
        return service.isActive && service.link != nullptr && service.link->index == route->link;
    });
    return found != all().end() ? &*found : nullptr;
}

const NetworkRoute* NetworkServices::primaryRoute() const {
    const NetworkRoute* route = snapshot_->primaryRoute(AddressFamily::IPv4);
    return route != nullptr ? route : snapshot_->primaryRoute(AddressFamily::IPv6);
}

bool NetworkServices::isPrimary(const NetworkService& service) const {
    const NetworkRoute* route = primaryRoute();
    // Most services are told apart by their link alone.
    return route != nullptr && service.link != nullptr && service.link->index == route->link &&
           primary(route->family) == &service;
}

const LinkNameServers& NetworkServices::resolved() const {
    askingResolved_.run([this] {
        if (bus_ != nullptr) {
            resolved_ = bus_->resolved().value_or(LinkNameServers());
        }
    });
    return resolved_;
}

const NameServers& NetworkServices::resolvConf() const {
    readingResolvConf_.run([this] { resolvConf_ = readResolvConf(snapshot_->root()); });
    return resolvConf_;
}

NameServers NetworkServices::nameServers(const NetworkService& service) const {
    if (!service.isActive || service.link == nullptr) {
        return {};
    }
    // Who knows domains alone leaves the question open where to ask.
    NameServers result = service.nameServers;
    const auto complete = [&result](const NameServers& others) {
        result.addresses = others.addresses;
        if (result.domains.empty()) {
            result.domains = others.domains;
        }
    };
    if (result.addresses.empty()) {
        const auto& links = resolved();
        if (const auto found = links.find(service.link->index); found != links.end()) {
            complete(found->second);
        }
    }
    if (result.addresses.empty() && isPrimary(service)) {
        complete(resolvConf());
    }
    return result;
}

NameServers NetworkServices::globalNameServers() const {
    const NetworkRoute* route = primaryRoute();
    const NetworkService* service = route != nullptr ? primary(route->family) : nullptr;
    return service != nullptr ? nameServers(*service) : resolvConf();
}

std::shared_ptr<const parse::DHCPLease> NetworkServices::lease(const NetworkService& service) const {
    if (service.manager != NetworkService::Manager::Networkd) {
        return service.lease;
    }
    auto told = networkd::lease(*service.link, snapshot_->root());
    return told.has_value() ? std::make_shared<const parse::DHCPLease>(*std::move(told)) : nullptr;
}

} // namespace qk::platform
