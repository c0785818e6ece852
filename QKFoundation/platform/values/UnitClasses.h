// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Classes of single UTF-16 units. All white space of Unicode lies in the Basic Multilingual Plane.
namespace qk::internal {

constexpr bool isASCIIDigit(char16_t unit) noexcept {
    return unit >= u'0' && unit <= u'9';
}

constexpr bool isASCIILetter(char16_t unit) noexcept {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

/// Tab and the space separators (general category Zs).
constexpr bool isWhitespace(char16_t unit) noexcept {
    return unit == u' ' || unit == u'\t' || unit == u'\u00A0' || unit == u'\u1680' ||
           (unit >= u'\u2000' && unit <= u'\u200A') || unit == u'\u202F' || unit == u'\u205F' || unit == u'\u3000';
}

/// White space and the ends of lines and paragraphs.
constexpr bool isWhitespaceOrNewline(char16_t unit) noexcept {
    return isWhitespace(unit) || (unit >= u'\n' && unit <= u'\r') || unit == u'\u0085' || unit == u'\u2028' ||
           unit == u'\u2029';
}

} // namespace qk::internal
