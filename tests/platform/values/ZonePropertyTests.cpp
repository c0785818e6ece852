// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSStringFormat.h"
#include "QKFoundation/platform/values/NSTimeZone.h"

#include "tests/platform/values/Printing.h"
#include "tests/platform/values/ZoneBytes.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace qk {
namespace {

using tests::ZoneBytes;

// A zone with a time of its own behind each transition; their offsets tell them apart.
ZoneBytes zoneWith(const std::vector<std::int64_t>& moments) {
    ZoneBytes bytes;
    bytes.times = {{-1, false, 0}};
    bytes.names = std::string("ABC\0", 4);
    for (const std::int64_t moment : moments) {
        const auto index = static_cast<unsigned char>(bytes.times.size());
        bytes.transitions.emplace_back(moment, index);
        bytes.times.push_back({index, false, 0});
    }
    return bytes;
}

RC_GTEST_PROP(NSTimeZoneProperties, LastTransitionBeforeAMomentDecides, ()) {
    const auto unique =
        *rc::gen::container<std::set<std::int64_t>>(rc::gen::inRange<std::int64_t>(-5'000'000'000, 5'000'000'000));
    std::vector<std::int64_t> moments(unique.begin(), unique.end());
    moments.resize(std::min<std::size_t>(moments.size(), 200));
    const auto zone = NSTimeZone::timeZoneWithName("zone", zoneWith(moments).version2());
    RC_ASSERT(zone.has_value());
    auto asked =
        *rc::gen::container<std::vector<std::int64_t>>(rc::gen::inRange<std::int64_t>(-6'000'000'000, 6'000'000'000));
    asked.insert(asked.end(), moments.begin(), moments.end());
    for (const std::int64_t moment : asked) {
        const auto before = std::ranges::count_if(moments, [moment](std::int64_t other) { return other <= moment; });
        const NSDate date = NSDate::dateWithTimeIntervalSince1970(static_cast<double>(moment));
        RC_ASSERT(zone->secondsFromGMTForDate(date) == (before == 0 ? -1 : before));
    }
}

RC_GTEST_PROP(NSTimeZoneProperties, DaylightSavingTimeChangesTwiceAYear, ()) {
    const auto month = [](int from, int to) { return "M" + std::to_string(*rc::gen::inRange(from, to)); };
    const auto day = [] {
        return "." + std::to_string(*rc::gen::inRange(1, 6)) + "." + std::to_string(*rc::gen::inRange(0, 7)) + "/" +
               std::to_string(*rc::gen::inRange(-167, 168));
    };
    const std::string rule =
        "AAA" + std::to_string(*rc::gen::inRange(-14, 13)) + "BBB," + month(2, 6) + day() + "," + month(8, 12) + day();
    const auto zone = NSTimeZone::timeZoneWithRule("zone", rule);
    RC_ASSERT(zone.has_value());
    const int firstYear = *rc::gen::inRange(0, 400);
    constexpr double kDay = 86400;
    int changes = 0;
    bool previous = false;
    for (int index = 0; index <= 365 * 4 + 1; ++index) { // four years hold one leap day, or none
        const NSDate date = NSDate::dateWithTimeIntervalSince1970((firstYear * 365.2425 + index) * kDay);
        const bool now = zone->isDaylightSavingTimeForDate(date);
        changes += index != 0 && now != previous ? 1 : 0;
        previous = now;
        const auto standard = zone->secondsFromGMTForDate(date) - (now ? 3600 : 0);
        RC_ASSERT(standard % 3600 == 0);
        RC_ASSERT(zone->abbreviationForDate(date) == NSString(now ? u"BBB" : u"AAA"));
    }
    RC_ASSERT(changes >= 7);
    RC_ASSERT(changes <= 9);
}

RC_GTEST_PROP(NSStringFormatProperties, PositionsAndOrderInsertTheSame, (const std::vector<std::uint8_t>& texts)) {
    std::u16string plain;
    std::u16string positions;
    NSMutableString expected;
    std::vector<std::optional<Value>> arguments;
    for (const std::uint8_t number : texts) {
        const NSString argument = NSString::fromInteger(number) + "%1$@";
        arguments.emplace_back(argument);
        plain.append(u"<%@>");
        positions.append(u"<%").append(NSString::fromUnsignedInteger(arguments.size()).units()).append(u"$@>");
        expected.append(u'<').append(argument).append(u'>');
    }
    RC_ASSERT(stringWithFormat(NSString(plain), arguments) == expected.copy());
    RC_ASSERT(stringWithFormat(NSString(positions), arguments) == expected.copy());
}

} // namespace
} // namespace qk
