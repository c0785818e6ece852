// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSString+Unicode.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

using namespace qk::NSString_Unicode;
using namespace std::string_literals;

namespace qk {
namespace {

TEST(NSStringUnicode, NothingGivesTheEmptyWideString) {
    EXPECT_EQ(wstringFrom(std::nullopt), L"");
    EXPECT_EQ(wstringFromDecomposed(std::nullopt), L"");
}

TEST(NSStringUnicode, EmptyInputGivesEmptyResults) {
    EXPECT_EQ(stringWithStdString(""), NSString());
    EXPECT_EQ(stringWithWString(L""), NSString());
    const std::wstring empty;
    EXPECT_EQ(stringWithWStringNoCopy(empty), NSString());
    EXPECT_EQ(wstringFrom(NSString()), L"");
    EXPECT_EQ(wstringFromDecomposed(NSString()), L"");
}

TEST(NSStringUnicode, NarrowStringsKeepTheirZeroBytes) {
    EXPECT_EQ(initWithStdString("a\0b"s), NSString(u"a\0b"s));
    EXPECT_EQ(stringWithStdString("a\0b"s).length(), 3U);
}

TEST(NSStringUnicode, WideStringsEndAtTheirFirstZeroElement) {
    const std::wstring wide = L"ab\0cd"s;
    EXPECT_EQ(initWithWString(wide), NSString(u"ab"));
    EXPECT_EQ(stringWithWString(wide), NSString(u"ab"));
    EXPECT_EQ(initWithWStringNoCopy(wide), NSString(u"ab"));
}

TEST(NSStringUnicode, WhatStandsBehindTheZeroElementIsNeverRead) {
    const std::wstring wide{L'a', 0, static_cast<wchar_t>(0xD800)};
    EXPECT_EQ(initWithWString(wide), NSString(u"a"));
    EXPECT_EQ(initWithWStringNoCopy(wide), NSString(u"a"));
}

TEST(NSStringUnicode, MalformedNarrowStringsGiveTheEmptyString) {
    const std::vector<std::string> malformed{"\x80",
                                             "\xA9",
                                             "a\xFF",
                                             "\xC0\xAF",
                                             "\xE0\x80\xAF",
                                             "\xED\xA0\x80",
                                             "\xF0\x80\x80\xAF",
                                             "\xF4\x90\x80\x80",
                                             "\xE2\x82",
                                             "ab\xC3",
                                             "good until here \xF0\x9F\x98"};
    for (const std::string& bytes : malformed) {
        EXPECT_EQ(initWithStdString(bytes), NSString()) << testing::PrintToString(bytes);
    }
}

TEST(NSStringUnicode, MalformedWideStringsGiveTheEmptyStringWhenCopied) {
    for (const auto element : {0xD800, 0xDC00, 0xDFFF, 0x110000, -1}) {
        const std::wstring wide{L'a', static_cast<wchar_t>(element), L'b'};
        EXPECT_EQ(initWithWString(wide), NSString()) << std::hex << element;
        EXPECT_EQ(stringWithWString(wide), NSString()) << std::hex << element;
    }
}

TEST(NSStringUnicode, MalformedWideStringsGiveNothingWhenBorrowed) {
    const std::wstring wide{L'a', static_cast<wchar_t>(0xD800)};
    EXPECT_EQ(initWithWStringNoCopy(wide), std::nullopt);
    EXPECT_EQ(stringWithWStringNoCopy(wide), std::nullopt);
}

TEST(NSStringUnicode, ABorrowedStringReadsTheBuffersText) {
    const std::wstring wide = L"h\u00E9llo \U0001F600";
    const auto string = stringWithWStringNoCopy(wide);
    ASSERT_TRUE(string.has_value());
    EXPECT_EQ(string->length(), 8U);
    EXPECT_EQ(*string, NSString(u"h\u00E9llo \U0001F600"));
    EXPECT_EQ(wstringFrom(string), wide);
}

TEST(NSStringUnicode, AMarkOfByteOrderIsACharacterLikeAnyOther) {
    EXPECT_EQ(initWithStdString("\xEF\xBB\xBF"
                                "a"),
              NSString(u"\uFEFFa"));
    EXPECT_EQ(initWithWString(L"\uFEFFa"), NSString(u"\uFEFFa"));
}

TEST(NSStringUnicode, NoncharactersAreCharactersLikeAnyOther) {
    EXPECT_EQ(wstringFrom(initWithWString(L"\uFFFE\uFFFF\U0010FFFF")), L"\uFFFE\uFFFF\U0010FFFF");
}

TEST(NSStringUnicode, CharactersOutsideTheBasicPlaneAreOneWideElement) {
    const NSString string = initWithStdString("\xF0\x9F\x98\x80");
    EXPECT_EQ(string.length(), 2U);
    EXPECT_EQ(wstringFrom(string), L"\U0001F600");
}

TEST(NSStringUnicode, TheWideFormKeepsZeroUnits) {
    EXPECT_EQ(wstringFrom(NSString(u"a\0b"s)), L"a\0b"s);
}

TEST(NSStringUnicode, ALoneSurrogateHasNoWideFormAtAll) {
    EXPECT_EQ(wstringFrom(NSString(u"good\xD800"s)), L"");
    EXPECT_EQ(wstringFromDecomposed(NSString(u"\xDC00 good"s)), L"");
}

TEST(NSStringUnicode, DecomposedTextComesOutComposed) {
    EXPECT_EQ(wstringFromDecomposed(NSString(u"e\u0301")), L"\u00E9");
    EXPECT_EQ(wstringFrom(NSString(u"e\u0301")), L"e\u0301");
}

TEST(NSStringUnicode, AZeroUnitBlocksComposition) {
    EXPECT_EQ(wstringFromDecomposed(NSString(u"e\0\u0301"s)), L"e\0\u0301"s);
}

RC_GTEST_PROP(NSStringUnicode, WideFormsSurviveTheRoundTrip, ()) {
    const auto scalars = *rc::gen::container<std::vector<std::uint32_t>>(
        rc::gen::oneOf(rc::gen::inRange<std::uint32_t>(1, 0xD800), rc::gen::inRange<std::uint32_t>(0xE000, 0x110000)));
    const std::wstring wide(scalars.begin(), scalars.end());
    RC_ASSERT(wstringFrom(initWithWString(wide)) == wide);
    const auto borrowed = initWithWStringNoCopy(wide);
    RC_ASSERT(borrowed.has_value());
    RC_ASSERT(wstringFrom(borrowed) == wide);
    RC_ASSERT(initWithStdString(initWithWString(wide).utf8().value_or("none")) == *borrowed);
}

} // namespace
} // namespace qk
