// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSDateFormatter+UTC.h"
#include "QKFoundation/foundation/NSNull+Sanity.h"
#include "QKFoundation/foundation/NSNumber+ReverseComparing.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace qk {
namespace {

using NSDateFormatter_UTC::utcStringFromDate;
using NSNumber_ReverseComparing::reverseCompare;

NSString utc(double seconds) {
    return utcStringFromDate(*NSDateFormatter::init(), NSDate::dateWithTimeIntervalSince1970(seconds));
}

TEST(NSDateFormatterUTC, HourIsRoundedDown) {
    EXPECT_EQ(utc(1479269100), "20161116T04"); // 04:05
    EXPECT_EQ(utc(1479268799.999), "20161116T03");
    EXPECT_EQ(utc(0), "19700101T00");
    EXPECT_EQ(utc(-0.5), "19691231T23");
}

TEST(NSDateFormatterUTC, FormatterStaysChanged) {
    const auto formatter = NSDateFormatter::init();
    formatter->setTimeZone(NSTimeZone::fixed("x", 3600, std::nullopt));
    formatter->setDateFormat("yyyy");
    const NSDate date = NSDate::dateWithTimeIntervalSince1970(1479269100);
    EXPECT_EQ(utcStringFromDate(*formatter, date), "20161116T04");
    EXPECT_EQ(formatter->timeZone().name(), "UTC");
    EXPECT_EQ(formatter->dateFormat(), "yyyyMMdd'T'HH");
    EXPECT_EQ(formatter->formatterBehavior(), NSDateFormatterBehavior::Behavior10_4);
    EXPECT_EQ(formatter->stringFromDate(date), "20161116T04");
}

TEST(NSNullSanity, AnswersWithZero) {
    EXPECT_EQ(NSNull_Sanity::sizeValue({}).width, 0);
    EXPECT_EQ(NSNull_Sanity::sizeValue({}).height, 0);
    EXPECT_EQ(NSNull_Sanity::floatValue({}), 0.0F);
    EXPECT_FALSE(NSNull_Sanity::boolValue({}));
    EXPECT_EQ(NSNull_Sanity::intValue({}), 0);
}

TEST(NSNumberReverseComparing, OperandsAreSwapped) {
    using enum NSComparisonResult;
    EXPECT_EQ(reverseCompare(NSNumber(1), NSNumber(2)), NSOrderedDescending);
    EXPECT_EQ(reverseCompare(NSNumber(2), NSNumber(1)), NSOrderedAscending);
    EXPECT_EQ(reverseCompare(NSNumber(true), NSNumber(1)), NSOrderedSame);
    EXPECT_EQ(reverseCompare(NSNumber(-0.0), NSNumber(0)), NSOrderedSame);
    EXPECT_EQ(reverseCompare(NSNumber(1.5), NSNumber(1)), NSOrderedAscending);
    EXPECT_EQ(reverseCompare(NSNumber(std::numeric_limits<std::uint64_t>::max()), NSNumber(-1)), NSOrderedAscending);
}

TEST(NSNumberReverseComparing, SortsFromTheLargestToTheSmallest) {
    std::vector<NSNumber> numbers{NSNumber(1), NSNumber(2.5), NSNumber(-3), NSNumber(true), NSNumber(10)};
    std::ranges::stable_sort(numbers, [](const NSNumber& left, const NSNumber& right) {
        return reverseCompare(left, right) == NSComparisonResult::NSOrderedAscending;
    });
    EXPECT_EQ(numbers, (std::vector<NSNumber>{NSNumber(10), NSNumber(2.5), NSNumber(1), NSNumber(true), NSNumber(-3)}));
}

} // namespace
} // namespace qk
