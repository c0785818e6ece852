// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <immintrin.h>

#include <array>
#include <cstdint>

/// Registers of 16 bytes, by short names.
namespace qk::unicode {
namespace {

using Shuffle = std::array<std::uint8_t, 16>;

inline __m128i load(const void* at) {
    return _mm_loadu_si128(static_cast<const __m128i*>(at));
}
inline __m128i loadHalf(const void* at) {
    return _mm_loadl_epi64(static_cast<const __m128i*>(at));
}
inline void storeHalf(void* at, __m128i value) {
    _mm_storel_epi64(static_cast<__m128i*>(at), value);
}
inline void store(void* at, __m128i value) {
    _mm_storeu_si128(static_cast<__m128i*>(at), value);
}
inline __m128i shuffle(__m128i value, const Shuffle& order) {
    return _mm_shuffle_epi8(value, load(order.data()));
}
inline __m128i bytesOf(int value) {
    return _mm_set1_epi8(static_cast<char>(value));
}
inline __m128i wordsOf(int value) {
    return _mm_set1_epi16(static_cast<short>(value));
}
inline __m128i lanesOf(std::uint32_t value) {
    return _mm_set1_epi32(static_cast<int>(value));
}
inline __m128i upperHalf(__m128i value) {
    return _mm_unpackhi_epi64(value, value);
}
inline bool isZero(__m128i value) {
    return _mm_testz_si128(value, value) != 0;
}

} // namespace
} // namespace qk::unicode
