// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/UnitClasses.h"

#include <algorithm>
#include <cstring>

namespace qk {

namespace {

constexpr std::size_t kNowhere = std::u16string_view::npos;

/// Position of the first `unit` at or after `from`. Looks at four units a time: the product has its high bit set in a
/// lane whose units are equal (and perhaps in a higher one, which does not matter for "is there any").
std::size_t findUnit(std::u16string_view text, char16_t unit, std::size_t from) {
    constexpr std::uint64_t kOnes = 0x0001000100010001U;
    constexpr std::uint64_t kHighs = kOnes << 15U;
    const std::uint64_t pattern = kOnes * unit;
    std::size_t index = from;
    for (; text.size() - index >= 8; index += 8) {
        std::uint64_t blocks[2];
        std::memcpy(blocks, text.data() + index, sizeof blocks);
        const std::uint64_t first = blocks[0] ^ pattern;
        const std::uint64_t second = blocks[1] ^ pattern;
        if (((((first - kOnes) & ~first) | ((second - kOnes) & ~second)) & kHighs) != 0) {
            break;
        }
    }
    while (index < text.size() && text[index] != unit) {
        ++index;
    }
    return index < text.size() ? index : kNowhere;
}

/// Position of the first `needle` in `text` in linear time, whatever the two are (Knuth, Morris and Pratt).
template <typename Iterator>
std::size_t findLinear(Iterator text, std::size_t textLength, Iterator needle, std::size_t needleLength) {
    const auto at = [](Iterator base, std::size_t index) { return *(base + static_cast<std::ptrdiff_t>(index)); };
    std::vector<std::size_t> borders(needleLength, 0); // longest proper border of the first index + 1 units
    for (std::size_t index = 1, border = 0; index < needleLength; ++index) {
        while (border > 0 && at(needle, index) != at(needle, border)) {
            border = borders[border - 1];
        }
        border += at(needle, index) == at(needle, border) ? 1U : 0U;
        borders[index] = border;
    }
    for (std::size_t index = 0, matched = 0; index < textLength; ++index) {
        while (matched > 0 && at(text, index) != at(needle, matched)) {
            matched = borders[matched - 1];
        }
        matched += at(text, index) == at(needle, matched) ? 1U : 0U;
        if (matched == needleLength) {
            return index + 1 - needleLength;
        }
    }
    return kNowhere;
}

/// How many units `left` and `right` (at least as long) have in common.
std::size_t matchLength(std::u16string_view left, const char16_t* right) {
    return static_cast<std::size_t>(std::mismatch(left.begin(), left.end(), right).first - left.begin());
}

/// The direct way is the fastest on ordinary texts. A text made to defeat it (all "a", and "aaaa...b" is wanted) uses
/// up an allowance that is in proportion to what has been scanned, and then goes to the search that cannot be defeated.
std::size_t findForward(std::u16string_view text, std::u16string_view needle, std::size_t from) {
    std::size_t compared = 0;
    std::size_t index = from;
    while (text.size() - index >= needle.size()) {
        index = findUnit(text.substr(0, text.size() - needle.size() + 1), needle.front(), index);
        if (index == kNowhere) {
            return kNowhere;
        }
        const std::size_t matched = matchLength(needle, text.data() + index);
        if (matched == needle.size()) {
            return index;
        }
        compared += matched;
        ++index;
        if (compared > 8 * (index - from) + 4 * needle.size()) {
            const std::size_t found = findLinear(text.begin() + static_cast<std::ptrdiff_t>(index), text.size() - index,
                                                 needle.begin(), needle.size());
            return found == kNowhere ? kNowhere : index + found;
        }
    }
    return kNowhere;
}

std::size_t findBackward(std::u16string_view text, std::u16string_view needle) {
    std::size_t compared = 0;
    for (std::size_t end = text.size(); end >= needle.size(); --end) {
        const std::size_t index = end - needle.size();
        const std::size_t matched = matchLength(needle, text.data() + index);
        if (matched == needle.size()) {
            return index;
        }
        compared += matched;
        if (compared > 8 * (text.size() - end + 1) + 4 * needle.size()) {
            const std::u16string_view rest = text.substr(0, end - 1);
            const std::size_t found = findLinear(rest.rbegin(), rest.size(), needle.rbegin(), needle.size());
            return found == kNowhere ? kNowhere : rest.size() - found - needle.size();
        }
    }
    return kNowhere;
}

std::optional<std::size_t> orNothing(std::size_t position) {
    return position == kNowhere ? std::nullopt : std::optional(position);
}

} // namespace

std::optional<std::size_t> NSString::find(std::u16string_view text, std::size_t from) const {
    if (text.empty() || from >= length() || length() - from < text.size()) {
        return std::nullopt;
    }
    return orNothing(findForward(units(), text, from));
}

std::optional<std::size_t> NSString::findLast(std::u16string_view text) const {
    if (text.empty() || length() < text.size()) {
        return std::nullopt;
    }
    return orNothing(findBackward(units(), text));
}

std::vector<NSString> NSString::componentsSeparatedByString(const NSString& separator) const {
    std::vector<NSString> pieces;
    std::size_t start = 0;
    for (auto at = find(separator.units()); at.has_value(); at = find(separator.units(), start)) {
        pieces.push_back(substring(start, *at - start));
        start = *at + separator.length();
    }
    pieces.push_back(substringFromIndex(start));
    return pieces;
}

NSString NSString::stringByReplacingOccurrencesOfString(const NSString& target, const NSString& replacement) const {
    auto at = find(target.units());
    if (!at.has_value()) {
        return *this;
    }
    NSMutableString result;
    std::size_t start = 0;
    for (; at.has_value(); at = find(target.units(), start)) {
        result.append(units().substr(start, *at - start)).append(replacement);
        start = *at + target.length();
    }
    return result.append(units().substr(start)).copy();
}

NSString NSString::stringByTrimmingWhitespace() const {
    const std::u16string_view all = units();
    const auto first = std::find_if_not(all.begin(), all.end(), internal::isWhitespace);
    const auto last = std::find_if_not(all.rbegin(), std::make_reverse_iterator(first), internal::isWhitespace).base();
    return substring(static_cast<std::size_t>(first - all.begin()), static_cast<std::size_t>(last - first));
}

} // namespace qk
