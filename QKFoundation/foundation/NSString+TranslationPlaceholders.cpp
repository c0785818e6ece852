// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Translation.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace qk {
namespace {

/// The text between a percent sign and the next one, read as the number of a placeholder.
struct Gap {
    std::size_t sign;   // index of the percent sign at its end, counted among the signs
    std::size_t number; // 0 when it is none
};

/// The number that `digits` are, written without leading zeros; 0 when they are none, or one above `most`.
std::size_t numberIn(std::u16string_view digits, std::size_t most) {
    constexpr std::size_t kTen = 10;
    if (digits.starts_with(u'0')) {
        return 0;
    }
    std::size_t number = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit > u'9') {
            return 0;
        }
        number = number * kTen + static_cast<std::size_t>(digit - u'0');
        if (number > most) {
            return 0;
        }
    }
    return number;
}

std::vector<std::size_t> percentSignsOf(std::u16string_view text) {
    std::vector<std::size_t> positions;
    for (std::size_t at = text.find(u'%'); at != std::u16string_view::npos; at = text.find(u'%', at + 1)) {
        positions.push_back(at);
    }
    return positions;
}

/// The gaps that hold numbers, ascending by number, those of one number in the order of the text. No number above the
/// number of signs is of interest, since all the lower ones must be there as well.
std::vector<Gap> numberedGaps(std::u16string_view text, const std::vector<std::size_t>& signs) {
    std::vector<Gap> gaps;
    for (std::size_t sign = 1; sign < signs.size(); ++sign) {
        const std::size_t begin = signs[sign - 1] + 1;
        const std::size_t number = numberIn(text.substr(begin, signs[sign] - begin), signs.size());
        if (number != 0) {
            gaps.push_back({sign, number});
        }
    }
    std::ranges::stable_sort(gaps, {}, &Gap::number);
    return gaps;
}

/// Which of the signs end a placeholder that is replaced.
///
/// Replacing "%n%" by "%n$@" in the whole text, for n = 1, 2, ..., takes away the sign at the end of each placeholder
/// and nothing else that a later number could need: the sign at its beginning stays, and so do all other gaps. What is
/// left of a gap has "$@" in it and is no number any more. So a gap is replaced when its number's turn comes unless the
/// sign at its own beginning is gone by then.
std::vector<bool> replacedSigns(const std::vector<Gap>& gaps, std::size_t signCount) {
    std::vector<bool> replaced(signCount, false);
    std::size_t lastFound = 0;
    for (const Gap& gap : gaps) {
        if (gap.number > lastFound + 1) {
            break;
        }
        if (!replaced[gap.sign - 1]) {
            replaced[gap.sign] = true;
            lastFound = gap.number;
        }
    }
    return replaced;
}

} // namespace

NSString NSString_Translation::stringByReplacingWFormatPlaceholders(const NSString& self) {
    if (!self.contains(u"%1%")) {
        return self;
    }
    const std::u16string_view text = self.units();
    const std::vector<std::size_t> signs = percentSignsOf(text);
    const std::vector<bool> replaced = replacedSigns(numberedGaps(text, signs), signs.size());
    NSMutableString result;
    std::size_t copied = 0;
    for (std::size_t index = 0; index < signs.size(); ++index) {
        if (replaced[index]) {
            result.append(text.substr(copied, signs[index] - copied)).append(u"$@");
            copied = signs[index] + 1;
        }
    }
    return result.append(text.substr(copied)).copy();
}

} // namespace qk
