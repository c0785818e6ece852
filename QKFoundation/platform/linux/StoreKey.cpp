// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/StoreKey.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace qk::platform {
namespace {

using Entity = StoreKey::Entity;
using Subject = StoreKey::Subject;

constexpr std::size_t kIdentifierLength = 36; // of a UUID as a text

// Blocks of memory are compared faster than units one by one, and a key is taken apart for everything that is read.
bool isHead(std::u16string_view head, std::u16string_view text) {
    return head.size() <= text.size() && std::memcmp(head.data(), text.data(), head.size() * sizeof(char16_t)) == 0;
}

std::optional<Entity> entity(std::u16string_view text) {
    struct Row {
        std::u16string_view text;
        Entity entity;
    };
    static constexpr std::array kRows{
        Row{u"IPv4", Entity::IPv4},       Row{u"IPv6", Entity::IPv6},       Row{u"DNS", Entity::DNS},
        Row{u"AirPort", Entity::AirPort}, Row{u"Link", Entity::Link},       Row{u"Interface", Entity::Interface},
        Row{u"DHCP", Entity::DHCP},       Row{u"Proxies", Entity::Proxies},
    };
    for (const Row& row : kRows) {
        if (row.text.size() == text.size() && isHead(row.text, text)) {
            return row.entity;
        }
    }
    return std::nullopt;
}

// Takes `head` off the front of `text`; false where it is not there.
bool take(std::u16string_view& text, std::u16string_view head) {
    if (!isHead(head, text)) {
        return false;
    }
    text.remove_prefix(head.size());
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
    if (key == u"/Network/Interface") {
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
