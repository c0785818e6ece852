// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <random>

namespace qk {
namespace {

TEST(NSStringSearch, NothingIsFoundInNothing) {
    EXPECT_EQ(NSString().find(u"a"), std::nullopt);
    EXPECT_EQ(NSString().findLast(u"a"), std::nullopt);
    EXPECT_FALSE(NSString().contains(u"a"));
}

TEST(NSStringSearch, EmptyTextIsNeverFound) {
    EXPECT_EQ(NSString("abc").find(u""), std::nullopt);
    EXPECT_EQ(NSString("abc").find(u"", 3), std::nullopt);
    EXPECT_EQ(NSString("abc").findLast(u""), std::nullopt);
    EXPECT_EQ(NSString().find(u""), std::nullopt);
    EXPECT_FALSE(NSString("abc").contains(u""));
}

TEST(NSStringSearch, FirstAndLastAreFound) {
    const NSString string("one two one two");
    EXPECT_EQ(string.find(u"two"), 4U);
    EXPECT_EQ(string.find(u"two", 4), 4U);
    EXPECT_EQ(string.find(u"two", 5), 12U);
    EXPECT_EQ(string.find(u"two", 13), std::nullopt);
    EXPECT_EQ(string.find(u"two", 1000), std::nullopt);
    EXPECT_EQ(string.findLast(u"two"), 12U);
    EXPECT_EQ(string.findLast(u"one"), 8U);
    EXPECT_EQ(string.findLast(u"three"), std::nullopt);
    EXPECT_EQ(string.find(u"one two one two"), 0U);
    EXPECT_EQ(string.findLast(u"one two one two"), 0U);
    EXPECT_EQ(string.find(u"one two one two!"), std::nullopt);
    EXPECT_EQ(string.findLast(u"!one two one two"), std::nullopt);
}

TEST(NSStringSearch, SearchIsLiteral) {
    EXPECT_FALSE(NSString("Abc").contains(u"abc"));
    EXPECT_FALSE(NSString("\u00E9").contains(u"e"));
    EXPECT_TRUE(NSString("e\u0301").contains(u"e"));
}

TEST(NSStringSearch, UnitIsFoundAtEveryPosition) {
    for (std::size_t length = 1; length < 40; ++length) {
        for (std::size_t position = 0; position < length; ++position) {
            for (const char16_t unit : {u'\0', u'\1', u'\u0100', u'\uFFFF', u'\u8000'}) {
                std::u16string units(length, unit == 0 ? u'x' : static_cast<char16_t>(unit - 1));
                units[position] = unit;
                EXPECT_EQ(NSString(units).find(std::u16string(1, unit)), position);
                EXPECT_EQ(NSString(units).findLast(std::u16string(1, unit)), position);
            }
        }
    }
}

TEST(NSStringSearch, AgreesWithTheStandardLibraryOnRandomTexts) {
    std::mt19937 random(20231116); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts every time
    std::uniform_int_distribution<int> letter(0, 1);
    const auto text = [&](std::size_t length) {
        std::u16string units;
        for (std::size_t index = 0; index < length; ++index) {
            units.push_back(letter(random) == 0 ? u'a' : u'b');
        }
        return units;
    };
    for (int round = 0; round < 5000; ++round) {
        const std::u16string haystack = text(random() % 200);
        const std::u16string needle = text(1 + random() % 12);
        const std::size_t from = random() % 20;
        const std::size_t forward = haystack.find(needle, from);
        const std::size_t backward = haystack.rfind(needle);
        EXPECT_EQ(NSString(haystack).find(needle, from).value_or(std::u16string::npos), forward);
        EXPECT_EQ(NSString(haystack).findLast(needle).value_or(std::u16string::npos), backward);
    }
}

/// Texts that a search by comparison alone would need the product of both lengths for: far beyond any test's patience.
TEST(NSStringSearch, TextsMadeToBeSlowAreSearchedInLinearTime) {
    constexpr std::size_t kLength = 2'000'000;
    const std::u16string half(kLength / 2, u'a');
    const NSString string{std::u16string(kLength, u'a')};
    EXPECT_EQ(string.find(half + u'b'), std::nullopt);
    EXPECT_EQ(string.find(u"b" + half), std::nullopt);
    EXPECT_EQ(string.findLast(half + u'b'), std::nullopt);
    EXPECT_EQ(string.findLast(u"b" + half), std::nullopt);
    EXPECT_EQ((string + "b").find(half + u'b'), kLength / 2);
    EXPECT_EQ((NSString("b") + string).findLast(u"b" + half), 0U);
    EXPECT_EQ((string + "b" + string).find(half + u"b" + half), kLength / 2);
}

TEST(NSStringSearch, PrefixesAndSuffixesAreLiteral) {
    const NSString string("abcd");
    EXPECT_TRUE(string.hasPrefix("ab"));
    EXPECT_TRUE(string.hasPrefix(""));
    EXPECT_FALSE(string.hasPrefix("AB"));
    EXPECT_FALSE(string.hasPrefix("abcde"));
    EXPECT_TRUE(string.hasSuffix("cd"));
    EXPECT_TRUE(string.hasSuffix(""));
    EXPECT_FALSE(string.hasSuffix("bc"));
    EXPECT_FALSE(NSString().hasPrefix("a"));
}

struct Split {
    NSString text;
    NSString separator;
    std::vector<NSString> pieces;
};

class Components : public testing::TestWithParam<Split> {};

TEST_P(Components, AreWhatLiesBetweenTheSeparators) {
    EXPECT_EQ(GetParam().text.componentsSeparatedByString(GetParam().separator), GetParam().pieces);
}

INSTANTIATE_TEST_SUITE_P(Texts, Components,
                         testing::Values(Split{"", ",", {""}}, Split{"", "", {""}}, Split{"abc", "", {"abc"}},
                                         Split{"abc", ",", {"abc"}}, Split{"a,b,c", ",", {"a", "b", "c"}},
                                         Split{",a,,b,", ",", {"", "a", "", "b", ""}}, Split{",", ",", {"", ""}},
                                         Split{"a--b---c", "--", {"a", "b", "-c"}}, Split{"aaa", "aa", {"", "a"}},
                                         Split{"a=b=", "=", {"a", "b", ""}}));

struct Replacement {
    NSString text;
    NSString target;
    NSString replacement;
    NSString result;
};

class Replacing : public testing::TestWithParam<Replacement> {};

TEST_P(Replacing, GoesOnceFromTheLeft) {
    const auto& [text, target, replacement, result] = GetParam();
    EXPECT_EQ(text.stringByReplacingOccurrencesOfString(target, replacement), result);
}

INSTANTIATE_TEST_SUITE_P(Texts, Replacing,
                         testing::Values(Replacement{"", "a", "b", ""}, Replacement{"abc", "", "x", "abc"},
                                         Replacement{"abc", "d", "x", "abc"}, Replacement{"abcabc", "b", "", "acac"},
                                         Replacement{"aaa", "aa", "b", "ba"}, Replacement{"aa", "a", "aa", "aaaa"},
                                         Replacement{"a.b", ".", "\U0001F600", "a\U0001F600b"}));

TEST(NSStringSearch, ReplacingNothingSharesTheStorage) {
    const NSString string("abc");
    EXPECT_EQ(string.stringByReplacingOccurrencesOfString("x", "y").storage(), string.storage());
}

struct Trim {
    std::u16string text;
    std::u16string trimmed;
};

class Trimming : public testing::TestWithParam<Trim> {};

TEST_P(Trimming, TakesTabsAndSpaceSeparatorsOffBothEnds) {
    EXPECT_EQ(NSString(GetParam().text).stringByTrimmingWhitespace().units(), GetParam().trimmed);
}

INSTANTIATE_TEST_SUITE_P(Texts, Trimming,
                         testing::Values(Trim{u"", u""}, Trim{u"   ", u""}, Trim{u" a b ", u"a b"},
                                         Trim{u"\t a\t", u"a"}, Trim{u"a", u"a"},
                                         Trim{u"\u00A0\u1680\u2000\u200Aa\u202F\u205F\u3000", u"a"},
                                         Trim{u"\na\n", u"\na\n"}, Trim{u" \n ", u"\n"},
                                         Trim{u"\u200Ba\uFEFF", u"\u200Ba\uFEFF"}, Trim{u"\ra\v", u"\ra\v"}));

} // namespace
} // namespace qk
