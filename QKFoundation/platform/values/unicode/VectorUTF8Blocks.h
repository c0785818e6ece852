// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Scalar.h"
#include "QKFoundation/platform/values/unicode/VectorRegisters.h"

/// UTF-8 to UTF-16 by blocks of 64 bytes, of whatever text, by the plan of AVX512UTF8.h: masks say where a unit is due,
/// a unit is put together from its last byte and the two before, and a table packs the units that count.
namespace qk::unicode {
namespace {

/// Moves the 16-bit lanes of the index's bits to the front.
constexpr std::array<Shuffle, 256> makePackWords() {
    std::array<Shuffle, 256> table{};
    for (unsigned mask = 0; mask < 256; ++mask) {
        std::size_t to = 0;
        for (unsigned lane = 0; lane < 8; ++lane) {
            if ((mask >> lane & 1U) != 0) {
                table[mask][to++] = static_cast<std::uint8_t>(2 * lane);
                table[mask][to++] = static_cast<std::uint8_t>(2 * lane + 1);
            }
        }
    }
    return table;
}
constexpr std::array<Shuffle, 256> kPackWords = makePackWords();

struct UTF8Masks {
    std::uint64_t high = 0;          // not ASCII
    std::uint64_t continuations = 0; // 80 to BF
    std::uint64_t leads2 = 0;        // C2 to FF: a character of at least two bytes
    std::uint64_t leads3 = 0;        // E0 to FF
    std::uint64_t leads4 = 0;        // F0 to FF
};

inline std::uint64_t movedUp(std::uint64_t mask, std::uint64_t before, unsigned distance) {
    return mask << distance | before >> (64 - distance);
}

/// The continuations that the characters cut at the end of a block still miss.
inline std::uint64_t missing(const UTF8Masks& masks) {
    return masks.leads2 >> 63U | masks.leads3 >> 62U | masks.leads4 >> 61U;
}

inline std::uint64_t bitsOf(__m128i lanes) {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(lanes));
}

inline __m128i isAtLeast(__m128i bytes, int limit) {
    return _mm_cmpeq_epi8(_mm_max_epu8(bytes, bytesOf(limit)), bytes);
}

inline UTF8Masks masksOf(const char* in) {
    UTF8Masks masks;
    const __m128i greatest =
        _mm_max_epu8(_mm_max_epu8(load(in), load(in + 16)), _mm_max_epu8(load(in + 32), load(in + 48)));
    const bool three = !isZero(isAtLeast(greatest, 0xE0));
    for (unsigned i = 0; i < 64; i += 16) {
        const __m128i bytes = load(in + i);
        masks.high |= bitsOf(bytes) << i;
        masks.continuations |= bitsOf(_mm_cmplt_epi8(bytes, bytesOf(0xC0))) << i;
        masks.leads2 |= bitsOf(_mm_cmpgt_epi8(bytes, bytesOf(0xC1))) << i;
        if (three) {
            masks.leads3 |= bitsOf(_mm_cmpgt_epi8(bytes, bytesOf(0xDF))) << i;
            masks.leads4 |= bitsOf(_mm_cmpgt_epi8(bytes, bytesOf(0xEF))) << i;
        }
    }
    // The comparisons are signed, so ASCII is above all leads.
    masks.leads2 &= masks.high;
    masks.leads3 &= masks.high;
    masks.leads4 &= masks.high;
    return masks;
}

/// Not zero where `bytes` are second bytes out of the range that their leads in `previous`, from E0 on, leave them.
inline __m128i badSeconds(__m128i bytes, __m128i previous) {
    const __m128i lowestE =
        _mm_setr_epi8(-96, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128, -128);
    const __m128i lowestF = _mm_setr_epi8(-112, -128, -128, -128, -128, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
    const __m128i moreE = _mm_setr_epi8(31, 63, 63, 63, 63, 63, 63, 63, 63, 63, 63, 63, 63, 31, 63, 63);
    const __m128i moreF = _mm_setr_epi8(47, 63, 63, 63, 15, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const __m128i index = _mm_and_si128(previous, bytesOf(0x0F));
    const __m128i isFour = isAtLeast(previous, 0xF0);
    const __m128i lowest = _mm_blendv_epi8(_mm_shuffle_epi8(lowestE, index), _mm_shuffle_epi8(lowestF, index), isFour);
    const __m128i more = _mm_blendv_epi8(_mm_shuffle_epi8(moreE, index), _mm_shuffle_epi8(moreF, index), isFour);
    return _mm_and_si128(_mm_subs_epu8(_mm_sub_epi8(bytes, lowest), more), isAtLeast(previous, 0xE0));
}

/// Makes surrogates of units that were put together as if their characters had three bytes.
inline __m128i fixSurrogates(__m128i units, __m128i highs, __m128i lows) {
    const __m128i high = _mm_add_epi16(_mm_srli_epi16(units, 4), wordsOf(0xD7C0));
    const __m128i low = _mm_or_si128(_mm_and_si128(units, wordsOf(0x3FF)), wordsOf(0xDC00));
    return _mm_blendv_epi8(_mm_blendv_epi8(units, low, _mm_cvtepi8_epi16(lows)), high, _mm_cvtepi8_epi16(highs));
}

inline char16_t* storePacked(char16_t* out, __m128i units, std::uint64_t keep) {
    store(out, shuffle(units, kPackWords[keep & 0xFF]));
    return out + _mm_popcnt_u32(static_cast<unsigned>(keep & 0xFF));
}

/// 16 bytes of text, and at the place of each the ones before it.
struct Sixteen {
    __m128i bytes;
    __m128i before1;
    __m128i before2;
    __m128i before3;
};

/// At `in`, behind which three more can be read backwards.
inline Sixteen loadSixteen(const char* in) {
    return {load(in), load(in - 1), load(in - 2), load(in - 3)};
}

/// `keep` has the bits of the bytes that end a unit.
template <bool Three, bool Four>
inline char16_t* writeSixteen(const Sixteen& in, std::uint64_t keep, char16_t* out) {
    const __m128i isContinuation16 = _mm_cmplt_epi8(in.bytes, bytesOf(0xC0));
    const __m128i last = _mm_and_si128(in.bytes, bytesOf(0x7F));
    const __m128i second = _mm_and_si128(in.before1, _mm_and_si128(isContinuation16, bytesOf(0x3F)));
    // Each byte beside the one before it, which counts 64 times as much.
    __m128i low = _mm_maddubs_epi16(_mm_unpacklo_epi8(last, second), wordsOf(0x4001));
    __m128i high = _mm_maddubs_epi16(_mm_unpackhi_epi8(last, second), wordsOf(0x4001));
    if constexpr (Three) {
        const __m128i third = _mm_and_si128(in.before2, isAtLeast(in.before2, 0xE0));
        const __m128i zero = _mm_setzero_si128();
        low = _mm_or_si128(low, _mm_slli_epi16(_mm_unpacklo_epi8(zero, third), 4));
        high = _mm_or_si128(high, _mm_slli_epi16(_mm_unpackhi_epi8(zero, third), 4));
    }
    if constexpr (Four) {
        const __m128i highs = isAtLeast(in.before2, 0xF0);
        const __m128i lows = isAtLeast(in.before3, 0xF0);
        low = fixSurrogates(low, highs, lows);
        high = fixSurrogates(high, upperHalf(highs), upperHalf(lows));
    }
    return storePacked(storePacked(out, low, keep), high, keep >> 8U);
}

template <bool Three, bool Four>
inline void writeBlock(const char* in, std::uint64_t units, char16_t* out) {
    for (unsigned i = 0; i < 64; i += 16) {
        out = writeSixteen<Three, Four>(loadSixteen(in + i), units >> i, out);
    }
}

inline void writeASCII(const char* in, char16_t* out) {
    for (std::size_t i = 0; i < 64; i += 16) {
        const __m128i bytes = load(in + i);
        store(out + i, _mm_cvtepu8_epi16(bytes));
        store(out + i + 8, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
    }
}

inline bool hasBadSecond(const char* in) {
    __m128i bad = _mm_setzero_si128();
    for (std::size_t i = 0; i < 64; i += 16) {
        bad = _mm_or_si128(bad, badSeconds(load(in + i), load(in + i - 1)));
    }
    return _mm_testz_si128(bad, bad) == 0;
}

inline bool is64ASCII(const char* in) {
    const __m128i seen =
        _mm_or_si128(_mm_or_si128(load(in), load(in + 16)), _mm_or_si128(load(in + 32), load(in + 48)));
    return _mm_movemask_epi8(seen) == 0;
}

/// Goes back from the end of a block to the start of the character that it cuts.
inline Progress atBoundary(const char* in, Progress at, const UTF8Masks& before) {
    if (missing(before) == 0) {
        return at;
    }
    if (byteAt(in, at.read - 1) >= 0xC0) {
        return {at.read - 1, at.written};
    }
    return byteAt(in, at.read - 2) >= 0xE0 ? Progress{at.read - 2, at.written} : Progress{at.read - 3, at.written - 1};
}

/// 64 bytes; false for malformed ones, which changes nothing.
template <bool Validate, bool Write>
inline bool convertBlock(const char* in, char16_t* out, Progress& at, UTF8Masks& before) {
    const UTF8Masks masks = masksOf(in);
    const bool three = (masks.leads3 | before.leads3) != 0;
    if constexpr (Validate) {
        const std::uint64_t expected = movedUp(masks.leads2, before.leads2, 1) |
                                       movedUp(masks.leads3, before.leads3, 2) |
                                       movedUp(masks.leads4, before.leads4, 3);
        if (expected != masks.continuations || (masks.continuations | masks.leads2) != masks.high ||
            (three && hasBadSecond(in))) {
            return false;
        }
    }
    // All but leads, and second bytes that are not the last or last but one.
    const std::uint64_t units = ~(masks.leads2 | movedUp(masks.leads3, before.leads3, 1));
    if constexpr (Write) {
        if (!three) {
            writeBlock<false, false>(in, units, out);
        } else if ((masks.leads4 | before.leads4) == 0) {
            writeBlock<true, false>(in, units, out);
        } else {
            writeBlock<true, true>(in, units, out);
        }
    }
    at = {at.read + 64, at.written + static_cast<std::size_t>(_mm_popcnt_u64(units))};
    before = masks;
    return true;
}

} // namespace
} // namespace qk::unicode
