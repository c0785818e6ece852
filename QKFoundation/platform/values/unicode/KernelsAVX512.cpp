// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/AVX512ShortUTF16.h"
#include "QKFoundation/platform/values/unicode/AVX512UTF16.h"
#include "QKFoundation/platform/values/unicode/AVX512UTF16ToUTF8.h"
#include "QKFoundation/platform/values/unicode/AVX512UTF32.h"
#include "QKFoundation/platform/values/unicode/AVX512UTF8.h"

namespace qk::unicode {
namespace {

/// Out of line, as the others like it: what a long text takes in registers is not to be saved for a short one.
[[gnu::noinline]] Progress longUTF8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    const Progress at = readUTF8<true, true>(in, length, out);
    return at.read == length ? at : scalarUTF8ToUTF16<true>(in, length, out, at);
}

Progress utf8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    Progress at{length, 0};
    return length <= kMostShort && shortUTF8ToUTF16(in, length, out, at.written) ? at
                                                                                 : longUTF8ToUTF16(in, length, out);
}

Progress utf16LengthOfUTF8(const char* in, std::size_t length) {
    const Progress at = readUTF8<true, false>(in, length, nullptr);
    return at.read == length ? at : scalarUTF8ToUTF16<false>(in, length, nullptr, at);
}

[[gnu::noinline]] std::size_t longValidUTF8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    return readUTF8<false, true>(in, length, out).written;
}

std::size_t validUTF8ToUTF16(const char* in, std::size_t length, char16_t* out) {
    std::size_t written = 0;
    return length <= kMostShort && shortUTF8ToUTF16(in, length, out, written) ? written
                                                                              : longValidUTF8ToUTF16(in, length, out);
}

[[gnu::noinline]] Progress longUTF16ToUTF8(const char16_t* in, std::size_t length, char* out) {
    const Progress at = UTF16Reader<UTF8Writer>{in, out}.convert(length);
    return at.read == length ? at : scalarUTF16ToUTF8<true>(in, length, out, at);
}

Progress utf16ToUTF8(const char16_t* in, std::size_t length, char* out) {
    Progress at{length, 0};
    return length <= kMostShort && shortUTF16ToUTF8(in, length, out, at.written) ? at
                                                                                 : longUTF16ToUTF8(in, length, out);
}

Progress utf8LengthOfUTF16(const char16_t* in, std::size_t length) {
    const Progress at = UTF16Reader<UTF16Counter<true>>{in, nullptr}.convert(length);
    return at.read == length ? at : scalarUTF16ToUTF8<false>(in, length, nullptr, at);
}

[[gnu::noinline]] Progress longUTF16ToUTF32(const char16_t* in, std::size_t length, char32_t* out) {
    const Progress at = UTF16Reader<UTF32Writer>{in, out}.convert(length);
    return at.read == length ? at : scalarUTF16ToUTF32<true>(in, length, out, at);
}

Progress utf16ToUTF32(const char16_t* in, std::size_t length, char32_t* out) {
    Progress at{length, 0};
    return length <= kMostShort && shortUTF16ToUTF32(in, length, out, at.written) ? at
                                                                                  : longUTF16ToUTF32(in, length, out);
}

Progress utf32LengthOfUTF16(const char16_t* in, std::size_t length) {
    const Progress at = UTF16Reader<UTF16Counter<false>>{in, nullptr}.convert(length);
    return at.read == length ? at : scalarUTF16ToUTF32<false>(in, length, nullptr, at);
}

[[gnu::noinline]] Progress longUTF32ToUTF16(const char32_t* in, std::size_t length, char16_t* out) {
    const Progress at = readUTF32<true>(in, length, out);
    return at.read == length ? at : scalarUTF32ToUTF16<true>(in, length, out, at);
}

Progress utf32ToUTF16(const char32_t* in, std::size_t length, char16_t* out) {
    Progress at{length, 0};
    return length <= kMostShort && shortUTF32ToUTF16(in, length, out, at.written) ? at
                                                                                  : longUTF32ToUTF16(in, length, out);
}

Progress utf16LengthOfUTF32(const char32_t* in, std::size_t length) {
    const Progress at = readUTF32<false>(in, length, nullptr);
    return at.read == length ? at : scalarUTF32ToUTF16<false>(in, length, nullptr, at);
}

bool isASCII(const char* in, std::size_t length) {
    std::size_t at = 0;
    for (; length - at >= 256; at += 256) {
        const __m512i seen =
            _mm512_or_si512(_mm512_or_si512(_mm512_loadu_si512(in + at), _mm512_loadu_si512(in + at + 64)),
                            _mm512_or_si512(_mm512_loadu_si512(in + at + 128), _mm512_loadu_si512(in + at + 192)));
        if (_mm512_movepi8_mask(seen) != 0) {
            return false;
        }
    }
    for (; at < length; at += 64) {
        const __m512i bytes = _mm512_maskz_loadu_epi8(allBelow(length - at), in + at);
        if (_mm512_movepi8_mask(bytes) != 0) {
            return false;
        }
    }
    return true;
}

std::size_t prefixBelow(const char16_t* in, std::size_t length, char16_t limit) {
    const __m512i limits = _mm512_set1_epi16(static_cast<short>(limit));
    for (std::size_t at = 0; at < length; at += 32) {
        const auto there = static_cast<__mmask32>(allBelow(length - at));
        const __m512i units = _mm512_maskz_loadu_epi16(there, in + at);
        const __mmask32 stop = _mm512_cmpge_epu16_mask(units, limits);
        if (stop != 0) {
            return at + static_cast<std::size_t>(_tzcnt_u32(stop));
        }
    }
    return length;
}

/// 32 units at most, the rest of them 0.
std::uint32_t unplainHalf(__m512i units) {
    std::uint32_t mask = _mm512_cmpge_epu16_mask(units, _mm512_set1_epi16(static_cast<short>(kPlainBelow)));
    if (mask == 0) {
        return 0;
    }
    for (const UnitRange range : kPlainRanges) {
        const __m512i above = _mm512_sub_epi16(units, _mm512_set1_epi16(static_cast<short>(range.first)));
        mask &= _mm512_cmpgt_epu16_mask(above, _mm512_set1_epi16(static_cast<short>(range.last - range.first)));
    }
    return mask;
}

std::uint64_t unplain(const char16_t* in, std::size_t length) {
    const std::uint64_t there = allBelow(length);
    const __m512i low = _mm512_maskz_loadu_epi16(static_cast<__mmask32>(there), in);
    const __m512i high = _mm512_maskz_loadu_epi16(static_cast<__mmask32>(there >> 32U), in + 32);
    return unplainHalf(low) | std::uint64_t{unplainHalf(high)} << 32U;
}

} // namespace

constinit const Kernels kAVX512Kernels{
    .name = "avx512",
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

} // namespace qk::unicode
