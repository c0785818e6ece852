// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/VectorRegisters.h"

/// Registers of 16 bytes and of 32 by the same names, for code that is to be compiled for either. A register of 32 is
/// two of 16 side by side where lanes are interleaved.
namespace qk::unicode {
namespace {

struct Registers16 {
    using Type = __m128i;
    static constexpr unsigned kSize = 16;

    static Type load(const void* at) { return unicode::load(at); }
    static Type bytes(int value) { return bytesOf(value); }
    static Type words(int value) { return wordsOf(value); }
    /// The uppermost bit of each byte.
    static std::uint64_t bits(Type lanes) { return static_cast<std::uint32_t>(_mm_movemask_epi8(lanes)); }
    static bool isZero(Type value) { return unicode::isZero(value); }
    /// Of bytes with a sign.
    static Type greater(Type left, Type right) { return _mm_cmpgt_epi8(left, right); }
    static Type equal(Type left, Type right) { return _mm_cmpeq_epi8(left, right); }
    /// Of bytes without a sign.
    static Type max(Type left, Type right) { return _mm_max_epu8(left, right); }
    /// A byte of each in turn.
    static Type lowPairs(Type left, Type right) { return _mm_unpacklo_epi8(left, right); }
    static Type highPairs(Type left, Type right) { return _mm_unpackhi_epi8(left, right); }
    /// Both products of each pair of bytes, added up.
    static Type addProducts(Type left, Type right) { return _mm_maddubs_epi16(left, right); }
    static Type addWords(Type left, Type right) { return _mm_add_epi16(left, right); }
    template <int Bits>
    static Type wordsLeft(Type words) {
        return _mm_slli_epi16(words, Bits);
    }
    template <int Bits>
    static Type wordsRight(Type words) {
        return _mm_srli_epi16(words, Bits);
    }
    static Type blend(Type unset, Type set, Type mask) { return _mm_blendv_epi8(unset, set, mask); }
};

#ifdef __AVX2__
struct Registers32 {
    using Type = __m256i;
    static constexpr unsigned kSize = 32;

    static Type load(const void* at) { return _mm256_loadu_si256(static_cast<const __m256i*>(at)); }
    static Type bytes(int value) { return _mm256_set1_epi8(static_cast<char>(value)); }
    static Type words(int value) { return _mm256_set1_epi16(static_cast<short>(value)); }
    static std::uint64_t bits(Type lanes) { return static_cast<std::uint32_t>(_mm256_movemask_epi8(lanes)); }
    static bool isZero(Type value) { return _mm256_testz_si256(value, value) != 0; }
    static Type greater(Type left, Type right) { return _mm256_cmpgt_epi8(left, right); }
    static Type equal(Type left, Type right) { return _mm256_cmpeq_epi8(left, right); }
    static Type max(Type left, Type right) { return _mm256_max_epu8(left, right); }
    static Type lowPairs(Type left, Type right) { return _mm256_unpacklo_epi8(left, right); }
    static Type highPairs(Type left, Type right) { return _mm256_unpackhi_epi8(left, right); }
    static Type addProducts(Type left, Type right) { return _mm256_maddubs_epi16(left, right); }
    static Type addWords(Type left, Type right) { return _mm256_add_epi16(left, right); }
    template <int Bits>
    static Type wordsLeft(Type words) {
        return _mm256_slli_epi16(words, Bits);
    }
    template <int Bits>
    static Type wordsRight(Type words) {
        return _mm256_srli_epi16(words, Bits);
    }
    static Type blend(Type unset, Type set, Type mask) { return _mm256_blendv_epi8(unset, set, mask); }
};
using Widest = Registers32;
#else
using Widest = Registers16;
#endif

} // namespace
} // namespace qk::unicode
