// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/ShortASCII.h"
#include "QKFoundation/platform/values/unicode/VectorUTF16Short.h"
#include "QKFoundation/platform/values/unicode/VectorUTF8.h"

/// The kernels for registers of 16 or 32 bytes, for whatever processor the including file is compiled.
namespace qk::unicode {
namespace {

/// Apart from the short texts, which would have to save the registers that this takes. So are the others like it.
[[gnu::noinline]] Progress longUTF8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    return readUTF8<true, true>(in, length, out);
}

inline Progress utf8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    if (shortASCIIToUTF16(in, length, out)) {
        return {length, length};
    }
    if (length - kLeastShortUTF8 <= kMostShortUTF8 - kLeastShortUTF8) {
        if (const std::size_t units = shortUTF8ToUTF16(in, length, out); units != 0) {
            return {length, units};
        }
    }
    return longUTF8ToUTF16(in, length, out);
}

inline Progress utf16LengthOfUTF8(const char* in, std::size_t length) {
    return readUTF8<true, false>(in, length, nullptr);
}

[[gnu::noinline]] std::size_t longValidUTF8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    return readUTF8<false, true>(in, length, out).written;
}

inline std::size_t validUTF8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    return shortASCIIToUTF16(in, length, out) ? length : longValidUTF8ToUTF16(in, length, out);
}

[[gnu::noinline]] Progress longUTF16ToUTF8(const char16_t* in, std::size_t length, char* out) {
    return writeLastUTF8(in, length, out, readUTF16<UTF8Writer>(in, length, out));
}

inline Progress utf16ToUTF8(const char16_t* in, std::size_t length, char* out) {
    if (shortASCIIToUTF8(in, length, out)) {
        return {length, length};
    }
    if (isShortUTF16(length)) {
        if (const std::size_t written = shortUTF16ToUTF8(in, length, out); written != 0) {
            return {length, written};
        }
    }
    return longUTF16ToUTF8(in, length, out);
}

inline Progress utf8LengthOfUTF16(const char16_t* in, std::size_t length) {
    return scalarUTF16ToUTF8<false>(in, length, nullptr, readUTF16<UTF16Counter<true>>(in, length, nullptr));
}

[[gnu::noinline]] Progress longUTF16ToUTF32(const char16_t* in, std::size_t length, char32_t* out) {
    return scalarUTF16ToUTF32<true>(in, length, out, readUTF16<UTF32Writer>(in, length, out));
}

inline Progress utf16ToUTF32(const char16_t* in, std::size_t length, char32_t* out) {
    if (shortASCIIToUTF32(in, length, out)) {
        return {length, length};
    }
    if (isShortUTF16(length)) {
        if (const std::size_t written = shortUTF16ToUTF32(in, length, out); written != 0) {
            return {length, written};
        }
    }
    return longUTF16ToUTF32(in, length, out);
}

inline Progress utf32LengthOfUTF16(const char16_t* in, std::size_t length) {
    return scalarUTF16ToUTF32<false>(in, length, nullptr, readUTF16<UTF16Counter<false>>(in, length, nullptr));
}

inline Progress utf32ToUTF16(const char32_t* in, std::size_t length, char16_t* out) {
    return readUTF32<true>(in, length, out);
}

inline Progress utf16LengthOfUTF32(const char32_t* in, std::size_t length) {
    return readUTF32<false>(in, length, nullptr);
}

inline bool isASCII(const char* in, std::size_t length) {
    std::size_t at = 0;
    for (; length - at >= 64; at += 64) {
        if (!is64ASCII(in + at)) {
            return false;
        }
    }
    return scalarIsASCII(in, length, at);
}

inline std::size_t prefixBelow(const char16_t* in, std::size_t length, char16_t limit) {
    const __m128i last = wordsOf(limit - 1);
    std::size_t at = 0;
    for (; length - at >= 8; at += 8) {
        const __m128i units = load(in + at);
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(_mm_max_epu16(units, last), last)) != 0xFFFF) {
            break;
        }
    }
    return scalarPrefixBelow(in, length, limit, at);
}

inline unsigned unplainEight(__m128i units) {
    const __m128i below = wordsOf(kPlainBelow - 1);
    __m128i plain = _mm_cmpeq_epi16(_mm_max_epu16(units, below), below);
    for (const UnitRange range : kPlainRanges) {
        const __m128i above = _mm_sub_epi16(units, wordsOf(range.first));
        const __m128i span = wordsOf(range.last - range.first);
        plain = _mm_or_si128(plain, _mm_cmpeq_epi16(_mm_max_epu16(above, span), span));
    }
    return ~bitsOfWords(plain) & 0xFF;
}

inline std::uint64_t unplain(const char16_t* in, std::size_t length) {
    std::uint64_t mask = 0;
    std::size_t at = 0;
    for (; length - at >= 8; at += 8) {
        mask |= std::uint64_t{unplainEight(load(in + at))} << at;
    }
    return at == length ? mask : mask | scalarUnplain(in + at, length - at) << at;
}

constexpr Kernels vectorKernels(const char* name) {
    return {
        .name = name,
        .utf8ToUTF16 = utf8ToUTF16,
        .utf16LengthOfUTF8 = utf16LengthOfUTF8,
        .validUTF8ToUTF16 = validUTF8ToUTF16,
        .utf16ToUTF8 = utf16ToUTF8,
        .utf8LengthOfUTF16 = utf8LengthOfUTF16,
        .utf16ToUTF32 = utf16ToUTF32,
        .utf32LengthOfUTF16 = utf32LengthOfUTF16,
        .utf32ToUTF16 = utf32ToUTF16,
        .utf16LengthOfUTF32 = utf16LengthOfUTF32,
        .isASCII = isASCII,
        .prefixBelow = prefixBelow,
        .unplain = unplain,
    };
}

} // namespace
} // namespace qk::unicode
