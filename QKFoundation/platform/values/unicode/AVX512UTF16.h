// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Scalar.h"

#include <immintrin.h>

/// From UTF-16 for processors with AVX-512 VBMI2: 32 units at a time, and a surrogate pair that
/// is cut between two blocks carried over. UTF-8 comes out of lanes of four bytes, compressed to the bytes that count.
namespace qk::unicode {
namespace {

constexpr std::uint32_t unitsBelow(std::size_t count) {
    return count < 32 ? (std::uint32_t{1} << count) - 1 : ~std::uint32_t{0};
}

inline std::size_t countOf(std::uint64_t mask) {
    return static_cast<std::size_t>(_mm_popcnt_u64(mask));
}

/// Up to 32 units and where their surrogates are; bit i is unit i.
struct UTF16Block {
    __m512i units;
    std::uint32_t there;
    std::uint32_t highs;
    std::uint32_t lows;
};

inline UTF16Block loadBlock(const char16_t* in, std::uint32_t there) {
    UTF16Block block{_mm512_maskz_loadu_epi16(there, in), there, 0, 0};
    const __m512i prefix = _mm512_and_si512(block.units, _mm512_set1_epi16(-0x0800));
    const std::uint32_t surrogates = _mm512_cmpeq_epi16_mask(prefix, _mm512_set1_epi16(-0x2800));
    if (surrogates != 0) {
        block.lows = _mm512_mask_test_epi16_mask(surrogates, block.units, _mm512_set1_epi16(0x0400));
        block.highs = surrogates & ~block.lows;
    }
    return block;
}

/// Half of a block, in lanes of 32 bits.
struct UTF16Lanes {
    __m512i units;
    __m512i before; // the unit before, for low surrogates only
    __mmask16 there;
    __mmask16 highs;
    __mmask16 lows;
};

/// `in` points at the half's own units.
inline UTF16Lanes lanesOf(const UTF16Block& block, const char16_t* in, unsigned half) {
    const unsigned shift = 16 * half;
    UTF16Lanes lanes{_mm512_cvtepu16_epi32(half == 0 ? _mm512_castsi512_si256(block.units)
                                                     : _mm512_extracti64x4_epi64(block.units, 1)),
                     _mm512_setzero_si512(), static_cast<__mmask16>(block.there >> shift),
                     static_cast<__mmask16>(block.highs >> shift), static_cast<__mmask16>(block.lows >> shift)};
    if (lanes.lows != 0) {
        lanes.before = _mm512_cvtepu16_epi32(_mm256_maskz_loadu_epi16(lanes.lows, in - 1));
    }
    return lanes;
}

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

/// The writers take a block, or half a block, of input at `in`, store its form at `out` and return how much they wrote.
/// With `Room` the block is whole and a full register may be stored.
struct UTF8Writer {
    using Out = char;
    /// A register of 64 bytes is stored for 16 units, and they are sure of room for 48 bytes only.
    static constexpr std::size_t kUnitsForRoom = 38;
    /// What the first half of a pair writes.
    static constexpr std::size_t kPerHighSurrogate = 2;
    static constexpr bool kCopiesASCII = true;

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
        const std::size_t first = writeLanes<Room>(lanesOf(block, in, 0), out);
        if (!Room && block.there >> 16U == 0) {
            return first;
        }
        return first + writeLanes<Room>(lanesOf(block, in + 16, 1), out + first);
    }

    /// Copies ASCII, 64 units at a time. Returns how many, all of which there are.
    static std::size_t copyASCII(const char16_t* in, std::size_t length, char* out) {
        const __m512i order = _mm512_set_epi64(7, 5, 3, 1, 6, 4, 2, 0);
        std::size_t at = 0;
        for (; length - at >= 64; at += 64) {
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

struct UTF32Writer {
    using Out = char32_t;
    static constexpr std::size_t kUnitsForRoom = 32;
    static constexpr std::size_t kPerHighSurrogate = 0;
    static constexpr bool kCopiesASCII = false;

    template <bool Room>
    static std::size_t writeBlock(const UTF16Block& block, const char16_t* in, char32_t* out) {
        const std::size_t first = writeLanes<Room>(lanesOf(block, in, 0), out);
        if (!Room && block.there >> 16U == 0) {
            return first;
        }
        return first + writeLanes<Room>(lanesOf(block, in + 16, 1), out + first);
    }

    /// A pair is written where its low surrogate stands.
    template <bool Room>
    static std::size_t writeLanes(const UTF16Lanes& lanes, char32_t* out) {
        __m512i values = lanes.units;
        const auto keep = static_cast<__mmask16>(lanes.there & ~lanes.highs);
        if ((lanes.highs | lanes.lows) != 0) {
            const __m512i joined = _mm512_sub_epi32(_mm512_add_epi32(_mm512_slli_epi32(lanes.before, 10), values),
                                                    _mm512_set1_epi32(0x35FDC00));
            values = _mm512_maskz_compress_epi32(keep, _mm512_mask_mov_epi32(values, lanes.lows, joined));
        }
        const std::size_t count = countOf(keep);
        if constexpr (Room) {
            _mm512_storeu_si512(out, values);
        } else {
            _mm512_mask_storeu_epi32(out, static_cast<__mmask16>(unitsBelow(count)), values);
        }
        return count;
    }
};

/// Counts what UTF-8 or UTF-32 take.
template <bool UTF8>
struct UTF16Counter {
    using Out = char;
    static constexpr std::size_t kUnitsForRoom = 32;
    static constexpr std::size_t kPerHighSurrogate = UTF8 ? 2 : 0;
    static constexpr bool kCopiesASCII = false;

    template <bool Room>
    static std::size_t writeBlock(const UTF16Block& block, const char16_t* /*in*/, const char* /*out*/) {
        if constexpr (!UTF8) {
            return countOf(block.there & ~block.highs);
        }
        const std::uint32_t wide = _mm512_cmpge_epu16_mask(block.units, _mm512_set1_epi16(0x80));
        const std::uint32_t three = _mm512_cmpge_epu16_mask(block.units, _mm512_set1_epi16(0x800));
        // Each half of a pair counts for two bytes of four, and stands in both masks.
        return countOf(std::uint64_t{block.there} << 32U | wide) + countOf(three & ~(block.highs | block.lows));
    }
};

template <typename Writer>
class UTF16Reader {
public:
    UTF16Reader(const char16_t* in, typename Writer::Out* out) : in_{in}, out_{out} {}

    Progress convert(std::size_t length) {
        while (length - at_.read >= Writer::kUnitsForRoom) {
            const std::size_t before = at_.written;
            if (!convertBlock<true>(32)) {
                return progress();
            }
            if constexpr (Writer::kCopiesASCII) {
                // Only ASCII takes as many bytes as units, if no pair is cut.
                if (at_.written - before == 32 && cut_ == 0) {
                    const std::size_t copied = Writer::copyASCII(in_ + at_.read, length - at_.read, out_ + at_.written);
                    at_ = {at_.read + copied, at_.written + copied};
                }
            }
        }
        while (at_.read < length) {
            const std::size_t left = length - at_.read;
            if (!convertBlock<false>(left < 32 ? left : 32)) {
                break;
            }
        }
        return progress();
    }

private:
    /// False for a lone surrogate in the block, which changes nothing.
    template <bool Room>
    bool convertBlock(std::size_t count) {
        const char16_t* const in = in_ + at_.read;
        const UTF16Block block = loadBlock(in, Room ? ~std::uint32_t{0} : unitsBelow(count));
        if (block.lows != (block.highs << 1U | cut_)) {
            return false;
        }
        const std::size_t written =
            Writer::template writeBlock<Room>(block, in, out_ == nullptr ? out_ : out_ + at_.written);
        cut_ = block.highs >> (count - 1);
        at_.read += count;
        at_.written += written;
        return true;
    }

    [[nodiscard]] Progress progress() const {
        return {at_.read - cut_, at_.written - cut_ * Writer::kPerHighSurrogate};
    }

    const char16_t* in_;
    typename Writer::Out* out_;
    Progress at_{0, 0};
    std::uint32_t cut_ = 0; // 1 if the last unit was the first half of a pair
};

} // namespace
} // namespace qk::unicode
