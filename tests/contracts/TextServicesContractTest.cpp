// SPDX-License-Identifier: Apache-2.0
#include "tests/contracts/Contract.h"

#include <cmath>
#include <vector>

namespace qk::tests {
namespace {

using platform::LaunchServices;

NSDate at(double seconds) {
    return NSDate::dateWithTimeIntervalSince1970(seconds);
}

class ClockContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, ClockContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(ClockContract, TimeIsAMomentAndDoesNotRunBackwards) {
    const auto machine = subject().silent();
    const NSDate first = machine.clock->now();
    const NSDate second = machine.clock->now();
    EXPECT_TRUE(std::isfinite(first.timeIntervalSince1970()));
    EXPECT_GE(first.timeIntervalSince1970(), 0);
    EXPECT_FALSE(second < first);
}

class LocaleContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, LocaleContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(LocaleContract, SilentMachinePrefersNoLanguage) {
    EXPECT_EQ(subject().silent().locale->preferredLanguages(), std::vector<NSString>());
}

TEST_P(LocaleContract, LanguagesComeMostPreferredFirst) {
    EXPECT_EQ(subject().described().locale->preferredLanguages(), (std::vector<NSString>{"de-AT", "zh-Hant", "en"}));
}

class TimeZonesContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, TimeZonesContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(TimeZonesContract, SilentMachineKnowsNoZoneAndIsInUTC) {
    const auto machine = subject().silent();
    EXPECT_EQ(machine.timeZones->timeZoneWithName("Europe/Berlin"), std::nullopt);
    EXPECT_EQ(machine.timeZones->timeZoneWithName(""), std::nullopt);
    EXPECT_EQ(machine.timeZones->systemTimeZone(), NSTimeZone::UTC());
}

TEST_P(TimeZonesContract, ZonesAreKnownByName) {
    const auto machine = subject().described();
    EXPECT_EQ(machine.timeZones->timeZoneWithName("Europe/Nowhere"), std::nullopt);
    EXPECT_EQ(machine.timeZones->timeZoneWithName("europe/berlin"), std::nullopt);
    const auto zone = machine.timeZones->timeZoneWithName("Europe/Berlin");
    ASSERT_TRUE(zone.has_value());
    EXPECT_EQ(zone->name(), "Europe/Berlin");
    EXPECT_EQ(zone->abbreviationForDate(at(1459040399)), "CET");
    EXPECT_EQ(zone->secondsFromGMTForDate(at(1459040400)), 7200);
    EXPECT_EQ(machine.timeZones->systemTimeZone(), zone);
}

class UniformTypesContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, UniformTypesContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(UniformTypesContract, UndeclaredTypeConformsToItselfAlone) {
    for (const auto& machine : {subject().silent(), subject().described()}) {
        EXPECT_FALSE(machine.uniformTypes->typeConformsTo("org.example.unknown", "public.data"));
        EXPECT_TRUE(machine.uniformTypes->typeConformsTo("org.example.unknown", "org.Example.Unknown"));
        EXPECT_FALSE(machine.uniformTypes->typeConformsTo("", "public.data"));
    }
}

TEST_P(UniformTypesContract, TypesConformOverAnyNumberOfStepsInAnyLetterCase) {
    const auto machine = subject().described();
    for (const NSString& other : {NSString("public.png"), NSString("public.image"), NSString("public.data"),
                                  NSString("public.content"), NSString("public.item"), NSString("PUBLIC.ITEM")}) {
        EXPECT_TRUE(machine.uniformTypes->typeConformsTo("public.png", other)) << other.utf8Lossy();
        EXPECT_TRUE(machine.uniformTypes->typeConformsTo("Public.PNG", other)) << other.utf8Lossy();
    }
    EXPECT_FALSE(machine.uniformTypes->typeConformsTo("public.image", "public.png"));
    EXPECT_FALSE(machine.uniformTypes->typeConformsTo("public.png", "public.text"));
}

class LaunchServicesContract : public Contract {};
INSTANTIATE_TEST_SUITE_P(Of, LaunchServicesContract, testing::ValuesIn(adapters()), adapterName);

TEST_P(LaunchServicesContract, SilentMachineOpensNothing) {
    const NSURL url = NSURL::URLWithString("http://h/").value();
    EXPECT_EQ(subject().silent().launchServices->openURL(url), LaunchServices::kLSApplicationNotFoundErr);
}

TEST_P(LaunchServicesContract, URLsAreOpened) {
    const auto machine = subject().described();
    for (const NSString& url : {NSString("http://h/a%20b#c"), NSString("mailto:someone"), NSString("file:///a%20b")}) {
        EXPECT_EQ(machine.launchServices->openURL(NSURL::URLWithString(url).value()), LaunchServices::noErr);
    }
}

} // namespace
} // namespace qk::tests
