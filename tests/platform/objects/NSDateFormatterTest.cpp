// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSDateFormatter.h"

#include "QKFoundation/platform/objects/ClassDescription.h"

#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace qk {
namespace {

constexpr double kMoment = 1479269105.123; // Wednesday, 2016-11-16 04:05:05.123 UTC

NSString shown(const char* pattern, double seconds = kMoment, const NSTimeZone& zone = NSTimeZone::UTC()) {
    const auto formatter = NSDateFormatter::init();
    formatter->setDateFormat(text(pattern));
    formatter->setTimeZone(zone);
    return formatter->stringFromDate(NSDate::dateWithTimeIntervalSince1970(seconds));
}

TEST(NSDateFormatter, WithoutAPatternItShowsNothing) {
    EXPECT_EQ(shown(""), "");
    EXPECT_EQ(NSDateFormatter::init()->timeZone(), NSTimeZone::UTC());
    EXPECT_EQ(NSDateFormatter::init()->formatterBehavior(), NSDateFormatterBehavior::Default);
}

TEST(NSDateFormatter, FieldsOfTheCalendar) {
    EXPECT_EQ(shown("y yy yyyy yyyyyy"), "2016 16 2016 002016");
    EXPECT_EQ(shown("M MM MMM MMMM MMMMM"), "11 11 Nov November N");
    EXPECT_EQ(shown("d dd ddd"), "16 16 016");
    EXPECT_EQ(shown("E EE EEE EEEE EEEEE EEEEEE"), "Wed Wed Wed Wednesday W We");
    EXPECT_EQ(shown("d", 0), "1");
    EXPECT_EQ(shown("yyyy-MM-dd", -1), "1969-12-31");
}

TEST(NSDateFormatter, FieldsOfTheClock) {
    EXPECT_EQ(shown("H HH m mm s ss"), "4 04 5 05 5 05");
    EXPECT_EQ(shown("S SS SSS SSSSS"), "1 12 123 12300");
    const double midnight = 1479254400;
    EXPECT_EQ(shown("h K H k a", midnight), "12 0 0 24 AM");
    EXPECT_EQ(shown("h K H k a", midnight + 12 * 3600), "12 0 12 12 PM");
    EXPECT_EQ(shown("h K H k a", midnight + 13 * 3600), "1 1 13 13 PM");
    EXPECT_EQ(shown("h K H k a", midnight + 23 * 3600), "11 11 23 23 PM");
}

TEST(NSDateFormatter, EveryFieldIsRoundedDown) {
    EXPECT_EQ(shown("HH:mm:ss.SSS", -0.5), "23:59:59.500");
    EXPECT_EQ(shown("HH:mm:ss.SSS", -0.0001), "23:59:59.999");
    EXPECT_EQ(shown("HH:mm:ss.SSS", 0.9999), "00:00:00.999");
}

TEST(NSDateFormatter, QuotedTextAndOtherMarksStandForThemselves) {
    EXPECT_EQ(shown("yyyyMMdd'T'HH"), "20161116T04");
    EXPECT_EQ(shown("h 'o''clock' a"), "4 o'clock AM");
    EXPECT_EQ(shown("''yy''"), "'16'");
    EXPECT_EQ(shown("'open yy"), "open yy");
    EXPECT_EQ(shown("yy'T'"), "16T");
    EXPECT_EQ(shown("yy'"), "16");
    EXPECT_EQ(shown("\u00E9.-/: 5"), "\u00E9.-/: 5");
}

TEST(NSDateFormatter, OtherLettersGiveNothing) {
    EXPECT_EQ(shown("[bbQQw]"), "[]");
}

TEST(NSDateFormatter, ZoneIsShownByNameAndOffset) {
    const NSTimeZone berlin = NSTimeZone::timeZoneWithRule("Europe/Berlin", "CET-1CEST,M3.5.0,M10.5.0/3").value();
    EXPECT_EQ(shown("HH z zzzz Z ZZZZ ZZZZZ", kMoment, berlin), "05 CET GMT+01:00 +0100 GMT+01:00 +01:00");
    EXPECT_EQ(shown("HH z", 1459040400, berlin), "03 CEST");
    EXPECT_EQ(shown("z Z ZZZZ ZZZZZ"), "UTC +0000 GMT Z");
    EXPECT_EQ(shown("z Z", 0, NSTimeZone::fixed("x", -12600, std::nullopt)), "GMT-03:30 -0330");
    EXPECT_EQ(shown("Z", 0, NSTimeZone::fixed("x", -59, std::nullopt)), "-0000");
}

TEST(NSDateFormatter, MomentsOutsideOfTheCalendarGiveNothing) {
    const NSTimeZone west = NSTimeZone::fixed("x", -3600, std::nullopt);
    EXPECT_EQ(shown("y", -62135596800), "1");
    EXPECT_EQ(shown("y", -62135596801), "");
    EXPECT_EQ(shown("y", -62135596800, west), "");
    EXPECT_EQ(shown("y", 253402300799), "9999");
    EXPECT_EQ(shown("y", 253402300800), "");
    EXPECT_EQ(shown("y", 253402300800, west), "9999");
    for (const double seconds :
         {1e18, -1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(shown("y", seconds), "");
    }
    // As far away as a zone can be, and where the year would come out as one of the calendar's again.
    for (const std::int64_t offset : {std::numeric_limits<std::int64_t>::max(),
                                      std::numeric_limits<std::int64_t>::min(), std::int64_t{-999'000'000'000}}) {
        EXPECT_EQ(shown("y", -999e9, NSTimeZone::fixed("x", offset, std::nullopt)), "") << offset;
    }
}

TEST(NSDateFormatter, ShowsDatesAndNothingElse) {
    const auto formatter = NSDateFormatter::init();
    formatter->setDateFormat("yyyy");
    EXPECT_EQ(formatter->stringForObjectValue(std::nullopt), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue(Value(1)), std::nullopt);
    EXPECT_EQ(formatter->stringForObjectValue(Value(NSDate::dateWithTimeIntervalSince1970(kMoment))), "2016");
}

TEST(NSDateFormatter, IsAFormatter) {
    EXPECT_TRUE(NSDateFormatter::init()->isKindOfClass(NSFormatter::describedClass()));
    EXPECT_EQ(NSDateFormatter::init()->classDescription().name(), "NSDateFormatter");
}

} // namespace
} // namespace qk
