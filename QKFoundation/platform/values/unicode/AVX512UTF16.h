// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Scalar.h"

#include <immintrin.h>

/// From UTF-16 for processors with AVX-512 VBMI2: 32 units at a time, and a surrogate pair that is cut between two
/// blocks carried over.
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

inline bool hasSurrogates(__m512i units) {
    const __m512i prefix = _mm512_and_si512(units, _mm512_set1_epi16(-0x0800));
    return _mm512_cmpeq_epi16_mask(prefix, _mm512_set1_epi16(-0x2800)) != 0;
}
inline __m256i loadHalf(const char16_t* in) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
}

/// Nothing but pairs, as in text of pictographs.
inline bool isPairs(const UTF16Block& block) {
    return block.highs == 0x55555555U;
}
/// Their characters.
inline __m512i joinPairs(__m512i units) {
    const __m512i bits = _mm512_and_si512(units, _mm512_set1_epi16(0x3FF));
    return _mm512_add_epi32(_mm512_madd_epi16(bits, _mm512_set1_epi32(0x10400)), _mm512_set1_epi32(0x10000));
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

/// The writers take a block, or half a block, of input at `in`, store its form at `out` and return how much they wrote.
/// With `Room` the block is whole and a full register may be stored.
struct UTF32Writer {
    using Out = char32_t;
    static constexpr std::size_t kUnitsForRoom = 32;
    static constexpr std::size_t kPerHighSurrogate = 0;
    static constexpr bool kCopiesPlain = true;

    /// Copies units that are no surrogates, 32 at a time. Returns how many, all of which there are.
    static std::size_t copyPlain(const char16_t* in, std::size_t length, char32_t* out) {
        // From the first line of the cache on: a store that crosses two takes twice as long.
        const std::size_t start = (64 - reinterpret_cast<std::uintptr_t>(out) % 64) % 64 / sizeof(char32_t);
        if (length < 16 + start || hasSurrogates(_mm512_zextsi256_si512(loadHalf(in)))) {
            return 0;
        }
        _mm512_storeu_si512(out, _mm512_cvtepu16_epi32(loadHalf(in)));
        std::size_t at = start;
        for (; length - at >= 32; at += 32) {
            if (hasSurrogates(_mm512_loadu_si512(in + at))) {
                break;
            }
            _mm512_store_si512(out + at, _mm512_cvtepu16_epi32(loadHalf(in + at)));
            _mm512_store_si512(out + at + 16, _mm512_cvtepu16_epi32(loadHalf(in + at + 16)));
        }
        return at;
    }

    template <bool Room>
    static std::size_t writeBlock(const UTF16Block& block, const char16_t* in, char32_t* out) {
        if (Room && isPairs(block)) {
            _mm512_storeu_si512(out, joinPairs(block.units));
            return 16;
        }
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
    static constexpr bool kCopiesPlain = false;

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
            if constexpr (Writer::kCopiesPlain) {
                // Units that take one place each, if no pair is cut: more of them may follow.
                if (at_.written - before == 32 && cut_ == 0) {
                    const std::size_t copied = Writer::copyPlain(in_ + at_.read, length - at_.read, out_ + at_.written);
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
