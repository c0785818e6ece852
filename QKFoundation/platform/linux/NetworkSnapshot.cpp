// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include "QKFoundation/platform/linux/Ethtool.h"
#include "QKFoundation/platform/linux/NetlinkNetwork.h"
#include "QKFoundation/platform/linux/NetworkDevice.h"
#include "QKFoundation/platform/linux/Wireless.h"
#include "QKFoundation/platform/linux/parse/KernelTexts.h"

#include <sys/utsname.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <unordered_map>
#include <utility>

namespace qk::platform {
namespace {

// Whether this kernel names the parents of links itself: from 5.14 on.
bool kernelTellsParents() {
    utsname names; // NOLINT(cppcoreguidelines-pro-type-member-init): uname writes it
    int major = 0;
    int minor = 0;
    if (::uname(&names) != 0) {
        return false;
    }
    const std::string_view release(static_cast<const char*>(names.release));
    const char* const end = release.data() + release.size();
    const auto [stopped, error] = std::from_chars(release.data(), end, major);
    if (error == std::errc() && stopped != end && *stopped == '.') {
        std::from_chars(stopped + 1, end, minor);
    }
    return std::pair(major, minor) >= std::pair(5, 14);
}

std::string ipv4Text(std::span<const std::uint8_t, 4> bytes) {
    std::array<char, 16> text; // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
    char* end = text.data();
    for (const std::uint8_t byte : bytes) {
        if (end != text.data()) {
            *end++ = '.';
        }
        end = std::to_chars(end, text.data() + text.size(), unsigned{byte}).ptr;
    }
    return {text.data(), end};
}

// The longest run of at least two groups of zero, the first one of several: its begin and end.
std::pair<std::size_t, std::size_t> longestZeros(const std::array<unsigned, 8>& groups) {
    std::pair<std::size_t, std::size_t> best{groups.size(), groups.size()};
    for (std::size_t begin = 0; begin < groups.size(); ++begin) {
        std::size_t end = begin;
        while (end < groups.size() && groups[end] == 0) {
            ++end;
        }
        if (end - begin > std::max<std::size_t>(best.second - best.first, 1)) {
            best = {begin, end};
        }
        begin = end;
    }
    return best;
}

std::string ipv6Text(const std::array<std::uint8_t, 16>& bytes) {
    std::array<unsigned, 8> groups{};
    for (std::size_t index = 0; index < groups.size(); ++index) {
        groups[index] = (unsigned{bytes[2 * index]} << 8U) | bytes[2 * index + 1];
    }
    const auto [zerosBegin, zerosEnd] = longestZeros(groups);
    std::array<char, 48> text; // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
    char* end = text.data();
    for (std::size_t index = 0; index < groups.size(); ++index) {
        if (index == zerosBegin) {
            *end++ = ':';
            index = zerosEnd;
            if (index == groups.size()) {
                *end++ = ':';
                break;
            }
        }
        if (end != text.data()) {
            *end++ = ':';
        }
        // An address of the older protocol inside one of this: "::ffff:192.0.2.1" and "::192.0.2.1".
        if (index == 6 && zerosBegin == 0 && (zerosEnd == 6 || (zerosEnd == 5 && groups[5] == 0xFFFF))) {
            return std::string(text.data(), end) + ipv4Text(std::span(bytes).last<4>());
        }
        end = std::to_chars(end, text.data() + text.size(), groups[index], 16).ptr;
    }
    return {text.data(), end};
}

// Does something once, whichever thread comes first. std::call_once wakes waiting threads through the kernel each time,
// which costs more than what is done here.
class Once {
public:
    template <typename Action>
    void run(Action&& action) {
        if (isDone_.load(std::memory_order_acquire)) {
            return;
        }
        const std::scoped_lock lock(mutex_);
        if (!isDone_.load(std::memory_order_relaxed)) {
            action();
            isDone_.store(true, std::memory_order_release);
        }
    }

private:
    std::mutex mutex_;
    std::atomic<bool> isDone_ = false;
};

// Answers that have been had already.
template <typename Key, typename Answer>
class Answers {
public:
    template <typename Ask>
    const Answer& get(const Key& key, Ask&& ask) {
        const auto found = std::ranges::find(entries_, key, &Entry::key);
        return found != entries_.end() ? found->answer : entries_.emplace_back(Entry{key, ask()}).answer;
    }

private:
    struct Entry {
        Key key;
        Answer answer;
    };
    std::vector<Entry> entries_;
};

struct ByLink {
    bool operator()(const NetworkAddress& address, std::int32_t link) const noexcept { return address.link < link; }
    bool operator()(std::int32_t link, const NetworkAddress& address) const noexcept { return link < address.link; }
};

} // namespace

struct NetworkSnapshot::Lazy {
    Once reading;
    bool isCaptured = false;
    KernelNetwork kernel;
    Once indexing;
    std::unordered_map<std::string_view, const NetworkLink*> names;

    std::mutex mutex; // of what follows
    Answers<std::pair<std::int32_t, InternetAddress>, std::optional<std::string>> neighbours;
    Answers<std::int32_t, std::optional<WirelessFacts>> wireless;
    Answers<std::int32_t, HardwareNames> hardware;
    WirelessReader wirelessReader;
};

std::string InternetAddress::text() const {
    return family == AddressFamily::IPv4 ? ipv4Text(std::span(bytes).first<4>()) : ipv6Text(bytes);
}

NetworkSnapshot::NetworkSnapshot(LinuxRoot root) : root_(std::move(root)), lazy_(std::make_unique<Lazy>()) {}

NetworkSnapshot::NetworkSnapshot(KernelNetwork kernel, LinuxRoot root) : NetworkSnapshot(std::move(root)) {
    lazy_->isCaptured = true;
    lazy_->kernel = std::move(kernel);
    arrange(lazy_->kernel);
}

NetworkSnapshot::~NetworkSnapshot() = default;

const KernelNetwork& NetworkSnapshot::kernel() const {
    lazy_->reading.run([this] {
        if (lazy_->isCaptured || !root_.isHost()) {
            return;
        }
        lazy_->kernel = readKernelNetwork();
        const auto hasParent = [](const NetworkLink& link) { return link.parentDevice.has_value(); };
        if (std::ranges::none_of(lazy_->kernel.links, hasParent) && !kernelTellsParents()) {
            addParentDevices(root_, lazy_->kernel);
        }
    });
    return lazy_->kernel;
}

const NetworkLink* NetworkSnapshot::link(std::string_view name) const {
    lazy_->indexing.run([this] {
        const auto& links = kernel().links;
        lazy_->names.reserve(links.size());
        for (const NetworkLink& link : links) {
            lazy_->names.emplace(link.name, &link);
        }
    });
    const auto found = lazy_->names.find(name);
    return found != lazy_->names.end() ? found->second : nullptr;
}

const NetworkLink* NetworkSnapshot::link(std::int32_t index) const {
    const auto& links = kernel().links;
    const auto found = std::ranges::lower_bound(links, index, {}, &NetworkLink::index);
    return found != links.end() && found->index == index ? &*found : nullptr;
}

std::span<const NetworkAddress> NetworkSnapshot::addresses(std::int32_t link) const {
    const auto& addresses = kernel().addresses;
    const auto [begin, end] = std::equal_range(addresses.begin(), addresses.end(), link, ByLink());
    return {begin, end};
}

const NetworkRoute* NetworkSnapshot::defaultRoute(std::int32_t link, AddressFamily family) const {
    const auto& routes = kernel().defaultRoutes;
    const auto found = std::ranges::find_if(
        routes, [&](const NetworkRoute& route) { return route.link == link && route.family == family; });
    return found != routes.end() ? &*found : nullptr;
}

const NetworkRoute* NetworkSnapshot::primaryRoute(AddressFamily family) const {
    const auto& routes = kernel().defaultRoutes;
    const auto found = std::ranges::find(routes, family, &NetworkRoute::family);
    return found != routes.end() ? &*found : nullptr;
}

std::optional<std::string> NetworkSnapshot::neighbour(std::int32_t link, const InternetAddress& address) const {
    if (!root_.isHost()) {
        return std::nullopt;
    }
    const std::scoped_lock lock(lazy_->mutex);
    return lazy_->neighbours.get({link, address}, [&] { return readNeighbour(link, address); });
}

std::optional<WirelessFacts> NetworkSnapshot::wireless(const NetworkLink& link) const {
    if (!link.parentDevice.has_value()) { // known without a look at a file
        return std::nullopt;
    }
    const std::scoped_lock lock(lazy_->mutex);
    return lazy_->wireless.get(link.index, [&] { return lazy_->wirelessReader.read(root_, link); });
}

std::optional<MediumFacts> NetworkSnapshot::medium(const NetworkLink& link) const {
    return root_.isHost() ? readMedium(link.name) : readMediumFiles(root_, link.name);
}

HardwareNames NetworkSnapshot::hardware(const NetworkLink& link) const {
    if (!link.parentDevice.has_value()) {
        return {};
    }
    const std::scoped_lock lock(lazy_->mutex);
    return lazy_->hardware.get(link.index, [&] { return readHardwareNames(root_, link); });
}

} // namespace qk::platform
