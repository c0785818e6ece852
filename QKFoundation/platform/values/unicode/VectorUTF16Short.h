// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/VectorUTF16ToUTF8.h"

/// Names and keys of 4 to 16 units, all of one form, from UTF-16. What such units become has one length, so the text's
/// first half and its last half are converted as they are, and overlap in the result as they do in the text.
///
/// Each returns what it wrote, 0 for other text.
namespace qk::unicode {
namespace {

constexpr std::size_t kLeastShortUTF16 = 4;
constexpr std::size_t kMostShortUTF16 = 16;

inline bool isShortUTF16(std::size_t length) {
    return length - kLeastShortUTF16 <= kMostShortUTF16 - kLeastShortUTF16;
}

/// Units that have three bytes in UTF-8.
inline bool areThrees(__m128i units) {
    const __m128i top = _mm_and_si128(units, wordsOf(0xF800));
    return isZero(_mm_or_si128(_mm_cmpeq_epi16(top, _mm_setzero_si128()), _mm_cmpeq_epi16(top, wordsOf(0xD800))));
}
inline bool haveSurrogate(__m128i units) {
    return !isZero(wordsEqual(units, 0xF800, 0xD800));
}

/// The first four units and the last four.
inline __m128i loadFours(const char16_t* in, std::size_t length) {
    return _mm_unpacklo_epi64(loadHalf(in), loadHalf(in + (length - 4)));
}

inline void storeTwelve(char* out, __m128i bytes) {
    storeHalf(out, bytes);
    const int rest = _mm_extract_epi32(bytes, 2);
    std::memcpy(out + 8, &rest, sizeof rest);
}

/// 4 to 7 units.
inline std::size_t fewUnitsToUTF8(const char16_t* in, std::size_t length, char* out) {
    const __m128i units = loadFours(in, length);
    if (areThrees(units)) {
        const UTF8Bytes bytes = UTF8Writer::encodeThrees(units);
        storeTwelve(out, bytes.first);
        storeTwelve(out + (3 * length - 12), bytes.second);
        return 3 * length;
    }
    if (length % 2 == 0 && arePairs(units)) {
        const __m128i bytes = UTF8Writer::encodePairs(units).first;
        storeHalf(out, bytes);
        storeHalf(out + (2 * length - 8), upperHalf(bytes));
        return 2 * length;
    }
    return 0;
}

inline std::size_t shortUTF16ToUTF8(const char16_t* in, std::size_t length, char* out) {
    if (length < 8) {
        return fewUnitsToUTF8(in, length, out);
    }
    const __m128i first = load(in);
    const __m128i last = load(in + (length - 8));
    if (_mm_testz_si128(_mm_or_si128(first, last), wordsOf(0xF800)) != 0) {
        // The lengths differ here: the last units come behind the first ones, zeros behind them.
        const UTF8Bytes front = UTF8Writer::encodeShort(first);
        const UTF8Bytes back = UTF8Writer::encodeShort(dropFront(last, 2 * (16 - length)));
        store(out, front.first);
        if (length <= 12) {
            storeHalf(out + front.firstCount, back.first);
        } else {
            store(out + front.firstCount, back.first);
        }
        return front.firstCount + back.firstCount - (16 - length);
    }
    if (length % 2 == 0 && arePairs(first) && arePairs(last)) {
        store(out, UTF8Writer::encodePairs(first).first);
        store(out + (2 * length - 16), UTF8Writer::encodePairs(last).first);
        return 2 * length;
    }
    if (areThrees(first) && areThrees(last)) {
        storeExactly(out, UTF8Writer::encodeThrees(first), 24);
        storeExactly(out + (3 * length - 24), UTF8Writer::encodeThrees(last), 24);
        return 3 * length;
    }
    return 0;
}

inline std::size_t shortUTF16ToUTF32(const char16_t* in, std::size_t length, char32_t* out) {
    if (length < 8) {
        const __m128i units = loadFours(in, length);
        if (haveSurrogate(units)) {
            return 0;
        }
        store(out, widen<false>(units));
        store(out + (length - 4), widen<true>(units));
        return length;
    }
    const __m128i first = load(in);
    const __m128i last = load(in + (length - 8));
    if (!haveSurrogate(first) && !haveSurrogate(last)) {
        store(out, widen<false>(first));
        store(out + 4, widen<true>(first));
        store(out + (length - 8), widen<false>(last));
        store(out + (length - 4), widen<true>(last));
        return length;
    }
    if (length % 2 == 0 && arePairs(first) && arePairs(last)) {
        store(out, joinPairs(first));
        store(out + (length / 2 - 4), joinPairs(last));
        return length / 2;
    }
    return 0;
}

} // namespace
} // namespace qk::unicode
