// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace qk::info {

/// Characters from `first` to `last`, both included.
struct CharacterRange {
    std::uint32_t first;
    std::uint32_t last;
};

/// Characters that take two columns, ascending.
[[nodiscard]] std::span<const CharacterRange> wideRanges() noexcept;

/// Characters that are drawn into the columns of the one before them, ascending.
[[nodiscard]] std::span<const CharacterRange> emptyRanges() noexcept;

/// Characters that are orders instead of signs: controls, line and paragraph ends, direction marks and the like;
/// ascending.
[[nodiscard]] std::span<const CharacterRange> unseenRanges() noexcept;

} // namespace qk::info
