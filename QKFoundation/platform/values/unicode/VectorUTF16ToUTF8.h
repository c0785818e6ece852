// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/VectorUTF16.h"

#include <algorithm>

/// UTF-16 to UTF-8 with registers of 16 bytes: eight units at a time.
namespace qk::unicode {
namespace {

/// Two bytes for the lanes of the mask, one for the others.
constexpr auto kPackTwos =
    makePackBytes<2, 256>([](unsigned mask, unsigned lane) -> std::size_t { return 1 + (mask >> lane & 1U); });
/// One byte for a lane in the low half of the mask, two for one in the upper half alone, three for the others.
constexpr auto kPackThrees = makePackBytes<4, 256>(
    [](unsigned mask, unsigned lane) -> std::size_t { return 3 - (mask >> lane & 1U) - (mask >> (lane + 4) & 1U); });
/// Writes blocks as UTF-8, a fixed form of them in one go.
/// Bytes of a block in two registers, zeros behind those that count.
struct UTF8Bytes {
    __m128i first;
    std::size_t firstCount;
    __m128i second;
    std::size_t secondCount;
};

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
        const UTF8Bytes bytes = encode(block);
        store(out, bytes.first);
        if (bytes.secondCount != 0) {
            store(out + bytes.firstCount, bytes.second);
        }
        return bytes.firstCount + bytes.secondCount;
    }

    static UTF8Bytes encode(const UTF16Block& block) {
        if (block.isNarrow) {
            return encodeShort(block.units);
        }
        if (block.isPairs) {
            return encodePairs(block.units);
        }
        if (!block.hasSurrogates && isZero(wordsEqual(block.units, 0xF800, 0))) {
            return encodeThrees(block.units);
        }
        UTF8Bytes bytes;
        bytes.first = encodeLanes<false>(block, bytes.firstCount);
        bytes.second = encodeLanes<true>(block, bytes.secondCount);
        return bytes;
    }

    /// Each unit has one byte or two.
    static UTF8Bytes encodeShort(__m128i units) {
        const __m128i second = _mm_slli_epi16(units, 8);
        const __m128i both = _mm_or_si128(
            _mm_or_si128(_mm_and_si128(second, wordsOf(0x3F00)), _mm_srli_epi16(units, 6)), wordsOf(0x80C0));
        const __m128i wide = _mm_cmpgt_epi16(units, wordsOf(0x7F));
        const unsigned mask = bitsOfWords(wide);
        return {shuffle(_mm_blendv_epi8(second, both, wide), kPackTwos[mask]), 8 + countBits(mask), _mm_setzero_si128(),
                0};
    }

    /// Each unit has three bytes.
    static UTF8Bytes encodeThrees(__m128i units) {
        const __m128i first = _mm_srli_epi16(units, 12);
        const __m128i second = _mm_and_si128(_mm_slli_epi16(units, 2), wordsOf(0x3F00));
        const __m128i front = _mm_or_si128(_mm_or_si128(first, second), wordsOf(0x80E0));
        const __m128i last = _mm_or_si128(_mm_and_si128(units, wordsOf(0x3F)), wordsOf(0x80));
        const __m128i order = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
        return {_mm_shuffle_epi8(_mm_unpacklo_epi16(front, last), order), 12,
                _mm_shuffle_epi8(_mm_unpackhi_epi16(front, last), order), 12};
    }

    /// Each two units have four bytes.
    static UTF8Bytes encodePairs(__m128i units) {
        const __m128i values = joinPairs(units);
        const __m128i first = _mm_srli_epi32(values, 18);
        const __m128i second = _mm_and_si128(_mm_srli_epi32(values, 4), lanesOf(0x00003F00));
        const __m128i third = _mm_and_si128(_mm_slli_epi32(values, 10), lanesOf(0x003F0000));
        const __m128i fourth = _mm_and_si128(_mm_slli_epi32(values, 24), lanesOf(0x3F000000));
        const __m128i bits = _mm_or_si128(_mm_or_si128(first, second), _mm_or_si128(third, fourth));
        return {_mm_or_si128(bits, lanesOf(0x808080F0)), 16, _mm_setzero_si128(), 0};
    }

    /// Each lane becomes up to three bytes at its end. A high surrogate gives the first two bytes of its character, a
    /// low one the last two.
    template <bool Upper>
    static __m128i encodeLanes(const UTF16Block& block, std::size_t& count) {
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
            const __m128i above =
                _mm_and_si128(_mm_slli_epi32(widen<Upper>(_mm_slli_si128(block.units, 2)), 10), lanesOf(0xC00));
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
        count = 12 - countBits(mask);
        return shuffle(bytes, kPackThrees[mask]);
    }
};

/// The bytes of a register in their order between zeros: read at 16 + n it takes n bytes off the front, at 16 - n it
/// puts n zeros there.
constexpr std::array<std::uint8_t, 48> makeSlide() {
    std::array<std::uint8_t, 48> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<std::uint8_t>(i - 16 < 16 ? i - 16 : 0x80);
    }
    return table;
}
constexpr auto kSlide = makeSlide();

inline __m128i dropFront(__m128i value, std::size_t count) {
    return _mm_shuffle_epi8(value, load(kSlide.data() + 16 + count));
}
inline __m128i moveBack(__m128i value, std::size_t count) {
    return _mm_shuffle_epi8(value, load(kSlide.data() + 16 - count));
}

/// Stores the first `count`, at least eight, of the bytes, and touches nothing behind them. In registers: what is
/// stored in pieces and loaded across them has to wait for memory.
inline void storeExactly(char* out, const UTF8Bytes& bytes, std::size_t count) {
    const __m128i low = _mm_or_si128(bytes.first, moveBack(bytes.second, bytes.firstCount));
    if (count < 16) {
        storeHalf(out, low);
        storeHalf(out + (count - 8), dropFront(low, count - 8));
        return;
    }
    const __m128i high = dropFront(bytes.second, 16 - bytes.firstCount);
    store(out, low);
    storeHalf(out + (count - 8), dropFront(_mm_alignr_epi8(high, low, 8), count - 16));
}

/// The last `count` units, at most eight, of the `length`, at least four, at `in`; zeros behind them.
inline __m128i loadLast(const char16_t* in, std::size_t length, std::size_t count) {
    if (length >= 8) {
        return dropFront(load(in + (length - 8)), 2 * (8 - count));
    }
    const __m128i unused = _mm_cvtsi32_si128(static_cast<int>(16 * (8 - length)));
    return _mm_unpacklo_epi64(loadHalf(in), _mm_srl_epi64(loadHalf(in + (length - 4)), unused));
}

/// Short texts, and from `at` on what has no room for the stores of whole blocks.
inline Progress writeLastUTF8(const char16_t* in, std::size_t length, char* out, Progress at) {
    constexpr std::size_t kRoom = 32;
    while (length >= 4 && at.read < length) {
        const std::size_t left = length - at.read;
        UTF16Block block{};
        if (!makeBlock(left < 8 ? loadLast(in, length, left) : load(in + at.read), block)) {
            break;
        }
        const std::size_t count = std::min(left, block.count);
        // The zeros that fill the block up have a byte each, the high surrogate at its end two.
        const std::size_t surplus = left < 8 ? 8 - left : 2 * (8 - count);
        const UTF8Bytes bytes = UTF8Writer::encode(block);
        const std::size_t written = bytes.firstCount + bytes.secondCount - surplus;
        if (3 * length - at.written >= kRoom) {
            store(out + at.written, bytes.first);
            store(out + at.written + bytes.firstCount, bytes.second);
        } else if (written >= 8) {
            storeExactly(out + at.written, bytes, written);
        } else {
            break;
        }
        at = {at.read + count, at.written + written};
    }
    return scalarUTF16ToUTF8<true>(in, length, out, at);
}

} // namespace
} // namespace qk::unicode
