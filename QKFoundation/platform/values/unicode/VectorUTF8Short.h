// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/ShortASCII.h"
#include "QKFoundation/platform/values/unicode/VectorUTF8Blocks.h"
#include "QKFoundation/platform/values/unicode/VectorUTF8Runs.h"

#include <algorithm>

/// UTF-8 of 8 to 16 bytes, a name or a key, to UTF-16: in one register, with none of the care for blocks. What is not
/// much longer is taken in such pieces.
namespace qk::unicode {
namespace {

constexpr std::size_t kLeastShortUTF8 = 8;
constexpr std::size_t kMostShortUTF8 = 16;

/// At the end of the register, behind zeros: then the last eight units begin where at most `length` - 8 come before
/// them, and both stores stay within `length` units.
inline Window<Registers16> loadShort(const char* in, std::size_t length) {
    const __m128i unused = _mm_cvtsi32_si128(static_cast<int>(8 * (kMostShortUTF8 - length)));
    const __m128i bytes = _mm_unpacklo_epi64(_mm_sll_epi64(loadHalf(in), unused), loadHalf(in + (length - 8)));
    return {bytes, _mm_slli_si128(bytes, 1), _mm_slli_si128(bytes, 2), _mm_slli_si128(bytes, 3)};
}

/// Four or five characters of three bytes, or two to four of four: the first ones and the last ones, which may overlap.
/// Returns the units; 0 for other text.
inline std::size_t shortRunToUTF16(const char* in, std::size_t length, __m128i bytes, char16_t* out) {
    __m128i wrong;
    __m128i units;
    std::size_t count = 0;
    if (length % 4 == 0 && byteAt(in, 0) >= 0xF0) {
        units = RunOfFour::join(_mm_unpacklo_epi64(loadHalf(in), upperHalf(bytes)), wrong);
        count = length / 2;
    } else if (length % 3 == 0 && length >= 12) {
        int third = 0;
        std::memcpy(&third, in + 8, sizeof third);
        units = RunOfThree::join(_mm_insert_epi32(loadHalf(in), third, 2), bytes, wrong);
        count = length / 3;
    } else {
        return 0;
    }
    if (!isZero(wrong)) {
        return 0;
    }
    storeHalf(out, units);
    storeHalf(out + (count - 4), upperHalf(units));
    return count;
}

/// Returns the units; 0 for malformed text, and then what is in `out` does not count.
[[gnu::always_inline]] inline std::size_t shortUTF8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    const Window<Registers16> text = loadShort(in, length);
    if (byteAt(in, 0) >= 0xE0) {
        if (const std::size_t units = shortRunToUTF16(in, length, text.bytes, out); units != 0) {
            return units;
        }
    }
    const std::uint64_t high = bitsOf(text.bytes);
    const std::uint64_t continuations = bitsOf(_mm_cmplt_epi8(text.bytes, bytesOf(0xC0)));
    const std::uint64_t leads2 = bitsOf(_mm_cmpgt_epi8(text.bytes, bytesOf(0xC1))) & high;
    const std::uint64_t leads3 = bitsOf(_mm_cmpgt_epi8(text.bytes, bytesOf(0xDF))) & high;
    if ((continuations | leads2) != high) {
        return 0;
    }
    // What is cut at the end expects a continuation beyond the register, where none is.
    const std::uint64_t expected = leads2 << 1U | leads3 << 2U;
    const std::uint64_t keep = ~(leads2 | leads3 << 1U) & std::uint64_t{0xFFFF} << (kMostShortUTF8 - length) & 0xFFFF;
    const auto units = static_cast<std::size_t>(_mm_popcnt_u64(keep));
    if (leads3 == 0) {
        if (expected != continuations) {
            return 0;
        }
        writeWindow<false, false>(text, keep, out);
        return units;
    }
    if (!isZero(badSeconds(text.bytes, text.before1))) {
        return 0;
    }
    const std::uint64_t leads4 = bitsOf(_mm_cmpgt_epi8(text.bytes, bytesOf(0xEF))) & high;
    if ((expected | leads4 << 3U) != continuations) {
        return 0;
    }
    if (leads4 == 0) {
        writeWindow<true, false>(text, keep, out);
    } else {
        writeWindow<true, true>(text, keep, out);
    }
    return units;
}

/// The next 8 to 16 bytes, whole characters that leave no fewer behind them, or all; 0 where that cannot be.
inline std::size_t pieceAt(const char* in, std::size_t left) {
    std::size_t size = left;
    if (left > kMostShortUTF8) {
        size = std::min(kMostShortUTF8, left - kLeastShortUTF8);
        while (size >= kLeastShortUTF8 && isContinuation(byteAt(in, size))) {
            --size;
        }
    }
    return size >= kLeastShortUTF8 ? size : 0;
}

/// Takes pieces while there are any, up to one with malformed text. `out` has room for a unit for each byte.
[[gnu::noinline]] Progress convertPieces(const char* in, std::size_t length, char16_t* out) {
    Progress at{0, 0};
    while (const std::size_t size = pieceAt(in + at.read, length - at.read)) {
        const bool isASCII = shortASCIIToUTF16(in + at.read, size, out + at.written);
        const std::size_t units = isASCII ? size : shortUTF8ToUTF16(in + at.read, size, out + at.written);
        if (units == 0) {
            break;
        }
        at = {at.read + size, at.written + units};
    }
    return at;
}

} // namespace
} // namespace qk::unicode
