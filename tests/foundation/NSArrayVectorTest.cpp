// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSArray+Vector.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

using namespace qk::NSArray_Vector;

namespace qk {
namespace {

using Strings = std::vector<std::wstring>;
using Integers = std::vector<std::int32_t>;
using UnsignedIntegers = std::vector<std::uint32_t>;
using Bools = std::vector<bool>;

const NSArray& mixed() {
    static const NSArray array{"a", 1, NSNull{}, true, NSArray{"inner"}, "b", 2.9, NSDictionary{}, NSData("x")};
    return array;
}

NSURL url(const NSString& text) {
    return NSURL::URLWithString(text).value();
}

TEST(NSArrayVector, NothingGivesEmptyVectors) {
    EXPECT_EQ(stringVectorFrom(std::nullopt), Strings());
    EXPECT_EQ(unsignedIntegerVectorWithArray(std::nullopt), UnsignedIntegers());
}

TEST(NSArrayVector, EmptyGivesEmpty) {
    EXPECT_EQ(arrayWithStringVector({}), NSArray());
    EXPECT_EQ(arrayWithIntegerVector({}), NSArray());
    EXPECT_EQ(arrayWithUnsignedIntegerVector({}), NSArray());
    EXPECT_EQ(arrayWithBoolVector({}), NSArray());
    EXPECT_EQ(stringVector({}), Strings());
    EXPECT_EQ(stringVectorFrom(NSArray()), Strings());
    EXPECT_EQ(integerVector({}), Integers());
    EXPECT_EQ(unsignedIntegerVectorWithArray(NSArray()), UnsignedIntegers());
    EXPECT_EQ(boolVector({}), Bools());
    EXPECT_EQ(stringVectorFromFileURLs({}), Strings());
}

TEST(NSArrayVector, ReadersTakeTheElementsOfTheirKindInOrder) {
    EXPECT_EQ(stringVector(mixed()), (Strings{L"a", L"b"}));
    EXPECT_EQ(stringVectorFrom(mixed()), (Strings{L"a", L"b"}));
    EXPECT_EQ(integerVector(mixed()), (Integers{1, 1, 2}));
    EXPECT_EQ(unsignedIntegerVectorWithArray(mixed()), (UnsignedIntegers{1, 1, 2}));
    EXPECT_EQ(boolVector(mixed()), (Bools{true, true, true}));
}

TEST(NSArrayVector, ArrayWithoutElementsOfTheKindGivesAnEmptyVector) {
    EXPECT_EQ(integerVector({"1", NSNull{}}), Integers())
        << "a text of digits is no number, and nor is the null marker";
    EXPECT_EQ(stringVector({1, NSNull{}}), Strings());
}

TEST(NSArrayVector, StringsAreConvertedAsWideStringsAre) {
    const Strings wide{L"plain", std::wstring(L"cut\0here", 8), L"", std::wstring(1, static_cast<wchar_t>(0xD800)),
                       L"\U0001F600"};
    EXPECT_EQ(arrayWithStringVector(wide), (NSArray{"plain", "cut", "", "", NSString(u"\U0001F600")}))
        << "a malformed one is \"\", not a gap";
    EXPECT_EQ(stringVector({NSString(std::u16string_view(u"z\0z", 3)), NSString(u"\xD800"), NSString(u"\U0001F600")}),
              (Strings{std::wstring(L"z\0z", 3), L"", L"\U0001F600"}));
}

TEST(NSArrayVector, StringsAreNotComposed) {
    EXPECT_EQ(stringVector({NSString(u"e\u0301")}), (Strings{L"e\u0301"}));
}

TEST(NSArrayVector, WiderNumbersAreCutTo32Bits) {
    EXPECT_EQ(
        integerVector({4294967296, 4294967297, 2147483648, -2147483649, -1.9, 2.9}),
        (Integers{0, 1, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(), -1, 2}));
    EXPECT_EQ(unsignedIntegerVectorWithArray(NSArray{4294967296, 4294967297, -1}),
              (UnsignedIntegers{0, 1, 4294967295}));
}

TEST(NSArrayVector, UnsignedNumbersStayUnsigned) {
    const NSArray array = arrayWithUnsignedIntegerVector({4294967295});
    EXPECT_EQ(array, NSArray{4294967295});
    EXPECT_EQ(array[0].as<NSNumber>()->integerValue(), 4294967295);
}

TEST(NSArrayVector, EveryNumberButZeroIsTrue) {
    EXPECT_EQ(boolVector({0, 1, -1, 0.5, 256, 4294967296, 0.0, -0.0, false, true}),
              (Bools{false, true, true, true, true, true, false, false, false, true}));
}

TEST(NSArrayVector, BoolVectorMakesBooleans) {
    const NSArray array = arrayWithBoolVector({true, false});
    EXPECT_TRUE(array[0].as<NSNumber>()->isBoolean());
    EXPECT_EQ(array, (NSArray{true, false}));
}

TEST(NSArrayVector, BoolVectorOf65BitsComesBackUnchanged) {
    Bools bits(65);
    for (std::size_t index = 0; index < bits.size(); ++index) {
        bits[index] = index % 3 == 0;
    }
    EXPECT_EQ(arrayWithBoolVector(bits).count(), 65U);
    EXPECT_EQ(boolVector(arrayWithBoolVector(bits)), bits);
}

TEST(NSArrayVector, PathsOfFileURLsAreComposed) {
    EXPECT_EQ(
        stringVectorFromFileURLs({NSURL::fileURLWithPath(NSString(u"/tmp/e\u0301")).value(), url("file:///a%20b/")}),
        (Strings{L"/tmp/\u00E9", L"/a b"}));
}

TEST(NSArrayVector, URLWithoutPathGivesTheEmptyWideString) {
    EXPECT_EQ(stringVectorFromFileURLs({url("mailto:someone"), url("http://host"), url("file:///%FF")}),
              (Strings{L"", L"", L""}));
}

TEST(NSArrayVector, ElementThatIsNoURLFails) {
    EXPECT_THROW(static_cast<void>(stringVectorFromFileURLs({url("file:///a"), "/b"})), NSInvalidArgumentException);
    EXPECT_THROW(static_cast<void>(stringVectorFromFileURLs({NSNull{}})), NSInvalidArgumentException);
}

RC_GTEST_PROP(NSArrayVector, NumbersComeBackUnchanged,
              (const Integers& integers, const UnsignedIntegers& unsignedIntegers, const Bools& bools)) {
    RC_ASSERT(integerVector(arrayWithIntegerVector(integers)) == integers);
    RC_ASSERT(unsignedIntegerVectorWithArray(arrayWithUnsignedIntegerVector(unsignedIntegers)) == unsignedIntegers);
    RC_ASSERT(boolVector(arrayWithBoolVector(bools)) == bools);
}

} // namespace
} // namespace qk
