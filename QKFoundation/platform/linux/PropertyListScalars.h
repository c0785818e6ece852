// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSData.h"
#include "QKFoundation/platform/values/NSDate.h"
#include "QKFoundation/platform/values/NSNumber.h"

#include <optional>
#include <string>
#include <string_view>

/// The texts between the tags of an XML property list. White space around a number, a date and anywhere in data is
/// allowed. Each gives nothing for a text that has not the syntax of its kind.
namespace qk::platform {

/// An optional sign and decimal digits, or hexadecimal ones behind "0x", from -2^63 to 2^64 - 1. Zeros in front are
/// digits like others.
[[nodiscard]] std::optional<NSNumber> integerOfText(std::string_view text);

/// A decimal number with an optional sign, fraction and exponent, or "nan", "inf" or "infinity" in any case. What is
/// too large is infinity, what is too small is 0.
[[nodiscard]] std::optional<NSNumber> realOfText(std::string_view text);

/// "2016-11-16T04:05:00Z", a moment of the calendar in the years 0 to 9999.
[[nodiscard]] std::optional<NSDate> dateOfText(std::string_view text);

/// Base64 with its padding.
[[nodiscard]] std::optional<NSData> dataOfText(std::string_view text);

/// Appends `text` to `characters`, in it the characters for the five entities and for numbers. Returns whether every
/// "&" began one of them; U+0000 has none.
[[nodiscard]] bool appendCharacters(std::string_view text, std::string& characters);

} // namespace qk::platform
