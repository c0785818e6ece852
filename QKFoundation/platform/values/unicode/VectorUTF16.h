// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/VectorUTF8.h"

/// From UTF-16, and from UTF-32 to it, with registers of 16 bytes: eight units at a time. A table packs what counts.
namespace qk::unicode {
namespace {

/// Packs the bytes that count of lanes of 16 bits (`Lane` 2) or 32 (`Lane` 4): the last ones of each lane, as many as
/// `Length(mask, lane)` says.
template <std::size_t Lane, std::size_t Masks, typename Length>
constexpr std::array<Shuffle, Masks> makePackBytes(Length length) {
    std::array<Shuffle, Masks> table{};
    for (unsigned mask = 0; mask < Masks; ++mask) {
        std::size_t to = 0;
        for (unsigned lane = 0; lane < 16 / Lane; ++lane) {
            for (std::size_t byte = Lane - length(mask, lane); byte < Lane; ++byte) {
                table[mask][to++] = static_cast<std::uint8_t>(Lane * lane + byte);
            }
        }
    }
    return table;
}

/// Two bytes for the lanes of the mask, one for the others.
constexpr auto kPackTwos =
    makePackBytes<2, 256>([](unsigned mask, unsigned lane) -> std::size_t { return 1 + (mask >> lane & 1U); });
/// One byte for a lane in the low half of the mask, two for one in the upper half alone, three for the others.
constexpr auto kPackThrees = makePackBytes<4, 256>(
    [](unsigned mask, unsigned lane) -> std::size_t { return 3 - (mask >> lane & 1U) - (mask >> (lane + 4) & 1U); });
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
    __m128i before; // the unit before each; only where a low surrogate follows
    __m128i highs;
    __m128i lows;
    bool hasSurrogates;
    bool isCut; // the last unit is a high surrogate
};

/// False for a lone surrogate. `cut` says that the block before ended with a high one.
inline bool loadBlock(const char16_t* in, bool cut, UTF16Block& block) {
    block.units = load(in);
    const __m128i surrogates = wordsEqual(block.units, 0xF800, 0xD800);
    block.hasSurrogates = _mm_testz_si128(surrogates, surrogates) == 0;
    block.isCut = false;
    if (!block.hasSurrogates) {
        return !cut;
    }
    block.lows = wordsEqual(block.units, 0xFC00, 0xDC00);
    block.highs = _mm_andnot_si128(block.lows, surrogates);
    const unsigned highs = bitsOfWords(block.highs);
    block.isCut = (highs >> 7U) != 0;
    block.before = _mm_slli_si128(block.units, 2);
    if (cut) {
        block.before = _mm_insert_epi16(block.before, in[-1], 0);
    }
    return bitsOfWords(block.lows) == ((highs << 1U & 0xFF) | static_cast<unsigned>(cut));
}

template <bool Upper>
inline __m128i widen(__m128i words) {
    return _mm_cvtepu16_epi32(Upper ? upperHalf(words) : words);
}

/// The writers store the form of a block, or of half of it, and return how much that is.
struct UTF8Writer {
    using Out = char;
    /// A register of 16 bytes is stored for four units, and they are sure of room for twelve only.
    static constexpr std::size_t kUnitsForRoom = 10;
    static constexpr std::size_t kPerHighSurrogate = 2;
    static constexpr bool kCopiesPlain = true;

    /// Copies ASCII, 32 units at a time. Returns how many, all of which there are.
    [[gnu::noinline]] static std::size_t copyPlain(const char16_t* in, std::size_t length, char* out) {
        std::size_t at = 0;
        for (; length - at >= 32; at += 32) {
            const __m128i first = load(in + at);
            const __m128i second = load(in + at + 8);
            const __m128i third = load(in + at + 16);
            const __m128i fourth = load(in + at + 24);
            const __m128i seen = _mm_or_si128(_mm_or_si128(first, second), _mm_or_si128(third, fourth));
            if (_mm_testz_si128(seen, wordsOf(0xFF80)) == 0) {
                break;
            }
            store(out + at, _mm_packus_epi16(first, second));
            store(out + at + 16, _mm_packus_epi16(third, fourth));
        }
        return at;
    }

    static std::size_t write(const UTF16Block& block, char* out) {
        if (_mm_testz_si128(block.units, wordsOf(0xF800)) != 0) {
            return writeShort(block.units, out);
        }
        const std::size_t first = writeLanes<false>(block, out);
        return first + writeLanes<true>(block, out + first);
    }

    static std::size_t writeShort(__m128i units, char* out) {
        const __m128i second = _mm_slli_epi16(units, 8);
        const __m128i both = _mm_or_si128(
            _mm_or_si128(_mm_and_si128(second, wordsOf(0x3F00)), _mm_srli_epi16(units, 6)), wordsOf(0x80C0));
        const __m128i wide = _mm_cmpgt_epi16(units, wordsOf(0x7F));
        const unsigned mask = bitsOfWords(wide);
        store(out, shuffle(_mm_blendv_epi8(second, both, wide), kPackTwos[mask]));
        return 8 + countBits(mask);
    }

    /// Each lane becomes up to three bytes at its end. A high surrogate gives the first two bytes of its character, a
    /// low one the last two.
    template <bool Upper>
    static std::size_t writeLanes(const UTF16Block& block, char* out) {
        const __m128i units = widen<Upper>(block.units);
        const __m128i ascii = _mm_cmplt_epi32(units, lanesOf(0x80));
        __m128i two = _mm_cmplt_epi32(units, lanesOf(0x800));
        __m128i headers = _mm_blendv_epi8(lanesOf(0x8080E000), lanesOf(0x80C00000), two);
        __m128i values = units;
        if (block.hasSurrogates) {
            const __m128i highs = _mm_cvtepi16_epi32(Upper ? upperHalf(block.highs) : block.highs);
            const __m128i lows = _mm_cvtepi16_epi32(Upper ? upperHalf(block.lows) : block.lows);
            const __m128i bits = _mm_and_si128(units, lanesOf(0x3FF));
            // Bits 12 to 20 of the character; 0x40 are the 0x10000 that surrogates leave out.
            const __m128i front = _mm_srli_epi32(_mm_add_epi32(bits, lanesOf(0x40)), 2);
            const __m128i above = _mm_and_si128(_mm_slli_epi32(widen<Upper>(block.before), 10), lanesOf(0xC00));
            values = _mm_blendv_epi8(_mm_blendv_epi8(values, front, highs), _mm_or_si128(bits, above), lows);
            headers = _mm_blendv_epi8(_mm_blendv_epi8(headers, lanesOf(0x80F00000), highs), lanesOf(0x80800000), lows);
            two = _mm_or_si128(two, _mm_or_si128(highs, lows));
        }
        const __m128i first = _mm_and_si128(_mm_srli_epi32(values, 4), lanesOf(0x00000F00));
        const __m128i middle = _mm_and_si128(_mm_slli_epi32(values, 10), lanesOf(0x003F0000));
        const __m128i last = _mm_and_si128(_mm_slli_epi32(values, 24), lanesOf(0x3F000000));
        const __m128i wide = _mm_or_si128(_mm_or_si128(first, middle), _mm_or_si128(last, headers));
        const __m128i bytes = _mm_blendv_epi8(wide, _mm_slli_epi32(units, 24), ascii);
        const unsigned mask = bitsOfLanes(ascii) | bitsOfLanes(two) << 4U;
        store(out, shuffle(bytes, kPackThrees[mask]));
        return 12 - countBits(mask);
    }
};

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
        const std::size_t first = writeLanes<false>(block, out);
        return first + writeLanes<true>(block, out + first);
    }

    /// A pair is written where its low surrogate stands.
    template <bool Upper>
    static std::size_t writeLanes(const UTF16Block& block, char32_t* out) {
        const __m128i units = widen<Upper>(block.units);
        const __m128i highs = _mm_cvtepi16_epi32(Upper ? upperHalf(block.highs) : block.highs);
        const __m128i lows = _mm_cvtepi16_epi32(Upper ? upperHalf(block.lows) : block.lows);
        const __m128i joined =
            _mm_sub_epi32(_mm_add_epi32(_mm_slli_epi32(widen<Upper>(block.before), 10), units), lanesOf(0x35FDC00));
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

/// How far a conversion came, and whether the last unit is a high surrogate.
struct UTF16Progress {
    Progress at{0, 0};
    bool isCut = false;
};

/// Converts the blocks that begin in front of `end`. False for a lone surrogate.
template <typename Writer>
inline bool convertBlocks(const char16_t* in, std::size_t end, typename Writer::Out* out, UTF16Progress& progress) {
    UTF16Progress next = progress; // a copy stays in registers
    UTF16Block block{};
    bool isGood = true;
    while (next.at.read < end) {
        isGood = loadBlock(in + next.at.read, next.isCut, block);
        if (!isGood) {
            break;
        }
        next.at.written += Writer::write(block, out == nullptr ? nullptr : out + next.at.written);
        next.at.read += 8;
        next.isCut = block.isCut;
    }
    progress = next;
    return isGood;
}

template <typename Writer>
inline Progress readUTF16(const char16_t* in, std::size_t length, typename Writer::Out* out) {
    // Plain text is looked for only so often: among other characters that is in vain.
    constexpr std::size_t kOften = 256;
    UTF16Progress progress;
    Progress& at = progress.at;
    while (length - at.read >= Writer::kUnitsForRoom) {
        if constexpr (Writer::kCopiesPlain) {
            // Not for short texts: the call itself would be felt.
            if (!progress.isCut && length - at.read >= 32) {
                const std::size_t copied = Writer::copyPlain(in + at.read, length - at.read, out + at.written);
                at = {at.read + copied, at.written + copied};
            }
        }
        const std::size_t last = length - Writer::kUnitsForRoom;
        const std::size_t end = last < at.read + kOften ? last + 1 : at.read + kOften;
        if (!convertBlocks<Writer>(in, end, out, progress)) {
            break;
        }
    }
    return progress.isCut ? Progress{at.read - 1, at.written - Writer::kPerHighSurrogate} : at;
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
