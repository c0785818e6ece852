// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>

namespace qk::platform {

/// A time of the kernel's in nanoseconds since 1970. Anybody may give a file a date before 1678 or after 2262, for
/// which they have no room: then the least or the greatest number.
[[nodiscard]] constexpr std::int64_t nanoseconds(std::int64_t seconds, std::int64_t rest) noexcept {
    constexpr std::int64_t kOfSecond = 1'000'000'000;
    std::int64_t result = 0;
    if (__builtin_mul_overflow(seconds, kOfSecond, &result) || __builtin_add_overflow(result, rest, &result)) {
        return seconds < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    }
    return result;
}

} // namespace qk::platform
