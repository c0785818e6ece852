// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

struct Text {
    std::string utf8;
    std::u16string units;
    std::wstring utf32;
};

/// Lengths on both sides of every place where the way of converting changes.
std::vector<Text> texts() {
    std::vector<Text> all = {{"", u"", L""},
                             {"\0a\0"s, u"\0a\0"s, L"\0a\0"s},
                             {"\xEF\xBB\xBF"s, u"\uFEFF", L"\uFEFF"},
                             {"\xEF\xBF\xBE\xEF\xBF\xBF"s, u"\uFFFE\uFFFF"s, L"\uFFFE\uFFFF"s}};
    const Text pieces[] = {{"a", u"a", L"a"},
                           {"\u00E9", u"\u00E9", L"\u00E9"},
                           {"\u4E2D", u"\u4E2D", L"\u4E2D"},
                           {"\U0001F600", u"\U0001F600", L"\U0001F600"},
                           {"x\U0010FFFFy", u"x\U0010FFFFy", L"x\U0010FFFFy"}};
    for (const Text& piece : pieces) {
        for (const int count : {1, 15, 16, 17, 31, 32, 33, 63, 64, 65, 128, 511, 1023, 1024, 1025, 5000}) {
            Text text;
            for (int index = 0; index < count; ++index) {
                text.utf8 += piece.utf8;
                text.units += piece.units;
                text.utf32 += piece.utf32;
            }
            all.push_back(text);
            // A pair across the border of any even piece.
            all.push_back({"a" + text.utf8, u"a" + text.units, L"a" + text.utf32});
        }
    }
    return all;
}

TEST(NSStringConversion, ThreeFormsOfOneTextAgree) {
    for (const Text& text : texts()) {
        const NSString expected{text.units};
        EXPECT_EQ(NSString::fromUTF8(text.utf8), expected);
        EXPECT_EQ(NSString::fromUTF8Lossy(text.utf8), expected);
        EXPECT_EQ(NSString::fromUTF32(text.utf32), expected);
        EXPECT_EQ(NSString::fromUTF32NoCopy(text.utf32), expected);
        EXPECT_EQ(expected.utf8(), text.utf8);
        EXPECT_EQ(expected.utf8Lossy(), text.utf8);
        EXPECT_EQ(expected.utf32(), text.utf32);
        EXPECT_EQ(expected.utf32Lossy(), text.utf32);
        EXPECT_EQ(NSString::fromUTF8(text.utf8)->length(), text.units.size());
        EXPECT_EQ(CFGetRetainCount(NSString::fromUTF8("a" + text.utf8)->storage()), 1U);
    }
}

struct Malformed {
    std::string_view utf8;
    std::u16string_view shown;
};

class MalformedUTF8 : public testing::TestWithParam<Malformed> {};

TEST_P(MalformedUTF8, IsRefusedWhereverItStands) {
    const auto& [malformed, shown] = GetParam();
    for (const std::size_t before : {0U, 1U, 15U, 31U, 63U, 64U, 200U}) {
        for (const std::size_t behind : {0U, 1U, 40U, 100U}) {
            const std::string bytes = std::string(before, 'a') + std::string(malformed) + std::string(behind, 'z');
            const std::u16string units =
                std::u16string(before, u'a') + std::u16string(shown) + std::u16string(behind, u'z');
            EXPECT_EQ(NSString::fromUTF8(bytes), std::nullopt);
            EXPECT_EQ(NSString::fromUTF8Lossy(bytes).units(), units);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Bytes, MalformedUTF8,
                         testing::Values(Malformed{"\x80", u"\uFFFD"},                     // continuation alone
                                         Malformed{"\xC3", u"\uFFFD"},                     // cut
                                         Malformed{"\xE4\xB8", u"\uFFFD\uFFFD"},           // cut
                                         Malformed{"\xF0\x9F\x98", u"\uFFFD\uFFFD\uFFFD"}, // cut
                                         Malformed{"\xC0\xAF", u"\uFFFD\uFFFD"},           // overlong
                                         Malformed{"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"}, // overlong
                                         Malformed{"\xF0\x80\x80\xAF", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, // overlong
                                         Malformed{"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},           // surrogate
                                         Malformed{"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, // too large
                                         Malformed{"\xFF", u"\uFFFD"}, Malformed{"\xFE", u"\uFFFD"},
                                         Malformed{"\xC3\xA9\xA9", u"\u00E9\uFFFD"}, Malformed{"\xA9", u"\uFFFD"}));

TEST(NSStringConversion, MalformedElementIsRefusedWhereverItStands) {
    const auto negative = static_cast<wchar_t>(-1);
    for (const wchar_t element :
         {wchar_t{0xD800}, wchar_t{0xDBFF}, wchar_t{0xDC00}, wchar_t{0xDFFF}, wchar_t{0x110000}, negative}) {
        for (const std::size_t before : {0U, 1U, 31U, 32U, 1023U, 1024U, 3000U}) {
            const std::wstring elements = std::wstring(before, L'a') + element + L"z";
            EXPECT_EQ(NSString::fromUTF32(elements), std::nullopt);
            EXPECT_EQ(NSString::fromUTF32NoCopy(elements), std::nullopt);
        }
    }
}

TEST(NSStringConversion, TwoSurrogateElementsAreNotJoined) {
    EXPECT_EQ(NSString::fromUTF32(std::wstring{0xD83D, 0xDE00}), std::nullopt);
}

TEST(NSStringConversion, LoneSurrogateHasNoOtherForm) {
    const std::u16string lone[] = {{0xD800}, {0xDC00}, {0xDC00, 0xD800}, {0xD800, u'a'}, {0xD83D, 0xD83D, 0xDE00}};
    for (const std::u16string& units : lone) {
        for (const std::size_t before : {0U, 1U, 63U, 64U, 1023U, 1024U, 2047U}) {
            const NSString string{std::u16string(before, u'a') + units};
            EXPECT_EQ(string.utf8(), std::nullopt);
            EXPECT_EQ(string.utf32(), std::nullopt);
        }
    }
}

TEST(NSStringConversion, LossStandsForEachLoneSurrogate) {
    const NSString string{std::u16string{u'a', 0xD800, 0xD83D, 0xDE00, 0xDC00, 0xDC00, u'b'}};
    EXPECT_EQ(string.utf8Lossy(), "a?\U0001F600??b");
    EXPECT_EQ(string.utf8Lossy('#'), "a#\U0001F600##b");
    EXPECT_EQ(string.utf32Lossy(), L"a?\U0001F600??b");
    EXPECT_EQ(string.utf32Lossy(L'\uFFFD'), L"a\uFFFD\U0001F600\uFFFD\uFFFDb");
}

TEST(NSStringConversion, LossStandsForALoneSurrogateAtTheBorderOfAPiece) {
    for (const std::size_t before : {1022U, 1023U, 1024U}) {
        const std::u16string head(before, u'a');
        const std::wstring wideHead(before, L'a');
        EXPECT_EQ(NSString(head + u"\xD800" + u"b").utf32Lossy(), wideHead + L"?b");
        EXPECT_EQ(NSString(head + u"\U0001F600").utf32Lossy(), wideHead + L"\U0001F600");
        EXPECT_EQ(NSString(head + u"\xD800" + u"\U0001F600").utf32Lossy(), wideHead + L"?\U0001F600");
    }
}

} // namespace
} // namespace qk
