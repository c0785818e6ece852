// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace qk::internal {

/// The deepest nesting of arrays and dictionaries that is read.
inline constexpr std::size_t kDeepestOldStylePropertyList = 512;

/// The value of a property list in the older text form, which tables of localised texts are written in:
///
///     "key" = "text";  key = word;  key;      a dictionary without braces; a key alone is its own text
///     { key = value; }  ( value, value )  <0fbd 77>  "text"  'text'  word
///
/// with comments as in C++. A text without anything but blanks and comments is an empty dictionary, of entries with the
/// same key the last one counts. The bytes are UTF-8, or what a mark at their beginning says, or UTF-16 when one of the
/// first two is 0. Nothing when there are no bytes, they are malformed in their encoding or in their syntax (one
/// missing
/// ";" is enough), or values are nested too deeply. Threads: any.
[[nodiscard]] std::optional<Value> oldStylePropertyList(std::string_view bytes);

} // namespace qk::internal
