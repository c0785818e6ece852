// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/LowerCase.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace qk::internal {
namespace {

// Every letter from `first` to `last` in steps of `step` has its lower-case one `distance` away.
struct Run {
    char32_t first;
    char32_t last;
    std::uint32_t step;
    std::int32_t distance;
};

constexpr Run kRuns[]{
#include "LowerCaseTable.inc"
};

char32_t lowerCased(char32_t character) {
    if (character < 0x80) {
        return character >= U'A' && character <= U'Z' ? character + (U'a' - U'A') : character;
    }
    const auto* const run = std::ranges::lower_bound(kRuns, character, {}, &Run::last);
    if (run == std::end(kRuns) || character < run->first || (character - run->first) % run->step != 0) {
        return character;
    }
    return static_cast<char32_t>(static_cast<std::int32_t>(character) + run->distance);
}

constexpr bool isLead(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
constexpr bool isTrail(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

} // namespace

std::u16string lowerCased(std::u16string_view units) {
    std::u16string result;
    result.reserve(units.size());
    for (std::size_t index = 0; index < units.size(); ++index) {
        const char16_t unit = units[index];
        if (isLead(unit) && index + 1 < units.size() && isTrail(units[index + 1])) {
            const char32_t character = lowerCased(0x10000 + ((unit & 0x3FFU) << 10U) + (units[++index] & 0x3FFU));
            // No letter outside of the Basic Multilingual Plane has its lower-case one inside.
            result += static_cast<char16_t>(0xD7C0 + (character >> 10U));
            result += static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
        } else {
            result += static_cast<char16_t>(lowerCased(static_cast<char32_t>(unit)));
        }
    }
    return result;
}

} // namespace qk::internal
