// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// What canonical composition knows about single characters.
namespace qk::unicode {

enum class QuickCheck : std::uint8_t { yes, maybe, no };

struct Record {
    std::uint16_t decomposition;      // where it begins in the pool
    std::uint8_t decompositionLength; // 0: none
    std::uint8_t combiningClass;
    std::uint8_t trailingClass; // of the last character of the decomposition
    std::uint8_t quickCheck;

    [[nodiscard]] constexpr QuickCheck check() const { return static_cast<QuickCheck>(quickCheck); }
    /// Whether composition never reaches across the front of the character.
    [[nodiscard]] constexpr bool isBoundary() const { return combiningClass == 0 && check() == QuickCheck::yes; }
};

/// A surrogate counts as a character without any mapping.
[[nodiscard]] const Record& recordOf(char32_t character);

/// The full canonical decomposition: each character in the low 24 bits, its combining class above them. Empty if the
/// character stays as it is, and for Hangul syllables.
[[nodiscard]] std::span<const std::uint32_t> decompositionOf(const Record& record);

/// The character that canonically composes `first` and `second`, Hangul included; nothing if there is none.
[[nodiscard]] std::optional<char32_t> compose(char32_t first, char32_t second);

namespace hangul {

constexpr char32_t kSyllable = 0xAC00;
constexpr char32_t kLead = 0x1100;
constexpr char32_t kVowel = 0x1161;
constexpr char32_t kTail = 0x11A7; // one before the first: no tail
constexpr char32_t kLeads = 19;
constexpr char32_t kVowels = 21;
constexpr char32_t kTails = 28;
constexpr char32_t kSyllables = kLeads * kVowels * kTails;

constexpr bool isSyllable(char32_t character) {
    return character - kSyllable < kSyllables;
}

} // namespace hangul
} // namespace qk::unicode
