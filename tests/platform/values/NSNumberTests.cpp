// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSNumber.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace qk {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::uint64_t kMaxUnsigned = std::numeric_limits<std::uint64_t>::max();
constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr double kTwoTo64 = 18446744073709551616.0;

TEST(NSNumber, RemembersItsKind) {
    EXPECT_EQ(NSNumber(true).kind(), NSNumber::Kind::Boolean);
    EXPECT_EQ(NSNumber('a').kind(), NSNumber::Kind::Integer);
    EXPECT_EQ(NSNumber(-1).kind(), NSNumber::Kind::Integer);
    EXPECT_EQ(NSNumber(4294967295U).kind(), NSNumber::Kind::Integer);
    EXPECT_EQ(NSNumber(std::uint64_t{1}).kind(), NSNumber::Kind::Integer) << "a signed one can hold it";
    EXPECT_EQ(NSNumber(static_cast<std::uint64_t>(kMax)).kind(), NSNumber::Kind::Integer);
    EXPECT_EQ(NSNumber(static_cast<std::uint64_t>(kMax) + 1).kind(), NSNumber::Kind::UnsignedInteger);
    EXPECT_EQ(NSNumber(1.0F).kind(), NSNumber::Kind::Floating);
    EXPECT_EQ(NSNumber(1.0).kind(), NSNumber::Kind::Floating);
    EXPECT_TRUE(NSNumber(false).isBoolean());
    EXPECT_FALSE(NSNumber(0).isBoolean());
    EXPECT_TRUE(NSNumber(0.0).isFloating());
    EXPECT_FALSE(NSNumber(0).isFloating());
}

struct Readings {
    NSNumber number;
    bool boolValue;
    std::int32_t intValue;
    std::uint32_t unsignedIntValue;
    std::int64_t integerValue;
    std::uint64_t unsignedIntegerValue;
    double doubleValue;
};

class NSNumberReadings : public testing::TestWithParam<Readings> {};

TEST_P(NSNumberReadings, FollowFromTheValue) {
    const Readings& expected = GetParam();
    EXPECT_EQ(expected.number.boolValue(), expected.boolValue);
    EXPECT_EQ(expected.number.intValue(), expected.intValue);
    EXPECT_EQ(expected.number.unsignedIntValue(), expected.unsignedIntValue);
    EXPECT_EQ(expected.number.integerValue(), expected.integerValue);
    EXPECT_EQ(expected.number.unsignedIntegerValue(), expected.unsignedIntegerValue);
    if (std::isnan(expected.doubleValue)) {
        EXPECT_TRUE(std::isnan(expected.number.doubleValue()));
    } else {
        EXPECT_EQ(expected.number.doubleValue(), expected.doubleValue);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Integers, NSNumberReadings,
    testing::Values(Readings{NSNumber(false), false, 0, 0, 0, 0, 0}, Readings{NSNumber(true), true, 1, 1, 1, 1, 1},
                    Readings{NSNumber(0), false, 0, 0, 0, 0, 0},
                    Readings{NSNumber(-1), true, -1, 4294967295U, -1, kMaxUnsigned, -1},
                    Readings{NSNumber(256), true, 256, 256, 256, 256, 256},
                    Readings{NSNumber(4294967295U), true, -1, 4294967295U, 4294967295, 4294967295U, 4294967295.0},
                    Readings{NSNumber(4294967296), true, 0, 0, 4294967296, 4294967296U, 4294967296.0},
                    Readings{NSNumber(4294967297), true, 1, 1, 4294967297, 4294967297U, 4294967297.0},
                    Readings{NSNumber(2147483648), true, std::numeric_limits<std::int32_t>::min(), 2147483648U,
                             2147483648, 2147483648U, 2147483648.0},
                    Readings{NSNumber(kMax), true, -1, 4294967295U, kMax, kMaxUnsigned / 2, kTwoTo63},
                    Readings{NSNumber(kMin), true, 0, 0, kMin, kMaxUnsigned / 2 + 1, -kTwoTo63},
                    Readings{NSNumber(kMaxUnsigned), true, -1, 4294967295U, -1, kMaxUnsigned, kTwoTo64},
                    Readings{NSNumber(kMaxUnsigned / 2 + 1), true, 0, 0, kMin, kMaxUnsigned / 2 + 1, kTwoTo63}));

INSTANTIATE_TEST_SUITE_P(
    Floating, NSNumberReadings,
    testing::Values(Readings{NSNumber(0.0), false, 0, 0, 0, 0, 0}, Readings{NSNumber(-0.0), false, 0, 0, 0, 0, 0},
                    Readings{NSNumber(0.5), true, 0, 0, 0, 0, 0.5}, Readings{NSNumber(-0.5), true, 0, 0, 0, 0, -0.5},
                    Readings{NSNumber(2.9), true, 2, 2, 2, 2, 2.9},
                    Readings{NSNumber(-2.9), true, -2, 4294967294U, -2, kMaxUnsigned - 1, -2.9},
                    Readings{NSNumber(3e9), true, -1294967296, 3000000000U, 3000000000, 3000000000U, 3e9},
                    Readings{NSNumber(kNaN), true, 0, 0, 0, 0, kNaN},
                    Readings{NSNumber(kInfinity), true, -1, 4294967295U, kMax, kMaxUnsigned, kInfinity},
                    Readings{NSNumber(-kInfinity), true, 0, 0, kMin, kMaxUnsigned / 2 + 1, -kInfinity},
                    Readings{NSNumber(1e300), true, -1, 4294967295U, kMax, kMaxUnsigned, 1e300},
                    Readings{NSNumber(-1e300), true, 0, 0, kMin, kMaxUnsigned / 2 + 1, -1e300},
                    Readings{NSNumber(kTwoTo63), true, -1, 4294967295U, kMax, kMaxUnsigned / 2 + 1, kTwoTo63},
                    Readings{NSNumber(1e19), true, -1, 4294967295U, kMax, 10000000000000000000U, 1e19}));

struct Shown {
    NSNumber number;
    NSString text;
};

class NSNumberText : public testing::TestWithParam<Shown> {};

TEST_P(NSNumberText, HasUpToSixteenDigits) {
    EXPECT_EQ(GetParam().number.stringValue(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, NSNumberText,
    testing::Values(Shown{NSNumber(false), "0"}, Shown{NSNumber(true), "1"}, Shown{NSNumber(0), "0"},
                    Shown{NSNumber(-67038), "-67038"}, Shown{NSNumber(kMin), "-9223372036854775808"},
                    Shown{NSNumber(kMaxUnsigned), "18446744073709551615"}, Shown{NSNumber(0.0), "0"},
                    Shown{NSNumber(-0.0), "-0"}, Shown{NSNumber(1.0), "1"}, Shown{NSNumber(100.0), "100"},
                    Shown{NSNumber(0.1), "0.1"}, Shown{NSNumber(-2.5), "-2.5"},
                    Shown{NSNumber(1.0 / 3), "0.3333333333333333"}, Shown{NSNumber(0.1 + 0.2), "0.3"},
                    Shown{NSNumber(1e15), "1000000000000000"}, Shown{NSNumber(1e16), "1e+16"},
                    Shown{NSNumber(1e20), "1e+20"}, Shown{NSNumber(1e-4), "0.0001"}, Shown{NSNumber(1e-5), "1e-05"},
                    Shown{NSNumber(1.7976931348623157e308), "1.797693134862316e+308"},
                    Shown{NSNumber(5e-324), "4.940656458412465e-324"}, Shown{NSNumber(kInfinity), "inf"},
                    Shown{NSNumber(-kInfinity), "-inf"}, Shown{NSNumber(kNaN), "nan"}, Shown{NSNumber(-kNaN), "nan"}));

/// In ascending order; those of one row are equal to each other.
const std::vector<std::vector<NSNumber>>& ladder() {
    static const std::vector<std::vector<NSNumber>> rows = {
        {NSNumber(kNaN), NSNumber(-kNaN)},
        {NSNumber(-kInfinity)},
        {NSNumber(-1e300)},
        {NSNumber(std::nextafter(-kTwoTo63, -kInfinity))},
        {NSNumber(kMin), NSNumber(-kTwoTo63)},
        {NSNumber(kMin + 1)},
        {NSNumber(-9007199254740993)},
        {NSNumber(-9007199254740992.0), NSNumber(-9007199254740992)},
        {NSNumber(-1.5)},
        {NSNumber(-1), NSNumber(-1.0)},
        {NSNumber(-0.5)},
        {NSNumber(-5e-324)},
        {NSNumber(0), NSNumber(0.0), NSNumber(-0.0), NSNumber(false), NSNumber(std::uint64_t{0})},
        {NSNumber(5e-324)},
        {NSNumber(0.5)},
        {NSNumber(1), NSNumber(1.0), NSNumber(true), NSNumber(1.0F)},
        {NSNumber(1.5)},
        {NSNumber(9007199254740992), NSNumber(9007199254740992.0)},
        {NSNumber(9007199254740993)}, // no double has this value
        {NSNumber(9007199254740994), NSNumber(9007199254740994.0)},
        {NSNumber(std::nextafter(kTwoTo63, 0))},
        {NSNumber(kMax)}, // the nearest double is 2^63, which is another number
        {NSNumber(kTwoTo63), NSNumber(kMaxUnsigned / 2 + 1)},
        {NSNumber(kMaxUnsigned / 2 + 2)},
        {NSNumber(std::nextafter(kTwoTo64, 0))},
        {NSNumber(kMaxUnsigned)},
        {NSNumber(kTwoTo64)},
        {NSNumber(1e300)},
        {NSNumber(kInfinity)}};
    return rows;
}

TEST(NSNumber, OrderGoesByValueWhateverTheKind) {
    for (std::size_t low = 0; low < ladder().size(); ++low) {
        for (std::size_t high = 0; high < ladder().size(); ++high) {
            const auto expected = low < high    ? NSComparisonResult::NSOrderedAscending
                                  : low == high ? NSComparisonResult::NSOrderedSame
                                                : NSComparisonResult::NSOrderedDescending;
            for (const NSNumber& left : ladder()[low]) {
                for (const NSNumber& right : ladder()[high]) {
                    EXPECT_EQ(left.compare(right), expected)
                        << testing::PrintToString(left) << " and " << testing::PrintToString(right);
                    EXPECT_EQ(left == right, low == high);
                }
            }
        }
    }
}

TEST(NSNumber, EqualNumbersHaveEqualHashes) {
    for (const auto& row : ladder()) {
        for (const NSNumber& number : row) {
            EXPECT_EQ(number.hash(), row.front().hash()) << testing::PrintToString(number);
        }
    }
}

} // namespace
} // namespace qk
