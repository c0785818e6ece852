// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSDate.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace qk {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

NSDate at(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

TEST(NSDate, KeepsTheSecondsExactly) {
    for (const double seconds : {0.0, -0.0, 0.1, 1479269100.123456789, -1e-300, 1e300, kInfinity, -kInfinity, kNaN}) {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(at(seconds).timeIntervalSince1970()),
                  std::bit_cast<std::uint64_t>(seconds));
    }
}

struct Shown {
    double seconds;
    NSString text;
};

class NSDateText : public testing::TestWithParam<Shown> {};

TEST_P(NSDateText, IsInUTCWithoutFraction) {
    EXPECT_EQ(at(GetParam().seconds).description(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Moments, NSDateText,
    testing::Values(Shown{0, "1970-01-01 00:00:00 +0000"}, Shown{1479269100, "2016-11-16 04:05:00 +0000"},
                    Shown{1479269100.999, "2016-11-16 04:05:00 +0000"}, Shown{-1, "1969-12-31 23:59:59 +0000"},
                    Shown{-0.25, "1969-12-31 23:59:59 +0000"}, Shown{951782400, "2000-02-29 00:00:00 +0000"},
                    Shown{4107542399, "2100-02-28 23:59:59 +0000"}, Shown{4107542400, "2100-03-01 00:00:00 +0000"},
                    Shown{2147483648, "2038-01-19 03:14:08 +0000"}, Shown{-62135596800, "0001-01-01 00:00:00 +0000"},
                    Shown{64092211200, "4001-01-01 00:00:00 +0000"}, Shown{253402300799, "9999-12-31 23:59:59 +0000"},
                    Shown{253402300799.75, "9999-12-31 23:59:59 +0000"}));

INSTANTIATE_TEST_SUITE_P(OutsideOfTheCalendar, NSDateText,
                         testing::Values(Shown{253402300800, "253402300800"}, Shown{-62135596801, "-62135596801"},
                                         Shown{1e300, "1e+300"}, Shown{-1e300, "-1e+300"}, Shown{kInfinity, "inf"},
                                         Shown{-kInfinity, "-inf"}, Shown{kNaN, "nan"}));

TEST(NSDate, OrderIsThatOfTheTime) {
    const double ascending[] = {kNaN, -kInfinity, -1e300, -1, 0, 1e-300, 1, 1479269100, kInfinity};
    for (std::size_t low = 0; low < std::size(ascending); ++low) {
        for (std::size_t high = 0; high < std::size(ascending); ++high) {
            EXPECT_EQ(at(ascending[low]) <=> at(ascending[high]), std::weak_ordering(low <=> high));
            EXPECT_EQ(at(ascending[low]) == at(ascending[high]), low == high);
        }
    }
}

TEST(NSDate, EqualDatesHaveEqualHashes) {
    EXPECT_EQ(at(0.0), at(-0.0));
    EXPECT_EQ(at(0.0).hash(), at(-0.0).hash());
    EXPECT_EQ(at(kNaN), at(-kNaN));
    EXPECT_EQ(at(kNaN).hash(), at(-kNaN).hash());
    EXPECT_NE(at(1).hash(), at(2).hash());
}

} // namespace
} // namespace qk
