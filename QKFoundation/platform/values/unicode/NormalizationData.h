// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
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

/// What `first` and `second` compose to, if either is a part of a syllable.
[[nodiscard]] constexpr std::optional<char32_t> compose(char32_t first, char32_t second) {
    if (first - kLead < kLeads && second - kVowel < kVowels) {
        return kSyllable + ((first - kLead) * kVowels + (second - kVowel)) * kTails;
    }
    if (isSyllable(first) && (first - kSyllable) % kTails == 0 && second - kTail - 1 < kTails - 1) {
        return first + (second - kTail);
    }
    return std::nullopt;
}

} // namespace hangul

/// The tables, as tools/unicode/make_tables.py writes them.
namespace tables {

constexpr char32_t kTableLimit = 0x30000;
constexpr std::size_t kBlockLength = 64;
constexpr std::size_t kPairSlots = 2048;
constexpr std::uint64_t kPairFactor = 0xDAA66D2C7DDF743F;

extern const Record kRecords[];
extern const std::uint32_t kDecompositions[];
extern const std::uint8_t kBlockOf[];
extern const std::uint16_t kRecordOf[];
/// A hash table with two slots for each pair: the first, the second and the composed character, of 21 bits each, or 0.
extern const std::uint64_t kPairs[];

} // namespace tables

/// A surrogate counts as a character without any mapping.
[[nodiscard]] inline const Record& recordOf(char32_t character) {
    using namespace tables;
    if (character >= kTableLimit) {
        return kRecords[0];
    }
    return kRecords[kRecordOf[kBlockOf[character / kBlockLength] * kBlockLength + character % kBlockLength]];
}

/// The full canonical decomposition: each character in the low 24 bits, its combining class above them. Empty if the
/// character stays as it is, and for Hangul syllables.
[[nodiscard]] inline std::span<const std::uint32_t> decompositionOf(const Record& record) {
    return {tables::kDecompositions + record.decomposition, record.decompositionLength};
}

/// The character that canonically composes `first` and `second`, Hangul included; nothing if there is none.
[[nodiscard]] inline std::optional<char32_t> compose(char32_t first, char32_t second) {
    using namespace tables;
    if (second - hangul::kVowel < hangul::kTail + hangul::kTails - hangul::kVowel) {
        return hangul::compose(first, second);
    }
    const std::uint64_t key = std::uint64_t{first} << 21U | second;
    const std::uint64_t hash = key * kPairFactor;
    constexpr int kSlotBits = std::bit_width(kPairSlots - 1);
    const std::uint64_t one = kPairs[hash >> (64 - kSlotBits)];
    const std::uint64_t other = kPairs[hash >> (64 - 2 * kSlotBits) & (kPairSlots - 1)];
    const std::uint64_t found = one >> 21U == key ? one : other;
    if (found != 0 && found >> 21U == key) {
        return static_cast<char32_t>(found & 0x1FFFFFU);
    }
    return std::nullopt;
}

} // namespace qk::unicode
