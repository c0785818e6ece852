// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Scalar.h"
#include "QKFoundation/platform/values/unicode/WideRegisters.h"

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
    return Registers16::bits(lanes);
}

inline __m128i isAtLeast(__m128i bytes, int limit) {
    return _mm_cmpeq_epi8(_mm_max_epu8(bytes, bytesOf(limit)), bytes);
}

/// One bit for each of 64 bytes: those above `limit`, a signed value.
inline std::uint64_t above(int limit, const char* in) {
    std::uint64_t mask = 0;
    for (unsigned i = 0; i < 64; i += Widest::kSize) {
        mask |= Widest::bits(Widest::greater(Widest::load(in + i), Widest::bytes(limit))) << i;
    }
    return mask;
}

inline UTF8Masks masksOf(const char* in) {
    UTF8Masks masks;
    auto greatest = Widest::load(in);
    for (unsigned i = 0; i < 64; i += Widest::kSize) {
        const auto bytes = Widest::load(in + i);
        masks.high |= Widest::bits(bytes) << i;
        greatest = Widest::max(greatest, bytes);
    }
    // The comparisons are signed, so ASCII is above all leads.
    masks.continuations = ~above(0xBF, in);
    masks.leads2 = above(0xC1, in) & masks.high;
    if (!Widest::isZero(Widest::equal(Widest::max(greatest, Widest::bytes(0xE0)), greatest))) {
        masks.leads3 = above(0xDF, in) & masks.high;
        masks.leads4 = above(0xEF, in) & masks.high;
    }
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
template <typename R>
inline auto fixSurrogates(typename R::Type units, typename R::Type highs, typename R::Type lows) {
    const auto high = R::addWords(R::template wordsRight<4>(units), R::words(0xD7C0));
    const auto low = (units & R::words(0x3FF)) | R::words(0xDC00);
    return R::blend(R::blend(units, low, lows), high, highs);
}

/// The text of a register, and at the place of each byte the ones before it.
template <typename R>
struct Window {
    typename R::Type bytes;
    typename R::Type before1;
    typename R::Type before2;
    typename R::Type before3;
};

/// At `in`, behind which three more can be read backwards.
template <typename R>
inline Window<R> loadWindow(const char* in) {
    return {R::load(in), R::load(in - 1), R::load(in - 2), R::load(in - 3)};
}

inline std::size_t countBelow(std::uint64_t mask, unsigned end) {
    return static_cast<std::size_t>(_mm_popcnt_u64(mask & ((std::uint64_t{1} << end) - 1)));
}

/// Stores the units of 16 bytes whose bits are in `keep`, and behind them others: eight units at least. No count waits
/// for the one before.
inline char16_t* storePacked(char16_t* out, __m128i low, __m128i high, std::uint64_t keep) {
    store(out, shuffle(low, kPackWords[keep & 0xFF]));
    store(out + countBelow(keep, 8), shuffle(high, kPackWords[keep >> 8U & 0xFF]));
    return out + countBelow(keep, 16);
}

#ifdef __AVX2__
inline char16_t* storePacked(char16_t* out, __m256i low, __m256i high, std::uint64_t keep) {
    // Both halves of a register have units of their own half of the bytes.
    const auto orders = [](std::uint64_t first, std::uint64_t second) {
        return _mm256_inserti128_si256(_mm256_castsi128_si256(load(kPackWords[first & 0xFF].data())),
                                       load(kPackWords[second & 0xFF].data()), 1);
    };
    const __m256i evens = _mm256_shuffle_epi8(low, orders(keep, keep >> 16U));
    const __m256i odds = _mm256_shuffle_epi8(high, orders(keep >> 8U, keep >> 24U));
    store(out, _mm256_castsi256_si128(evens));
    store(out + countBelow(keep, 8), _mm256_castsi256_si128(odds));
    store(out + countBelow(keep, 16), _mm256_extracti128_si256(evens, 1));
    store(out + countBelow(keep, 24), _mm256_extracti128_si256(odds, 1));
    return out + countBelow(keep, 32);
}
#endif

/// `keep` has the bits of the bytes that end a unit.
template <bool Three, bool Four, typename R>
inline char16_t* writeWindow(const Window<R>& in, std::uint64_t keep, char16_t* out) {
    const auto isContinuation = R::greater(R::bytes(0xC0), in.bytes);
    const auto last = in.bytes & R::bytes(0x7F);
    const auto second = in.before1 & isContinuation & R::bytes(0x3F);
    // Each byte beside the one before it, which counts 64 times as much.
    auto low = R::addProducts(R::lowPairs(last, second), R::words(0x4001));
    auto high = R::addProducts(R::highPairs(last, second), R::words(0x4001));
    if constexpr (Three) {
        const auto third = in.before2 & R::equal(R::max(in.before2, R::bytes(0xE0)), in.before2);
        const auto zero = R::bytes(0);
        low = low | R::template wordsLeft<4>(R::lowPairs(zero, third));
        high = high | R::template wordsLeft<4>(R::highPairs(zero, third));
    }
    if constexpr (Four) {
        const auto highs = R::equal(R::max(in.before2, R::bytes(0xF0)), in.before2);
        const auto lows = R::equal(R::max(in.before3, R::bytes(0xF0)), in.before3);
        low = fixSurrogates<R>(low, R::lowPairs(highs, highs), R::lowPairs(lows, lows));
        high = fixSurrogates<R>(high, R::highPairs(highs, highs), R::highPairs(lows, lows));
    }
    return storePacked(out, low, high, keep);
}

template <bool Three, bool Four>
inline void writeBlock(const char* in, std::uint64_t units, char16_t* out) {
    for (unsigned i = 0; i < 64; i += Widest::kSize) {
        out = writeWindow<Three, Four>(loadWindow<Widest>(in + i), units >> i, out);
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

/// Where a conversion by blocks is, and the masks of the block before.
struct UTF8Progress {
    Progress at;
    UTF8Masks before{};
};

/// Goes back from the end of a block to the start of the character that it cuts.
inline Progress atBoundary(const char* in, const UTF8Progress& progress) {
    const Progress at = progress.at;
    if (missing(progress.before) == 0) {
        return at;
    }
    if (byteAt(in, at.read - 1) >= 0xC0) {
        return {at.read - 1, at.written};
    }
    return byteAt(in, at.read - 2) >= 0xE0 ? Progress{at.read - 2, at.written} : Progress{at.read - 3, at.written - 1};
}

/// 64 bytes, of which those of `there` count, the last ones; false for malformed ones, which changes nothing.
template <bool Validate, bool Write>
inline bool convertBlock(const char* in, char16_t* out, UTF8Progress& progress,
                         std::uint64_t there = ~std::uint64_t{0}) {
    const UTF8Masks masks = masksOf(in);
    const UTF8Masks& before = progress.before;
    const bool three = (masks.leads3 | before.leads3) != 0;
    if constexpr (Validate) {
        const std::uint64_t expected = movedUp(masks.leads2, before.leads2, 1) |
                                       movedUp(masks.leads3, before.leads3, 2) |
                                       movedUp(masks.leads4, before.leads4, 3);
        const std::uint64_t wrong =
            (expected ^ masks.continuations) | ((masks.continuations | masks.leads2) ^ masks.high);
        if ((wrong & there) != 0 || (three && hasBadSecond(in))) {
            return false;
        }
    }
    // All but leads, and second bytes that are not the last or last but one.
    const std::uint64_t units = there & ~(masks.leads2 | movedUp(masks.leads3, before.leads3, 1));
    if constexpr (Write) {
        if (!three) {
            writeBlock<false, false>(in, units, out);
        } else if ((masks.leads4 | before.leads4) == 0) {
            writeBlock<true, false>(in, units, out);
        } else {
            writeBlock<true, true>(in, units, out);
        }
    }
    progress.at.read += static_cast<std::size_t>(_mm_popcnt_u64(there));
    progress.at.written += static_cast<std::size_t>(_mm_popcnt_u64(units));
    progress.before = masks;
    return true;
}

} // namespace
} // namespace qk::unicode
