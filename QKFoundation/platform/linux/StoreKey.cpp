// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/StoreKey.h"

#include <cstddef>
#include <cstring>

namespace qk::platform {
namespace {

using Entity = StoreKey::Entity;
using Subject = StoreKey::Subject;

constexpr std::size_t kIdentifierLength = 36; // of a UUID as a text

// Blocks of memory are compared faster than units one by one, in a few words where their length is known, and a key is
// taken apart for everything that is read.
template <std::size_t N>
bool isHead(const char16_t (&head)[N], std::u16string_view text) { // NOLINT(modernize-avoid-c-arrays): a literal
    constexpr std::size_t kLength = N - 1;
    return kLength <= text.size() && std::memcmp(&head[0], text.data(), kLength * sizeof(char16_t)) == 0;
}

template <std::size_t N>
bool isWhole(const char16_t (&other)[N], std::u16string_view text) { // NOLINT(modernize-avoid-c-arrays)
    return text.size() == N - 1 && isHead(other, text);
}

std::optional<Entity> entity(std::u16string_view text) {
    if (isWhole(u"IPv4", text)) {
        return Entity::IPv4;
    }
    if (isWhole(u"IPv6", text)) {
        return Entity::IPv6;
    }
    if (isWhole(u"DNS", text)) {
        return Entity::DNS;
    }
    if (isWhole(u"AirPort", text)) {
        return Entity::AirPort;
    }
    if (isWhole(u"Link", text)) {
        return Entity::Link;
    }
    if (isWhole(u"Interface", text)) {
        return Entity::Interface;
    }
    if (isWhole(u"DHCP", text)) {
        return Entity::DHCP;
    }
    return isWhole(u"Proxies", text) ? std::optional(Entity::Proxies) : std::nullopt;
}

// Takes `head` off the front of `text`; false where it is not there.
template <std::size_t N>
bool take(std::u16string_view& text, const char16_t (&head)[N]) { // NOLINT(modernize-avoid-c-arrays)
    if (!isHead(head, text)) {
        return false;
    }
    text.remove_prefix(N - 1);
    return true;
}

} // namespace

std::optional<StoreKey> storeKey(std::u16string_view key) {
    StoreKey result{StoreKey::Domain::State, Subject::AllInterfaces, {}, Entity::None};
    if (take(key, u"Setup:")) {
        result.domain = StoreKey::Domain::Setup;
    } else if (!take(key, u"State:")) {
        return std::nullopt;
    }
    if (isWhole(u"/Network/Interface", key)) {
        return result;
    }
    if (take(key, u"/Network/Service/")) {
        result.subject = Subject::Service;
    } else if (take(key, u"/Network/Interface/")) {
        result.subject = Subject::Interface;
    } else if (take(key, u"/Network/Global/")) {
        result.subject = Subject::Global;
    } else {
        return std::nullopt;
    }
    if (result.subject != Subject::Global) {
        // No name has a slash in it, and most are as long as identifiers of services.
        const bool isIdentifier = key.size() > kIdentifierLength && key[kIdentifierLength] == u'/';
        const std::size_t end = isIdentifier ? kIdentifierLength : key.find(u'/');
        result.name = key.substr(0, end);
        if (end == std::u16string_view::npos) {
            return result;
        }
        key.remove_prefix(end + 1);
    }
    const std::optional<Entity> named = entity(key);
    if (!named.has_value()) {
        return std::nullopt;
    }
    result.entity = *named;
    return result;
}

} // namespace qk::platform
