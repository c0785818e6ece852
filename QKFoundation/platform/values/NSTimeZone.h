// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSDate.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace qk {

/// A time zone: its name, and for every moment its offset from Greenwich and its abbreviation.
/// Threads: may be read, copied and destroyed anywhere at the same time.
class QK_EXPORT NSTimeZone {
public:
    /// "UTC": offset 0, abbreviation "UTC".
    [[nodiscard]] static NSTimeZone UTC();

    /// `timeZoneWithName:data:`. The zone that `data`, the contents of a compiled zone file (RFC 8536, "TZif"),
    /// describe; moments behind its last transition follow the rule in its footer. Nothing when they are malformed.
    [[nodiscard]] static std::optional<NSTimeZone> timeZoneWithName(const NSString& name, std::string_view data);

    /// The zone that follows `rule` at all times, in the form of the variable TZ: "CET-1CEST,M3.5.0,M10.5.0/3" (POSIX,
    /// with the additions of RFC 8536). Nothing when it is malformed.
    [[nodiscard]] static std::optional<NSTimeZone> timeZoneWithRule(const NSString& name, std::string_view rule);

    /// `timeZoneForSecondsFromGMT:`. A zone that is always `seconds` from Greenwich, rounded to the minute: "GMT+0530",
    /// with the same abbreviation; "GMT" at 0. Nothing beyond 18 hours.
    [[nodiscard]] static std::optional<NSTimeZone> timeZoneForSecondsFromGMT(std::int64_t seconds);

    /// A zone that is always exactly `seconds` from Greenwich, under these names. Without an abbreviation, or with an
    /// empty one, it has none.
    [[nodiscard]] static NSTimeZone fixed(const NSString& name, std::int64_t seconds,
                                          const std::optional<NSString>& abbreviation);

    [[nodiscard]] const NSString& name() const noexcept;

    /// `secondsFromGMTForDate:`. East of Greenwich positive, daylight-saving time included.
    [[nodiscard]] std::int64_t secondsFromGMTForDate(const NSDate& date) const;

    /// `abbreviationForDate:`. "CET" or "CEST"; nothing when the zone has none.
    [[nodiscard]] std::optional<NSString> abbreviationForDate(const NSDate& date) const;

    /// `isDaylightSavingTimeForDate:`.
    [[nodiscard]] bool isDaylightSavingTimeForDate(const NSDate& date) const;

    /// Equal when the names are equal.
    QK_EXPORT friend bool operator==(const NSTimeZone& left, const NSTimeZone& right) noexcept;

private:
    struct Rules;
    explicit NSTimeZone(std::shared_ptr<const Rules> rules) noexcept;

    std::shared_ptr<const Rules> rules_; // never null
};

} // namespace qk
