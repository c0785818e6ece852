// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// The syntax of the texts between the tags of an XML property list. White space around a number, a date and anywhere
/// in data is allowed.
namespace qk::platform {

/// Where the digits of an integer begin, and how many of them are zeros that could be left out.
struct IntegerText {
    std::size_t digits = 0;
    std::size_t zeros = 0;
};

/// An optional sign and decimal digits, or hexadecimal ones behind "0x"; nothing for anything else, and for what lies
/// outside of -2^63 to 2^64 - 1.
[[nodiscard]] std::optional<IntegerText> integerText(std::string_view text);

/// Whether `text` is a decimal number with an optional sign, fraction and exponent, or "nan", "inf" or "infinity" in
/// any case.
[[nodiscard]] bool isRealText(std::string_view text);

/// The year of "2016-11-16T04:05:00Z"; nothing for another form and for what is no moment of the calendar.
[[nodiscard]] std::optional<int> yearOfDateText(std::string_view text);

/// Whether `text` is base64 with its padding.
[[nodiscard]] bool isBase64(std::string_view text);

/// Whether every "&" of `text` begins one of the five entities or a number that is a character other than U+0000.
[[nodiscard]] bool hasTameReferences(std::string_view text);

} // namespace qk::platform
