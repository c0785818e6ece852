// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxIORegistry.h"

#include "QKFoundation/platform/linux/FileSystemRepresentation.h"
#include "QKFoundation/platform/linux/NetworkDevice.h"

#include <net/if.h>
#include <net/if_arp.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace qk::platform {
namespace {

constexpr std::uint32_t kLowerUp = 0x10000; // IFF_LOWER_UP, which <net/if.h> lacks: there is a carrier
constexpr std::int64_t kMegabit = 1'000'000;

// "IOLinkStatus": what is known is valid, and the link is active.
constexpr std::int32_t kStatusValid = 1;
constexpr std::int32_t kStatusActive = 2;

// An entry is twice the index of its link, which is at least 1; the controller above it is one more.
constexpr io_registry_entry_t entryOf(std::int32_t index) noexcept {
    return 2U * static_cast<std::uint32_t>(index);
}

constexpr bool isController(io_registry_entry_t entry) noexcept {
    return entry % 2U != 0;
}

const NetworkLink* linkOf(const NetworkSnapshot& network, io_registry_entry_t entry) {
    return network.link(static_cast<std::int32_t>(entry / 2U));
}

class Entries final : public IOIterator {
public:
    explicit Entries(std::vector<io_registry_entry_t> entries) : entries_(std::move(entries)) {}

    [[nodiscard]] io_object_t next() override { return next_ < entries_.size() ? entries_[next_++] : IO_OBJECT_NULL; }

private:
    std::vector<io_registry_entry_t> entries_;
    std::size_t next_ = 0;
};

std::int32_t linkStatus(const NetworkLink& link) {
    if ((link.flags & IFF_UP) == 0) { // then nothing is told of the carrier
        return 0;
    }
    return kStatusValid | ((link.flags & kLowerUp) != 0 ? kStatusActive : 0);
}

// The one that a name belongs to.
class SingleEntry final : public IOIterator {
public:
    explicit SingleEntry(io_registry_entry_t entry) : entry_(entry) {}

    [[nodiscard]] io_object_t next() override { return std::exchange(entry_, IO_OBJECT_NULL); }

private:
    io_registry_entry_t entry_;
};

// Bits per second; 0 when it is not known, as for a link that is down.
std::int64_t linkSpeed(const NetworkSnapshot& network, const NetworkLink& link) {
    if ((link.flags & IFF_UP) == 0) {
        return 0;
    }
    if (const auto wireless = network.wireless(link)) {
        return wireless->bitRate.value_or(0);
    }
    const auto medium = network.medium(link);
    return medium.has_value() ? kMegabit * medium->megabitsPerSecond.value_or(0) : 0;
}

std::optional<Value> textValue(const std::optional<std::string>& text) {
    return text.has_value() ? std::optional<Value>(NSString::fromUTF8Lossy(*text)) : std::nullopt;
}

// Made once, and there for threads that end after the process has begun to: comparing texts is then all that a question
// costs.
struct Names {
    NSString servicePlane = kIOServicePlane;
    NSString interfaceClass = kIONetworkInterfaceClass;
    NSString bsdName = "BSD Name";
    NSString builtIn = "IOBuiltin";
    NSString speed = "IOLinkSpeed";
    NSString status = "IOLinkStatus";
    NSString vendor = "IOVendor";
    NSString model = "IOModel";
};

const Names& names() {
    static const auto& names = *new Names();
    return names;
}

std::optional<Value> interfaceProperty(const NetworkSnapshot& network, const NetworkLink& link, const NSString& key) {
    if (key == names().bsdName) {
        return stringWithFileSystemRepresentation(link.name);
    }
    return key == names().builtIn ? std::optional<Value>(isBuiltIn(network.root(), link)) : std::nullopt;
}

std::optional<Value> controllerProperty(const NetworkSnapshot& network, const NetworkLink& link, const NSString& key) {
    if (key == names().speed) {
        return linkSpeed(network, link);
    }
    if (key == names().status) {
        return linkStatus(link);
    }
    if (key == names().vendor) {
        return textValue(network.hardware(link).vendor);
    }
    return key == names().model ? textValue(network.hardware(link).model) : std::nullopt;
}

} // namespace

std::optional<IOMatching> LinuxIORegistry::bsdNameMatching(const NSString& name) const {
    return IOMatching{IOMatching::Kind::BSDName, name};
}

std::optional<IOMatching> LinuxIORegistry::serviceMatching(const NSString& className) const {
    return IOMatching{IOMatching::Kind::ServiceClass, className};
}

kern_return_t LinuxIORegistry::getMatchingServices(const IOMatching& matching,
                                                   std::unique_ptr<IOIterator>& iterator) const {
    const auto network = network_->snapshot();
    if (matching.kind == IOMatching::Kind::BSDName) {
        const auto name = fileSystemRepresentation(matching.text);
        const NetworkLink* link = name.has_value() ? network->link(*name) : nullptr;
        if (link != nullptr) {
            iterator = std::make_unique<SingleEntry>(entryOf(link->index));
        }
    } else if (matching.text == names().interfaceClass) {
        std::vector<io_registry_entry_t> entries;
        for (const NetworkLink& link : network->kernel().links) {
            if ((link.flags & IFF_LOOPBACK) == 0) {
                entries.push_back(entryOf(link.index));
            }
        }
        if (!entries.empty()) {
            iterator = std::make_unique<Entries>(std::move(entries));
        }
    }
    return KERN_SUCCESS;
}

std::optional<Value> LinuxIORegistry::entryProperty(io_registry_entry_t entry, const NSString& key) const {
    const auto network = network_->snapshot();
    const NetworkLink* link = linkOf(*network, entry);
    if (link == nullptr || (isController(entry) && !link->parentDevice.has_value())) {
        return std::nullopt;
    }
    return isController(entry) ? controllerProperty(*network, *link, key) : interfaceProperty(*network, *link, key);
}

kern_return_t LinuxIORegistry::entryParent(io_registry_entry_t entry, const NSString& plane,
                                           io_registry_entry_t& parent) const {
    if (isController(entry) || plane != names().servicePlane) {
        return KERN_FAILURE;
    }
    const auto network = network_->snapshot();
    const NetworkLink* link = linkOf(*network, entry);
    if (link == nullptr || !link->parentDevice.has_value()) {
        return KERN_FAILURE;
    }
    parent = entry + 1;
    return KERN_SUCCESS;
}

void LinuxIORegistry::objectRelease(io_object_t /*object*/) const {}

} // namespace qk::platform
