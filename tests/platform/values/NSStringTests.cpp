// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSString.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <limits>
#include <unordered_set>

namespace qk {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(NSString, DefaultIsEmpty) {
    const NSString string;
    EXPECT_TRUE(string.isEmpty());
    EXPECT_EQ(string.length(), 0U);
    EXPECT_EQ(string.units(), u"");
    EXPECT_EQ(string.utf8(), "");
    EXPECT_EQ(string.utf32(), L"");
}

TEST(NSString, EveryEmptyStringHasTheOneStorage) {
    const CFStringRef empty = NSString().storage();
    EXPECT_EQ(NSString("").storage(), empty);
    EXPECT_EQ(NSString(u""sv).storage(), empty);
    EXPECT_EQ(NSString::fromUTF8("")->storage(), empty);
    EXPECT_EQ(NSString::fromUTF8Lossy("").storage(), empty);
    EXPECT_EQ(NSString::fromUTF32(L"")->storage(), empty);
    EXPECT_EQ(NSString::fromUTF32NoCopy(L"")->storage(), empty);
    EXPECT_EQ(NSString("abc").substringFromIndex(3).storage(), empty);
    EXPECT_EQ((NSString() + NSString()).storage(), empty);
    EXPECT_EQ(NSMutableString().copy().storage(), empty);
}

TEST(NSString, EmptyViewWithoutMemoryIsEmpty) {
    EXPECT_TRUE(NSString(std::u16string_view()).isEmpty());
    EXPECT_TRUE(NSString::fromUTF8(std::string_view())->isEmpty());
    EXPECT_TRUE(NSString::fromUTF32(std::wstring_view())->isEmpty());
}

TEST(NSString, LiteralIsUTF8) {
    EXPECT_EQ(NSString("h\u00E9\u4E2D\U0001F600").units(), u"h\u00E9\u4E2D\U0001F600");
    EXPECT_EQ(NSString("a\0b").units(), u"a\0b"sv);
}

TEST(NSString, LengthCountsUTF16Units) {
    EXPECT_EQ(NSString("abc").length(), 3U);
    EXPECT_EQ(NSString("\u00E9").length(), 1U);
    EXPECT_EQ(NSString("\U0001F600").length(), 2U);
    EXPECT_EQ(NSString("\U0001F600").characterAtIndex(0), 0xD83D);
    EXPECT_EQ(NSString("\U0001F600").characterAtIndex(1), 0xDE00);
}

TEST(NSString, LoneSurrogateSurvives) {
    const std::u16string units = {u'a', 0xD800, u'b', 0xDC00};
    const NSString string{units};
    EXPECT_EQ(string.units(), units);
    EXPECT_EQ((string + string).units(), units + units);
    EXPECT_EQ(NSString(string), string);
}

TEST(NSString, UnitsAreCopiedAtCreation) {
    std::u16string units = u"before";
    const NSString string{units};
    units = u"after!";
    EXPECT_EQ(string, "before");
}

TEST(NSString, CopySharesTheStorage) {
    const NSString original("text");
    const NSString copy = original; // NOLINT(performance-unnecessary-copy-initialization): the copy is what is tested
    EXPECT_EQ(copy.storage(), original.storage());
    EXPECT_EQ(CFGetRetainCount(original.storage()), 2U);
}

TEST(NSString, MovedFromIsEmpty) {
    NSString source("text");
    const NSString target = std::move(source);
    EXPECT_EQ(target, "text");
    EXPECT_TRUE(source.isEmpty()); // NOLINT(bugprone-use-after-move): that state is promised
    EXPECT_EQ(CFGetRetainCount(target.storage()), 1U);
}

TEST(NSString, AssignmentReleasesWhatWasHeld) {
    const NSString first("first");
    const NSString second("second");
    NSString string = first;
    string = second;
    EXPECT_EQ(string, "second");
    EXPECT_EQ(CFGetRetainCount(first.storage()), 1U);
    EXPECT_EQ(CFGetRetainCount(second.storage()), 2U);
    string = NSString();
    EXPECT_EQ(CFGetRetainCount(second.storage()), 1U);
}

TEST(NSString, MoveAssignmentReleasesWhatWasHeld) {
    const NSString first("first");
    NSString string = first;
    NSString source("second");
    string = std::move(source);
    EXPECT_EQ(string, "second");
    EXPECT_TRUE(source.isEmpty()); // NOLINT(bugprone-use-after-move): that state is promised
    EXPECT_EQ(CFGetRetainCount(first.storage()), 1U);
}

TEST(NSString, AssignmentToItselfKeepsTheText) {
    NSString string("text");
    NSString& alias = string;
    string = alias;
    EXPECT_EQ(string, "text");
    EXPECT_EQ(CFGetRetainCount(string.storage()), 1U);
    string = std::move(alias);
    EXPECT_EQ(string, "text");
    EXPECT_EQ(CFGetRetainCount(string.storage()), 1U);
}

TEST(NSString, IntegersBecomeDecimalDigits) {
    EXPECT_EQ(NSString::fromInteger(0), "0");
    EXPECT_EQ(NSString::fromInteger(-1), "-1");
    EXPECT_EQ(NSString::fromInteger(std::numeric_limits<std::int64_t>::max()), "9223372036854775807");
    EXPECT_EQ(NSString::fromInteger(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(NSString::fromUnsignedInteger(0), "0");
    EXPECT_EQ(NSString::fromUnsignedInteger(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST(NSString, EqualityIsLiteral) {
    EXPECT_EQ(NSString("abc"), NSString("abc"));
    EXPECT_NE(NSString("abc"), NSString("ABC"));
    EXPECT_NE(NSString("abc"), NSString("abcd"));
    EXPECT_NE(NSString("abc"), NSString("abd"));
    EXPECT_NE(NSString(""), NSString("\0"));
    EXPECT_NE(NSString("\u00E9"), NSString("e\u0301")) << "composed and decomposed are two texts";
}

struct Order {
    std::u16string left;
    std::u16string right;
    NSComparisonResult result;
};

class NSStringOrder : public testing::TestWithParam<Order> {};

TEST_P(NSStringOrder, IsThatOfTheUnits) {
    const NSString left{GetParam().left};
    const NSString right{GetParam().right};
    EXPECT_EQ(left.compare(right), GetParam().result);
    EXPECT_EQ(static_cast<int>(right.compare(left)), -static_cast<int>(GetParam().result));
    EXPECT_EQ(left < right, GetParam().result == NSComparisonResult::NSOrderedAscending);
    EXPECT_EQ(left == right, GetParam().result == NSComparisonResult::NSOrderedSame);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, NSStringOrder,
    testing::Values(Order{u"", u"", NSComparisonResult::NSOrderedSame},
                    Order{u"", u"a", NSComparisonResult::NSOrderedAscending},
                    Order{u"a", u"ab", NSComparisonResult::NSOrderedAscending},
                    Order{u"Z", u"a", NSComparisonResult::NSOrderedAscending},
                    Order{u"b", u"aa", NSComparisonResult::NSOrderedDescending},
                    Order{u"\u0100", u"\u00FF", NSComparisonResult::NSOrderedDescending}, // not the order of the bytes
                    Order{u"\uFFFF", u"\U0001F600", NSComparisonResult::NSOrderedDescending}, // units, not characters
                    Order{std::u16string(1000, u'x') + u"a", std::u16string(1000, u'x') + u"b",
                          NSComparisonResult::NSOrderedAscending},
                    Order{std::u16string(64, u'x'), std::u16string(64, u'x'), NSComparisonResult::NSOrderedSame},
                    Order{std::u16string(64, u'x'), std::u16string(65, u'x'), NSComparisonResult::NSOrderedAscending}));

TEST(NSString, EqualStringsHaveEqualHashes) {
    EXPECT_EQ(NSString("text").hash(), NSString(u"text"sv).hash());
    EXPECT_EQ(NSString("text").hash(), NSString::fromUTF32(L"text")->hash());
    EXPECT_EQ(NSString("text").hash(), NSString::fromUTF32NoCopy(L"text")->hash());
    EXPECT_EQ(NSString().hash(), NSString("").hash());
    const NSString string("text");
    EXPECT_EQ(string.hash(), string.hash()) << "the second one comes from memory";
}

TEST(NSString, HashTellsTextsApart) {
    std::unordered_set<std::size_t> hashes;
    for (std::int64_t number = 0; number < 10000; ++number) {
        hashes.insert(NSString::fromInteger(number).hash());
    }
    EXPECT_EQ(hashes.size(), 10000U);
}

TEST(NSString, SubstringStopsAtTheEnd) {
    const NSString string("abcdef");
    EXPECT_EQ(string.substringFromIndex(2), "cdef");
    EXPECT_EQ(string.substringFromIndex(6), "");
    EXPECT_EQ(string.substringFromIndex(7), "");
    EXPECT_EQ(string.substringToIndex(0), "");
    EXPECT_EQ(string.substringToIndex(2), "ab");
    EXPECT_EQ(string.substringToIndex(100), "abcdef");
    EXPECT_EQ(string.substring(2, 3), "cde");
    EXPECT_EQ(string.substring(4, 100), "ef");
    EXPECT_EQ(string.substring(2, 0), "");
    EXPECT_EQ(string.substring(6, 1), "");
    EXPECT_EQ(string.substring(3, std::numeric_limits<std::size_t>::max()), "def");
}

TEST(NSString, WholeSubstringSharesTheStorage) {
    const NSString string("abcdef");
    EXPECT_EQ(string.substringFromIndex(0).storage(), string.storage());
    EXPECT_EQ(string.substringToIndex(6).storage(), string.storage());
}

TEST(NSString, SubstringMayPartAPair) {
    EXPECT_EQ(NSString("\U0001F600").substringToIndex(1).units(), std::u16string(1, 0xD83D));
}

TEST(NSString, SumIsBothTexts) {
    EXPECT_EQ(NSString("ab") + NSString("cd"), "abcd");
    EXPECT_EQ(NSString() + NSString("cd"), "cd");
    EXPECT_EQ(NSString("ab") + NSString(), "ab");
}

TEST(NSMutableString, AppendsInOrder) {
    NSMutableString string;
    EXPECT_EQ(string.copy(), "");
    string.append("a").append(u'b').append(std::u16string_view(u"cd"));
    EXPECT_EQ(string.length(), 4U);
    EXPECT_EQ(string.units(), u"abcd");
    const NSString before = string.copy();
    string.append("e");
    EXPECT_EQ(before, "abcd");
    EXPECT_EQ(string.copy(), "abcde");
}

TEST(NSString, JoinsPieces) {
    EXPECT_EQ(NSString::concatenated({u"a", u"", u"bc", u"d"}), "abcd");
    EXPECT_EQ(NSString::concatenated({u"alone"}), "alone");
    EXPECT_EQ(NSString::concatenated({u"", u""}).storage(), NSString().storage());
    EXPECT_EQ(NSString::concatenated({}).storage(), NSString().storage());
}

} // namespace
} // namespace qk
