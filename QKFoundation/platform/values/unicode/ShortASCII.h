// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <emmintrin.h>

#include <cstddef>

/// ASCII of 8 to 16 units, the usual key or name, without the way to a kernel. Two registers that may overlap hold it.
/// Each returns whether it did the work: false for other lengths and other text.
namespace qk::unicode {
namespace {

constexpr std::size_t kShortLeast = 8;
constexpr std::size_t kShortMost = 16;

inline bool shortASCIIToUTF16(const char* in, std::size_t length, char16_t* out) {
    if (length - kShortLeast > kShortMost - kShortLeast) {
        return false;
    }
    const std::size_t back = length - 8;
    const __m128i first = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(in));
    const __m128i last = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(in + back));
    if (_mm_movemask_epi8(_mm_or_si128(first, last)) != 0) {
        return false;
    }
    const __m128i zero = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi8(first, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + back), _mm_unpacklo_epi8(last, zero));
    return true;
}

/// Loads the two registers; false if they are not all ASCII.
inline bool loadShortASCII(const char16_t* in, std::size_t length, __m128i& first, __m128i& last) {
    if (length - kShortLeast > kShortMost - kShortLeast) {
        return false;
    }
    first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    last = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + (length - 8)));
    const __m128i beyond = _mm_and_si128(_mm_or_si128(first, last), _mm_set1_epi16(-0x80));
    return _mm_movemask_epi8(_mm_cmpeq_epi16(beyond, _mm_setzero_si128())) == 0xFFFF;
}

inline bool shortASCIIToUTF8(const char16_t* in, std::size_t length, char* out) {
    __m128i first;
    __m128i last;
    if (!loadShortASCII(in, length, first, last)) {
        return false;
    }
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(first, first));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out + (length - 8)), _mm_packus_epi16(last, last));
    return true;
}

inline bool shortASCIIToUTF32(const char16_t* in, std::size_t length, char32_t* out) {
    __m128i first;
    __m128i last;
    if (!loadShortASCII(in, length, first, last)) {
        return false;
    }
    const __m128i zero = _mm_setzero_si128();
    char32_t* const back = out + (length - 8);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_unpacklo_epi16(first, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + 4), _mm_unpackhi_epi16(first, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(back), _mm_unpacklo_epi16(last, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(back + 4), _mm_unpackhi_epi16(last, zero));
    return true;
}

} // namespace
} // namespace qk::unicode
