// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/PercentEscapes.h"

namespace qk::internal {

namespace {

unsigned hexValue(char16_t digit) {
    return digit <= u'9' ? digit - unsigned{u'0'} : (digit | 0x20U) - unsigned{u'a'} + 10U;
}

} // namespace

bool isEscape(std::u16string_view text, std::size_t index) {
    return text.size() - index >= 3 && text[index] == u'%' && isHexDigit(text[index + 1]) &&
           isHexDigit(text[index + 2]);
}

std::optional<NSString> removingEscapes(const NSString& text) {
    const std::u16string_view units = text.units();
    if (units.find(u'%') == std::u16string_view::npos) {
        return text;
    }
    // Runs of escapes stand for UTF-8; what is between them is taken as it is, lone surrogates included.
    NSMutableString result;
    std::size_t index = 0;
    while (index < units.size()) {
        if (units[index] != u'%') {
            const std::size_t end = std::min(units.find(u'%', index), units.size());
            result.append(units.substr(index, end - index));
            index = end;
            continue;
        }
        std::string bytes;
        for (; index < units.size() && units[index] == u'%'; index += 3) {
            if (!isEscape(units, index)) {
                return std::nullopt;
            }
            bytes.push_back(static_cast<char>(hexValue(units[index + 1]) << 4U | hexValue(units[index + 2])));
        }
        const auto decoded = NSString::fromUTF8(bytes);
        if (!decoded.has_value()) {
            return std::nullopt;
        }
        result.append(*decoded);
    }
    return result.copy();
}

std::optional<NSString> addingEscapes(const NSString& text, bool (*isKept)(char)) {
    const auto bytes = text.utf8();
    if (!bytes.has_value()) {
        return std::nullopt;
    }
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string escaped;
    escaped.reserve(bytes->size());
    for (const char byte : *bytes) {
        if (isKept(byte)) {
            escaped.push_back(byte);
        } else {
            const auto value = static_cast<unsigned char>(byte);
            escaped.append({'%', kDigits[value >> 4U], kDigits[value & 15U]});
        }
    }
    return escaped.size() == bytes->size() ? text : NSString::fromUTF8(escaped);
}

} // namespace qk::internal
