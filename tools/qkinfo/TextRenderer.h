// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Facts.h"

#include <cstddef>
#include <span>
#include <string>

namespace qk::info {

/// What becomes of paths that are longer than their place.
enum class PathStyle {
    Wrapped, ///< they go on in the next line
    Elided,  ///< "..." is in the place of their middle, in a table
    Whole,   ///< the table becomes wider than it should be
};

/// How the text is laid out.
struct TextStyle {
    std::size_t width = 80; ///< columns; a narrow one is exceeded before values become unreadable
    bool color = false;     ///< whether escape sequences for colour may be used
    Moment now{};           ///< durations are counted up to this moment
    PathStyle paths = PathStyle::Wrapped;
};

/// What stands in the place of a fact that the machine does not tell.
inline constexpr std::string_view kAbsentText = "not reported by this system";

/// The sections as people read them, in UTF-8: a title each, then labels and values in two columns, a table, or
/// blocks of labels and values. Long values continue below themselves. No value can steer a terminal.
[[nodiscard]] std::string renderText(std::span<const Section> sections, const TextStyle& style);

} // namespace qk::info
