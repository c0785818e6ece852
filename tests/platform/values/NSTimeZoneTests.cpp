// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSTimeZone.h"

#include "tests/platform/values/Printing.h"
#include "tests/platform/values/ZoneBytes.h"

#include <gtest/gtest.h>

#include <limits>

namespace qk {
namespace {

using tests::ZoneBytes;

NSDate at(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

std::optional<NSTimeZone> read(const std::string& bytes) {
    return NSTimeZone::timeZoneWithName("Europe/Berlin", bytes);
}

// Offset, abbreviation and whether daylight-saving time holds, in one text.
std::string told(const NSTimeZone& zone, double seconds) {
    const NSDate date = at(seconds);
    return zone.abbreviationForDate(date).value_or("none").utf8Lossy() + " " +
           std::to_string(zone.secondsFromGMTForDate(date)) +
           (zone.isDaylightSavingTimeForDate(date) ? " daylight" : "");
}

TEST(NSTimeZone, NoBytesAreNoZone) {
    EXPECT_EQ(read(""), std::nullopt);
    EXPECT_EQ(read("TZif"), std::nullopt);
    EXPECT_EQ(read("not a zone file, but longer than the header of one"), std::nullopt);
}

TEST(NSTimeZone, UTCHasNoOffset) {
    EXPECT_EQ(NSTimeZone::UTC().name(), "UTC");
    EXPECT_EQ(told(NSTimeZone::UTC(), 1e9), "UTC 0");
}

TEST(NSTimeZone, ZoneWithoutAbbreviationHasNone) {
    EXPECT_EQ(NSTimeZone::fixed("x", 19800, std::nullopt).abbreviationForDate(at(0)), std::nullopt);
    EXPECT_EQ(NSTimeZone::fixed("x", 19800, NSString()).abbreviationForDate(at(0)), std::nullopt);
    EXPECT_EQ(told(NSTimeZone::fixed("x", -59, NSString("ABC")), 0), "ABC -59");
}

TEST(NSTimeZone, ZonesOfOneNameAreEqual) {
    EXPECT_EQ(NSTimeZone::fixed("x", 1, std::nullopt), NSTimeZone::fixed("x", 2, NSString("Y")));
    EXPECT_NE(NSTimeZone::fixed("x", 1, std::nullopt), NSTimeZone::fixed("y", 1, std::nullopt));
}

TEST(NSTimeZone, OffsetsMakeNamesAndAreRoundedToTheMinute) {
    const struct {
        std::int64_t seconds;
        std::int64_t offset;
        const char* name;
    } rows[] = {{0, 0, "GMT"},
                {29, 0, "GMT"},
                {-29, 0, "GMT"},
                {30, 60, "GMT+0001"},
                {-30, -60, "GMT-0001"},
                {19800, 19800, "GMT+0530"},
                {19811, 19800, "GMT+0530"},
                {-12600, -12600, "GMT-0330"},
                {64800, 64800, "GMT+1800"},
                {-64800, -64800, "GMT-1800"}};
    for (const auto& row : rows) {
        const auto zone = NSTimeZone::timeZoneForSecondsFromGMT(row.seconds);
        ASSERT_TRUE(zone.has_value()) << row.seconds;
        EXPECT_EQ(zone->name(), text(row.name)) << row.seconds;
        EXPECT_EQ(zone->secondsFromGMTForDate(at(0)), row.offset);
        EXPECT_EQ(zone->abbreviationForDate(at(0)), text(row.name));
    }
}

TEST(NSTimeZone, OffsetsBeyondEighteenHoursAreNoZone) {
    for (const std::int64_t seconds :
         {std::int64_t{64801}, std::int64_t{-64801}, std::numeric_limits<std::int64_t>::max(),
          std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_EQ(NSTimeZone::timeZoneForSecondsFromGMT(seconds), std::nullopt) << seconds;
    }
}

TEST(NSTimeZone, FilesOfEveryVersionAreRead) {
    for (const std::string& bytes :
         {ZoneBytes::berlin().version2(), ZoneBytes::berlin().version2('3'), ZoneBytes::berlin().version2('4')}) {
        const auto zone = read(bytes);
        ASSERT_TRUE(zone.has_value());
        EXPECT_EQ(zone->name(), "Europe/Berlin");
        EXPECT_EQ(told(*zone, -1e12), "LMT 3208");
        EXPECT_EQ(told(*zone, -2422054409), "LMT 3208");
        EXPECT_EQ(told(*zone, -2422054408), "CET 3600");
        EXPECT_EQ(told(*zone, 1459040399.999), "CET 3600");
        EXPECT_EQ(told(*zone, 1459040400), "CEST 7200 daylight");
        EXPECT_EQ(told(*zone, 1477789199), "CEST 7200 daylight");
        EXPECT_EQ(told(*zone, 1490489999), "CET 3600") << "behind the last transition the rule holds";
        EXPECT_EQ(told(*zone, 1490490000), "CEST 7200 daylight");
        EXPECT_EQ(told(*zone, 1509238800), "CET 3600");
    }
    ZoneBytes old = ZoneBytes::berlin();
    old.transitions.front().first = -2147483648;
    const auto zone = read(old.version1());
    ASSERT_TRUE(zone.has_value());
    EXPECT_EQ(told(*zone, -2147483649), "LMT 3208");
    EXPECT_EQ(told(*zone, -2147483648), "CET 3600");
    EXPECT_EQ(told(*zone, 4e9), "CET 3600") << "the last transition holds for ever";
}

TEST(NSTimeZone, FileWithoutTransitionsFollowsItsRule) {
    ZoneBytes bytes;
    bytes.times = {{10800, false, 0}};
    bytes.names = std::string("+03\0", 4);
    bytes.footer = "<+03>-3";
    EXPECT_EQ(told(read(bytes.version2()).value(), 0), "+03 10800");
    bytes.footer.clear();
    EXPECT_EQ(told(read(bytes.version2()).value(), 0), "+03 10800");
}

TEST(NSTimeZone, IndicatorsAndLeapSecondsAreSkipped) {
    ZoneBytes bytes = ZoneBytes::berlin();
    bytes.indicators = 3;
    bytes.leapSeconds = 2;
    EXPECT_EQ(told(read(bytes.version2()).value(), 1459040400), "CEST 7200 daylight");
}

TEST(NSTimeZone, MomentsBeyondEveryCalendarAreAnswered) {
    const NSTimeZone zone = read(ZoneBytes::berlin().version2()).value();
    EXPECT_EQ(told(zone, -std::numeric_limits<double>::infinity()), "LMT 3208");
    EXPECT_EQ(told(zone, std::numeric_limits<double>::infinity()), "CET 3600");
    EXPECT_EQ(told(zone, std::numeric_limits<double>::quiet_NaN()), "CET 3600") << "as at 1970";
}

TEST(NSTimeZone, CutFilesAreNoZone) {
    for (const std::string& whole : {ZoneBytes::berlin().version2(), ZoneBytes::berlin().version1()}) {
        for (std::size_t length = 0; length < whole.size(); ++length) {
            EXPECT_EQ(read(whole.substr(0, length)), std::nullopt) << length;
        }
    }
}

TEST(NSTimeZone, MalformedFilesAreNoZone) {
    const auto broken = [](auto&& change) {
        ZoneBytes bytes = ZoneBytes::berlin();
        change(bytes);
        return read(bytes.version2());
    };
    EXPECT_TRUE(broken([](ZoneBytes& /*bytes*/) {}).has_value());
    EXPECT_EQ(broken([](ZoneBytes& bytes) { bytes.times.clear(); }), std::nullopt);
    EXPECT_EQ(broken([](ZoneBytes& bytes) { bytes.transitions[1].second = 3; }), std::nullopt);
    EXPECT_EQ(broken([](ZoneBytes& bytes) { bytes.transitions[1].first = 1477789200; }), std::nullopt)
        << "not ascending";
    EXPECT_EQ(broken([](ZoneBytes& bytes) { bytes.times[2].name = 13; }), std::nullopt) << "behind the names";
    EXPECT_EQ(broken([](ZoneBytes& bytes) { bytes.names.pop_back(); }), std::nullopt) << "a name without end";
    EXPECT_EQ(broken([](ZoneBytes& bytes) { bytes.times[0].seconds = std::numeric_limits<std::int32_t>::min(); }),
              std::nullopt);
    EXPECT_EQ(broken([](ZoneBytes& bytes) { bytes.indicators = 2; }), std::nullopt);
    EXPECT_EQ(broken([](ZoneBytes& bytes) { bytes.footer = "CET"; }), std::nullopt);
    std::string huge = ZoneBytes::berlin().version2();
    for (std::size_t index = 20; index < 44; ++index) {
        huge[index] = '\xFF';
    }
    EXPECT_EQ(read(huge), std::nullopt) << "counts beyond the file";
}

// Moments of 2016, in seconds since 1970.
constexpr double kJanuary = 1451606400;
constexpr double kDay = 86400;

std::optional<NSTimeZone> rule(const char* text) {
    return NSTimeZone::timeZoneWithRule("rule", text);
}

TEST(NSTimeZoneRule, EmptyRuleIsNoZone) {
    EXPECT_EQ(rule(""), std::nullopt);
}

TEST(NSTimeZoneRule, MalformedRulesAreNoZone) {
    for (const char* const text : {"CET",
                                   "CE-1",
                                   "-1",
                                   "CET-25",
                                   "CET-1:60",
                                   "CET-1:",
                                   "CET1234",
                                   "<+0>3",
                                   "<+03-3",
                                   "<+ 3>-3",
                                   "CET-1CEST,",
                                   "CET-1CEST,M3.5.0",
                                   "CET-1CEST,M3.5.0,",
                                   "CET-1CEST,M13.5.0,M10.5.0",
                                   "CET-1CEST,M0.1.0,M10.5.0",
                                   "CET-1CEST,M3.6.0,M10.5.0",
                                   "CET-1CEST,M3.0.0,M10.5.0",
                                   "CET-1CEST,M3.5.7,M10.5.0",
                                   "CET-1CEST,M3.5,M10.5.0",
                                   "CET-1CEST,J0,J10",
                                   "CET-1CEST,J366,J10",
                                   "CET-1CEST,366,10",
                                   "CET-1CEST,1/168,10",
                                   "CET-1CEST,1/-168,10",
                                   "CET-1CEST,1/2:3:4:5,10",
                                   "CET-1CEST,M3.5.0,M10.5.0 ",
                                   "CET-1CE,M3.5.0,M10.5.0",
                                   "CET-1CEST-2x"}) {
        EXPECT_EQ(rule(text), std::nullopt) << text;
    }
}

TEST(NSTimeZoneRule, OffsetsCountWestwards) {
    EXPECT_EQ(told(rule("EST5").value(), 0), "EST -18000");
    EXPECT_EQ(told(rule("<+03>-3").value(), 0), "+03 10800");
    EXPECT_EQ(told(rule("<-0330>+3:30").value(), 0), "-0330 -12600");
    EXPECT_EQ(told(rule("ABC-24:59:58").value(), 0), "ABC 89998");
}

TEST(NSTimeZoneRule, WeekdaysOfMonths) {
    const NSTimeZone zone = rule("EST5EDT,M3.2.0,M11.1.0").value();
    EXPECT_EQ(told(zone, 1457852399), "EST -18000"); // 2016-03-13 02:00 EST
    EXPECT_EQ(told(zone, 1457852400), "EDT -14400 daylight");
    EXPECT_EQ(told(zone, 1478411999), "EDT -14400 daylight"); // 2016-11-06 02:00 EDT
    EXPECT_EQ(told(zone, 1478412000), "EST -18000");
}

TEST(NSTimeZoneRule, DaylightSavingTimeWithoutMomentsHasTheUsualOnes) {
    EXPECT_EQ(told(rule("EST5EDT").value(), 1457852400), "EDT -14400 daylight");
    EXPECT_EQ(told(rule("EST5EDT4:30").value(), 1457852400), "EDT -16200 daylight");
    EXPECT_EQ(told(rule("EST5EDT").value(), 1478412000), "EST -18000");
}

TEST(NSTimeZoneRule, SouthernSummersGoOverTheNewYear) {
    const NSTimeZone zone = rule("AEST-10AEDT,M10.1.0,M4.1.0/3").value();
    EXPECT_EQ(told(zone, kJanuary), "AEDT 39600 daylight");
    EXPECT_EQ(told(zone, kJanuary + 180 * kDay), "AEST 36000");
    EXPECT_EQ(told(zone, kJanuary - 1), "AEDT 39600 daylight");
}

TEST(NSTimeZoneRule, DaysAreCountedWithAndWithoutTheLeapDay) {
    // 2016 is a leap year: its day 60, counted from 0, is the first of March, and so is the 60th without the leap day.
    const double march = kJanuary + 60 * kDay;
    for (const char* const text : {"WIN0SUM-1,60/0,200/0", "WIN0SUM-1,J60/0,J200/0"}) {
        EXPECT_EQ(told(rule(text).value(), march - 1), "WIN 0") << text;
        EXPECT_EQ(told(rule(text).value(), march), "SUM 3600 daylight") << text;
    }
    const double marchOf2015 = kJanuary - 365 * kDay + 59 * kDay;
    EXPECT_EQ(told(rule("WIN0SUM-1,J60/0,J200/0").value(), marchOf2015), "SUM 3600 daylight");
    EXPECT_EQ(told(rule("WIN0SUM-1,60/0,200/0").value(), marchOf2015), "WIN 0");
    const double february29 = kJanuary + 59 * kDay;
    EXPECT_EQ(told(rule("WIN0SUM-1,J59/0,J60/0").value(), february29), "SUM 3600 daylight") << "it belongs to the 28th";
}

TEST(NSTimeZoneRule, TimesMayLieBeyondTheDay) {
    // Godthab: 22:00 on the day before the last Sunday, written as a negative time.
    const NSTimeZone zone = rule("<-02>2<-01>,M3.5.0/-1,M10.5.0/0").value();
    EXPECT_EQ(told(zone, 1459040400 - 1), "-02 -7200"); // 2016-03-27 01:00 UTC
    EXPECT_EQ(told(zone, 1459040400), "-01 -3600 daylight");
    // Gaza: the Saturday behind the fourth Thursday, 50 hours on.
    const NSTimeZone later = rule("EET-2EEST,M3.4.4/50,M10.4.4/50").value();
    EXPECT_EQ(told(later, 1458950400 - 1), "EET 7200"); // 2016-03-26 02:00 EET
    EXPECT_EQ(told(later, 1458950400), "EEST 10800 daylight");
}

TEST(NSTimeZoneRule, DaylightSavingTimeMayLastAllYear) {
    const NSTimeZone zone = rule("WIN3EDT4,0/0,J365/23").value();
    for (double day = 0; day < 800; day += 0.25) {
        EXPECT_EQ(told(zone, kJanuary + day * kDay), "EDT -14400 daylight") << day;
    }
}

} // namespace
} // namespace qk
