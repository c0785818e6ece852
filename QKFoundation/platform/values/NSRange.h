// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace qk {

/// The location of what was not found.
inline constexpr std::uint64_t NSNotFound = 0x7FFF'FFFF'FFFF'FFFF;

/// A stretch of a text or collection: its first index and how many follow. Plain numbers; nothing is checked.
struct NSRange {
    std::uint64_t location = 0;
    std::uint64_t length = 0;

    [[nodiscard]] friend constexpr bool operator==(NSRange, NSRange) noexcept = default;
};

} // namespace qk
