// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/AVX512UTF16.h"

#include <utility>

/// UTF-16 to UTF-8 for processors with AVX-512 VBMI2: lanes of four bytes, compressed to the bytes that count.
namespace qk::unicode {
namespace {

template <bool Room>
inline std::size_t storeBytes(char* out, __m512i bytes, std::uint64_t keep) {
    const __m512i packed = _mm512_maskz_compress_epi8(keep, bytes);
    const std::size_t count = countOf(keep);
    if constexpr (Room) {
        _mm512_storeu_si512(out, packed);
    } else {
        _mm512_mask_storeu_epi8(out, _bzhi_u64(~std::uint64_t{0}, static_cast<unsigned>(count)), packed);
    }
    return count;
}

struct UTF8Writer {
    using Out = char;
    /// A register of 64 bytes is stored for 16 units, and they are sure of room for 48 bytes only.
    static constexpr std::size_t kUnitsForRoom = 38;
    /// What the first half of a pair writes.
    static constexpr std::size_t kPerHighSurrogate = 2;
    static constexpr bool kCopiesPlain = true;

    template <bool Room>
    static std::size_t writeBlock(const UTF16Block& block, const char16_t* in, char* out) {
        const std::uint32_t wide = _mm512_cmpge_epu16_mask(block.units, _mm512_set1_epi16(0x80));
        if (wide == 0) {
            _mm256_mask_storeu_epi8(out, block.there, _mm512_cvtepi16_epi8(block.units));
            return countOf(block.there);
        }
        if (_mm512_cmpge_epu16_mask(block.units, _mm512_set1_epi16(0x800)) == 0) {
            return writeShort<Room>(block, wide, out);
        }
        if (Room && isPairs(block)) {
            return writePairs(block.units, out);
        }
        const std::size_t first = writeLanes<Room>(lanesOf(block, in, 0), out);
        if (!Room && block.there >> 16U == 0) {
            return first;
        }
        return first + writeLanes<Room>(lanesOf(block, in + 16, 1), out + first);
    }

    static std::size_t writePairs(__m512i units, char* out) {
        // Byte i of a character gets it from bit 18 (i = 0), 12, 6 or 0 on.
        const __m512i fields = _mm512_multishift_epi64_epi8(_mm512_set1_epi64(0x20262C3200060C12), joinPairs(units));
        _mm512_storeu_si512(out,
                            _mm512_ternarylogic_epi64(fields, _mm512_set1_epi32(0x3F3F3F07), header(0x808080F0), 0xEA));
        return 64;
    }

    /// Copies ASCII, 64 units at a time, fewer in the first step. Returns how many, all of which there are.
    static std::size_t copyPlain(const char16_t* in, std::size_t length, char* out) {
        const __m512i order = _mm512_set_epi64(7, 5, 3, 1, 6, 4, 2, 0);
        // The first step ends with a line of the cache: a store that crosses two takes twice as long.
        std::size_t step = 64 - reinterpret_cast<std::uintptr_t>(out) % 64;
        std::size_t at = 0;
        for (; length - at >= 64; at += std::exchange(step, 64)) {
            const __m512i low = _mm512_loadu_si512(in + at);
            const __m512i high = _mm512_loadu_si512(in + at + 32);
            if (_mm512_test_epi16_mask(_mm512_or_si512(low, high), _mm512_set1_epi16(-0x80)) != 0) {
                break;
            }
            // Packing takes turns between the quarters of both.
            _mm512_storeu_si512(out + at, _mm512_permutexvar_epi64(order, _mm512_packus_epi16(low, high)));
        }
        return at;
    }

    /// Units below 0x800, of which `wide` are not ASCII.
    template <bool Room>
    static std::size_t writeShort(const UTF16Block& block, std::uint32_t wide, char* out) {
        const __m512i second = _mm512_slli_epi16(block.units, 8);
        // (second & 3F00) | units >> 6: the lead comes first in memory.
        const __m512i both =
            _mm512_ternarylogic_epi64(second, _mm512_set1_epi16(0x3F00), _mm512_srli_epi16(block.units, 6), 0xEA);
        const __m512i bytes = _mm512_mask_mov_epi16(second, wide, _mm512_or_si512(both, _mm512_set1_epi16(-0x7F40)));
        return storeBytes<Room>(out, bytes,
                                _pdep_u64(block.there, 0xAAAAAAAAAAAAAAAAU) | _pdep_u64(wide, 0x5555555555555555U));
    }

    /// Each lane becomes up to three bytes at its end. A high surrogate gives the first two bytes of its character, a
    /// low one the last two.
    template <bool Room>
    static std::size_t writeLanes(const UTF16Lanes& lanes, char* out) {
        const __mmask16 ascii = _mm512_cmplt_epu32_mask(lanes.units, _mm512_set1_epi32(0x80));
        const __mmask16 two = _mm512_cmplt_epu32_mask(lanes.units, _mm512_set1_epi32(0x800));
        __m512i headers = _mm512_mask_mov_epi32(header(0x8080E000), two, header(0x80C00000));
        __m512i values = lanes.units;
        if ((lanes.highs | lanes.lows) != 0) {
            const __m512i bits = _mm512_and_si512(lanes.units, _mm512_set1_epi32(0x3FF));
            // Bits 12 to 20 of the character; 0x40 are the 0x10000 that surrogates leave out.
            const __m512i front = _mm512_srli_epi32(_mm512_add_epi32(bits, _mm512_set1_epi32(0x40)), 2);
            const __m512i above = _mm512_and_si512(_mm512_slli_epi32(lanes.before, 10), _mm512_set1_epi32(0xC00));
            values = _mm512_mask_mov_epi32(values, lanes.highs, front);
            values = _mm512_mask_or_epi32(values, lanes.lows, bits, above);
            headers = _mm512_mask_mov_epi32(headers, lanes.highs, header(0x80F00000));
            headers = _mm512_mask_mov_epi32(headers, lanes.lows, header(0x80800000));
        }
        // Byte i of a lane gets the value from bit 12 (i = 1), 6 (2) or 0 (3) on.
        const __m512i fields = _mm512_multishift_epi64_epi8(_mm512_set1_epi64(0x20262C0000060C00), values);
        const __m512i wide = _mm512_ternarylogic_epi64(fields, _mm512_set1_epi32(0x3F3F0F00), headers, 0xEA);
        const __m512i bytes = _mm512_mask_slli_epi32(wide, ascii, lanes.units, 24);
        std::uint64_t keep = _mm512_movepi8_mask(bytes) | 0x8888888888888888U;
        if constexpr (!Room) {
            keep &= _pdep_u64(lanes.there, 0x1111111111111111U) * 0xF;
        }
        return storeBytes<Room>(out, bytes, keep);
    }

    static __m512i header(std::uint32_t bits) { return _mm512_set1_epi32(static_cast<int>(bits)); }
};

} // namespace
} // namespace qk::unicode
