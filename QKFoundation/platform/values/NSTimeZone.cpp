// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSTimeZone.h"

#include "QKFoundation/platform/values/ZoneFile.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace qk {

struct NSTimeZone::Rules {
    NSString name;
    internal::ZoneFile zone;

    [[nodiscard]] const internal::LocalTime& localTimeAt(const NSDate& date) const {
        // Far beyond every calendar, and well within 64 bits.
        constexpr double kLimit = 1e18;
        const double seconds = std::floor(date.timeIntervalSince1970());
        return zone.localTimeAt(std::isnan(seconds) ? 0
                                                    : static_cast<std::int64_t>(std::clamp(seconds, -kLimit, kLimit)));
    }
};

NSTimeZone::NSTimeZone(std::shared_ptr<const Rules> rules) noexcept : rules_(std::move(rules)) {}

NSTimeZone NSTimeZone::UTC() {
    return fixed("UTC", 0, NSString("UTC"));
}

std::optional<NSTimeZone> NSTimeZone::timeZoneWithName(const NSString& name, std::string_view data) {
    std::optional<internal::ZoneFile> zone = internal::ZoneFile::parse(data);
    if (!zone.has_value()) {
        return std::nullopt;
    }
    return NSTimeZone(std::make_shared<const Rules>(Rules{name, *std::move(zone)}));
}

std::optional<NSTimeZone> NSTimeZone::timeZoneWithRule(const NSString& name, std::string_view rule) {
    std::optional<internal::ZoneRule> parsed = internal::ZoneRule::parse(rule);
    if (!parsed.has_value()) {
        return std::nullopt;
    }
    internal::ZoneFile zone;
    zone.rule = *std::move(parsed);
    return NSTimeZone(std::make_shared<const Rules>(Rules{name, std::move(zone)}));
}

std::optional<NSTimeZone> NSTimeZone::timeZoneForSecondsFromGMT(std::int64_t seconds) {
    constexpr std::int64_t kMinute = 60;
    constexpr std::int64_t kFarthest = std::int64_t{18} * 60 * kMinute;
    if (seconds < -kFarthest || seconds > kFarthest) {
        return std::nullopt;
    }
    const std::int64_t minutes = (std::abs(seconds) + kMinute / 2) / kMinute;
    const bool isWest = seconds < 0;
    NSString name = "GMT";
    if (minutes != 0) {
        char text[16];
        const int length = std::snprintf(text, sizeof text, "GMT%c%02d%02d", isWest ? '-' : '+',
                                         static_cast<int>(minutes / 60), static_cast<int>(minutes % 60));
        name = NSString::fromUTF8Lossy({text, static_cast<std::size_t>(length)});
    }
    return fixed(name, (isWest ? -minutes : minutes) * kMinute, name);
}

NSTimeZone NSTimeZone::fixed(const NSString& name, std::int64_t seconds, const std::optional<NSString>& abbreviation) {
    internal::ZoneFile zone;
    zone.times.push_back({seconds, false, abbreviation.value_or(NSString()).utf8Lossy()});
    return NSTimeZone(std::make_shared<const Rules>(Rules{name, std::move(zone)}));
}

const NSString& NSTimeZone::name() const noexcept {
    return rules_->name;
}

std::int64_t NSTimeZone::secondsFromGMTForDate(const NSDate& date) const {
    return rules_->localTimeAt(date).seconds;
}

std::optional<NSString> NSTimeZone::abbreviationForDate(const NSDate& date) const {
    const std::string& abbreviation = rules_->localTimeAt(date).abbreviation;
    return abbreviation.empty() ? std::nullopt : std::optional(NSString::fromUTF8Lossy(abbreviation));
}

bool NSTimeZone::isDaylightSavingTimeForDate(const NSDate& date) const {
    return rules_->localTimeAt(date).isDaylightSaving;
}

bool operator==(const NSTimeZone& left, const NSTimeZone& right) noexcept {
    return left.name() == right.name();
}

} // namespace qk
