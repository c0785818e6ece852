// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>

/// UTF-16 units that composition neither changes nor reaches across: what stands in front of one, or is one, is settled
/// without a table. Not all of those: the ranges of the scripts that are most written.
namespace qk::unicode {
namespace {

struct UnitRange {
    char16_t first;
    char16_t last;
};

/// The units below are plain, too, and so are told apart first.
constexpr char16_t kPlainBelow = 0x300;

/// A low surrogate is, because the high one in front of it is not unless the whole of its 1024 characters are.
constexpr std::array<UnitRange, 10> kPlainRanges{{
    {0x0388, 0x0482}, // Greek, Cyrillic
    {0x1E00, 0x1F70}, // Vietnamese and other Latin, Greek with accents
    {0x2002, 0x20CF}, // punctuation
    {0x3000, 0x3029}, // punctuation
    {0x3030, 0x3098}, // Hiragana
    {0x309B, 0xA66E}, // Katakana, Bopomofo, Han, Yi
    {0xABEE, 0xD7FF}, // Hangul syllables
    {0xD83C, 0xD87D}, // high surrogates of pictographs and Han
    {0xDC00, 0xF8FF}, // low surrogates, private use
    {0xFE30, 0xFFFF}, // forms of full width
}};

constexpr bool isPlain(char16_t unit) {
    if (unit < kPlainBelow) {
        return true;
    }
    for (const UnitRange range : kPlainRanges) {
        if (unit >= range.first && unit <= range.last) {
            return true;
        }
    }
    return false;
}

} // namespace
} // namespace qk::unicode
