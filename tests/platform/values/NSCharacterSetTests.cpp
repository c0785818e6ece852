// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSCharacterSet.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <string>

namespace qk {
namespace {

NSCharacterSet setOf(const NSString& string) {
    return NSCharacterSet::characterSetWithCharactersInString(string);
}

TEST(NSCharacterSet, EmptySetHasNoMember) {
    const NSCharacterSet none;
    const NSCharacterSet all = none.invertedSet();
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        ASSERT_FALSE(none.characterIsMember(static_cast<char16_t>(unit)));
        ASSERT_TRUE(all.characterIsMember(static_cast<char16_t>(unit)));
    }
    EXPECT_EQ(setOf(""), none);
}

TEST(NSCharacterSet, HoldsTheUnitsOfAString) {
    const NSCharacterSet set = setOf("a0\u00e9\uffff\u00e9");
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        const bool expected = unit == U'a' || unit == U'0' || unit == 0xE9 || unit == 0xFFFF;
        ASSERT_EQ(set.characterIsMember(static_cast<char16_t>(unit)), expected) << static_cast<unsigned>(unit);
        ASSERT_EQ(set.invertedSet().characterIsMember(static_cast<char16_t>(unit)), !expected)
            << static_cast<unsigned>(unit);
    }
}

TEST(NSCharacterSet, LimitsOfTheASCIIPartAreTheirOwn) {
    const NSCharacterSet set = setOf(NSString(u"\u003f\u0040\u007f\u0080"));
    EXPECT_TRUE(set.characterIsMember(0x3F));
    EXPECT_TRUE(set.characterIsMember(0x40));
    EXPECT_TRUE(set.characterIsMember(0x7F));
    EXPECT_TRUE(set.characterIsMember(0x80));
    EXPECT_FALSE(set.characterIsMember(0x3E));
    EXPECT_FALSE(set.characterIsMember(0x41));
    EXPECT_FALSE(set.characterIsMember(0x7E));
    EXPECT_FALSE(set.characterIsMember(0x81));
    EXPECT_FALSE(set.characterIsMember(0));
}

TEST(NSCharacterSet, CharacterBeyondTheBasicPlaneIsItsTwoSurrogates) {
    const NSCharacterSet set = setOf("\U0001F600");
    EXPECT_TRUE(set.characterIsMember(0xD83D));
    EXPECT_TRUE(set.characterIsMember(0xDE00));
    EXPECT_FALSE(set.characterIsMember(0xDE01));
}

TEST(NSCharacterSet, EqualWhenTheMembersAre) {
    EXPECT_EQ(setOf("ab\u00e9"), setOf("\u00e9baab"));
    EXPECT_FALSE(setOf("ab") == setOf("a"));
    EXPECT_FALSE(setOf("\u00e9") == setOf("\u00e8"));
    EXPECT_FALSE(setOf("a").invertedSet() == setOf("a"));
    EXPECT_EQ(setOf("a\u00e9").invertedSet().invertedSet(), setOf("a\u00e9"));
}

TEST(NSCharacterSet, EqualHoweverTheMembersWereGiven) {
    std::u16string most;
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        if (unit != U'x' && unit != 0xE9) {
            most.push_back(static_cast<char16_t>(unit));
        }
    }
    EXPECT_EQ(setOf(NSString(most)), setOf("x\u00e9").invertedSet());
    EXPECT_EQ(setOf("x\u00e9"), setOf(NSString(most)).invertedSet());
    EXPECT_FALSE(setOf(NSString(most)) == setOf("x\u00e8").invertedSet());
    EXPECT_FALSE(setOf(NSString(most)) == setOf("x").invertedSet());
}

TEST(NSCharacterSet, FirstMemberOfAStringIsFound) {
    const NSCharacterSet digits = setOf("0123456789");
    EXPECT_EQ(rangeOfCharacterFromSet("", digits), std::nullopt);
    EXPECT_EQ(rangeOfCharacterFromSet("abc", digits), std::nullopt);
    EXPECT_EQ(rangeOfCharacterFromSet("ab1c2", digits), 2U);
    EXPECT_EQ(rangeOfCharacterFromSet("12a", digits.invertedSet()), 2U);
    EXPECT_EQ(rangeOfCharacterFromSet("12\uff13", digits.invertedSet()), 2U);
}

TEST(NSCharacterSet, ComponentsKeepTheEmptyOnes) {
    const NSCharacterSet marks = setOf(",;");
    EXPECT_EQ(componentsSeparatedByCharactersInSet("", marks), (std::vector<NSString>{""}));
    EXPECT_EQ(componentsSeparatedByCharactersInSet("abc", marks), (std::vector<NSString>{"abc"}));
    EXPECT_EQ(componentsSeparatedByCharactersInSet(",a,;b;", marks), (std::vector<NSString>{"", "a", "", "b", ""}));
}

TEST(NSCharacterSet, RemovingIsJoiningTheComponents) {
    const NSCharacterSet others = setOf("1234567890").invertedSet();
    EXPECT_EQ(stringByRemovingCharactersInSet("", others), "");
    EXPECT_EQ(stringByRemovingCharactersInSet("12", others), "12");
    EXPECT_EQ(stringByRemovingCharactersInSet("abc", others), "");
    EXPECT_EQ(stringByRemovingCharactersInSet("1 2-3\u0301\uff14\U0001F600", others), "123");
}

} // namespace
} // namespace qk
