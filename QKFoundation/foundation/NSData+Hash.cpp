// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSData+Hash.h"
#include "QKFoundation/foundation/internal/SystemRequests.h"

#include <string>
#include <string_view>

namespace qk {

std::optional<NSString> internal::sha1(const platform::Services& services, const NSData& data) {
    const auto digest = services.crypto->SHA1(data.bytes());
    if (!digest.has_value()) {
        return std::nullopt;
    }
    constexpr std::u16string_view kDigits = u"0123456789abcdef";
    std::u16string text;
    text.reserve(2 * digest->size());
    for (const std::byte byte : *digest) {
        text += kDigits[std::to_integer<std::size_t>(byte >> 4)];
        text += kDigits[std::to_integer<std::size_t>(byte & std::byte{0xF})];
    }
    return NSString(text);
}

std::optional<NSString> NSData_Hash::sha1(const NSData& self) {
    return internal::sha1(*platform::services(), self);
}

} // namespace qk
