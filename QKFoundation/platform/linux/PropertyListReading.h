// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <string_view>

/// The readers of the two forms, and what the writer shares with them. They take whole, well-formed property lists and
/// nothing else, and neither recurses.
namespace qk::platform {

/// The deepest nesting of arrays and dictionaries that is read or written.
inline constexpr std::size_t kDeepestPropertyList = 512;

/// Seconds between the moment from which Unix counts and the one from which property lists do.
inline constexpr double kSecondsFrom1970To2001 = 978307200;

/// 2^53: a date as far as this from 2001 is neither read nor written, since whole seconds cannot be told apart.
inline constexpr double kMostPropertyListSeconds = 9007199254740992;

/// The value of an XML property list: UTF-8 without U+0000, after an optional declaration and document type one <plist>
/// with exactly one value of known, balanced tags without attributes, whose texts have the syntax of their kind, and
/// behind it white space and comments alone. Nothing for everything else. Any thread.
[[nodiscard]] std::optional<Value> xmlPropertyList(std::string_view bytes);

/// The value of a binary property list. Nothing unless everything that the root reaches lies within its bounds, is of a
/// kind that property lists have, is no part of itself, and unfolds into a bounded number of values (a few hundred
/// bytes can name a container twice on each of many levels). Keys are strings without U+0000. What is named in several
/// places is made once and shared. Any thread.
[[nodiscard]] std::optional<Value> binaryPropertyList(std::string_view bytes);

} // namespace qk::platform
