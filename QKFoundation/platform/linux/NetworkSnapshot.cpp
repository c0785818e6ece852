// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/NetworkSnapshot.h"

#include "QKFoundation/platform/linux/Ethtool.h"
#include "QKFoundation/platform/linux/LatestPlace.h"
#include "QKFoundation/platform/linux/NetlinkNetwork.h"
#include "QKFoundation/platform/linux/NetlinkSocket.h"
#include "QKFoundation/platform/linux/NetworkDevice.h"
#include "QKFoundation/platform/linux/Once.h"
#include "QKFoundation/platform/linux/Wireless.h"
#include "QKFoundation/platform/linux/parse/KernelTexts.h"

#include <linux/netlink.h>
#include <sys/utsname.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <unordered_map>
#include <utility>

namespace qk::platform {
namespace {

// Whether the kernel names the parents of links itself: from 5.14 on.
bool doesKernelTellParents() {
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

bool kernelTellsParents() {
    static const bool itDoes = doesKernelTellParents(); // there is no other kernel before this process ends
    return itDoes;
}

// Both write to a place that has room, and return the end of what they wrote.
char* writeIPv4(char* text, std::span<const std::uint8_t, 4> bytes) {
    char* end = text;
    for (const std::uint8_t byte : bytes) {
        if (end != text) {
            *end++ = '.';
        }
        end = std::to_chars(end, end + 3, unsigned{byte}).ptr;
    }
    return end;
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

char* writeIPv6(char* text, const std::array<std::uint8_t, 16>& bytes) {
    std::array<unsigned, 8> groups{};
    for (std::size_t index = 0; index < groups.size(); ++index) {
        groups[index] = (unsigned{bytes[2 * index]} << 8U) | bytes[2 * index + 1];
    }
    const auto [zerosBegin, zerosEnd] = longestZeros(groups);
    char* end = text;
    for (std::size_t index = 0; index < groups.size(); ++index) {
        if (index == zerosBegin) {
            *end++ = ':';
            index = zerosEnd;
            if (index == groups.size()) {
                *end++ = ':';
                break;
            }
        }
        if (end != text) {
            *end++ = ':';
        }
        // An address of the older protocol inside one of this: "::ffff:192.0.2.1" and "::192.0.2.1".
        if (index == 6 && zerosBegin == 0 && (zerosEnd == 6 || (zerosEnd == 5 && groups[5] == 0xFFFF))) {
            return writeIPv4(end, std::span(bytes).last<4>());
        }
        end = std::to_chars(end, end + 4, groups[index], 16).ptr;
    }
    return end;
}

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

} // namespace

struct NetworkSnapshot::Lazy {
    Once reading;
    bool isCaptured = false;
    KernelNetwork kernel;
    LatestPlace latestLink;
    Once indexing;
    std::unordered_map<std::string_view, const NetworkLink*> names;
    std::atomic<std::size_t> latestAddress = 0; // the first one of the link whose were asked for last

    std::mutex mutex; // of what follows, and of the connection once the kernel's facts have been read
    std::optional<NetlinkSocket> socket;
    Answers<std::pair<std::int32_t, InternetAddress>, std::optional<std::string>> neighbours;
    Answers<std::int32_t, std::optional<WirelessFacts>> wireless;
    Answers<std::int32_t, HardwareNames> hardware;
    WirelessReader wirelessReader;
};

std::string_view InternetAddress::text(Room& room) const {
    char* const end = family == AddressFamily::IPv4 ? writeIPv4(room.data(), std::span(bytes).first<4>())
                                                    : writeIPv6(room.data(), bytes);
    return {room.data(), static_cast<std::size_t>(end - room.data())};
}

std::string InternetAddress::text() const {
    Room room;
    return std::string(text(room));
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
        lazy_->kernel = readKernelNetwork(lazy_->socket.emplace(NETLINK_ROUTE));
        const auto hasParent = [](const NetworkLink& link) { return link.parentDevice.has_value(); };
        if (std::ranges::none_of(lazy_->kernel.links, hasParent) && !kernelTellsParents()) {
            addParentDevices(root_, lazy_->kernel);
        }
    });
    return lazy_->kernel;
}

const NetworkLink* NetworkSnapshot::link(std::string_view name) const {
    const auto& links = kernel().links;
    const auto hasName = [name](const NetworkLink& link) { return link.name == name; };
    if (const NetworkLink* latest = lazy_->latestLink.find(links, hasName); latest != nullptr) {
        return latest;
    }
    lazy_->indexing.run([&] {
        lazy_->names.reserve(links.size());
        for (const NetworkLink& link : links) {
            lazy_->names.emplace(link.name, &link);
        }
    });
    const auto found = lazy_->names.find(name);
    return lazy_->latestLink.remember(links, found != lazy_->names.end() ? found->second : nullptr);
}

const NetworkLink* NetworkSnapshot::link(std::int32_t index) const {
    const auto& links = kernel().links;
    const auto hasIndex = [index](const NetworkLink& link) { return link.index == index; };
    if (const NetworkLink* latest = lazy_->latestLink.find(links, hasIndex); latest != nullptr) {
        return latest;
    }
    const auto found = std::ranges::lower_bound(links, index, {}, &NetworkLink::index);
    return lazy_->latestLink.remember(links, found != links.end() && hasIndex(*found) ? &*found : nullptr);
}

std::span<const NetworkAddress> NetworkSnapshot::addresses(std::int32_t link) const {
    constexpr std::ptrdiff_t kNear = 8;
    const auto& all = kernel().addresses;
    // Mostly those of the latest link, or of the next one.
    const auto latest = all.begin() + static_cast<std::ptrdiff_t>(lazy_->latestAddress.load(std::memory_order_relaxed));
    auto begin = latest != all.end() && latest->link <= link ? latest : all.begin();
    const auto far = begin + std::min(kNear, all.end() - begin);
    begin = std::find_if(begin, far, [link](const NetworkAddress& address) { return address.link >= link; });
    if (begin == far) {
        begin = std::ranges::lower_bound(far, all.end(), link, {}, &NetworkAddress::link);
    }
    lazy_->latestAddress.store(static_cast<std::size_t>(begin - all.begin()), std::memory_order_relaxed);
    return {begin, std::find_if(begin, all.end(), [link](const NetworkAddress& each) { return each.link != link; })};
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
    static_cast<void>(kernel()); // who reads it has the connection
    const std::scoped_lock lock(lazy_->mutex);
    const auto read = [&] {
        return lazy_->socket.has_value() ? readNeighbour(*lazy_->socket, link, address) : std::nullopt;
    };
    return lazy_->neighbours.get({link, address}, read);
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
