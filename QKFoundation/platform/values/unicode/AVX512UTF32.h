// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/AVX512UTF16.h"

/// UTF-32 to UTF-16 for processors with AVX-512 VBMI2, 16 values at a time.
namespace qk::unicode {
namespace {

/// 16 values or, at the end, fewer. `Write` false counts only. False for a value that is none of Unicode's.
template <bool Write, bool Room>
inline bool readUTF32Block(const char32_t* in, __mmask16 there, char16_t* out, Progress& at) {
    const __m512i values = _mm512_maskz_loadu_epi32(there, in + at.read);
    const __m512i prefix = _mm512_and_si512(values, _mm512_set1_epi32(-0x800));
    const __mmask16 bad = _mm512_cmpgt_epu32_mask(values, _mm512_set1_epi32(0x10FFFF)) |
                          _mm512_cmpeq_epi32_mask(prefix, _mm512_set1_epi32(0xD800));
    if (bad != 0) {
        return false;
    }
    const std::uint32_t pairs = _mm512_cmpge_epu32_mask(values, _mm512_set1_epi32(0x10000));
    const std::size_t count = countOf(there) + countOf(pairs);
    if constexpr (Write) {
        if (pairs == 0) {
            _mm256_mask_storeu_epi16(out + at.written, there, _mm512_cvtepi32_epi16(values));
        } else {
            const __m512i high = _mm512_add_epi32(_mm512_srli_epi32(values, 10), _mm512_set1_epi32(0xD7C0));
            const __m512i low = _mm512_slli_epi32(values, 16);
            // (low & 03FF0000) | high, and the mark of a low surrogate
            const __m512i both =
                _mm512_or_si512(_mm512_set1_epi32(-0x24000000),
                                _mm512_ternarylogic_epi64(low, _mm512_set1_epi32(0x03FF0000), high, 0xEA));
            const __m512i units = _mm512_mask_mov_epi32(values, static_cast<__mmask16>(pairs), both);
            const std::uint32_t keep = _pdep_u32(there, 0x55555555U) | _pdep_u32(pairs, 0xAAAAAAAAU);
            _mm512_mask_storeu_epi16(out + at.written, unitsBelow(Room ? 32 : count),
                                     _mm512_maskz_compress_epi16(keep, units));
        }
    }
    at.read += countOf(there);
    at.written += count;
    return true;
}

template <bool Write>
inline Progress readUTF32(const char32_t* in, std::size_t length, char16_t* out) {
    Progress at{0, 0};
    while (length - at.read >= 16) {
        if (!readUTF32Block<Write, true>(in, 0xFFFF, out, at)) {
            return at;
        }
    }
    if (at.read < length) {
        readUTF32Block<Write, false>(in, static_cast<__mmask16>(unitsBelow(length - at.read)), out, at);
    }
    return at;
}

} // namespace
} // namespace qk::unicode
