// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/NormalizationData.h"

#include <array>

namespace qk::unicode {
namespace {

#include "QKFoundation/platform/values/unicode/NormalizationTables.inc"

constexpr unsigned kBlockBits = 6;

std::optional<char32_t> composeHangul(char32_t first, char32_t second) {
    using namespace hangul;
    if (first - kLead < kLeads && second - kVowel < kVowels) {
        return kSyllable + ((first - kLead) * kVowels + (second - kVowel)) * kTails;
    }
    if (isSyllable(first) && (first - kSyllable) % kTails == 0 && second - kTail - 1 < kTails - 1) {
        return first + (second - kTail);
    }
    return std::nullopt;
}

} // namespace

const Record& recordOf(char32_t character) {
    if (character >= kTableLimit) {
        return kRecords[0];
    }
    const std::size_t block = kBlockOf[character >> kBlockBits];
    return kRecords[kRecordOf[block << kBlockBits | (character & ((1U << kBlockBits) - 1))]];
}

std::span<const std::uint32_t> decompositionOf(const Record& record) {
    return std::span{kDecompositions}.subspan(record.decomposition, record.decompositionLength);
}

std::optional<char32_t> compose(char32_t first, char32_t second) {
    if (second - hangul::kVowel < hangul::kTail + hangul::kTails - hangul::kVowel) {
        return composeHangul(first, second);
    }
    const std::uint64_t key = std::uint64_t{first} << 21U | second;
    constexpr std::size_t kSlots = kPairs.size();
    constexpr unsigned kSlotBits = 11;
    static_assert(kSlots == 1U << kSlotBits);
    for (std::size_t slot = key * kPairFactor >> (64 - kSlotBits); kPairs[slot] != 0; slot = (slot + 1) % kSlots) {
        if (kPairs[slot] >> 21U == key) {
            return static_cast<char32_t>(kPairs[slot] & 0x1FFFFFU);
        }
    }
    return std::nullopt;
}

} // namespace qk::unicode
