// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Scalar.h"
#include "QKFoundation/platform/values/unicode/VectorRegisters.h"

/// Runs of characters of three bytes, or of four, to UTF-16: text of one script mostly is such. Where each byte belongs
/// is known in a run, so it needs neither masks nor tables.
///
/// Both forms make eight units of a step. A lane of 32 bits gets the bytes of one character without their headers, and
/// two multiplications put them together: six bits of one byte join the byte beside them, then the halves join.
namespace qk::unicode {
namespace {

struct RunOfThree {
    static constexpr std::size_t kStep = 24;

    /// Four characters. A header that is not the expected one leaves a bit in `wrong`.
    static __m128i decodeFour(__m128i bytes, __m128i order, __m128i& wrong) {
        const __m128i bare = _mm_xor_si128(_mm_shuffle_epi8(bytes, order), lanesOf(0x00E08080));
        wrong = _mm_or_si128(wrong, _mm_and_si128(bare, lanesOf(0x00F0C0C0)));
        return _mm_madd_epi16(_mm_maddubs_epi16(bare, lanesOf(0x00404001)), lanesOf(0x00400001));
    }

    static __m128i decode(const char* in, __m128i& wrong) { return join(load(in), load(in + 8), wrong); }

    /// Of the first twelve bytes of one register and the last twelve of the other.
    static __m128i join(__m128i front, __m128i back, __m128i& wrong) {
        // The last byte of a character first.
        const __m128i order = _mm_setr_epi8(2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1);
        const __m128i later = _mm_setr_epi8(6, 5, 4, -1, 9, 8, 7, -1, 12, 11, 10, -1, 15, 14, 13, -1);
        wrong = _mm_setzero_si128();
        const __m128i first = decodeFour(front, order, wrong);
        const __m128i units = _mm_packus_epi32(first, decodeFour(back, later, wrong));
        // Overlong forms and surrogates.
        const __m128i top = _mm_and_si128(units, wordsOf(0xF800));
        wrong = _mm_or_si128(
            wrong, _mm_or_si128(_mm_cmpeq_epi16(top, _mm_setzero_si128()), _mm_cmpeq_epi16(top, wordsOf(0xD800))));
        return units;
    }
};

struct RunOfFour {
    static constexpr std::size_t kStep = 16;

    static __m128i decode(const char* in, __m128i& wrong) { return join(load(in), wrong); }

    static __m128i join(__m128i bytes, __m128i& wrong) {
        const __m128i bare = _mm_xor_si128(bytes, lanesOf(0x808080F0));
        const __m128i values = _mm_madd_epi16(_mm_maddubs_epi16(bare, lanesOf(0x01400140)), lanesOf(0x00011000));
        const __m128i halves =
            _mm_or_si128(_mm_srli_epi32(values, 10), _mm_slli_epi32(_mm_and_si128(values, lanesOf(0x3FF)), 16));
        const __m128i pairs = _mm_add_epi32(halves, lanesOf(0xDC00D7C0));
        // What is overlong or too great makes something else than a high surrogate.
        const __m128i kinds = _mm_xor_si128(_mm_and_si128(pairs, lanesOf(0xFC00FC00)), lanesOf(0xDC00D800));
        wrong = _mm_or_si128(_mm_and_si128(bare, lanesOf(0xC0C0C0F8)), kinds);
        return pairs;
    }
};

/// Returns the steps, all well-formed and of that form; what follows is something else, or less than a step.
template <typename Run, bool Write>
[[gnu::noinline]] std::size_t copyRun(const char* in, std::size_t length, char16_t* out) {
    std::size_t steps = 0;
    for (; length - steps * Run::kStep >= Run::kStep; ++steps) {
        __m128i wrong;
        const __m128i units = Run::decode(in + steps * Run::kStep, wrong);
        if (!isZero(wrong)) {
            break;
        }
        if constexpr (Write) {
            store(out + steps * 8, units);
        }
    }
    return steps;
}

/// Converts the run that begins at `at`, the start of a character, if one does.
template <bool Write>
inline Progress readRun(const char* in, std::size_t length, char16_t* out, Progress at) {
    const std::uint8_t lead = byteAt(in, at.read);
    const std::size_t left = length - at.read;
    char16_t* const to = Write ? out + at.written : nullptr;
    if (lead >= 0xF0) {
        const std::size_t steps = copyRun<RunOfFour, Write>(in + at.read, left, to);
        return {at.read + steps * RunOfFour::kStep, at.written + steps * 8};
    }
    if (lead >= 0xE0) {
        const std::size_t steps = copyRun<RunOfThree, Write>(in + at.read, left, to);
        return {at.read + steps * RunOfThree::kStep, at.written + steps * 8};
    }
    return at;
}

} // namespace
} // namespace qk::unicode
