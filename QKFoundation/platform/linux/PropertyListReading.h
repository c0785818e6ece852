// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <string_view>

/// The readers of the two forms. They take whole, well-formed property lists and nothing else, and neither recurses.
namespace qk::platform {

/// The deepest nesting of arrays and dictionaries that is read or written.
inline constexpr std::size_t kDeepestPropertyList = 512;

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
