// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Scalar.h"
#include "QKFoundation/platform/values/unicode/VectorRegisters.h"

/// From UTF-16, and from UTF-32 to it, with registers of 16 bytes: eight units at a time. A table packs what counts.
namespace qk::unicode {
namespace {

/// Packs the bytes that count of lanes of 16 bits (`Lane` 2) or 32 (`Lane` 4): the last ones of each lane, as many as
/// `Length(mask, lane)` says.
template <std::size_t Lane, std::size_t Masks, typename Length>
constexpr std::array<Shuffle, Masks> makePackBytes(Length length) {
    std::array<Shuffle, Masks> table{};
    for (unsigned mask = 0; mask < Masks; ++mask) {
        table[mask].fill(0x80); // zeros behind what counts
        std::size_t to = 0;
        for (unsigned lane = 0; lane < 16 / Lane; ++lane) {
            for (std::size_t byte = Lane - length(mask, lane); byte < Lane; ++byte) {
                table[mask][to++] = static_cast<std::uint8_t>(Lane * lane + byte);
            }
        }
    }
    return table;
}

/// The lanes of the mask whole.
constexpr auto kPackLanes = makePackBytes<4, 16>(
    [](unsigned mask, unsigned lane) -> std::size_t { return std::size_t{mask >> lane & 1U} * 4; });

/// A lane of 32 bits holds one unit in its low half or two; the mask has the lanes with two.
constexpr std::array<Shuffle, 16> makePackPairs() {
    std::array<Shuffle, 16> table{};
    for (unsigned mask = 0; mask < 16; ++mask) {
        std::size_t to = 0;
        for (unsigned lane = 0; lane < 4; ++lane) {
            for (unsigned byte = 0; byte < ((mask >> lane & 1U) != 0 ? 4U : 2U); ++byte) {
                table[mask][to++] = static_cast<std::uint8_t>(4 * lane + byte);
            }
        }
    }
    return table;
}
constexpr auto kPackPairs = makePackPairs();

/// One bit for each of eight lanes of 16 bits, which are 0 or all ones.
inline unsigned bitsOfWords(__m128i lanes) {
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(lanes, _mm_setzero_si128())));
}
inline unsigned bitsOfLanes(__m128i lanes) {
    return static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(lanes)));
}
inline std::size_t countBits(unsigned mask) {
    return static_cast<std::size_t>(_mm_popcnt_u32(mask));
}
inline __m128i wordsEqual(__m128i units, int mask, int value) {
    return _mm_cmpeq_epi16(_mm_and_si128(units, wordsOf(mask)), wordsOf(value));
}

/// Eight units, and all ones in the lanes of surrogates.
struct UTF16Block {
    __m128i units;
    __m128i highs;
    __m128i lows;
    bool isNarrow; // all below 0x800
    bool hasSurrogates;
    bool isPairs;      // there is nothing else
    std::size_t count; // 7 if the last unit is a high surrogate: the next block begins with it
};

/// Whether there is nothing but pairs of surrogates, and none is cut.
inline bool arePairs(__m128i units) {
    return isZero(_mm_xor_si128(_mm_and_si128(units, wordsOf(-0x400)), lanesOf(0xDC00D800)));
}

/// False for a lone surrogate.
inline bool makeBlock(__m128i units, UTF16Block& block) {
    block.units = units;
    block.isPairs = false;
    block.count = 8;
    block.hasSurrogates = false;
    const __m128i top = _mm_and_si128(units, wordsOf(0xF800));
    block.isNarrow = isZero(top);
    if (block.isNarrow) {
        return true;
    }
    const __m128i surrogates = _mm_cmpeq_epi16(top, wordsOf(0xD800));
    block.hasSurrogates = !isZero(surrogates);
    if (!block.hasSurrogates) {
        return true;
    }
    block.lows = wordsEqual(units, 0xFC00, 0xDC00);
    block.highs = _mm_andnot_si128(block.lows, surrogates);
    block.isPairs = arePairs(units);
    if (block.isPairs) {
        return true;
    }
    const unsigned highs = bitsOfWords(block.highs);
    block.count = 8 - (highs >> 7U);
    return bitsOfWords(block.lows) == (highs << 1U & 0xFF);
}

/// The four characters of a block of pairs.
inline __m128i joinPairs(__m128i units) {
    // The high surrogates leave 0x10000 out; they are the lower halves of the lanes.
    const __m128i bits = _mm_add_epi16(_mm_and_si128(units, wordsOf(0x3FF)), lanesOf(0x40));
    return _mm_madd_epi16(bits, lanesOf(0x00010400));
}

template <bool Upper>
inline __m128i widen(__m128i words) {
    return _mm_cvtepu16_epi32(Upper ? upperHalf(words) : words);
}

/// The writers store the form of a block, or of half of it, and return how much that is.
struct UTF32Writer {
    using Out = char32_t;
    static constexpr std::size_t kUnitsForRoom = 8;
    static constexpr std::size_t kPerHighSurrogate = 0;
    static constexpr bool kCopiesPlain = true;

    /// Copies units that are no surrogates, 16 at a time. Returns how many, all of which there are.
    [[gnu::noinline]] static std::size_t copyPlain(const char16_t* in, std::size_t length, char32_t* out) {
        std::size_t at = 0;
        for (; length - at >= 16; at += 16) {
            const __m128i first = load(in + at);
            const __m128i second = load(in + at + 8);
            const __m128i surrogates =
                _mm_or_si128(wordsEqual(first, 0xF800, 0xD800), wordsEqual(second, 0xF800, 0xD800));
            if (_mm_testz_si128(surrogates, surrogates) == 0) {
                break;
            }
            store(out + at, widen<false>(first));
            store(out + at + 4, widen<true>(first));
            store(out + at + 8, widen<false>(second));
            store(out + at + 12, widen<true>(second));
        }
        return at;
    }

    static std::size_t write(const UTF16Block& block, char32_t* out) {
        if (!block.hasSurrogates) {
            store(out, widen<false>(block.units));
            store(out + 4, widen<true>(block.units));
            return 8;
        }
        if (block.isPairs) {
            store(out, joinPairs(block.units));
            return 4;
        }
        const std::size_t first = writeLanes<false>(block, out);
        return first + writeLanes<true>(block, out + first);
    }

    /// A pair is written where its low surrogate stands.
    template <bool Upper>
    static std::size_t writeLanes(const UTF16Block& block, char32_t* out) {
        const __m128i units = widen<Upper>(block.units);
        const __m128i highs = _mm_cvtepi16_epi32(Upper ? upperHalf(block.highs) : block.highs);
        const __m128i lows = _mm_cvtepi16_epi32(Upper ? upperHalf(block.lows) : block.lows);
        const __m128i joined = _mm_sub_epi32(
            _mm_add_epi32(_mm_slli_epi32(widen<Upper>(_mm_slli_si128(block.units, 2)), 10), units), lanesOf(0x35FDC00));
        const unsigned keep = ~bitsOfLanes(highs) & 0xF;
        store(out, shuffle(_mm_blendv_epi8(units, joined, lows), kPackLanes[keep]));
        return countBits(keep);
    }
};

/// Counts what UTF-8 or UTF-32 take.
template <bool UTF8>
struct UTF16Counter {
    using Out = char;
    static constexpr std::size_t kUnitsForRoom = 8;
    static constexpr std::size_t kPerHighSurrogate = UTF8 ? 2 : 0;
    static constexpr bool kCopiesPlain = false;

    static std::size_t write(const UTF16Block& block, const char* /*out*/) {
        if constexpr (!UTF8) {
            return 8 - (block.hasSurrogates ? countBits(bitsOfWords(block.highs)) : 0);
        }
        const __m128i one = _mm_cmpeq_epi16(_mm_and_si128(block.units, wordsOf(0xFF80)), _mm_setzero_si128());
        __m128i two = wordsEqual(block.units, 0xF800, 0);
        if (block.hasSurrogates) {
            // Each half of a pair stands for two bytes of four.
            two = _mm_or_si128(two, _mm_or_si128(block.highs, block.lows));
        }
        return 24 - countBits(static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(one, two))));
    }
};

/// Converts the blocks that begin in front of `end`. False for a lone surrogate.
template <typename Writer>
inline bool convertBlocks(const char16_t* in, std::size_t end, typename Writer::Out* out, Progress& progress) {
    Progress at = progress; // a copy stays in registers
    bool isGood = true;
    while (at.read < end) {
        UTF16Block block{};
        isGood = makeBlock(load(in + at.read), block);
        if (!isGood) {
            break;
        }
        at.written += Writer::write(block, out == nullptr ? nullptr : out + at.written);
        if (block.count != 8) [[unlikely]] {
            at.written -= Writer::kPerHighSurrogate;
        }
        at.read += block.count;
    }
    progress = at;
    return isGood;
}

template <typename Writer>
inline Progress readUTF16(const char16_t* in, std::size_t length, typename Writer::Out* out) {
    // Plain text is looked for only so often: among other characters that is in vain.
    constexpr std::size_t kOften = 256;
    Progress at{0, 0};
    while (length - at.read >= Writer::kUnitsForRoom) {
        if constexpr (Writer::kCopiesPlain) {
            // Not for short texts: the call itself would be felt.
            if (length - at.read >= 32) {
                const std::size_t copied = Writer::copyPlain(in + at.read, length - at.read, out + at.written);
                at = {at.read + copied, at.written + copied};
            }
        }
        const std::size_t last = length - Writer::kUnitsForRoom;
        const std::size_t end = last < at.read + kOften ? last + 1 : at.read + kOften;
        if (!convertBlocks<Writer>(in, end, out, at)) {
            break;
        }
    }
    return at;
}

/// Four values. Returns the units, 0 for a value that is none of Unicode's.
template <bool Write>
inline std::size_t convertFour(const char32_t* in, char16_t* out) {
    const __m128i values = load(in);
    const __m128i plane = _mm_srli_epi32(values, 16);
    const __m128i surrogates = _mm_cmpeq_epi32(_mm_srli_epi32(values, 11), lanesOf(0x1B));
    if (_mm_movemask_epi8(_mm_or_si128(_mm_cmpgt_epi32(plane, lanesOf(0x10)), surrogates)) != 0) {
        return 0;
    }
    const unsigned pairs = bitsOfLanes(_mm_cmpgt_epi32(plane, _mm_setzero_si128()));
    if constexpr (Write) {
        const __m128i high = _mm_add_epi32(_mm_srli_epi32(values, 10), lanesOf(0xD7C0));
        const __m128i low =
            _mm_or_si128(_mm_and_si128(_mm_slli_epi32(values, 16), lanesOf(0x03FF0000)), lanesOf(0xDC000000));
        const __m128i isPair = _mm_cmpgt_epi32(plane, _mm_setzero_si128());
        store(out, shuffle(_mm_blendv_epi8(values, _mm_or_si128(high, low), isPair), kPackPairs[pairs]));
    }
    return 4 + countBits(pairs);
}

template <bool Write>
inline Progress readUTF32(const char32_t* in, std::size_t length, char16_t* out) {
    Progress at{0, 0};
    while (length - at.read >= 4) {
        const std::size_t units = convertFour<Write>(in + at.read, Write ? out + at.written : nullptr);
        if (units == 0) {
            break;
        }
        at = {at.read + 4, at.written + units};
    }
    return scalarUTF32ToUTF16<Write>(in, length, out, at);
}

} // namespace
} // namespace qk::unicode
