// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/text/Texts.h"

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <array>
#include <random>
#include <span>

namespace qk::bench {
namespace {

constexpr std::array<std::u32string_view, 16> kASCII{U"the",   U"quick", U"remote", U"session",   U"ended", U"at",
                                                     U"10:42", U"and",   U"was",    U"logged",    U"in",    U"network",
                                                     U"en0",   U"with",  U"status", U"\"active\""};
constexpr std::array<std::u32string_view, 16> kLatin{U"caf\u00E9",
                                                     U"\u00FCber",
                                                     U"na\u00EFve",
                                                     U"d\u00E9j\u00E0",
                                                     U"r\u00E9sum\u00E9",
                                                     U"Stra\u00DFe",
                                                     U"\u017Elu\u0165",
                                                     U"gar\u00E7on",
                                                     U"les",
                                                     U"der",
                                                     U"ma\u00F1ana",
                                                     U"\u00E5r",
                                                     U"sm\u00F8rrebr\u00F8d",
                                                     U"f\u00FCnf",
                                                     U"est",
                                                     U"\u0141\u00F3d\u017A"};
constexpr std::array<std::u32string_view, 12> kCJK{U"\u8FDC\u7A0B\u652F\u6301",
                                                   U"\u7F51\u7EDC",
                                                   U"\u8FDE\u63A5",
                                                   U"\u3002",
                                                   U"\u30EA\u30E2\u30FC\u30C8",
                                                   U"\u63A5\u7D9A",
                                                   U"\u306E",
                                                   U"\u30C6\u30B9\u30C8\u3067\u3059",
                                                   U"\uC6D0\uACA9",
                                                   U"\uC9C0\uC6D0",
                                                   U"\u6F22\u5B57",
                                                   U"\uFF0C"};
constexpr std::array<std::u32string_view, 8> kEmoji{
    U"\U0001F600",           U"\U0001F680\U0001F31F", U"\U0001F469",           U"\U0001F4BB",
    U"\U0001F389\U0001F389", U"\U0001F44D",           U"\U0001F1E9\U0001F1EA", U"\U0001F40D"};

std::span<const std::u32string_view> wordsOf(Script script) {
    switch (script) {
    case Script::ascii: return kASCII;
    case Script::latin: return kLatin;
    case Script::cjk: return kCJK;
    case Script::emoji: break;
    }
    return kEmoji;
}

std::size_t utf8Length(char32_t c) {
    return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

} // namespace

const char* nameOf(Script script) {
    constexpr std::array kNames{"ASCII", "Latin", "CJK", "emoji"};
    return kNames[static_cast<std::size_t>(script)];
}

Text makeText(Script script, std::size_t bytes) {
    const auto words = wordsOf(script);
    const bool spaced = script == Script::ascii || script == Script::latin;
    std::mt19937 random{20};
    Text text;
    std::size_t length = 0;
    for (bool full = false; !full;) {
        std::u32string word{words[random() % words.size()]};
        if (spaced) {
            word += U' ';
        }
        for (const char32_t c : word) {
            full = full || length + utf8Length(c) > bytes;
            if (!full) {
                text.utf32 += c;
                length += utf8Length(c);
            }
        }
    }
    const auto whole = icu::UnicodeString::fromUTF32(reinterpret_cast<const UChar32*>(text.utf32.data()),
                                                     static_cast<std::int32_t>(text.utf32.size()));
    whole.toUTF8String(text.utf8);
    text.utf16.assign(whole.getBuffer(), static_cast<std::size_t>(whole.length()));
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString parts = icu::Normalizer2::getNFDInstance(status)->normalize(whole, status);
    text.decomposed.assign(parts.getBuffer(), static_cast<std::size_t>(parts.length()));
    return text;
}

} // namespace qk::bench
