// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/NSTimeZone.h"

#include <optional>

namespace qk::platform {

/// The time zones that the system knows. Threads: any, at the same time.
class QK_EXPORT TimeZones {
public:
    TimeZones() = default;
    TimeZones(const TimeZones&) = delete;
    TimeZones& operator=(const TimeZones&) = delete;
    virtual ~TimeZones();

    /// `timeZoneWithName:`. The zone of a name such as "Europe/Berlin"; nothing when the system knows none.
    [[nodiscard]] virtual std::optional<NSTimeZone> timeZoneWithName(const NSString& name) const = 0;

    /// `systemTimeZone`. The zone that this machine is set to; UTC when it is set to none.
    [[nodiscard]] virtual NSTimeZone systemTimeZone() const = 0;
};

} // namespace qk::platform
