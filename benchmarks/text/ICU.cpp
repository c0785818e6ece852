// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/text/Register.h"
#include "benchmarks/text/Texts.h"

#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <cstdint>

namespace qk::bench {
namespace {

std::int32_t sizeOf(const auto& text) {
    return static_cast<std::int32_t>(text.size());
}

/// Normalises as a caller would: asks first, and composes only if it must.
void normalize(const std::u16string& text, std::u16string& out) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* const composer = unorm2_getNFCInstance(&status);
    if (unorm2_isNormalized(composer, text.data(), sizeOf(text), &status) == 0) {
        unorm2_normalize(composer, text.data(), sizeOf(text), out.data(), sizeOf(out), &status);
    }
    benchmark::DoNotOptimize(status);
}

} // namespace

void registerICU(const std::string& name, const Text& text) {
    add("UTF-8 to UTF-16", name, "ICU", [&text, out = std::u16string(text.utf8.size(), u'\0')]() mutable {
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t length = 0;
        u_strFromUTF8(out.data(), sizeOf(out), &length, text.utf8.data(), sizeOf(text.utf8), &status);
        benchmark::DoNotOptimize(length);
    });
    add("UTF-16 to UTF-8", name, "ICU", [&text, out = std::string(3 * text.utf16.size(), '\0')]() mutable {
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t length = 0;
        u_strToUTF8(out.data(), sizeOf(out), &length, text.utf16.data(), sizeOf(text.utf16), &status);
        benchmark::DoNotOptimize(length);
    });
    add("UTF-16 to UTF-32", name, "ICU", [&text, out = std::u32string(text.utf16.size(), U'\0')]() mutable {
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t length = 0;
        u_strToUTF32(reinterpret_cast<UChar32*>(out.data()), sizeOf(out), &length, text.utf16.data(),
                     sizeOf(text.utf16), &status);
        benchmark::DoNotOptimize(length);
    });
    add("UTF-32 to UTF-16", name, "ICU", [&text, out = std::u16string(2 * text.utf32.size(), u'\0')]() mutable {
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t length = 0;
        u_strFromUTF32(out.data(), sizeOf(out), &length, reinterpret_cast<const UChar32*>(text.utf32.data()),
                       sizeOf(text.utf32), &status);
        benchmark::DoNotOptimize(length);
    });
    add("NFC of composed", name, "ICU",
        [&text, out = std::u16string(text.utf16.size() + 64, u'\0')]() mutable { normalize(text.utf16, out); });
    add("NFC of decomposed", name, "ICU",
        [&text, out = std::u16string(text.utf16.size() + 64, u'\0')]() mutable { normalize(text.decomposed, out); });
}

} // namespace qk::bench
