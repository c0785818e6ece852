// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/NSTimeZone+UTCOffset.h"
#include "QKFoundation/foundation/internal/SystemRequests.h"

#include <cstdint>

namespace qk {
namespace {

NSString twoDigits(std::uint64_t number) {
    return number < 10 ? "0" + NSString::fromUnsignedInteger(number) : NSString::fromUnsignedInteger(number);
}

} // namespace

NSString internal::abbreviationAndOffset(const platform::Services& services, const NSTimeZone& zone) {
    constexpr std::uint64_t kMinute = 60;
    constexpr std::uint64_t kHour = 60 * kMinute;
    const NSDate now = services.clock->now();
    const std::int64_t seconds = zone.secondsFromGMTForDate(now);
    // Unsigned: the smallest number has no counterpart above zero among the signed ones.
    const std::uint64_t size =
        seconds < 0 ? ~static_cast<std::uint64_t>(seconds) + 1 : static_cast<std::uint64_t>(seconds);
    // The sign is that of the seconds: an offset of less than an hour has one too.
    return NSMutableString()
        .append(zone.abbreviationForDate(now).value_or(NSString()))
        .append(u" (UTC")
        .append(seconds < 0 ? u'-' : u'+')
        .append(twoDigits(size / kHour))
        .append(u':')
        .append(twoDigits(size % kHour / kMinute))
        .append(u')')
        .copy();
}

NSString NSTimeZone_UTCOffset::abbreviationAndOffset(const NSTimeZone& self) {
    return internal::abbreviationAndOffset(*platform::services(), self);
}

} // namespace qk
