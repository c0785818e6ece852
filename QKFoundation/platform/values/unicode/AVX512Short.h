// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/AVX512UTF16.h"
#include "QKFoundation/platform/values/unicode/ShortConstants.h"

/// Short texts for processors with AVX-512 VBMI2: names and keys of up to 16 units. Half of a register does for them;
/// the processor works on more of those at a time, and they cross fewer lines of its cache.
///
/// Each returns whether it did the work. Malformed text, and what is too long for some of them, is left to the other
/// kernels, and then what is in `out` and in `written` does not count.
namespace qk::unicode {
namespace {

constexpr std::size_t kMostShort = 16;

inline __m128i load(const Constant<std::uint8_t, 16>& constant) {
    return _mm_load_si128(reinterpret_cast<const __m128i*>(&constant));
}
template <typename Lane>
__m256i load(const Constant<Lane>& constant) {
    return _mm256_load_si256(reinterpret_cast<const __m256i*>(&constant));
}

inline std::uint32_t firstBits(std::size_t count) {
    return _bzhi_u32(~std::uint32_t{0}, static_cast<unsigned>(count));
}
/// The mask of the first `count` of 16.
inline __mmask16 firstOf(std::size_t count) {
    return kShortConstants.masks[count];
}

/// Stores the first `count` bytes or units, through half of the register if that holds them: a store that crosses a
/// line of the cache takes longer than the whole conversion, whatever its mask leaves out.
inline void storeFirst(char* out, __m256i bytes, std::size_t count) {
    if (count <= 16) {
        _mm_mask_storeu_epi8(out, firstOf(count), _mm256_castsi256_si128(bytes));
    } else {
        _mm256_mask_storeu_epi8(out, firstBits(count), bytes);
    }
}
inline void storeFirst(char16_t* out, __m256i units, std::size_t count) {
    if (count <= 8) {
        _mm_mask_storeu_epi16(out, static_cast<__mmask8>(firstOf(count)), _mm256_castsi256_si128(units));
    } else {
        _mm256_mask_storeu_epi16(out, firstOf(count), units);
    }
}
inline void storeFirst(char32_t* out, __m256i values, std::size_t count) {
    if (count <= 4) {
        // A mask of halves, since GCC 12 turns one of values into an extraction, and that touches the memory which the
        // mask leaves out.
        _mm_mask_storeu_epi16(out, static_cast<__mmask8>(firstOf(2 * count)), _mm256_castsi256_si128(values));
    } else {
        _mm256_mask_storeu_epi32(out, static_cast<__mmask8>(firstOf(count)), values);
    }
}

inline std::uint32_t signsOf(__m128i bytes) {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes));
}

/// Makes surrogates of the units where a character of four bytes was put together as if it had three. False for
/// overlong forms and characters beyond the last.
inline bool fixShortSurrogates(__m256i& units, std::uint32_t highs) {
    constexpr const ShortConstants& constants = kShortConstants;
    const __m256i bits = _mm256_and_si256(units, load(constants.word3FF));
    const __m256i above = _mm256_srli_epi16(units, 4);
    units = _mm256_mask_add_epi16(units, static_cast<__mmask16>(highs << 1U), bits, load(constants.wordDC00));
    units = _mm256_mask_add_epi16(units, static_cast<__mmask16>(highs), above, load(constants.wordD7C0));
    const __m256i kind = _mm256_and_si256(units, load(constants.wordFC00));
    return _mm256_mask_cmpneq_epi16_mask(static_cast<__mmask16>(highs), kind, load(constants.wordD800)) == 0;
}

/// One lane of 16 bits for each of up to 16 bytes. Where a unit is due, it is put together of the byte and the two
/// before it.
inline bool shortUTF8ToUTF16(const char* in, std::size_t length, char16_t* out, std::size_t& written) {
    constexpr const ShortConstants& constants = kShortConstants;
    const __m128i bytes = _mm_maskz_loadu_epi8(firstOf(length), in);
    const std::uint32_t high = signsOf(bytes);
    if (high == 0) {
        storeFirst(out, _mm256_cvtepu8_epi16(bytes), length);
        written = length;
        return true;
    }
    // The difference of a byte that is not ASCII is negative below the limit.
    const std::uint32_t leads = high & ~signsOf(_mm_sub_epi8(bytes, load(constants.byteC2)));
    const std::uint32_t thirds = (high & ~signsOf(_mm_sub_epi8(bytes, load(constants.byteE0)))) << 2U;
    const std::uint32_t continuations = high & ~leads;
    const std::uint32_t expected = leads << 1U | thirds;
    // C0 and C1 count as continuations so far, but have a bit that those have not.
    if ((signsOf(_mm_add_epi8(bytes, bytes)) & continuations) != 0) {
        return false;
    }
    std::uint32_t highs = 0;
    if (expected != continuations) {
        highs = (high & ~signsOf(_mm_sub_epi8(bytes, load(constants.byteF0)))) << 2U;
        if ((expected | highs << 1U) != continuations) {
            return false;
        }
    }
    const __m256i pairs = _mm256_permutexvar_epi8(load(constants.pairs), _mm256_castsi128_si256(bytes));
    __m256i units =
        _mm256_mask_maddubs_epi16(_mm256_cvtepu8_epi16(bytes), static_cast<__mmask16>(continuations),
                                  _mm256_and_si256(pairs, load(constants.payloads)), load(constants.weights));
    if (thirds != 0) {
        // A byte below E0 leaves nothing; of one from F0 on, only the low four bits stay after the shift.
        const __m256i firsts = _mm256_cvtepu8_epi16(_mm_subs_epu8(_mm_bslli_si128(bytes, 2), load(constants.byteE0)));
        units = _mm256_or_si256(units, _mm256_slli_epi16(firsts, 12));
        const __m256i starts = _mm256_and_si256(pairs, load(constants.starts));
        __m256i wrong = _mm256_or_si256(_mm256_cmpeq_epi16(starts, load(constants.overlong)),
                                        _mm256_cmpeq_epi16(starts, load(constants.surrogate)));
        if (highs == 0) {
            wrong = _mm256_or_si256(wrong, firsts);
        }
        if (_mm256_test_epi16_mask(wrong, load(constants.aboveF)) != 0 ||
            (highs != 0 && !fixShortSurrogates(units, highs))) {
            return false;
        }
    }
    // A unit ends in front of whatever is no continuation, and so does the first half of a pair.
    const std::uint32_t silent = continuations >> 1U & ~highs;
    written = length - static_cast<unsigned>(_mm_popcnt_u32(silent));
    storeFirst(out, _mm256_maskz_compress_epi16(static_cast<__mmask16>(~silent), units), written);
    return true;
}

} // namespace
} // namespace qk::unicode
