// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/formatters/Editing.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qk {

/// What a formatter of the family is, in plain terms, and what it must make of an edit: written down a second time, in
/// closed form and with signed numbers, to compare the library with.
struct CaretModel {
    std::u16string prefix;
    char16_t separator = u' ';
    std::size_t longest = 0;             // digits
    std::vector<std::size_t> boundaries; // ascending, in digits
    bool fromTheLeft = false;

    [[nodiscard]] static CaretModel partnerID() { return {u"", u' ', 10, {3, 6, 9}, false}; }
    [[nodiscard]] static CaretModel meetingID(char16_t letter) { return {{letter}, u'-', 8, {2, 5}, true}; }

    [[nodiscard]] static std::u16string digits(std::u16string_view text) {
        std::u16string kept;
        for (const char16_t unit : text) {
            if (unit >= u'0' && unit <= u'9') {
                kept += unit;
            }
        }
        return kept;
    }

    [[nodiscard]] std::u16string formatted(std::u16string_view text) const {
        const std::u16string all = digits(text).substr(0, longest);
        std::u16string shown = prefix;
        for (std::size_t index = 0; index < all.size(); ++index) {
            const std::size_t distance = fromTheLeft ? index : all.size() - index;
            if (index > 0 && std::ranges::count(boundaries, distance) > 0) {
                shown += separator;
            }
            shown += all[index];
        }
        return shown;
    }

    [[nodiscard]] std::int64_t needed(std::u16string_view text) const {
        const std::size_t count = digits(text).size();
        return std::ranges::count_if(boundaries, [&](std::size_t boundary) { return count > boundary; });
    }

    /// `caret` and the selection lie within their texts, as those of a field do.
    [[nodiscard]] Judged judge(const NSString& proposed, std::uint64_t caret, const NSString& original,
                               NSRange selection) const {
        if (proposed.isEmpty()) {
            return accepted(proposed, caret);
        }
        const std::u16string shown = formatted(proposed.units());
        const auto end = static_cast<std::int64_t>(shown.size());
        std::int64_t place = end;
        if (caret < proposed.length()) {
            place = static_cast<std::int64_t>(caret) + movement(shown, caret, original, selection);
        }
        // A place left of the text is a very large number, which the end of the text cuts.
        return corrected(NSString(shown), static_cast<std::uint64_t>(place < 0 ? end : std::min(place, end)));
    }

private:
    [[nodiscard]] std::int64_t movement(const std::u16string& shown, std::uint64_t caret, const NSString& original,
                                        NSRange selection) const {
        const std::int64_t gained = needed(shown) - needed(original.units());
        const auto from = static_cast<std::int64_t>(caret);
        if (gained >= 0) {
            return from >= 2 ? gained : 0;
        }
        if (selection.length >= 2) {
            std::u16string rest(original.units());
            rest.erase(selection.location, selection.length);
            return std::min<std::int64_t>(0, needed(rest) - needed(shown));
        }
        if (from < -gained) {
            return -from;
        }
        const auto here = shown.begin() + std::min<std::ptrdiff_t>(from, std::ssize(shown));
        const std::int64_t fewer =
            std::ranges::count(original.units(), separator) - std::count(shown.begin(), here, separator);
        return fewer == 0 || fewer == 1 ? -fewer : 1 - fewer;
    }
};

} // namespace qk
