// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSString.h"

#include <optional>
#include <string>
#include <string_view>

/// "%20" and its like, over ASCII classes and UTF-8 bytes.
namespace qk::internal {

constexpr bool isHexDigit(char16_t unit) noexcept {
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

/// Whether `text` has "%" and two hexadecimal digits at `index`.
[[nodiscard]] bool isEscape(std::u16string_view text, std::size_t index);

/// `text` with each escape replaced by its byte, the bytes read as UTF-8; nothing for a "%" without two hexadecimal
/// digits and for bytes that are not UTF-8.
[[nodiscard]] std::optional<NSString> removingEscapes(const NSString& text);

/// `text` with each UTF-8 byte that `isKept` refuses escaped in capital hexadecimal digits; nothing for a lone
/// surrogate.
[[nodiscard]] std::optional<NSString> addingEscapes(const NSString& text, bool (*isKept)(char));

} // namespace qk::internal
