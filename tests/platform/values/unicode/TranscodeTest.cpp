// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/unicode/Transcode.h"

#include "tests/platform/values/unicode/Support.h"

#include <gtest/gtest.h>

namespace qk::unicode::testing {
namespace {

constexpr char kCanary = '\x5A';

/// Memory for `capacity` units with a canary behind it.
template <typename Char>
class Watched {
public:
    explicit Watched(std::size_t capacity) : units_(capacity + kBehind, static_cast<Char>(kCanary)) {}

    Char* data() { return units_.data(); }
    std::basic_string<Char> first(std::size_t count) const { return units_.substr(0, count); }
    bool isIntact() const { return units_.ends_with(std::basic_string<Char>(kBehind, static_cast<Char>(kCanary))); }

private:
    static constexpr std::size_t kBehind = 64;
    std::basic_string<Char> units_;
};

TEST(Transcode, EmptyTextsHaveEmptyForms) {
    EXPECT_EQ(utf8ToUTF16({}, nullptr), 0U);
    EXPECT_EQ(utf16LengthOfUTF8({}), 0U);
    EXPECT_EQ(validUTF8ToUTF16({}, nullptr), 0U);
    EXPECT_EQ(utf16ToUTF8({}, nullptr), 0U);
    EXPECT_EQ(utf8LengthOfUTF16({}), 0U);
    EXPECT_EQ(utf16ToUTF8Lossy({}, nullptr, '?'), 0U);
    EXPECT_EQ(utf32ToUTF16({}, nullptr), 0U);
    EXPECT_EQ(utf16LengthOfUTF32({}), 0U);
    EXPECT_EQ(utf16ToUTF32({}, nullptr), 0U);
    EXPECT_EQ(utf16ToUTF32Lossy({}, nullptr, U'?'), 0U);
    EXPECT_EQ(utf32LengthOfUTF16({}), 0U);
    EXPECT_TRUE(isASCII({}));
    EXPECT_TRUE(isValidUTF8({}));
}

TEST(Transcode, EveryCharacterSurvivesAllForms) {
    std::u32string all;
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        if (character < 0xD800 || character > 0xDFFF) {
            all += character;
        }
    }
    const std::string utf8 = toUTF8(all);
    const std::u16string utf16 = toUTF16(all);
    Watched<char16_t> units{utf8.size()};
    ASSERT_EQ(utf8ToUTF16(utf8, units.data()), utf16.size());
    EXPECT_EQ(units.first(utf16.size()), utf16);
    Watched<char16_t> exact{utf16.size()};
    ASSERT_EQ(validUTF8ToUTF16(utf8, exact.data()), utf16.size());
    EXPECT_EQ(exact.first(utf16.size()), utf16);
    EXPECT_TRUE(exact.isIntact());
    Watched<char> bytes{3 * utf16.size()};
    ASSERT_EQ(utf16ToUTF8(utf16, bytes.data()), utf8.size());
    EXPECT_EQ(bytes.first(utf8.size()), utf8);
    Watched<char32_t> values{utf16.size()};
    ASSERT_EQ(utf16ToUTF32(utf16, values.data()), all.size());
    EXPECT_EQ(values.first(all.size()), all);
    Watched<char16_t> again{2 * all.size()};
    ASSERT_EQ(utf32ToUTF16(all, again.data()), utf16.size());
    EXPECT_EQ(again.first(utf16.size()), utf16);
    EXPECT_EQ(utf16LengthOfUTF8(utf8), utf16.size());
    EXPECT_EQ(utf8LengthOfUTF16(utf16), utf8.size());
    EXPECT_EQ(utf32LengthOfUTF16(utf16), all.size());
    EXPECT_EQ(utf16LengthOfUTF32(all), utf16.size());
    EXPECT_TRUE(isValidUTF8(utf8));
    EXPECT_FALSE(isASCII(utf8));
}

TEST(Transcode, EachCharacterAloneSurvivesAllForms) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        const std::u32string_view one{&character, 1};
        Watched<char16_t> units{2};
        const auto length = utf32ToUTF16(one, units.data());
        ASSERT_EQ(length.has_value(), character < 0xD800 || character > 0xDFFF);
        if (!length) {
            continue;
        }
        ASSERT_EQ(units.first(*length), toUTF16(one));
        Watched<char> bytes{3 * *length};
        const auto size = utf16ToUTF8({units.data(), *length}, bytes.data());
        ASSERT_EQ(bytes.first(size.value_or(0)), toUTF8(one));
        Watched<char16_t> back{*size};
        ASSERT_EQ(utf8ToUTF16({bytes.data(), *size}, back.data()), length);
        ASSERT_EQ(back.first(*length), units.first(*length));
        ASSERT_TRUE(units.isIntact() && bytes.isIntact() && back.isIntact());
    }
}

TEST(Transcode, NothingIsWrittenBehindTheCapacity) {
    SCOPED_TRACE("QK_SEED=" + std::to_string(seed()));
    std::mt19937_64 random{seed()};
    for (const Script script : {Script::ascii, Script::latin, Script::cjk, Script::emoji, Script::mixed}) {
        for (std::size_t count = 0; count < 140; ++count) {
            const std::u32string text = anyText(script, count, random);
            const std::string utf8 = toUTF8(text);
            const std::u16string utf16 = toUTF16(text);
            Watched<char16_t> fromUTF8{utf8.size()};
            Watched<char16_t> exact{utf16.size()};
            Watched<char16_t> fromUTF32{2 * text.size()};
            Watched<char> bytes{3 * utf16.size()};
            Watched<char32_t> values{utf16.size()};
            ASSERT_TRUE(utf8ToUTF16(utf8, fromUTF8.data()) && utf32ToUTF16(text, fromUTF32.data()) &&
                        utf16ToUTF8(utf16, bytes.data()) && utf16ToUTF32(utf16, values.data()));
            validUTF8ToUTF16(utf8, exact.data());
            ASSERT_TRUE(fromUTF8.isIntact() && exact.isIntact() && fromUTF32.isIntact() && bytes.isIntact() &&
                        values.isIntact());
        }
    }
}

TEST(Transcode, LoneSurrogatesHaveNoOtherForm) {
    const std::u16string longText(100, u'a');
    for (const std::u16string& lone : {std::u16string(1, char16_t{0xD800}), std::u16string(1, char16_t{0xDC00}),
                                       std::u16string{0xDC00, 0xD800}, std::u16string{0xD800, 0xD800, 0xDC00}}) {
        for (const std::u16string& text : {lone, longText + lone, lone + longText, longText + lone + longText}) {
            std::string bytes(3 * text.size(), '\0');
            std::u32string values(text.size(), U'\0');
            EXPECT_EQ(utf16ToUTF8(text, bytes.data()), std::nullopt);
            EXPECT_EQ(utf16ToUTF32(text, values.data()), std::nullopt);
            EXPECT_EQ(utf8LengthOfUTF16(text), std::nullopt);
            EXPECT_EQ(utf32LengthOfUTF16(text), std::nullopt);
        }
    }
}

TEST(Transcode, LossyFormsReplaceEachLoneSurrogate) {
    const std::u16string text{u'a', 0xD800, u'b', 0xDC00, 0xDC00, 0xD83D, 0xDE00, 0xD83D};
    std::string bytes(3 * text.size(), '\0');
    bytes.resize(utf16ToUTF8Lossy(text, bytes.data(), '?'));
    EXPECT_EQ(bytes, "a?b??\xF0\x9F\x98\x80?");
    std::u32string values(text.size(), U'\0');
    values.resize(utf16ToUTF32Lossy(text, values.data(), U'\uFFFD'));
    EXPECT_EQ(values, U"a\uFFFDb\uFFFD\uFFFD\U0001F600\uFFFD");
}

TEST(Transcode, ValuesThatAreNoCharactersHaveNoUTF16) {
    for (const char32_t wrong : {char32_t{0xD800}, char32_t{0xDFFF}, char32_t{0x110000}, char32_t{0xFFFFFFFF}}) {
        for (const std::size_t before : {0U, 3U, 15U, 16U, 40U}) {
            std::u32string text(before, U'x');
            text += wrong;
            std::u16string units(2 * text.size(), u'\0');
            EXPECT_EQ(utf32ToUTF16(text, units.data()), std::nullopt);
            EXPECT_EQ(utf16LengthOfUTF32(text), std::nullopt);
        }
    }
}

TEST(Transcode, MalformedUTF8HasNoLength) {
    EXPECT_EQ(utf16LengthOfUTF8("a\xFF"), std::nullopt);
    EXPECT_FALSE(isValidUTF8("a\xFF"));
    EXPECT_FALSE(isASCII("a\xFF"));
    EXPECT_TRUE(isASCII(std::string(300, '\x7F')));
    EXPECT_FALSE(isASCII(std::string(299, '\x7F') + '\x80'));
}

} // namespace
} // namespace qk::unicode::testing
