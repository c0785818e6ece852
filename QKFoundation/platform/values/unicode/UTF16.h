// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Characters of UTF-16 text that may hold lone surrogates: each of those is a character of its own value.
namespace qk::unicode {

struct Character {
    char32_t value;
    std::size_t length;
};

[[nodiscard]] inline Character characterAt(std::u16string_view text, std::size_t at) {
    const char32_t unit = text[at];
    if ((unit & 0xFC00U) == 0xD800U && at + 1 < text.size() && (text[at + 1] & 0xFC00U) == 0xDC00U) {
        return {(unit << 10U) + text[at + 1] - 0x35FDC00U, 2};
    }
    return {unit, 1};
}

inline void appendCharacter(char32_t character, std::u16string& out) {
    if (character < 0x10000) {
        out += static_cast<char16_t>(character);
    } else {
        out += static_cast<char16_t>(0xD7C0U + (character >> 10U));
        out += static_cast<char16_t>(0xDC00U | (character & 0x3FFU));
    }
}

} // namespace qk::unicode
