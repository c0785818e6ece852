// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tools/qkinfo/Facts.h"

#include <cstddef>
#include <span>
#include <string>

namespace qk::info {

/// How the text is laid out.
struct TextStyle {
    std::size_t width = 80; ///< columns; a narrow one is exceeded before values become unreadable
    bool color = false;     ///< whether escape sequences for colour may be used
    Moment now{};           ///< durations are counted up to this moment
};

/// What stands in the place of a fact that the machine does not tell.
inline constexpr std::string_view kAbsentText = "not reported by this system";

/// The sections as people read them, in UTF-8: a title each, then labels and values in two columns, or a table. Long
/// values continue below themselves. No value can steer a terminal.
[[nodiscard]] std::string renderText(std::span<const Section> sections, const TextStyle& style);

} // namespace qk::info
