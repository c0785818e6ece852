// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <compare>
#include <cstddef>

namespace qk {

/// A moment, kept as seconds since 1970-01-01 00:00:00 UTC exactly as given. Threads: a plain value.
class QK_EXPORT NSDate {
public:
    /// `dateWithTimeIntervalSince1970:`.
    [[nodiscard]] static NSDate dateWithTimeIntervalSince1970(double seconds) noexcept { return NSDate(seconds); }

    /// `timeIntervalSince1970`. In seconds.
    [[nodiscard]] double timeIntervalSince1970() const noexcept { return seconds_; }

    /// "2016-11-16 04:05:00 +0000": always UTC in the Gregorian calendar, the fraction of a second dropped (rounded
    /// down). A moment outside of the years 1 to 9999 gives its seconds as a number would show them; NaN gives "nan".
    [[nodiscard]] NSString description() const;

    [[nodiscard]] std::size_t hash() const noexcept;

    /// The order in time. NaN, which is no moment, is equal to itself and before all others.
    QK_EXPORT friend std::weak_ordering operator<=>(const NSDate& left, const NSDate& right) noexcept;
    [[nodiscard]] friend bool operator==(const NSDate& left, const NSDate& right) noexcept {
        return (left <=> right) == std::weak_ordering::equivalent;
    }

private:
    explicit NSDate(double seconds) noexcept : seconds_(seconds) {}

    double seconds_;
};

} // namespace qk
