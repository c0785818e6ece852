// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/AVX512Short.h"

/// Short texts from UTF-16, and from UTF-32 to it.
namespace qk::unicode {
namespace {

inline std::size_t countShort(std::uint32_t mask) {
    return static_cast<unsigned>(_mm_popcnt_u32(mask));
}

/// Eight units in lanes of 32 bits, behind the end 0.
struct ShortUTF16 {
    __m256i units;
    __mmask8 highs;
    __mmask8 lows;

    ShortUTF16(const char16_t* in, __mmask16 there)
        : units{_mm256_cvtepu16_epi32(_mm_maskz_loadu_epi16(static_cast<__mmask8>(there), in))} {
        const __m256i prefix = _mm256_and_si256(units, load(kShortConstants.lanesFC00));
        highs = _mm256_cmpeq_epi32_mask(prefix, load(kShortConstants.lanesD800));
        lows = _mm256_cmpeq_epi32_mask(prefix, load(kShortConstants.lanesDC00));
    }

    [[nodiscard]] bool hasSurrogates() const { return _kortestz_mask8_u8(highs, lows) == 0; }
    /// Whether each surrogate is half of a pair.
    [[nodiscard]] bool isWellFormed() const { return unsigned{lows} == unsigned{highs} << 1U; }
    /// The unit before each.
    [[nodiscard]] __m256i before() const { return _mm256_alignr_epi32(units, units, 7); }
};

/// Up to 16 units without surrogates, or up to eight.
inline bool shortUTF16ToUTF32(const char16_t* in, std::size_t length, char32_t* out, std::size_t& written) {
    constexpr const ShortConstants& constants = kShortConstants;
    const __mmask16 there = firstOf(length);
    if (length > 8) {
        const __m256i units = _mm256_maskz_loadu_epi16(there, in);
        const __m256i prefix = _mm256_and_si256(units, load(constants.wordF800));
        _mm256_storeu_epi32(out, _mm256_cvtepu16_epi32(_mm256_castsi256_si128(units)));
        _mm256_mask_storeu_epi32(out + 8, static_cast<__mmask8>(there >> 8U),
                                 _mm256_cvtepu16_epi32(_mm256_extracti128_si256(units, 1)));
        written = length;
        return _mm256_cmpeq_epi16_mask(prefix, load(constants.wordD800)) == 0;
    }
    const ShortUTF16 text{in, there};
    if (!text.hasSurrogates()) {
        storeFirst(out, text.units, length);
        written = length;
        return true;
    }
    const __m256i front = _mm256_slli_epi32(text.before(), 10);
    const __m256i back = _mm256_sub_epi32(text.units, load(constants.pairOffset));
    const __m256i values = _mm256_mask_add_epi32(text.units, text.lows, front, back);
    written = length - countShort(text.highs);
    storeFirst(out, _mm256_maskz_compress_epi32(static_cast<__mmask8>(~text.highs), values), written);
    return text.isWellFormed();
}

/// Units below 0x800, of which `wide` are not ASCII.
inline std::size_t writeShortTwos(__m256i units, std::size_t length, __mmask16 wide, char* out) {
    constexpr const ShortConstants& constants = kShortConstants;
    const __m256i second = _mm256_slli_epi16(units, 8);
    // (second & 3F00) | units >> 6: the lead comes first in memory.
    const __m256i both = _mm256_ternarylogic_epi64(second, load(constants.word3F00), _mm256_srli_epi16(units, 6), 0xEA);
    const __m256i bytes = _mm256_mask_blend_epi16(wide, second, _mm256_or_si256(both, load(constants.word80C0)));
    const std::size_t written = length + countShort(wide);
    const std::uint32_t keep = _pdep_u32(wide, 0x55555555U) | 0xAAAAAAAAU;
    storeFirst(out, _mm256_maskz_compress_epi8(keep, bytes), written);
    return written;
}

/// Up to eight units, each up to three bytes at the end of its lane. A high surrogate gives the first two bytes of its
/// character, a low one the last two.
inline std::size_t writeShortLanes(const ShortUTF16& text, std::size_t length, char* out) {
    constexpr const ShortConstants& constants = kShortConstants;
    const __mmask8 ascii = _mm256_cmplt_epu32_mask(text.units, load(constants.lanes80));
    const __mmask8 two = _mm256_cmplt_epu32_mask(text.units, load(constants.lanes800));
    __m256i headers = _mm256_mask_blend_epi32(two, load(constants.headersOf3), load(constants.headersOf2));
    __m256i values = text.units;
    if (text.hasSurrogates()) {
        const __m256i bits = _mm256_and_si256(text.units, load(constants.lanes3FF));
        // Bits 12 to 20 of the character; 0x40 are the 0x10000 that surrogates leave out.
        const __m256i front = _mm256_srli_epi32(_mm256_add_epi32(bits, load(constants.lanes40)), 2);
        const __m256i above = _mm256_and_si256(_mm256_slli_epi32(text.before(), 10), load(constants.lanesC00));
        values = _mm256_mask_mov_epi32(values, text.highs, front);
        values = _mm256_mask_or_epi32(values, text.lows, bits, above);
        headers = _mm256_mask_mov_epi32(headers, text.highs, load(constants.headersOfHigh));
        headers = _mm256_mask_mov_epi32(headers, text.lows, load(constants.headersOfLow));
    }
    // Byte i of a lane gets the value from bit 12 (i = 1), 6 (2) or 0 (3) on.
    const __m256i fields = _mm256_multishift_epi64_epi8(load(constants.fields), values);
    const __m256i wide = _mm256_ternarylogic_epi64(fields, load(constants.fieldBits), headers, 0xEA);
    const __m256i bytes = _mm256_mask_slli_epi32(wide, ascii, text.units, 24);
    const std::uint32_t keep = static_cast<std::uint32_t>(_mm256_movemask_epi8(bytes)) | 0x88888888U;
    // Each lane behind the end counts for one byte.
    const std::size_t written = countShort(keep) + length - 8;
    storeFirst(out, _mm256_maskz_compress_epi8(keep, bytes), written);
    return written;
}

/// Up to 16 units below 0x800, or up to eight.
inline bool shortUTF16ToUTF8(const char16_t* in, std::size_t length, char* out, std::size_t& written) {
    constexpr const ShortConstants& constants = kShortConstants;
    const __mmask16 there = firstOf(length);
    const __m256i units = _mm256_maskz_loadu_epi16(there, in);
    const __mmask16 wide = _mm256_test_epi16_mask(units, load(constants.wordFF80));
    if (wide == 0) {
        _mm_mask_storeu_epi8(out, there, _mm256_cvtepi16_epi8(units));
        written = length;
        return true;
    }
    if (_mm256_test_epi16_mask(units, load(constants.wordF800)) == 0) {
        written = writeShortTwos(units, length, wide, out);
        return true;
    }
    if (length > 8) {
        return false;
    }
    const ShortUTF16 text{in, there};
    written = writeShortLanes(text, length, out);
    return text.isWellFormed();
}

/// Up to eight values.
inline bool shortUTF32ToUTF16(const char32_t* in, std::size_t length, char16_t* out, std::size_t& written) {
    constexpr const ShortConstants& constants = kShortConstants;
    if (length > 8) {
        return false;
    }
    const __mmask16 there = firstOf(length);
    const __m256i values = _mm256_maskz_loadu_epi32(static_cast<__mmask8>(there), in);
    const __m256i prefix = _mm256_and_si256(values, load(constants.lanesSurrogate));
    const __mmask8 surrogates = _mm256_cmpeq_epi32_mask(prefix, load(constants.lanesD800));
    const __mmask8 pairs = _mm256_cmpgt_epu32_mask(values, load(constants.lanesFFFF));
    if (pairs == 0) {
        _mm_mask_storeu_epi16(out, static_cast<__mmask8>(there), _mm256_cvtepi32_epi16(values));
        written = length;
        return surrogates == 0;
    }
    const __m256i high = _mm256_add_epi32(_mm256_srli_epi32(values, 10), load(constants.lanesD7C0));
    const __m256i low = _mm256_slli_epi32(values, 16);
    // (low & 03FF0000) | high, and the mark of a low surrogate
    const __m256i both = _mm256_ternarylogic_epi64(low, load(constants.lowBits), high, 0xEA);
    const __m256i units = _mm256_mask_or_epi32(values, pairs, both, load(constants.lowMark));
    written = length + countShort(pairs);
    const __mmask16 keep = static_cast<__mmask16>(_pdep_u32(pairs, 0xAAAAU) | 0x5555U);
    storeFirst(out, _mm256_maskz_compress_epi16(keep, units), written);
    const __mmask8 beyond = _mm256_cmpgt_epu32_mask(values, load(constants.lanes10FFFF));
    return _kortestz_mask8_u8(surrogates, beyond) != 0;
}

} // namespace
} // namespace qk::unicode
