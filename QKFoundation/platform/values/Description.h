// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <string>
#include <string_view>

/// The text forms of values.
namespace qk::internal {

/// Levels of nesting from which on the indentation stays the same: the text of a deeply nested value must not grow with
/// the square of its depth.
inline constexpr std::size_t kDeepestIndentation = 32;

/// Appends `text` as it stands inside the text of a collection: bare when it is not empty and all ASCII letters and
/// digits; else in double quotes, with `\"`, `\\`, `\n`, `\t` and the like for what needs them, three octal digits for
/// the other control characters, and `\Uxxxx` for each unit above ASCII.
void appendQuoted(std::u16string_view text, std::u16string& out);

/// The text of `value`, of any depth.
[[nodiscard]] NSString describe(const Value& value);

} // namespace qk::internal
