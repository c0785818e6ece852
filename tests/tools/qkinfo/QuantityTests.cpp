// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/ScopedTimeZone.h"
#include "tools/qkinfo/Quantities.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

namespace qk::info {

TEST(Quantities, BytesInTheUnitThatPeopleReadAndExactly) {
    struct Case {
        std::uint64_t bytes;
        std::string_view text;
    };
    for (const Case& c : std::array{
             Case{0, "0 bytes"},
             Case{1, "1 byte"},
             Case{1023, "1023 bytes"},
             Case{1024, "1.0 KiB (1024 bytes)"},
             Case{4096, "4.0 KiB (4096 bytes)"},
             Case{1075, "1.0 KiB (1075 bytes)"},
             Case{1076, "1.1 KiB (1076 bytes)"},
             Case{1048524, "1023.9 KiB (1048524 bytes)"},
             Case{1048525, "1.0 MiB (1048525 bytes)"},
             Case{25769803776, "24.0 GiB (25769803776 bytes)"},
             Case{std::uint64_t{3} << 60, "3.0 EiB (3458764513820540928 bytes)"},
             Case{std::numeric_limits<std::uint64_t>::max(), "16.0 EiB (18446744073709551615 bytes)"},
         }) {
        EXPECT_EQ(bytesText({c.bytes}), c.text);
    }
}

TEST(Quantities, FrequencyInGigahertzFromThousandOn) {
    EXPECT_EQ(frequencyText({1}), "1 MHz");
    EXPECT_EQ(frequencyText({999}), "999 MHz");
    EXPECT_EQ(frequencyText({1000}), "1.00 GHz (1000 MHz)");
    EXPECT_EQ(frequencyText({2599}), "2.60 GHz (2599 MHz)");
    EXPECT_EQ(frequencyText({2594}), "2.59 GHz (2594 MHz)");
    EXPECT_EQ(frequencyText({5050}), "5.05 GHz (5050 MHz)");
}

TEST(Quantities, DurationsDropTheirSeconds) {
    struct Case {
        std::int64_t seconds;
        std::string_view text;
    };
    for (const Case& c : std::array{
             Case{0, "0:00"},
             Case{59, "0:00"},
             Case{300, "0:05"},
             Case{2 * 3600 + 14 * 60, "2:14"},
             Case{86399, "23:59"},
             Case{86400, "1 day, 0:00"},
             Case{3 * 86400 + 2 * 3600 + 14 * 60 + 59, "3 days, 2:14"},
         }) {
        EXPECT_EQ(durationText(c.seconds), c.text);
    }
}

TEST(Quantities, TimesAreLocalForPeopleAndUtcForPrograms) {
    const Moment moment{1'714'551'753};
    EXPECT_EQ(utcTimeText(moment), "2024-05-01T08:22:33Z");
    {
        const ScopedTimeZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
        EXPECT_EQ(localTimeText(moment), "2024-05-01 10:22:33 CEST");
    }
    const ScopedTimeZone zone("UTC0");
    EXPECT_EQ(localTimeText(moment), "2024-05-01 08:22:33 UTC");
}

TEST(Quantities, TimesReachFromYear0To9999) {
    EXPECT_EQ(utcTimeText({-62'167'219'200}), "0000-01-01T00:00:00Z");
    EXPECT_EQ(utcTimeText({-1}), "1969-12-31T23:59:59Z");
    EXPECT_EQ(utcTimeText({253'402'300'799}), "9999-12-31T23:59:59Z");
}

TEST(Quantities, BootTimeSaysForHowLongUnlessTheClockWentBack) {
    const ScopedTimeZone zone("UTC0");
    const Moment boot{1'714'551'753};
    EXPECT_EQ(bootTimeText(boot, {boot.seconds + 3 * 86400 + 8040}), "2024-05-01 08:22:33 UTC, up 3 days, 2:14");
    EXPECT_EQ(bootTimeText(boot, boot), "2024-05-01 08:22:33 UTC, up 0:00");
    EXPECT_EQ(bootTimeText(boot, {boot.seconds - 1}), "2024-05-01 08:22:33 UTC");
}

TEST(Contents, BlankTextsAndZeroCountAsNotTold) {
    EXPECT_EQ(textContent(std::nullopt), std::nullopt);
    EXPECT_EQ(textContent(NSString("")), std::nullopt);
    EXPECT_EQ(textContent(NSString(" \t\n")), std::nullopt);
    EXPECT_EQ(textContent(NSString(" a b \n")), std::optional<Content>(std::string("a b")));
    EXPECT_EQ(numberContent<Count>(0), std::nullopt);
    EXPECT_EQ(numberContent<Bytes>(7), std::optional<Content>(Bytes{7}));
}

TEST(Quantities, PercentagesHaveOneDecimal) {
    EXPECT_EQ(percentText({0}), "0.0%");
    EXPECT_EQ(percentText({12.349}), "12.3%");
    EXPECT_EQ(percentText({99.96}), "100.0%");
    EXPECT_EQ(percentText({-4.2}), "-4.2%");
    EXPECT_EQ(percentText({1e300}), "1000000000.0%");
}

TEST(Quantities, SizesAreTheFirstHalfOfBytes) {
    EXPECT_EQ(sizeText({0}), "0 bytes");
    EXPECT_EQ(sizeText({25769803776}), "24.0 GiB");
}

TEST(Contents, SharesThatAreNoNumberCountAsNotTold) {
    EXPECT_EQ(percentContent(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_EQ(percentContent(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(percentContent(0), std::optional<Content>(Percent{0}));
    EXPECT_EQ(percentContent(-1), std::optional<Content>(Percent{-1}));
}

TEST(Contents, MomentsOutsideOfTheCalendarCountAsNotTold) {
    const auto at = [](double seconds) { return momentContent(NSDate::dateWithTimeIntervalSince1970(seconds)); };
    EXPECT_EQ(momentContent(std::nullopt), std::nullopt);
    EXPECT_EQ(at(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_EQ(at(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(at(1e18), std::nullopt);
    EXPECT_EQ(at(-1e18), std::nullopt);
    EXPECT_EQ(at(253'402'300'800.0), std::nullopt);
    EXPECT_EQ(at(0), std::optional<Content>(Moment{0}));
    EXPECT_EQ(at(-0.5), std::optional<Content>(Moment{-1}));
}

TEST(Quantities, SpeedsAreInTheLargestUnitTheyReach) {
    EXPECT_EQ(speedText({0}), "0 bit/s");
    EXPECT_EQ(speedText({300}), "300 bit/s");
    EXPECT_EQ(speedText({56'000}), "56 kbit/s");
    EXPECT_EQ(speedText({866'700'000}), "866.7 Mbit/s");
    EXPECT_EQ(speedText({999'949'999}), "999.9 Mbit/s");
    EXPECT_EQ(speedText({999'950'000}), "1 Gbit/s");
    EXPECT_EQ(speedText({2'500'000'000}), "2.5 Gbit/s");
    EXPECT_EQ(speedText({400'000'000'000}), "400 Gbit/s");
    EXPECT_EQ(speedText({UINT64_MAX}), "18.4 Ebit/s");
}

TEST(Quantities, MinutesAreInLocalTime) {
    const ScopedTimeZone zone("CET-1");
    EXPECT_EQ(localMinuteText({0}), "1970-01-01 01:00");
    EXPECT_EQ(localMinuteText({59}), "1970-01-01 01:00");
}

} // namespace qk::info
