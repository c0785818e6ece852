// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSDate.h"

#include "QKFoundation/platform/values/NSNumber.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>

namespace qk {

namespace {

using namespace std::chrono;

constexpr double secondsUntil(year_month_day day) {
    return static_cast<double>(seconds(sys_days(day).time_since_epoch()).count());
}

// The calendar's four-digit years.
constexpr double kFirst = secondsUntil(year(1) / January / 1);
constexpr double kEnd = secondsUntil(year(10000) / January / 1);

} // namespace

NSString NSDate::description() const {
    if (!(seconds_ >= kFirst && seconds_ < kEnd)) {
        return NSNumber(seconds_).stringValue();
    }
    const sys_seconds moment(seconds(static_cast<std::int64_t>(std::floor(seconds_))));
    const sys_days day = floor<days>(moment);
    const year_month_day date(day);
    const hh_mm_ss time(moment - day);
    char text[48];
    const int length = std::snprintf(
        text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d +0000", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
        static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
    return NSString::fromUTF8Lossy({text, static_cast<std::size_t>(length)});
}

std::weak_ordering operator<=>(const NSDate& left, const NSDate& right) noexcept {
    const std::partial_ordering order = left.seconds_ <=> right.seconds_;
    if (order == std::partial_ordering::unordered) {
        return !std::isnan(left.seconds_) <=> !std::isnan(right.seconds_);
    }
    return order < 0   ? std::weak_ordering::less
           : order > 0 ? std::weak_ordering::greater
                       : std::weak_ordering::equivalent;
}

std::size_t NSDate::hash() const noexcept {
    return std::isnan(seconds_) ? 0 : std::hash<double>()(seconds_);
}

} // namespace qk
