// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"
#include "QKFoundation/platform/values/NSTimeZone.h"

/// `NSTimeZone(UTCOffset)`. Threads: any.
namespace qk::NSTimeZone_UTCOffset {

/// `abbreviationAndOffset`. The zone as people read it, at the present moment: "CET (UTC+01:00)", "EST (UTC-05:00)".
/// A zone without abbreviation begins with the blank.
[[nodiscard]] QK_EXPORT NSString abbreviationAndOffset(const NSTimeZone& self);

} // namespace qk::NSTimeZone_UTCOffset
